// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

// The library as a program sees it. It is run by test_client.py, which does what stands behind
// "> " in what this prints.

#include <bxwifi/wificlient.h>

#include <QAbstractItemModelTester>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include <iostream>
#include <utility>

using namespace BxWifi;
using namespace std::chrono_literals;

/// For what other processes do, however busy the machine is.
#define EVENTUALLY(condition) QTRY_VERIFY_WITH_TIMEOUT(condition, 40000)

namespace
{
const QString secret = "correct horse battery";
const QString wrong = "wrong horse battery";

/// Has something done around the daemon.
void around(const char *what)
{
    std::cout << "> " << what << std::endl;
    std::string done;
    std::getline(std::cin, done);
}

/// How a request ended; it may be gone by then.
struct End {
    explicit End(WifiReply *pending) : reply(pending)
    {
        QObject::connect(reply, &WifiReply::stageChanged, reply,
                         [this](WifiReply::Stage stage) { stages << stage; });
        QObject::connect(reply, &WifiReply::finished, reply, [this] {
            error = reply->error();
            text = reply->errorText();
            isThere = true;
        });
    }
    Q_DISABLE_COPY_MOVE(End)

    QPointer<WifiReply> reply;
    bool isThere = false;
    WifiReply::Error error{};
    QString text;
    QVector<WifiReply::Stage> stages;
};
} // namespace

Q_DECLARE_METATYPE(BxWifi::JoinSettings)

class ClientTest : public QObject
{
    Q_OBJECT

private slots:
    void findsALateBus();
    void init() { around("home()"); }
    void goesBack_data();
    void goesBack();
    void goesBackWithWhatItJoined();
    void givesUpAndGivesWay();
    void tellsOfALostConnection();
    void modelFollowsScans();
    void handlersDoAnything();
};

void ClientTest::findsALateBus()
{
    WifiClient client;
    const End early(client.status());
    EVENTUALLY(early.isThere);
    QCOMPARE(early.text, "cannot reach the system bus");
    around("bus()");
    const End late(client.status());
    EVENTUALLY(late.isThere);
    QCOMPARE(late.text, QString());
    QCOMPARE(int(client.state()), int(WifiClient::Connected));
}

void ClientTest::goesBack_data()
{
    QTest::addColumn<JoinSettings>("settings");
    QTest::addColumn<QString>("around");
    QTest::addColumn<int>("error");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("state");
    QTest::addColumn<QString>("stored");
    const auto row = [](const char *name, const JoinSettings &settings, const char *what,
                        WifiReply::Error error, const QString &text, WifiClient::State state,
                        const char *stored) {
        QTest::newRow(name) << settings << QString(what) << int(error) << text << int(state)
                            << QString("assert radio.stored() == %1").arg(stored);
    };
    const auto joined = WifiClient::Connected;
    row("no login", {"Other", Security::Enterprise, secret, "ada", true, 2s}, "",
        WifiReply::TimedOut, "not joined within 2 s; back in Home", joined, "['Home']");
    row("without address", {"Third", Security::Wpa3, secret, "", false},
        "radio.has_addresses = False", WifiReply::NoAddress,
        "joined, but no address came; back in Home", joined, "['Home', '(Third)']");
    row("same, refused", {"Home", Security::Wpa, wrong, "", false}, "radio.has_addresses = True",
        WifiReply::WrongKey,
        "wrong passphrase or key; its former key is lost; the device is in no network now",
        WifiClient::Disconnected, "[]");
    row("from nowhere", {"Other", Security::Wpa, wrong, "", false}, "radio.disconnect()",
        WifiReply::WrongKey, "wrong passphrase or key", WifiClient::Disconnected, "['(Home)']");
    row("nothing to return to", {"Other", Security::Wpa, wrong, "", false},
        "radio.store({'ssid': 'Third', 'key_mgmt': 'SAE', 'psk': SECRET}); radio.look(); "
        "assert comes_true(lambda: radio.state == 'COMPLETED')",
        WifiReply::WrongKey,
        "wrong passphrase or key; Third takes its secret each time; the device is in no network "
        "now",
        WifiClient::Disconnected, "['(Third)']");
    row("open", {"ssid=a=b", Security::Automatic, secret, "", false}, "", WifiReply::InvalidRequest,
        "an open network takes no passphrase", joined, "['Home']");
}

void ClientTest::goesBack()
{
    QFETCH(JoinSettings, settings);
    QFETCH(QString, around);
    WifiClient client;
    const End scan(client.scan());
    EVENTUALLY(scan.isThere);
    ::around(qPrintable(around));
    const End join(client.connectTo(settings));
    if (settings.problem().isEmpty() && settings.security == Security::Enterprise)
        EVENTUALLY(client.state() == WifiClient::Connecting);
    EVENTUALLY(join.isThere);
    QFETCH(QString, text);
    QCOMPARE(join.text, text);
    QTEST(int(join.error), "error");
    QTEST(int(client.state()), "state");
    QCOMPARE(join.stages.contains(WifiReply::Returning), text.contains("back in"));
    QFETCH(QString, stored);
    ::around(qPrintable(stored));
    EVENTUALLY(!join.reply);
}

/// What takes its secret each time, and what was stored under the same name.
void ClientTest::goesBackWithWhatItJoined()
{
    WifiClient client;
    for (const JoinSettings &home : {JoinSettings{"Third", Security::Wpa3, secret, "", false},
                                     JoinSettings{"ssid=a=b", Security::Open, "", "", false}}) {
        const End there(client.connectTo(home));
        EVENTUALLY(there.isThere);
        QCOMPARE(there.text, QString());
        QCOMPARE(client.ssid(), home.ssid);
        const End elsewhere(client.connectTo({"Other", Security::Wpa, wrong, "", false}));
        EVENTUALLY(elsewhere.isThere);
        QCOMPARE(client.ssid(), home.ssid);
    }
    const End again(client.connectTo({"Home", Security::Wpa, secret, "", false}));
    EVENTUALLY(again.isThere);
    const End mistyped(client.connectTo({"Home", Security::Wpa, wrong, "", false}));
    EVENTUALLY(mistyped.isThere);
    QCOMPARE(mistyped.text, "wrong passphrase or key; back in Home");
    around("assert radio.stored() == ['(Third)', '(ssid=a=b)', 'Home']");

    around("radio.store({'ssid': 'ssid=a=b', 'key_mgmt': 'NONE'}); radio.look(); "
           "assert comes_true(lambda: radio.state == 'COMPLETED')");
    WifiClient stranger; // has seen no network
    const End unseen(stranger.connectTo({"Other", Security::Wpa, wrong, "", false}));
    EVENTUALLY(unseen.isThere);
    QCOMPARE(unseen.text, "wrong passphrase or key; back in ssid=a=b");
}

void ClientTest::givesUpAndGivesWay()
{
    around("del radio.table[1]");
    WifiClient client;
    const End scan(client.scan());
    scan.reply->abort();
    EVENTUALLY(scan.isThere);
    QCOMPARE(int(scan.error), int(WifiReply::Aborted));

    const JoinSettings other{"Other", Security::Wpa, secret, "", false};
    const End first(client.connectTo(other));
    EVENTUALLY(first.stages.contains(WifiReply::Associating));
    const End second(client.connectTo({"Nowhere", Security::Wpa, secret, "", false}));
    EVENTUALLY(first.isThere && second.stages.contains(WifiReply::Associating));
    QCOMPARE(int(first.error), int(WifiReply::Superseded));
    around("assert radio.stored() == ['(Home)', 'Nowhere']");
    second.reply->abort();
    EVENTUALLY(second.isThere);
    QCOMPARE(int(second.error), int(WifiReply::Aborted));
    QCOMPARE(second.text, "given up; back in Home");
    around("assert radio.stored() == ['Home']");

    // Twice: at once.
    const End third(client.connectTo(other));
    EVENTUALLY(third.stages.contains(WifiReply::Associating));
    around("radio.table = []");
    third.reply->abort();
    EVENTUALLY(third.stages.contains(WifiReply::Returning));
    third.reply->abort();
    EVENTUALLY(third.isThere);
    QCOMPARE(third.text, "given up; the device is in no network now");
}

void ClientTest::tellsOfALostConnection()
{
    WifiClient client;
    QSignalSpy states(&client, &WifiClient::stateChanged);
    EVENTUALLY(client.ssid() == "Home" && client.address() == "10.20.2.15");
    client.setPollInterval(100ms);
    around("radio.disconnect()");
    EVENTUALLY(client.state() == WifiClient::Disconnected);
    QCOMPARE(client.ssid(), QString());
    around("radio.look()");
    EVENTUALLY(client.ssid() == "Home");
    QVERIFY(states.count() >= 3);

    const End forget(client.forget("Home"));
    EVENTUALLY(forget.isThere);
    around("radio.disconnect()");
    EVENTUALLY(client.state() == WifiClient::Disconnected);
    client.setPollInterval(0ms);
    around("radio.send_event('<3>CTRL-EVENT-CONNECTED ')"); // to what has no name yet
    EVENTUALLY(client.state() == WifiClient::Connected);
    QCOMPARE(client.ssid(), QString());

    around("radio.answer('SAVE_CONFIG', 'FAIL\\n'); home()");
    const End stuck(client.forget("Home"));
    EVENTUALLY(stuck.isThere);
    around("del radio.answers['SAVE_CONFIG']");
    QCOMPARE(int(stuck.error), int(WifiReply::Failed));
    QVERIFY2(stuck.text.contains("/prefs"), qPrintable(stuck.text));

    around("radio.send_event('<3>CTRL-EVENT-TERMINATING ')");
    EVENTUALLY(client.state() == WifiClient::Disconnected);
    const End cutOff[] = {End(client.forget("Home")), End(client.disconnectFromNetwork()),
                          End(client.wirelessAddress()), End(client.connectTo("Home", secret))};
    for (const End &end : cutOff) {
        EVENTUALLY(end.isThere);
        QCOMPARE(int(end.error), int(WifiReply::NoSupplicant));
    }
    const End relink(client.relink());
    EVENTUALLY(relink.isThere);
    QCOMPARE(relink.text, QString());
}

void ClientTest::handlersDoAnything()
{
    const QObject here;
    auto *client = new WifiClient;
    const QPointer<WifiReply> other = client->status();
    bool isSecondOver = false;
    connect(client->scan(), &WifiReply::finished, &here, [&] {
        delete other;
        const auto *second = client->scan();
        connect(second, &WifiReply::finished, &here, [&] { isSecondOver = true; });
    });
    EVENTUALLY(isSecondOver && !other);

    const QPointer<WifiReply> join = client->connectTo("Other", wrong);
    connect(join, &WifiReply::stageChanged, &here, [&](WifiReply::Stage stage) {
        if (stage == WifiReply::Associating)
            delete join;
    });
    EVENTUALLY(!join);
    // Nobody is there to follow this one's end.
    EVENTUALLY(client->state() == WifiClient::Disconnected);

    around("radio.silence.acquire()");
    WifiReply::Error error{};
    connect(client->scan(), &WifiReply::finished, &here, [&] {
        const auto *next = client->scan();
        connect(next, &WifiReply::finished, &here, [&error, next] { error = next->error(); });
    });
    around("bed.daemon.process.kill(); bed.daemon.process.wait(); bed.daemon.process = None");
    EVENTUALLY(error == WifiReply::NoDaemon);
    QCOMPARE(int(client->state()), int(WifiClient::Unavailable));
    connect(client, &WifiClient::stateChanged, &here,
            [&] { delete std::exchange(client, nullptr); });
    around("radio.silence.release(); bed.start()");
    EVENTUALLY(!client);
}

void ClientTest::modelFollowsScans()
{
    WifiClient client;
    NetworkModel &model = *client.networks();
    const QAbstractItemModelTester tester(&model);
    QSignalSpy changes(&model, &NetworkModel::dataChanged);
    const auto names = [&model] {
        QStringList shown;
        for (int row = 0; row < model.rowCount(); ++row) {
            const QModelIndex index = model.index(row);
            shown << index.data(NetworkModel::SsidRole).toString() +
                         (index.data(NetworkModel::JoinedRole).toBool() ? "*" : "") +
                         (index.data(NetworkModel::KnownRole).toBool() ? "k" : "") +
                         (index.data(NetworkModel::AmbiguousRole).toBool() ? "?" : "");
        }
        return shown.join(' ');
    };
    const auto scan = [&client](const char *before) {
        around(before);
        const End end(client.scan());
        EVENTUALLY(end.isThere);
    };
    scan("");
    EVENTUALLY(names() == "Home*k Other Third ssid=a=b Twin?");
    changes.clear();
    scan("radio.table = [radio.table[n].replace('-55', '-40') for n in (5, 2, 1, 0)]");
    QCOMPARE(names(), "Other Home*k Third Twin");
    QVERIFY(!changes.isEmpty());
    scan("radio.table[1:2] = [TABLE[3]]");
    QCOMPARE(names(), "Other Home*k ssid=a=b Twin");
    changes.clear();
    const End join(client.connectTo("ssid=a=b", ""));
    EVENTUALLY(join.isThere && names() == "Other Homek ssid=a=b*k Twin");
    QVERIFY(changes.count() >= 2);
    const End forget(client.forget("Home"));
    EVENTUALLY(forget.isThere);
    QCOMPARE(names(), "Other Home ssid=a=b*k Twin");
    scan("radio.table = []");
    QCOMPARE(names(), "");
}

QTEST_GUILESS_MAIN(ClientTest)
#include "tst_client.moc"
