// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "busclient.h"

#include <QDBusPendingCallWatcher>
#include <QTest>
#include <QUuid>

static constexpr char service[] = "com.brelvix.bxwifid"; // its object's interface, too
static constexpr int replyWait_ms = 60000;               // longer than any operation of the daemon

BusClient::BusClient(const QString &address, Journal &signalJournal)
    : journal(signalJournal),
      bus(QDBusConnection::connectToBus(address, QUuid::createUuid().toString()))
{
    if (!bus.connect(service, "/", service, QString(), this, SLOT(onSignal(QDBusMessage))))
        qFatal("no bus: %s", qPrintable(bus.lastError().message()));
}

BusClient::~BusClient()
{
    QDBusConnection::disconnectFromBus(bus.name());
}

QDBusMessage BusClient::call(const QString &method, const QVariantList &arguments)
{
    return wait(start(method, arguments));
}

QDBusPendingCall BusClient::start(const QString &method, const QVariantList &arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(service, "/", service, method);
    message.setArguments(arguments);
    return bus.asyncCall(message, replyWait_ms);
}

QDBusMessage BusClient::wait(const QDBusPendingCall &pending)
{
    // The call may be over already while signals before its reply still wait on the event loop;
    // the watcher's signal takes the same way as they do.
    bool finished = false;
    QDBusPendingCallWatcher watcher(pending);
    connect(&watcher, &QDBusPendingCallWatcher::finished, [&] { finished = true; });
    if (!QTest::qWaitFor([&] { return finished; }, replyWait_ms))
        qFatal("the call never ended");
    return watcher.reply();
}

QString BusClient::introspection()
{
    const QDBusMessage message = QDBusMessage::createMethodCall(
        service, "/", "org.freedesktop.DBus.Introspectable", "Introspect");
    return wait(bus.asyncCall(message)).arguments().value(0).toString();
}

void BusClient::onSignal(const QDBusMessage &message)
{
    journal.append(busSignal(message.member(), message.arguments().value(0)));
}
