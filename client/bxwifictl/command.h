// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "options.h"

#include <bxwifi/wificlient.h>

#include <QDeadlineTimer>

/// The statuses that the program ends with; documented in its manual.
enum ExitStatus : int {
    Success = 0,
    Failure = 1,
    UsageError = 2,
    NoDaemon = 3,
    Denied = 4,
    WrongKey = 5,
    NotFound = 6,
    TimedOut = 7,
    BySignal = 128, ///< plus the signal's number
};

/// One run of a verb.
struct Command {
    BxWifi::WifiClient &client;
    const Options &options;

    const QString &soleArgument() const { return options.arguments.constFirst(); }
};

// The verbs.
ExitStatus showStatus(const Command &command);
ExitStatus scan(const Command &command);
ExitStatus connectTo(const Command &command);
ExitStatus disconnect(const Command &command);
ExitStatus forget(const Command &command);
ExitStatus showAddress(const Command &command);
ExitStatus relink(const Command &command);
ExitStatus monitor(const Command &command);
ExitStatus keep(const Command &command);
ExitStatus wired(const Command &command);

/// Prints "bxwifictl: TEXT" as one line on standard error.
void printError(const QString &text);

/// The same for wrong usage.
ExitStatus failUsage(const QString &text);

/// Waits until a request has finished and prints its error, if any, with what it was about. The
/// reply's value can be read afterwards, until the event loop runs again. A request that has not
/// finished within the limit goes on unheard.
ExitStatus await(BxWifi::WifiReply *reply, const QString &about = {},
                 QDeadlineTimer limit = QDeadlineTimer::Forever);
