// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "rememberednetworks.h"

#include "securityword.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QSysInfo>

#include <algorithm>
#include <optional>
#include <utility>

using BxWifi::Security;

namespace
{
constexpr int mostNetworks = 50; // more than a device meets; the one joined longest ago goes first
constexpr int largestFile_bytes = 64 * 1024;
constexpr int longestSsid_bytes = 32;

const QString bootKey = QStringLiteral("boot");
const QString listKey = QStringLiteral("networks");
const QString ssidKey = QStringLiteral("ssid");
const QString securityKey = QStringLiteral("security");
const QString joinedKey = QStringLiteral("joined");

QJsonObject jsonOf(const RememberedNetworks::Network &network)
{
    return {{ssidKey, network.ssid},
            {securityKey, wordOf(network.security)},
            {joinedKey, network.joined.toString(Qt::ISODate)}};
}

std::optional<QVector<RememberedNetworks::Network>> networksIn(const QJsonObject &content)
{
    const QJsonValue list = content.value(listKey);
    if (!list.isArray())
        return std::nullopt;
    QVector<RememberedNetworks::Network> networks;
    const QJsonArray entries = list.toArray();
    for (const QJsonValue &entry : entries) {
        const QString ssid = entry[ssidKey].toString();
        const auto security = securityByWord(entry[securityKey].toString());
        if (ssid.isEmpty() || ssid.toUtf8().size() > longestSsid_bytes || !security)
            return std::nullopt;
        networks.append(
            {ssid, *security, QDateTime::fromString(entry[joinedKey].toString(), Qt::ISODate)});
    }
    return networks;
}
} // namespace

RememberedNetworks::RememberedNetworks(QString path) : file(std::move(path)) {}

QString RememberedNetworks::load()
{
    QFile source(file);
    if (!source.exists())
        return {};
    if (!source.open(QIODevice::ReadOnly))
        return setAside(source.errorString());
    const QJsonObject content = QJsonDocument::fromJson(source.read(largestFile_bytes)).object();
    const auto found = networksIn(content);
    if (!found)
        return setAside(QStringLiteral("no list of networks"));
    networks = *found;
    boot = content.value(bootKey).toString();
    return {};
}

QString RememberedNetworks::setAside(const QString &why) const
{
    const QString aside = file + QStringLiteral(".damaged");
    QFile::remove(aside);
    const QString what = QFile::rename(file, aside) ? QStringLiteral("set aside as %1").arg(aside)
                                                    : QStringLiteral("left where it is");
    return QStringLiteral("%1: %2; %3").arg(file, why, what);
}

bool RememberedNetworks::contains(const QString &ssid) const
{
    return std::any_of(networks.begin(), networks.end(),
                       [&](const Network &network) { return network.ssid == ssid; });
}

bool RememberedNetworks::isOfThisBoot() const
{
    return !boot.isEmpty() && boot == QString::fromLatin1(QSysInfo::bootUniqueId());
}

/// Nothing is written when nothing changes but the time: flash memory wears.
QString RememberedNetworks::note(const QString &ssid, Security security)
{
    if (isOfThisBoot() && !networks.isEmpty() && networks[0].ssid == ssid &&
        networks[0].security == security)
        return {};
    const auto others = std::remove_if(networks.begin(), networks.end(),
                                       [&](const Network &other) { return other.ssid == ssid; });
    networks.erase(others, networks.end());
    boot = QString::fromLatin1(QSysInfo::bootUniqueId());
    networks.prepend({ssid, security, QDateTime::currentDateTimeUtc()});
    networks.resize(std::min(networks.size(), mostNetworks));
    return save();
}

QString RememberedNetworks::forget(const QString &ssid)
{
    const auto others = std::remove_if(networks.begin(), networks.end(),
                                       [&](const Network &other) { return other.ssid == ssid; });
    networks.erase(others, networks.end());
    return save();
}

QString RememberedNetworks::save() const
{
    QJsonArray list;
    for (const Network &network : networks)
        list.append(jsonOf(network));
    const QByteArray text = QJsonDocument(QJsonObject{{bootKey, boot}, {listKey, list}}).toJson();
    QSaveFile target(file);
    // On a full disk it is flush() that fails; commit() alone would put an empty file in place.
    if (target.open(QIODevice::WriteOnly) && target.write(text) == text.size() && target.flush() &&
        target.commit())
        return {};
    return QStringLiteral("%1: %2; remembered until this ends").arg(file, target.errorString());
}
