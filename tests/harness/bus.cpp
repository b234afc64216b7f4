// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "bus.h"

#include <QDBusPendingCallWatcher>
#include <QTest>
#include <QUuid>

static constexpr char service[] = "com.brelvix.bxwifid"; // its object's interface, too
static constexpr char address[] = "DBUS_SYSTEM_BUS_ADDRESS";
static constexpr int replyWait_ms = 60000; // longer than any operation of the daemon

Bus::Bus(const Journal &signalJournal) : client(QString()), journal(signalJournal)
{
    // It complains that it cannot raise its limit of open files.
    server.setStandardErrorFile(QProcess::nullDevice());
    server.start("dbus-daemon",
                 {"--config-file=" HARNESS "/bus.conf", "--nofork", "--print-address"});
    // The address is printed once the bus listens.
    if (!server.waitForReadyRead())
        qFatal("dbus-daemon: %s", qPrintable(server.errorString()));
    qputenv(address, server.readLine().trimmed());
    client = connectClient();
    if (!client.connect(service, "/", service, QString(), this, SLOT(onSignal(QDBusMessage))))
        qFatal("no bus: %s", qPrintable(client.lastError().message()));
}

Bus::~Bus()
{
    QDBusConnection::disconnectFromBus(client.name());
    server.terminate();
    server.waitForFinished();
    qunsetenv(address);
}

QDBusConnection Bus::connectClient()
{
    // By address, as the client library takes the system bus for the same one for ever.
    return QDBusConnection::connectToBus(qEnvironmentVariable(address),
                                         QUuid::createUuid().toString());
}

QDBusPendingCall Bus::start(const QString &method, const QVariantList &arguments)
{
    return client.asyncCall(daemonCall(method, arguments), replyWait_ms);
}

QDBusMessage Bus::call(const QString &method, const QVariantList &arguments)
{
    // The call may be over already while signals before its reply still wait on the event loop;
    // the watcher's signal takes the same way as they do.
    bool finished = false;
    QDBusPendingCallWatcher watcher(start(method, arguments));
    connect(&watcher, &QDBusPendingCallWatcher::finished, [&] { finished = true; });
    if (!QTest::qWaitFor([&] { return finished; }, replyWait_ms))
        qFatal("the call never ended");
    return watcher.reply();
}

void Bus::onSignal(const QDBusMessage &message)
{
    journal.append(busSignal(message.member(), message.arguments().value(0)));
}

QDBusMessage daemonCall(const QString &method, const QVariantList &arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(service, "/", service, method);
    message.setArguments(arguments);
    return message;
}

QByteArray busSignal(const QString &name, const QVariant &argument)
{
    const QByteArray value = argument.type() == QVariant::ByteArray ? argument.toByteArray().toHex()
                                                                    : argument.toString().toUtf8();
    return name.toUtf8() + '(' + value + ')';
}
