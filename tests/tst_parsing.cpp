// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "control/event.h"
#include "control/passphrase.h"
#include "daemon/supplicantreply.h"
#include "daemon/tooloutput.h"

#include <QTest>

Q_DECLARE_METATYPE(Event)

/// Everything that turns a text from outside into a value.
class ParsingTest : public QObject
{
    Q_OBJECT

private slots:
    void events_data();
    void events();
    void scanTables_data();
    void scanTables();
    void networkIds_data();
    void networkIds();
    void status_data();
    void status();
    void fullStatusReply();
    void tools_data();
    void tools();
};

namespace
{
QString shown(const QStringList &fields)
{
    QStringList texts;
    for (const QString &text : fields)
        texts << (text.isNull() ? "-" : text);
    return texts.join('|');
}
} // namespace

void ParsingTest::events_data()
{
    QTest::addColumn<QString>("message");
    QTest::addColumn<Event>("event");

    const auto row = [](const char *message, Event event) {
        QTest::newRow(message) << QString(message) << event;
    };
    row("<3>CTRL-REQ-PASSWORD-1:CTRL-EVENT-CONNECTED ", Event::Request);
    row("<3>CTRL-EVENT-SCAN-RESULTS ", Event::ScanResults);
    row("<3>CTRL-EVENT-SCAN-RESULTS", Event::Other);
    row("<3>ctrl-event-scan-results ", Event::Other);
    row("CTRL-EVENT-DISCONNECTED bssid=02:00:00:00:00:01 reason=3", Event::Disconnected);
    row("<3>CTRL-EVENT-CONNECTED - Connection to 02:00:00:00:00:01 completed", Event::Connected);
    row("<3>CTRL-EVENT-BSS-ADDED 0 02:00:00:00:00:01", Event::BssAdded);
    row("<3>CTRL-EVENT-BSS-REMOVED 0 02:00:00:00:00:01", Event::BssRemoved);
    row("<3>Trying to associate with SSID 'Associated '", Event::Associating);
    row("<3>Associated with 02:00:00:00:00:01", Event::Associated);
    row("<3>CTRL-EVENT-TERMINATING ", Event::Terminating);
    row("<3>CTRL-EVENT-SSID-TEMP-DISABLED id=0", Event::TemporarilyDisabled);
    row("<3>CTRL-EVENT-SCAN-STARTED ", Event::Other);
}

void ParsingTest::events()
{
    QFETCH(QString, message);
    QTEST(eventOf(message), "event");
}

void ParsingTest::scanTables_data()
{
    QTest::addColumn<QString>("reply");
    QTest::addColumn<QStringList>("networks");

    QTest::newRow("no reply") << QString() << QStringList();
    QTest::newRow("header") << "bssid / frequency / signal level / flags / ssid\n" << QStringList();
    QTest::newRow("first line is never a network")
        << "a\t1\t-1\t\tx\nb\t2\t-2\t[ESS]\t y z \nc\t3\t-3\t\t\n"
        << QStringList{"b|2|-2|[ESS]| y z |-|-", "c|3|-3|||-|-"};
    QTest::newRow("other shapes")
        << "\na\t1\t-1\t[ESS]\na\t1\t-1\t[ESS]\tx\ty\n\na\t1\t-1\t[ESS]\tcu"
        << QStringList{"a|1|-1|[ESS]|cu|-|-"};
}

void ParsingTest::scanTables()
{
    QFETCH(QString, reply);
    QStringList networks;
    for (const BXNetwork &n : scanTable(reply))
        networks << shown(
            {n.bssid, n.frequency, n.signalLevel, n.flags, n.ssid, n.password, n.identity});
    QTEST(networks, "networks");
}

void ParsingTest::networkIds_data()
{
    QTest::addColumn<QString>("ssid");
    QTest::addColumn<QString>("id");

    QTest::newRow("header is not a network") << "ssid"
                                             << "none";
    QTest::newRow("first of two") << "Twice"
                                  << "3";
    QTest::newRow("case differs") << "twice"
                                  << "none";
    QTest::newRow("empty flags") << "No flags"
                                 << "5";
    QTest::newRow("three columns") << "Short"
                                   << "none";
    QTest::newRow("five columns") << "Long"
                                  << "none";
    QTest::newRow("id is text") << "Text"
                                << "x y";
}

void ParsingTest::networkIds()
{
    QFETCH(QString, ssid);
    const QString reply = "network id\tssid\tbssid\tflags\n"
                          "3\tTwice\tany\t[CURRENT]\n4\tTwice\tany\t\n5\tNo flags\tany\t\n"
                          "6\tShort\tany\n7\tLong\tany\t\t\nx y\tText\tany\t\n";
    QTEST(networkIdOf(reply, ssid).value_or("none"), "id");
    QVERIFY(!networkIdOf(QString(), ssid));
}

void ParsingTest::status_data()
{
    QTest::addColumn<QString>("reply");
    QTest::addColumn<bool>("completed");
    QTest::addColumn<QString>("ssid");
    QTest::addColumn<QString>("address");

    QTest::newRow("none") << "" << false << ""
                          << "";
    QTest::newRow("joined") << "bssid=b\nssid=Home\nwpa_state=COMPLETED\nip_address=10.0.0.2\n"
                            << true << "Home"
                            << "10.0.0.2";
    QTest::newRow("small letters") << "wpa_state=xcompletedx" << true << ""
                                   << "";
    QTest::newRow("first state") << "wpa_state=SCANNING\nwpa_state=COMPLETED\n"
                                 << false << ""
                                 << "";
    QTest::newRow("state elsewhere") << "p2p_wpa_state=COMPLETED\n"
                                     << false << ""
                                     << "";
    QTest::newRow("no name") << "bssid=b\nip_address=10.0.0.2\n"
                             << false << ""
                             << "";
    QTest::newRow("empty name") << "ssid=\nip_address=10.0.0.2\n"
                                << false << ""
                                << "";
    QTest::newRow("no address") << "ssid=Home\n"
                                << false << "Home"
                                << "";
    QTest::newRow("key in the name")
        << "ssid=my ssid=net=1\nip_address=a\nip_address=b ip_address=c" << false << "my net=1"
        << "b c";
    QTest::newRow("name looks like an address") << "ssid=ip_address=x" << false << "ip_address=x"
                                                << "x";
    QTest::newRow("names") << "ssid=one\nssid=two\nssid=\nip_address=a" << false << "one"
                           << "a";
}

void ParsingTest::status()
{
    QFETCH(QString, reply);
    QTEST(isAssociationCompleted(reply), "completed");
    QTEST(currentSsid(reply), "ssid");
    QTEST(currentAddress(reply), "address");
}

void ParsingTest::fullStatusReply()
{
    const BXNetworkConnected s = fullStatus(
        "mode=station\nfreq=\nbssid=old\nbssid=b\nssid=a=b\nssid_verified=1\ngroup_cipher=TKIP\n"
        "pairwise_cipher=CCMP\ngroup_mgmt=BIP\nkey_mgmt=WPA2-PSK\nwpa_state=COMPLETED\n=x\n");
    QCOMPARE(shown({s.bssid, s.frequency, s.ssid, s.mode, s.pairwiseCipher, s.groupCipher,
                    s.keyMgmt, s.wpaState, s.ipAddress}),
             QString("b||a|station|CCMP|BIP|WPA2-PSK|COMPLETED|-"));
}

void ParsingTest::tools_data()
{
    QTest::addColumn<QString>("actual");
    QTest::addColumn<QString>("expected");

    const auto boot = [](const char *name, const char *output, const char *value) {
        QTest::newRow(name) << shown({bootValueOf(output)}) << QString(value);
    };
    boot("line feed stays", "ipaddr=10.0.0.2\n", "10.0.0.2\n");
    boot("up to the next =", "ipaddr=a=b\n", "a");
    boot("not set", "", "");

    const auto address = [](const char *name, const char *output, const char *fields) {
        BXStatic a;
        readInterfaceAddress(output, a);
        QTest::newRow(name) << shown({a.ipAddress, a.netmask}) << QString(fields);
    };
    address("busybox",
            "eth0  Link encap:Ethernet  HWaddr 02:00:00:00:00:01 inet addr:9.9.9.9\n"
            "      inet addr:10.0.0.2  Bcast:10.0.0.255  Mask:255.255.255.0\n"
            "      inet6 addr: fe80::1/64 Scope:Link\n",
            "10.0.0.2|255.255.255.0");
    address("no mask", "\tinet addr:10.0.0.2\n", "10.0.0.2|-");
    address("last line counts", "inet addr:1.1.1.1 Mask:2.2.2.2\ninet addr:3.3.3.3\n",
            "3.3.3.3|2.2.2.2");
    address("another form", "inet 10.0.0.2  netmask 255.0.0.0 addr:1\n", "-|-");
    address("no address", "", "-|-");

    const auto gateway = [](const char *name, const char *output, const char *expected) {
        BXStatic a;
        readDefaultGateway(output, a);
        QTest::newRow(name) << shown({a.gateway}) << QString(expected);
    };
    gateway("default route",
            "0.0.0.0  10.0.0.9  0.0.0.0  UG  0 0 0 wlan0\n"
            "0.0.0.0  10.0.0.1  0.0.0.0  UG  0 0 0 eth0\n"
            "10.0.0.0 10.0.0.8  255.0.0.0 U  0 0 0 eth0\n",
            "10.0.0.1");
    gateway("last of two", "0.0.0.0\t1.1.1.1 eth0\n0.0.0.0\t2.2.2.2 eth0\n", "2.2.2.2");
    gateway("none", "Kernel IP routing table\n0.0.0.0 1.1.1.1 eth0 \n", "-");

    const auto psk = [](const char *name, const char *output, const char *expected) {
        QTest::newRow(name) << shown({printedPskOf(output)}) << QString(expected);
    };
    psk("after the comment", "network={\n\t#psk=\"secret\"\n\tpsk=0a1b\n}\n", "0a1b");
    psk("capitals", "PSK=0A1B=2c\n", "0A1B");
    psk("no key", "Passphrase must be 8..63 characters\n", "-");
}

void ParsingTest::tools()
{
    QFETCH(QString, actual);
    QTEST(actual, "expected");
}

QTEST_APPLESS_MAIN(ParsingTest)
#include "tst_parsing.moc"
