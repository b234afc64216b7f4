// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <bxwifi/security.h>

#include <QString>

#include <optional>

/// The word for a security, on the command line as in JSON; "unsupported" for those without one.
QString wordOf(BxWifi::Security security);

/// The security that a word of the command line means.
std::optional<BxWifi::Security> securityByWord(const QString &word);
