// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

#include <optional>

/// First line of a file, or of standard input for "-". None when it cannot be read.
std::optional<QString> readSecretFile(const QString &path);

/// Whether there is a terminal to ask on.
bool canAsk();

/// Asks on the terminal, without showing what is typed unless `echo` is set. None when the user
/// gave up with Ctrl-C or Ctrl-D.
std::optional<QString> ask(const QString &question, bool echo);
