// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "privatebus.h"

PrivateBus::PrivateBus()
{
    // It complains that it cannot raise its limit of open files.
    busDaemon.setStandardErrorFile(QProcess::nullDevice());
    busDaemon.start("dbus-daemon",
                    {"--config-file=" HARNESS "/bus.conf", "--nofork", "--print-address"});
    // The address is printed once the bus listens.
    if (!busDaemon.waitForReadyRead())
        qFatal("dbus-daemon: %s", qPrintable(busDaemon.errorString()));
    busAddress = busDaemon.readLine().trimmed();
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", busAddress.toLocal8Bit());
}

PrivateBus::~PrivateBus()
{
    busDaemon.terminate();
    busDaemon.waitForFinished();
    qunsetenv("DBUS_SYSTEM_BUS_ADDRESS");
}
