// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

/// A folder of external tools that only write their name and arguments into the journal. As the
/// daemon's whole search path it hides the machine's own tools.
class FakeTools
{
public:
    explicit FakeTools(const QString &folder) : path(folder) { restore(); }

    /// Has a tool go on, after its entry, with a piece of shell script or with printing lines.
    void setScript(const QString &tool, const QByteArray &script) const;
    void setOutput(const QString &tool, const QByteArray &lines) const;
    void remove(const QString &tool) const;
    /// Puts every tool that the daemon runs there; "ln" is the machine's own.
    void restore() const;

    const QString path;
};
