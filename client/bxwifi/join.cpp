// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "join.h"

#include "ssid.h"
#include "wificlientprivate.h"

#include <utility>

namespace BxWifi
{
namespace
{
constexpr std::chrono::seconds returnTimeout{30};
} // namespace

Join::Join(WifiClientPrivate &owner, JoinSettings wanted, WifiReply &pending)
    : QObject(&pending), client(owner), settings(std::move(wanted)), reply(pending)
{
    limit.setSingleShot(true);
    limit.setInterval(settings.timeout);
    connect(&limit, &QTimer::timeout, this, [this] { giveUp(WifiReply::TimedOut, timeOutText()); });
    limitBack.setSingleShot(true);
    limitBack.setInterval(returnTimeout);
    connect(&limitBack, &QTimer::timeout, this, [this] { settle(); });
    reply.setAbortHandler([this] { abort(); });
}

void Join::start()
{
    limit.start();
    client.link.askStatus(phase.get(), [this](const Answer &answer) { note(answer); });
}

void Join::startAfter(const Heritage &heritage)
{
    if (!heritage.before) {
        start();
        return;
    }
    limit.start();
    before = heritage.before;
    isDisturbed = heritage.isDisturbed;
    if (heritage.leftover.isEmpty() || heritage.leftover == printedSsid(settings.ssid))
        findSecurity();
    else
        client.link.removeAll(DaemonCall::remove(heritage.leftover), phase.get(),
                              [this](const Answer &) { findSecurity(); });
}

Join::Heritage Join::giveWay()
{
    const bool isReturning = failure.error != WifiReply::NoError;
    failure = {WifiReply::Superseded, tr("another network was asked for meanwhile")};
    const bool leaves = !isReturning && isToBeRemoved();
    Heritage heritage{before, leaves ? addedName() : QString(), isDisturbed};
    reply.fail(failure.error, failure.text);
    end();
    return heritage;
}

void Join::note(const Answer &answer)
{
    if (answer.error != WifiReply::NoError) {
        giveUp(answer.error, answer.errorText);
    } else if (answer.isWithoutSupplicant()) {
        giveUp(WifiReply::NoSupplicant, DaemonLink::noSupplicant());
    } else {
        before = answer.status->connected ? *answer.status : WifiStatus();
        before->ssid = client.wholeName(before->ssid);
        findSecurity();
    }
}

/// In the way that the last scan, or failing that a new one, says.
void Join::findSecurity()
{
    if (settings.security != Security::Automatic) {
        tryIt();
    } else if (!client.model.network(settings.ssid).bssid.isEmpty()) {
        takeAnnounced();
    } else {
        reply.setStage(WifiReply::Scanning);
        client.scan(phase.get(), [this](const Answer &answer) {
            if (answer.error != WifiReply::NoError)
                giveUp(answer.error, answer.errorText);
            else
                takeAnnounced();
        });
    }
}

void Join::takeAnnounced()
{
    settings.security = client.model.security(settings.ssid);
    const QString problem = settings.problem();
    if (client.model.network(settings.ssid).bssid.isEmpty())
        giveUp(WifiReply::NotFound, tr("no such network in sight"));
    else if (settings.security == Security::Automatic)
        giveUp(WifiReply::InvalidRequest,
               tr("several kinds of protection under this name; say which"));
    else if (!problem.isEmpty())
        giveUp(WifiReply::InvalidRequest, problem);
    else
        tryIt();
}

void Join::tryIt()
{
    isUnderway = true;
    isDisturbed = true;
    client.beginJoining();
    attempt = std::make_unique<Attempt>(
        client.link, joinPlan(settings), Attempt::Believed,
        Attempt::Handlers{[this](WifiReply::Stage stage) { reply.setStage(stage); },
                          [this](const Attempt::Result &result) {
                              ended(result);
                          }});
    attempt->start();
}

void Join::ended(const Attempt::Result &result)
{
    if (result.error != WifiReply::NoError) {
        giveUp(result.error, result.text);
        return;
    }
    client.joined = settings;
    reply.finish(result.text);
    end();
}

void Join::abort()
{
    if (failure.error == WifiReply::NoError)
        giveUp(WifiReply::Aborted, tr("given up"));
    else if (reply.stage() == WifiReply::Returning) // else it is about to go back
        settle();
}

/// Leaves nothing behind that would never join: it would compete with what does.
void Join::giveUp(WifiReply::Error error, const QString &text)
{
    failure = {error, text};
    limit.stop();
    phase = std::make_unique<QObject>();
    if (!isDisturbed || error == WifiReply::NoDaemon) {
        finish({});
        return;
    }
    if (attempt)
        attempt->stop();
    if (isToBeRemoved())
        client.link.removeAll(DaemonCall::remove(addedName()), phase.get(),
                              [this](const Answer &) { goBack(); });
    else
        goBack();
}

/// A network that was only out of reach stays, and so does what was stored before this join.
bool Join::isToBeRemoved() const
{
    if (!attempt || !attempt->hasStored())
        return false;
    switch (failure.error) {
    case WifiReply::NotFound: // nothing was stored for it
        return true;
    case WifiReply::WrongKey:
        return !attempt->takesStored();
    case WifiReply::Aborted:
    case WifiReply::Superseded:
        return !attempt->takesStored() && !attempt->hadStored();
    default: // the daemon does not save a login, but going back would
        return settings.security == Security::Enterprise;
    }
}

/// How the supplicant prints the name of what the attempt added. Where something was to be stored
/// already, that went by its printed name.
QString Join::addedName() const
{
    const QString printed = printedSsid(settings.ssid);
    return attempt->takesStored() ? printedSsid(printed) : printed;
}

void Join::goBack()
{
    if (before->ssid.isEmpty()) {
        settle();
        return;
    }
    if (const std::optional<JoinPlan> plan = wayBack()) {
        reply.setStage(WifiReply::Returning);
        limitBack.start();
        tryBack(*plan);
    } else {
        hindrance = hindranceText();
        settle();
    }
}

QString Join::hindranceText() const
{
    JoinSettings named;
    named.ssid = before->ssid;
    named.security = Security::Open;
    if (!named.problem().isEmpty()) // a name that cannot be passed on
        return named.problem();
    //: why there is no way back to the former network, behind an error
    return before->ssid == settings.ssid ? tr("its former key is lost")
                                         : tr("%1 takes its secret each time").arg(before->ssid);
}

std::optional<JoinPlan> Join::wayBack() const
{
    const bool isReplaced = attempt && before->ssid == settings.ssid && !attempt->takesStored();
    std::optional<JoinPlan> storedWay = returnPlan(*before);
    if (storedWay && !isReplaced)
        return storedWay;
    if (client.joined && client.joined->ssid == before->ssid)
        return joinPlan(*client.joined);
    if (isReplaced && !isToBeRemoved()) // the supplicant goes on trying
        return JoinPlan{settings.ssid, settings.security, true, {}};
    return std::nullopt;
}

void Join::tryBack(const JoinPlan &plan)
{
    attempt = std::make_unique<Attempt>(client.link, plan, Attempt::Ignored,
                                        Attempt::Handlers{[](WifiReply::Stage) {},
                                                          [this](const Attempt::Result &result) {
                                                              endedBack(result);
                                                          }});
    attempt->start();
}

void Join::endedBack(const Attempt::Result &result)
{
    if (result.error == WifiReply::NotFound) // it was joined without being stored by its name
        client.link.removeAll(DaemonCall::remove(printedSsid(before->ssid)), phase.get(),
                              [this](const Answer &) { settle(); });
    else
        settle();
}

void Join::settle()
{
    limitBack.stop();
    if (attempt)
        attempt->stop();
    phase = std::make_unique<QObject>();
    isUnderway = false;
    client.endJoining();
    client.link.askStatus(phase.get(), [this](const Answer &answer) { finish(answer); });
}

void Join::finish(const Answer &answer)
{
    QStringList text{failure.text};
    if (!hindrance.isEmpty())
        text << hindrance;
    const WifiStatus now = answer.status.value_or(WifiStatus());
    if (isDisturbed && !before->ssid.isEmpty() && answer.error == WifiReply::NoError)
        //: what became of the device, behind an error; %1 is the former network
        text << (now.connected ? tr("back in %1").arg(now.ssid)
                               : tr("the device is in no network now"));
    reply.fail(failure.error, text.join(QStringLiteral("; ")));
    end();
}

/// The reply deletes it, but only after others have heard of the end.
void Join::end()
{
    if (client.currentJoin == this)
        client.currentJoin.clear();
    isUnderway = false;
    client.endJoining();
    limit.stop();
    limitBack.stop();
    phase.reset();
    if (attempt)
        attempt->stop();
}

QString Join::timeOutText() const
{
    QString text = tr("not joined within %1 s").arg(static_cast<qint64>(settings.timeout.count()));
    if (settings.security != Security::Wpa3)
        return text;
    return text + tr("; the passphrase may be wrong, or the supplicant's configuration file may "
                     "lack the line pmf=1, which WPA3 needs");
}
} // namespace BxWifi
