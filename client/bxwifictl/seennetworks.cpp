// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "seennetworks.h"

#include "output.h"

#include <QDir>
#include <QSaveFile>
#include <QStandardPaths>

#include <unistd.h>

void rememberNetworks(const QVector<BxWifi::WifiNetwork> &accessPoints)
{
    // Scripts and services complete nothing, and shall wear no flash memory. Without a home the
    // place would be the root folder.
    if (!isatty(STDOUT_FILENO) || qEnvironmentVariableIsEmpty("HOME"))
        return;
    const QDir cache(QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation));
    cache.mkpath(QStringLiteral("bxwifictl"));
    QSaveFile file(cache.filePath(QStringLiteral("bxwifictl/networks")));
    // Completion is a convenience; a system without a place for it does without.
    if (!file.open(QIODevice::WriteOnly))
        return;
    const auto networks = strongestByName(accessPoints);
    for (const auto &network : networks) {
        if (terminalSafe(network.ssid) == network.ssid)
            file.write(network.ssid.toUtf8() + '\n');
    }
    file.commit();
}
