// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

// The program against the daemon: what it prints and the status it ends with.

#include "radio.h"

#include <QProcess>

namespace
{
struct Run {
    QByteArray output;
    QByteArray error;
    int status;
};

/// Runs the program with what it reads on standard input.
Run bxwifictl(const QStringList &arguments, const QByteArray &input = {})
{
    QProcess process;
    process.start(BXWIFICTL, arguments);
    process.write(input);
    process.closeWriteChannel();
    const bool hasEnded =
        QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; }, 30000);
    return {process.readAllStandardOutput(), process.readAllStandardError(),
            hasEnded ? process.exitCode() : -1};
}
} // namespace

class BxwifictlTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void verbs();
    void joinsWithWhatTheNetworkAnnounces();
    void monitorDecodesSignals();
    void missingBusDaemonAndSupplicant();

private:
    TestBed bed;
    Radio radio{bed,
                {"02:00:00:00:01:00\t2412\t-70\t[WPA2-PSK-CCMP][ESS]\tGr\\xc3\\xbc\\xc3\\x9fe",
                 "02:00:00:00:01:01\t5180\t-50\t[WPA2-PSK-CCMP][ESS]\tGr\\xc3\\xbc\\xc3\\x9fe",
                 "02:00:00:00:02:00\t2437\t-60\t[ESS]\t\\e[31mred",
                 "02:00:00:00:03:00\t2437\t-80\t[WPA2-SAE-CCMP][ESS]\t"},
                "b48563220c09bcc3c588249ec9f6c88a554ec7fd639ae9b89ee93368f0176898"};
};

void BxwifictlTest::initTestCase()
{
    bed.tools.setScript("fw_printenv", "echo \"$1=stored $1\"");
    qputenv("XDG_CACHE_HOME", bed.folder.path().toLocal8Bit()); // for completion
    bed.start();
}

void BxwifictlTest::verbs()
{
    const struct {
        QString arguments;
        int status;
        QByteArray output;
        QByteArray error;
    } cases[] = {
        {"status", 0, "state             disconnected\nsupplicant state  DISCONNECTED\n", ""},
        {"scan", 0,
         "   NAME           SIGNAL   CHANNEL  BAND     SECURITY\n"
         "   Grüße          -50 dBm  36       5 GHz    WPA2\n"
         "   \\u001b[31mred  -60 dBm  6        2.4 GHz  open\n",
         ""},
        {"scan --all", 0,
         "   NAME           BSSID              SIGNAL   CHANNEL  BAND     SECURITY\n"
         "   Grüße          02:00:00:00:01:01  -50 dBm  36       5 GHz    WPA2\n"
         "   \\u001b[31mred  02:00:00:00:02:00  -60 dBm  6        2.4 GHz  open\n"
         "   Grüße          02:00:00:00:01:00  -70 dBm  1        2.4 GHz  WPA2\n"
         "   (hidden)       02:00:00:00:03:00  -80 dBm  6        2.4 GHz  WPA3\n",
         ""},
        {"scan --hidden", 2, "", "bxwifictl: scan takes no option --hidden\n"},
        {"wired --json", 0,
         R"({"address":"stored ipaddr","dhcp":true,"gateway":"stored gatewayip",)"
         R"("mac_address":"stored ethaddr","netmask":"stored netmask"})"
         "\n",
         ""},
        {"wired static 10.0.0.2 10.0.0.1 255.0.0.0", 0, "",
         "Stored; takes effect at the next boot.\n"},
        {"wired static 10.0.0.2 11.0.0.1 255.0.0.0", 2, "",
         "bxwifictl: gateway 11.0.0.1 is not a host in the network of 10.0.0.2\n"},
        {"forget \033[31mred", 6, "",
         "bxwifictl: \\u001b[31mred: no network is stored by that name\n"},
        {"connect Nowhere", 6, "",
         "scanning ...\nbxwifictl: Nowhere: no such network in sight; a hidden one needs "
         "--hidden\n"},
        {"connect --security wpa Nowhere", 2, "",
         "bxwifictl: Nowhere needs a passphrase: give --password-file, or --stored\n"},
        {"connect --security open --timeout 3 Nowhere", 7, "",
         "asking the daemon ...\nassociating ...\nbxwifictl: Nowhere: not joined within 3 s\n"},
    };
    for (const auto &[arguments, status, output, error] : cases) {
        const Run run = bxwifictl(arguments.split(' '));
        QCOMPARE(run.error, error);
        QCOMPARE(run.output, output);
        QCOMPARE(run.status, status);
    }
}

void BxwifictlTest::joinsWithWhatTheNetworkAnnounces()
{
    const QStringList join{"connect", "Grüße", "--password-file", "-"};
    const QByteArray progress = "scanning ...\nasking the daemon ...\nassociating ...\n";
    const Run wrong = bxwifictl(join, "wrong horse battery\n");
    QCOMPARE(wrong.error, progress + "bxwifictl: Grüße: wrong passphrase or key\n");
    QCOMPARE(wrong.status, 5);

    const Run right = bxwifictl(join, "correct horse battery\n");
    QCOMPARE(right.error, progress + "waiting for an address ...\n");
    QCOMPARE(right.output, "ssid     Grüße\naddress  10.20.2.15\n");
    QCOMPARE(right.status, 0);
    // The one that was stored with the wrong key went first.
    QVERIFY(bed.journal.entries().contains("REMOVE_NETWORK 0"));
    for (const QByteArray &entry : bed.journal.entries())
        QVERIFY2(!entry.contains("horse"), entry);

    QVERIFY(bxwifictl({"scan"}).output.contains("*  Grüße "));
    QCOMPARE(bxwifictl({"forget", "Grüße"}).status, 0);
    QCOMPARE(bxwifictl({"forget", "Grüße"}).status, 6);
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
        bed.supplicant.sendEvent("<3>CTRL-EVENT-BSS-REMOVED 3 02:00:00:00:01:01");
        return hears(" lost bssid=02:00:00:00:01:01\n");
    };
    EVENTUALLY(hearsOfTheLoss());
    bxwifictl({"scan"});
    EVENTUALLY(hears(" status status=scan-started\n"));
    EVENTUALLY(hears(" network bssid=02:00:00:00:02:00 signal_dbm=-60 frequency_mhz=2437 "
                     "flags=[ESS] ssid=\\u001b[31mred\n"));
    QCOMPARE(bed.daemon.stop(), 0);
    EVENTUALLY(hears(" daemon available=false\n"));
    monitor.kill();
    monitor.waitForFinished();
}

void BxwifictlTest::missingBusDaemonAndSupplicant()
{
    const auto fails = [](int status, const QByteArray &text) {
        const Run run = bxwifictl({"scan"});
        QCOMPARE(run.error, "bxwifictl: " + text + '\n');
        QCOMPARE(run.status, status);
    };
    fails(3, "the daemon bxwifid is not running");
    bed.journal.take();
    bed.start();
    bed.supplicant.sendEvent("<3>CTRL-EVENT-TERMINATING ");
    EVENTUALLY(bxwifictl({"status"}).output == "state  no-supplicant\n");
    fails(1, "the daemon has no supplicant to talk to");
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent");
    fails(3, "cannot reach the system bus");
}

QTEST_GUILESS_MAIN(BxwifictlTest)
#include "tst_bxwifictl.moc"
