// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "disconnectwatch.h"

using BxWifi::WifiClient;
using BxWifi::WifiStatus;

namespace
{
// One may be the end of a scan that a client asked for.
constexpr int provingSearches = 2;

bool isResting(const QString &supplicantState)
{
    return supplicantState == QLatin1String("DISCONNECTED");
}
} // namespace

void DisconnectWatch::lose()
{
    step = Lost;
}

void DisconnectWatch::hear(WifiClient::Event event)
{
    step = step == Lost && event == WifiClient::NotConnected ? Told : Nothing;
    if (event == WifiClient::ConnectionRequested || event == WifiClient::AssociationCompleted)
        left = false;
}

void DisconnectWatch::hearName(const QString &ssid)
{
    step = step == Told && ssid.isEmpty() ? Named : Nothing;
}

// The interface may have its address still.
void DisconnectWatch::hearAddress()
{
    if (step == Named) {
        left = true;
        isHeard = true;
        searches = 0;
    }
    step = Nothing;
}

void DisconnectWatch::hear(const WifiStatus &status, bool isScanning, bool wasJoined)
{
    step = Nothing;
    if (isFirst)
        left = wasJoined && isResting(status.supplicantState);
    isFirst = false;
    if (left && isRefuted(status.supplicantState, isScanning)) {
        left = false;
        isHeard = false;
    }
}

/// The three may have been answers to three questions that a client asked just when the network was
/// lost. Nobody asks for long when the supplicant rests.
bool DisconnectWatch::isRefuted(const QString &supplicantState, bool isScanning)
{
    if (isResting(supplicantState)) {
        searches = 0;
        return false;
    }
    if (supplicantState.isEmpty() || supplicantState == QLatin1String("COMPLETED"))
        return true; // what a supplicant was told ends with it
    if (supplicantState == QLatin1String("INACTIVE"))
        return !isHeard;
    return !isScanning && ++searches >= provingSearches;
}
