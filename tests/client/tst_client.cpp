// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

// The library as a program sees it. It is run by test_client.py, which does what stands behind
// "> " in what this prints.

#include <bxwifi/wificlient.h>

#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include <iostream>
#include <utility>

using namespace BxWifi;
using namespace std::chrono_literals;

/// For what other processes do, however busy the machine is, and what comes of itself in a minute.
#define EVENTUALLY(condition) QTRY_VERIFY_WITH_TIMEOUT(condition, 70000)

namespace
{
const QString secret = "thirteen byte";
const QString wrong = "wrong horse";
const QString refused = "wrong passphrase or key; ";
const JoinSettings other{"Other", Security::Wpa, wrong, "", false};

/// Has something done around the daemon.
void around(const char *what)
{
    std::cout << "> " << what << std::endl;
    std::string done;
    std::getline(std::cin, done);
}

/// How a request ends: empty for success.
QString outcome(WifiReply *reply)
{
    QString text;
    QSignalSpy finished(reply, &WifiReply::finished);
    QObject::connect(reply, &WifiReply::finished, &finished, [&] { text = reply->errorText(); });
    return finished.wait(60000) ? text : "no end";
}
} // namespace

class ClientTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { around("home()"); }
    void textsOfQrCodes();
    void impossibleSettings();
    void goesBackWithWhatItJoined();
    void givesUpAndGivesWay();
    void forgetsALostConnection();
    void asksNothingDuringARequest();
    void handlersDoAnything();
    void findsANewBus();
};

void ClientTest::textsOfQrCodes()
{
    const std::pair<const char *, const char *> cases[] = {
        {"WIFI:T:WPA;S:Lab;P:correct horse;;", "WIFI:T:WPA;S:Lab;P:correct horse;;"},
        {"wifi:;P:12345678;Z:x;H:True;S:Lab;T:sae\n", "WIFI:T:SAE;S:Lab;P:12345678;H:true;;"},
        {"WIFI:S:Lab;P:left over;;", "WIFI:T:nopass;S:Lab;;"},
        {R"(WIFI:T:WEP;S:\"Say\"\; a\,b\:c\\;P:"ab\"cd";;)",
         R"(WIFI:T:WEP;S:\"Say\"\; a\,b\:c\\;P:ab\"cd;;)"},
        {R"(WIFI:T:WEP;S:"a\";P:6162636465;;)", R"(WIFI:T:WEP;S:\"a\";P:abcde;;)"},
        {"WIFI:T:nopass;S:4772c3bcc39f65;;", "WIFI:T:nopass;S:Gr\u00fc\u00dfe;;"},
        {"WIFI:S:\"4c6162\";;", "WIFI:T:nopass;S:\"4c6162\";;"},
        {"WIFI:S:CAFE;;", "WIFI:T:nopass;S:\"CAFE\";;"},
        {"WIFI:T:WPA2-EAP;S:Lab;E:PEAP;PH2:GTC;A:anyone;I:ada;P:lovelace;;",
         "WIFI:T:WPA2-EAP;S:Lab;E:PEAP;PH2:MSCHAPV2;I:ada;P:lovelace;;"},
    };
    for (const auto &[uri, plain] : cases) {
        for (const char *text : {uri, plain}) {
            QString problem;
            const JoinSettings read = JoinSettings::fromUri(QString::fromUtf8(text), &problem);
            QCOMPARE(problem + read.problem() + read.toUri(), QString::fromUtf8(plain));
        }
    }
}

/// Those that a command line or a network in sight does not lead to.
void ClientTest::impossibleSettings()
{
    const std::pair<JoinSettings, QString> cases[] = {
        {{"Lab", Security::Wpa, QString(63, 'a'), "", false, 24h}, ""},
        {{"Lab", Security::Enterprise, "lovelace", "", false}, "identity"},
        {{"Lab", Security::Enterprise, "", "ada", false}, "password"},
        {{"Lab", Security::Automatic, "abcdefgh", "", true}, "hidden"},
        {{QString(QChar::Null), Security::Open, "", "", false}, "name"},
        {{"Lab", Security::Open, "", "", false, 0s}, "one day"},
        {{"Lab", Security::Open, "", "", false, 86401s}, "one day"},
    };
    for (const auto &[settings, word] : cases)
        QVERIFY(word.isEmpty() ? settings.problem().isEmpty() : settings.problem().contains(word));
}

/// What takes its secret each time, and what was stored under the same name.
void ClientTest::goesBackWithWhatItJoined()
{
    WifiClient client;
    for (const JoinSettings &home : {JoinSettings{"Third", Security::Wpa3, secret, "", false},
                                     JoinSettings{"Home", Security::Wpa, secret, "", false}}) {
        QCOMPARE(outcome(client.connectTo(home)), "");
        QCOMPARE(client.ssid(), home.ssid);
        QCOMPARE(outcome(client.connectTo(other)), refused + "back in " + home.ssid);
    }
    QCOMPARE(outcome(client.connectTo("Home", wrong)), refused + "back in Home");
    around("assert radio.stored() == ['(Third)', 'Home']");
}

void ClientTest::givesUpAndGivesWay()
{
    around("del radio.table[1]"); // the other one
    WifiClient client;
    WifiReply *reply = client.scan();
    reply->abort();
    QCOMPARE(outcome(reply), "given up");

    reply = client.connectTo(other);
    EVENTUALLY(reply->stage() == WifiReply::Associating);
    auto *second = client.connectTo({"Nowhere", Security::Wpa, secret, "", false});
    QCOMPARE(outcome(reply), "another network was asked for meanwhile");
    EVENTUALLY(second->stage() == WifiReply::Associating);
    around("assert radio.stored() == ['(Home)', 'Nowhere']");
    QCOMPARE(outcome(client.connectTo("Elsewhere", secret)),
             "no such network in sight; back in Home");
    around("assert radio.stored() == ['Home']");

    // Twice: at once.
    reply = client.connectTo(other);
    EVENTUALLY(reply->stage() == WifiReply::Associating);
    around("radio.table = []");
    reply->abort();
    EVENTUALLY(reply->stage() == WifiReply::Returning);
    reply->abort();
    QCOMPARE(outcome(reply), "given up; the device is in no network now");
}

void ClientTest::forgetsALostConnection()
{
    WifiClient client;
    QCOMPARE(outcome(client.forget("Home")), "");
    around("radio.disconnect()");
    QCOMPARE(outcome(client.connectTo(other)), "wrong passphrase or key");
    QCOMPARE(client.state(), WifiClient::Disconnected);
    around("radio.send_event('<3>CTRL-EVENT-CONNECTED ')"); // to what has no name yet
    EVENTUALLY(client.state() == WifiClient::Connected);
    QCOMPARE(client.ssid(), QString());
}

/// Not even one that nobody answers.
void ClientTest::asksNothingDuringARequest()
{
    WifiClient client;
    EVENTUALLY(client.ssid() == "Home");
    around("radio.react = lambda _: None; bed.journal.take()");
    auto *scan = client.scan();
    client.setPollInterval(10ms);
    QCOMPARE(outcome(scan), "no scan results");
    around("assert bed.journal.entries().count('STATUS') < 9; del radio.react");
}

void ClientTest::handlersDoAnything()
{
    const QObject here;
    auto *client = new WifiClient;
    const QPointer<WifiReply> status = client->status();
    bool isSecondOver = false;
    connect(client->scan(), &WifiReply::finished, &here, [&] {
        delete status;
        const auto *second = client->scan();
        connect(second, &WifiReply::finished, &here, [&] { isSecondOver = true; });
    });
    EVENTUALLY(isSecondOver && !status);

    const QPointer<WifiReply> join = client->connectTo(other);
    connect(join, &WifiReply::stageChanged, &here, [&](WifiReply::Stage stage) {
        if (stage == WifiReply::Associating)
            delete join;
    });
    EVENTUALLY(!join);
    // Nobody is there to follow this one's end.
    EVENTUALLY(client->state() == WifiClient::Disconnected);

    around("radio.silence.acquire()");
    QString text;
    connect(client->scan(), &WifiReply::finished, &here, [&] {
        const auto *next = client->scan();
        connect(next, &WifiReply::finished, &here, [&text, next] { text = next->errorText(); });
    });
    around("bed.daemon.process.kill(); bed.daemon.process.wait(); bed.daemon.process = None");
    EVENTUALLY(text == "the daemon bxwifid is not running");
    QCOMPARE(client->state(), WifiClient::Unavailable);
    connect(client, &WifiClient::stateChanged, &here,
            [&] { delete std::exchange(client, nullptr); });
    around("radio.silence.release(); bed.start()");
    EVENTUALLY(!client);
}

void ClientTest::findsANewBus()
{
    WifiClient client;
    EVENTUALLY(client.ssid() == "Home");
    around("lose_bus()");
    EVENTUALLY(client.state() == WifiClient::Unavailable);
    QCOMPARE(WifiClient().state(), WifiClient::Unavailable);
    QCOMPARE(outcome(client.status()), "cannot reach the system bus");
    around("open_road()");
    EVENTUALLY(outcome(client.status()).isEmpty());
    EVENTUALLY(client.ssid() == "Home");
}

QTEST_GUILESS_MAIN(ClientTest)
#include "tst_client.moc"
