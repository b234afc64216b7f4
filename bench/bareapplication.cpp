// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

// The least that a service on Qt's bus binding can be which does for a call what the daemon cannot
// do without: the raw exchange with the supplicant, or the tools, and one signal of the same kind.
// The daemon's calls and memory are measured by it.

#include "supplicant.h"
#include "tools.h"

#include <QCoreApplication>
#include <QDBusConnection>

class Service : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.brelvix.bare")

signals:
    Q_SCRIPTABLE void statusMessage(int status);
    Q_SCRIPTABLE void fullStatusResult(QByteArray network);
    Q_SCRIPTABLE void ipResult(QString ip);
    Q_SCRIPTABLE void staticResult(QByteArray info);
    Q_SCRIPTABLE void dynamicResult(bool dynamic);

public slots:
    Q_SCRIPTABLE void statusRequest()
    {
        exchange(supplicant, "STATUS");
        emit statusMessage(0);
    }
    Q_SCRIPTABLE void fullStatusRequest()
    {
        exchange(supplicant, "STATUS");
        emit fullStatusResult(record);
    }
    Q_SCRIPTABLE void ipRequest()
    {
        exchange(supplicant, "STATUS");
        emit ipResult(QStringLiteral("10.0.0.7"));
    }
    Q_SCRIPTABLE void staticRequest()
    {
        run(staticTools);
        emit staticResult(record);
    }
    Q_SCRIPTABLE void dynamicRequest()
    {
        run(dynamicTools);
        emit dynamicResult(true);
    }

private:
    const int supplicant = connectToSupplicant();
    const QByteArray record = QByteArray(200, '\0'); // bytes, as many as the daemon's have
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
