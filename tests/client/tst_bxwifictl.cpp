// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

// The program against the daemon: what it prints and the status it ends with.

#include "radio.h"

#include <QProcess>
#include <QTest>

namespace
{
constexpr int patience_ms = 30000;

struct Run {
    int status;
    QByteArray output;
    QByteArray error;
};

/// Runs the program with what it reads on standard input.
Run bxwifictl(const QStringList &arguments, const QByteArray &input = {})
{
    QProcess process;
    process.start(BXWIFICTL, arguments);
    process.write(input);
    process.closeWriteChannel();
    const bool hasEnded =
        QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; }, patience_ms);
    return {hasEnded ? process.exitCode() : -1, process.readAllStandardOutput(),
            process.readAllStandardError()};
}
} // namespace

class BxwifictlTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { radio.reset(), bed.reset(); }
    void verbs_data();
    void verbs();
    void joinsWithWhatTheNetworkAnnounces();
    void monitorDecodesSignals();
    void missingSupplicantDaemonAndBus();

private:
    std::unique_ptr<TestBed> bed;
    std::unique_ptr<Radio> radio;
};

void BxwifictlTest::init()
{
    bed = std::make_unique<TestBed>();
    radio = std::make_unique<Radio>(*bed);
    radio->setNetworks({"02:00:00:00:01:00\t2412\t-70\t[WPA2-PSK-CCMP][ESS]\tLab WPA2",
                        "02:00:00:00:01:01\t5180\t-50\t[WPA2-PSK-CCMP][ESS]\tLab WPA2",
                        "02:00:00:00:02:00\t2437\t-60\t[ESS]\t\\e[31mred",
                        "02:00:00:00:03:00\t2437\t-80\t[WPA2-SAE-CCMP][ESS]\t"});
    radio->setSecret("psk e7c35583e8cbd2ff9b932419c3daa1be7047b2545d76b25745cea82d732bc79f");
    bed->tools.setOutput("fw_printenv", "x=192.168.1.10\n");
    qputenv("XDG_CACHE_HOME", bed->folder.path().toLocal8Bit()); // for completion
    bed->start();
}

void BxwifictlTest::verbs_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<QByteArray>("error");
    const auto row = [](const char *arguments, int status, const char *output, const char *error) {
        QTest::newRow(arguments) << arguments << status << QByteArray(output) << QByteArray(error);
    };
    row("status", 0, "state             disconnected\nsupplicant state  DISCONNECTED\n", "");
    row("scan", 0,
        "   NAME           SIGNAL   CHANNEL  BAND     SECURITY\n"
        "   Lab WPA2       -50 dBm  36       5 GHz    WPA2\n"
        "   \\u001b[31mred  -60 dBm  6        2.4 GHz  open\n",
        "");
    row("scan --all", 0,
        "   NAME           BSSID              SIGNAL   CHANNEL  BAND     SECURITY\n"
        "   Lab WPA2       02:00:00:00:01:01  -50 dBm  36       5 GHz    WPA2\n"
        "   \\u001b[31mred  02:00:00:00:02:00  -60 dBm  6        2.4 GHz  open\n"
        "   Lab WPA2       02:00:00:00:01:00  -70 dBm  1        2.4 GHz  WPA2\n"
        "   (hidden)       02:00:00:00:03:00  -80 dBm  6        2.4 GHz  WPA3\n",
        "");
    row("wired --json", 0,
        "{\"address\":\"192.168.1.10\",\"dhcp\":false,\"gateway\":\"192.168.1.10\","
        "\"mac_address\":\"192.168.1.10\",\"netmask\":\"192.168.1.10\"}\n",
        "");
    row("wired static 10.0.0.2 10.0.0.1 255.0.0.0", 0, "",
        "Stored; takes effect at the next boot.\n");
    row("wired static 10.0.0.2 11.0.0.1 255.0.0.0", 2, "",
        "bxwifictl: gateway 11.0.0.1 is not a host in the network of 10.0.0.2\n");
    row("forget Nowhere", 6, "", "bxwifictl: Nowhere: no network is stored by that name\n");
    row("connect Nowhere", 6, "",
        "scanning ...\nbxwifictl: Nowhere: no such network in sight; a hidden one needs "
        "--hidden\n");
    row("connect --security wpa Nowhere", 2, "",
        "bxwifictl: Nowhere needs a passphrase: give --password-file, or --stored\n");
    row("connect --security open --timeout 3 Nowhere", 7, "",
        "asking the daemon ...\nassociating ...\nbxwifictl: Nowhere: not joined within 3 s\n");
    row("scan --hidden", 2, "", "bxwifictl: scan takes no option --hidden\n");
}

void BxwifictlTest::verbs()
{
    QFETCH(QString, arguments);
    const Run run = bxwifictl(arguments.split(' '));
    QTEST(run.output, "output");
    QTEST(run.error, "error");
    QTEST(run.status, "status");
}

void BxwifictlTest::joinsWithWhatTheNetworkAnnounces()
{
    const QStringList join{"connect", "Lab WPA2", "--password-file", "-"};
    const QByteArray progress = "scanning ...\nasking the daemon ...\nassociating ...\n";
    const Run wrong = bxwifictl(join, "wrong horse battery\n");
    QCOMPARE(wrong.error, progress + "bxwifictl: Lab WPA2: wrong passphrase or key\n");
    QCOMPARE(wrong.status, 5);

    const Run right = bxwifictl(join, "correct horse battery\n");
    QCOMPARE(right.error, progress + "waiting for an address ...\n");
    QCOMPARE(right.output, "ssid     Lab WPA2\naddress  10.20.2.15\n");
    QCOMPARE(right.status, 0);
    // The one that was stored with the wrong key went first.
    QVERIFY(bed->journal.entries().contains("REMOVE_NETWORK 0"));
    for (const QByteArray &entry : bed->journal.entries())
        QVERIFY2(!entry.contains("horse"), entry);

    QVERIFY(bxwifictl({"scan"}).output.contains("*  Lab WPA2 "));
    QCOMPARE(bxwifictl({"forget", "Lab WPA2"}).status, 0);
    QCOMPARE(bxwifictl({"forget", "Lab WPA2"}).status, 6);
}

void BxwifictlTest::monitorDecodesSignals()
{
    QProcess monitor;
    monitor.start(BXWIFICTL, {"monitor"});
    QByteArray output;
    const auto hears = [&](const char *line) {
        output += monitor.readAll();
        return output.contains(line);
    };
    const auto hearsOfTheLoss = [&] { // as soon as it listens
        bed->supplicant.sendEvent("<3>CTRL-EVENT-BSS-REMOVED 3 02:00:00:00:01:01");
        return hears(" lost bssid=02:00:00:00:01:01\n");
    };
    QTRY_VERIFY_WITH_TIMEOUT(hearsOfTheLoss(), patience_ms);
    bxwifictl({"scan"});
    QVERIFY(bed->daemon.stop() == 0);
    QTRY_VERIFY_WITH_TIMEOUT(hears(" daemon available=false\n"), patience_ms);
    QVERIFY(output.contains(" status status=scan-started\n"));
    QVERIFY(output.contains(" network bssid=02:00:00:00:02:00 signal_dbm=-60 frequency_mhz=2437 "
                            "flags=[ESS] ssid=\\u001b[31mred\n"));
    QVERIFY(!output.contains('\033'));
    monitor.kill();
    monitor.waitForFinished();
}

void BxwifictlTest::missingSupplicantDaemonAndBus()
{
    bed->supplicant.sendEvent("<3>CTRL-EVENT-TERMINATING ");
    QTRY_VERIFY_WITH_TIMEOUT(bxwifictl({"status"}).output == "state  no-supplicant\n", patience_ms);
    const Run noSupplicant = bxwifictl({"scan"});
    QCOMPARE(noSupplicant.error, "bxwifictl: the daemon has no supplicant to talk to\n");
    QCOMPARE(noSupplicant.status, 1);
    bed->daemon.stop();
    const Run noDaemon = bxwifictl({"status"});
    QCOMPARE(noDaemon.error, "bxwifictl: the daemon bxwifid is not running\n");
    QCOMPARE(noDaemon.status, 3);
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent");
    const Run noBus = bxwifictl({"status"});
    QCOMPARE(noBus.error, "bxwifictl: cannot reach the system bus\n");
    QCOMPARE(noBus.status, 3);
}

QTEST_GUILESS_MAIN(BxwifictlTest)
#include "tst_bxwifictl.moc"
