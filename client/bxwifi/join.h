// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "daemonlink.h"
#include "joinplan.h"

#include <QObject>

namespace BxWifi
{
/// Joins one network: makes the calls of its plan, then follows what the supplicant reports until
/// there is an address or a failure. The reply's value is the address.
class Join : public QObject
{
public:
    /// Lives as long as the reply.
    Join(DaemonLink &link, JoinSettings settings, WifiReply &reply);
    void start();

private:
    void next(const Answer &answer);
    void follow();
    void onStatus(Status::Code status);
    void failDisabled();
    void confirm();
    void takeAddress(const Answer &answer);
    void fail(const Answer &answer);
    void timeOut();

    DaemonLink &link;
    JoinSettings settings;
    WifiReply &reply;
    QVector<DaemonCall> calls; ///< that are still to be made
    bool isConfirming = false;
};
} // namespace BxWifi
