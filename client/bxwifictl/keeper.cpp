// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "keeper.h"

#include "candidates.h"

#include <algorithm>

using BxWifi::JoinSettings;
using BxWifi::Security;
using BxWifi::WifiClient;
using BxWifi::WifiReply;
using BxWifi::WifiStatus;

namespace
{
using namespace std::chrono_literals;

constexpr auto pollInterval = 5s;
// A supplicant that can find back by itself has done so by then, with several scans.
constexpr auto graceTime = 20s;
// A client's join takes 45 s, and begins anew when it goes back.
constexpr auto handsOffTime = 60s;
// The daemon refreshes the address 600 ms after it has said that it is connected, and answers
// nothing meanwhile. Before that, the address may be that of another network.
constexpr auto settlingTime = 1s;
constexpr auto lookInterval = 30s;
constexpr auto freshTime = 10s;
constexpr auto shortestPause = 30s;
constexpr auto longestPause = 600s;
// A removal that is part of a join is followed by that. After any other the supplicant, which reads
// its file anew, has found back by then.
constexpr auto removalTime = 10s;

} // namespace

Keeper::Keeper(WifiClient &wifi, const QString &stateFile)
    : client(wifi), remembered(stateFile), pause(shortestPause)
{
    settling.setSingleShot(true);
    settling.setInterval(settlingTime);
    connect(&settling, &QTimer::timeout, this, &Keeper::noteJoined);
    removal.setSingleShot(true);
    removal.setInterval(removalTime);
    connect(&removal, &QTimer::timeout, this, &Keeper::noteRemoved);
}

void Keeper::start()
{
    reportProblem(remembered.load());
    connect(&client, &WifiClient::stateChanged, this, &Keeper::onState);
    connect(&client, &WifiClient::happened, this, &Keeper::onEvent);
    connect(&client, &WifiClient::statusReported, this, &Keeper::onStatus);
    connect(&client, &WifiClient::ssidChanged, &settling, qOverload<>(&QTimer::start));
    connect(&client, &WifiClient::addressChanged, &settling, qOverload<>(&QTimer::start));
    connect(&client, &WifiClient::ssidReported, this,
            [this](const QString &ssid) { disconnectWatch.hearName(ssid); });
    connect(&client, &WifiClient::addressReported, this, [this] { disconnectWatch.hearAddress(); });
    grace.setRemainingTime(graceTime);
    client.setPollInterval(pollInterval);
    onState();
    settling.start();
}

void Keeper::onState()
{
    const WifiClient::State before = state;
    state = client.state();
    switch (state) {
    case WifiClient::Unavailable:
        said.clear();
        sayOnce(DaemonAway);
        return;
    case WifiClient::Disconnected:
        disconnectWatch.lose();
        [[fallthrough]];
    case WifiClient::Connecting:
        current.clear();
        if (before == WifiClient::Connected || before == WifiClient::Unavailable)
            grace.setRemainingTime(graceTime);
        return;
    case WifiClient::Connected:
        return;
    }
}

void Keeper::onEvent(WifiClient::Event event)
{
    disconnectWatch.hear(event);
    switch (event) {
    case WifiClient::ConnectionRequested:
        onConnectionRequested();
        return;
    case WifiClient::ScanDelivered:
        onScanDelivered();
        return;
    case WifiClient::NetworkRemoved:
        onNetworkRemoved();
        return;
    case WifiClient::SupplicantExiting:
        needsRelink = true;
        return;
    case WifiClient::AssociationCompleted:
    case WifiClient::NotConnected:
    case WifiClient::ScanStarted:
    case WifiClient::TemporarilyDisabled:
    case WifiClient::WrongKey:
        return;
    }
}

void Keeper::onStatus(const WifiStatus &status)
{
    disconnectWatch.hear(status, client.isScanning(), remembered.isOfThisBoot());
    needsRelink |= status.supplicantState.isEmpty();
    if (needsRelink)
        relink();
    else
        consider();
}

/// One's own join is announced once; whoever else asks to join goes first.
void Keeper::onConnectionRequested()
{
    removal.stop();
    if (ownJoin) {
        ++ownRequests;
        if (ownRequests == 1 && ownJoin->stage() != WifiReply::Waiting)
            return;
        ownJoin->abort();
    }
    if (handsOff.hasExpired())
        said.clear();
    handsOff.setRemainingTime(handsOffTime);
    beginAnew();
    sayOnce(HandsOff);
}

void Keeper::onScanDelivered()
{
    QSet<QString> now;
    const auto found = candidates();
    for (const Network &network : found)
        now.insert(network.ssid);
    const bool hasNews = !(now - inSight).isEmpty();
    inSight = now;
    seenFresh.setRemainingTime(freshTime);
    if (hasNews)
        beginAnew();
    consider();
}

/// Names no network. A join that is on its way removes what it replaces, or what has failed.
void Keeper::onNetworkRemoved()
{
    if (ownJoin || removal.isActive())
        return;
    joinedAtRemoval = current;
    removal.start();
}

/// Networks that can be joined without anything stored: nothing would tell later that they are
/// gone.
void Keeper::noteRemoved()
{
    auto *reply = client.status();
    connect(reply, &WifiReply::finished, this, [this, reply] {
        if (reply->error() || reply->value().supplicantState.isEmpty())
            return;
        const bool isLost = client.ssid() != joinedAtRemoval;
        const bool isClear = handsOff.hasExpired() && (!isLost || joinedAtRemoval.isEmpty());
        const auto networks = remembered.all();
        for (const Network &network : networks) {
            const bool isGone = network.ssid == joinedAtRemoval ? isLost : isClear;
            if (network.security != Security::Wpa && isGone)
                forget(network.ssid);
        }
    });
}

/// With an address: a wrong WEP key shows only as one that never comes.
void Keeper::noteJoined()
{
    const QString ssid = client.ssid();
    if (ssid.isEmpty() || ssid == current)
        return;
    auto *reply = client.status();
    connect(reply, &WifiReply::finished, this, [this, reply, ssid] {
        if (reply->error() || client.ssid() != ssid || client.address().isEmpty() ||
            current == ssid)
            return;
        current = ssid;
        beginAnew();
        said.clear();
        const Security security = securityOf(reply->value());
        // A name that is no text cannot be asked for.
        if (security != Security::Unsupported && !ssid.contains(QChar::ReplacementCharacter)) {
            if (!remembered.contains(ssid))
                say(Remembered, ssid);
            reportProblem(remembered.note(ssid, security));
        }
        say(Online, ssid, reply->value().address);
    });
}

void Keeper::forget(const QString &ssid)
{
    say(Forgotten, ssid);
    reportProblem(remembered.forget(ssid));
}

void Keeper::reportProblem(const QString &problem)
{
    if (!problem.isEmpty())
        say(StateProblem, {}, problem);
}

/// What the request has the daemon say is heard before its end.
template<typename Reply>
Reply *Keeper::begin(Reply *reply)
{
    request = reply;
    connect(reply, &WifiReply::finished, this, [this] { request.clear(); });
    return reply;
}

/// Also when the daemon has found its supplicant by itself: it has not told then what is joined,
/// nor asked for an address.
void Keeper::relink()
{
    if (request)
        return;
    sayOnce(Relinking);
    auto *reply = begin(client.relink());
    connect(reply, &WifiReply::finished, this, [this, reply] {
        if (reply->error())
            return;
        needsRelink = false;
        grace.setRemainingTime(graceTime);
        said.clear();
        say(Relinked);
    });
}

bool Keeper::mayAct()
{
    if (request || needsRelink || state == WifiClient::Connected ||
        state == WifiClient::Unavailable || !grace.hasExpired() || !handsOff.hasExpired())
        return false;
    sayOnce(disconnectWatch.isLeft() ? Left : Offline);
    return !disconnectWatch.isLeft();
}

void Keeper::consider()
{
    if (!mayAct())
        return;
    if (!seenFresh.hasExpired()) {
        choose();
    } else if (nextLook.hasExpired()) {
        nextLook.setRemainingTime(lookInterval);
        connect(begin(client.scan()), &WifiReply::finished, this, &Keeper::consider);
    }
}

/// Not while the supplicant itself is about to get somewhere.
void Keeper::choose()
{
    if (!nextJoin.hasExpired())
        return;
    if (candidates().isEmpty()) {
        sayOnce(NothingInSight);
        return;
    }
    auto *reply = begin(client.status());
    connect(reply, &WifiReply::finished, this, [this, reply] {
        const auto networks = candidates();
        if (!reply->error() && !isAssociating(reply->value().supplicantState) && mayAct() &&
            !networks.isEmpty())
            join(networks.constFirst());
    });
}

void Keeper::join(const Network &network)
{
    JoinSettings settings;
    settings.ssid = network.ssid;
    settings.security = network.security;
    say(Joining, network.ssid);
    auto *reply = begin(client.connectTo(settings));
    ownJoin = reply;
    ownRequests = 0;
    connect(reply, &WifiReply::finished, this, [this, reply, ssid = network.ssid] {
        ownJoin.clear();
        joinEnded(ssid, *reply);
    });
}

void Keeper::joinEnded(const QString &ssid, const WifiReply &reply)
{
    const WifiReply::Error error = reply.error();
    // What was joined is said when it is seen, which may be without the address that was waited
    // for.
    if (error == WifiReply::NoError || error == WifiReply::Aborted ||
        error == WifiReply::NoDaemon || ssid == current)
        return;
    if (error == WifiReply::NotFound) {
        forget(ssid);
        return;
    }
    tried.insert(ssid);
    if (tried.contains(inSight))
        tried.clear();
    nextJoin.setRemainingTime(pause);
    say(JoinFailed, ssid,
        QStringLiteral("%1; the next try in %2 s")
            .arg(reply.errorText())
            .arg(static_cast<qint64>(pause.count())));
    pause = std::min<std::chrono::seconds>(2 * pause, longestPause);
}

/// No further pause is due, and nothing was tried.
void Keeper::beginAnew()
{
    pause = shortestPause;
    nextJoin = QDeadlineTimer();
    tried.clear();
}

QVector<Keeper::Network> Keeper::candidates() const
{
    return candidatesOf(remembered.all(), *client.networks(), tried);
}

void Keeper::sayOnce(Decision decision)
{
    if (said.contains(decision))
        return;
    said.insert(decision);
    say(decision);
}

void Keeper::say(Decision decision, const QString &ssid, const QString &detail)
{
    if (decision == Online && ssid == lastOnline) // it was away for a moment
        return;
    lastOnline = decision == Online ? ssid : QString();
    emit decided(decision, ssid, detail);
}
