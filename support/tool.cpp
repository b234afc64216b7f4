// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "tool.h"

#include "text.h"

namespace
{
constexpr int toolWait_ms = 30000;
// A killed tool is gone at once, unless it hangs in the kernel, as on a dying flash.
constexpr int reapWait_ms = 1000;
} // namespace

ToolProcess::~ToolProcess()
{
    end();
}

QString ToolProcess::run(const QString &program, const QStringList &arguments)
{
    end();
    if (state() != NotRunning)
        return {};
    start(program, arguments);
    waitForFinished(toolWait_ms);
    return textOf(readAllStandardOutput());
}

void ToolProcess::end()
{
    if (state() == NotRunning)
        return;
    kill();
    waitForFinished(reapWait_ms);
}
