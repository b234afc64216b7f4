// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "panel.h"

#include <QQmlApplicationEngine>
#include <QQmlContext>

void loadPanel(QQmlApplicationEngine &engine, BxWifi::WifiClient &client)
{
    const QString reason = QStringLiteral("for its values only");
    qmlRegisterUncreatableType<BxWifi::WifiClient>("BxWifi", 1, 0, "WifiClient", reason);
    qmlRegisterUncreatableMetaObject(BxWifi::staticMetaObject, "BxWifi", 1, 0, "BxWifi", reason);
    engine.rootContext()->setContextProperty(QStringLiteral("wifi"), &client);
    engine.load(QStringLiteral("qrc:/Panel.qml"));
}
