// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "daemonlink.h"
#include "joinplan.h"

#include <QCoreApplication>
#include <QObject>

#include <functional>
#include <memory>

namespace BxWifi
{
/// One attempt to get into one network: makes the calls of its plan, then follows what the
/// supplicant reports until there is an address or a failure. Has no time limit of its own.
class Attempt
{
    Q_DECLARE_TR_FUNCTIONS(BxWifi::Attempt)
public:
    struct Result {
        WifiReply::Error error;
        QString text; ///< The address, or what went wrong
    };
    struct Handlers {
        std::function<void(WifiReply::Stage)> stage;
        std::function<void(const Result &)> done; ///< Called once at most
    };
    /// Whether the supplicant's word that it gave a network up is taken to be about this one, from
    /// the second answer after its calls on: what it says at once is about a network that it was
    /// leaving.
    enum Failures { Believed, Ignored };

    Attempt(DaemonLink &link, JoinPlan plan, Failures failures, Handlers handlers);
    void start();
    /// Makes no further call and tells nothing more.
    void stop();

    /// Whether the daemon has been told to set the network up.
    bool hasStored() const { return isStoring; }
    /// Whether something was stored under its name before.
    bool hadStored() const { return wasStored; }
    bool takesStored() const { return plan.takesStored; }

private:
    void next(const Answer &answer);
    void remove(const DaemonCall &call);
    void follow();
    void watch();
    bool isJoined(const WifiStatus &status) const;
    void onStatus(Status::Code status);
    void failDisabled();
    void confirm();
    void takeAddress();
    void takeSecondAddress();
    void fail(WifiReply::Error error, const QString &text);
    void finish(const Result &result);

    DaemonLink &link;
    JoinPlan plan;
    Failures believed;
    Failures failures = Ignored; ///< So far
    Handlers handlers;
    bool isStoring = false;
    bool wasStored = false;
    bool isConfirming = false;                                      ///< Connected as it seems
    std::unique_ptr<QObject> context = std::make_unique<QObject>(); ///< Of all that is waited for
};
} // namespace BxWifi
