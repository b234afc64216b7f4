// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "harness/testbed.h"
#include "records/bxstatic.h"
#include "records/payload.h"

#include <QDBusConnectionInterface>
#include <QDir>
#include <QTest>

#include <algorithm>
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
    bed.bus.call("enableRequest"); // what comes late is in the journal after this
    bed.journal.take();
    bed.bus.start("statusRequest");
    bed.bus.start("ssidRequest");
    bed.bus.call("ipRequest");
    QCOMPARE(signalsOf(bed),
             QByteArrayList({"statusMessage(0)", "ssidResult(office)", "ipResult(10.0.0.7)"}));
}

void checkStatus(TestBed &bed, const QByteArray &expected)
{
    bed.bus.call("statusRequest");
    QCOMPARE(signalsOf(bed), QByteArrayList{expected});
}

void rebuildLink(TestBed &bed)
{
    bed.journal.take();
    bed.supplicant.restart();
    bed.bus.call("wpaConnectRequest");
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
    bed.bus.call("wpaConnectRequest");
    QVERIFY(bed.daemon.waitForLog(
        "bool WifiControl::setup() failed to establish a connection to wpa_supplicant"));
    checkStatus(bed, "statusMessage(1)");
    bed.supplicant.kill();
    rebuildLink(bed);
}

Fault supplicantSilentFor(int time_ms, const QByteArray &answer)
{
    return [=](TestBed &bed) {
        std::unique_lock silence(bed.supplicant.answering);
        const QDBusPendingCall query = bed.bus.start("statusRequest");
        QTest::qWait(time_ms);
        silence.unlock();
        bed.bus.wait(query);
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
        bed.bus.call("fullStatusRequest");
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
    bed.bus.call("enableRequest");
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
    std::unique_lock silence(bed.supplicant.answering);
    const QDBusPendingCall query = bed.bus.start("statusRequest");
    QTRY_VERIFY(bed.journal.entries().contains("STATUS"));
    pourEvents(bed, 250);
    silence.unlock();
    bed.bus.wait(query);
    checkEvents(bed, {"statusMessage(0)"});
}

Fault toolsDo(const QByteArray &script)
{
    return [script](TestBed &bed) {
        bed.tools.setScript("ifconfig", script);
        bed.bus.call("dynamicRequest");
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
    bed.tools.restore();
}

/// Clients that send without end, among it what is no record, and don't wait for any answer.
void flood(TestBed &bed)
{
    for (int client = 0; client < clients; ++client) {
        QDBusConnection bus = Bus::connectClient();
        for (int call = 0; call < calls / clients; ++call)
            bus.send(daemonCall(call % 2 ? "statusRequest" : "ssidRequest"));
        // The first length is a lie in one, and true in the other as far as the payload goes. The
        // bus lets few calls wait for a reply, as these do.
        const int size = 1024 << (client % 15);
        bus.asyncCall(daemonCall("setStaticRequest", {QByteArray(size, '\x7f')}));
        bus.asyncCall(daemonCall("connectRequest", {QByteArray(size, '\0')}));
        bus.interface()->servicePid(bus.baseService()); // the bus has all that was sent before
        QDBusConnection::disconnectFromBus(bus.name());
    }
    bed.bus.call("enableRequest");
    QVERIFY(bed.journal.take().count("STATUS") >= calls);
}
} // namespace

void FaultsTest::start()
{
    bed = std::make_unique<TestBed>();
    // What is freed goes back to the system, so that what is kept shows.
    bed->daemon.environment.insert("MALLOC_MMAP_THRESHOLD_", "65536");
    bed->daemon.environment.insert("MALLOC_TRIM_THRESHOLD_", "65536");
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

void FaultsTest::faults()
{
    QFETCH(Fault, happen);
    checkAnswers(*bed);
    QString memory;
    // The heap may take another shape once; what is lost is lost every time.
    for (int turn = 0; turn < 3; ++turn) {
        const Holdings before(bed->daemon.process.processId());
        happen(*bed);
        checkAnswers(*bed);
        const Holdings after(bed->daemon.process.processId());
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
    own.bus.server.kill();
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
    own.bus.call("setStaticRequest", {payloadOf(BXStatic{"-s/run/script", {}, {}, {}, {}})});
    QCOMPARE(shell("fw_printenv"), QByteArray("gatewayip=\nipaddr=-s/run/script\nnetmask=\n"));
}

QTEST_GUILESS_MAIN(FaultsTest)
#include "tst_faults.moc"
