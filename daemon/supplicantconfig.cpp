// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

// WifiDaemon's repair of the supplicant's configuration file.

#include "wifidaemon.h"

#include <QFile>
#include <QProcess>
#include <QTextStream>

namespace
{
QString configurationFile()
{
    return QStringLiteral("/prefs/etc/wpa_supplicant.conf");
}
QString configurationLink()
{
    return QStringLiteral("/etc/wpa_supplicant.conf");
}

// What the supplicant needs to be reached and to save its configuration.
constexpr char configurationTemplate[] = "ctrl_interface=/var/run/wpa_supplicant\n"
                                         "ctrl_interface_group=0\n"
                                         "update_config=1\n";

// A file at least this long may hold stored networks. The template is one byte longer; a copy of
// it that an editor left without its last line feed is whole.
constexpr qint64 smallestConfiguration = 77; // bytes
static_assert(sizeof configurationTemplate - 1 == smallestConfiguration + 1,
              "the template must count as a configuration");
} // namespace

void WifiDaemon::killFile()
{
    // Opened without truncation: what is long enough is never written to.
    QFile file(configurationFile());
    const bool isOpen = file.open(QIODevice::ReadWrite | QIODevice::Text);
    if (isOpen && file.size() < smallestConfiguration && file.resize(0))
        QTextStream(&file) << configurationTemplate;

    QProcess::startDetached(QStringLiteral("ln"), {QStringLiteral("-s"), QStringLiteral("-f"),
                                                   configurationFile(), configurationLink()});
    sync();
}
