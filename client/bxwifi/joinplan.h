// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "daemoncall.h"
#include "joinsettings.h"

#include <QVector>

namespace BxWifi
{
/// What joins a network, in order.
struct JoinPlan {
    bool replaceStored; ///< First remove all that is stored under the name
    QVector<DaemonCall> calls;
};

/// The way to a network whose security is known and whose settings have no problem.
JoinPlan joinPlan(const JoinSettings &settings);

/// Whether a secret is a pre-shared key already: 64 hexadecimal digits.
bool isPsk(const QString &secret);
} // namespace BxWifi
