// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "joinplan.h"

#include "ssid.h"
#include "support/psk.h"

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

/// Selects a stored network, which goes by its printed name. Its key management stays, and so does
/// its secret unless a key is given: the supplicant refuses an empty one.
DaemonCall storedJoinCall(const JoinSettings &settings, const QString &key = {})
{
    return joinCall(record(printedSsid(settings.ssid), wpa(), key));
}

/// The key management that the supplicant takes for a network set up by hand.
QString keyManagement(Security security)
{
    switch (security) {
    case Security::Wep:
        return QStringLiteral("WEP"); // the daemon's own word
    case Security::Wpa:
        return wpa();
    case Security::Wpa3:
        return QStringLiteral("SAE");
    case Security::Enterprise:
        return QStringLiteral("WPA-EAP");
    case Security::Open:
    case Security::Automatic:
    case Security::Unsupported:
        break;
    }
    return QStringLiteral("NONE");
}

/// Setting a network up by hand puts the secret between quotation marks, which makes a passphrase
/// of it; a key is set afterwards, on the network that is then stored.
QVector<DaemonCall> manualCalls(const JoinSettings &settings)
{
    const bool keyFollows = isPsk(settings.secret) && settings.security == Security::Wpa;
    BXNetwork network = record(settings.ssid, keyManagement(settings.security),
                               keyFollows ? QString() : settings.secret);
    network.identity = settings.identity;
    QVector<DaemonCall> calls{manualJoinCall(network)};
    if (keyFollows)
        calls.append(storedJoinCall(settings, settings.secret));
    return calls;
}
} // namespace

bool isPsk(const QString &secret)
{
    static const QRegularExpression psk(QStringLiteral("\\A[0-9A-Fa-f]{64}\\z"));
    return psk.match(secret).hasMatch();
}

JoinPlan joinPlan(const JoinSettings &settings)
{
    if (settings.security != Security::Open && settings.secret.isEmpty())
        return {false, {storedJoinCall(settings)}};
    // A new start each time: a stored network cannot change its key management on the direct way,
    // is not found under a name that is printed escaped, and is doubled on the manual way.
    if (settings.hidden)
        return {true, manualCalls(settings)};
    if (settings.security == Security::Open)
        return {true, {joinCall(record(settings.ssid, {}, {}))}};
    if (settings.security == Security::Wpa)
        return {true, {joinCall(record(settings.ssid, wpa(), keyOf(settings)))}};
    return {true, manualCalls(settings)};
}
} // namespace BxWifi
