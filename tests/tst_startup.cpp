// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "harness/testbed.h"

#include <QDir>
#include <QTest>

#include <csignal>
#include <functional>

#include <sys/mount.h>

/// The daemon from its start to its first exchange, and its end.
class StartUpTest : public QObject
{
    Q_OBJECT

private slots:
    void log();
    void usage();
    void configurationReset();
    void wiredDhcp();
    void end();
    void endBeforeStartUp();
};

namespace
{
const char configurationFile[] = "/prefs/etc/wpa_supplicant.conf";
const char configurationLink[] = "/etc/wpa_supplicant.conf";
const QString registered = "void WifiDaemon::setup() Registered service: com.brelvix.bxwifid";

void put(const char *path, const QByteArray &content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}
/// Whether the daemon's start, among what is prepared, leads to these lines and no other.
bool logs(const std::function<void(TestBed &)> &prepare, const QStringList &expected)
{
    TestBed bed;
    bed.daemon.environment.insert("QT_MESSAGE_PATTERN", "%{if-warning}warning %{endif}"
                                                        "%{if-category}%{category} %{endif}"
                                                        "%{file}|%{function}|%{message}");
    prepare(bed);
    bed.daemon.start();
    // Of the two kinds of line, this one carries no source.
    const auto log = [&] {
        return bed.daemon.log().replaceInStrings("unknown|unknown|", "");
    };
    const bool has = QTest::qWaitFor([&] { return log() == expected; });
    if (!has)
        qWarning() << "expected" << expected << "but logged is" << log();
    return has;
}
} // namespace

void StartUpTest::log()
{
    const auto setup = [](const char *text) {
        return QString("bool WifiControl::setup() ") + text;
    };
    const QString directory = setup(R"(ctrl_iface_dir: "/var/run/wpa_supplicant")");
    const QString trying = setup(R"(trying ctrl_iface: "wlan0" ...)");
    const QString opened = setup("opened connection to wpa_supplicant");
    const QStringList linked{
        directory, trying, opened, setup("attached to wpa_supplicant"),
        R"(QString WifiControl::ctrlRequest(const QString&) "RECONFIGURE" true)"};
    const auto notLinked = [&](const QStringList &attempts) {
        const QStringList end{setup("failed to establish a connection to wpa_supplicant"),
                              "Failed to init with WPA_Supplicant"};
        return QStringList{registered, directory} + attempts + end;
    };
    QVERIFY(logs([](TestBed &) {}, QStringList{registered} + linked));
    QVERIFY(logs(
        [](TestBed &bed) {
            bed.supplicant.kill();
            QDir("/run/wpa_supplicant").removeRecursively();
        },
        notLinked({})));
    // What a supplicant leaves that was killed, and what is no socket at all.
    QVERIFY(logs(
        [](TestBed &bed) {
            bed.supplicant.kill();
            put("/run/wpa_supplicant/file", "");
        },
        notLinked({trying, setup("failed to open control connection to wpa_supplicant")})));
    QVERIFY(logs([](TestBed &bed) { bed.supplicant.answer("ATTACH", {"FAIL\n"}); },
                 notLinked({trying, opened, setup("failed to attach to wpa_supplicant")})));

    const QString logger = "wifidaemon|WifiDaemon::setup|";
    const QString failed = logger + "Failed to register service: com.brelvix.bxwifid  error: ";
    QVERIFY(logs(
        [](TestBed &bed) { bed.bus.client.registerService("com.brelvix.bxwifid"); },
        QStringList{logger + "Service already registered: com.brelvix.bxwifid", failed + R"("")"} +
            linked));
    const QString noBus = R"("Not connected to D-Bus server")";
    QVERIFY(logs([](TestBed &bed) { bed.bus.server.kill(), bed.bus.server.waitForFinished(); },
                 QStringList{logger + "Cannot connect to the D-Bus system bus.", failed + noBus,
                             logger + "Failed to register object: " + noBus} +
                     linked));
}

void StartUpTest::usage()
{
    const std::pair<const char *, int> cases[] = {
        {"--bogus", 2}, {"--wired-dhcp=1", 2}, {"start", 2}, {"--help", 0}, {"-V", 0}};
    for (const auto &[argument, status] : cases) {
        DaemonProcess daemon;
        daemon.start({argument});
        QVERIFY2(daemon.waitForExit() == status, argument);
    }
}

void StartUpTest::configurationReset()
{
    const auto contentAfterStart = [] {
        QFile::remove(configurationLink);
        put(configurationLink, "in the way");
        TestBed bed;
        bed.daemon.start({"--reset-supplicant-config"});
        if (!bed.happens({"sync", "ATTACH", "RECONFIGURE"}) ||
            !QTest::qWaitFor([] { return !QFile::symLinkTarget(configurationLink).isEmpty(); }))
            QTest::qFail("no start with a link", __FILE__, __LINE__);
        QFile file(QFile::symLinkTarget(configurationLink));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
    };
    const QByteArray whole = "ctrl_interface=/var/run/wpa_supplicant\nctrl_interface_group=0\n"
                             "update_config=1\n";
    QFile::remove(configurationFile);
    QCOMPARE(contentAfterStart(), whole);
    for (const QByteArray &kept : {QByteArray(77, 'x'), whole + "network={\r\n}\n"}) {
        put(configurationFile, kept);
        QCOMPARE(contentAfterStart(), kept);
    }
    put(configurationFile, QByteArray(76, 'x'));
    QCOMPARE(contentAfterStart(), whole);

    // No room, then some again.
    QVERIFY(mount("none", "/prefs/etc", "tmpfs", 0, "size=4k") == 0);
    put("/prefs/etc/filler", QByteArray(4096, 'x'));
    QCOMPARE(contentAfterStart(), QByteArray());
    QFile::remove("/prefs/etc/filler");
    QCOMPARE(contentAfterStart(), whole);
    umount("/prefs/etc");

    QDir("/prefs/etc").removeRecursively();
    QCOMPARE(contentAfterStart(), QByteArray("none"));
}

void StartUpTest::wiredDhcp()
{
    const auto check = [](const QByteArray &flag, const QByteArrayList &runs,
                          const QString &firstLine) {
        TestBed bed;
        bed.tools.setOutput("fw_printenv", flag);
        bed.tools.setOutput("udhcpc", "lease \"of\" 10.0.0.4\n");
        bed.daemon.start({"--wired-dhcp"});
        QVERIFY2(bed.happens(QByteArrayList{"fw_printenv|dynamicip"} + runs +
                             QByteArrayList{"ATTACH", "RECONFIGURE"}),
                 flag);
        QTRY_COMPARE(bed.daemon.log().value(0), firstLine);
    };
    check("dynamicip=\n", {"udhcpc|-ieth0|-n|-q|-p/etc/udhcpc.pid"},
          R"(void WifiDaemon::setDynamicEthernetIp() "lease \"of\" 10.0.0.4\n")");
    check("", {}, registered);
    check("## dynamicip\n", {}, registered);
}

void StartUpTest::end()
{
    TestBed bed;
    bed.start();
    // An exchange that the signal falls into is finished first.
    std::unique_lock silence(bed.supplicant.answering);
    bed.bus.start("scanRequest");
    QTRY_VERIFY(bed.journal.entries().contains("SCAN"));
    kill(static_cast<pid_t>(bed.daemon.process.processId()), SIGINT);
    QTest::qWait(200);
    QVERIFY(!bed.journal.take().contains("SAVE_CONFIG"));
    silence.unlock();
    QCOMPARE(bed.daemon.waitForExit(), 0);
    QVERIFY(bed.happens({"SAVE_CONFIG", "sync", "DETACH"}));
}

void StartUpTest::endBeforeStartUp()
{
    TestBed bed;
    bed.tools.setScript("fw_printenv", "kill $PPID");
    bed.daemon.start({"--wired-dhcp"});
    QCOMPARE(bed.daemon.waitForExit(), 0);
    QVERIFY(bed.journal.entries().contains("sync"));
}

QTEST_GUILESS_MAIN(StartUpTest)
#include "tst_startup.moc"
