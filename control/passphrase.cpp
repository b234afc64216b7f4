// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "passphrase.h"

#include "support/text.h"

QString printedPskOf(const QString &output)
{
    QString psk;
    const QStringList lines = linesOf(output);
    for (const QString &line : lines) {
        if (line.toLower().contains(QLatin1String("psk=")))
            psk = line.section(QLatin1Char('='), 1, 1);
    }
    return psk;
}
