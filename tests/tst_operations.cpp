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
    void cleanupTestCase() { QCOMPARE(bed.daemon.stop(), 0); }
    void join();
    void joinByHand();
    void wireless();
    void wired();
    void interface();

private:
    void check(const QString &method, const QVariantList &arguments,
               const QByteArrayList &expected);

    TestBed bed;
};

namespace
{
QByteArray network(const QString &flags, const QString &ssid, const QString &password,
                   const QString &identity = QString())
{
    return payloadOf(BXNetwork{"b", "f", "s", flags, ssid, password, identity, true});
}

QByteArray quoted(const QByteArray &text)
{
    return '"' + text + '"';
}

QByteArray set(const QByteArray &id, const QByteArray &parameter, const QByteArray &value)
{
    return "SET_NETWORK " + id + ' ' + parameter + ' ' + value;
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
            members << xml.name() + ' ' + name + ' ' + xml.attributes().value("type");
    }
    return members;
}
} // namespace

void OperationsTest::initTestCase()
{
    bed.supplicant.answer("ADD_NETWORK", {"7\n"});
    bed.supplicant.answer("LIST_NETWORKS", {"network id / ssid / bssid / flags\n"
                                            "0\tHome\tany\t\n1\tHome\tany\t\n2\tCafe %1\tany\t\n"});
    bed.supplicant.answer("STATUS", {"bssid=02:00:00:00:00:01\nssid=Home\nwpa_state=COMPLETED\n"
                                     "ip_address=10.0.0.2\n"});
    bed.tools.setOutput("wpa_passphrase", "\t#psk=\"x\"\n\tpsk=c0de\n");
    bed.tools.setScript("fw_printenv", "case $1 in\n"
                                       "ipaddr) echo ipaddr=10.0.0.2 ;;\n"
                                       "ethaddr) echo ethaddr=02:00:00:00:00:02 ;;\n"
                                       "dynamicip) echo dynamicip=0 ;;\n"
                                       "esac\n");
    bed.tools.setOutput("ifconfig", " inet addr:10.0.0.3  Mask:255.0.0.0\n");
    bed.tools.remove("route");
    // Time for a signal to arrive, on a busy machine, before what happens next is written down.
    bed.supplicant.pace = std::chrono::milliseconds(100);
    bed.daemon.environment.insert("PACE", "0.1");
    bed.start();
}

void OperationsTest::check(const QString &method, const QVariantList &arguments,
                           const QByteArrayList &expected)
{
    const QDBusMessage reply = bed.bus.call(method, arguments);
    QCOMPARE(reply.type(), QDBusMessage::ReplyMessage);
    QCOMPARE(reply.arguments(), QVariantList());
    QCOMPARE(bed.journal.take(), expected);
}

void OperationsTest::join()
{
    const auto checkJoin = [this](const QByteArray &payload, const QByteArrayList &found,
                                  const QByteArray &id, const QByteArray &keyMgmt,
                                  const QByteArray &psk) {
        check("connectRequest", {payload},
              QByteArrayList{"statusMessage(5)", "LIST_NETWORKS"} + found +
                  QByteArrayList{set(id, "key_mgmt", keyMgmt), set(id, "psk", psk),
                                 "SELECT_NETWORK " + id, "SAVE_CONFIG", "sync", "RECONFIGURE"});
    };
    const auto added = [](const QByteArray &ssid) {
        return QByteArrayList{"ADD_NETWORK", set("7\n", "ssid", quoted(ssid))};
    };
    const QByteArray p59(59, 'p');
    checkJoin(network("[WPA2-PSK-CCMP][ESS]", "Home", "secret 1"), {"wpa_passphrase|Home|secret 1"},
              "0", "NULL", "c0de");
    checkJoin(network("[wpa2-psk-ccmp]", "home", ""),
              added("home") + QByteArrayList{"wpa_passphrase|home|"}, "7\n", "NULL", "c0de");
    checkJoin(network("[WEP][ESS]", R"(a"%2\)", "abcde"), added(R"(a"%2\)"), "7\n", "NONE", "NULL");
    checkJoin(network("WPA", "Cafe %1", 'p' + p59), {"wpa_passphrase|Cafe %1|p" + p59}, "2", "NULL",
              "c0de");
    checkJoin(network("[WPA2-EAP-CCMP]", "Home", "%1" + p59), {}, "0", "NULL", "%1" + p59);
    checkJoin({}, added(""), "7\n", "NONE", "NULL");
}

void OperationsTest::joinByHand()
{
    const auto checkJoin = [this](const QByteArray &payload, const QByteArray &ssid,
                                  const QByteArray &keyMgmt, const QByteArrayList &rest) {
        check("connectRequestHidden", {payload},
              QByteArrayList{"DISCONNECT", "ADD_NETWORK", set("7\n", "ssid", quoted(ssid)),
                             set("7\n", "scan_ssid", "1"), set("7\n", "key_mgmt", keyMgmt),
                             set("7\n", "pairwise", "CCMP"), set("7\n", "group", "CCMP")} +
                  rest);
    };
    const auto withKey = [](const QByteArray &parameter, const QByteArray &value) {
        return QByteArrayList{set("7\n", parameter, quoted(value)),
                              "ENABLE_NETWORK 7\n",
                              "SAVE_CONFIG",
                              "SELECT_NETWORK 7\n",
                              "sync",
                              "RECONFIGURE"};
    };
    const auto withLogin = [](const QByteArray &identity, const QByteArray &password) {
        return QByteArrayList{set("7\n", "eap", "PEAP"),
                              set("7\n", "identity", quoted(identity)),
                              set("7\n", "password", quoted(password)),
                              "ENABLE_NETWORK 7\n",
                              "SELECT_NETWORK 7\n",
                              "sync"};
    };
    bed.supplicant.pace = std::chrono::milliseconds(0); // long, and no signals to wait for
    checkJoin(network("WPA-PSK", "Home", R"(a "%1%4" z)"), "Home", "WPA-PSK",
              withKey("psk", R"(a "%1%4" z)"));
    checkJoin(network("WEP", "Old", "abcde"), "Old", "NONE", withKey("wep_key0", "abcde"));
    checkJoin(network("wep", "Old", "abcde"), "Old", "wep", withKey("psk", "abcde"));
    checkJoin(network("WPA-EAP", "Work", "lovelace", "ada %3"), "Work", "WPA-EAP",
              withLogin("ada %3", "lovelace"));
    checkJoin(network("WEP EAP", "Work", "p", "i"), "Work", "NONE", withLogin("i", "p"));
    bed.supplicant.pace = std::chrono::milliseconds(100);
}

void OperationsTest::wireless()
{
    check("removeRequest", {"Home"},
          {"LIST_NETWORKS", "REMOVE_NETWORK 0", "SAVE_CONFIG", "RECONFIGURE", "sync",
           "statusMessage(8)"});
    check("removeRequest", {"HOME"}, {"LIST_NETWORKS"});
    check("disableRequest", {},
          {"statusMessage(1)", "DISCONNECT", "SAVE_CONFIG", "sync", "STATUS", "ssidResult(Home)",
           "STATUS", "ipResult(10.0.0.2)"});
    check("enableRequest", {}, {});
    check("scanRequest", {}, {"statusMessage(2)", "SCAN"});
    check("statusRequest", {}, {"STATUS", "statusMessage(0)"});
    check("ssidRequest", {}, {"STATUS", "ssidResult(Home)"});
    check("ipRequest", {}, {"STATUS", "ipResult(10.0.0.2)"});
    BXNetworkConnected status;
    status.bssid = "02:00:00:00:00:01";
    status.ssid = "Home";
    status.wpaState = "COMPLETED";
    status.ipAddress = "10.0.0.2";
    check("fullStatusRequest", {}, {"STATUS", busSignal("fullStatusResult", payloadOf(status))});
}

void OperationsTest::wired()
{
    const BXStatic stored{"10.0.0.2\n", "", "", QString(), "02:00:00:00:00:02\n"};
    check("staticRequest", {},
          {"fw_printenv|ipaddr", "fw_printenv|gatewayip", "fw_printenv|netmask",
           "fw_printenv|ethaddr", busSignal("staticResult", payloadOf(stored))});
    const BXStatic live{"10.0.0.3", QString(), "255.0.0.0", QString(), "02:00:00:00:00:02\n"};
    check("dynamicRequest", {},
          {"fw_printenv|dynamicip", "ifconfig|eth0", "fw_printenv|ethaddr",
           busSignal("staticResult", payloadOf(live)), "dynamicResult(true)"});
    check("setStaticRequest",
          {payloadOf(BXStatic{" 10.0.0.2\n", "a \t b", "c\n d", "reserved", "mac"})},
          {"fw_setenv|ipaddr|10.0.0.2", "fw_setenv|gatewayip|a b", "fw_setenv|netmask|c d"});
    check("setStaticRequest", {QByteArray()},
          {"fw_setenv|ipaddr|", "fw_setenv|gatewayip|", "fw_setenv|netmask|"});
    check("setDynamic", {true}, {"fw_setenv|dynamicip|1"});
    check("setDynamic", {false}, {"fw_setenv|dynamicip"});
}

void OperationsTest::interface()
{
    const QDBusMessage introspect = QDBusMessage::createMethodCall(
        "com.brelvix.bxwifid", "/", "org.freedesktop.DBus.Introspectable", "Introspect");
    const QString actual = bed.bus.client.call(introspect).arguments().value(0).toString();
    QFile shipped(INTERFACE);
    QVERIFY(shipped.open(QIODevice::ReadOnly));
    const QStringList expected = membersOf(shipped.readAll());
    QVERIFY(expected.size() > 20);
    QCOMPARE(membersOf(actual), expected);
}

QTEST_GUILESS_MAIN(OperationsTest)
#include "tst_operations.moc"
