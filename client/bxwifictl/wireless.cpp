// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

// The verbs about the wireless connection, but for the one that joins a network.

#include "command.h"
#include "message.h"
#include "output.h"
#include "securityword.h"
#include "seennetworks.h"

#include <QJsonArray>

using BxWifi::WifiNetwork;
using BxWifi::WifiStatus;

namespace
{
constexpr const char *boldGreen = "\033[1;32m";
constexpr const char *plain = "\033[0m";

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
                         {QStringLiteral("security"), wordOf(network.security())},
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
    if (!status.supplicantState.isEmpty())
        return Success;
    printError(Message::tr("the daemon has no supplicant to talk to"));
    return Failure;
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

ExitStatus disconnect(const Command &command)
{
    return await(command.client.disconnectFromNetwork());
}

ExitStatus forget(const Command &command)
{
    return await(command.client.forget(command.soleArgument()), command.soleArgument());
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
