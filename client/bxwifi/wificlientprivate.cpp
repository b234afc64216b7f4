// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "wificlientprivate.h"

#include "join.h"
#include "ssid.h"

namespace BxWifi
{
namespace
{
constexpr int scanTimeout_ms = 20000;
} // namespace

WifiClientPrivate::WifiClientPrivate(WifiClient &owner) : client(owner), link(this), model(this)
{
    scanTimer.setSingleShot(true);
    scanTimer.setInterval(scanTimeout_ms);
    connect(&scanTimer, &QTimer::timeout, this, [this] { endScan(false); });

    connect(&link, &DaemonLink::availableChanged, this, &WifiClientPrivate::onAvailable);
    connect(&link, &DaemonLink::statusMessage, this, &WifiClientPrivate::onStatusMessage);
    connect(&link, &DaemonLink::statusReported, this, &WifiClientPrivate::onStatus);
    connect(&link, &DaemonLink::networkSeen, this, &WifiClientPrivate::onNetworkSeen);
    connect(&link, &DaemonLink::ssidReported, this, &WifiClientPrivate::setSsid);
    connect(&link, &DaemonLink::addressReported, this, &WifiClientPrivate::setAddress);

    connect(&link, &DaemonLink::networkSeen, &client, &WifiClient::networkSeen);
    connect(&link, &DaemonLink::accessPointLost, &client, &WifiClient::accessPointLost);
    connect(&link, &DaemonLink::ssidReported, &client, &WifiClient::ssidReported);
    connect(&link, &DaemonLink::addressReported, &client, &WifiClient::addressReported);
    connect(&link, &DaemonLink::statusReported, &client, &WifiClient::statusReported);
    connect(&link, &DaemonLink::wiredReported, &client, &WifiClient::wiredReported);
    connect(&link, &DaemonLink::dhcpReported, &client, &WifiClient::dhcpReported);
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

void WifiClientPrivate::scan(WifiReply *reply, const std::function<void()> &done)
{
    // From now on, as a quick supplicant delivers before the call's reply is seen; and once, as it
    // scans again by itself.
    auto *wait = new QObject(reply);
    connect(this, &WifiClientPrivate::scanEnded, wait, [=](bool delivered) {
        wait->deleteLater();
        disconnect(wait);
        if (delivered)
            done();
        else
            reply->fail(WifiReply::TimedOut, QStringLiteral("no scan results"));
    });
    ask(DaemonCall::scan(), reply, [=](const Answer &) {
        // Without a supplicant nothing would come.
        ask(DaemonCall::fullStatus(), reply, [=](const Answer &answer) {
            if (!answer.isWithoutSupplicant())
                return;
            reply->fail(WifiReply::NoSupplicant, noSupplicant());
            endScan(false);
        });
    });
}

void WifiClientPrivate::join(AddressReply *reply, const JoinSettings &settings)
{
    if (!refuse(reply, settings.problem()))
        (new Join(link, settings, *reply))->start();
}

/// Joins in the way that the last scan, or failing that a new one, says.
void WifiClientPrivate::joinAnnounced(AddressReply *reply, const JoinSettings &settings)
{
    const auto joinFound = [=](const WifiNetwork &network) {
        JoinSettings known = settings;
        known.security = network.security();
        join(reply, known);
    };
    const WifiNetwork seen = model.network(settings.ssid);
    if (!seen.bssid.isEmpty()) {
        joinFound(seen);
        return;
    }
    reply->setStage(WifiReply::Scanning);
    scan(reply, [=] {
        const WifiNetwork found = model.network(settings.ssid);
        if (found.bssid.isEmpty())
            reply->fail(WifiReply::NotFound, QStringLiteral("no such network in sight"));
        else
            joinFound(found);
    });
}

/// Removes one network after the other, as there may be several by that name.
void WifiClientPrivate::forget(WifiReply *reply, const QString &name, bool hasRemoved)
{
    ask(DaemonCall::remove(printedSsid(name)), reply, [=](const Answer &answer) {
        if (answer.removed) {
            model.setForgotten(name);
            forget(reply, name, true);
        } else if (hasRemoved) {
            reply->finish({});
        } else {
            reply->fail(WifiReply::NotFound, QStringLiteral("no network is stored by that name"));
        }
    });
}

bool WifiClientPrivate::refuse(WifiReply *reply, const QString &problem)
{
    if (problem.isEmpty())
        return false;
    QTimer::singleShot(0, reply, [=] { reply->fail(WifiReply::InvalidRequest, problem); });
    return true;
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
        reply->fail(WifiReply::NoDaemon, QStringLiteral("the daemon bxwifid went away"));
    endScan(false);
    setState(WifiClient::Unavailable);
    setSsid({});
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
        break;
    case Status::NotConnected:
    case Status::SupplicantExiting:
    case Status::TemporarilyDisabled:
    case Status::WrongKey:
        setState(WifiClient::Disconnected);
        break;
    case Status::ScanStarted:
        scanTimer.start();
        emit client.scanningChanged();
        break;
    case Status::ScanDelivered:
        endScan(true);
        break;
    case Status::NetworkRemoved:
        break;
    }
    emit client.happened(static_cast<WifiClient::Event>(status));
}

void WifiClientPrivate::onStatus(const WifiStatus &status)
{
    if (status.connected)
        setState(WifiClient::Connected);
    else if (state == WifiClient::Connected)
        setState(WifiClient::Disconnected);
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
    emit client.scanningChanged();
    emit scanEnded(delivered);
}

void WifiClientPrivate::setState(WifiClient::State next)
{
    if (state == next)
        return;
    state = next;
    model.setJoined(state == WifiClient::Connected ? ssid : QString());
    emit client.stateChanged();
}

void WifiClientPrivate::setSsid(const QString &next)
{
    if (ssid == next)
        return;
    ssid = next;
    model.setJoined(state == WifiClient::Connected ? ssid : QString());
    emit client.ssidChanged();
}

void WifiClientPrivate::setAddress(const QString &next)
{
    if (address == next)
        return;
    address = next;
    emit client.addressChanged();
}
} // namespace BxWifi
