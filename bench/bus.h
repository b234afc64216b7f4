// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <string>

struct DBusConnection;

constexpr const char *daemonName = "com.brelvix.bxwifid";
constexpr const char *bareName = "com.brelvix.bare";

/// A client on the system bus of a service whose object "/" has an interface of the service's name.
/// It stands on libdbus alone, so that its own share of a figure is small, and the same in a
/// measurement and in its floor.
class Bus
{
public:
    explicit Bus(const char *serviceName = daemonName);
    ~Bus();
    Bus(const Bus &) = delete;
    Bus &operator=(const Bus &) = delete;

    /// Has signals delivered to this client.
    void listen(const std::string &rule);
    void call(const char *method);
    void ping();
    void awaitSignal(const char *member);
    void awaitReply();

private:
    void send(const char *interface, const char *method);
    void await(int type, const char *member);

    const char *service;
    DBusConnection *connection;
};
