// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "command.h"

#include <QString>

// Both print what went wrong.

/// Takes the first line of a file, or of standard input for "-".
ExitStatus readSecretFile(const QString &path, QString &secret);

/// Whether there is a terminal to ask on.
bool canAsk();

/// Asks on the terminal, without showing what is typed unless `echo` is set. Ctrl-C, like any
/// signal that ends a program, and Ctrl-D are no answer.
ExitStatus ask(const QString &question, bool echo, QString &answer);
