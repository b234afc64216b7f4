// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "bxstatic.h"

#include <QDataStream>

QDataStream &operator<<(QDataStream &stream, const BXStatic &addressing)
{
    return stream << addressing.ipAddress << addressing.gateway << addressing.netmask
                  << addressing.reserved << addressing.macAddress;
}

QDataStream &operator>>(QDataStream &stream, BXStatic &addressing)
{
    return stream >> addressing.ipAddress >> addressing.gateway >> addressing.netmask >>
           addressing.reserved >> addressing.macAddress;
}
