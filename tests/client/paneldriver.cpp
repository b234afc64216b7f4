// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

// The panel on a screen that is not there, for test_examples.py: does what each line of standard
// input asks for, and answers with a line of JSON.

#include <bxwifi/joinsettings.h>

#include <QAccessible>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMetaProperty>
#include <QPixmap>
#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QQmlExpression>
#include <QQmlPropertyMap>
#include <QQuickItem>
#include <QQuickWindow>
#include <QScreen>
#include <QSocketNotifier>
#include <QTest>

#include <iostream>

namespace
{
/// All visible items below one.
QList<QQuickItem *> items(const QQuickItem *in)
{
    QList<QQuickItem *> found;
    for (QQuickItem *item : in->childItems()) {
        if (item->isVisible())
            found << item << items(item);
    }
    return found;
}

/// The visible items' type, place and properties.
QJsonArray look(const QQuickWindow *window)
{
    QJsonArray found;
    for (QQuickItem *item : items(window->contentItem())) {
        const QMetaObject *type = item->metaObject();
        QJsonObject properties{{"type", QString(type->className()).section('_', 0, 0)},
                               {"top", item->mapToScene({}).y()},
                               {"right", item->mapToScene({item->width(), 0}).x()}};
        for (int i = 0; i < type->propertyCount(); ++i) {
            const QMetaProperty property = type->property(i);
            if (property.userType() < QMetaType::User || property.isEnumType())
                properties.insert(property.name(), QJsonValue::fromVariant(property.read(item)));
        }
        found += properties;
    }
    return found;
}

/// What a screen reader finds: what it is, its name, and what else is to be said of it.
QJsonArray hear(const QAccessibleInterface *in)
{
    QJsonArray found;
    for (int i = 0; i < in->childCount(); ++i) {
        const QAccessibleInterface *child = in->child(i);
        if (child->state().invisible)
            continue;
        found += QStringList{qAccessibleRoleString(child->role()), child->text(QAccessible::Name),
                             child->text(QAccessible::Description)}
                     .join(' ')
                     .trimmed();
        for (const QJsonValue below : hear(child))
            found += below;
    }
    return found;
}

/// For the expressions that are run: what they keep, and what QML does not see.
class Memory : public QQmlPropertyMap
{
    Q_OBJECT

public:
    Memory() : QQmlPropertyMap(this, nullptr) {}
    Q_INVOKABLE QString rewritten(const QString &code)
    {
        QString problem;
        const auto settings = BxWifi::JoinSettings::fromUri(code, &problem);
        return problem + settings.problem() + settings.toUri();
    }
    Q_INVOKABLE void erase(const QString &name)
    {
        const auto *object = value(name).value<QObject *>();
        clear(name);
        delete object;
    }
};

QJsonArray answer(QQuickWindow *window, const QString &command, const QString &what)
{
    if (command == "hear")
        return hear(QAccessible::queryAccessibleInterface(window));
    if (command == "run") {
        QQmlExpression expression(qmlContext(window), window, what);
        return {QJsonValue::fromVariant(expression.evaluate())};
    }
    for (QQuickItem *item : items(window->contentItem())) {
        if (command == "focus" && item->objectName() == what)
            item->forceActiveFocus();
    }
    if (command == "key")
        QTest::keySequence(window, QKeySequence(what));
    if (command == "type")
        for (const QChar character : what)
            QTest::keyClick(window, character.toLatin1());
    if (command == "picture")
        window->screen()->grabWindow(window->winId()).save(what);
    return look(window);
}
} // namespace

int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    QAccessible::setActive(true);
    Memory memory;
    QQmlApplicationEngine engine;
    engine.rootContext()->setContextProperty("memory", &memory);
    engine.load(PANEL);
    auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().value(0));
    const QSocketNotifier input(0, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, window, [window] {
        std::string line;
        if (!std::getline(std::cin, line))
            return QCoreApplication::quit();
        const QStringList words = QString::fromStdString(line).split('\t');
        const QJsonDocument found(answer(window, words.value(0), words.value(1)));
        std::cout << found.toJson(QJsonDocument::Compact).constData() << std::endl;
    });
    return QGuiApplication::exec();
}

#include "paneldriver.moc"
