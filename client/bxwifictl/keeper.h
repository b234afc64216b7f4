// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "disconnectwatch.h"
#include "rememberednetworks.h"

#include <bxwifi/wificlient.h>

#include <QDeadlineTimer>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <QTimer>

#include <chrono>

/// Keeps the device in a network, by what it remembers of networks and what the client hears. All
/// of it is timed by the client's questions about the connection, one every few seconds.
class Keeper : public QObject
{
    Q_OBJECT
public:
    enum Decision {
        Online,         ///< The network was joined, by whomever; with the address
        Offline,        ///< In no network for long enough to do something about it
        NothingInSight, ///< No remembered network can be selected
        Joining,        ///< The network was selected
        JoinFailed,     ///< With the reason
        Relinking,      ///< The daemon has no supplicant
        Relinked,       ///< It has one again
        HandsOff,       ///< Another client is joining a network
        Left,           ///< Somebody disconnected on purpose
        DaemonAway,     ///< Waiting for it
        Remembered,     ///< A network that was not remembered before
        Forgotten,      ///< The network is not stored any more
        StateProblem,   ///< With what is wrong with the file of remembered networks
    };
    Q_ENUM(Decision)

    Keeper(BxWifi::WifiClient &client, const QString &stateFile);
    /// Decisions begin. Connect first.
    void start();

signals:
    /// The network and what else there is to tell, which may be empty. Both come from strangers.
    void decided(Keeper::Decision decision, const QString &ssid, const QString &detail);

private:
    using Network = RememberedNetworks::Network;

    void onState();
    void onEvent(BxWifi::WifiClient::Event event);
    void onStatus(const BxWifi::WifiStatus &status);
    void onConnectionRequested();
    void onScanDelivered();
    void onNetworkRemoved();

    void noteJoined();
    void noteRemoved();
    void forget(const QString &ssid);
    void reportProblem(const QString &problem);

    void relink();
    template<typename Reply>
    Reply *begin(Reply *reply);
    bool mayAct();
    void consider();
    void choose();
    void join(const Network &network);
    void joinEnded(const QString &ssid, const BxWifi::WifiReply &reply);
    void beginAnew();
    QVector<Network> candidates() const;

    /// For what goes on: once, until something else has come about.
    void sayOnce(Decision decision);
    void say(Decision decision, const QString &ssid = {}, const QString &detail = {});

    BxWifi::WifiClient &client;
    RememberedNetworks remembered;
    DisconnectWatch disconnectWatch;

    BxWifi::WifiClient::State state = BxWifi::WifiClient::Unavailable;
    QString current;            ///< The network that is joined, once it has given an address
    bool needsRelink = false;   ///< The daemon was seen without a supplicant
    QDeadlineTimer grace;       ///< For the supplicant to find back by itself
    QDeadlineTimer handsOff;    ///< Since another client asked to join
    QDeadlineTimer nextLook;    ///< No scan before
    QDeadlineTimer nextJoin;    ///< No join before
    QDeadlineTimer seenFresh;   ///< Until then the last scan counts
    std::chrono::seconds pause; ///< After the next join that fails
    QSet<QString> inSight;      ///< Remembered ones, in the last scan
    QSet<QString> tried;        ///< In vain, since the last connection
    QPointer<BxWifi::WifiReply> request; ///< One at a time, joins included
    QPointer<BxWifi::WifiReply> ownJoin;
    int ownRequests = 0; ///< Joins that were announced during one's own
    QTimer settling;     ///< Runs from a change until the address is that of the network
    QTimer removal;      ///< Runs from a removal until it is clear what it was for
    QString joinedAtRemoval;
    QString lastOnline; ///< What was said last was that it is joined
    QSet<int> said;     ///< Decisions that hold since then
};
