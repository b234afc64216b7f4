// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "joinplan.h"

#include "ssid.h"
#include "support/psk.h"
#include "wifistatus.h"

#include <QRegularExpression>

namespace BxWifi
{
namespace
{
// A key goes to the daemon as 64 digits: so no passphrase gets into its log or onto the command
// line of a tool, and passphrases of 61 to 63 characters work.
QString keyOf(const JoinSettings &settings)
{
    if (isPsk(settings.secret))
        return settings.secret;
    return QString::fromLatin1(pskOf(settings.secret.toUtf8(), settings.ssid.toUtf8()));
}

BXNetwork record(const QString &ssid, const QString &flags, const QString &secret)
{
    BXNetwork network;
    network.ssid = ssid;
    network.flags = flags;
    network.password = secret;
    return network;
}

QString wpa()
{
    return QStringLiteral("WPA-PSK");
}

/// Flags that make the daemon set WPA's key management, or none at all.
QString flagsOf(Security security)
{
    return security == Security::Wpa || security == Security::Wpa3 ? wpa() : QString();
}

DaemonCall newJoinCall(const JoinSettings &settings, const QString &key)
{
    return DaemonCall::join(record(settings.ssid, flagsOf(settings.security), key));
}

/// Selects a stored network, which goes by its printed name. It keeps its secret unless a key is
/// given: the supplicant refuses an empty one.
DaemonCall storedJoinCall(const JoinSettings &settings, const QString &key)
{
    return DaemonCall::join(record(printedSsid(settings.ssid), flagsOf(settings.security), key));
}

DaemonCall manualCall(const JoinSettings &settings, const QString &flags, const QString &secret)
{
    BXNetwork network = record(settings.ssid, flags, secret);
    network.identity = settings.identity;
    return DaemonCall::joinManually(network);
}

// Setting a network up by hand saves before it selects, so that everything stored is enabled again
// and competes. What is stored is disabled for good by a direct join, before or afterwards.
QVector<DaemonCall> manualCalls(const JoinSettings &settings)
{
    switch (settings.security) {
    case Security::Open:
        return {manualCall(settings, QStringLiteral("NONE"), {}), storedJoinCall(settings, {})};
    case Security::Wep:
        return {manualCall(settings, QStringLiteral("WEP"), settings.secret),
                storedJoinCall(settings, {})};
    case Security::Wpa: {
        // Here a secret becomes a passphrase, so the key follows with the direct join; until then
        // something stands in, as the supplicant does not save a network without any.
        const QString key = keyOf(settings);
        return {manualCall(settings, wpa(), key.left(longestPassphrase)),
                storedJoinCall(settings, key)};
    }
    case Security::Wpa3:
        // A direct join would undo the key management, so it comes before, for the others' sake.
        return {newJoinCall(settings, keyOf(settings)),
                DaemonCall::remove(printedSsid(settings.ssid)),
                manualCall(settings, QStringLiteral("SAE"), settings.secret)};
    case Security::Enterprise: // neither saved nor reloaded: nothing gets enabled
        return {manualCall(settings, QStringLiteral("WPA-EAP"), settings.secret)};
    case Security::Automatic:
    case Security::Unsupported:
        break;
    }
    return {};
}

QVector<DaemonCall> newCalls(const JoinSettings &settings)
{
    // A new start each time: a stored network keeps settings of the way that it came by, is not
    // found if its name is printed escaped, and is doubled when set up by hand.
    const QVector<DaemonCall> start{DaemonCall::remove(printedSsid(settings.ssid))};
    if (!settings.hidden && settings.security == Security::Open)
        return start + QVector<DaemonCall>{newJoinCall(settings, {})};
    if (!settings.hidden && settings.security == Security::Wpa)
        return start + QVector<DaemonCall>{newJoinCall(settings, keyOf(settings))};
    return start + manualCalls(settings);
}
} // namespace

bool isPsk(const QString &secret)
{
    static const QRegularExpression psk(QStringLiteral("\\A[0-9A-Fa-f]{64}\\z"));
    return psk.match(secret).hasMatch();
}

JoinPlan joinPlan(const JoinSettings &settings)
{
    const bool takesStored = settings.security != Security::Open && settings.secret.isEmpty();
    return {settings.ssid, settings.security, takesStored,
            takesStored ? QVector<DaemonCall>{storedJoinCall(settings, {})} : newCalls(settings)};
}

std::optional<JoinPlan> returnPlan(const WifiStatus &joined)
{
    const bool isPlain = joined.keyManagement == QLatin1String("NONE");
    if (!isPlain && joined.keyManagement != QLatin1String("WPA2-PSK") &&
        joined.keyManagement != QLatin1String("WPA-PSK"))
        return std::nullopt;
    JoinSettings settings;
    settings.ssid = joined.ssid;
    settings.security = isPlain ? Security::Open : Security::Wpa;
    if (!settings.problem().isEmpty()) // asked for by another name, it would be added
        return std::nullopt;
    return JoinPlan{settings.ssid, settings.security, true, {storedJoinCall(settings, {})}};
}
} // namespace BxWifi
