// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "harness/testbed.h"
#include "records/bxnetwork.h"
#include "records/payload.h"

#include <QDirIterator>
#include <QElapsedTimer>
#include <QTest>

#include <map>

/// The link to the supplicant: its events, its replies, its end and its return.
class LinkTest : public QObject
{
    Q_OBJECT

private slots:
    void events();
    void eventsBeforeCalls();
    void connected();
    void scanResults();
    void replies();
    void refusingSockets();
    void death();
    void toolsInheritNothing();
};

namespace
{
// Time for a signal to arrive before the next command is written down.
constexpr std::chrono::milliseconds pace{50};

QString requestLine(const char *command, const char *outcome)
{
    return QString(R"(QString WifiControl::ctrlRequest(const QString&) "%1" %2)")
        .arg(command, outcome);
}

/// What a process has open, as "pipe:[17]" and the like.
QByteArrayList openFiles(qint64 pid)
{
    return printedBy(QString("readlink /proc/%1/fd/*").arg(pid)).split('\n');
}
} // namespace

void LinkTest::events()
{
    TestBed bed;
    bed.start();
    bed.supplicant.pace = pace;
    const auto check = [&](const char *name, const QByteArrayList &messages,
                           const QByteArrayList &expected, const QString &lastLine) {
        // While the daemon waits for a reply, its events pile up.
        std::unique_lock silence(bed.supplicant.answering);
        bed.bus.start("statusRequest");
        QVERIFY2(bed.happens({"STATUS"}), name);
        for (const QByteArray &message : messages)
            bed.supplicant.sendEvent(message);
        silence.unlock();
        QVERIFY2(bed.happens(QByteArrayList{"statusMessage(1)"} + expected), name);
        QTRY_VERIFY2(bed.daemon.log().last() == lastLine, name);
        // Nothing comes after that, and the daemon is well.
        bed.bus.call("enableRequest");
        QVERIFY2(bed.happens({}), name);
    };
    const QByteArray removed = "<3>CTRL-EVENT-BSS-REMOVED 7 02:00:00:00:00:01";
    const QString replied = requestLine("STATUS", "true");
    const QString message = R"(void WifiControl::processMessage(const QString&) )";
    check("signals",
          {removed + " more", "<3>CTRL-EVENT-SSID-TEMP-DISABLED id=0 auth_failures=1",
           "<3>CTRL-EVENT-SSID-TEMP-DISABLED id=0 reason=WRONG_KEY"},
          {"bssRemoved(02:00:00:00:00:01)", "statusMessage(6)", "statusMessage(7)"}, replied);
    check("no signal",
          {"<3>CTRL-EVENT-DISCONNECTED x", "<3>Associated x", "<3>Trying to associate with x",
           "<3>CTRL-EVENT-BSS-ADDED 7 x", "<3>CTRL-EVENT-BSS-REMOVED 7"},
          {}, replied);
    check("request", {"<3>CTRL-REQ-OTP-0:x"}, {}, message + R"(ctrl_req: "<3>CTRL-REQ-OTP-0:x")");
    check("254 bytes and a zero", {QByteArray(254, 'x') + '\0' + "y"}, {},
          message + "other: \"" + QString(254, 'x') + '"');
    check("cut at 255 bytes", {QByteArray(233, 'x') + "CTRL-EVENT-TERMINATING "}, {},
          message + "other: \"" + QString(233, 'x') + "CTRL-EVENT-TERMINATING\"");
    check("supplicant ends", {removed, "<3>CTRL-EVENT-TERMINATING ", removed, removed},
          {"bssRemoved(02:00:00:00:00:01)", "statusMessage(4)", "DETACH", "ssidResult()",
           "ipResult()"},
          requestLine("STATUS", "false"));
}

void LinkTest::eventsBeforeCalls()
{
    TestBed bed;
    bed.start();
    bed.supplicant.pace = pace;
    // What is pending when the daemon looks is handled together, also when a call came meanwhile.
    std::unique_lock silence(bed.supplicant.answering);
    for (const char *event :
         {"SCAN-RESULTS ", "SSID-TEMP-DISABLED x", "SSID-TEMP-DISABLED WRONG_KEY"})
        bed.supplicant.sendEvent(QByteArray("<3>CTRL-EVENT-") + event);
    QVERIFY(bed.happens({"SCAN_RESULTS"}));
    bed.bus.start("scanRequest");
    QTest::qWait(100);
    silence.unlock();
    QVERIFY(bed.happens(
        {"statusMessage(3)", "statusMessage(6)", "statusMessage(7)", "statusMessage(2)", "SCAN"}));
}

void LinkTest::connected()
{
    TestBed bed;
    bed.supplicant.answer("STATUS", {"ssid=Home\nip_address=10.0.0.2\n"});
    bed.start();
    bed.supplicant.pace = pace;
    QElapsedTimer elapsed;
    elapsed.start();
    bed.supplicant.sendEvent("<3>CTRL-EVENT-CONNECTED - Connection to x completed");
    const QByteArray client = "udhcpc|-iwlan0|-n|-q|-p/etc/udhcpc.pid";
    QTRY_VERIFY(bed.journal.entries().contains(client));
    QVERIFY(elapsed.elapsed() >= 600);
    QVERIFY(bed.happens({"statusMessage(0)", "STATUS", "ssidResult(Home)", "STATUS",
                         "ipResult(10.0.0.2)", client, "STATUS", "ipResult(10.0.0.2)"}));
    QVERIFY(bed.daemon.log().contains("void WifiDaemon::onConnected() about to refresh IP"));
}

void LinkTest::scanResults()
{
    TestBed bed;
    bed.start();
    const auto check = [&](const char *name, const QByteArray &reply, const QByteArrayList &ssids) {
        QByteArrayList expected{"SCAN_RESULTS"};
        for (const QByteArray &ssid : ssids) {
            const BXNetwork network{"b", "1", "-1", "", QString::fromUtf8(ssid), {}, {}, false};
            expected << busSignal("scanResult", payloadOf(network));
        }
        bed.supplicant.answer("SCAN_RESULTS", {reply});
        bed.supplicant.sendEvent("<3>CTRL-EVENT-SCAN-RESULTS ");
        QVERIFY2(bed.happens(expected + QByteArrayList{"statusMessage(3)"}), name);
    };
    const QByteArray header = "bssid / frequency / signal level / flags / ssid\n";
    const QByteArray row = "b\t1\t-1\t\t";
    check("refused", "FAIL\n", {});
    check("three", header + row + "x\n" + row + '\n' + row + "y z\n", {"x", "", "y z"});
    // 2047 bytes get through: first the last SSID is cut, then its line.
    const QByteArray long1(1958, 'x');
    const QByteArray long2(1987, 'x');
    check("cut SSID", header + row + long1 + '\n' + row + QByteArray(2500, 'y'),
          {long1, QByteArray(24, 'y')});
    check("cut line", header + row + long2 + '\n' + row + 'z', {long2});
}

void LinkTest::replies()
{
    TestBed bed;
    bed.start();
    const auto check = [&](const QByteArrayList &datagrams, const QByteArray &ssid,
                           const QStringList &lines) {
        bed.supplicant.answer("STATUS", datagrams);
        // Twice: what is left over must not answer the next command.
        for (int round = 0; round < 2; ++round) {
            const int logged = bed.daemon.log().size();
            bed.bus.call("ssidRequest");
            QVERIFY2(bed.happens({"STATUS", "ssidResult(" + ssid + ')'}), datagrams[0]);
            if (round > 0)
                QTRY_COMPARE(bed.daemon.log().mid(logged), lines);
            else
                QTRY_VERIFY(bed.daemon.log().size() > logged);
        }
    };
    const QString success = requestLine("STATUS", "true");
    const QString failure = requestLine("STATUS", "false");
    const QString unasked = "void ctrlRequestDebug(char*, size_t) ";
    check({QByteArray("ssid=Ho\0me\n", 11)}, "Ho", {success});
    check({"ssid=Gr\xc3\xbcn\n"}, "Gr\xc3\xbcn", {success});
    check({"Fail\nssid=x\n"}, "x", {failure});
    check({"FAIL\n"}, "", {success});
    check({"<3>CTRL-EVENT-X ", "ssid=Home\n"}, "Home", {unasked + "\"<3>CTRL-EVENT-X \"", success});
    check({"ssid=Home\n", "ssid=Old\n"}, "Home", {unasked + R"("ssid=Old\n")", success});
}

void LinkTest::refusingSockets()
{
    TestBed bed;
    bed.supplicant.kill(); // another takes its place
    std::map<QString, FakeSupplicant> supplicants;
    for (const char *name : {"wlan0", "wlan1", "a0", "z0", "p2p-dev-wlan0"})
        supplicants.try_emplace(name, bed.journal, name);
    QStringList names;
    QDirIterator sockets("/run/wpa_supplicant", QDir::System);
    while (sockets.hasNext())
        names << QFileInfo(sockets.next()).fileName();
    // All refuse but the one that the directory, in its own order, lists last.
    for (auto &[name, supplicant] : supplicants) {
        if (name != names.last())
            supplicant.answer("ATTACH", {"FAIL\n"});
    }
    bed.start();

    QVERIFY(bed.daemon.waitForLog("bool WifiControl::setup() attached to wpa_supplicant"));
    QStringList tried = bed.daemon.log().filter("trying ctrl_iface");
    for (QString &line : tried)
        line = line.section('"', 1, 1);
    QCOMPARE(tried, names);
    // Two connections are left, and the one that works names the interface.
    QCOMPARE(QDir("/tmp").entryList({"wpa_ctrl_*"}, QDir::System).size(), 2);
    for (auto &[name, supplicant] : supplicants)
        supplicant.sendEvent("<3>CTRL-EVENT-CONNECTED ");
    const QString client = "udhcpc|-i" + names.last() + "|-n|-q|-p/etc/udhcpc.pid";
    QTRY_VERIFY(bed.journal.entries().contains(client.toUtf8()));
}

void LinkTest::death()
{
    TestBed bed;
    bed.start();
    bed.supplicant.kill();
    bed.bus.call("statusRequest");
    QVERIFY(bed.happens({"statusMessage(1)"}));
    QVERIFY(bed.daemon.waitForLog(requestLine("STATUS", "command failed")));
    QVERIFY(bed.daemon.waitForLog(requestLine("STATUS", "false")));

    // It comes back, and nothing happens until a client asks; its call is answered first.
    bed.supplicant.restart();
    const auto rebuild = [&](const QByteArrayList &expected) {
        QElapsedTimer elapsed;
        elapsed.start();
        bed.bus.call("wpaConnectRequest");
        QVERIFY(bed.journal.entries().isEmpty());
        QVERIFY(bed.happens(expected));
        QVERIFY(elapsed.elapsed() >= 100);
    };
    rebuild({"ATTACH", "RECONFIGURE"});
    rebuild({"DETACH", "ATTACH", "RECONFIGURE"});
    const QString last = " to establish connection to wpa_supplicant";
    QVERIFY(bed.daemon.waitForLog("void WifiDaemon::wpaConnectRequest() about" + last));
    QVERIFY(bed.daemon.waitForLog("void WifiDaemon::onWpaConnectRequest() trying" + last));
}

void LinkTest::toolsInheritNothing()
{
    TestBed bed;
    const QByteArray state = bed.folder.filePath("state").toUtf8();
    bed.tools.setScript("sync",
                        "{ readlink /proc/$$/fd/*; grep SigBlk /proc/self/status; } >" + state);
    bed.start();
    bed.bus.call("disableRequest");
    QFile file(state);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QByteArrayList inherited = file.readAll().trimmed().split('\n');
    QCOMPARE(inherited.takeLast(), QByteArray("SigBlk:\t0000000000000000"));
    // What both the daemon and its tool have open came from where the daemon was started.
    const QByteArrayList ours = openFiles(QCoreApplication::applicationPid());
    const QByteArrayList daemons = openFiles(bed.daemon.process.processId());
    QVERIFY(daemons.size() > 3);
    for (const QByteArray &link : daemons)
        QVERIFY2(!inherited.contains(link) || ours.contains(link), link);
}

QTEST_GUILESS_MAIN(LinkTest)
#include "tst_link.moc"
