// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <bxwifi/wificlient.h>

/// Tells a network that was left on purpose from one that was lost, by what the daemon says: a
/// client that disconnects has it say three things in a row, and then the supplicant rests. So does
/// one that was told earlier, before anybody watched. But one that has started with nothing that it
/// may join rests, too.
class DisconnectWatch
{
public:
    /// Whether somebody wants the device to be in no network.
    bool isLeft() const { return left; }

    /// The client's state has become BxWifi::WifiClient::Disconnected.
    void lose();
    void hear(BxWifi::WifiClient::Event event);
    void hearName(const QString &ssid);
    void hearAddress();
    /// `isScanning`: a client has asked for a scan, so that the supplicant does not rest.
    /// `wasJoined`: the device was in a network since it was booted.
    void hear(const BxWifi::WifiStatus &status, bool isScanning, bool wasJoined);

private:
    enum Step { Nothing, Lost, Told, Named };
    bool isRefuted(const QString &supplicantState, bool isScanning);

    Step step = Nothing;
    bool left = false;
    bool isHeard = false; ///< It was said, not concluded
    bool isFirst = true;
    int searches = 0; ///< Statuses in a row in which the supplicant was looking for a network
};
