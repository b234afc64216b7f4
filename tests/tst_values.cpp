// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "control/event.h"
#include "control/passphrase.h"
#include "daemon/supplicantreply.h"
#include "daemon/tooloutput.h"
#include "records/payload.h"

#include <QTest>

/// Everything that turns texts and bytes from outside into values and back, in tables of value and
/// text.
class ValuesTest : public QObject
{
    Q_OBJECT

private slots:
    void events();
    void scanTables();
    void networkIds();
    void statusReplies();
    void toolOutput();
    void encoding();
    void decoding();
};

namespace
{
/// Fields side by side, "-" for a null one.
QString shown(const QStringList &fields)
{
    QStringList texts;
    for (const QString &text : fields)
        texts << (text.isNull() ? "-" : text);
    return texts.join('|');
}

void row(const char *name, const QString &actual, const QString &expected)
{
    QVERIFY2(actual == expected, qPrintable(name + (": " + actual)));
}

/// One-letter texts in hexadecimal, as they are encoded one after the other.
QByteArray letters(const QByteArray &text)
{
    QByteArray encoded;
    for (const char letter : text)
        encoded += "0000000200" + QByteArray(1, letter).toHex();
    return encoded;
}
} // namespace

void ValuesTest::events()
{
    const std::pair<const char *, Event> cases[] = {
        {"<3>CTRL-REQ-PASSWORD-1:CTRL-EVENT-CONNECTED ", Event::Request},
        {"<3>CTRL-EVENT-SCAN-RESULTS ", Event::ScanResults},
        {"<3>CTRL-EVENT-SCAN-RESULTS", Event::Other},
        {"<3>ctrl-event-scan-results ", Event::Other},
        {"CTRL-EVENT-DISCONNECTED bssid=02:00:00:00:00:01 reason=3", Event::Disconnected},
        {"<3>CTRL-EVENT-CONNECTED - Connection to 02:00:00:00:00:01 completed", Event::Connected},
        {"<3>CTRL-EVENT-BSS-ADDED 0 02:00:00:00:00:01", Event::BssAdded},
        {"<3>CTRL-EVENT-BSS-REMOVED 0 02:00:00:00:00:01", Event::BssRemoved},
        {"<3>Trying to associate with SSID 'Associated '", Event::Associating},
        {"<3>Associated with 02:00:00:00:00:01", Event::Associated},
        {"<3>CTRL-EVENT-TERMINATING ", Event::Terminating},
        {"<3>CTRL-EVENT-SSID-TEMP-DISABLED id=0", Event::TemporarilyDisabled},
    };
    for (const auto &[message, event] : cases)
        QVERIFY2(eventOf(message) == event, message);
}

void ValuesTest::scanTables()
{
    const auto table = [](const char *name, const char *reply, const char *expected) {
        QStringList lines;
        for (const BXNetwork &n : scanTable(reply))
            lines << shown({n.bssid, n.frequency, n.signalLevel, n.flags, n.ssid, n.password});
        row(name, lines.join('\n'), expected);
    };
    table("header", "bssid / frequency / signal level / flags / ssid\n", "");
    table("first line is never a network", "a\t1\t-1\t\tx\nb\t2\t-2\t[ESS]\t y z \nc\t3\t-3\t\t\n",
          "b|2|-2|[ESS]| y z |-\nc|3|-3|||-");
    table("other shapes", "\na\t1\t-1\t[ESS]\na\t1\t-1\t[ESS]\tx\ty\n\na\t1\t-1\t[ESS]\tcu",
          "a|1|-1|[ESS]|cu|-");
}

void ValuesTest::networkIds()
{
    const auto id = [](const char *ssid, const char *expected) {
        const char reply[] = "network id\tssid\tbssid\tflags\n"
                             "3\tTwice\tany\t[CURRENT]\n4\tTwice\tany\t\n5\tNo flags\tany\t\n"
                             "6\tThree columns\tany\n7\tFive columns\tany\t\t\nx y\tText\tany\t\n";
        row(ssid, networkIdOf(reply, ssid).value_or("none"), expected);
    };
    id("ssid", "none"); // the header
    id("Twice", "3");
    id("twice", "none");
    id("No flags", "5");
    id("Three columns", "none");
    id("Five columns", "none");
    id("Text", "x y");
}

void ValuesTest::statusReplies()
{
    const auto status = [](const char *name, const char *reply, const char *expected) {
        const QString state = isAssociationCompleted(reply) ? "joined" : "not";
        row(name, QStringList{state, currentSsid(reply), currentAddress(reply)}.join('|'),
            expected);
    };
    status("joined", "bssid=b\nssid=Home\nwpa_state=COMPLETED\nip_address=10.0.0.2\n",
           "joined|Home|10.0.0.2");
    status("small letters", "wpa_state=xcompletedx", "joined||");
    status("first state", "wpa_state=SCANNING\nwpa_state=COMPLETED\n", "not||");
    status("state elsewhere", "p2p_wpa_state=COMPLETED\n", "not||");
    status("no name", "bssid=b\nip_address=10.0.0.2\n", "not||");
    status("empty name", "ssid=\nip_address=10.0.0.2\n", "not||");
    status("no address", "ssid=Home\n", "not|Home|");
    status("key within", "ssid=my ssid=net=1\nip_address=a\nip_address=b ip_address=c",
           "not|my net=1|b c");
    status("name like an address", "ssid=ip_address=x", "not|ip_address=x|x");
    status("three names", "ssid=one\nssid=two\nssid=\nip_address=a", "not|one|a");

    const BXNetworkConnected s = fullStatus(
        "mode=station\nfreq=\nbssid=old\nbssid=b\nssid=a=b\nssid_verified=1\ngroup_cipher=TKIP\n"
        "pairwise_cipher=CCMP\ngroup_mgmt=BIP\nkey_mgmt=WPA2-PSK\nwpa_state=COMPLETED\n=x\n");
    row("full status",
        shown({s.bssid, s.frequency, s.ssid, s.mode, s.pairwiseCipher, s.groupCipher, s.keyMgmt,
               s.wpaState, s.ipAddress}),
        "b||a|station|CCMP|BIP|WPA2-PSK|COMPLETED|-");
}

void ValuesTest::toolOutput()
{
    row("line feed stays", shown({bootValueOf("ipaddr=10.0.0.2\n")}), "10.0.0.2\n");
    row("up to the next =", shown({bootValueOf("ipaddr=a=b\n")}), "a");
    row("not set", shown({bootValueOf("")}), "");

    const auto address = [](const char *name, const char *output, const char *expected) {
        BXStatic a;
        readInterfaceAddress(output, a);
        row(name, shown({a.ipAddress, a.netmask}), expected);
    };
    address("busybox",
            "      inet addr:10.0.0.2  Bcast:10.0.0.255  Mask:255.255.255.0\n"
            "      inet6 addr: fe80::1/64 Scope:Link\n"
            "inet addr:9.9.9.9  Link encap:Ethernet  HWaddr 02:00:00:00:00:01\n",
            "10.0.0.2|255.255.255.0");
    address("no mask", "\tinet addr:10.0.0.2\n", "10.0.0.2|-");
    address("last line counts", "inet addr:1.1.1.1 Mask:2.2.2.2\ninet addr:3.3.3.3\n",
            "3.3.3.3|2.2.2.2");
    address("another form", "inet 10.0.0.2  netmask 255.0.0.0 addr:1\n", "-|-");

    const auto gateway = [](const char *name, const char *output, const char *expected) {
        BXStatic a;
        readDefaultGateway(output, a);
        row(name, shown({a.gateway}), expected);
    };
    gateway("default route",
            "0.0.0.0  10.0.0.9  0.0.0.0  UG  0 0 0 wlan0\n"
            "0.0.0.0  10.0.0.1  0.0.0.0  UG  0 0 0 eth0\n"
            "10.0.0.0 10.0.0.8  255.0.0.0 U  0 0 0 eth0\n",
            "10.0.0.1");
    gateway("last of two", "0.0.0.0\t1.1.1.1 eth0\n0.0.0.0\t2.2.2.2 eth0\n", "2.2.2.2");
    gateway("none", "Kernel IP routing table\n0.0.0.0 1.1.1.1 eth0 \n", "-");

    row("after the comment", printedPskOf("\t#psk=\"secret\"\n\tpsk=0a1b\n}\n"), "0a1b");
    row("capitals", printedPskOf("PSK=0A1B=2c\n"), "0A1B");
    row("no key", printedPskOf("Passphrase must be 8..63 characters\n"), "");
}

void ValuesTest::encoding()
{
    const auto record = [](const char *name, const QByteArray &payload, const QByteArray &bytes) {
        row(name, payload.toHex(), bytes);
    };
    record("every kind of text",
           payloadOf(BXStatic{"10.0.0.2", "10.0.0.1", "255.0.0.0", QString(), ""}),
           "0000001000310030002e0030002e0030002e0032"
           "0000001000310030002e0030002e0030002e0031"
           "00000012003200350035002e0030002e0030002e0030"
           "ffffffff00000000");
    record("static", payloadOf(BXStatic{"a", "b", "c", "d", "e"}), letters("abcde"));
    record("network", payloadOf(BXNetwork{"a", "b", "c", "d", "e", "f", "g", true}),
           letters("abcdefg") + "01");
    record("unfilled", payloadOf(BXNetwork()), QByteArray("ffffffff").repeated(7) + "00");
    record("connected",
           payloadOf(BXNetworkConnected{"a", "b", "c", "d", "e", "f", "g", "h", QString()}),
           letters("abcdefgh") + "ffffffff");
}

void ValuesTest::decoding()
{
    const auto network = [](const char *name, const QByteArray &bytes, const char *expected) {
        const auto n = recordOf<BXNetwork>(QByteArray::fromHex(bytes));
        row(name,
            shown({n.bssid, n.frequency, n.signalLevel, n.flags, n.ssid, n.password, n.identity}) +
                (n.reservedFlag ? "!" : ""),
            expected);
    };
    network("whole", letters("abcdefg") + "01", "a|b|c|d|e|f|g!");
    network("bytes behind it", letters("abcdefg") + "00ff", "a|b|c|d|e|f|g");
    network("nothing", "", "||||||");
    network("ends after a text", letters("abcde"), "a|b|c|d|e||");
    network("ends within a text", "0000000800610062", "-||||||");
    network("odd length", "00000003" + letters("bcdefg"), "-|b|c|d|e|f|g");
    network("null and empty", "ffffffff00000000" + letters("cdefg") + "01", "-||c|d|e|f|g!");
}

QTEST_APPLESS_MAIN(ValuesTest)
#include "tst_values.moc"
