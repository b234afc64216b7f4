// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

// The panel under a user's fingers, on a screen that is not there. It is run by test_examples.py,
// which reads what is to happen to the daemon meanwhile.

#include <bxwifi/wificlient.h>

#include <QAccessible>
#include <QMap>
#include <QPixmap>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QRegularExpression>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>

#include <cmath>
#include <cstdio>

/// For what other processes do, however busy the machine is.
#define EVENTUALLY(condition) QTRY_VERIFY_WITH_TIMEOUT(condition, 30000)

using namespace BxWifi;

namespace
{
const auto secret = QStringLiteral("thirteen byte"); ///< of every network

/// The panel's window, used without a mouse, which would miss what is still moving.
struct Panel {
    Panel()
    {
        engine.load(QStringLiteral(PANEL));
        window = qobject_cast<QQuickWindow *>(engine.rootObjects().value(0));
        client = window->findChild<WifiClient *>();
        EVENTUALLY(window->isActive());
    }

    /// All visible items below one.
    QList<QQuickItem *> items(QQuickItem *in = nullptr) const
    {
        QList<QQuickItem *> found;
        const auto children = (in ? in : window->contentItem())->childItems();
        for (QQuickItem *child : children) {
            if (child->isVisible())
                found << child << items(child);
        }
        return found;
    }

    /// Of the visible item by that name, if there is one.
    QVariant property(const QString &name, const char *property) const
    {
        for (const QQuickItem *item : items()) {
            if (item->objectName() == name)
                return item->property(property);
        }
        return {};
    }
    bool isVisible(const QString &name) const { return property(name, "visible").toBool(); }
    bool hasFocus(const QString &name) const { return property(name, "activeFocus").toBool(); }
    QString text(const QString &name) const { return property(name, "text").toString(); }

    void press(const QString &name) const
    {
        EVENTUALLY(property(name, "enabled").toBool());
        for (QQuickItem *item : items()) {
            if (item->objectName() == name)
                item->forceActiveFocus();
        }
        QTest::keyClick(window, Qt::Key_Space);
    }

    /// Types into the field that comes to have the focus.
    void type(const QString &field, const QString &what, Qt::Key end = Qt::Key_Return) const
    {
        EVENTUALLY(hasFocus(field));
        QTest::keySequence(window, QKeySequence::SelectAll);
        for (const QChar character : what)
            QTest::keyClick(window, character.toLatin1());
        QTest::keyClick(window, end);
    }

    /// Texts in sight that have no room or, but for names, are not in the language of brackets.
    QStringList misfits() const
    {
        static const QRegularExpression names("^(|10.*|WPA.*|WEP|Lab.*|Grüße|Twin)$");
        QStringList found;
        for (QQuickItem *item : items()) {
            const QString text = item->property("text").toString();
            const bool isSaid = item->inherits("QQuickText") && !names.match(text).hasMatch();
            const bool isPseudo = QLocale().language() == QLocale::English;
            const auto *seen = QAccessible::queryAccessibleInterface(item);
            const QString spoken = seen ? seen->text(QAccessible::Name) : QString();
            if (isPseudo && !names.match(spoken).hasMatch() && !spoken.contains('['))
                found << "spoken: " + spoken;
            if (item->mapRectToScene(item->boundingRect()).right() > window->width() ||
                (isSaid &&
                 (item->property("contentWidth").toReal() > std::ceil(item->width()) ||
                  item->property("truncated").toBool() || (isPseudo && !text.contains('[')))))
                found << item->metaObject()->className() + (": " + text);
        }
        return found;
    }

    /// Begins to join a network that is not there.
    void joinNowhere() const
    {
        press("hidden");
        type("name", "Nowhere", Qt::Key_Tab);
        type("kinds", {}, Qt::Key_Tab);
        type("secret", secret);
        EVENTUALLY(text("progress") == "Joining the network …");
    }

    /// Joins one without the panel's doing.
    void join(const QString &ssid, const QString &password = secret) const
    {
        QSignalSpy joined(client->connectTo(ssid, password, "ada"), &WifiReply::finished);
        EVENTUALLY(!joined.isEmpty());
        QCOMPARE(text("state") + " " + text("address"), ssid + " 10.20.2.15");
    }

    QQmlApplicationEngine engine;
    QQuickWindow *window;
    WifiClient *client;
};
} // namespace

class PanelTest : public QObject
{
    Q_OBJECT

private slots:
    void panel();
    void knownNetworks();
    void underWay();
    void scannedCode();
    void plainText();
    void keyboard();
    void languages();
};

void PanelTest::panel()
{
    const Panel panel;
    panel.press("Lab WPA2");
    panel.type("secret", "wrong horse");
    EVENTUALLY(panel.text("problem").contains("wrong passphrase"));
    QCOMPARE(panel.text("state"), "Not connected");
    panel.type("secret", secret);
    EVENTUALLY(!panel.isVisible("secret") && panel.text("address") == "10.20.2.15");
    QCOMPARE(panel.text("state"), "Lab WPA2");

    // The daemon dies as it stores what the switch says.
    panel.press("wiredTab");
    EVENTUALLY(panel.text("address") == "stored ipaddr" &&
               panel.property("dhcp", "checked").toBool());
    panel.press("dhcp");
    EVENTUALLY(panel.text("message").contains("went away"));
    QVERIFY(panel.property("dhcp", "checked").toBool());
    panel.press("wirelessTab");
    EVENTUALLY(panel.text("state") == "The network service is not running");
    std::puts("start");
    std::fflush(stdout);

    EVENTUALLY(panel.text("state") == "Lab WPA2");
    panel.press("Lab WPA2");
    panel.press("forget");
    EVENTUALLY(panel.text("state") == "Not connected");
    panel.press("Lab WPA2");
    EVENTUALLY(panel.hasFocus("secret"));
}

/// What is asked before a network is joined again, and of one with two kinds of protection.
void PanelTest::knownNetworks()
{
    const Panel panel;
    EVENTUALLY(panel.isVisible("Twin"));
    panel.join("Lab WPA2");
    panel.join("Grüße");
    panel.join("Lab Enterprise");
    panel.join("Lab Open", {});
    panel.client->disconnectFromNetwork();
    EVENTUALLY(panel.text("state") == "Not connected");
    const QMap<QString, QString> questions{
        {"Grüße", "secret"}, {"Lab Enterprise", "identity"}, {"Lab Open", "join"}};
    for (const QString &ssid : questions.keys()) {
        panel.press(ssid);
        EVENTUALLY(panel.hasFocus(questions[ssid]) && !panel.isVisible("progress"));
        panel.press("cancel");
    }
    panel.press("Lab WPA2");
    EVENTUALLY(panel.text("state") == "Lab WPA2" && !panel.isVisible("secret"));
    panel.press("Twin");
    panel.type("kinds", {}, Qt::Key_Tab);
    panel.type("secret", secret);
    EVENTUALLY(panel.text("state") == "Twin");
}

/// What the sheet shows of a join until it ends, in this way or that.
void PanelTest::underWay()
{
    const Panel panel;
    panel.joinNowhere();
    QVERIFY(!panel.property("secret", "enabled").toBool());
    QTest::keyClick(panel.window, Qt::Key_Escape);
    EVENTUALLY(!panel.isVisible("secret")); // there is nothing to go back to

    panel.joinNowhere();
    panel.join("Lab WPA2");
    EVENTUALLY(panel.text("problem").contains("another"));
    panel.press("cancel");

    panel.press("Grüße");
    panel.type("secret", "wrong horse");
    EVENTUALLY(panel.text("progress").startsWith("Going back"));
    EVENTUALLY(panel.text("problem").endsWith("back in Lab WPA2"));
    panel.press("cancel");

    // The end of a join does nothing to a sheet that was opened since.
    panel.joinNowhere();
    auto *sheet = panel.window->findChild<QObject *>("sheet");
    QSignalSpy ended(sheet->property("reply").value<WifiReply *>(), &WifiReply::finished);
    QVERIFY(QMetaObject::invokeMethod(sheet, "openHidden"));
    EVENTUALLY(panel.hasFocus("name") && !ended.isEmpty());
    QCOMPARE(panel.text("problem"), QString());
}

/// The sheet shows what a code says before it does that, and does nothing with one that is broken.
void PanelTest::scannedCode()
{
    const Panel panel;
    auto *sheet = panel.window->findChild<QObject *>("sheet");
    const auto open = [sheet](const QVariant &uri) {
        QVERIFY(QMetaObject::invokeMethod(sheet, "openForUri", Q_ARG(QVariant, uri)));
    };
    open("WIFI:T:WPA;S:Lab\\");
    EVENTUALLY(panel.text("problem").endsWith("cut off") && panel.hasFocus("cancel"));
    QVERIFY(!panel.isVisible("secret") && !panel.property("join", "enabled").toBool());
    open("WIFI:T:WPA;S:Lab WPA2;P:" + secret + ";;");
    EVENTUALLY(panel.text("ssid") == "Lab WPA2" && panel.text("secret") == secret);
    panel.press("join");
    EVENTUALLY(panel.text("state") == "Lab WPA2" && !panel.isVisible("secret"));
    open("WIFI:T:WPA;S:Twin;P:" + secret + ";;");
    panel.press("join");
    EVENTUALLY(panel.text("problem").endsWith("say which") && panel.hasFocus("kinds"));
    panel.press("join");
    EVENTUALLY(panel.text("state") == "Twin");
}

/// Wherever a name is shown, it is not read as markup.
void PanelTest::plainText()
{
    const QString ssid = "<img src=http://192.0.2.1/x>";
    const Panel panel;
    const auto formats = [&] {
        QVariantList found;
        for (const QQuickItem *item : panel.items()) {
            if (item->property("text").toString().contains(ssid))
                found += item->property("textFormat");
        }
        return found;
    };
    const QVariantList twicePlain{Qt::PlainText, Qt::PlainText};
    panel.press(ssid);
    EVENTUALLY(panel.hasFocus("secret"));
    QCOMPARE(formats(), twicePlain); // row and sheet
    panel.type("secret", secret);
    EVENTUALLY(panel.text("state") == ssid && !panel.isVisible("secret"));
    QCOMPARE(formats(), twicePlain); // row and state
    panel.press("Lab WPA2");
    panel.type("secret", "wrong horse");
    EVENTUALLY(panel.text("problem").endsWith(ssid));
    QCOMPARE(formats().count(Qt::PlainText), formats().size());
}

/// Where the tabulator leads, and what a screen reader says there.
void PanelTest::keyboard()
{
    const Panel panel;
    QAccessible::setActive(true);
    const auto tour = [&] {
        QStringList stops;
        while (stops.size() < 2 || stops.last() != stops.first()) {
            QQuickItem *item = panel.window->activeFocusItem();
            const auto *seen = QAccessible::queryAccessibleInterface(item);
            const QString name = seen->text(QAccessible::Name);
            stops += (name.isEmpty() ? seen->text(QAccessible::Description) : name) + ": " +
                     qAccessibleRoleString(seen->role());
            QTest::keyClick(panel.window, Qt::Key_Tab);
        }
        return stops.join(", ");
    };
    EVENTUALLY(panel.isVisible("Lab Enterprise"));
    panel.press("wirelessTab");
    QCOMPARE(tour(), "Wi-Fi: PageTab, Wired: PageTab, Scan: Button, Lab WPA2: ListItem, "
                     "Hidden network …: Button, Wi-Fi: PageTab");
    panel.press("Lab Enterprise");
    EVENTUALLY(panel.hasFocus("identity"));
    QCOMPARE(tour(), "User name: EditableText, Password: EditableText, Show: CheckBox, "
                     "Cancel: Button, Join: Button, User name: EditableText");
}

/// All texts are translated and have their room, in whatever language; leaves pictures.
void PanelTest::languages()
{
    const Panel panel;
    auto look = [&panel, count = 0]() mutable {
        QTest::qWait(300); // what moves has arrived
        const QPixmap picture = panel.window->screen()->grabWindow(panel.window->winId());
        QVERIFY(picture.save(QString(PICTURE).arg(QLocale().name()).arg(count++)));
        QCOMPARE(panel.misfits().join("\n"), QString());
    };
    EVENTUALLY(panel.isVisible("Twin"));
    panel.join("Lab WPA2");
    for (const QString button :
         {"wirelessTab", "Lab WPA2", "Lab Enterprise", "Lab Open", "Twin", "hidden"}) {
        panel.press(button);
        look();
        QTest::keyClick(panel.window, Qt::Key_Escape);
    }
    panel.press("Grüße");
    panel.type("secret", "wrong horse");
    EVENTUALLY(panel.misfits().isEmpty() && !panel.text("problem").isEmpty());
    look();
    panel.press("cancel");
    panel.press("wiredTab");
    EVENTUALLY(panel.text("address") == "stored ipaddr");
    panel.press("store");
    EVENTUALLY(!panel.text("message").isEmpty());
    look();
}

QTEST_MAIN(PanelTest)
#include "tst_panel.moc"
