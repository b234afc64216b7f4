// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "security.h"

#include <QString>

#include <chrono>

namespace BxWifi
{
/// A network to join, and with what.
///
/// A join that fails goes back to the network that was joined before, with what the supplicant has
/// stored for that one, and removes what cannot join: a network whose secret was refused. If that
/// is the network that was joined before, given a new secret that turns out wrong, the former one
/// is lost, as nobody can ask the supplicant for it.
struct BXWIFI_EXPORT JoinSettings {
    QString ssid;                            ///< Name
    Security security = Security::Automatic; ///< How it is protected
    /// WPA passphrase or 64-digit key, WPA3 passphrase, WEP key or enterprise password. Empty for
    /// WPA and WEP: joined with what the supplicant has stored; the others take it every time.
    QString secret;
    QString identity;    ///< Enterprise user name
    bool hidden = false; ///< The network does not announce its name
    /// From one second to one day, for everything up to an address, scans included. Going back
    /// after a failure takes up to 30 s more.
    std::chrono::seconds timeout{45};

    /// Why this cannot work, in one sentence; empty when it can.
    QString problem() const;

    /// The settings in the text of a QR code, as phones print and scan it:
    ///
    ///     WIFI:T:WPA;S:Lab WPA2;P:correct horse battery;;
    ///
    /// Fields come in any order; those not listed are overlooked.
    ///
    /// - T: WPA, SAE, WEP, WPA2-EAP (PEAP) or nopass; without it, nopass. Codes of networks that
    ///   speak WPA3 alone say WPA too: to join those, go by what the network announces
    /// - S: name, P: passphrase, key or password, I: identity, H: "true" for a hidden network
    /// - E: PEAP, or no field at all
    ///
    /// A backslash takes the character behind it as it stands; quotation marks around a value are
    /// no part of it. Hexadecimal digits that are not in quotation marks are a name's bytes; where
    /// these are no printable UTF-8, they are the name itself, for "CAFE" is a name as well. A WEP
    /// key of 10 or 26 digits is given by its bytes. Passphrases are taken as they stand.
    ///
    /// `problem` becomes a sentence about what is malformed, without the secret in it, and the
    /// settings are empty then; or else it becomes empty. What was read may still have a problem().
    static JoinSettings fromUri(const QString &uri, QString *problem);
    /// The text for a QR code; it holds the secret. Security::Automatic is written as WPA if there
    /// is a secret, else as an open network; empty for Security::Unsupported.
    QString toUri() const;
};
} // namespace BxWifi
