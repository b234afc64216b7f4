// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "supplicant.h"

#include <array>
#include <csignal>
#include <filesystem>
#include <stdexcept>
#include <string_view>

#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace
{
const sockaddr_un controlSocket = {AF_UNIX, "/var/run/wpa_supplicant/wlan0"};

constexpr size_t longestMessage = 4096; // bytes

constexpr const char *status =
    "bssid=02:00:00:00:00:01\nfreq=2412\nssid=office\nid=0\nmode=station\n"
    "wifi_generation=4\npairwise_cipher=CCMP\ngroup_cipher=CCMP\n"
    "key_mgmt=WPA2-PSK\nwpa_state=COMPLETED\nip_address=10.0.0.7\n"
    "p2p_device_address=02:00:00:00:00:09\naddress=02:00:00:00:00:08\n"
    "uuid=8e5b1c34-5a02-5b7c-9b63-0f3a1a4f8f11\n";

struct Client {
    sockaddr_un address = {};
    socklen_t length = sizeof address;
};

const sockaddr *generic(const sockaddr_un &address)
{
    return reinterpret_cast<const sockaddr *>(&address);
}

[[noreturn]] void serve(int service)
{
    const std::string table = scanResults();
    Client monitor;
    for (;;) {
        std::array<char, longestMessage> buffer;
        Client client;
        const ssize_t length =
            recvfrom(service, buffer.data(), buffer.size(), 0,
                     reinterpret_cast<sockaddr *>(&client.address), &client.length);
        const std::string_view command(buffer.data(), static_cast<size_t>(length));
        const auto send = [service](std::string_view text, const Client &to) {
            sendto(service, text.data(), text.size(), 0, generic(to.address), to.length);
        };
        if (command == "ATTACH")
            monitor = client;
        else if (command == "EVENT")
            send("<3>CTRL-EVENT-SCAN-RESULTS ", monitor);
        send(command == "STATUS" ? status : command == "SCAN_RESULTS" ? table : "OK\n", client);
    }
}
} // namespace

void startSupplicant()
{
    const int service = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    std::filesystem::create_directories(
        std::filesystem::path(controlSocket.sun_path).parent_path());
    if (bind(service, generic(controlSocket), sizeof controlSocket) != 0)
        throw std::runtime_error("the control socket is taken");
    if (fork() == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        serve(service);
    }
    close(service);
}

std::string scanResults()
{
    std::string table = "bssid / frequency / signal level / flags / ssid\n";
    for (int network = 10; network < 40; ++network) {
        const std::string number = std::to_string(network);
        table.append("02:00:00:00:00:").append(number).append("\t2412\t-").append(number);
        table.append("\t[WPA2-PSK-CCMP][ESS]\tnetwork ").append(number).append("\n");
    }
    return table;
}

int connectToSupplicant()
{
    const int supplicant = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    // Replies need an address; one without a path has the kernel choose it.
    const sockaddr_un any = {AF_UNIX, ""};
    if (bind(supplicant, generic(any), sizeof any.sun_family) != 0 ||
        connect(supplicant, generic(controlSocket), sizeof controlSocket) != 0)
        throw std::runtime_error("no control socket");
    return supplicant;
}

void exchange(int supplicant, const std::string &command)
{
    std::array<char, longestMessage> reply;
    if (send(supplicant, command.data(), command.size(), 0) < 0 ||
        recv(supplicant, reply.data(), reply.size(), 0) < 0)
        throw std::runtime_error("no reply on the control socket");
}
