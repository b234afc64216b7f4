// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

/// The key in what `wpa_passphrase` printed: the text behind the first "=" of the last line that
/// holds "psk=" in any case. The tool prints the passphrase itself in a comment before the key.
QString printedPskOf(const QString &output);
