// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "harness/testbed.h"
#include "records/bxnetwork.h"
#include "records/bxnetworkconnected.h"
#include "records/bxstatic.h"
#include "records/payload.h"

#include <QTest>
#include <QXmlStreamReader>

/// What each bus method leads to: commands to the byte, tool runs and signals in their true order.
class OperationsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void methods_data();
    void methods();
    void interface();

private:
    std::unique_ptr<TestBed> bed;
};

namespace
{
// Time for a signal to arrive, on a busy machine, before what happens next is written down.
constexpr std::chrono::milliseconds pace{100};

QByteArray network(const QString &flags, const QString &ssid, const QString &password,
                   const QString &identity = QString())
{
    return payloadOf(BXNetwork{"b", "f", "s", flags, ssid, password, identity, true});
}

/// What joins network "7\n" by hand, up to its credentials.
QByteArrayList addedByHand(const QByteArray &ssid, const QByteArray &keyMgmt)
{
    return {"DISCONNECT",
            "ADD_NETWORK",
            "SET_NETWORK 7\n ssid \"" + ssid + '"',
            "SET_NETWORK 7\n scan_ssid 1",
            "SET_NETWORK 7\n key_mgmt " + keyMgmt,
            "SET_NETWORK 7\n pairwise CCMP",
            "SET_NETWORK 7\n group CCMP"};
}

const QByteArrayList saved = {"ENABLE_NETWORK 7\n", "SAVE_CONFIG", "SELECT_NETWORK 7\n", "sync",
                              "RECONFIGURE"};
const QByteArrayList notSaved = {"ENABLE_NETWORK 7\n", "SELECT_NETWORK 7\n", "sync"};

QByteArrayList enterprise(const QByteArray &identity, const QByteArray &password)
{
    return {"SET_NETWORK 7\n eap PEAP", "SET_NETWORK 7\n identity \"" + identity + '"',
            "SET_NETWORK 7\n password \"" + password + '"'};
}

/// What joins a network by name, after the list was read.
QByteArrayList joined(const QByteArray &id, const QByteArray &keyMgmt, const QByteArray &psk)
{
    return {"SET_NETWORK " + id + " key_mgmt " + keyMgmt,
            "SET_NETWORK " + id + " psk " + psk,
            "SELECT_NETWORK " + id,
            "SAVE_CONFIG",
            "sync",
            "RECONFIGURE"};
}
/// The members of the daemon's interface and their arguments, by name and type.
QStringList membersOf(const QString &introspection)
{
    QStringList members;
    bool isOurs = false;
    QXmlStreamReader xml(introspection);
    while (!xml.atEnd()) {
        xml.readNextStartElement();
        const QString name = xml.attributes().value("name").toString();
        if (xml.name() == "interface")
            isOurs = name == "com.brelvix.bxwifid" || (isOurs && xml.isEndElement());
        else if (isOurs && xml.isStartElement())
            members << xml.name() + ' ' + name + xml.attributes().value("type");
    }
    return members;
}
} // namespace

void OperationsTest::initTestCase()
{
    bed = std::make_unique<TestBed>();
    bed->supplicant.answer("ADD_NETWORK", {"7\n"});
    bed->supplicant.answer("LIST_NETWORKS",
                           {"network id / ssid / bssid / flags\n"
                            "0\tHome\tany\t\n1\tHome\tany\t\n2\tCafe %1\tany\t\n"});
    bed->supplicant.answer("STATUS", {"bssid=02:00:00:00:00:01\nssid=Home\nwpa_state=COMPLETED\n"
                                      "ip_address=10.0.0.2\n"});
    bed->tools.setOutput("wpa_passphrase", "\t#psk=\"x\"\n\tpsk=c0de\n");
    bed->tools.setScript("fw_printenv", "case $1 in\n"
                                        "ipaddr) echo ipaddr=10.0.0.2 ;;\n"
                                        "ethaddr) echo ethaddr=02:00:00:00:00:02 ;;\n"
                                        "dynamicip) echo dynamicip=0 ;;\n"
                                        "esac\n");
    bed->tools.setOutput("ifconfig", " inet addr:10.0.0.3  Mask:255.0.0.0\n");
    bed->tools.remove("route");
    bed->daemon.environment.insert("PACE", "0.1"); // as below
    bed->start();
}

void OperationsTest::cleanupTestCase()
{
    QCOMPARE(bed->daemon.stop(), 0);
}

void OperationsTest::methods_data()
{
    QTest::addColumn<QString>("method");
    QTest::addColumn<QVariantList>("arguments");
    QTest::addColumn<QByteArrayList>("expected");

    const auto row = [](const char *name, const char *method, const QVariant &argument,
                        const QByteArrayList &expected) {
        const QVariantList arguments = argument.isValid() ? QVariantList{argument} : QVariantList{};
        QTest::newRow(name) << method << arguments << expected;
    };
    const QVariant none;

    const auto connect = [&](const char *name, const QByteArray &payload,
                             const QByteArrayList &expected) {
        row(name, "connectRequest", payload,
            QByteArrayList{"statusMessage(5)", "LIST_NETWORKS"} + expected);
    };
    const auto added = [](const QByteArray &ssid) {
        return QByteArrayList{"ADD_NETWORK", "SET_NETWORK 7\n ssid \"" + ssid + '"'};
    };
    const auto hash = [](const QByteArray &ssid, const QByteArray &passphrase) {
        return QByteArrayList{"wpa_passphrase|" + ssid + '|' + passphrase};
    };
    connect("join stored", network("[WPA2-PSK-CCMP][ESS]", "Home", "secret 1"),
            hash("Home", "secret 1") + joined("0", "NULL", "c0de"));
    connect("join new", network("[wpa2-psk-ccmp]", "home", ""),
            added("home") + hash("home", "") + joined("7\n", "NULL", "c0de"));
    connect("join open", network("[WEP][ESS]", "a\"%2\\", "abcde"),
            added("a\"%2\\") + joined("7\n", "NONE", "NULL"));
    connect("join with 60 characters", network("WPA", "Cafe %1", QString(60, 'p')),
            hash("Cafe %1", QByteArray(60, 'p')) + joined("2", "NULL", "c0de"));
    connect("join with 61 characters", network("[WPA2-EAP-CCMP]", "Home", "%1" + QString(59, 'p')),
            joined("0", "NULL", "%1" + QByteArray(59, 'p')));
    connect("join nothing", QByteArray(), added("") + joined("7\n", "NONE", "NULL"));

    const auto byHand = [&](const char *name, const QByteArray &payload,
                            const QByteArrayList &expected) {
        row(name, "connectRequestHidden", payload, expected);
    };
    const auto psk = [](const QByteArray &parameter, const QByteArray &value) {
        return QByteArrayList{"SET_NETWORK 7\n " + parameter + " \"" + value + '"'} + saved;
    };
    byHand("hidden", network("WPA-PSK", "Home", "a \"%1%4\" z"),
           addedByHand("Home", "WPA-PSK") + psk("psk", "a \"%1%4\" z"));
    byHand("wep", network("WEP", "Old", "abcde"),
           addedByHand("Old", "NONE") + psk("wep_key0", "abcde"));
    byHand("wep in small letters", network("wep", "Old", "abcde"),
           addedByHand("Old", "wep") + psk("psk", "abcde"));
    byHand("enterprise", network("WPA-EAP", "Work", "lovelace", "ada %3"),
           addedByHand("Work", "WPA-EAP") + enterprise("ada %3", "lovelace") + notSaved);
    byHand("enterprise and wep", network("WEP EAP", "Work", "p", "i"),
           addedByHand("Work", "NONE") + enterprise("i", "p") + notSaved);
    byHand("nothing by hand", QByteArray(), addedByHand("", "") + psk("psk", ""));

    row("remove", "removeRequest", "Home",
        {"LIST_NETWORKS", "REMOVE_NETWORK 0", "SAVE_CONFIG", "RECONFIGURE", "sync",
         "statusMessage(8)"});
    row("remove unknown", "removeRequest", "HOME", {"LIST_NETWORKS"});
    row("disable", "disableRequest", none,
        {"statusMessage(1)", "DISCONNECT", "SAVE_CONFIG", "sync", "STATUS", "ssidResult(Home)",
         "STATUS", "ipResult(10.0.0.2)"});
    row("enable", "enableRequest", none, {});
    row("scan", "scanRequest", none, {"statusMessage(2)", "SCAN"});

    BXNetworkConnected status;
    status.bssid = "02:00:00:00:00:01";
    status.ssid = "Home";
    status.wpaState = "COMPLETED";
    status.ipAddress = "10.0.0.2";
    row("status", "statusRequest", none, {"STATUS", "statusMessage(0)"});
    row("ssid", "ssidRequest", none, {"STATUS", "ssidResult(Home)"});
    row("ip", "ipRequest", none, {"STATUS", "ipResult(10.0.0.2)"});
    row("full status", "fullStatusRequest", none,
        {"STATUS", busSignal("fullStatusResult", payloadOf(status))});

    const auto printed = [](const QByteArray &name) {
        return QByteArray("fw_printenv|" + name);
    };
    const BXStatic stored{"10.0.0.2\n", "", "", QString(), "02:00:00:00:00:02\n"};
    row("static", "staticRequest", none,
        {printed("ipaddr"), printed("gatewayip"), printed("netmask"), printed("ethaddr"),
         busSignal("staticResult", payloadOf(stored))});
    const BXStatic live{"10.0.0.3", QString(), "255.0.0.0", QString(), "02:00:00:00:00:02\n"};
    row("dynamic", "dynamicRequest", none,
        {printed("dynamicip"), "ifconfig|eth0", printed("ethaddr"),
         busSignal("staticResult", payloadOf(live)), "dynamicResult(true)"});
    const auto set = [](const QByteArray &name, const QByteArray &value) {
        return QByteArray("fw_setenv|" + name + '|' + value);
    };
    row("set static", "setStaticRequest",
        payloadOf(BXStatic{" 10.0.0.2\n", "a \t b", "c\n d", "reserved", "mac"}),
        {set("ipaddr", "10.0.0.2"), set("gatewayip", "a b"), set("netmask", "c d")});
    row("set static from nothing", "setStaticRequest", QByteArray(),
        {set("ipaddr", ""), set("gatewayip", ""), set("netmask", "")});
    row("set dynamic", "setDynamic", true, {set("dynamicip", "1")});
    row("clear dynamic", "setDynamic", false, {"fw_setenv|dynamicip"});
}

void OperationsTest::methods()
{
    QFETCH(QString, method);
    QFETCH(QVariantList, arguments);
    // Joining by hand is long and has no signals whose place would matter.
    bed->supplicant.pace = method == "connectRequestHidden" ? std::chrono::milliseconds{0} : pace;
    const QDBusMessage reply = bed->bus.call(method, arguments);
    QCOMPARE(reply.type(), QDBusMessage::ReplyMessage);
    QCOMPARE(reply.arguments(), QVariantList());
    QFETCH(QByteArrayList, expected);
    QCOMPARE(bed->journal.take(), expected);
}

void OperationsTest::interface()
{
    const QDBusMessage introspect = QDBusMessage::createMethodCall(
        "com.brelvix.bxwifid", "/", "org.freedesktop.DBus.Introspectable", "Introspect");
    const QString actual = bed->bus.client.call(introspect).arguments().value(0).toString();
    QFile shipped(INTERFACE);
    QVERIFY(shipped.open(QIODevice::ReadOnly));
    const QStringList expected = membersOf(shipped.readAll());
    QVERIFY(expected.size() > 20);
    QCOMPARE(membersOf(actual), expected);
}

QTEST_GUILESS_MAIN(OperationsTest)
#include "tst_operations.moc"
