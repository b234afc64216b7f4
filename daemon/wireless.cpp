// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

// WifiDaemon's operations on wireless networks, each a fixed sequence of supplicant commands. No
// reply is judged: a sequence always runs to its end, and what came of it is told by the
// supplicant's events.

#include "wifidaemon.h"

#include "control/wificontrol.h"
#include "records/payload.h"
#include "records/status.h"
#include "supplicantcommand.h"
#include "supplicantreply.h"

namespace
{
// In UTF-16 units. Longer ones are taken for a key and go out as they are, so a passphrase of 61 to
// 63 characters does not join; clients know, and send its 64 digits.
constexpr int longestHashedPassphrase = 60;
} // namespace

void WifiDaemon::scanRequest()
{
    emit statusMessage(Status::ScanStarted);
    control->ctrlRequest(QStringLiteral("SCAN"));
}

void WifiDaemon::onScanResultsIn()
{
    const QVector<BXNetwork> networks =
        scanTable(control->ctrlRequest(QStringLiteral("SCAN_RESULTS")));
    for (const BXNetwork &network : networks)
        emit scanResult(payloadOf(network));
    emit statusMessage(Status::ScanDelivered);
}

void WifiDaemon::connectRequest(const QByteArray &data)
{
    emit statusMessage(Status::ConnectionRequested);
    onConnectRequest(recordOf<BXNetwork>(data));
}

void WifiDaemon::onConnectRequest(const BXNetwork &network)
{
    std::optional<QString> id =
        networkIdOf(control->ctrlRequest(QStringLiteral("LIST_NETWORKS")), network.ssid);
    if (!id) {
        // The id keeps the line feed that ends the reply, here and below; the supplicant reads the
        // number and does not mind.
        id = control->ctrlRequest(QStringLiteral("ADD_NETWORK"));
        setNetwork(*id, QStringLiteral("ssid"), quoted(network.ssid));
    }
    setNetworkPassword(network, *id);
    control->ctrlRequest(networkCommand(QStringLiteral("SELECT_NETWORK"), *id));
    control->ctrlRequest(QStringLiteral("SAVE_CONFIG"));
    sync();
    control->ctrlRequest(QStringLiteral("RECONFIGURE"));
}

void WifiDaemon::setNetworkPassword(const BXNetwork &network, const QString &networkId)
{
    // The supplicant refuses "NULL" for either parameter: the key stays what it was, and the key
    // management falls back to its default, which takes WPA-PSK in.
    QString keyMgmt = QStringLiteral("NULL");
    QString psk = QStringLiteral("NULL");
    if (!network.flags.contains(QLatin1String("WPA"), Qt::CaseInsensitive))
        keyMgmt = QStringLiteral("NONE");
    else if (network.password.size() <= longestHashedPassphrase)
        psk = control->hashPasswordVantrel(network.password, network.ssid);
    else
        psk = network.password;
    setNetwork(networkId, QStringLiteral("key_mgmt"), keyMgmt);
    setNetwork(networkId, QStringLiteral("psk"), psk);
}

void WifiDaemon::connectRequestHidden(const QByteArray &data)
{
    onConnectRequestManual(recordOf<BXNetwork>(data));
}

void WifiDaemon::onConnectRequestManual(const BXNetwork &network)
{
    control->ctrlRequest(QStringLiteral("DISCONNECT"));
    const QString id = control->ctrlRequest(QStringLiteral("ADD_NETWORK"));
    const bool isWep = network.flags.contains(QLatin1String("WEP"));
    const bool isEap = network.flags.contains(QLatin1String("EAP"));

    setNetwork(id, QStringLiteral("ssid"), quoted(network.ssid));
    setNetwork(id, QStringLiteral("scan_ssid"), QStringLiteral("1"));
    setNetwork(id, QStringLiteral("key_mgmt"), isWep ? QStringLiteral("NONE") : network.flags);
    setNetwork(id, QStringLiteral("pairwise"), QStringLiteral("CCMP"));
    setNetwork(id, QStringLiteral("group"), QStringLiteral("CCMP"));
    if (isEap) {
        setNetwork(id, QStringLiteral("eap"), QStringLiteral("PEAP"));
        setNetwork(id, QStringLiteral("identity"), quoted(network.identity));
        setNetwork(id, QStringLiteral("password"), quoted(network.password));
    } else {
        const QString key = isWep ? QStringLiteral("wep_key0") : QStringLiteral("psk");
        setNetwork(id, key, quoted(network.password));
    }
    control->ctrlRequest(networkCommand(QStringLiteral("ENABLE_NETWORK"), id));
    // An enterprise login is left to whatever saves next: a reload would drop what is not saved.
    if (!isEap)
        control->ctrlRequest(QStringLiteral("SAVE_CONFIG"));
    control->ctrlRequest(networkCommand(QStringLiteral("SELECT_NETWORK"), id));
    sync();
    if (!isEap)
        control->ctrlRequest(QStringLiteral("RECONFIGURE"));
}

void WifiDaemon::setNetwork(const QString &networkId, const QString &parameter,
                            const QString &value)
{
    control->ctrlRequest(setNetworkCommand(networkId, parameter, value));
}

// By value, as the interface has it. NOLINTNEXTLINE(performance-unnecessary-value-param)
void WifiDaemon::removeRequest(QString ssid)
{
    const std::optional<QString> id =
        networkIdOf(control->ctrlRequest(QStringLiteral("LIST_NETWORKS")), ssid);
    if (!id)
        return;
    control->ctrlRequest(networkCommand(QStringLiteral("REMOVE_NETWORK"), *id));
    control->ctrlRequest(QStringLiteral("SAVE_CONFIG"));
    control->ctrlRequest(QStringLiteral("RECONFIGURE"));
    sync();
    emit statusMessage(Status::NetworkRemoved);
}

void WifiDaemon::disableRequest()
{
    emit statusMessage(Status::NotConnected);
    control->ctrlRequest(QStringLiteral("DISCONNECT"));
    control->ctrlRequest(QStringLiteral("SAVE_CONFIG"));
    sync();
    ssidRequest();
    ipRequest();
}

// Kept so that clients which call it get their reply; joining a network enables it.
void WifiDaemon::enableRequest() {}

void WifiDaemon::statusRequest()
{
    const QString reply = control->ctrlRequest(QStringLiteral("STATUS"));
    emit statusMessage(isAssociationCompleted(reply) ? Status::Connected : Status::NotConnected);
}

void WifiDaemon::ssidRequest()
{
    emit ssidResult(currentSsid(control->ctrlRequest(QStringLiteral("STATUS"))));
}

void WifiDaemon::ipRequest()
{
    emit ipResult(currentAddress(control->ctrlRequest(QStringLiteral("STATUS"))));
}

void WifiDaemon::fullStatusRequest()
{
    emit fullStatusResult(payloadOf(fullStatus(control->ctrlRequest(QStringLiteral("STATUS")))));
}
