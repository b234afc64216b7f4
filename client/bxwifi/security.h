// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "export.h"

#include <QMetaType>
#include <QString>

namespace BxWifi
{
Q_NAMESPACE_EXPORT(BXWIFI_EXPORT)

/// How a network is protected, as far as joining it goes.
enum class Security {
    Automatic,   ///< Not known; joining takes what the network announces
    Open,        ///< No protection
    Wep,         ///< A key of 5 or 13 characters
    Wpa,         ///< WPA, WPA2 or WPA2/WPA3 with a passphrase
    Wpa3,        ///< WPA3 only (SAE) with a passphrase
    Enterprise,  ///< WPA2 Enterprise: PEAP with an identity and a password
    Unsupported, ///< Something that the daemon has no way to join
};
Q_ENUM_NS(Security)

/// What the supplicant's capability flags of an access point mean for joining it.
BXWIFI_EXPORT Security securityOf(const QString &flags);

/// The same flags in words, e.g. "WPA2", "WPA2/WPA3", "WPA2 Enterprise".
BXWIFI_EXPORT QString securityText(const QString &flags);
} // namespace BxWifi
