// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "daemonprocess.h"

#include <QTest>

constexpr int exitWait_ms = 15000; // a supplicant that does not answer SAVE_CONFIG costs 10 s

DaemonProcess::~DaemonProcess()
{
    if (process.state() == QProcess::NotRunning || stop() == 0)
        return;
    fputs(qPrintable(log().join('\n')), stderr);
    QTest::qFail("the daemon did not end cleanly", __FILE__, __LINE__);
}

void DaemonProcess::start(const QStringList &arguments)
{
    // A Qt that is built for it would send the log elsewhere when there is no terminal.
    environment.insert("QT_FORCE_STDERR_LOGGING", "1");
    process.setProcessEnvironment(environment);
    process.start(BXWIFID, arguments);
    if (!process.waitForStarted())
        qFatal(BXWIFID ": %s", qPrintable(process.errorString()));
}

int DaemonProcess::stop()
{
    process.terminate();
    return waitForExit();
}

int DaemonProcess::waitForExit()
{
    const bool ended =
        process.state() == QProcess::NotRunning || process.waitForFinished(exitWait_ms);
    return ended && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

QStringList DaemonProcess::log()
{
    output += process.readAllStandardError();
    return QString::fromUtf8(output).split('\n', Qt::SkipEmptyParts);
}

bool DaemonProcess::waitForLog(const QString &line, int timeout_ms)
{
    return QTest::qWaitFor([&] { return log().contains(line); }, timeout_ms);
}
