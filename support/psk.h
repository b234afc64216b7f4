// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>

/// The pre-shared key of a passphrase on a network, as 64 hexadecimal digits (IEEE 802.11i, H.4.1).
QByteArray pskOf(const QByteArray &passphrase, const QByteArray &ssid);
