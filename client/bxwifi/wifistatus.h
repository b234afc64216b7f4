// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "export.h"

#include <QMetaType>
#include <QObject>
#include <QString>

namespace BxWifi
{
/// The wireless connection. What does not apply or is not known is empty.
struct BXWIFI_EXPORT WifiStatus {
    Q_GADGET
    Q_PROPERTY(bool connected MEMBER connected)
    Q_PROPERTY(QString ssid MEMBER ssid)
    Q_PROPERTY(QString address MEMBER address)
    Q_PROPERTY(QString bssid MEMBER bssid)
    Q_PROPERTY(int frequency MEMBER frequency)
    Q_PROPERTY(QString mode MEMBER mode)
    Q_PROPERTY(QString pairwiseCipher MEMBER pairwiseCipher)
    Q_PROPERTY(QString groupCipher MEMBER groupCipher)
    Q_PROPERTY(QString keyManagement MEMBER keyManagement)
    Q_PROPERTY(QString supplicantState MEMBER supplicantState)

public:
    bool connected = false;  ///< Associated, keys in place
    QString ssid;            ///< Name of the network
    QString address;         ///< IPv4 address of the wireless interface
    QString bssid;           ///< Access point
    int frequency = 0;       ///< MHz
    QString mode;            ///< "station" for an ordinary client
    QString pairwiseCipher;  ///< Cipher of unicast frames
    QString groupCipher;     ///< Cipher of broadcast frames
    QString keyManagement;   ///< The supplicant's word, e.g. "WPA2-PSK"
    QString supplicantState; ///< The supplicant's word, e.g. "COMPLETED"; empty: none answers
};
} // namespace BxWifi
Q_DECLARE_METATYPE(BxWifi::WifiStatus)
