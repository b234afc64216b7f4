// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

// The least that a service on Qt's bus binding can be: what the daemon's memory is measured by.

#include <QCoreApplication>
#include <QDBusConnection>

class Service : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.brelvix.bare")

public slots:
    Q_SCRIPTABLE void request() {}
};

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    Service service;
    QDBusConnection bus = QDBusConnection::systemBus();
    bus.registerObject(QStringLiteral("/"), &service, QDBusConnection::ExportScriptableContents);
    bus.registerService(QStringLiteral("com.brelvix.bare"));
    return QCoreApplication::exec();
}

#include "bareapplication.moc"
