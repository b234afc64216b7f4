// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "command.h"

#include "message.h"
#include "output.h"

#include <QEventLoop>
#include <QTimer>

#include <chrono>
#include <cstdio>

using BxWifi::WifiReply;

namespace
{
ExitStatus exitStatusOf(WifiReply::Error error)
{
    switch (error) {
    case WifiReply::NoError:
        return Success;
    case WifiReply::NoDaemon:
        return NoDaemon;
    case WifiReply::Denied:
        return Denied;
    case WifiReply::TimedOut:
        return TimedOut;
    case WifiReply::WrongKey:
        return WrongKey;
    case WifiReply::NotFound:
        return NotFound;
    case WifiReply::InvalidRequest:
        return UsageError;
    case WifiReply::TemporarilyDisabled:
    case WifiReply::NoAddress:
    case WifiReply::NoSupplicant:
    case WifiReply::Failed:
    case WifiReply::Aborted:
    case WifiReply::Superseded:
        break;
    }
    return Failure;
}
} // namespace

void printError(const QString &text)
{
    std::fprintf(stderr, "bxwifictl: %s\n", terminalSafe(text).toUtf8().constData());
}

ExitStatus failUsage(const QString &text)
{
    printError(text);
    return UsageError;
}

ExitStatus await(WifiReply *reply, const QString &about, QDeadlineTimer limit)
{
    const auto print = [&](const QString &text) {
        printError(about.isEmpty() ? text : about + QStringLiteral(": ") + text);
    };
    QEventLoop loop;
    QObject::connect(reply, &WifiReply::finished, &loop, &QEventLoop::quit);
    if (!limit.isForever())
        QTimer::singleShot(std::chrono::milliseconds(limit.remainingTime()), &loop,
                           &QEventLoop::quit);
    loop.exec();
    if (!reply->isFinished()) {
        print(Message::tr("no answer in time"));
        return TimedOut;
    }
    if (reply->error() != WifiReply::NoError)
        print(reply->errorText());
    return exitStatusOf(reply->error());
}
