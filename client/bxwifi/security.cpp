// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "security.h"

#include <QStringList>

namespace BxWifi
{
Security securityOf(const QString &flags)
{
    const auto has = [&flags](const char *token) {
        return flags.contains(QLatin1String(token));
    };
    if (has("-EAP"))
        return Security::Enterprise;
    if (has("PSK")) // also beside SAE: a transition network is joined like WPA2
        return Security::Wpa;
    if (has("SAE"))
        return Security::Wpa3;
    if (has("[WEP"))
        return Security::Wep;
    if (has("[WPA") || has("[RSN") || has("[OSEN") || has("[OWE") || has("[IBSS"))
        return Security::Unsupported;
    return Security::Open;
}

QString securityText(const QString &flags)
{
    const auto has = [&flags](const char *token) {
        return flags.contains(QLatin1String(token));
    };
    switch (securityOf(flags)) {
    case Security::Open:
        return QStringLiteral("open");
    case Security::Wep:
        return QStringLiteral("WEP");
    case Security::Wpa3:
        return QStringLiteral("WPA3");
    case Security::Automatic:
    case Security::Unsupported:
        return QStringLiteral("unsupported");
    case Security::Wpa:
    case Security::Enterprise:
        break;
    }
    QStringList generations;
    if (has("[WPA-"))
        generations << QStringLiteral("WPA");
    if (has("[WPA2-") || has("[RSN-"))
        generations << QStringLiteral("WPA2");
    if (has("SAE"))
        generations << QStringLiteral("WPA3");
    const QString text = generations.join(QLatin1Char('/'));
    return has("-EAP") ? text + QStringLiteral(" Enterprise") : text;
}
} // namespace BxWifi
