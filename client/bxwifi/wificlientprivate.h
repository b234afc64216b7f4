// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "daemonlink.h"
#include "wificlient.h"

#include <QPointer>
#include <QTimer>

namespace BxWifi
{
class Join;

/// What a client knows, and the requests that take more than one call.
class WifiClientPrivate : public QObject
{
    Q_OBJECT
public:
    explicit WifiClientPrivate(WifiClient &owner);

    /// Calls for a reply, which fails if the call does.
    void ask(const DaemonCall &call, WifiReply *reply, const AnswerHandler &done);
    /// What follows `done` only if the daemon has a supplicant; the reply fails otherwise.
    void requireSupplicant(WifiReply *reply, const std::function<void()> &done);
    /// Looks for networks; the answer says only whether their results are in the model.
    void scan(QObject *context, const AnswerHandler &done);
    void join(AddressReply *reply, const JoinSettings &settings);
    void forget(WifiReply *reply, const QString &name);
    static bool refuse(WifiReply *reply, const QString &problem);
    /// A join of this client makes the state; at its end it asks for the true one.
    void beginJoining();
    void endJoining();
    /// The name of a network that the daemon reports without every "ssid=" in it.
    QString wholeName(const QString &reported) const;
    void poll();

    WifiClient &client;
    DaemonLink link;
    NetworkModel model;
    WifiClient::State state = WifiClient::Unavailable;
    QString ssid;
    QString address;
    QTimer scanTimer; ///< Runs while a scan does
    QTimer pollTimer;
    std::optional<JoinSettings> joined; ///< What this client joined last, with its secret
    QPointer<Join> currentJoin;
    QVector<WifiNetwork> accessPoints;

signals:
    void scanEnded(bool delivered);

private:
    bool isJoining() const;
    void onAvailable(bool available);
    void onStatusMessage(Status::Code status);
    void onStatus(const WifiStatus &status);
    void onNetworkSeen(const WifiNetwork &network);
    void endScan(bool delivered);
    void setState(WifiClient::State next);
    void setSsid(const QString &next);
    void setAddress(const QString &next);

    template<typename Tell>
    void later(Tell tell);

    bool isNewScan = true; ///< The next network is the first of its scan
    bool isPolling = false;
    QTimer connectingTimer; ///< Runs as long as a join may be on its way that nobody follows
};
} // namespace BxWifi
