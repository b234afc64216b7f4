// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "export.h"

#include <QMetaType>
#include <QString>

class QDataStream;

/// One wireless network, as seen in a scan or as asked for by a client.
///
/// Every text starts as a null string. Null and empty differ on the wire, so a field that nobody
/// filled can be told from one that is known to be empty.
struct BXNetwork {
    QString bssid;             ///< Access point, six hexadecimal bytes separated by colons
    QString frequency;         ///< Channel frequency in MHz, decimal text
    QString signalLevel;       ///< Signal level as the supplicant reports it (dBm), decimal text
    QString flags;             ///< Capabilities in bracketed tokens, e.g. [WPA2-PSK-CCMP][ESS]
    QString ssid;              ///< Network name
    QString password;          ///< Passphrase, pre-shared key, WEP key or EAP password, by `flags`
    QString identity;          ///< EAP identity
    bool reservedFlag = false; ///< Carried along, never read
};
Q_DECLARE_METATYPE(BXNetwork)

/// Writes the fields in declaration order, with nothing before, between or after them.
BX_RECORDS_EXPORT QDataStream &operator<<(QDataStream &stream, const BXNetwork &network);

/// Reads the fields in declaration order. A payload that ends early leaves the texts beyond its
/// end empty and the flag false.
BX_RECORDS_EXPORT QDataStream &operator>>(QDataStream &stream, BXNetwork &network);
