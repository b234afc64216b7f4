// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "attempt.h"

#include "ssid.h"

#include <QTimer>

#include <chrono>
#include <utility>

namespace BxWifi
{
namespace
{
using namespace std::chrono_literals;

// The daemon refreshes the address 600 ms after it has said that it is connected, and answers
// nothing during the refresh. What it answers to a question asked later is the new address.
constexpr auto addressDelay = 800ms;
// A join in two steps connects twice, and the first refresh may have come to nothing by that.
constexpr auto secondAddressDelay = 5s;
// What is joined as it is stored shows by its state alone whether it can be joined at all.
constexpr auto watchInterval = 2s;
} // namespace

Attempt::Attempt(DaemonLink &daemon, JoinPlan wanted, Failures taken, Handlers told)
    : link(daemon), plan(std::move(wanted)), believed(taken), handlers(std::move(told))
{
}

void Attempt::start()
{
    handlers.stage(WifiReply::Asking);
    next({});
}

void Attempt::stop()
{
    context.reset();
}

void Attempt::next(const Answer &answer)
{
    if (answer.error != WifiReply::NoError) {
        fail(answer.error, answer.errorText);
    } else if (plan.calls.isEmpty()) {
        follow();
    } else if (const DaemonCall call = plan.calls.takeFirst(); call.isRemoval()) {
        remove(call);
    } else {
        isStoring = true;
        link.call(call, context.get(), [this](const Answer &reached) { next(reached); });
    }
}

void Attempt::remove(const DaemonCall &call)
{
    link.removeAll(call, context.get(), [this](const Answer &answer) {
        wasStored |= answer.removed && !isStoring; // else it is what this attempt stored itself
        next(answer);
    });
}

// Only from here on: what was reported earlier was about the network before.
void Attempt::follow()
{
    handlers.stage(WifiReply::Associating);
    QObject::connect(&link, &DaemonLink::statusMessage, context.get(),
                     [this](Status::Code status) { onStatus(status); });
    // Two questions, between which the daemon passes on what was waiting.
    link.askStatus(context.get(), [this](const Answer &answer) {
        if (answer.isWithoutSupplicant())
            fail(WifiReply::NoSupplicant, DaemonLink::noSupplicant());
        else
            failures = believed;
    });
    if (plan.takesStored)
        QTimer::singleShot(watchInterval, context.get(), [this] { watch(); });
}

void Attempt::watch()
{
    if (isConfirming)
        return;
    link.askStatus(context.get(), [this](const Answer &answer) {
        const WifiStatus status = answer.status.value_or(WifiStatus());
        // The supplicant tries nothing: the one network that is enabled has no key.
        if (status.supplicantState == QLatin1String("INACTIVE"))
            fail(WifiReply::NotFound, tr("nothing is stored for this network to join it with"));
        else if (!isConfirming && isJoined(status))
            takeAddress();
        else
            QTimer::singleShot(watchInterval, context.get(), [this] { watch(); });
    });
}

bool Attempt::isJoined(const WifiStatus &status) const
{
    return status.connected && reportedSsid(status.ssid) == reportedSsid(plan.ssid);
}

void Attempt::onStatus(Status::Code status)
{
    switch (status) {
    case Status::Connected:
        if (!isConfirming)
            QTimer::singleShot(addressDelay, context.get(), [this] { confirm(); });
        isConfirming = true;
        return;
    case Status::WrongKey:
        if (failures == Believed)
            fail(WifiReply::WrongKey, tr("wrong passphrase or key"));
        return;
    case Status::TemporarilyDisabled:
        if (failures == Believed)
            failDisabled();
        return;
    case Status::SupplicantExiting:
        fail(WifiReply::NoSupplicant, tr("the supplicant has ended"));
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
void Attempt::failDisabled()
{
    if (plan.security == Security::Enterprise)
        fail(WifiReply::WrongKey, tr("identity or password refused"));
    else if (plan.security == Security::Wpa3)
        fail(WifiReply::WrongKey, tr("refused; most likely a wrong passphrase"));
    else
        fail(WifiReply::TemporarilyDisabled, tr("the supplicant gave the network up for now"));
}

/// The supplicant names the network from the moment that it associates, and may have joined
/// another one on the way.
void Attempt::confirm()
{
    link.askStatus(context.get(), [this](const Answer &answer) {
        if (answer.error != WifiReply::NoError)
            fail(answer.error, answer.errorText);
        else if (isJoined(answer.status.value_or(WifiStatus())))
            takeAddress();
        else
            isConfirming = false;
    });
}

void Attempt::takeAddress()
{
    isConfirming = true;
    handlers.stage(WifiReply::Addressing);
    QObject::connect(&link, &DaemonLink::addressReported, context.get(),
                     [this](const QString &address) {
                         if (!address.isEmpty())
                             finish({WifiReply::NoError, address});
                     });
    link.call(DaemonCall::address(), context.get(), [this](const Answer &answer) {
        if (answer.error != WifiReply::NoError)
            fail(answer.error, answer.errorText);
        else
            QTimer::singleShot(secondAddressDelay, context.get(), [this] { takeSecondAddress(); });
    });
}

/// Answered when a second refresh is over, if there is one.
void Attempt::takeSecondAddress()
{
    link.call(DaemonCall::address(), context.get(), [this](const Answer &) {
        fail(WifiReply::NoAddress,
             plan.security == Security::Wep
                 ? tr("joined, but no address came; a wrong WEP key looks like that")
                 : tr("joined, but no address came"));
    });
}

void Attempt::fail(WifiReply::Error error, const QString &text)
{
    finish({error, text});
}

void Attempt::finish(const Result &result)
{
    stop();
    handlers.done(result); // which may delete this
}
} // namespace BxWifi
