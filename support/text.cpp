// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "text.h"

const QRegularExpression &whitespaceSplitRegex()
{
    static const QRegularExpression whitespace(QStringLiteral("\\s+"));
    return whitespace;
}
