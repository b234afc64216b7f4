// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "bus.h"

#include <dbus/dbus.h>

#include <stdexcept>

Bus::Bus(const char *serviceName)
    : service(serviceName), connection(dbus_bus_get_private(DBUS_BUS_SYSTEM, nullptr))
{
    if (!connection)
        throw std::runtime_error("no system bus");
}

Bus::~Bus()
{
    dbus_connection_close(connection);
    dbus_connection_unref(connection);
}

void Bus::listen(const std::string &rule)
{
    dbus_bus_add_match(connection, ("type='signal'," + rule).c_str(), nullptr);
    dbus_connection_flush(connection);
}

void Bus::call(const char *method)
{
    send(service, method);
}

void Bus::ping()
{
    send(DBUS_INTERFACE_PEER, "Ping");
    awaitReply();
}

void Bus::send(const char *interface, const char *method)
{
    DBusMessage *message = dbus_message_new_method_call(service, "/", interface, method);
    dbus_connection_send(connection, message, nullptr);
    dbus_message_unref(message);
    dbus_connection_flush(connection);
}

void Bus::awaitSignal(const char *member)
{
    await(DBUS_MESSAGE_TYPE_SIGNAL, member);
}

void Bus::awaitReply()
{
    await(DBUS_MESSAGE_TYPE_METHOD_RETURN, nullptr);
}

void Bus::await(int type, const char *member)
{
    for (bool found = false; !found;) {
        DBusMessage *message = dbus_connection_pop_message(connection);
        if (message) {
            const int received = dbus_message_get_type(message);
            found = received == type && (!member || dbus_message_has_member(message, member));
            dbus_message_unref(message);
            if (received == DBUS_MESSAGE_TYPE_ERROR)
                throw std::runtime_error("a call was refused");
        } else if (!dbus_connection_read_write(connection, -1)) {
            throw std::runtime_error("the bus is gone");
        }
    }
}
