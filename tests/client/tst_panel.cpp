// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

// The panel under a user's fingers, on a screen that is not there. It is run by test_examples.py,
// which reads what is to happen to the daemon meanwhile.

#include "panel.h"

#include <QPixmap>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>

#include <cstdio>

/// For what other processes do, however busy the machine is.
#define EVENTUALLY(condition) QTRY_VERIFY_WITH_TIMEOUT(condition, 30000)

namespace
{
void ask(const char *what)
{
    std::puts(what);
    std::fflush(stdout);
}

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

class PanelTest : public QObject
{
    Q_OBJECT

private slots:
    void panel();
    void unseenNetwork();
};

void PanelTest::panel()
{
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

    panel.press("Lab WPA2");
    panel.press("forget");
    ask("stop when that is forgotten");
    EVENTUALLY(panel.text("state") == "The network service is not running");
    ask("start");
    EVENTUALLY(panel.text("state") == "Not connected");
    panel.press("Lab WPA2");
    EVENTUALLY(panel.item("secret") && panel.item("secret")->hasActiveFocus()); // no longer known
}

/// The client scans first, and the supplicant once more while it joins.
void PanelTest::unseenNetwork()
{
    BxWifi::WifiClient client;
    const BxWifi::AddressReply *reply = client.connectTo("Lab WPA2", "correct horse battery");
    QSignalSpy joined(reply, &BxWifi::WifiReply::finished);
    EVENTUALLY(!joined.isEmpty());
    QCOMPARE(client.address(), "10.20.2.15");
}

QTEST_MAIN(PanelTest)
#include "tst_panel.moc"
