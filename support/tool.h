// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

/// Runs an external tool, found through the search path, and waits for it at most 30 s.
///
/// Returns what the tool had written to its standard output by then: empty when it could not be
/// started or printed nothing. Exit status and standard error are not looked at. A tool that is
/// still running after the wait goes on; `process` must be ended with `endTool()` before it is
/// destroyed, while the next `runTool()` on it does that by itself.
QString runTool(QProcess &process, const QString &program, const QStringList &arguments);

/// Kills and reaps a tool that is still running and drops its output.
void endTool(QProcess &process);
