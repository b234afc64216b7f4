// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "busclient.h"
#include "daemonprocess.h"
#include "fakesupplicant.h"
#include "faketools.h"
#include "privatebus.h"

#include <QTemporaryDir>

/// A daemon with all that surrounds it: bus, supplicant, tools and a client.
struct TestBed {
    TestBed();
    /// Starts the daemon and waits until it has found the supplicant; the journal is empty then.
    void start(const QStringList &arguments = {});

    /// The pace of supplicant and tools.
    void setPace(std::chrono::milliseconds pace);

    QTemporaryDir folder;
    Journal journal{folder.filePath("journal")};
    PrivateBus bus;
    FakeTools tools{journal, folder.filePath("tools")};
    FakeSupplicant supplicant{journal};
    BusClient client{bus.address(), journal};
    DaemonProcess daemon;
};
