// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "daemoncall.h"
#include "joinsettings.h"

#include <QVector>

namespace BxWifi
{
constexpr int shortestPassphrase = 8;
constexpr int longestPassphrase = 63; // IEEE 802.11i, H.4.1

/// The way to a network whose security is known and whose settings have no problem: the calls to
/// make, in order. A removal stands for as many as there are networks stored under the name.
QVector<DaemonCall> joinPlan(const JoinSettings &settings);

/// Whether a secret is a pre-shared key already: 64 hexadecimal digits.
bool isPsk(const QString &secret);
} // namespace BxWifi
