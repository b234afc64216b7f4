// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "psk.h"

#include <cstdint>

#include <nettle/pbkdf2.h>

namespace
{
constexpr unsigned pskRounds = 4096; // IEEE 802.11i, H.4.1
constexpr size_t pskLength = 32;     // bytes

const uint8_t *bytesOf(const QByteArray &text)
{
    return reinterpret_cast<const uint8_t *>(text.constData());
}
} // namespace

QByteArray pskOf(const QByteArray &passphrase, const QByteArray &ssid)
{
    QByteArray psk(pskLength, '\0');
    nettle_pbkdf2_hmac_sha1(static_cast<size_t>(passphrase.size()), bytesOf(passphrase), pskRounds,
                            static_cast<size_t>(ssid.size()), bytesOf(ssid), pskLength,
                            reinterpret_cast<uint8_t *>(psk.data()));
    return psk.toHex();
}
