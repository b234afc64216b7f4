// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "wificlientprivate.h"

#include "join.h"
#include "ssid.h"

#include <algorithm>

namespace BxWifi
{
namespace
{
constexpr std::chrono::seconds scanTimeout{20};
// What another client is given to join; the daemon does not report the end of each join.
constexpr std::chrono::seconds connectingTimeout{60};

// The words for what the daemon says are those for what the client announces.
template<int event, int code>
constexpr bool areSame = event == code;
static_assert(areSame<WifiClient::AssociationCompleted, Status::Connected>);
static_assert(areSame<WifiClient::NotConnected, Status::NotConnected>);
static_assert(areSame<WifiClient::ScanStarted, Status::ScanStarted>);
static_assert(areSame<WifiClient::ScanDelivered, Status::ScanDelivered>);
static_assert(areSame<WifiClient::SupplicantExiting, Status::SupplicantExiting>);
static_assert(areSame<WifiClient::ConnectionRequested, Status::ConnectionRequested>);
static_assert(areSame<WifiClient::TemporarilyDisabled, Status::TemporarilyDisabled>);
static_assert(areSame<WifiClient::WrongKey, Status::WrongKey>);
static_assert(areSame<WifiClient::NetworkRemoved, Status::NetworkRemoved>);
} // namespace

WifiClientPrivate::WifiClientPrivate(WifiClient &owner) : client(owner), link(this), model(this)
{
    scanTimer.setSingleShot(true);
    scanTimer.setInterval(scanTimeout);
    connect(&scanTimer, &QTimer::timeout, this, [this] { endScan(false); });
    connectingTimer.setSingleShot(true);
    connectingTimer.setInterval(connectingTimeout);
    connect(&connectingTimer, &QTimer::timeout, this, [this] { poll(); });
    connect(&pollTimer, &QTimer::timeout, this, [this] { poll(); });

    connect(&link, &DaemonLink::availableChanged, this, &WifiClientPrivate::onAvailable);
    connect(&link, &DaemonLink::statusMessage, this, &WifiClientPrivate::onStatusMessage);
    connect(&link, &DaemonLink::statusReported, this, &WifiClientPrivate::onStatus);
    connect(&link, &DaemonLink::networkSeen, this, &WifiClientPrivate::onNetworkSeen);
    connect(&link, &DaemonLink::ssidReported, this, &WifiClientPrivate::setSsid);
    connect(&link, &DaemonLink::addressReported, this, &WifiClientPrivate::setAddress);

    // Told from the event loop, so that whoever hears may delete the client.
    const auto pass = [this](auto said, auto told) {
        connect(&link, said, &client, told, Qt::QueuedConnection);
    };
    pass(&DaemonLink::networkSeen, &WifiClient::networkSeen);
    pass(&DaemonLink::accessPointLost, &WifiClient::accessPointLost);
    pass(&DaemonLink::ssidReported, &WifiClient::ssidReported);
    pass(&DaemonLink::addressReported, &WifiClient::addressReported);
    pass(&DaemonLink::statusReported, &WifiClient::statusReported);
    pass(&DaemonLink::wiredReported, &WifiClient::wiredReported);
    pass(&DaemonLink::dhcpReported, &WifiClient::dhcpReported);
}

/// The same for what the client finds itself, in the order in which it was found.
template<typename Tell>
void WifiClientPrivate::later(Tell tell)
{
    QMetaObject::invokeMethod(&client, tell, Qt::QueuedConnection);
}

void WifiClientPrivate::ask(const DaemonCall &call, WifiReply *reply, const AnswerHandler &done)
{
    link.call(call, reply, [reply, done](const Answer &answer) {
        if (answer.error == WifiReply::NoError)
            done(answer);
        else
            reply->fail(answer.error, answer.errorText);
    });
}

void WifiClientPrivate::requireSupplicant(WifiReply *reply, const std::function<void()> &done)
{
    ask(DaemonCall::fullStatus(), reply, [=](const Answer &answer) {
        if (answer.isWithoutSupplicant())
            reply->fail(WifiReply::NoSupplicant, DaemonLink::noSupplicant());
        else
            done();
    });
}

void WifiClientPrivate::scan(QObject *context, const AnswerHandler &done)
{
    // Ends with the first of: results, their failing to come, no supplicant that would bring any.
    auto *wait = new QObject(context);
    const auto end = [=](WifiReply::Error error, const QString &text) {
        wait->deleteLater();
        disconnect(wait);
        Answer answer;
        answer.error = error;
        answer.errorText = text;
        done(answer);
    };
    // From now on, as a quick supplicant delivers before the call's reply is seen; and once, as it
    // scans again by itself.
    connect(this, &WifiClientPrivate::scanEnded, wait, [=](bool delivered) {
        if (delivered)
            end(WifiReply::NoError, {});
        else
            end(WifiReply::TimedOut, tr("no scan results"));
    });
    link.call(DaemonCall::scan(), wait, [=](const Answer &called) {
        if (called.error != WifiReply::NoError) {
            end(called.error, called.errorText);
            return;
        }
        link.call(DaemonCall::fullStatus(), wait, [=](const Answer &answer) {
            if (!answer.isWithoutSupplicant())
                return;
            end(WifiReply::NoSupplicant, DaemonLink::noSupplicant());
            endScan(false);
        });
    });
}

void WifiClientPrivate::join(AddressReply *reply, const JoinSettings &settings)
{
    if (refuse(reply, settings.problem()))
        return;
    const QPointer<Join> former = currentJoin;
    currentJoin = new Join(*this, settings, *reply);
    if (former)
        currentJoin->startAfter(former->giveWay());
    else
        currentJoin->start();
}

void WifiClientPrivate::forget(WifiReply *reply, const QString &name)
{
    link.removeAll(DaemonCall::remove(printedSsid(name)), reply, [=](const Answer &answer) {
        if (answer.removed)
            model.setForgotten(name);
        if (answer.error != WifiReply::NoError)
            reply->fail(answer.error, answer.errorText);
        else if (answer.removed)
            reply->finish({});
        else
            requireSupplicant(reply, [=] {
                reply->fail(WifiReply::NotFound, tr("no network is stored by that name"));
            });
    });
}

bool WifiClientPrivate::refuse(WifiReply *reply, const QString &problem)
{
    if (problem.isEmpty())
        return false;
    QTimer::singleShot(0, reply, [=] { reply->fail(WifiReply::InvalidRequest, problem); });
    return true;
}

void WifiClientPrivate::beginJoining()
{
    setState(WifiClient::Connecting);
    connectingTimer.start(); // as its reply may be deleted
}

void WifiClientPrivate::endJoining()
{
    connectingTimer.stop();
}

bool WifiClientPrivate::isJoining() const
{
    return currentJoin && currentJoin->isTrying();
}

QString WifiClientPrivate::wholeName(const QString &reported) const
{
    QStringList names;
    if (joined)
        names << joined->ssid;
    for (int row = 0; row < model.rowCount(); ++row)
        names << model.index(row).data(NetworkModel::SsidRole).toString();
    const auto found = std::find_if(names.cbegin(), names.cend(), [&](const QString &name) {
        return reportedSsid(name) == reported;
    });
    return found == names.cend() ? reported : *found;
}

/// A daemon that is not there is not asked, as that would start it.
void WifiClientPrivate::poll()
{
    const auto replies = client.findChildren<WifiReply *>(QString(), Qt::FindDirectChildrenOnly);
    const bool isBusy = std::any_of(replies.begin(), replies.end(),
                                    [](const WifiReply *reply) { return !reply->isFinished(); });
    if (isBusy || isPolling || !link.reopen())
        return;
    isPolling = true;
    link.askStatus(this, [this](const Answer &) { isPolling = false; });
}

void WifiClientPrivate::onAvailable(bool available)
{
    if (available) {
        setState(WifiClient::Disconnected);
        client.status();
        return;
    }
    const auto replies = client.findChildren<WifiReply *>(QString(), Qt::FindDirectChildrenOnly);
    for (WifiReply *reply : replies)
        reply->fail(WifiReply::NoDaemon, tr("the daemon bxwifid went away"));
    if (currentJoin) // for its reply lives on while a handler runs
        currentJoin->end();
    endScan(false);
    setState(WifiClient::Unavailable);
    setAddress({});
}

void WifiClientPrivate::onStatusMessage(Status::Code status)
{
    switch (status) {
    case Status::Connected:
        setState(WifiClient::Connected);
        break;
    case Status::ConnectionRequested:
        setState(WifiClient::Connecting);
        connectingTimer.start();
        break;
    case Status::NotConnected:
    case Status::SupplicantExiting:
    case Status::TemporarilyDisabled:
    case Status::WrongKey:
        if (!isJoining())
            setState(WifiClient::Disconnected);
        break;
    case Status::ScanStarted:
        scanTimer.start();
        later([this] { emit client.scanningChanged(); });
        break;
    case Status::ScanDelivered:
        endScan(true);
        break;
    case Status::NetworkRemoved:
        break;
    }
    later([this, status] { emit client.happened(static_cast<WifiClient::Event>(status)); });
}

void WifiClientPrivate::onStatus(const WifiStatus &status)
{
    const bool isUnderway = isJoining() || connectingTimer.isActive();
    if (status.connected)
        setState(WifiClient::Connected);
    else if (!isUnderway || state == WifiClient::Connected)
        setState(isUnderway ? WifiClient::Connecting : WifiClient::Disconnected);
    setAddress(status.address);
}

void WifiClientPrivate::onNetworkSeen(const WifiNetwork &network)
{
    if (isNewScan)
        accessPoints.clear();
    isNewScan = false;
    accessPoints.append(network);
}

void WifiClientPrivate::endScan(bool delivered)
{
    scanTimer.stop();
    if (delivered) {
        if (isNewScan) // it found nothing
            accessPoints.clear();
        model.setAccessPoints(accessPoints);
    }
    isNewScan = true;
    later([this] { emit client.scanningChanged(); });
    emit scanEnded(delivered);
}

void WifiClientPrivate::setState(WifiClient::State next)
{
    if (state == next)
        return;
    state = next;
    if (state != WifiClient::Connecting)
        connectingTimer.stop();
    if (state != WifiClient::Connected)
        setSsid({});
    model.setJoined(ssid);
    later([this] { emit client.stateChanged(); });
}

/// The supplicant names a network from the moment that it tries to join it.
void WifiClientPrivate::setSsid(const QString &reported)
{
    const QString next = state == WifiClient::Connected ? wholeName(reported) : QString();
    if (ssid == next)
        return;
    ssid = next;
    model.setJoined(ssid);
    later([this] { emit client.ssidChanged(); });
}

void WifiClientPrivate::setAddress(const QString &next)
{
    if (address == next)
        return;
    address = next;
    later([this] { emit client.addressChanged(); });
}
} // namespace BxWifi
