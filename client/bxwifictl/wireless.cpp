// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

// The verbs about the wireless connection.

#include "command.h"
#include "output.h"
#include "secret.h"
#include "seennetworks.h"

#include <QElapsedTimer>
#include <QJsonArray>

#include <cstdio>

using BxWifi::JoinSettings;
using BxWifi::Security;
using BxWifi::WifiNetwork;
using BxWifi::WifiReply;
using BxWifi::WifiStatus;

namespace
{
constexpr const char *boldGreen = "\033[1;32m";
constexpr const char *plain = "\033[0m";

QString securityWord(Security security)
{
    switch (security) {
    case Security::Open:
        return QStringLiteral("open");
    case Security::Wep:
        return QStringLiteral("wep");
    case Security::Wpa:
        return QStringLiteral("wpa");
    case Security::Wpa3:
        return QStringLiteral("wpa3");
    case Security::Enterprise:
        return QStringLiteral("peap");
    case Security::Automatic:
    case Security::Unsupported:
        break;
    }
    return QStringLiteral("unsupported");
}

QString stateWord(const WifiStatus &status)
{
    if (status.supplicantState.isEmpty())
        return QStringLiteral("no-supplicant");
    return status.connected ? QStringLiteral("connected") : QStringLiteral("disconnected");
}

QJsonObject jsonOf(const WifiNetwork &network, bool isJoined)
{
    return jsonOf(Fields{{QStringLiteral("ssid"), network.ssid},
                         {QStringLiteral("bssid"), network.bssid},
                         {QStringLiteral("signal_dbm"), network.signal},
                         {QStringLiteral("frequency_mhz"), network.frequency},
                         {QStringLiteral("channel"), network.channel()},
                         {QStringLiteral("band"), network.band()},
                         {QStringLiteral("security"), securityWord(network.security())},
                         {QStringLiteral("joined"), isJoined}});
}

QString signalText(const WifiNetwork &network)
{
    const QString level = QStringLiteral("%1 dBm").arg(network.signal);
    return isTerminal() ? barsPicture(network.bars()) + QLatin1Char(' ') + level : level;
}

QStringList rowOf(const WifiNetwork &network, bool isJoined, bool all)
{
    QStringList row{isJoined ? QStringLiteral("*") : QStringLiteral(" "),
                    network.ssid.isEmpty() ? QStringLiteral("(hidden)")
                                           : terminalSafe(network.ssid),
                    signalText(network),
                    QString::number(network.channel()),
                    network.band(),
                    BxWifi::securityText(network.flags)};
    if (all)
        row.insert(2, network.bssid);
    return row;
}

void printNetworks(const QVector<WifiNetwork> &networks, const QVector<bool> &joined, bool all)
{
    QStringList header{QStringLiteral(" "),      QStringLiteral("NAME"),
                       QStringLiteral("SIGNAL"), QStringLiteral("CHANNEL"),
                       QStringLiteral("BAND"),   QStringLiteral("SECURITY")};
    if (all)
        header.insert(2, QStringLiteral("BSSID"));
    QVector<QStringList> rows{header};
    for (int i = 0; i < networks.size(); ++i)
        rows.append(rowOf(networks[i], joined[i], all));
    const QStringList lines = tableOf(rows);
    for (int i = 0; i < lines.size(); ++i) {
        const bool isMarked = i > 0 && joined[i - 1] && isTerminal();
        print(isMarked ? QLatin1String(boldGreen) + lines[i] + QLatin1String(plain) : lines[i]);
    }
}

void printProgress(const char *step)
{
    std::fprintf(stderr, "%s ...\n", step);
}

void showStage(WifiReply::Stage stage)
{
    switch (stage) {
    case WifiReply::Waiting:
        return;
    case WifiReply::Scanning:
        printProgress("scanning");
        return;
    case WifiReply::Asking:
        printProgress("asking the daemon");
        return;
    case WifiReply::Associating:
        printProgress("associating");
        return;
    case WifiReply::Addressing:
        printProgress("waiting for an address");
        return;
    case WifiReply::Returning:
        printProgress("going back");
        return;
    }
}

/// Takes the security that the network announces.
ExitStatus lookUp(const Command &command, JoinSettings &settings)
{
    printProgress("scanning");
    auto *reply = command.client.scan();
    if (const ExitStatus status = await(reply))
        return status;
    rememberNetworks(reply->value());
    const WifiNetwork network = command.client.networks()->network(settings.ssid);
    if (network.bssid.isEmpty()) {
        printError(QStringLiteral("%1: no such network in sight; a hidden one needs --hidden")
                       .arg(settings.ssid));
        return NotFound;
    }
    settings.security = network.security();
    return Success;
}

ExitStatus noSecret(const JoinSettings &settings)
{
    return failUsage(QStringLiteral("%1 needs a passphrase: give --password-file, or --stored")
                         .arg(settings.ssid));
}

ExitStatus takeIdentity(const Options &options, JoinSettings &settings)
{
    settings.identity = options.identity;
    if (settings.security != Security::Enterprise || !settings.identity.isEmpty())
        return Success;
    if (!canAsk())
        return failUsage(QStringLiteral("%1 needs --identity").arg(settings.ssid));
    const auto identity = ask(QStringLiteral("Identity for %1: ").arg(settings.ssid), true);
    settings.identity = identity.value_or(QString());
    return identity ? Success : Failure;
}

ExitStatus takeSecret(const Options &options, JoinSettings &settings)
{
    std::optional<QString> secret;
    if (!options.passwordFile.isEmpty()) {
        secret = readSecretFile(options.passwordFile);
        if (!secret)
            return failUsage(QStringLiteral("cannot read %1").arg(options.passwordFile));
        if (secret->isEmpty())
            return noSecret(settings);
    } else if (canAsk()) {
        const bool mayBeStored =
            settings.security == Security::Wpa || settings.security == Security::Wep;
        const QString question = mayBeStored
                                     ? QStringLiteral("Passphrase for %1 (empty: the stored one): ")
                                     : QStringLiteral("Passphrase for %1: ");
        secret = ask(question.arg(settings.ssid), false);
        if (!secret)
            return Failure;
    } else {
        return noSecret(settings);
    }
    settings.secret = *secret;
    return Success;
}

ExitStatus takeCredentials(const Options &options, JoinSettings &settings)
{
    if (settings.security == Security::Open || settings.security == Security::Unsupported ||
        options.stored)
        return Success;
    if (const ExitStatus status = takeIdentity(options, settings))
        return status;
    return takeSecret(options, settings);
}

const QString &soleArgument(const Command &command)
{
    return command.options.arguments.constFirst();
}
} // namespace

ExitStatus showStatus(const Command &command)
{
    auto *reply = command.client.status();
    if (const ExitStatus failure = await(reply))
        return failure;
    const WifiStatus status = reply->value();
    const Fields fields{{QStringLiteral("state"), stateWord(status)},
                        {QStringLiteral("ssid"), status.ssid},
                        {QStringLiteral("address"), status.address},
                        {QStringLiteral("bssid"), status.bssid},
                        {QStringLiteral("frequency_mhz"), status.frequency},
                        {QStringLiteral("mode"), status.mode},
                        {QStringLiteral("pairwise_cipher"), status.pairwiseCipher},
                        {QStringLiteral("group_cipher"), status.groupCipher},
                        {QStringLiteral("key_management"), status.keyManagement},
                        {QStringLiteral("supplicant_state"), status.supplicantState}};
    if (command.options.json)
        printJson(jsonOf(fields));
    else
        print(listOf(fields));
    return Success;
}

ExitStatus scan(const Command &command)
{
    auto *status = command.client.status();
    if (const ExitStatus failure = await(status))
        return failure;
    const WifiStatus current = status->value();
    auto *reply = command.client.scan();
    if (const ExitStatus failure = await(reply))
        return failure;
    rememberNetworks(reply->value());

    const bool all = command.options.all;
    const auto networks = all ? bySignal(reply->value()) : strongestByName(reply->value());
    QVector<bool> joined;
    QJsonArray array;
    for (const WifiNetwork &network : networks) {
        joined.append(current.connected &&
                      (all ? network.bssid == current.bssid : network.ssid == current.ssid));
        array.append(jsonOf(network, joined.constLast()));
    }
    if (command.options.json)
        printJson(array);
    else
        printNetworks(networks, joined, all);
    return Success;
}

ExitStatus connectTo(const Command &command)
{
    const Options &options = command.options;
    QElapsedTimer elapsed;
    JoinSettings settings;
    settings.ssid = soleArgument(command);
    settings.hidden = options.hidden;
    settings.security = options.security;
    if (settings.security == Security::Automatic && options.hidden)
        settings.security = Security::Wpa;

    elapsed.start();
    if (settings.security == Security::Automatic) {
        if (const ExitStatus status = lookUp(command, settings))
            return status;
    }
    settings.timeout = options.timeout - std::chrono::seconds(elapsed.elapsed() / 1000);
    if (const ExitStatus status = takeCredentials(options, settings))
        return status;

    auto *reply = command.client.connectTo(settings);
    QObject::connect(reply, &WifiReply::stageChanged, showStage);
    if (const ExitStatus status = await(reply, settings.ssid))
        return status;
    const Fields fields{{QStringLiteral("ssid"), settings.ssid},
                        {QStringLiteral("address"), reply->value()}};
    if (options.json)
        printJson(jsonOf(fields));
    else
        print(listOf(fields));
    return Success;
}

ExitStatus disconnect(const Command &command)
{
    return await(command.client.disconnectFromNetwork());
}

ExitStatus forget(const Command &command)
{
    return await(command.client.forget(soleArgument(command)), soleArgument(command));
}

ExitStatus showAddress(const Command &command)
{
    auto *reply = command.client.wirelessAddress();
    if (const ExitStatus status = await(reply))
        return status;
    if (command.options.json)
        printJson(jsonOf(Fields{{QStringLiteral("address"), reply->value()}}));
    else if (!reply->value().isEmpty())
        print(terminalSafe(reply->value()));
    return Success;
}

ExitStatus relink(const Command &command)
{
    return await(command.client.relink());
}
