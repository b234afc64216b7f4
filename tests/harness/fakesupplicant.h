// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "journal.h"

#include <QMap>

#include <atomic>
#include <chrono>
#include <mutex>
#include <thread>
#include <vector>

#include <sys/un.h>

/// A control socket that answers like a supplicant, from a table, on a thread of its own: also
/// while the test or the daemon waits for something else. Several can run side by side.
class FakeSupplicant
{
public:
    /// Serves /var/run/wpa_supplicant/`name` and writes every command into `journal` before it is
    /// answered.
    explicit FakeSupplicant(const Journal &journal, const QString &name = "wlan0");
    /// Ends the service and removes the socket.
    ~FakeSupplicant();
    Q_DISABLE_COPY_MOVE(FakeSupplicant)

    /// Answers a command with these datagrams, or not at all when there are none; a command without
    /// an answer is answered "OK\n". An ATTACH that is answered otherwise is refused.
    void answer(const QByteArray &command, const QByteArrayList &datagrams);
    /// Sends an unsolicited message to every connection that was ever attached.
    void sendEvent(const QByteArray &message);

    /// Dies, leaving the socket's file behind, and comes back.
    void kill();
    void restart();

    /// A test that locks it keeps the answers back.
    std::mutex answering;
    /// Waits with every command before it is written down. Signals take another road than commands:
    /// with some time in between, one that left the daemon before a command stands before it.
    std::atomic<std::chrono::milliseconds> pace{};

private:
    void serve();
    void receive(const QByteArray &command, const sockaddr_un &client);
    void send(const QByteArray &datagram, const sockaddr_un &client) const;

    const Journal &journal;
    const QByteArray path;
    int socket = -1;
    std::thread server;
    std::mutex mutex; // guards all below
    QMap<QByteArray, QByteArrayList> answers;
    std::vector<sockaddr_un> monitors;
};
