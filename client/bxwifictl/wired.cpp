// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

// The verb about the wired port.

#include "command.h"
#include "message.h"
#include "output.h"

#include <cstdio>

using BxWifi::WiredReply;
using BxWifi::WiredSettings;

namespace
{
ExitStatus show(WiredReply *reply, bool json)
{
    if (const ExitStatus status = await(reply))
        return status;
    const WiredSettings settings = reply->value();
    const Fields fields{{QStringLiteral("address"), settings.address},
                        {QStringLiteral("gateway"), settings.gateway},
                        {QStringLiteral("netmask"), settings.netmask},
                        {QStringLiteral("mac_address"), settings.macAddress},
                        {QStringLiteral("dhcp"), settings.dhcp}};
    if (json)
        printJson(jsonOf(fields));
    else
        print(listOf(fields));
    return Success;
}

ExitStatus awaitStored(BxWifi::WifiReply *reply)
{
    const ExitStatus status = await(reply);
    if (status == Success)
        std::fprintf(stderr, "%s\n",
                     qUtf8Printable(Message::tr("Stored; takes effect at the next boot.")));
    return status;
}
} // namespace

ExitStatus wired(const Command &command)
{
    const QStringList &words = command.options.arguments;
    const QString what = words.value(0);
    BxWifi::WifiClient &client = command.client;
    if (words.isEmpty())
        return show(client.wiredSettings(), command.options.json);
    if (what == QLatin1String("live") && words.size() == 1)
        return show(client.wiredStatus(), command.options.json);
    if (what == QLatin1String("static") && words.size() == 4)
        return awaitStored(client.setWiredAddress(words[1], words[2], words[3]));
    if (what == QLatin1String("dhcp") && words.size() == 2) {
        if (words[1] == QLatin1String("on") || words[1] == QLatin1String("off"))
            return awaitStored(client.setWiredDhcp(words[1] == QLatin1String("on")));
    }
    //: "wired" and what is in quotation marks is typed like that in every language
    return failUsage(Message::tr("wired takes nothing, 'live', 'static ADDRESS GATEWAY NETMASK' "
                                 "or 'dhcp on|off'"));
}
