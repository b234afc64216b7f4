// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <bxwifi/wifinetwork.h>

/// Keeps the names of the networks in sight for the shell's completion of `connect` and `forget`.
void rememberNetworks(const QVector<BxWifi::WifiNetwork> &accessPoints);
