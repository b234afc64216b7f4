// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include <QGuiApplication>
#include <QQmlApplicationEngine>

// What `qml Panel.qml` does, for where that program is not installed.
int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    QQmlApplicationEngine engine;
    // In a build the module is beside the programs; Qt finds the installed one by itself.
    engine.addImportPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../qml"));
    engine.load(QStringLiteral("qrc:/Panel.qml"));
    return engine.rootObjects().isEmpty() ? EXIT_FAILURE : QGuiApplication::exec();
}
