// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "export.h"

#include <QMetaType>
#include <QString>

class QDataStream;

/// Addressing of the wired interface.
struct BXStatic {
    QString ipAddress;  ///< IPv4 address, dotted decimal
    QString gateway;    ///< Default gateway, dotted decimal
    QString netmask;    ///< Network mask, dotted decimal
    QString reserved;   ///< Carried along: null when the daemon sends, ignored when it receives
    QString macAddress; ///< Hardware address as the boot environment stores it
};
Q_DECLARE_METATYPE(BXStatic)

/// Writes the fields in declaration order, with nothing before, between or after them.
BX_RECORDS_EXPORT QDataStream &operator<<(QDataStream &stream, const BXStatic &addressing);

/// Reads the fields in declaration order; texts beyond the payload's end come out empty.
BX_RECORDS_EXPORT QDataStream &operator>>(QDataStream &stream, BXStatic &addressing);
