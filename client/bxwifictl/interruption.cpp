// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "interruption.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>

#include <fcntl.h>
#include <unistd.h>

namespace
{
struct Caught {
    int signal;
    struct sigaction before;
};
Caught caught[] = {{SIGINT, {}}, {SIGTERM, {}}, {SIGHUP, {}}};
struct sigaction pipeBefore;
int signalPipe[2];
volatile std::sig_atomic_t noted;

void restore()
{
    for (const Caught &entry : caught)
        sigaction(entry.signal, &entry.before, nullptr);
}

void onSignal(int signal)
{
    const int savedError = errno;
    noted = signal;
    restore(); // the next one does what it always did
    [[maybe_unused]] const ssize_t written = write(signalPipe[1], "", 1);
    errno = savedError;
}
} // namespace

Interruption::Interruption()
{
    if (pipe2(signalPipe, O_CLOEXEC) != 0) {
        std::perror("bxwifictl: pipe");
        std::exit(Failure);
    }
    noted = 0;
    struct sigaction action = {};
    action.sa_handler = onSignal;
    for (Caught &entry : caught) {
        sigaction(entry.signal, nullptr, &entry.before);
        if (entry.before.sa_handler != SIG_IGN) // as nohup has it
            sigaction(entry.signal, &action, nullptr);
    }
    struct sigaction ignore = {};
    ignore.sa_handler = SIG_IGN;
    sigaction(SIGPIPE, &ignore, &pipeBefore);
}

Interruption::~Interruption()
{
    restore();
    sigaction(SIGPIPE, &pipeBefore, nullptr);
    close(signalPipe[0]);
    close(signalPipe[1]);
}

int Interruption::descriptor()
{
    return signalPipe[0];
}

ExitStatus Interruption::status()
{
    return noted == 0 ? Success : static_cast<ExitStatus>(BySignal + noted);
}
