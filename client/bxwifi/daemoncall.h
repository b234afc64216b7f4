// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "records/bxnetwork.h"
#include "records/bxstatic.h"
#include "records/payload.h"

#include <QString>
#include <QVariantList>

namespace BxWifi
{
/// One call of a bus method, with the longest time that it may take.
struct DaemonCall {
    QString method;
    QVariantList arguments;
    int timeout_ms;

    /// Of one of the networks that are stored by a name.
    bool isRemoval() const { return method == QLatin1String("removeRequest"); }

    static DaemonCall scan() { return call("scanRequest", within(1, 0)); }
    /// For open and WPA networks; reuses a stored one.
    static DaemonCall join(const BXNetwork &network)
    {
        return call("connectRequest", within(8, 2), {payloadOf(network)});
    }
    /// For all other networks; always adds one.
    static DaemonCall joinManually(const BXNetwork &network)
    {
        return call("connectRequestHidden", within(14, 1), {payloadOf(network)});
    }
    static DaemonCall disconnect() { return call("disableRequest", within(4, 1)); }
    static DaemonCall remove(const QString &printedSsid)
    {
        return call("removeRequest", within(4, 1), {printedSsid});
    }
    static DaemonCall ssid() { return call("ssidRequest", within(1, 0)); }
    static DaemonCall address() { return call("ipRequest", within(1, 0)); }
    static DaemonCall fullStatus() { return call("fullStatusRequest", within(1, 0)); }
    static DaemonCall relink() { return call("wpaConnectRequest", within(0, 0)); }
    static DaemonCall wiredStored() { return call("staticRequest", within(0, 4)); }
    static DaemonCall wiredLive() { return call("dynamicRequest", within(0, 4)); }
    static DaemonCall setWired(const BXStatic &addressing)
    {
        return call("setStaticRequest", within(0, 3), {payloadOf(addressing)});
    }
    static DaemonCall setDhcp(bool dhcp) { return call("setDynamic", within(0, 1), {dhcp}); }

private:
    // The daemon handles one call at a time and waits that long for each supplicant reply and each
    // tool; before a call's turn comes, an address refresh may still be running.
    static constexpr int exchange_ms = 10000;
    static constexpr int tool_ms = 30000;
    static constexpr int within(int exchanges, int tools)
    {
        return tool_ms + exchanges * exchange_ms + tools * tool_ms;
    }

    static DaemonCall call(const char *method, int timeout_ms, const QVariantList &arguments = {})
    {
        return {QLatin1String(method), arguments, timeout_ms};
    }
};
} // namespace BxWifi
