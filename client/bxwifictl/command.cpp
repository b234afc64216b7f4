// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "command.h"

#include "output.h"

#include <QEventLoop>

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

ExitStatus await(WifiReply *reply, const QString &about)
{
    QEventLoop loop;
    QObject::connect(reply, &WifiReply::finished, &loop, &QEventLoop::quit);
    loop.exec();
    if (reply->error() != WifiReply::NoError)
        printError(about.isEmpty() ? reply->errorText()
                                   : about + QStringLiteral(": ") + reply->errorText());
    return exitStatusOf(reply->error());
}
