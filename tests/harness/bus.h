// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "journal.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QProcess>

/// A bus of the test's own, which is the system bus of this process and of those that it starts
/// from then on, and a client on it, which writes each signal of the daemon into the journal.
class Bus : public QObject
{
    Q_OBJECT

public:
    explicit Bus(const Journal &journal);
    ~Bus() override;
    Q_DISABLE_COPY_MOVE(Bus)

    /// One more connection, as of another client.
    static QDBusConnection connectClient();

    /// Calls a method of the daemon.
    QDBusPendingCall start(const QString &method, const QVariantList &arguments = {});
    /// Also waits, on the event loop, for its reply. The signals that left the daemon before the
    /// reply are in the journal then.
    QDBusMessage call(const QString &method, const QVariantList &arguments = {});

    QProcess server;
    QDBusConnection client;

private slots:
    void onSignal(const QDBusMessage &message);

private:
    const Journal &journal;
};

/// A method call to the daemon.
QDBusMessage daemonCall(const QString &method, const QVariantList &arguments = {});

/// The journal's entry of a signal with its one argument; a byte array is shown in hexadecimal.
QByteArray busSignal(const QString &name, const QVariant &argument);
