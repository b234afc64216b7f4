// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "supplicantreply.h"

#include "support/text.h"

namespace
{
/// The rows of a table whose header is told by its place alone, in columns; rows that do not have
/// the number of columns asked for are left out.
QVector<QStringList> tableRows(const QString &reply, int columnCount)
{
    QVector<QStringList> rows;
    const QStringList lines = linesOf(reply).mid(1);
    for (const QString &line : lines) {
        const QStringList columns = line.split(QLatin1Char('\t'));
        if (columns.size() == columnCount)
            rows.append(columns);
    }
    return rows;
}

/// The field of the record that a key of the STATUS reply fills; null for a key of no interest.
QString *fieldOf(BXNetworkConnected &status, const QString &key)
{
    if (key == QLatin1String("bssid"))
        return &status.bssid;
    if (key == QLatin1String("freq"))
        return &status.frequency;
    if (key == QLatin1String("ssid"))
        return &status.ssid;
    if (key == QLatin1String("key_mgmt"))
        return &status.keyMgmt;
    if (key == QLatin1String("mode"))
        return &status.mode;
    if (key.startsWith(QLatin1String("pairwise")))
        return &status.pairwiseCipher;
    if (key.startsWith(QLatin1String("group")))
        return &status.groupCipher;
    if (key == QLatin1String("wpa_state"))
        return &status.wpaState;
    if (key == QLatin1String("ip_address"))
        return &status.ipAddress;
    return nullptr;
}
} // namespace

QVector<BXNetwork> scanTable(const QString &reply)
{
    QVector<BXNetwork> networks;
    const QVector<QStringList> rows = tableRows(reply, 5);
    for (const QStringList &columns : rows) {
        BXNetwork network;
        network.bssid = columns[0];
        network.frequency = columns[1];
        network.signalLevel = columns[2];
        network.flags = columns[3];
        network.ssid = columns[4];
        networks.append(network);
    }
    return networks;
}

std::optional<QString> networkIdOf(const QString &reply, const QString &ssid)
{
    const QVector<QStringList> rows = tableRows(reply, 4);
    for (const QStringList &columns : rows) {
        if (columns[1] == ssid)
            return columns[0];
    }
    return std::nullopt;
}

bool isAssociationCompleted(const QString &reply)
{
    const QStringList lines = linesOf(reply);
    for (const QString &line : lines) {
        if (line.startsWith(QLatin1String("wpa_state=")))
            return line.contains(QLatin1String("COMPLETED"), Qt::CaseInsensitive);
    }
    return false;
}

QString currentSsid(const QString &reply)
{
    const QLatin1String key("ssid=");
    const QStringList lines = linesOf(reply);
    for (QString line : lines) {
        if (line.startsWith(key))
            return line.remove(key);
    }
    return {};
}

QString currentAddress(const QString &reply)
{
    const QLatin1String ssidKey("ssid=");
    const QLatin1String addressKey("ip_address=");
    bool named = false;
    QString address;
    const QStringList lines = linesOf(reply);
    for (QString line : lines) {
        if (line.startsWith(ssidKey)) {
            line.remove(ssidKey);
            named = named || !line.isEmpty();
        }
        // What is left of an SSID line is looked at too.
        if (line.startsWith(addressKey))
            address = line.remove(addressKey);
    }
    return named ? address : QString();
}

BXNetworkConnected fullStatus(const QString &reply)
{
    BXNetworkConnected status;
    const QStringList lines = linesOf(reply);
    for (const QString &line : lines) {
        const QStringList pieces = line.split(QLatin1Char('='));
        QString *field = pieces.size() < 2 ? nullptr : fieldOf(status, pieces[0]);
        if (field)
            *field = pieces[1];
    }
    return status;
}
