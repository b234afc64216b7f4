// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "records/bxnetwork.h"
#include "records/bxnetworkconnected.h"

#include <QString>
#include <QVector>

#include <optional>

/// The networks in a reply to SCAN_RESULTS: a header, then one line per access point with BSSID,
/// frequency, signal level, flags and SSID between tabs. Lines of any other shape are left out.
QVector<BXNetwork> scanTable(const QString &reply);

/// The id of the first network with exactly this SSID in a reply to LIST_NETWORKS: a header, then
/// one line per network with id, SSID, BSSID and flags between tabs. Ids stay text.
std::optional<QString> networkIdOf(const QString &reply, const QString &ssid);

// The rest reads a reply to STATUS, one "key=value" a line.

/// Whether the first wpa_state line names the state COMPLETED.
bool isAssociationCompleted(const QString &reply);

/// Name of the current network, without any "ssid=" it may contain; empty when there is none.
QString currentSsid(const QString &reply);

/// Address of the wireless interface; empty without one, or without a network name.
QString currentAddress(const QString &reply);

/// All that the reply says about the association. A value ends at its next "=".
BXNetworkConnected fullStatus(const QString &reply);
