// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "joinsettings.h"

#include "joinplan.h"

#include <QCoreApplication>

#include <algorithm>

namespace BxWifi
{
namespace
{
constexpr int longestSsid = 32; // bytes, IEEE 802.11
constexpr std::chrono::hours longestTimeout{24};

struct Problem {
    Q_DECLARE_TR_FUNCTIONS(BxWifi::JoinSettings)
};

QString ssidProblem(const QString &ssid)
{
    if (ssid.isEmpty())
        return Problem::tr("the name of the network is empty");
    if (ssid.toUtf8().size() > longestSsid)
        return Problem::tr("the name of a network has at most %1 bytes").arg(longestSsid);
    if (ssid.contains(QChar::ReplacementCharacter) || ssid.contains(QChar::Null))
        return Problem::tr("the daemon cannot pass on a name that is not UTF-8 text");
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
                   : Problem::tr("WPA3 takes a passphrase, not a 64-digit key");
    }
    const int length = settings.secret.toUtf8().size();
    if (length >= shortestPassphrase && length <= longestPassphrase)
        return {};
    return Problem::tr("a passphrase has %1 to %2 characters, a key 64 hexadecimal digits")
        .arg(shortestPassphrase)
        .arg(longestPassphrase);
}

QString secretProblem(const JoinSettings &settings)
{
    const int length = settings.secret.toUtf8().size();
    switch (settings.security) {
    case Security::Automatic:
        return settings.hidden ? Problem::tr("a hidden network does not say how it is protected")
                               : QString();
    case Security::Open:
        return length == 0 ? QString() : Problem::tr("an open network takes no passphrase");
    case Security::Wep:
        return length == 0 || length == 5 || length == 13
                   ? QString()
                   : Problem::tr("a WEP key has 5 or 13 characters");
    case Security::Wpa:
        return length == 0 ? QString() : passphraseProblem(settings);
    case Security::Wpa3:
        return passphraseProblem(settings);
    case Security::Enterprise:
        return length > 0 && !settings.identity.isEmpty()
                   ? QString()
                   : Problem::tr("an enterprise network takes an identity and a password");
    case Security::Unsupported:
        return Problem::tr("the network is protected in a way that the daemon cannot join");
    }
    return {};
}
} // namespace

QString JoinSettings::problem() const
{
    QString nameProblem = ssidProblem(ssid);
    if (!nameProblem.isEmpty())
        return nameProblem;
    if (timeout <= std::chrono::seconds(0) || timeout > longestTimeout)
        return Problem::tr("a time limit is one second to one day");
    if (hasControlCharacter(secret + identity))
        return Problem::tr("control characters in a passphrase, password or identity");
    return secretProblem(*this);
}
} // namespace BxWifi
