// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "wificlient.h"

#include "wificlientprivate.h"

namespace BxWifi
{
namespace
{
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
} // namespace

WifiClient::WifiClient(QObject *parent) : QObject(parent)
{
    // The names by which QML finds the types of what the methods take and return.
    qRegisterMetaType<Security>("BxWifi::Security");
    qRegisterMetaType<ScanReply *>("BxWifi::ScanReply*");
    qRegisterMetaType<AddressReply *>("BxWifi::AddressReply*");
    qRegisterMetaType<StatusReply *>("BxWifi::StatusReply*");
    qRegisterMetaType<WiredReply *>("BxWifi::WiredReply*");
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

std::chrono::milliseconds WifiClient::pollInterval() const
{
    return std::chrono::milliseconds(pollInterval_ms());
}

void WifiClient::setPollInterval(std::chrono::milliseconds interval)
{
    setPollInterval_ms(static_cast<int>(interval.count()));
}

int WifiClient::pollInterval_ms() const
{
    return d->pollTimer.isActive() ? d->pollTimer.interval() : 0;
}

void WifiClient::setPollInterval_ms(int interval)
{
    if (interval == pollInterval_ms())
        return;
    if (interval > 0)
        d->pollTimer.start(interval);
    else
        d->pollTimer.stop();
    emit pollIntervalChanged();
}

ScanReply *WifiClient::scan()
{
    auto *reply = new ScanReply(this);
    reply->setStage(WifiReply::Scanning);
    d->scan(reply, [=](const Answer &answer) {
        if (answer.error == WifiReply::NoError)
            reply->finish(QVariant::fromValue(d->accessPoints));
        else
            reply->fail(answer.error, answer.errorText);
    });
    return reply;
}

AddressReply *WifiClient::connectTo(const JoinSettings &settings)
{
    auto *reply = new AddressReply(this);
    d->join(reply, settings);
    return reply;
}

AddressReply *WifiClient::connectTo(const QString &ssid, const QString &secret,
                                    const QString &identity)
{
    return connectTo(ssid, secret, identity, Security::Automatic);
}

AddressReply *WifiClient::connectTo(const QString &ssid, const QString &secret,
                                    const QString &identity, Security security)
{
    JoinSettings settings;
    settings.ssid = ssid;
    settings.security = security;
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
    d->ask(DaemonCall::disconnect(), reply,
           [=](const Answer &) { d->requireSupplicant(reply, [=] { reply->finish({}); }); });
    return reply;
}

WifiReply *WifiClient::forget(const QString &ssid)
{
    auto *reply = new WifiReply(this);
    d->forget(reply, ssid);
    return reply;
}

StatusReply *WifiClient::status()
{
    auto *reply = new StatusReply(this);
    d->link.askStatus(reply, [=](const Answer &answer) {
        if (answer.error == WifiReply::NoError)
            reply->finish(QVariant::fromValue(*answer.status));
        else
            reply->fail(answer.error, answer.errorText);
    });
    return reply;
}

AddressReply *WifiClient::wirelessAddress()
{
    auto *reply = new AddressReply(this);
    d->ask(DaemonCall::address(), reply, [=](const Answer &answer) {
        const QString address = answer.address.value_or(QString());
        if (address.isEmpty())
            d->requireSupplicant(reply, [=] { reply->finish(QString()); });
        else
            reply->finish(address);
    });
    return reply;
}

WifiReply *WifiClient::relink()
{
    auto *reply = new WifiReply(this);
    d->ask(DaemonCall::relink(), reply, [=](const Answer &) {
        QTimer::singleShot(relinkDelay_ms, reply,
                           [=] { d->requireSupplicant(reply, [=] { reply->finish({}); }); });
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
