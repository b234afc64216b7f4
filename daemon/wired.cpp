// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

// WifiDaemon's operations on the wired interface: its settings live in the boot loader's
// environment, which takes effect at the next boot; its present addressing is what the system's
// tools report.

#include "wifidaemon.h"

#include "records/payload.h"
#include "support/dhcpclient.h"
#include "support/logging.h"
#include "support/tool.h"
#include "tooloutput.h"

namespace
{
QString wiredInterface()
{
    return QStringLiteral("eth0");
}
QString dynamicFlag()
{
    return QStringLiteral("dynamicip");
}
} // namespace

void WifiDaemon::staticRequest()
{
    BXStatic addressing;
    addressing.ipAddress = bootVariable(QStringLiteral("ipaddr"));
    addressing.gateway = bootVariable(QStringLiteral("gatewayip"));
    addressing.netmask = bootVariable(QStringLiteral("netmask"));
    addressing.macAddress = bootVariable(QStringLiteral("ethaddr"));
    emit staticResult(payloadOf(addressing));
}

void WifiDaemon::setStaticRequest(const QByteArray &data)
{
    const auto addressing = recordOf<BXStatic>(data);
    // A record taken from staticResult still has the tool's line feeds in its values.
    setBootVariable(QStringLiteral("ipaddr"), addressing.ipAddress.simplified());
    setBootVariable(QStringLiteral("gatewayip"), addressing.gateway.simplified());
    setBootVariable(QStringLiteral("netmask"), addressing.netmask.simplified());
}

void WifiDaemon::setDynamic(bool dynamic)
{
    if (dynamic)
        setBootVariable(dynamicFlag(), QStringLiteral("1"));
    else // the name alone removes the variable
        envProcess->run(QStringLiteral("fw_setenv"), {dynamicFlag()});
}

bool WifiDaemon::getDynamic()
{
    return envProcess->run(QStringLiteral("fw_printenv"), {dynamicFlag()})
        .startsWith(dynamicFlag());
}

QString WifiDaemon::bootVariable(const QString &name)
{
    return bootValueOf(envProcess->run(QStringLiteral("fw_printenv"), {name}));
}

void WifiDaemon::setBootVariable(const QString &name, const QString &value)
{
    // Has fw_setenv take what follows the variable's name for a value, whatever it begins with.
    // Otherwise a client's "-s/tmp/script" would be an option that sets any variable.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("POSIXLY_CORRECT"), QStringLiteral("1"));
    envProcess->setProcessEnvironment(environment);
    envProcess->run(QStringLiteral("fw_setenv"), {name, value});
    envProcess->setProcessEnvironment({}); // the daemon's own again
}

void WifiDaemon::dynamicRequest()
{
    const bool dynamic = getDynamic();
    BXStatic addressing;
    ToolProcess ifconfig;
    readInterfaceAddress(ifconfig.run(QStringLiteral("ifconfig"), {wiredInterface()}), addressing);
    ToolProcess route;
    readDefaultGateway(route.run(QStringLiteral("route"), {QStringLiteral("-n")}), addressing);
    addressing.macAddress = bootVariable(QStringLiteral("ethaddr"));
    emit staticResult(payloadOf(addressing));
    emit dynamicResult(dynamic);
}

void WifiDaemon::setDynamicEthernetIp()
{
    ToolProcess client;
    const QString output =
        client.run(QStringLiteral("udhcpc"), dhcpClientArguments(wiredInterface()));
    qCDebug(debugLog) << Q_FUNC_INFO << output;
}
