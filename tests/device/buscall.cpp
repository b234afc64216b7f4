// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

// Calls a method that takes a BXNetwork with exactly the fields given, as no well-behaved client
// would: buscall METHOD [FIELD=VALUE]...

#include "bxnetwork.h"
#include "payload.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QMap>
#include <QTextStream>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    BXNetwork network;
    const QMap<QString, QString *> fields = {
        {QStringLiteral("flags"), &network.flags},
        {QStringLiteral("ssid"), &network.ssid},
        {QStringLiteral("password"), &network.password},
        {QStringLiteral("identity"), &network.identity},
    };
    const QStringList arguments = QCoreApplication::arguments();
    for (const QString &argument : arguments.mid(2)) {
        const QString field = argument.section(QLatin1Char('='), 0, 0);
        if (!fields.contains(field))
            qFatal("buscall: no field %s", qPrintable(field));
        *fields[field] = argument.section(QLatin1Char('='), 1);
    }

    const QString service = QStringLiteral("com.brelvix.bxwifid");
    QDBusMessage call =
        QDBusMessage::createMethodCall(service, QStringLiteral("/"), service, arguments.value(1));
    call << payloadOf(network);
    const QDBusMessage reply = QDBusConnection::systemBus().call(call, QDBus::Block, 180000);
    QTextStream(stderr) << reply.errorMessage();
    return reply.type() == QDBusMessage::ReplyMessage ? 0 : 1;
}
