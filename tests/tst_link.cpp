// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "harness/testbed.h"
#include "records/bxnetwork.h"
#include "records/payload.h"

#include <QDirIterator>
#include <QElapsedTimer>
#include <QTest>

/// The link to the supplicant: its events, its replies, its end and its return.
class LinkTest : public QObject
{
    Q_OBJECT

private slots:
    void events_data();
    void events();
    void eventsBeforeCalls();
    void connected();
    void scanResults_data();
    void scanResults();
    void replies_data();
    void replies();
    void refusingSockets();
    void death();
    void toolsInheritNothing();
};

namespace
{
QString requestLine(const char *command, const char *outcome)
{
    return QString(R"(QString WifiControl::ctrlRequest(const QString&) "%1" %2)")
        .arg(command, outcome);
}

/// What a process has open, as "pipe:[17]" and the like.
QByteArrayList openFiles(qint64 pid)
{
    QProcess shell;
    shell.start("sh", {"-c", QString("readlink /proc/%1/fd/*").arg(pid)});
    shell.waitForFinished();
    return shell.readAllStandardOutput().trimmed().split('\n');
}
} // namespace

void LinkTest::events_data()
{
    QTest::addColumn<QByteArrayList>("messages");
    QTest::addColumn<QByteArrayList>("expected");
    QTest::addColumn<QString>("lastLine");

    const QByteArray removed = "<3>CTRL-EVENT-BSS-REMOVED 7 02:00:00:00:00:01";
    const QString status = requestLine("STATUS", "true");
    const QString message = R"(void WifiControl::processMessage(const QString&) )";
    QTest::newRow("signals")
        << QByteArrayList{removed + " more",
                          "<3>CTRL-EVENT-SSID-TEMP-DISABLED id=0 auth_failures=1",
                          "<3>CTRL-EVENT-SSID-TEMP-DISABLED id=0 reason=WRONG_KEY"}
        << QByteArrayList{"bssRemoved(02:00:00:00:00:01)", "statusMessage(6)", "statusMessage(7)"}
        << status;
    QTest::newRow("no signal") << QByteArrayList{"<3>CTRL-EVENT-DISCONNECTED x", "<3>Associated x",
                                                 "<3>Trying to associate with x",
                                                 "<3>CTRL-EVENT-BSS-ADDED 7 x",
                                                 "<3>CTRL-EVENT-BSS-REMOVED 7"}
                               << QByteArrayList{} << status;
    QTest::newRow("request") << QByteArrayList{"<3>CTRL-REQ-OTP-0:x"} << QByteArrayList{}
                             << message + R"(ctrl_req: "<3>CTRL-REQ-OTP-0:x")";
    QTest::newRow("254 bytes and a zero")
        << QByteArrayList{QByteArray(254, 'x') + '\0' + "y"} << QByteArrayList{}
        << message + "other: \"" + QString(254, 'x') + '"';
    QTest::newRow("cut at 255 bytes")
        << QByteArrayList{QByteArray(233, 'x') + "CTRL-EVENT-TERMINATING "} << QByteArrayList{}
        << message + "other: \"" + QString(233, 'x') + "CTRL-EVENT-TERMINATING\"";
    QTest::newRow("supplicant ends")
        << QByteArrayList{removed, "<3>CTRL-EVENT-TERMINATING ", removed, removed}
        << QByteArrayList{"bssRemoved(02:00:00:00:00:01)", "statusMessage(4)", "DETACH",
                          "ssidResult()", "ipResult()"}
        << requestLine("STATUS", "false");
}

void LinkTest::events()
{
    QFETCH(QByteArrayList, messages);
    QFETCH(QByteArrayList, expected);
    QFETCH(QString, lastLine);
    TestBed bed;
    bed.start();
    bed.setPace(std::chrono::milliseconds(50));
    // While the daemon waits for a reply, its events pile up.
    bed.supplicant.hold("STATUS");
    bed.client.start("statusRequest");
    QTRY_COMPARE(bed.journal.entries(), QByteArrayList{"STATUS"});
    bed.journal.take();
    for (const QByteArray &message : messages)
        bed.supplicant.sendEvent(message);
    bed.supplicant.release();
    QTRY_COMPARE(bed.journal.entries(), QByteArrayList{"statusMessage(1)"} + expected);
    QTRY_COMPARE(bed.daemon.log().last(), lastLine);
    // Nothing comes after that, and the daemon is well.
    bed.client.call("enableRequest");
    QCOMPARE(bed.journal.take(), QByteArrayList{"statusMessage(1)"} + expected);
}

void LinkTest::eventsBeforeCalls()
{
    TestBed bed;
    bed.start();
    bed.setPace(std::chrono::milliseconds(50));
    // What is pending when the daemon looks is handled together, also when a call came meanwhile.
    bed.supplicant.hold("SCAN_RESULTS");
    for (const char *event :
         {"SCAN-RESULTS ", "SSID-TEMP-DISABLED x", "SSID-TEMP-DISABLED WRONG_KEY"})
        bed.supplicant.sendEvent(QByteArray("<3>CTRL-EVENT-") + event);
    QTRY_VERIFY(!bed.journal.entries().isEmpty());
    bed.client.start("scanRequest");
    QTest::qWait(100);
    bed.supplicant.release();
    QTRY_COMPARE(bed.journal.entries(),
                 QByteArrayList({"SCAN_RESULTS", "statusMessage(3)", "statusMessage(6)",
                                 "statusMessage(7)", "statusMessage(2)", "SCAN"}));
}

void LinkTest::connected()
{
    TestBed bed;
    bed.supplicant.answer("STATUS", {"ssid=Home\nip_address=10.0.0.2\n"});
    bed.start();
    bed.setPace(std::chrono::milliseconds(50));
    QElapsedTimer elapsed;
    elapsed.start();
    bed.supplicant.sendEvent("<3>CTRL-EVENT-CONNECTED - Connection to x completed");
    QTRY_COMPARE(bed.journal.entries(),
                 QByteArrayList({"statusMessage(0)", "STATUS", "ssidResult(Home)", "STATUS",
                                 "ipResult(10.0.0.2)",
                                 toolRun({"udhcpc", "-iwlan0", "-n", "-q", "-p/etc/udhcpc.pid"}),
                                 "STATUS", "ipResult(10.0.0.2)"}));
    QVERIFY(elapsed.elapsed() >= 600);
    QVERIFY(bed.daemon.log().contains("void WifiDaemon::onConnected() about to refresh IP"));
}

void LinkTest::scanResults_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QByteArrayList>("ssids");

    const QByteArray header = "bssid / frequency / signal level / flags / ssid\n";
    QTest::newRow("refused") << QByteArray("FAIL\n") << QByteArrayList{};
    QTest::newRow("three") << header + "b\t1\t-1\t\tx\nb\t1\t-1\t\t\nb\t1\t-1\t\ty z\n"
                           << QByteArrayList{"x", "", "y z"};
    // 2047 bytes get through: in the second table the last SSID is cut, in the third its line.
    const QByteArray row = "b\t1\t-1\t\t";
    const QByteArray filler = header + row + QByteArray(1958, 'x') + '\n';
    QTest::newRow("2047 bytes") << filler + row + QByteArray(24, 'y')
                                << QByteArrayList{QByteArray(1958, 'x'), QByteArray(24, 'y')};
    QTest::newRow("cut SSID") << filler + row + QByteArray(2500, 'y')
                              << QByteArrayList{QByteArray(1958, 'x'), QByteArray(24, 'y')};
    QTest::newRow("cut line") << header + row + QByteArray(1987, 'x') + '\n' + row + "z"
                              << QByteArrayList{QByteArray(1987, 'x')};
}

void LinkTest::scanResults()
{
    QFETCH(QByteArray, reply);
    QFETCH(QByteArrayList, ssids);
    QByteArrayList expected{"SCAN_RESULTS"};
    for (const QByteArray &ssid : ssids) {
        const BXNetwork network{"b", "1", "-1", "", QString::fromUtf8(ssid), {}, {}, false};
        expected << busSignal("scanResult", payloadOf(network));
    }
    TestBed bed;
    bed.supplicant.answer("SCAN_RESULTS", {reply});
    bed.start();
    bed.supplicant.sendEvent("<3>CTRL-EVENT-SCAN-RESULTS ");
    QTRY_COMPARE(bed.journal.entries(), expected + QByteArrayList{"statusMessage(3)"});
}

void LinkTest::replies_data()
{
    QTest::addColumn<QByteArrayList>("datagrams");
    QTest::addColumn<QByteArray>("ssid");
    QTest::addColumn<QString>("line");

    const QString unasked = R"(void ctrlRequestDebug(char*, size_t) )";
    QTest::newRow("up to a zero byte") << QByteArrayList{QByteArray("ssid=Ho\0me\n", 11)}
                                       << QByteArray("Ho") << requestLine("STATUS", "true");
    QTest::newRow("not ASCII") << QByteArrayList{"ssid=Gr\xc3\xbcn\n"} << QByteArray("Gr\xc3\xbcn")
                               << requestLine("STATUS", "true");
    QTest::newRow("failure by name")
        << QByteArrayList{"Fail\nssid=x\n"} << QByteArray("x") << requestLine("STATUS", "false");
    QTest::newRow("failure in capitals")
        << QByteArrayList{"FAIL\n"} << QByteArray() << requestLine("STATUS", "true");
    QTest::newRow("message before the reply")
        << QByteArrayList{"<3>CTRL-EVENT-X ", "ssid=Home\n"} << QByteArray("Home")
        << unasked + "\"<3>CTRL-EVENT-X \"";
    // What is left over must not answer the next command.
    QTest::newRow("reply too many") << QByteArrayList{"ssid=Home\n", "ssid=Old\n"}
                                    << QByteArray("Home") << unasked + R"("ssid=Old\n")";
}

void LinkTest::replies()
{
    QFETCH(QByteArrayList, datagrams);
    QFETCH(QByteArray, ssid);
    QFETCH(QString, line);
    TestBed bed;
    bed.supplicant.answer("STATUS", datagrams);
    bed.start();
    for (int round = 0; round < 2; ++round) {
        bed.client.call("ssidRequest");
        QCOMPARE(bed.journal.take(), QByteArrayList({"STATUS", "ssidResult(" + ssid + ')'}));
    }
    QVERIFY(bed.daemon.waitForLog(line));
}

void LinkTest::refusingSockets()
{
    TestBed bed;
    std::map<QByteArray, std::unique_ptr<FakeSupplicant>> others;
    for (const char *name : {"wlan1", "a0", "z0", "p2p-dev-wlan0"})
        others[name] = std::make_unique<FakeSupplicant>(bed.journal, name);
    // All refuse but the one that the directory, in its own order, lists last.
    QStringList names;
    QDirIterator sockets("/run/wpa_supplicant", QDir::System);
    while (sockets.hasNext())
        names << QFileInfo(sockets.next()).fileName();
    const QByteArray last = names.last().toUtf8();
    const auto answer = [&](const QByteArray &name) {
        return name == last ? "OK\n" : "FAIL\n";
    };
    bed.supplicant.answer("ATTACH", {answer("wlan0")});
    for (const auto &[name, other] : others)
        other->answer("ATTACH", {answer(name)});
    bed.start();

    QVERIFY(bed.daemon.waitForLog("bool WifiControl::setup() attached to wpa_supplicant"));
    QStringList tried;
    const QStringList lines = bed.daemon.log();
    for (const QString &line : lines) {
        if (line.contains("trying ctrl_iface"))
            tried << line.section('"', 1, 1);
    }
    QCOMPARE(tried, names);
    // Two connections are left, and the one that works names the interface.
    QCOMPARE(QDir("/tmp").entryList({"wpa_ctrl_*"}, QDir::System).size(), 2);
    for (const auto &[name, other] : others)
        other->sendEvent("<3>CTRL-EVENT-CONNECTED ");
    bed.supplicant.sendEvent("<3>CTRL-EVENT-CONNECTED ");
    QTRY_VERIFY(bed.journal.entries().contains(
        toolRun({"udhcpc", "-i" + last, "-n", "-q", "-p/etc/udhcpc.pid"})));
}

void LinkTest::death()
{
    TestBed bed;
    bed.start();
    bed.supplicant.kill();
    bed.client.call("statusRequest");
    QCOMPARE(bed.journal.take(), QByteArrayList{"statusMessage(1)"});
    QVERIFY(bed.daemon.waitForLog(requestLine("STATUS", "command failed")));
    QVERIFY(bed.daemon.waitForLog(requestLine("STATUS", "false")));

    // It comes back, and nothing happens until a client asks; its call is answered first.
    bed.supplicant.restart();
    for (const bool isOpen : {false, true}) {
        QElapsedTimer elapsed;
        elapsed.start();
        bed.client.call("wpaConnectRequest");
        QVERIFY(bed.journal.take().isEmpty());
        QByteArrayList expected{"ATTACH", "RECONFIGURE"};
        if (isOpen)
            expected.prepend("DETACH");
        QTRY_COMPARE(bed.journal.entries(), expected);
        bed.journal.take();
        QVERIFY(elapsed.elapsed() >= 100);
    }
    QVERIFY(bed.daemon.log().contains("void WifiDaemon::wpaConnectRequest() about to establish "
                                      "connection to wpa_supplicant"));
    QVERIFY(bed.daemon.log().contains("void WifiDaemon::onWpaConnectRequest() trying to establish "
                                      "connection to wpa_supplicant"));
}

void LinkTest::toolsInheritNothing()
{
    TestBed bed;
    const QByteArray state = bed.folder.filePath("state").toUtf8();
    bed.tools.setScript("sync",
                        "{ readlink /proc/$$/fd/*; grep SigBlk /proc/self/status; } >" + state);
    bed.start();
    bed.client.call("disableRequest");
    QFile file(state);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QByteArrayList inherited = file.readAll().trimmed().split('\n');
    QCOMPARE(inherited.takeLast(), QByteArray("SigBlk:\t0000000000000000"));
    // What both the daemon and its tool have open came from where the daemon was started.
    const QByteArrayList ours = openFiles(QCoreApplication::applicationPid());
    const QByteArrayList daemons = openFiles(bed.daemon.pid());
    QVERIFY(daemons.size() > 3);
    for (const QByteArray &link : daemons)
        QVERIFY2(!inherited.contains(link) || ours.contains(link), link);
}

QTEST_GUILESS_MAIN(LinkTest)
#include "tst_link.moc"
