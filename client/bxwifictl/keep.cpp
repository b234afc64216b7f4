// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

// The verb that keeps the device in a network.

#include "command.h"
#include "keeper.h"
#include "output.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QTimer>

#include <chrono>
#include <cstdio>
#include <optional>

namespace
{
// To wait for what comes by itself (20 s), to look (20 s), to join (45 s) and to go back (30 s),
// with some room.
constexpr std::chrono::minutes onceLimit{3};

struct Words {
    const char *event; ///< for programs
    QString text;
    std::optional<ExitStatus> status; ///< of --once, if this ends it
};

Words wordsOf(Keeper::Decision decision, const QString &ssid, const QString &detail)
{
    switch (decision) {
    case Keeper::Online:
        return {"online", QStringLiteral("in %1 with the address %2").arg(ssid, detail), Success};
    case Keeper::Offline:
        return {"offline", QStringLiteral("in no network; looking for one that is remembered"), {}};
    case Keeper::NothingInSight:
        return {"nothing-in-sight", QStringLiteral("no remembered network in sight"), NotFound};
    case Keeper::Joining:
        return {"joining", QStringLiteral("joining %1").arg(ssid), {}};
    case Keeper::JoinFailed:
        return {"join-failed", QStringLiteral("%1: %2").arg(ssid, detail), Failure};
    case Keeper::Relinking:
        return {"relinking", QStringLiteral("the daemon has no supplicant; relinking"), {}};
    case Keeper::Relinked:
        return {"relinked", QStringLiteral("the daemon has its supplicant"), {}};
    case Keeper::HandsOff:
        return {"hands-off", QStringLiteral("another client joins; hands off for a minute"),
                Success};
    case Keeper::Left:
        return {"left", QStringLiteral("disconnected on purpose; waiting for a join"), Success};
    case Keeper::DaemonAway:
        return {"no-daemon", QStringLiteral("waiting for the daemon bxwifid"), NoDaemon};
    case Keeper::Remembered:
        return {"remembered", QStringLiteral("remembering %1").arg(ssid), {}};
    case Keeper::Forgotten:
        return {"forgotten", QStringLiteral("%1 is not stored any more; forgotten").arg(ssid), {}};
    case Keeper::StateProblem:
        return {"state-problem", detail, {}};
    }
    return {"", {}, {}};
}

void printEvent(const char *event, const QString &ssid, const QString &detail)
{
    Fields fields{
        {QStringLiteral("time"), QDateTime::currentDateTime().toString(Qt::ISODateWithMs)},
        {QStringLiteral("event"), QLatin1String(event)}};
    if (!ssid.isEmpty())
        fields.append({QStringLiteral("ssid"), ssid});
    if (!detail.isEmpty())
        fields.append({QStringLiteral("detail"), detail});
    printJson(jsonOf(fields));
}

QString stateFile()
{
    const QString folder =
        qEnvironmentVariable("STATE_DIRECTORY", QStringLiteral("/var/lib/bxwifi-keep"));
    return QDir(folder).filePath(QStringLiteral("networks.json"));
}
} // namespace

ExitStatus keep(const Command &command)
{
    const bool once = command.options.once;
    // Starts the daemon, where the bus does that.
    const ExitStatus status = await(command.client.status());
    if (status == Denied || (once && status != Success))
        return status;

    Keeper keeper(command.client, stateFile());
    QObject::connect(
        &keeper, &Keeper::decided, &keeper,
        [&](Keeper::Decision decision, const QString &ssid, const QString &detail) {
            const Words words = wordsOf(decision, ssid, detail);
            if (command.options.json)
                printEvent(words.event, ssid, detail);
            else
                printError(words.text);
            if (once && words.status)
                QCoreApplication::exit(*words.status);
        },
        Qt::QueuedConnection);
    if (once)
        QTimer::singleShot(onceLimit, &keeper, [] { QCoreApplication::exit(TimedOut); });
    keeper.start();
    return static_cast<ExitStatus>(QCoreApplication::exec());
}
