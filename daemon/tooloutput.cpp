// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "tooloutput.h"

#include "support/text.h"

QString bootValueOf(const QString &output)
{
    return output.split(QLatin1Char('=')).value(1, QLatin1String(""));
}

void readInterfaceAddress(const QString &output, BXStatic &addressing)
{
    const QStringList lines = linesOf(output);
    for (const QString &line : lines) {
        // The line with the hardware address also holds the interface's name, which may say
        // anything.
        if (line.contains(QLatin1String("HWaddr")) || !line.contains(QLatin1String("inet addr")))
            continue;
        const QStringList pieces = line.split(whitespaceSplitRegex());
        for (const QString &piece : pieces) {
            if (piece.startsWith(QLatin1String("addr:")))
                addressing.ipAddress = piece.split(QLatin1Char(':'))[1];
            else if (piece.startsWith(QLatin1String("Mask:")))
                addressing.netmask = piece.split(QLatin1Char(':'))[1];
        }
    }
}

void readDefaultGateway(const QString &output, BXStatic &addressing)
{
    const QStringList lines = linesOf(output);
    for (const QString &line : lines) {
        if (!line.startsWith(QLatin1String("0.0.0.0")) || !line.endsWith(QLatin1String("eth0")))
            continue;
        const QStringList words = line.split(whitespaceSplitRegex(), Qt::SkipEmptyParts);
        if (words.size() > 1)
            addressing.gateway = words[1];
    }
}
