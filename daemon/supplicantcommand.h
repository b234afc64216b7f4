// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

// The command formats of the supplicant's control interface that take arguments. All places of a
// format are filled at once, so that a "%1" inside an SSID or a password goes out as it is.
// Nothing is escaped: the supplicant takes what stands between the outer quotation marks.

/// WORD ID
inline QString networkCommand(const QString &word, const QString &networkId)
{
    return QStringLiteral("%1 %2").arg(word, networkId);
}

/// SET_NETWORK ID PARAMETER VALUE
inline QString setNetworkCommand(const QString &networkId, const QString &parameter,
                                 const QString &value)
{
    return QStringLiteral("%1 %2 %3 %4")
        .arg(QStringLiteral("SET_NETWORK"), networkId, parameter, value);
}

/// SET_NETWORK ID PARAMETER "VALUE"
inline QString setNetworkQuotedCommand(const QString &networkId, const QString &parameter,
                                       const QString &value)
{
    return QStringLiteral("%1 %2 %3 \"%4\"")
        .arg(QStringLiteral("SET_NETWORK"), networkId, parameter, value);
}
