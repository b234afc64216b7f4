// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>
#include <QDataStream>

// One record travels as one byte array: the record in QDataStream's default encoding, big-endian
// UTF-16 texts behind a 32-bit length in bytes. That layout has been the same in every data-stream
// version, so no version is set.

/// The payload of one record.
template<typename Record>
QByteArray payloadOf(const Record &record)
{
    QByteArray payload;
    QDataStream stream(&payload, QIODevice::ReadWrite);
    stream << record;
    return payload;
}

/// The record in a payload. Never fails: what a short or malformed payload does not hold comes out
/// empty, and bytes behind the record are ignored.
template<typename Record>
Record recordOf(const QByteArray &payload)
{
    QDataStream stream(payload);
    Record record;
    stream >> record;
    return record;
}
