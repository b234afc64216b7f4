// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "tool.h"

#include "text.h"

#include <csignal>
#include <cstdlib>

#include <pthread.h>
#include <sys/prctl.h>
#include <unistd.h>

namespace
{
constexpr int toolWait_ms = 30000;
// A killed tool is gone at once, unless it hangs in the kernel, as on a dying flash.
constexpr int reapWait_ms = 1000;

// This process, while this thread starts a tool: forks of other threads are none of our business.
thread_local pid_t starter = 0;

/// In the child of a fork, Qt waits for a word from the parent before it becomes the tool. Were the
/// daemon killed in that moment, the child would wait for ever, and hold the daemon's name on the
/// bus against the next one.
void endWithStarter()
{
    if (starter == 0)
        return;
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != starter)
        _exit(EXIT_FAILURE);
}

[[maybe_unused]] const int guard = pthread_atfork(nullptr, nullptr, endWithStarter);
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
    starter = getpid();
    start(program, arguments);
    starter = 0;
    waitForFinished(toolWait_ms);
    return textOf(readAllStandardOutput());
}

/// From here to the tool's own code nothing waits for the daemon, and the tool may outlive it.
void ToolProcess::setupChildProcess()
{
    prctl(PR_SET_PDEATHSIG, 0);
}

void ToolProcess::end()
{
    if (state() == NotRunning)
        return;
    kill();
    waitForFinished(reapWait_ms);
}
