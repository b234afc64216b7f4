// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

// The examples: the panel under a user's fingers, on a screen that is not there, and the console
// program.

#include "panel.h"
#include "radio.h"

#include <QPixmap>
#include <QProcess>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QScreen>

namespace
{
/// The panel's window, used without a mouse, which would miss what is still moving.
struct Panel {
    Panel()
    {
        loadPanel(engine, client);
        window = qobject_cast<QQuickWindow *>(engine.rootObjects().value(0));
    }

    /// A visible item; null if there is none by that name.
    QQuickItem *item(const QString &name, QQuickItem *in = nullptr) const
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

    QString text(const QString &name) const
    {
        const QQuickItem *found = item(name);
        return found ? found->property("text").toString() : QString();
    }

    void press(const QString &name) const
    {
        EVENTUALLY(item(name));
        item(name)->forceActiveFocus();
        QTest::keyClick(window, Qt::Key_Space);
    }

    void enter(const QString &secret) const
    {
        EVENTUALLY(item("secret") && item("secret")->hasActiveFocus());
        QTest::keySequence(window, QKeySequence::SelectAll);
        for (const QChar character : secret)
            QTest::keyClick(window, character.toLatin1());
        QTest::keyClick(window, Qt::Key_Return);
    }

    BxWifi::WifiClient client;
    QQmlApplicationEngine engine;
    QQuickWindow *window;
};
} // namespace

class ExamplesTest : public QObject
{
    Q_OBJECT

private slots:
    void panel();
    void console();

private:
    TestBed bed;
    Radio radio{bed,
                {"02:00:00:00:01:00\t2412\t-48\t[WPA2-PSK-CCMP][ESS]\tLab WPA2",
                 "02:00:00:00:02:00\t2437\t-60\t[ESS]\tLab Open",
                 "02:00:00:00:03:00\t2437\t-66\t[WPA2-EAP-CCMP][ESS]\tLab Enterprise",
                 "02:00:00:00:04:00\t5745\t-72\t[WPA2-SAE-CCMP][ESS]\tGr\\xc3\\xbc\\xc3\\x9fe",
                 "02:00:00:00:05:00\t5180\t-80\t[WEP][ESS]\tLab WEP"},
                "e7c35583e8cbd2ff9b932419c3daa1be7047b2545d76b25745cea82d732bc79f"};
};

void ExamplesTest::panel()
{
    bed.tools.setScript("fw_printenv", "echo \"$1=stored $1\"");
    bed.start();
    const Panel panel;
    QVERIFY(QTest::qWaitForWindowActive(panel.window));

    panel.press("Lab WPA2");
    panel.enter("wrong horse battery");
    EVENTUALLY(panel.text("problem").contains("wrong passphrase"));
    QCOMPARE(panel.text("state"), "Not connected");
    panel.item("secret")->forceActiveFocus();
    panel.enter("correct horse battery");
    EVENTUALLY(!panel.item("secret"));
    EVENTUALLY(panel.text("state") == "Lab WPA2  10.20.2.15");
    const QPixmap picture = panel.window->screen()->grabWindow(panel.window->winId());
    QVERIFY(picture.save(PANEL_PICTURE));

    panel.press("wiredTab");
    EVENTUALLY(panel.text("address") == "stored ipaddr");
    panel.press("wirelessTab");

    bed.journal.take();
    panel.press("Lab WPA2");
    panel.press("forget");
    EVENTUALLY(bed.journal.entries().contains("REMOVE_NETWORK 0"));

    QCOMPARE(bed.daemon.stop(), 0);
    EVENTUALLY(panel.text("state") == "The network service is not running");
    bed.start();
    EVENTUALLY(panel.text("state").startsWith("Lab WPA2"));
}

void ExamplesTest::console()
{
    QProcess console;
    console.start(CONSOLE, {"Lab WPA2", "correct horse battery"});
    EVENTUALLY(console.state() == QProcess::NotRunning);
    const QByteArray output = console.readAll();
    QVERIFY2(output.startsWith("-48 dBm  Lab WPA2\n"), output);
    QVERIFY2(output.endsWith("\nJoined with the address 10.20.2.15\n"), output);
}

QTEST_MAIN(ExamplesTest)
#include "tst_examples.moc"
