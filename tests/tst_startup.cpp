// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "harness/testbed.h"

#include <QDir>
#include <QTest>

#include <functional>

#include <csignal>

using Preparation = std::function<void(TestBed &)>;
Q_DECLARE_METATYPE(Preparation)

/// The daemon from its start to its first exchange, and its end.
class StartUpTest : public QObject
{
    Q_OBJECT

private slots:
    void log_data();
    void log();
    void usage_data();
    void usage();
    void configurationReset_data();
    void configurationReset();
    void wiredDhcp_data();
    void wiredDhcp();
    void end();
    void endBeforeStartUp();
};

namespace
{
const char configurationFile[] = "/prefs/etc/wpa_supplicant.conf";
const char configurationLink[] = "/etc/wpa_supplicant.conf";

QByteArray contentOf(const char *path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
}

void put(const char *path, const QByteArray &content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}
} // namespace

void StartUpTest::log_data()
{
    QTest::addColumn<Preparation>("prepare");
    QTest::addColumn<QStringList>("expected");

    const QString registered =
        "unknown|unknown|void WifiDaemon::setup() Registered service: com.brelvix.bxwifid";
    const auto setup = [](const QString &items) {
        return "unknown|unknown|bool WifiControl::setup() " + items;
    };
    const QString directory = setup(R"(ctrl_iface_dir: "/var/run/wpa_supplicant")");
    const QString trying = setup(R"(trying ctrl_iface: "wlan0" ...)");
    const QStringList linked = {
        directory, trying, setup("opened connection to wpa_supplicant"),
        setup("attached to wpa_supplicant"),
        QString("unknown|unknown|QString WifiControl::ctrlRequest(const QString&) ") +
            R"("RECONFIGURE" true)"};
    const QStringList notLinked = {setup("failed to establish a connection to wpa_supplicant"),
                                   "unknown|unknown|Failed to init with WPA_Supplicant"};
    const QString logger = "wifidaemon|WifiDaemon::setup|";

    QTest::newRow("supplicant") << Preparation([](TestBed &) {})
                                << QStringList{registered} + linked;
    QTest::newRow("no directory") << Preparation([](TestBed &bed) {
        bed.supplicant.kill();
        QDir("/run/wpa_supplicant").removeRecursively();
    }) << QStringList{registered, directory} + notLinked;
    // What a supplicant leaves that was killed, and what is no socket at all.
    QTest::newRow("dead socket")
        << Preparation([](TestBed &bed) {
               bed.supplicant.kill();
               put("/run/wpa_supplicant/file", "");
           })
        << QStringList{registered, directory, trying,
                       setup("failed to open control connection to wpa_supplicant")} +
               notLinked;
    QTest::newRow("refused") << Preparation([](TestBed &bed) {
        bed.supplicant.answer("ATTACH", {"FAIL\n"});
    })
                             << QStringList{registered, directory, trying,
                                            setup("opened connection to wpa_supplicant"),
                                            setup("failed to attach to wpa_supplicant")} +
                                    notLinked;
    const QString notRegistered =
        logger + "Failed to register service: com.brelvix.bxwifid  error: ";
    QTest::newRow("name taken")
        << Preparation([](TestBed &bed) {
               QVERIFY(bed.client.connection().registerService("com.brelvix.bxwifid"));
           })
        << QStringList{logger + "Service already registered: com.brelvix.bxwifid",
                       notRegistered + R"("")"} +
               linked;
    QTest::newRow("no bus")
        << Preparation([](TestBed &bed) {
               bed.daemon.setEnvironment("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nowhere");
           })
        << QStringList{logger + "Cannot connect to the D-Bus system bus.",
                       notRegistered + R"("Not connected to D-Bus server")",
                       logger + R"(Failed to register object: "Not connected to D-Bus server")"} +
               linked;
}

void StartUpTest::log()
{
    QFETCH(Preparation, prepare);
    QFETCH(QStringList, expected);
    TestBed bed;
    bed.daemon.setEnvironment("QT_MESSAGE_PATTERN",
                              "%{if-warning}warning %{endif}%{if-category}%{category} %{endif}"
                              "%{file}|%{function}|%{message}");
    prepare(bed);
    bed.daemon.start();
    QTRY_COMPARE(bed.daemon.log(), expected);
}

void StartUpTest::usage_data()
{
    QTest::addColumn<QString>("argument");
    QTest::addColumn<int>("status");

    QTest::newRow("unknown option") << "--bogus" << 2;
    QTest::newRow("value not asked for") << "--wired-dhcp=1" << 2;
    QTest::newRow("argument") << "start" << 2;
    QTest::newRow("help") << "--help" << 0;
    QTest::newRow("version") << "-V" << 0;
}

void StartUpTest::usage()
{
    QFETCH(QString, argument);
    DaemonProcess daemon;
    daemon.start({argument});
    QTEST(daemon.waitForExit(), "status");
}

void StartUpTest::configurationReset_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");

    const QByteArray whole = "ctrl_interface=/var/run/wpa_supplicant\nctrl_interface_group=0\n"
                             "update_config=1\n";
    QTest::newRow("missing") << QByteArray() << whole;
    QTest::newRow("empty") << QByteArray("") << whole;
    QTest::newRow("76 bytes") << QByteArray(76, 'x') << whole;
    QTest::newRow("77 bytes") << QByteArray(77, 'x') << QByteArray(77, 'x');
    QTest::newRow("with networks") << whole + "network={\r\n}\n" << whole + "network={\r\n}\n";
    QTest::newRow("no directory") << QByteArray("none") << QByteArray("none");
}

void StartUpTest::configurationReset()
{
    QFETCH(QByteArray, before);
    const bool directoryExists = before != "none";
    QDir("/prefs/etc").removeRecursively();
    if (directoryExists)
        QVERIFY(QDir().mkpath("/prefs/etc"));
    if (directoryExists && !before.isNull())
        put(configurationFile, before);
    QFile::remove(configurationLink);
    put(configurationLink, "in the way");

    TestBed bed;
    bed.daemon.start({"--reset-supplicant-config"});
    QTRY_COMPARE(bed.journal.entries(), QByteArrayList({"sync", "ATTACH", "RECONFIGURE"}));
    QTEST(contentOf(configurationFile), "after");
    QTRY_COMPARE(QFile::symLinkTarget(configurationLink), QString(configurationFile));
}

void StartUpTest::wiredDhcp_data()
{
    QTest::addColumn<QByteArray>("flag");
    QTest::addColumn<QByteArrayList>("runs");
    QTest::addColumn<QString>("firstLine");

    const QByteArray printed = toolRun({"fw_printenv", "dynamicip"});
    const QByteArray asked = toolRun({"udhcpc", "-ieth0", "-n", "-q", "-p/etc/udhcpc.pid"});
    const QString other = "void WifiDaemon::setup() Registered service: com.brelvix.bxwifid";
    QTest::newRow("set") << QByteArray("dynamicip=\n") << QByteArrayList{printed, asked}
                         << R"(void WifiDaemon::setDynamicEthernetIp() "lease \"of\" 10.0.0.4\n")";
    QTest::newRow("not set") << QByteArray() << QByteArrayList{printed} << other;
    QTest::newRow("an error") << QByteArray("## dynamicip\n") << QByteArrayList{printed} << other;
}

void StartUpTest::wiredDhcp()
{
    QFETCH(QByteArray, flag);
    QFETCH(QByteArrayList, runs);
    QFETCH(QString, firstLine);
    TestBed bed;
    bed.tools.setOutput("fw_printenv", flag);
    bed.tools.setOutput("udhcpc", "lease \"of\" 10.0.0.4\n");
    bed.daemon.start({"--wired-dhcp"});
    QTRY_COMPARE(bed.journal.entries(), runs + QByteArrayList({"ATTACH", "RECONFIGURE"}));
    QTRY_COMPARE(bed.daemon.log().value(0), firstLine);
}

void StartUpTest::end()
{
    TestBed bed;
    bed.start();
    // An exchange that the signal falls into is finished first.
    bed.supplicant.hold("SCAN");
    bed.client.start("scanRequest");
    QTRY_VERIFY(bed.journal.entries().contains("SCAN"));
    kill(static_cast<pid_t>(bed.daemon.pid()), SIGINT);
    QTest::qWait(200);
    QVERIFY(!bed.journal.take().contains("SAVE_CONFIG"));
    bed.supplicant.release();
    QCOMPARE(bed.daemon.waitForExit(), 0);
    QCOMPARE(bed.journal.take(), QByteArrayList({"SAVE_CONFIG", "sync", "DETACH"}));
}

void StartUpTest::endBeforeStartUp()
{
    TestBed bed;
    bed.tools.setScript("fw_printenv", "kill $PPID");
    bed.daemon.start({"--wired-dhcp"});
    QCOMPARE(bed.daemon.waitForExit(), 0);
    QVERIFY(bed.journal.take().contains("sync"));
}

QTEST_GUILESS_MAIN(StartUpTest)
#include "tst_startup.moc"
