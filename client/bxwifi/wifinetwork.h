// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "security.h"

#include <QMetaType>
#include <QString>
#include <QVector>

namespace BxWifi
{
/// One access point that a scan found.
struct BXWIFI_EXPORT WifiNetwork {
    Q_GADGET
    Q_PROPERTY(QString ssid MEMBER ssid)
    Q_PROPERTY(QString bssid MEMBER bssid)
    Q_PROPERTY(int signal MEMBER signal)
    Q_PROPERTY(int frequency MEMBER frequency)
    Q_PROPERTY(QString flags MEMBER flags)
    Q_PROPERTY(BxWifi::Security security READ security)
    Q_PROPERTY(int channel READ channel)
    Q_PROPERTY(QString band READ band)
    Q_PROPERTY(int bars READ bars)

public:
    QString ssid;      ///< Empty for a hidden network. Bytes that are no UTF-8 show as U+FFFD
    QString bssid;     ///< Six hexadecimal bytes separated by colons
    int signal = 0;    ///< dBm
    int frequency = 0; ///< MHz
    QString flags;     ///< The supplicant's capability flags

    /// How it is protected, as far as joining it goes.
    Security security() const { return securityOf(flags); }
    /// Channel number, 0 when the frequency is none of a Wi-Fi channel.
    int channel() const;
    /// "2.4 GHz", "5 GHz" or "6 GHz", or empty.
    QString band() const;
    /// Strength of the signal in bars, 0 to 4.
    int bars() const;
};

/// How a network is protected, by all access points of its name; Automatic if there are several
/// kinds, so that one might pass for the other, or none.
BXWIFI_EXPORT Security announcedSecurity(const QVector<WifiNetwork> &accessPoints,
                                         const QString &ssid);

/// By falling signal.
BXWIFI_EXPORT QVector<WifiNetwork> bySignal(QVector<WifiNetwork> accessPoints);

/// One entry per name, its strongest access point, by falling signal. Hidden ones are left out.
BXWIFI_EXPORT QVector<WifiNetwork> strongestByName(QVector<WifiNetwork> accessPoints);
} // namespace BxWifi
Q_DECLARE_METATYPE(BxWifi::WifiNetwork)
