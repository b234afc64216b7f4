// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "bxnetworkconnected.h"

#include <QDataStream>

QDataStream &operator<<(QDataStream &stream, const BXNetworkConnected &status)
{
    return stream << status.bssid << status.frequency << status.ssid << status.mode
                  << status.pairwiseCipher << status.groupCipher << status.keyMgmt
                  << status.wpaState << status.ipAddress;
}

QDataStream &operator>>(QDataStream &stream, BXNetworkConnected &status)
{
    return stream >> status.bssid >> status.frequency >> status.ssid >> status.mode >>
           status.pairwiseCipher >> status.groupCipher >> status.keyMgmt >> status.wpaState >>
           status.ipAddress;
}
