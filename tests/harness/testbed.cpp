// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "testbed.h"

#include <QTest>

TestBed::TestBed()
{
    daemon.setEnvironment("PATH", tools.path);
}

void TestBed::setPace(std::chrono::milliseconds pace)
{
    supplicant.setPace(pace);
    tools.setPace(pace);
}

void TestBed::start(const QStringList &arguments)
{
    daemon.start(arguments);
    if (!QTest::qWaitFor([&] { return journal.entries().contains("RECONFIGURE"); }))
        QTest::qFail("the daemon did not find the supplicant", __FILE__, __LINE__);
    journal.take();
}
