// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "daemonlink.h"
#include "wificlient.h"

#include <QTimer>

namespace BxWifi
{
/// What a client knows, and the requests that take more than one call.
class WifiClientPrivate : public QObject
{
    Q_OBJECT
public:
    explicit WifiClientPrivate(WifiClient &owner);

    /// Calls for a reply, which fails if the call does.
    void ask(const DaemonCall &call, WifiReply *reply, const AnswerHandler &done);
    void scan(WifiReply *reply, const std::function<void()> &done);
    void join(AddressReply *reply, const JoinSettings &settings);
    void joinAnnounced(AddressReply *reply, const JoinSettings &settings);
    void forget(WifiReply *reply, const QString &name, bool hasRemoved);
    static bool refuse(WifiReply *reply, const QString &problem);

    WifiClient &client;
    DaemonLink link;
    NetworkModel model;
    WifiClient::State state = WifiClient::Unavailable;
    QString ssid;
    QString address;
    QTimer scanTimer; ///< Runs while a scan does
    QVector<WifiNetwork> accessPoints;

signals:
    void scanEnded(bool delivered);

private:
    void onAvailable(bool available);
    void onStatusMessage(Status::Code status);
    void onStatus(const WifiStatus &status);
    void onNetworkSeen(const WifiNetwork &network);
    void endScan(bool delivered);
    void setState(WifiClient::State next);
    void setSsid(const QString &next);
    void setAddress(const QString &next);

    bool isNewScan = true; ///< The next network is the first of its scan
};
} // namespace BxWifi
