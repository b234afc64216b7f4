// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>
#include <QRegularExpression>
#include <QString>
#include <QStringList>

/// Text that came from outside: the bytes up to the first zero byte, as UTF-8. Never null.
inline QString textOf(const QByteArray &bytes)
{
    return QString::fromUtf8(bytes.constData());
}

/// The lines of a reply or of a tool's output, empty ones kept.
inline QStringList linesOf(const QString &text)
{
    return text.split(QLatin1Char('\n'));
}

/// Matches one run of white space; splits a line of tool output into its words.
const QRegularExpression &whitespaceSplitRegex();
