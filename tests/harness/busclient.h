// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "journal.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>

/// A client of the daemon on a connection of its own; writes each signal of the daemon into the
/// journal as it is received.
class BusClient : public QObject
{
    Q_OBJECT

public:
    BusClient(const QString &address, Journal &journal);
    ~BusClient() override;
    Q_DISABLE_COPY_MOVE(BusClient)

    /// Calls a method of the daemon and, back on the event loop, waits for its reply. The signals
    /// that left the daemon before the reply are in the journal then.
    QDBusMessage call(const QString &method, const QVariantList &arguments = {});
    /// Calls without waiting.
    QDBusPendingCall start(const QString &method, const QVariantList &arguments = {});
    QDBusMessage wait(const QDBusPendingCall &pending);

    /// The introspection data of the daemon's object.
    QString introspection();

    QDBusConnection &connection() { return bus; }

private slots:
    void onSignal(const QDBusMessage &message);

private:
    Journal &journal;
    QDBusConnection bus;
};
