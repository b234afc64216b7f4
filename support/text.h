// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>
#include <QRegularExpression>
#include <QString>

/// Text that came from outside: the bytes up to the first zero byte, as UTF-8. Never null.
inline QString textOf(const QByteArray &bytes)
{
    return QString::fromUtf8(bytes.constData());
}

/// Matches one run of white space; splits a line of tool output into its words.
const QRegularExpression &whitespaceSplitRegex();
