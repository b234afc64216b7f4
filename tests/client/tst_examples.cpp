// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

// The examples: the panel under a user's fingers, on a screen that is not there, and the console
// program.

#include "panel.h"
#include "radio.h"

#include <QProcess>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QScreen>
#include <QTest>

namespace
{
constexpr int patience_ms = 30000;
} // namespace

class ExamplesTest : public QObject
{
    Q_OBJECT

public:
    static void initMain()
    {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("QT_QUICK_BACKEND", "software");
    }

private slots:
    void initTestCase();
    void cleanupTestCase();
    void wrongKeyThenRightKey();
    void forget();
    void wiredPageShowsWhatIsStored();
    void followsTheDaemonsRestart();
    void consoleListsAndJoins();

private:
    QQuickItem *item(const QString &name, QQuickItem *in = nullptr) const;
    bool shows(const QString &name, const QString &text) const;
    void click(const QString &name) const;
    void type(const QString &text) const;

    TestBed bed;
    Radio radio{bed};
    std::unique_ptr<BxWifi::WifiClient> client;
    std::unique_ptr<QQmlApplicationEngine> engine;
    QQuickWindow *window = nullptr;
};

void ExamplesTest::initTestCase()
{
    radio.setNetworks(
        {"02:00:00:00:01:00\t2412\t-48\t[WPA2-PSK-CCMP][ESS]\tLab WPA2",
         "02:00:00:00:02:00\t2437\t-60\t[ESS]\tLab Open",
         "02:00:00:00:03:00\t2437\t-66\t[WPA2-EAP-CCMP][ESS]\tLab Enterprise",
         "02:00:00:00:04:00\t5745\t-72\t[WPA2-SAE-CCMP][ESS]\tGr\\xc3\\xbc\\xc3\\x9fe",
         "02:00:00:00:05:00\t5180\t-80\t[WEP][ESS]\tLab WEP"});
    radio.setSecret("psk e7c35583e8cbd2ff9b932419c3daa1be7047b2545d76b25745cea82d732bc79f");
    bed.tools.setOutput("fw_printenv", "ipaddr=192.168.1.10\n");
    bed.start();
    client = std::make_unique<BxWifi::WifiClient>();
    engine = std::make_unique<QQmlApplicationEngine>();
    loadPanel(*engine, *client);
    window = qobject_cast<QQuickWindow *>(engine->rootObjects().value(0));
    QVERIFY(QTest::qWaitForWindowExposed(window));
}

void ExamplesTest::cleanupTestCase()
{
    engine.reset(); // before the client that it shows
    client.reset();
}

QQuickItem *ExamplesTest::item(const QString &name, QQuickItem *in) const
{
    const auto children = (in ? in : window->contentItem())->childItems();
    for (QQuickItem *child : children) {
        if (child->objectName() == name && child->isVisible())
            return child;
        if (QQuickItem *found = item(name, child))
            return found;
    }
    return nullptr;
}

bool ExamplesTest::shows(const QString &name, const QString &text) const
{
    const QQuickItem *found = item(name);
    return found && found->property("text").toString().contains(text);
}

void ExamplesTest::click(const QString &name) const
{
    QTRY_VERIFY2_WITH_TIMEOUT(item(name), qPrintable(name), patience_ms);
    QTest::qWait(300); // whatever moves has come to rest
    const QQuickItem *target = item(name);
    const QPointF centre = target->mapToScene({target->width() / 2, target->height() / 2});
    QTest::mouseClick(window, Qt::LeftButton, {}, centre.toPoint());
}

void ExamplesTest::type(const QString &text) const
{
    QTRY_VERIFY_WITH_TIMEOUT(item("secret") && item("secret")->hasActiveFocus(), patience_ms);
    QTest::keySequence(window, QKeySequence::SelectAll);
    for (const QChar character : text)
        QTest::keyClick(window, character.toLatin1());
    QTest::keyClick(window, Qt::Key_Return);
}

void ExamplesTest::wrongKeyThenRightKey()
{
    click("Lab WPA2");
    type("wrong horse battery");
    QTRY_VERIFY_WITH_TIMEOUT(shows("problem", "wrong passphrase"), patience_ms);
    QVERIFY(!shows("state", "Lab WPA2"));

    click("secret");
    type("correct horse battery");
    QTRY_VERIFY_WITH_TIMEOUT(shows("state", "Lab WPA2  10.20.2.15"), patience_ms);
    QTRY_VERIFY_WITH_TIMEOUT(!item("secret"), patience_ms);
    QTest::qWait(500);
    QVERIFY(window->screen()->grabWindow(window->winId()).save(PANEL_PICTURE));
}

void ExamplesTest::forget()
{
    const QByteArray command = "REMOVE_NETWORK 0";
    const int before = bed.journal.entries().count(command);
    click("Lab WPA2");
    click("forget");
    QTRY_VERIFY_WITH_TIMEOUT(bed.journal.entries().count(command) > before, patience_ms);
}

void ExamplesTest::wiredPageShowsWhatIsStored()
{
    click("wiredTab");
    QTRY_VERIFY_WITH_TIMEOUT(shows("address", "192.168.1.10"), patience_ms);
    click("wirelessTab");
}

void ExamplesTest::followsTheDaemonsRestart()
{
    QCOMPARE(bed.daemon.stop(), 0);
    QTRY_VERIFY_WITH_TIMEOUT(shows("state", "not running"), patience_ms);
    bed.start();
    QTRY_VERIFY_WITH_TIMEOUT(shows("state", "Lab WPA2"), patience_ms);
}

void ExamplesTest::consoleListsAndJoins()
{
    QProcess console;
    console.start(CONSOLE, {"Lab WPA2", "correct horse battery"});
    QTRY_VERIFY_WITH_TIMEOUT(console.state() == QProcess::NotRunning, patience_ms);
    const QByteArray output = console.readAll();
    QVERIFY2(output.startsWith("-48 dBm  Lab WPA2\n"), output);
    QVERIFY2(output.endsWith("\nJoined with the address 10.20.2.15\n"), output);
}

QTEST_MAIN(ExamplesTest)
#include "tst_examples.moc"
