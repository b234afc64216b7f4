// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

// The verb that shows what the daemon says, one signal a line.

#include "command.h"
#include "output.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QHash>

#include <chrono>
#include <cstdio>

using BxWifi::WifiClient;
using BxWifi::WifiNetwork;
using BxWifi::WifiStatus;
using BxWifi::WiredSettings;

namespace
{
// The daemon does not report a connection that is lost.
constexpr std::chrono::seconds pollInterval{5};

const char *wordOf(WifiClient::Event event)
{
    switch (event) {
    case WifiClient::AssociationCompleted:
        return "connected";
    case WifiClient::NotConnected:
        return "not-connected";
    case WifiClient::ScanStarted:
        return "scan-started";
    case WifiClient::ScanDelivered:
        return "scan-delivered";
    case WifiClient::SupplicantExiting:
        return "supplicant-exiting";
    case WifiClient::ConnectionRequested:
        return "connection-requested";
    case WifiClient::TemporarilyDisabled:
        return "temporarily-disabled";
    case WifiClient::WrongKey:
        return "wrong-key";
    case WifiClient::NetworkRemoved:
        return "network-removed";
    }
    return "unknown"; // a newer daemon
}

Fields fieldsOf(const WifiNetwork &network)
{
    return {{QStringLiteral("bssid"), network.bssid},
            {QStringLiteral("signal_dbm"), network.signal},
            {QStringLiteral("frequency_mhz"), network.frequency},
            {QStringLiteral("flags"), network.flags},
            {QStringLiteral("ssid"), network.ssid}};
}

Fields fieldsOf(const WifiStatus &status)
{
    return {{QStringLiteral("state"), status.supplicantState},
            {QStringLiteral("bssid"), status.bssid},
            {QStringLiteral("address"), status.address},
            {QStringLiteral("ssid"), status.ssid}};
}

Fields fieldsOf(const WiredSettings &settings)
{
    return {{QStringLiteral("address"), settings.address},
            {QStringLiteral("gateway"), settings.gateway},
            {QStringLiteral("netmask"), settings.netmask},
            {QStringLiteral("mac_address"), settings.macAddress}};
}

class Printer
{
public:
    explicit Printer(bool wantsJson) : json(wantsJson) {}

    void print(const char *signal, const Fields &fields) const
    {
        const QString time = QDateTime::currentDateTime().toString(Qt::ISODateWithMs);
        if (json) {
            printJson(jsonOf(Fields{{QStringLiteral("time"), time},
                                    {QStringLiteral("signal"), QLatin1String(signal)}} +
                             fields));
        } else {
            ::print(QStringLiteral("%1 %2 %3").arg(time, QLatin1String(signal), lineOf(fields)));
        }
        if (std::ferror(stdout) != 0)
            QCoreApplication::exit(Failure);
    }

    /// For what this program asks for itself: leaves out what was said last.
    void printNews(const char *signal, const Fields &fields)
    {
        if (last.value(signal) == fields)
            return;
        last.insert(signal, fields);
        print(signal, fields);
    }

private:
    bool json;
    QHash<QByteArray, Fields> last;
};
} // namespace

ExitStatus monitor(const Command &command)
{
    WifiClient &client = command.client;
    // Tells at once when there is no daemon, or none for this user.
    if (const ExitStatus status = await(client.status()))
        return status;

    Printer printer(command.options.json);
    QObject::connect(&client, &WifiClient::happened, [&](WifiClient::Event event) {
        printer.print("status", {{QStringLiteral("status"), QLatin1String(wordOf(event))}});
    });
    QObject::connect(&client, &WifiClient::networkSeen, [&](const WifiNetwork &network) {
        printer.print("network", fieldsOf(network));
    });
    QObject::connect(&client, &WifiClient::accessPointLost, [&](const QString &bssid) {
        printer.print("lost", {{QStringLiteral("bssid"), bssid}});
    });
    QObject::connect(&client, &WifiClient::ssidReported, [&](const QString &ssid) {
        printer.printNews("name", {{QStringLiteral("ssid"), ssid}});
    });
    QObject::connect(&client, &WifiClient::addressReported, [&](const QString &address) {
        printer.print("address", {{QStringLiteral("address"), address}});
    });
    QObject::connect(&client, &WifiClient::statusReported, [&](const WifiStatus &status) {
        printer.printNews("connection", fieldsOf(status));
    });
    QObject::connect(&client, &WifiClient::wiredReported, [&](const WiredSettings &settings) {
        printer.print("wired", fieldsOf(settings));
    });
    QObject::connect(&client, &WifiClient::dhcpReported, [&](bool isDynamic) {
        printer.print("dhcp", {{QStringLiteral("dhcp"), isDynamic}});
    });
    QObject::connect(&client, &WifiClient::stateChanged, [&, wasThere = true]() mutable {
        const bool isThere = client.state() != WifiClient::Unavailable;
        if (isThere != wasThere)
            printer.print("daemon", {{QStringLiteral("available"), isThere}});
        wasThere = isThere;
    });
    client.setPollInterval(pollInterval);
    return static_cast<ExitStatus>(QCoreApplication::exec());
}
