// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "securityword.h"

#include <algorithm>

using BxWifi::Security;

namespace
{
struct Word {
    Security security;
    QLatin1String text;
};
const Word words[] = {{Security::Open, QLatin1String("open")},
                      {Security::Wep, QLatin1String("wep")},
                      {Security::Wpa, QLatin1String("wpa")},
                      {Security::Wpa3, QLatin1String("wpa3")},
                      {Security::Enterprise, QLatin1String("peap")}};

template<typename Condition>
const Word *find(Condition condition)
{
    const auto *found = std::find_if(std::begin(words), std::end(words), condition);
    return found == std::end(words) ? nullptr : found;
}
} // namespace

QString wordOf(Security security)
{
    const Word *found = find([=](const Word &word) { return word.security == security; });
    return found ? QString(found->text) : QStringLiteral("unsupported");
}

std::optional<Security> securityByWord(const QString &text)
{
    const Word *found = find([&](const Word &word) { return word.text == text; });
    return found ? std::make_optional(found->security) : std::nullopt;
}
