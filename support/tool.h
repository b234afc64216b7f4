// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

/// Runs external tools, found through the search path, one at a time.
///
/// A tool that outlasts its wait goes on by itself; it is killed and reaped when the next is due
/// and when the object is destroyed.
class ToolProcess : public QProcess
{
public:
    using QProcess::QProcess;
    ~ToolProcess() override;

    /// Runs a tool, waits for it at most 30 s, and returns what it had written to its standard
    /// output by then: empty when it could not be started or printed nothing. Exit status and
    /// standard error are not looked at.
    QString run(const QString &program, const QStringList &arguments);

protected:
    void setupChildProcess() override;

private:
    void end();
};
