// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "quitsignals.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>

#include <fcntl.h>
#include <unistd.h>

namespace
{
// The handler may do little more than write; a pipe carries the news to the event loop.
int signalPipe[2];

void onSignal(int /*signal*/)
{
    const int savedError = errno;
    // Non-blocking: when the pipe is full, the news is in it already.
    [[maybe_unused]] const ssize_t written = write(signalPipe[1], "", 1);
    errno = savedError;
}
} // namespace

void catchQuitSignals()
{
    if (pipe2(signalPipe, O_CLOEXEC | O_NONBLOCK) != 0) {
        std::perror("bxwifid: pipe");
        std::exit(EXIT_FAILURE);
    }
    struct sigaction action = {};
    action.sa_handler = onSignal;
    action.sa_flags = SA_RESTART;
    sigaction(SIGTERM, &action, nullptr);
    sigaction(SIGINT, &action, nullptr);
}

void quitOnSignals(QCoreApplication &application)
{
    auto *notifier = new QSocketNotifier(signalPipe[0], QSocketNotifier::Read, &application);
    QObject::connect(notifier, &QSocketNotifier::activated, &application, &QCoreApplication::quit);
}
