// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "fakesupplicant.h"

#include <QDir>

#include <algorithm>
#include <array>
#include <cstring>

#include <unistd.h>

namespace
{
const sockaddr *generic(const sockaddr_un &address)
{
    return reinterpret_cast<const sockaddr *>(&address);
}
} // namespace

FakeSupplicant::FakeSupplicant(Journal &commandJournal, const QString &name)
    : journal(commandJournal), path("/var/run/wpa_supplicant/" + name.toLocal8Bit())
{
    restart();
}

FakeSupplicant::~FakeSupplicant()
{
    kill();
    unlink(path.constData());
}

void FakeSupplicant::answer(const QByteArray &prefix, const QByteArrayList &datagrams)
{
    const std::lock_guard lock(mutex);
    answers[prefix] = datagrams;
}

void FakeSupplicant::hold(const QByteArray &prefix)
{
    const std::lock_guard lock(mutex);
    held = prefix;
}

void FakeSupplicant::release()
{
    const std::lock_guard lock(mutex);
    held.clear();
    released.notify_all();
}

void FakeSupplicant::setPace(std::chrono::milliseconds interval)
{
    pace = interval;
}

void FakeSupplicant::sendEvent(const QByteArray &message)
{
    const std::lock_guard lock(mutex);
    for (const Client &monitor : monitors)
        send(message, monitor);
}

void FakeSupplicant::kill()
{
    if (!server.joinable())
        return;
    release();
    shutdown(socket, SHUT_RDWR);
    server.join();
    close(socket);
    monitors.clear();
}

void FakeSupplicant::restart()
{
    QDir().mkpath("/var/run/wpa_supplicant");
    unlink(path.constData());
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.constData(), sizeof address.sun_path - 1);
    socket = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (bind(socket, generic(address), sizeof address) != 0)
        qFatal("cannot bind %s: %s", path.constData(), std::strerror(errno));
    server = std::thread(&FakeSupplicant::serve, this);
}

void FakeSupplicant::serve()
{
    std::array<char, 8192> buffer{};
    for (;;) {
        Client client;
        const ssize_t size =
            recvfrom(socket, buffer.data(), buffer.size(), 0,
                     reinterpret_cast<sockaddr *>(&client.address), &client.length);
        if (size <= 0)
            return;
        std::this_thread::sleep_for(pace.load());
        receive(QByteArray(buffer.data(), static_cast<int>(size)), client);
    }
}

void FakeSupplicant::receive(const QByteArray &command, const Client &client)
{
    journal.append(command);
    std::unique_lock lock(mutex);
    released.wait(lock, [&] { return held.isNull() || !command.startsWith(held); });

    const QByteArrayList datagrams = answerTo(command);
    if (command == "ATTACH" && datagrams.value(0) == "OK\n")
        monitors.push_back(client);
    for (const QByteArray &datagram : datagrams)
        send(datagram, client);
    if (command == "DETACH") {
        const auto isClient = [&](const Client &monitor) {
            return std::strcmp(monitor.address.sun_path, client.address.sun_path) == 0;
        };
        monitors.erase(std::remove_if(monitors.begin(), monitors.end(), isClient), monitors.end());
    }
}

QByteArrayList FakeSupplicant::answerTo(const QByteArray &command) const
{
    // The longest of the prefixes comes last in the map's order.
    for (auto entry = answers.rbegin(); entry != answers.rend(); ++entry) {
        if (command.startsWith(entry->first))
            return entry->second;
    }
    return {"OK\n"};
}

void FakeSupplicant::send(const QByteArray &datagram, const Client &client) const
{
    // Not waiting: a daemon that does not read must not stop the test.
    sendto(socket, datagram.constData(), static_cast<size_t>(datagram.size()),
           MSG_DONTWAIT | MSG_NOSIGNAL, generic(client.address), client.length);
}
