// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <string>

struct DBusConnection;

/// A client of the daemon on the system bus. It stands on libdbus alone, so that its own share of a
/// figure is small, and the same in a measurement and in its floor.
class Bus
{
public:
    Bus();
    ~Bus();
    Bus(const Bus &) = delete;
    Bus &operator=(const Bus &) = delete;

    /// Has signals delivered to this client.
    void listen(const std::string &rule);
    void send(const char *method, const char *interface = "com.brelvix.bxwifid");
    void awaitSignal(const char *member);
    void awaitReply();

private:
    void await(int type, const char *member);

    DBusConnection *connection;
};
