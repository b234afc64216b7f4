// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "export.h"

#include <QMetaType>
#include <QString>

class QDataStream;

/// The supplicant's status of the current association. Each field holds the value of one key of
/// the reply to STATUS; a key that the reply does not have leaves its field null.
struct BXNetworkConnected {
    QString bssid;          ///< bssid
    QString frequency;      ///< freq, in MHz
    QString ssid;           ///< ssid
    QString mode;           ///< mode
    QString pairwiseCipher; ///< the key that begins with "pairwise"
    QString groupCipher;    ///< the key that begins with "group"
    QString keyMgmt;        ///< key_mgmt
    QString wpaState;       ///< wpa_state
    QString ipAddress;      ///< ip_address
};
Q_DECLARE_METATYPE(BXNetworkConnected)

/// Writes the fields in declaration order, with nothing before, between or after them.
BX_RECORDS_EXPORT QDataStream &operator<<(QDataStream &stream, const BXNetworkConnected &status);

/// Reads the fields in declaration order; texts beyond the payload's end come out empty.
BX_RECORDS_EXPORT QDataStream &operator>>(QDataStream &stream, BXNetworkConnected &status);
