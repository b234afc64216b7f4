// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "journal.h"

#include <atomic>
#include <condition_variable>
#include <map>
#include <mutex>
#include <thread>
#include <vector>

#include <sys/socket.h>
#include <sys/un.h>

/// A control socket that answers like a supplicant, from a table, on a thread of its own: also
/// while the test or the daemon waits for something else. Several can run side by side.
class FakeSupplicant
{
public:
    /// Serves /var/run/wpa_supplicant/`name` and writes every command into `journal` before it is
    /// answered.
    explicit FakeSupplicant(Journal &journal, const QString &name = "wlan0");
    /// Ends the service and removes the socket.
    ~FakeSupplicant();
    Q_DISABLE_COPY_MOVE(FakeSupplicant)

    /// Answers commands that begin with `prefix` with these datagrams, or not at all when there are
    /// none. The longest prefix decides; a command that has none is answered "OK\n". An ATTACH that
    /// is answered otherwise is refused.
    void answer(const QByteArray &prefix, const QByteArrayList &datagrams);

    /// Keeps back the answer to the next commands that begin with `prefix` until `release()`.
    void hold(const QByteArray &prefix);
    void release();

    /// Waits with every command before it is written down. Signals take another road than commands:
    /// with some time in between, one that left the daemon before a command stands before it.
    void setPace(std::chrono::milliseconds pace);

    /// Sends an unsolicited message to every attached connection.
    void sendEvent(const QByteArray &message);

    /// Dies, leaving the socket's file behind, and comes back.
    void kill();
    void restart();

private:
    struct Client {
        sockaddr_un address{};
        socklen_t length = sizeof(sockaddr_un);
    };

    void serve();
    void receive(const QByteArray &command, const Client &client);
    QByteArrayList answerTo(const QByteArray &command) const;
    void send(const QByteArray &datagram, const Client &client) const;

    Journal &journal;
    const QByteArray path;
    int socket = -1;
    std::thread server;
    std::atomic<std::chrono::milliseconds> pace{};
    std::mutex mutex; // guards all below
    std::condition_variable released;
    std::map<QByteArray, QByteArrayList> answers;
    std::vector<Client> monitors;
    QByteArray held; // null: nothing
};
