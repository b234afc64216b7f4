// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "bus.h"
#include "daemonprocess.h"
#include "fakesupplicant.h"
#include "faketools.h"

#include <QTemporaryDir>

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
