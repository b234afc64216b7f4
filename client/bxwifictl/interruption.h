// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "command.h"

/// While it lives, the first SIGINT, SIGTERM or SIGHUP does not end the program but is noted, and a
/// reader of the output that goes away does not end it either; a second signal ends it at once. One
/// at a time.
class Interruption
{
public:
    Interruption();
    ~Interruption();
    Q_DISABLE_COPY_MOVE(Interruption)

    /// To be polled: readable from the moment that a signal has come.
    static int descriptor();
    /// How a program ends that a signal ended; Success if none has come.
    static ExitStatus status();
};
