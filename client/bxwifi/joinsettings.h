// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "security.h"

#include <QString>

#include <chrono>

namespace BxWifi
{
/// A network to join, and with what.
struct BXWIFI_EXPORT JoinSettings {
    QString ssid;
    Security security = Security::Automatic;
    /// WPA passphrase or 64-digit key, WPA3 passphrase, WEP key or enterprise password. Empty for
    /// WPA and WEP: joined with what the supplicant has stored; the others take it every time.
    QString secret;
    QString identity;    ///< Enterprise user name
    bool hidden = false; ///< The network does not announce its name
    std::chrono::seconds timeout{45};

    /// Why this cannot work, in one sentence; empty when it can.
    QString problem() const;
};
} // namespace BxWifi
