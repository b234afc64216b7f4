// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "harness/testbed.h"

#include <QTest>

class DaemonTest : public QObject
{
    Q_OBJECT

private slots:
    void asksForAScan();
};

void DaemonTest::asksForAScan()
{
    TestBed bed;
    bed.start();
    bed.setPace(std::chrono::milliseconds(40));
    bed.client.call("scanRequest");
    QCOMPARE(bed.journal.take(), QByteArrayList({"statusMessage(2)", "SCAN"}));
}

QTEST_GUILESS_MAIN(DaemonTest)
#include "tst_daemon.moc"
