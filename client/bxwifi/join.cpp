// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "join.h"

#include <QTimer>

#include <utility>

namespace BxWifi
{
namespace
{
// The daemon refreshes the address 600 ms after it has said that it is connected, and answers
// nothing during the refresh. What it answers to a question asked later is the new address.
constexpr int addressDelay_ms = 800;

/// The daemon takes every "ssid=" out of the name that it reports.
QString reportedName(QString ssid)
{
    return ssid.remove(QLatin1String("ssid="));
}
} // namespace

Join::Join(DaemonLink &daemon, JoinSettings wanted, WifiReply &pending)
    : QObject(&pending), link(daemon), settings(std::move(wanted)), reply(pending)
{
}

void Join::start()
{
    calls = joinPlan(settings);
    reply.setStage(WifiReply::Asking);
    QTimer::singleShot(settings.timeout, this, [this] { timeOut(); });
    next({});
}

void Join::next(const Answer &answer)
{
    if (answer.error != WifiReply::NoError) {
        fail(answer);
    } else if (calls.isEmpty()) {
        follow();
    } else {
        const DaemonCall call = calls.takeFirst();
        link.call(call, this, [this, call](const Answer &reached) {
            if (call.isRemoval() && reached.removed)
                calls.prepend(call); // there may be more by that name
            next(reached);
        });
    }
}

// Only from here on: what was reported earlier was about the network before.
void Join::follow()
{
    reply.setStage(WifiReply::Associating);
    connect(&link, &DaemonLink::statusMessage, this, &Join::onStatus);
    link.call(DaemonCall::fullStatus(), this, [this](const Answer &answer) {
        if (answer.isWithoutSupplicant())
            reply.fail(WifiReply::NoSupplicant, noSupplicant());
    });
}

void Join::onStatus(Status::Code status)
{
    switch (status) {
    case Status::Connected:
        if (!isConfirming)
            QTimer::singleShot(addressDelay_ms, this, [this] { confirm(); });
        isConfirming = true;
        return;
    case Status::WrongKey:
        reply.fail(WifiReply::WrongKey, QStringLiteral("wrong passphrase or key"));
        return;
    case Status::TemporarilyDisabled:
        failDisabled();
        return;
    case Status::SupplicantExiting:
        reply.fail(WifiReply::NoSupplicant, QStringLiteral("the supplicant has ended"));
        return;
    case Status::NotConnected:
    case Status::ScanStarted:
    case Status::ScanDelivered:
    case Status::ConnectionRequested:
    case Status::NetworkRemoved:
        return;
    }
}

/// Only WPA and WPA2 tell a wrong key from other reasons.
void Join::failDisabled()
{
    if (settings.security == Security::Enterprise)
        reply.fail(WifiReply::WrongKey, QStringLiteral("identity or password refused"));
    else if (settings.security == Security::Wpa3)
        reply.fail(WifiReply::WrongKey, QStringLiteral("refused; most likely a wrong passphrase"));
    else
        reply.fail(WifiReply::TemporarilyDisabled,
                   QStringLiteral("the supplicant gave the network up for now"));
}

void Join::confirm()
{
    link.call(DaemonCall::ssid(), this, [this](const Answer &answer) {
        if (answer.error != WifiReply::NoError) {
            fail(answer);
        } else if (answer.ssid != reportedName(settings.ssid)) {
            isConfirming = false; // another network, joined on the way
        } else {
            reply.setStage(WifiReply::Addressing);
            link.call(DaemonCall::address(), this,
                      [this](const Answer &last) { takeAddress(last); });
        }
    });
}

void Join::takeAddress(const Answer &answer)
{
    const QString address = answer.address.value_or(QString());
    if (answer.error != WifiReply::NoError)
        fail(answer);
    else if (!address.isEmpty())
        reply.finish(address);
    else if (settings.security == Security::Wep)
        reply.fail(WifiReply::NoAddress,
                   QStringLiteral("joined, but no address came; a wrong WEP key looks like that"));
    else
        reply.fail(WifiReply::NoAddress, QStringLiteral("joined, but no address came"));
}

void Join::fail(const Answer &answer)
{
    reply.fail(answer.error, answer.errorText);
}

void Join::timeOut()
{
    QString text = QStringLiteral("not joined within %1 s").arg(settings.timeout.count());
    if (settings.security == Security::Wpa3)
        text += QStringLiteral("; the passphrase may be wrong, or the supplicant's configuration "
                               "file may lack the line pmf=1, which WPA3 needs");
    reply.fail(WifiReply::TimedOut, text);
}
} // namespace BxWifi
