// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QProcess>

/// The daemon as a process.
class DaemonProcess
{
public:
    DaemonProcess() = default;
    /// Stops the daemon; the test fails when it does not end cleanly, sanitizer reports included.
    ~DaemonProcess();
    Q_DISABLE_COPY_MOVE(DaemonProcess)

    void start(const QStringList &arguments = {});
    /// Ends the daemon with SIGTERM. Returns its exit status, or -1 when it crashed or did not end
    /// in time.
    int stop();
    /// Waits for a daemon that ends by itself.
    int waitForExit();

    /// All lines written to standard error so far, as they came out.
    QStringList log();
    /// Waits, on the event loop, until the log holds this line.
    bool waitForLog(const QString &line, int timeout_ms = 5000);

    /// What it is started with.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    QProcess process;

private:
    QByteArray output;
};
