// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "testbed.h"

#include <QTest>

TestBed::TestBed()
{
    daemon.environment.insert("PATH", tools.path);
    daemon.environment.insert("JOURNAL", journal.path);
}

void TestBed::start(const QStringList &arguments)
{
    daemon.start(arguments);
    if (!QTest::qWaitFor([&] { return journal.entries().contains("RECONFIGURE"); }))
        QTest::qFail("the daemon did not find the supplicant", __FILE__, __LINE__);
    journal.take();
}

bool TestBed::happens(const QByteArrayList &expected)
{
    const bool has = QTest::qWaitFor([&] { return journal.entries() == expected; });
    const QByteArrayList happened = journal.take();
    if (!has)
        qWarning() << "expected" << expected << "but what happened is" << happened;
    return has;
}
