// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "harness/testbed.h"
#include "records/bxstatic.h"
#include "records/payload.h"

#include <QDBusConnectionInterface>
#include <QDir>
#include <QTest>
#include <QUuid>

#include <algorithm>
#include <csignal>
#include <functional>
#include <limits>

#include <sys/mount.h>

using Fault = std::function<void(TestBed &)>;
Q_DECLARE_METATYPE(Fault)

/// One daemon lives through all that can go wrong around it. After each fault it answers, in order,
/// and holds no more than before.
class FaultsTest : public QObject
{
    Q_OBJECT

private slots:
    void faults_data();
    void faults();
    void waits_data();
    void waits() { faults(); }
    void noSpaceLeft();
    void busGone();
    void addressIsNoOption();

private:
    void start();

    std::unique_ptr<TestBed> bed;
};

namespace
{
constexpr int clients = 16;
constexpr int calls = 10000;

#ifdef __SANITIZE_ADDRESS__ // keeps what is freed, and finds by itself what is not
constexpr int tolerance_KiB = std::numeric_limits<int>::max() / 2;
#else
constexpr int tolerance_KiB = 1024; // some 200 bytes a call of a flood
#endif

/// A number that the kernel tells of a process.
int processStatus(const QString &pid, const QString &key)
{
    QFile file("/proc/" + pid + "/status");
    file.open(QIODevice::ReadOnly);
    const QString line = QString(file.readAll()).section('\n' + key + ":", 1).section('\n', 0, 0);
    return line.simplified().section(' ', 0, 0).toInt();
}

struct Holdings {
    explicit Holdings(qint64 process)
    {
        const QString pid = QString::number(process);
        files = QDir("/proc/" + pid + "/fd").entryList(QDir::Files | QDir::System).size();
        const QStringList processes = QDir("/proc").entryList({"[0-9]*"});
        for (const QString &other : processes)
            children += processStatus(other, "PPid") == process;
        memory_KiB = processStatus(pid, "VmRSS");
    }
    int files;
    int children = 0;
    int memory_KiB;
};

QByteArrayList signalsOf(TestBed &bed)
{
    QByteArrayList found = bed.journal.take();
    const auto isOther = [](const QByteArray &entry) {
        return !entry.endsWith(')');
    };
    found.erase(std::remove_if(found.begin(), found.end(), isOther), found.end());
    return found;
}

/// Three queries sent together are answered one after the other.
void checkAnswers(TestBed &bed)
{
    bed.supplicant.answer("STATUS", {"ssid=office\nwpa_state=COMPLETED\nip_address=10.0.0.7\n"});
    bed.client.call("enableRequest"); // what comes late is in the journal after this
    bed.journal.take();
    bed.client.start("statusRequest");
    bed.client.start("ssidRequest");
    bed.client.call("ipRequest");
    QCOMPARE(signalsOf(bed),
             QByteArrayList({"statusMessage(0)", "ssidResult(office)", "ipResult(10.0.0.7)"}));
}

void checkStatus(TestBed &bed, const QByteArray &expected)
{
    bed.client.call("statusRequest");
    QCOMPARE(signalsOf(bed), QByteArrayList{expected});
}

void rebuildLink(TestBed &bed)
{
    bed.journal.take();
    bed.supplicant.restart();
    bed.client.call("wpaConnectRequest");
    QTRY_VERIFY(bed.journal.entries().contains("RECONFIGURE"));
}

void supplicantDies(TestBed &bed)
{
    bed.supplicant.kill();
    checkStatus(bed, "statusMessage(1)");
    rebuildLink(bed);
}

void socketsDisappear(TestBed &bed)
{
    QDir("/run/wpa_supplicant").removeRecursively();
    bed.client.call("wpaConnectRequest");
    QVERIFY(bed.daemon.waitForLog(
        "bool WifiControl::setup() failed to establish a connection to wpa_supplicant"));
    checkStatus(bed, "statusMessage(1)");
    bed.supplicant.kill();
    rebuildLink(bed);
}

Fault supplicantSilentFor(int time_ms, const QByteArray &answer)
{
    return [=](TestBed &bed) {
        bed.supplicant.hold("");
        const QDBusPendingCall query = bed.client.start("statusRequest");
        QTest::qWait(time_ms);
        bed.supplicant.release();
        bed.client.wait(query);
        QCOMPARE(signalsOf(bed), QByteArrayList{answer});
    };
}

void supplicantBabbles(TestBed &bed)
{
    for (const QByteArray &garbage :
         {QByteArray(4000, '='), QByteArray(4000, '\n'), QByteArray(4000, '\t'),
          QByteArray(4000, '\xff'), QByteArray(4000, '\0'), QByteArray("")}) {
        bed.supplicant.answer("STATUS", {garbage});
        bed.supplicant.answer("SCAN_RESULTS", {garbage});
        bed.client.call("fullStatusRequest");
        bed.journal.take();
        checkStatus(bed, "statusMessage(1)");
        bed.supplicant.sendEvent("<3>CTRL-EVENT-SCAN-RESULTS " + garbage.left(200));
        QTRY_VERIFY(bed.journal.entries().contains("statusMessage(3)"));
        bed.journal.take();
    }
}

void pourEvents(TestBed &bed, int count)
{
    for (int event = 10000; event < 10000 + count; ++event)
        bed.supplicant.sendEvent("<3>CTRL-EVENT-BSS-REMOVED 0 " + QByteArray::number(event));
}

/// What found a place in the daemon's socket has arrived in order, behind the answers given.
void checkEvents(TestBed &bed, const QByteArrayList &answers)
{
    QTRY_VERIFY(bed.journal.entries().join().contains("bssRemoved"));
    bed.client.call("enableRequest");
    const QByteArrayList arrived = signalsOf(bed);
    QCOMPARE(arrived.mid(0, answers.size()), answers);
    QVERIFY(std::is_sorted(arrived.begin() + answers.size(), arrived.end()));
}

void eventBurst(TestBed &bed)
{
    pourEvents(bed, 2000);
    checkEvents(bed, {});
}

/// As many as the supplicant sends to somebody who does not read: it keeps room for replies.
void eventsPileUp(TestBed &bed)
{
    bed.supplicant.hold("STATUS");
    const QDBusPendingCall query = bed.client.start("statusRequest");
    QTRY_VERIFY(bed.journal.entries().contains("STATUS"));
    pourEvents(bed, 250);
    bed.supplicant.release();
    bed.client.wait(query);
    checkEvents(bed, {"statusMessage(0)"});
}

Fault toolsDo(const QByteArray &script)
{
    return [script](TestBed &bed) {
        bed.tools.setScript("ifconfig", script);
        bed.client.call("dynamicRequest");
        bed.tools.setScript("ifconfig", "");
        // A record of nothing but the hardware address, which is empty.
        QCOMPARE(signalsOf(bed),
                 QByteArrayList({"staticResult(" + QByteArray(32, 'f') + "00000000)",
                                 "dynamicResult(false)"}));
    };
}

void toolsMissing(TestBed &bed)
{
    bed.tools.remove("ifconfig");
    toolsDo("")(bed);
    const FakeTools restored(bed.journal, bed.tools.path);
}

/// Clients that send without end, among it what is no record, and don't wait for any answer.
void flood(TestBed &bed)
{
    const char *const service = "com.brelvix.bxwifid";
    for (int client = 0; client < clients; ++client) {
        const QString name = QUuid::createUuid().toString();
        QDBusConnection bus = QDBusConnection::connectToBus(bed.bus.address(), name);
        const auto send = [&](const QString &method, const QVariantList &arguments = {}) {
            QDBusMessage call = QDBusMessage::createMethodCall(service, "/", service, method);
            call.setArguments(arguments);
            // The bus lets few calls wait for a reply; the last two of each client do.
            if (arguments.isEmpty())
                bus.send(call);
            else
                bus.asyncCall(call);
        };
        for (int call = 0; call < calls / clients; ++call)
            send(call % 2 ? "statusRequest" : "ssidRequest");
        // The first length is a lie in one, and true in the other as far as the payload goes.
        const int size = 1024 << (client % 15);
        send("setStaticRequest", {QByteArray(size, '\x7f')});
        send("connectRequest", {QByteArray(size, '\0')});
        bus.interface()->isServiceRegistered(service); // the bus has all that was sent before
        QDBusConnection::disconnectFromBus(name);
    }
    bed.client.call("enableRequest");
    QVERIFY(bed.journal.take().count("STATUS") >= calls);
}
} // namespace

void FaultsTest::start()
{
    bed = std::make_unique<TestBed>();
    // What is freed goes back to the system, so that what is kept shows.
    bed->daemon.setEnvironment("MALLOC_MMAP_THRESHOLD_", "65536");
    bed->daemon.setEnvironment("MALLOC_TRIM_THRESHOLD_", "65536");
    bed->start();
}

void FaultsTest::faults_data()
{
    start();
    flood(*bed); // brings the heap to its full size
    QTest::addColumn<Fault>("happen");
    const auto fault = [](const char *name, const Fault &happen) {
        QTest::newRow(name) << happen;
    };
    fault("supplicant dies", supplicantDies);
    fault("control sockets disappear", socketsDisappear);
    fault("supplicant answers late", supplicantSilentFor(1000, "statusMessage(0)"));
    fault("supplicant babbles", supplicantBabbles);
    fault("burst of events", eventBurst);
    fault("events pile up", eventsPileUp);
    fault("tool is missing", toolsMissing);
    fault("tool dies", toolsDo("kill -KILL $$"));
    fault("tool writes 10 MB", toolsDo("head -c 10000000 /dev/zero | tr '\\0' x"));
    fault("tool complains without end", toolsDo("head -c 10000000 /dev/zero >&2"));
    fault("clients flood and vanish", flood);
}

void FaultsTest::waits_data()
{
    start();
    QTest::addColumn<Fault>("happen");
    QTest::newRow("supplicant stops for a time") << supplicantSilentFor(11000, "statusMessage(1)");
    QTest::newRow("tool hangs") << toolsDo("exec sleep 100");
}

void FaultsTest::faults()
{
    QFETCH(Fault, happen);
    checkAnswers(*bed);
    QString memory;
    // The heap may take another shape once; what is lost is lost every time.
    for (int turn = 0; turn < 3; ++turn) {
        const Holdings before(bed->daemon.pid());
        happen(*bed);
        checkAnswers(*bed);
        const Holdings after(bed->daemon.pid());
        QCOMPARE(after.files, before.files);
        QCOMPARE(after.children, 0);
        if (after.memory_KiB < before.memory_KiB + tolerance_KiB)
            return;
        memory += QString(" %1 to %2 KiB").arg(before.memory_KiB).arg(after.memory_KiB);
    }
    QFAIL(qPrintable("memory grew three times:" + memory));
}

void FaultsTest::noSpaceLeft()
{
    bed.reset();
    QVERIFY(mount("none", "/prefs/etc", "tmpfs", 0, "size=8k") == 0);
    const QString file = "/prefs/etc/wpa_supplicant.conf";
    QFile filler("/prefs/etc/filler");
    filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    const auto sizeAfterStart = [&] {
        TestBed own;
        own.start({"--reset-supplicant-config"});
        checkAnswers(own);
        return QFileInfo(file).size();
    };
    filler.write(QByteArray(8192, 'x'));
    QCOMPARE(sizeAfterStart(), 0);
    QFile::resize(file, 100); // stored networks, for all that the daemon knows
    QCOMPARE(sizeAfterStart(), 100);
    QFile::remove(file);
    filler.remove();
    QCOMPARE(sizeAfterStart(), 78); // repaired once there is room
    umount("/prefs/etc");
}

void FaultsTest::busGone()
{
    bed.reset();
    TestBed own;
    own.start();
    const uint bus = own.client.connection().interface()->servicePid("org.freedesktop.DBus");
    kill(static_cast<pid_t>(bus), SIGKILL);
    // Nobody is left to be told, yet the address is refreshed.
    own.supplicant.sendEvent("<3>CTRL-EVENT-CONNECTED - Connection to x completed");
    QTRY_VERIFY(own.journal.entries().join().contains("udhcpc"));
    QCOMPARE(own.daemon.stop(), 0);
}

void FaultsTest::addressIsNoOption()
{
    bed.reset();
    const auto shell = [](const QString &script) {
        QProcess process;
        process.start("sh", {"-c", script});
        process.waitForFinished();
        return process.readAllStandardOutput();
    };
    shell("rm -f /etc/fw_env.config; echo /run/boot.env 0x0 0x4000 >/etc/fw_env.config;"
          "truncate -s 16K /run/boot.env; echo ipaddr=10.0.0.2 >/run/defaults;"
          "echo bootargs=init=/tmp/shell >/run/script; fw_setenv -f /run/defaults");
    TestBed own;
    own.tools.setScript("fw_setenv", "exec fw_setenv \"$@\"\n");
    own.start();
    own.client.call("setStaticRequest", {payloadOf(BXStatic{"-s/run/script", {}, {}, {}, {}})});
    QCOMPARE(shell("fw_printenv"), QByteArray("gatewayip=\nipaddr=-s/run/script\nnetmask=\n"));
}

QTEST_GUILESS_MAIN(FaultsTest)
#include "tst_faults.moc"
