// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "records/bxnetwork.h"
#include "wiredsettings.h"

#include <QString>
#include <QVariantList>

namespace BxWifi
{
/// One call of a bus method, with the longest time that it may take.
struct DaemonCall {
    QString method;
    QVariantList arguments;
    int timeout_ms;

    bool isRemoval() const { return method == QLatin1String("removeRequest"); }
};

DaemonCall scanCall();
DaemonCall joinCall(const BXNetwork &network);       ///< open and WPA networks; reuses a stored one
DaemonCall manualJoinCall(const BXNetwork &network); ///< all others; always adds a network
DaemonCall disconnectCall();
DaemonCall removeCall(const QString &printedSsid);
DaemonCall ssidCall();
DaemonCall addressCall();
DaemonCall fullStatusCall();
DaemonCall relinkCall();
DaemonCall wiredStoredCall();
DaemonCall wiredLiveCall();
DaemonCall setWiredCall(const WiredSettings &settings);
DaemonCall setDhcpCall(bool dhcp);
} // namespace BxWifi
