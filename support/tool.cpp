// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "tool.h"

#include "text.h"

namespace
{
constexpr int toolWait_ms = 30000;
} // namespace

QString runTool(QProcess &process, const QString &program, const QStringList &arguments)
{
    endTool(process);
    process.start(program, arguments);
    process.waitForFinished(toolWait_ms);
    return textOf(process.readAllStandardOutput());
}

void endTool(QProcess &process)
{
    if (process.state() == QProcess::NotRunning)
        return;
    process.kill();
    process.waitForFinished(toolWait_ms);
    process.readAllStandardOutput();
}
