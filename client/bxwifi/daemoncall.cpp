// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "daemoncall.h"

#include "records/bxstatic.h"
#include "records/payload.h"

namespace BxWifi
{
namespace
{
// The daemon handles one call at a time and waits that long for each supplicant reply and each
// tool; before a call's turn comes, an address refresh may still be running.
constexpr int exchange_ms = 10000;
constexpr int tool_ms = 30000;

constexpr int within(int exchanges, int tools)
{
    return tool_ms + exchanges * exchange_ms + tools * tool_ms;
}
} // namespace

DaemonCall scanCall()
{
    return {QStringLiteral("scanRequest"), {}, within(1, 0)};
}

DaemonCall joinCall(const BXNetwork &network)
{
    return {QStringLiteral("connectRequest"), {payloadOf(network)}, within(8, 2)};
}

DaemonCall manualJoinCall(const BXNetwork &network)
{
    return {QStringLiteral("connectRequestHidden"), {payloadOf(network)}, within(14, 1)};
}

DaemonCall disconnectCall()
{
    return {QStringLiteral("disableRequest"), {}, within(4, 1)};
}

DaemonCall removeCall(const QString &printedSsid)
{
    return {QStringLiteral("removeRequest"), {printedSsid}, within(4, 1)};
}

DaemonCall ssidCall()
{
    return {QStringLiteral("ssidRequest"), {}, within(1, 0)};
}

DaemonCall addressCall()
{
    return {QStringLiteral("ipRequest"), {}, within(1, 0)};
}

DaemonCall fullStatusCall()
{
    return {QStringLiteral("fullStatusRequest"), {}, within(1, 0)};
}

DaemonCall relinkCall()
{
    return {QStringLiteral("wpaConnectRequest"), {}, within(0, 0)};
}

DaemonCall wiredStoredCall()
{
    return {QStringLiteral("staticRequest"), {}, within(0, 4)};
}

DaemonCall wiredLiveCall()
{
    return {QStringLiteral("dynamicRequest"), {}, within(0, 4)};
}

DaemonCall setWiredCall(const WiredSettings &settings)
{
    BXStatic addressing;
    addressing.ipAddress = settings.address;
    addressing.gateway = settings.gateway;
    addressing.netmask = settings.netmask;
    return {QStringLiteral("setStaticRequest"), {payloadOf(addressing)}, within(0, 3)};
}

DaemonCall setDhcpCall(bool dhcp)
{
    return {QStringLiteral("setDynamic"), {dhcp}, within(0, 1)};
}
} // namespace BxWifi
