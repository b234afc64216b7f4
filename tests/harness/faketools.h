// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "journal.h"

/// A folder of external tools that only write their name and arguments into the journal. As the
/// daemon's whole search path it hides the machine's own tools.
class FakeTools
{
public:
    /// Puts every tool that the daemon runs into `path`; "ln" is the machine's own.
    FakeTools(const Journal &journal, const QString &path);

    /// Has a tool go on, after its entry, with a piece of shell script; none is taken for the text
    /// that `setOutput()` has it print.
    void setScript(const QString &tool, const QByteArray &script) const;
    void setOutput(const QString &tool, const QByteArray &output) const;
    /// Has every tool wait before it writes its entry, as `FakeSupplicant::setPace()`.
    void setPace(std::chrono::milliseconds pace) const;
    void remove(const QString &tool) const;

    const QString path;

private:
    void write(const QString &name, const QByteArray &content) const;
};
