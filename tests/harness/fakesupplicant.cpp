// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "fakesupplicant.h"

#include <QDir>

#include <array>
#include <cstring>

#include <sys/socket.h>
#include <unistd.h>

FakeSupplicant::FakeSupplicant(const Journal &commandJournal, const QString &name)
    : journal(commandJournal), path("/var/run/wpa_supplicant/" + name.toLocal8Bit())
{
    restart();
}

FakeSupplicant::~FakeSupplicant()
{
    kill();
    unlink(path.constData());
}

void FakeSupplicant::answer(const QByteArray &command, const QByteArrayList &datagrams)
{
    const std::lock_guard lock(mutex);
    answers[command] = datagrams;
}

void FakeSupplicant::sendEvent(const QByteArray &message)
{
    const std::lock_guard lock(mutex);
    for (const sockaddr_un &monitor : monitors)
        send(message, monitor);
}

void FakeSupplicant::kill()
{
    if (!server.joinable())
        return;
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
    if (bind(socket, reinterpret_cast<sockaddr *>(&address), sizeof address) != 0)
        qFatal("cannot bind %s: %s", path.constData(), std::strerror(errno));
    server = std::thread(&FakeSupplicant::serve, this);
}

void FakeSupplicant::serve()
{
    std::array<char, 8192> buffer{};
    for (;;) {
        sockaddr_un client{};
        socklen_t length = sizeof client;
        const ssize_t size = recvfrom(socket, buffer.data(), buffer.size(), 0,
                                      reinterpret_cast<sockaddr *>(&client), &length);
        if (size <= 0)
            return;
        std::this_thread::sleep_for(pace.load());
        receive(QByteArray(buffer.data(), static_cast<int>(size)), client);
    }
}

void FakeSupplicant::receive(const QByteArray &command, const sockaddr_un &client)
{
    journal.append(command);
    const std::lock_guard turn(answering);
    const std::lock_guard lock(mutex);
    const QByteArrayList datagrams = answers.value(command, {"OK\n"});
    if (command == "ATTACH" && datagrams.value(0) == "OK\n")
        monitors.push_back(client);
    for (const QByteArray &datagram : datagrams)
        send(datagram, client);
}

void FakeSupplicant::send(const QByteArray &datagram, const sockaddr_un &client) const
{
    // Not waiting: a daemon that does not read must not stop the test.
    sendto(socket, datagram.constData(), static_cast<size_t>(datagram.size()),
           MSG_DONTWAIT | MSG_NOSIGNAL, reinterpret_cast<const sockaddr *>(&client), sizeof client);
}
