// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

/// What the bus signal `statusMessage` says.
namespace Status
{
enum Code : int {
    Connected = 0,           ///< The association is complete
    NotConnected = 1,        ///< Not associated
    ScanStarted = 2,         ///< A scan was asked for
    ScanDelivered = 3,       ///< The last `scanResult` of a result set has been sent
    SupplicantExiting = 4,   ///< The supplicant is exiting; the link to it was closed
    ConnectionRequested = 5, ///< A client asked to join a network
    TemporarilyDisabled = 6, ///< The supplicant set the network aside, not because of its key
    WrongKey = 7,            ///< The supplicant set the network aside because of a wrong key
    NetworkRemoved = 8,      ///< A stored network was removed
};
} // namespace Status
