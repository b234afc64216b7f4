// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "bxnetwork.h"

#include <QDataStream>

QDataStream &operator<<(QDataStream &stream, const BXNetwork &network)
{
    return stream << network.bssid << network.frequency << network.signalLevel << network.flags
                  << network.ssid << network.password << network.identity << network.reservedFlag;
}

QDataStream &operator>>(QDataStream &stream, BXNetwork &network)
{
    return stream >> network.bssid >> network.frequency >> network.signalLevel >> network.flags >>
           network.ssid >> network.password >> network.identity >> network.reservedFlag;
}
