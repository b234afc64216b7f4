// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "wificlient.h"

#include "daemonlink.h"
#include "join.h"
#include "ssid.h"

#include <QTimer>

namespace BxWifi
{
namespace
{
constexpr int scanTimeout_ms = 20000;
// The daemon rebuilds its link 100 ms after the call and says nothing about it.
constexpr int relinkDelay_ms = 500;

BXStatic recordOf(const WiredSettings &settings)
{
    BXStatic addressing;
    addressing.ipAddress = settings.address;
    addressing.gateway = settings.gateway;
    addressing.netmask = settings.netmask;
    return addressing;
}

template<typename Reply>
void registerReply(const char *name)
{
    qRegisterMetaType<Reply *>(name);
}
} // namespace

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
    ask(DaemonCall::scan(), reply, [=](const Answer &) {
        connect(this, &WifiClientPrivate::scanEnded, reply, [=](bool delivered) {
            if (delivered)
                done();
            else
                reply->fail(WifiReply::TimedOut, QStringLiteral("no scan results"));
        });
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

WifiClient::WifiClient(QObject *parent) : QObject(parent)
{
    registerReply<ScanReply>("BxWifi::ScanReply*");
    registerReply<AddressReply>("BxWifi::AddressReply*");
    registerReply<StatusReply>("BxWifi::StatusReply*");
    registerReply<WiredReply>("BxWifi::WiredReply*");
    d = std::make_unique<WifiClientPrivate>(*this);
    if (d->link.isAvailable()) {
        d->state = Disconnected;
        status();
    }
}

WifiClient::~WifiClient() = default;

WifiClient::State WifiClient::state() const
{
    return d->state;
}

QString WifiClient::ssid() const
{
    return d->ssid;
}

QString WifiClient::address() const
{
    return d->address;
}

bool WifiClient::isScanning() const
{
    return d->scanTimer.isActive();
}

NetworkModel *WifiClient::networks() const
{
    return &d->model;
}

ScanReply *WifiClient::scan()
{
    auto *reply = new ScanReply(this);
    reply->setStage(WifiReply::Scanning);
    d->scan(reply, [=] { reply->finish(QVariant::fromValue(d->accessPoints)); });
    return reply;
}

AddressReply *WifiClient::connectTo(const JoinSettings &settings)
{
    auto *reply = new AddressReply(this);
    if (settings.security == Security::Automatic && !settings.hidden)
        d->joinAnnounced(reply, settings);
    else
        d->join(reply, settings);
    return reply;
}

AddressReply *WifiClient::connectTo(const QString &ssid, const QString &secret,
                                    const QString &identity)
{
    JoinSettings settings;
    settings.ssid = ssid;
    settings.secret = secret;
    settings.identity = identity;
    return connectTo(settings);
}

AddressReply *WifiClient::connectToHidden(const QString &ssid, Security security,
                                          const QString &secret, const QString &identity)
{
    JoinSettings settings;
    settings.ssid = ssid;
    settings.security = security;
    settings.secret = secret;
    settings.identity = identity;
    settings.hidden = true;
    return connectTo(settings);
}

WifiReply *WifiClient::disconnectFromNetwork()
{
    auto *reply = new WifiReply(this);
    d->ask(DaemonCall::disconnect(), reply, [=](const Answer &) { reply->finish({}); });
    return reply;
}

WifiReply *WifiClient::forget(const QString &ssid)
{
    auto *reply = new WifiReply(this);
    d->forget(reply, ssid, false);
    return reply;
}

StatusReply *WifiClient::status()
{
    auto *reply = new StatusReply(this);
    d->ask(DaemonCall::fullStatus(), reply, [=](const Answer &full) {
        d->ask(DaemonCall::ssid(), reply, [=](const Answer &name) {
            WifiStatus status = full.status.value_or(WifiStatus());
            status.ssid = name.ssid.value_or(QString()); // whole; the status ends it at a "="
            reply->finish(QVariant::fromValue(status));
        });
    });
    return reply;
}

AddressReply *WifiClient::wirelessAddress()
{
    auto *reply = new AddressReply(this);
    d->ask(DaemonCall::address(), reply,
           [=](const Answer &answer) { reply->finish(answer.address.value_or(QString())); });
    return reply;
}

WifiReply *WifiClient::relink()
{
    auto *reply = new WifiReply(this);
    d->ask(DaemonCall::relink(), reply, [=](const Answer &) {
        QTimer::singleShot(relinkDelay_ms, reply, [=] {
            d->ask(DaemonCall::fullStatus(), reply, [=](const Answer &answer) {
                if (answer.isWithoutSupplicant())
                    reply->fail(WifiReply::NoSupplicant, noSupplicant());
                else
                    reply->finish({});
            });
        });
    });
    return reply;
}

WiredReply *WifiClient::wiredSettings()
{
    auto *reply = new WiredReply(this);
    d->ask(DaemonCall::wiredStored(), reply, [=](const Answer &stored) {
        d->ask(DaemonCall::wiredLive(), reply, [=](const Answer &live) {
            WiredSettings settings = stored.wired.value_or(WiredSettings());
            settings.dhcp = live.dhcp.value_or(false);
            reply->finish(QVariant::fromValue(settings));
        });
    });
    return reply;
}

WiredReply *WifiClient::wiredStatus()
{
    auto *reply = new WiredReply(this);
    d->ask(DaemonCall::wiredLive(), reply, [=](const Answer &answer) {
        WiredSettings settings = answer.wired.value_or(WiredSettings());
        settings.dhcp = answer.dhcp.value_or(false);
        reply->finish(QVariant::fromValue(settings));
    });
    return reply;
}

WifiReply *WifiClient::setWiredAddress(const QString &address, const QString &gateway,
                                       const QString &netmask)
{
    auto *reply = new WifiReply(this);
    WiredSettings settings;
    settings.address = address;
    settings.gateway = gateway;
    settings.netmask = netmask;
    if (!d->refuse(reply, settings.problem()))
        d->ask(DaemonCall::setWired(recordOf(settings)), reply,
               [=](const Answer &) { reply->finish({}); });
    return reply;
}

WifiReply *WifiClient::setWiredDhcp(bool dhcp)
{
    auto *reply = new WifiReply(this);
    d->ask(DaemonCall::setDhcp(dhcp), reply, [=](const Answer &) { reply->finish({}); });
    return reply;
}
} // namespace BxWifi

#include "wificlient.moc"
