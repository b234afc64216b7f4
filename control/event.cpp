// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "event.h"

#include <QStringList>

namespace
{
struct Pattern {
    QLatin1String text;
    Event event;
};

// The supplicant's own words, from its wpa_ctrl.h and its log texts. The trailing blanks belong to
// them: an event word without its blank is something else.
const Pattern patterns[] = {
    {QLatin1String("CTRL-REQ-"), Event::Request},
    {QLatin1String("CTRL-EVENT-SCAN-RESULTS "), Event::ScanResults},
    {QLatin1String("CTRL-EVENT-DISCONNECTED "), Event::Disconnected},
    {QLatin1String("CTRL-EVENT-CONNECTED "), Event::Connected},
    {QLatin1String("CTRL-EVENT-BSS-ADDED "), Event::BssAdded},
    {QLatin1String("CTRL-EVENT-BSS-REMOVED "), Event::BssRemoved},
    {QLatin1String("Trying to associate with "), Event::Associating},
    {QLatin1String("Associated "), Event::Associated},
    {QLatin1String("CTRL-EVENT-TERMINATING "), Event::Terminating},
    {QLatin1String("CTRL-EVENT-SSID-TEMP-DISABLED "), Event::TemporarilyDisabled},
};
} // namespace

Event eventOf(const QString &message)
{
    for (const Pattern &pattern : patterns) {
        if (message.contains(pattern.text))
            return pattern.event;
    }
    return Event::Other;
}

QString removedBssidOf(const QString &message)
{
    return message.split(QLatin1Char(' ')).value(2);
}

bool isWrongKey(const QString &message)
{
    return message.contains(QLatin1String("WRONG_KEY"));
}
