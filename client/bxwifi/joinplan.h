// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "daemoncall.h"
#include "joinsettings.h"

#include <QVector>

#include <optional>

namespace BxWifi
{
struct WifiStatus;

constexpr int shortestPassphrase = 8;
constexpr int longestPassphrase = 63; // IEEE 802.11i, H.4.1

/// The way to a network.
struct JoinPlan {
    QString ssid;
    Security security;
    bool takesStored; ///< Joined with what is stored, so that nothing may be stored for it
    /// To be made in order. A removal stands for as many as there are networks stored by the name.
    QVector<DaemonCall> calls;
};

/// The way to a network whose security is known and whose settings have no problem.
JoinPlan joinPlan(const JoinSettings &settings);

/// The way back to the network that is joined, with what is stored. None if that takes its secret:
/// setting anything but WPA, WPA2, WEP or no protection changes what is stored.
std::optional<JoinPlan> returnPlan(const WifiStatus &joined);

/// Whether a secret is a pre-shared key already: 64 hexadecimal digits.
bool isPsk(const QString &secret);
} // namespace BxWifi
