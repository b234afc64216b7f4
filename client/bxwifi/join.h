// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "attempt.h"
#include "wifistatus.h"

#include <QCoreApplication>
#include <QObject>
#include <QTimer>

namespace BxWifi
{
class WifiClientPrivate;

/// Joins one network, and goes back to the one that was joined before if that fails.
class Join : public QObject
{
    Q_DECLARE_TR_FUNCTIONS(BxWifi::Join)
public:
    /// What a join that takes the place of another one inherits from it.
    struct Heritage {
        std::optional<WifiStatus> before; ///< What was joined when the first of them began
        QString leftover;                 ///< Printed name of what is to be removed, if anything
        bool isDisturbed;                 ///< Whether the daemon was told to join
    };

    /// Lives as long as the reply.
    Join(WifiClientPrivate &client, JoinSettings settings, WifiReply &reply);

    void start();
    /// Ends this join for the sake of another one.
    Heritage giveWay();
    void startAfter(const Heritage &heritage);
    /// Whether the state of the connection is this join's matter.
    bool isTrying() const { return isUnderway; }
    /// Does nothing more; the reply has finished.
    void end();

private:
    void note(const Answer &answer);
    void findSecurity();
    void takeAnnounced();
    void tryIt();
    void ended(const Attempt::Result &result);
    void abort();
    void giveUp(WifiReply::Error error, const QString &text);
    bool isToBeRemoved() const;
    QString addedName() const;
    void goBack();
    void tryBack(const JoinPlan &plan);
    void endedBack(const Attempt::Result &result);
    std::optional<JoinPlan> wayBack() const;
    QString hindranceText() const;
    void settle();
    void finish(const Answer &answer);
    QString timeOutText() const;

    WifiClientPrivate &client;
    JoinSettings settings;
    WifiReply &reply;
    std::optional<WifiStatus> before; ///< Once it is known
    bool isDisturbed = false;         ///< The connection, by this join or one whose place it took
    bool isUnderway = false;
    std::unique_ptr<Attempt> attempt;
    Attempt::Result failure{WifiReply::NoError, {}};
    QString hindrance; ///< Why there is no way back
    QTimer limit;
    QTimer limitBack;
    std::unique_ptr<QObject> phase = std::make_unique<QObject>(); ///< Of all that is waited for
};
} // namespace BxWifi
