// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "harness/testbed.h"

#include <QElapsedTimer>
#include <QTest>

/// What takes as long as the daemon's own waits; the functions are run side by side.
class WaitingTest : public QObject
{
    Q_OBJECT

private slots:
    void timeOut();
    void retry();
    void rebuildDuringRetry();
    void hangingTool();
    void hangingToolAtEnd();
};

void WaitingTest::timeOut()
{
    TestBed bed;
    bed.start();
    bed.supplicant.answer("STATUS", {"ssid=Late\n"});
    std::unique_lock silence(bed.supplicant.answering);
    bed.bus.call("ssidRequest"); // the client library waits 10 s
    QVERIFY(bed.happens({"STATUS", "ssidResult()"}));
    QVERIFY(bed.daemon.waitForLog(
        R"(QString WifiControl::ctrlRequest(const QString&) "STATUS" command timed out)"));
    silence.unlock();
    QTest::qWait(200); // the late reply arrives
    bed.supplicant.answer("STATUS", {"ssid=Home\n"});
    bed.bus.call("ssidRequest");
    QVERIFY(bed.happens({"STATUS", "ssidResult(Home)"}));
}

void WaitingTest::retry()
{
    TestBed bed;
    bed.supplicant.kill();
    bed.daemon.start();
    QVERIFY(bed.daemon.waitForLog("Failed to init with WPA_Supplicant"));
    QElapsedTimer elapsed;
    elapsed.start();
    QVERIFY(bed.daemon.waitForLog("Retrying SETUP again in 4sec"));
    QVERIFY2(elapsed.elapsed() > 3700 && elapsed.elapsed() < 4600, "4 s");
    bed.supplicant.restart();
    QVERIFY(bed.daemon.waitForLog("Finally init with WPA Supplicant"));
    QVERIFY2(elapsed.elapsed() > 7700 && elapsed.elapsed() < 8600, "8 s");
    // That was the last time, and the supplicant reads its configuration without being asked.
    QTest::qWait(4500);
    QVERIFY(bed.happens({"ATTACH"}));
}

void WaitingTest::rebuildDuringRetry()
{
    TestBed bed;
    bed.supplicant.kill();
    bed.daemon.start();
    QVERIFY(bed.daemon.waitForLog("Failed to init with WPA_Supplicant"));
    bed.supplicant.restart();
    bed.bus.call("wpaConnectRequest");
    QTest::qWait(4500);
    QVERIFY(bed.happens({"ATTACH", "RECONFIGURE"}));
}

void WaitingTest::hangingTool()
{
    TestBed bed;
    bed.tools.setScript("fw_setenv", "echo ipaddr=wrong; exec sleep 100");
    bed.tools.setOutput("fw_printenv", "dynamicip=1\n");
    bed.start();
    QElapsedTimer elapsed;
    elapsed.start();
    bed.bus.call("setDynamic", {true});
    QVERIFY2(elapsed.elapsed() >= 30000 && elapsed.elapsed() < 31000, "30 s");
    // The next tool gets its own output, and Qt has nothing to warn of.
    const QStringList before = bed.daemon.log();
    bed.bus.call("dynamicRequest");
    QCOMPARE(bed.journal.take().last(), QByteArray("dynamicResult(true)"));
    QCOMPARE(bed.daemon.log(), before);
}

void WaitingTest::hangingToolAtEnd()
{
    TestBed bed;
    bed.tools.setScript("fw_setenv", "exec sleep 100");
    bed.start();
    bed.bus.call("setDynamic", {true});
    QCOMPARE(bed.daemon.stop(), 0);
    const QString last = R"(QString WifiControl::ctrlRequest(const QString&) "SAVE_CONFIG" true)";
    QCOMPARE(bed.daemon.log().last(), last);
}

QTEST_GUILESS_MAIN(WaitingTest)
#include "tst_waiting.moc"
