// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>
#include <QString>

// An SSID is up to 32 arbitrary bytes. The supplicant prints it in its tables with everything but
// printable ASCII escaped; what it is given between quotation marks it takes as it stands.

namespace BxWifi
{
/// The SSID that the supplicant printed, as text. Bytes that are not UTF-8 come out as U+FFFD.
QString ssidOf(const QString &printed);

/// What the supplicant prints for an SSID.
QString printedSsid(const QString &ssid);

/// The name under which the daemon reports a joined network: without any "ssid=".
QString reportedSsid(QString ssid);
} // namespace BxWifi
