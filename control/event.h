// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

/// What an unsolicited message of the supplicant announces.
enum class Event {
    Request,             ///< The supplicant wants something typed in; nobody here could
    ScanResults,         ///< A result table is ready
    Disconnected,        ///< The association ended
    Connected,           ///< The association is complete
    BssAdded,            ///< An access point came into sight
    BssRemoved,          ///< An access point went out of sight
    Associating,         ///< An association was begun
    Associated,          ///< The access point has accepted the association
    Terminating,         ///< The supplicant is exiting
    TemporarilyDisabled, ///< A network was set aside after failures
    Other,               ///< Anything else
};

/// Classifies a message by the text it contains; a priority prefix such as "<3>" does not matter.
/// Where a message holds several of the texts, the first in the order of `Event` decides.
Event eventOf(const QString &message);

/// The BSSID in a `BssRemoved` message, laid out "CTRL-EVENT-BSS-REMOVED <id> <bssid>"; null when
/// the message is too short to hold one.
QString removedBssidOf(const QString &message);

/// Whether a `TemporarilyDisabled` message gives a wrong key as its reason.
bool isWrongKey(const QString &message);
