// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

// The command formats of the supplicant's control interface that take arguments. All places of a
// format are filled at once, so that a "%1" inside an SSID or a password goes out as it is.

/// WORD ID
inline QString networkCommand(const QString &word, const QString &networkId)
{
    return QStringLiteral("%1 %2").arg(word, networkId);
}

/// SET_NETWORK ID PARAMETER VALUE
inline QString setNetworkCommand(const QString &networkId, const QString &parameter,
                                 const QString &value)
{
    return QStringLiteral("SET_NETWORK %1 %2 %3").arg(networkId, parameter, value);
}

/// A text value. Nothing in it is escaped: the supplicant takes what stands between the first and
/// the last quotation mark.
inline QString quoted(const QString &value)
{
    return QLatin1Char('"') + value + QLatin1Char('"');
}
