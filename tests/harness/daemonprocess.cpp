// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "daemonprocess.h"

#include <QTest>

namespace
{
constexpr int exitWait_ms = 15000; // a supplicant that does not answer SAVE_CONFIG costs 10 s
} // namespace

DaemonProcess::DaemonProcess()
{
    // A Qt that is built for it would send the log elsewhere when there is no terminal.
    setEnvironment("QT_FORCE_STDERR_LOGGING", "1");
}

DaemonProcess::~DaemonProcess()
{
    if (process.state() == QProcess::NotRunning || stop() == 0)
        return;
    fputs(output.constData(), stderr);
    QTest::qFail("the daemon did not end cleanly", __FILE__, __LINE__);
}

void DaemonProcess::setEnvironment(const QString &name, const QString &value)
{
    environment.insert(name, value);
}

void DaemonProcess::start(const QStringList &arguments)
{
    QProcessEnvironment all = QProcessEnvironment::systemEnvironment();
    all.insert(environment);
    process.setProcessEnvironment(all);
    process.start(BXWIFID, arguments);
    if (!process.waitForStarted())
        qFatal(BXWIFID ": %s", qPrintable(process.errorString()));
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

int DaemonProcess::stop()
{
    process.terminate();
    return waitForExit();
}

int DaemonProcess::waitForExit()
{
    const bool ended =
        process.state() == QProcess::NotRunning || process.waitForFinished(exitWait_ms);
    log();
    return ended && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}
