// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "bus.h"
#include "daemonprocess.h"
#include "fakesupplicant.h"

#include <QTemporaryDir>

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

/// A daemon with all that surrounds it: bus, supplicant and tools.
struct TestBed {
    TestBed();
    /// Starts the daemon and waits until it has found the supplicant; the journal is empty then.
    void start(const QStringList &arguments = {});

    /// Waits until exactly this has happened, and takes it from the journal. Prints what happened
    /// instead.
    bool happens(const QByteArrayList &expected);

    QTemporaryDir folder;
    Journal journal{folder.filePath("journal")};
    Bus bus{journal};
    FakeTools tools{folder.filePath("tools")};
    FakeSupplicant supplicant{journal};
    DaemonProcess daemon;
};

/// What a piece of shell script prints.
QByteArray printedBy(const QString &script);
