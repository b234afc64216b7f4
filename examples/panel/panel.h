// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <bxwifi/wificlient.h>

class QQmlApplicationEngine;

/// Loads the panel's window; in QML the client goes by the name "wifi".
void loadPanel(QQmlApplicationEngine &engine, BxWifi::WifiClient &client);
