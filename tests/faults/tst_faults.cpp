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

/// What can go wrong around the daemon.
class FaultsTest : public QObject
{
    Q_OBJECT

private slots:
    void faults();
    void busGone();
    void addressIsNoOption();
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

struct Holdings {
    explicit Holdings(qint64 process)
        : files(numberFrom("ls /proc/%1/fd | wc -l", process)),
          children(numberFrom("grep -l '^PPid:\\s%1$' /proc/[0-9]*/status | wc -l", process)),
          memory_KiB(numberFrom("awk '/VmRSS/ { print $2 }' /proc/%1/status", process))
    {
    }
    static int numberFrom(const char *script, qint64 process)
    {
        return printedBy(QString(script).arg(process)).toInt();
    }
    int files, children, memory_KiB;
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

void checkNoAnswer(TestBed &bed)
{
    bed.bus.call("statusRequest");
    QCOMPARE(signalsOf(bed), QByteArrayList{"statusMessage(1)"});
}

void supplicantDies(TestBed &bed)
{
    bed.supplicant.kill();
    checkNoAnswer(bed);
    QDir("/run/wpa_supplicant").removeRecursively();
    bed.bus.call("wpaConnectRequest");
    QVERIFY(bed.daemon.waitForLog(
        "bool WifiControl::setup() failed to establish a connection to wpa_supplicant"));
    checkNoAnswer(bed);
    bed.supplicant.restart();
    bed.bus.call("wpaConnectRequest");
    QTRY_VERIFY(bed.journal.entries().contains("RECONFIGURE"));
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
        checkNoAnswer(bed);
        bed.supplicant.sendEvent("<3>CTRL-EVENT-SCAN-RESULTS " + garbage.left(200));
        QTRY_VERIFY(bed.journal.entries().contains("statusMessage(3)"));
        bed.journal.take();
    }
}

void pourEvents(TestBed &bed, int count)
{
    for (int event = 1000; event < 1000 + count; ++event)
        bed.supplicant.sendEvent("<3>CTRL-EVENT-BSS-REMOVED 0 " + QByteArray::number(event));
}

void eventBurst(TestBed &bed)
{
    pourEvents(bed, 2000);
    QTRY_VERIFY(bed.journal.entries().contains("bssRemoved(1000)"));
    bed.bus.call("enableRequest");
    const QByteArrayList arrived = signalsOf(bed);
    QVERIFY(std::is_sorted(arrived.begin(), arrived.end()));
}

/// As many as the supplicant sends to somebody who does not read: it keeps room for replies.
void eventsPileUp(TestBed &bed)
{
    std::unique_lock silence(bed.supplicant.answering);
    bed.bus.start("statusRequest");
    QTRY_VERIFY(bed.journal.entries().contains("STATUS"));
    pourEvents(bed, 250);
    silence.unlock();
    QTRY_VERIFY(bed.journal.entries().contains("bssRemoved(1000)"));
    bed.bus.call("enableRequest");
    // What found a place has arrived in order, behind the answer.
    const QByteArrayList arrived = signalsOf(bed);
    QCOMPARE(arrived[0], QByteArray("statusMessage(0)"));
    QVERIFY(std::is_sorted(arrived.begin() + 1, arrived.end()));
}

/// With a tool that does this, the record of the wired port holds nothing.
std::function<void(TestBed &)> toolDoes(const QByteArray &script)
{
    return [script](TestBed &bed) {
        if (script.isEmpty())
            bed.tools.remove("ifconfig");
        bed.tools.setScript("ifconfig", script);
        bed.bus.call("dynamicRequest");
        bed.tools.restore();
        // But for a hardware address, which is empty.
        QCOMPARE(signalsOf(bed),
                 QByteArrayList({"staticResult(" + QByteArray(32, 'f') + "00000000)",
                                 "dynamicResult(false)"}));
    };
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

/// One daemon lives through all of it. After each fault it answers, in order, and holds no more
/// than before.
void FaultsTest::faults()
{
    TestBed bed;
    // What is freed goes back to the one heap and from there to the system, so that what is kept
    // shows.
    bed.daemon.environment.insert("MALLOC_ARENA_MAX", "1");
    bed.daemon.environment.insert("MALLOC_MMAP_THRESHOLD_", "65536");
    bed.daemon.environment.insert("MALLOC_TRIM_THRESHOLD_", "65536");
    bed.start();
    const auto check = [&](const char *fault, const std::function<void(TestBed &)> &happen) {
        // The heap takes its shape after some turns; what is lost is lost every time.
        QString memory;
        for (int turn = 0; turn < 10; ++turn) {
            const Holdings before(bed.daemon.process.processId());
            happen(bed);
            checkAnswers(bed);
            const Holdings after(bed.daemon.process.processId());
            QVERIFY2(after.files == before.files && after.children == 0, fault);
            if (after.memory_KiB < before.memory_KiB + tolerance_KiB)
                return;
            memory += QString(" %1 to %2 KiB").arg(before.memory_KiB).arg(after.memory_KiB);
        }
        QFAIL(qPrintable(fault + (": memory grew every time:" + memory)));
    };
    flood(bed); // brings the heap to its full size
    checkAnswers(bed);
    check("supplicant dies", supplicantDies);
    check("supplicant babbles", supplicantBabbles);
    check("burst of events", eventBurst);
    check("events pile up", eventsPileUp);
    check("tool is missing", toolDoes(""));
    check("tool dies", toolDoes("kill -KILL $$"));
    check("tool writes 10 MB", toolDoes("head -c 10000000 /dev/zero | tr '\\0' x"));
    check("tool complains without end", toolDoes("head -c 10000000 /dev/zero >&2"));
    check("clients flood and vanish", flood);
}

void FaultsTest::busGone()
{
    TestBed bed;
    bed.start();
    bed.bus.server.kill();
    // Nobody is left to be told, yet the address is refreshed.
    bed.supplicant.sendEvent("<3>CTRL-EVENT-CONNECTED - Connection to x completed");
    QTRY_VERIFY(bed.journal.entries().join().contains("udhcpc"));
    QCOMPARE(bed.daemon.stop(), 0);
}

void FaultsTest::addressIsNoOption()
{
    printedBy("rm -f /etc/fw_env.config; echo /run/boot.env 0x0 0x4000 >/etc/fw_env.config;"
              "truncate -s 16K /run/boot.env; echo ipaddr=10.0.0.2 >/run/defaults;"
              "echo bootargs=init=/tmp/shell >/run/script; fw_setenv -f /run/defaults");
    TestBed bed;
    bed.tools.setScript("fw_setenv", "exec fw_setenv \"$@\"");
    bed.start();
    bed.bus.call("setStaticRequest", {payloadOf(BXStatic{"-s/run/script", {}, {}, {}, {}})});
    QCOMPARE(printedBy("fw_printenv"), QByteArray("gatewayip=\nipaddr=-s/run/script\nnetmask="));
}

QTEST_GUILESS_MAIN(FaultsTest)
#include "tst_faults.moc"
