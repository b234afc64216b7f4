// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

// The panel on a screen that is not there, for panel.py: evaluates each line of standard input in
// the panel's QML, with a `memory` and a `driver` of its own, and writes the value.

#include <bxwifi/joinsettings.h>

#include <QAccessible>
#include <QGuiApplication>
#include <QPixmap>
#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QQmlExpression>
#include <QQuickWindow>
#include <QScreen>
#include <QSocketNotifier>
#include <QTest>

#include <iostream>

namespace
{
/// What a screen reader finds: what it is, its name, and what else is to be said of it.
QStringList heard(const QAccessibleInterface *in)
{
    QStringList found;
    for (int i = 0; i < in->childCount(); ++i) {
        const QAccessibleInterface *child = in->child(i);
        const QAccessible::State state = child->state();
        const QStringList texts{qAccessibleRoleString(child->role()),
                                child->text(QAccessible::Name),
                                child->text(QAccessible::Description),
                                state.selected && state.selectable ? "selected" : ""};
        if (!state.invisible)
            found << texts.join(' ').trimmed() << heard(child);
    }
    return found;
}

/// What QML cannot do by itself.
class Driver : public QObject
{
    Q_OBJECT

public:
    QQuickWindow *window = nullptr;

    Q_INVOKABLE QStringList hear() { return heard(QAccessible::queryAccessibleInterface(window)); }
    Q_INVOKABLE void key(const QString &keys) { QTest::keySequence(window, QKeySequence(keys)); }
    Q_INVOKABLE bool picture(const QString &file)
    {
        return window->screen()->grabWindow(window->winId()).save(file);
    }
    Q_INVOKABLE void erase(QObject *object) { delete object; }
    Q_INVOKABLE QString rewritten(const QString &code)
    {
        QString problem;
        const auto settings = BxWifi::JoinSettings::fromUri(code, &problem);
        return problem + settings.problem() + settings.toUri();
    }
};
} // namespace

int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    QAccessible::setActive(true);
    Driver driver;
    QQmlApplicationEngine engine(PANEL);
    driver.window = qobject_cast<QQuickWindow *>(engine.rootObjects().value(0));
    engine.rootContext()->setContextProperty("driver", &driver);
    engine.globalObject().setProperty("memory", engine.newObject());
    const QSocketNotifier input(0, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, driver.window, [window = driver.window] {
        std::string line;
        if (!std::getline(std::cin, line))
            return QCoreApplication::quit();
        QQmlExpression expression(qmlContext(window), window, QString::fromStdString(line));
        std::cout << expression.evaluate().toString().toStdString() << std::endl;
    });
    return QGuiApplication::exec();
}

#include "paneldriver.moc"
