// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "wiredsettings.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QStringList>

#include <optional>

namespace BxWifi
{
namespace
{
struct Problem {
    Q_DECLARE_TR_FUNCTIONS(BxWifi::WiredSettings)
};

/// Strictly four decimal numbers: what the boot loader reads differs on anything else.
std::optional<quint32> addressOf(const QString &text)
{
    static const QRegularExpression number(QStringLiteral("\\A(0|[1-9][0-9]{0,2})\\z"));
    const QStringList parts = text.split(QLatin1Char('.'));
    if (parts.size() != 4)
        return std::nullopt;
    quint32 address = 0;
    for (const QString &part : parts) {
        if (!number.match(part).hasMatch() || part.toUInt() > 255)
            return std::nullopt;
        address = address << 8 | part.toUInt();
    }
    return address;
}

bool isNetmask(quint32 mask)
{
    const quint32 hostBits = ~mask;
    return mask != 0 && (hostBits & (hostBits + 1)) == 0;
}

/// Neither the network itself nor its broadcast address; networks of one or two have neither.
bool isHost(quint32 address, quint32 mask)
{
    const quint32 host = address & ~mask;
    return ~mask <= 1 || (host != 0 && host != ~mask);
}
} // namespace

QString WiredSettings::problem() const
{
    const auto ip = addressOf(address);
    const auto router = addressOf(gateway);
    const auto mask = addressOf(netmask);
    const QString notAnAddress = Problem::tr("%1 is not a dotted-decimal address");
    if (!ip)
        return notAnAddress.arg(address);
    if (!router)
        return notAnAddress.arg(gateway);
    if (!mask || !isNetmask(*mask))
        return Problem::tr("%1 is not a network mask").arg(netmask);
    if (!isHost(*ip, *mask))
        return Problem::tr("%1 is not the address of a host in its network").arg(address);
    if ((*ip & *mask) != (*router & *mask) || !isHost(*router, *mask))
        return Problem::tr("gateway %1 is not a host in the network of %2").arg(gateway, address);
    return {};
}
} // namespace BxWifi
