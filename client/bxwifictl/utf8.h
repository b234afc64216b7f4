// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// The text that these bytes are in UTF-8, a byte-order mark at their beginning included, which
/// QString::fromUtf8() drops. None when they are not UTF-8.
std::optional<QString> textOf(const QByteArray &bytes);
