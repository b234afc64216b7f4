// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>
#include <QStringList>

/// Arguments of busybox `udhcpc` for one run on an interface: give up when there is no lease (-n),
/// exit once there is one (-q), and write the process id to the file that all runs share (-p).
inline QStringList dhcpClientArguments(const QString &interface)
{
    return {QStringLiteral("-i%1").arg(interface), QStringLiteral("-n"), QStringLiteral("-q"),
            QStringLiteral("-p/etc/udhcpc.pid")};
}
