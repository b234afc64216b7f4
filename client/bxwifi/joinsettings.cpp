// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "joinsettings.h"

#include "joinplan.h"

#include <algorithm>

namespace BxWifi
{
namespace
{
constexpr int longestSsid = 32; // bytes, IEEE 802.11

QString ssidProblem(const QString &ssid)
{
    if (ssid.isEmpty())
        return QStringLiteral("the name of the network is empty");
    if (ssid.toUtf8().size() > longestSsid)
        return QStringLiteral("the name of a network has at most %1 bytes").arg(longestSsid);
    if (ssid.contains(QChar::ReplacementCharacter) || ssid.contains(QChar::Null))
        return QStringLiteral("the daemon cannot pass on a name that is not UTF-8 text");
    return {};
}

bool hasControlCharacter(const QString &text)
{
    return std::any_of(text.begin(), text.end(),
                       [](QChar c) { return c.category() == QChar::Other_Control; });
}

QString passphraseProblem(const JoinSettings &settings)
{
    if (isPsk(settings.secret)) {
        return settings.security == Security::Wpa
                   ? QString()
                   : QStringLiteral("WPA3 takes a passphrase, not a 64-digit key");
    }
    const int length = settings.secret.toUtf8().size();
    if (length >= shortestPassphrase && length <= longestPassphrase)
        return {};
    return QStringLiteral("a passphrase has %1 to %2 characters, a key 64 hexadecimal digits")
        .arg(shortestPassphrase)
        .arg(longestPassphrase);
}

QString secretProblem(const JoinSettings &settings)
{
    const int length = settings.secret.toUtf8().size();
    switch (settings.security) {
    case Security::Automatic:
        return settings.hidden ? QStringLiteral("a hidden network does not say how it is protected")
                               : QString();
    case Security::Open:
        return length == 0 ? QString() : QStringLiteral("an open network takes no passphrase");
    case Security::Wep:
        return length == 0 || length == 5 || length == 13
                   ? QString()
                   : QStringLiteral("a WEP key has 5 or 13 characters");
    case Security::Wpa:
        return length == 0 ? QString() : passphraseProblem(settings);
    case Security::Wpa3:
        return passphraseProblem(settings);
    case Security::Enterprise:
        return length > 0 && !settings.identity.isEmpty()
                   ? QString()
                   : QStringLiteral("an enterprise network takes an identity and a password");
    case Security::Unsupported:
        return QStringLiteral("the network is protected in a way that the daemon cannot join");
    }
    return {};
}
} // namespace

QString JoinSettings::problem() const
{
    QString nameProblem = ssidProblem(ssid);
    if (!nameProblem.isEmpty())
        return nameProblem;
    if (hasControlCharacter(secret + identity))
        return QStringLiteral("control characters in a passphrase, password or identity");
    return secretProblem(*this);
}
} // namespace BxWifi
