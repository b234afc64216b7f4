// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

// The verb that joins a network.

#include "command.h"
#include "interruption.h"
#include "message.h"
#include "output.h"
#include "secret.h"
#include "seennetworks.h"

#include <QSocketNotifier>

#include <algorithm>
#include <chrono>
#include <cstdio>

using BxWifi::JoinSettings;
using BxWifi::Security;
using BxWifi::WifiReply;

namespace
{
void printLine(const QString &text)
{
    std::fprintf(stderr, "%s\n", terminalSafe(text).toUtf8().constData());
}

void printProgress(const QString &step)
{
    printLine(step + QStringLiteral(" ..."));
}

void showStage(WifiReply::Stage stage, const QString &former)
{
    switch (stage) {
    case WifiReply::Waiting:
        return;
    case WifiReply::Scanning:
        //: progress, like those that follow: " ..." comes behind it
        printProgress(Message::tr("scanning"));
        return;
    case WifiReply::Asking:
        printProgress(Message::tr("asking the daemon"));
        return;
    case WifiReply::Associating:
        printProgress(Message::tr("associating"));
        return;
    case WifiReply::Addressing:
        printProgress(Message::tr("waiting for an address"));
        return;
    case WifiReply::Returning:
        printProgress(Message::tr("going back to %1").arg(former));
        return;
    }
}

/// Whether a join that fails cannot go back to a network with what is stored.
bool takesSecretEveryTime(const QString &keyManagement)
{
    return keyManagement.contains(QLatin1String("SAE")) ||
           keyManagement.contains(QLatin1String("EAP"));
}

/// Like await(), but the first signal that ends a program gives the request up.
ExitStatus awaitOrGiveUp(WifiReply *reply, const QString &about,
                         QDeadlineTimer limit = QDeadlineTimer::Forever)
{
    const Interruption interruption;
    QSocketNotifier notifier(Interruption::descriptor(), QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, reply, [&notifier, reply] {
        notifier.setEnabled(false);
        if (reply->stage() != WifiReply::Returning) // for that would stay away
            reply->abort();
    });
    const ExitStatus status = await(reply, about, limit);
    return status != Success && Interruption::status() != Success ? Interruption::status() : status;
}

/// Takes the name of the network that is joined now.
ExitStatus takeFormer(const Command &command, QDeadlineTimer limit, QString &former)
{
    auto *reply = command.client.status();
    if (const ExitStatus status = awaitOrGiveUp(reply, {}, limit))
        return status;
    if (!reply->value().connected)
        return Success;
    former = reply->value().ssid;
    if (takesSecretEveryTime(reply->value().keyManagement))
        printLine(Message::tr("should this fail, the device cannot go back to %1, whose passphrase "
                              "or login has to be given every time")
                      .arg(former));
    return Success;
}

/// Takes the security that the network announces; none if it announces several kinds.
ExitStatus takeSecurity(const Command &command, QDeadlineTimer limit, JoinSettings &settings)
{
    showStage(WifiReply::Scanning, {});
    auto *reply = command.client.scan();
    if (const ExitStatus status = awaitOrGiveUp(reply, settings.ssid, limit))
        return status;
    rememberNetworks(reply->value());
    const auto *networks = command.client.networks();
    if (networks->network(settings.ssid).bssid.isEmpty()) {
        printError(Message::tr("%1: no such network in sight; a hidden one needs --hidden")
                       .arg(settings.ssid));
        return NotFound;
    }
    settings.security = networks->security(settings.ssid);
    return Success;
}

bool mayBeStored(const JoinSettings &settings)
{
    return settings.security == Security::Wpa || settings.security == Security::Wep;
}

/// Why the options do not fit the network; empty when they do.
QString misfit(const Options &options, const JoinSettings &settings)
{
    if (options.stored && !options.passwordFile.isEmpty())
        return Message::tr("--stored and --password-file exclude each other");
    if (settings.security == Security::Automatic || settings.security == Security::Unsupported)
        return {}; // refused as such, by the library
    if (options.stored && !mayBeStored(settings))
        return Message::tr("--stored is for WPA, WPA2 and WEP; others are joined anew each time");
    if (settings.security == Security::Open && !options.passwordFile.isEmpty())
        return Message::tr("an open network takes no --password-file");
    if (settings.security != Security::Enterprise && !settings.identity.isEmpty())
        return Message::tr("--identity is for enterprise networks");
    return {};
}

ExitStatus takeIdentity(JoinSettings &settings)
{
    if (settings.security != Security::Enterprise || !settings.identity.isEmpty())
        return Success;
    if (!canAsk())
        return failUsage(Message::tr("%1 needs --identity").arg(settings.ssid));
    return ask(Message::tr("Identity for %1: ").arg(settings.ssid), true, settings.identity);
}

ExitStatus takeSecret(const Options &options, JoinSettings &settings)
{
    if (!settings.secret.isEmpty()) // a code had it
        return Success;
    if (!options.passwordFile.isEmpty())
        return readSecretFile(options.passwordFile, settings.secret);
    if (canAsk()) {
        const QString question = mayBeStored(settings)
                                     ? Message::tr("Passphrase for %1 (empty: the stored one): ")
                                     : Message::tr("Passphrase for %1: ");
        return ask(question.arg(settings.ssid), false, settings.secret);
    }
    const QString ways = mayBeStored(settings) ? Message::tr("--password-file, or --stored")
                                               : QStringLiteral("--password-file");
    //: %1 is the network, %2 one option or two
    return failUsage(Message::tr("%1 needs a passphrase: give %2").arg(settings.ssid, ways));
}

ExitStatus takeCredentials(const Options &options, JoinSettings &settings)
{
    const QString problem = misfit(options, settings);
    if (!problem.isEmpty())
        return failUsage(settings.ssid + QStringLiteral(": ") + problem);
    switch (settings.security) {
    case Security::Wep:
    case Security::Wpa:
    case Security::Wpa3:
    case Security::Enterprise:
        break;
    case Security::Open:
    case Security::Automatic:
    case Security::Unsupported:
        return Success;
    }
    if (options.stored)
        return Success;
    if (const ExitStatus status = takeIdentity(settings))
        return status;
    return takeSecret(options, settings);
}

ExitStatus takeCode(const Options &options, JoinSettings &settings)
{
    const JoinSettings &given = options.join;
    if (given.hidden || given.security != Security::Automatic || !given.identity.isEmpty() ||
        options.stored || !options.passwordFile.isEmpty())
        return failUsage(Message::tr("--uri-file takes only --timeout and --json beside it"));
    QString code;
    if (const ExitStatus status = readSecretFile(options.uriFile, code))
        return status;
    QString problem;
    settings = JoinSettings::fromUri(code, &problem);
    settings.timeout = given.timeout;
    // Codes of WPA3 networks say WPA too, so that all phones read them.
    if (settings.security == Security::Wpa && !settings.hidden && !settings.secret.isEmpty())
        settings.security = Security::Automatic;
    return problem.isEmpty() ? Success : failUsage(problem);
}

/// Takes what the command line says, or the code that it names.
ExitStatus takeSettings(const Options &options, JoinSettings &settings)
{
    if (!options.uriFile.isEmpty())
        return takeCode(options, settings);
    settings = options.join;
    settings.ssid = options.arguments.constFirst();
    if (settings.hidden && settings.security == Security::Automatic)
        settings.security = Security::Wpa;
    return Success;
}

ExitStatus join(const Command &command, const JoinSettings &settings, const QString &former)
{
    auto *reply = command.client.connectTo(settings);
    QObject::connect(reply, &WifiReply::stageChanged,
                     [=](WifiReply::Stage stage) { showStage(stage, former); });
    if (const ExitStatus status = awaitOrGiveUp(reply, settings.ssid))
        return status;
    const Fields fields{{QStringLiteral("ssid"), settings.ssid},
                        {QStringLiteral("address"), reply->value()}};
    if (command.options.json)
        printJson(jsonOf(fields));
    else
        print(listOf(fields));
    return Success;
}
} // namespace

ExitStatus connectTo(const Command &command)
{
    JoinSettings settings;
    if (const ExitStatus status = takeSettings(command.options, settings))
        return status;
    JoinSettings known; // what is already
    known.ssid = settings.ssid;
    known.timeout = settings.timeout;
    if (const QString problem = known.problem(); !problem.isEmpty())
        return failUsage(problem);

    const QDeadlineTimer limit(settings.timeout);
    QString former;
    if (const ExitStatus status = takeFormer(command, limit, former))
        return status;
    if (settings.security == Security::Automatic) {
        if (const ExitStatus status = takeSecurity(command, limit, settings))
            return status;
    }
    // The time that somebody takes to type is not counted.
    settings.timeout =
        std::max(std::chrono::seconds(1),
                 std::chrono::ceil<std::chrono::seconds>(limit.remainingTimeAsDuration()));
    if (const ExitStatus status = takeCredentials(command.options, settings))
        return status;
    return join(command, settings, former);
}
