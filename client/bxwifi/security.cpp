// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "security.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>

namespace BxWifi
{
namespace
{
/// What one bracketed token of the flags says, e.g. [WPA2-PSK+SAE-CCMP+TKIP-preauth].
struct Token {
    QString protocol;        ///< "WPA", "WPA2" or "RSN"; without key management the whole token
    QStringList managements; ///< "PSK", "EAP", "FT/PSK" ...

    bool isWpa() const { return protocol == QLatin1String("WPA"); }
    bool isRsn() const
    {
        return protocol == QLatin1String("WPA2") || protocol == QLatin1String("RSN");
    }
    bool has(const char *management) const
    {
        return managements.contains(QLatin1String(management));
    }
};

// Key managements, then ciphers, each joined by "+"; and there are "-" in the words of both.
Token tokenOf(const QString &text)
{
    static const QRegularExpression ciphers(
        QStringLiteral("(^|-)(TKIP|CCMP(-256)?|GCMP(-256)?|NONE|WEP-?(40|104)|preauth)(?=$|-)"));
    Token token{text.section(QLatin1Char('-'), 0, 0), {}};
    const auto words = text.section(QLatin1Char('-'), 1).split(QLatin1Char('+'));
    for (QString word : words) {
        word.remove(ciphers);
        if (!word.isEmpty())
            token.managements << word;
    }
    return token;
}

QVector<Token> tokensOf(const QString &flags)
{
    static const QRegularExpression bracketed(QStringLiteral("\\[([^\\]]*)\\]"));
    QVector<Token> tokens;
    for (auto match = bracketed.globalMatch(flags); match.hasNext();)
        tokens << tokenOf(match.next().captured(1));
    return tokens;
}

bool hasToken(const QVector<Token> &tokens, const char *word)
{
    return std::any_of(tokens.begin(), tokens.end(), [word](const Token &token) {
        return token.protocol == QLatin1String(word);
    });
}

bool hasManagement(const QVector<Token> &tokens, const char *management)
{
    return std::any_of(tokens.begin(), tokens.end(), [management](const Token &token) {
        return (token.isWpa() || token.isRsn()) && token.has(management);
    });
}

bool isOpen(const QVector<Token> &tokens)
{
    return std::none_of(tokens.begin(), tokens.end(), [](const Token &token) {
        const bool isOfOwe = token.protocol == QLatin1String("OWE") && !token.has("TRANS-OPEN");
        return token.isWpa() || token.isRsn() || token.protocol == QLatin1String("OSEN") || isOfOwe;
    });
}

Security securityOf(const QVector<Token> &tokens)
{
    if (hasToken(tokens, "MESH") || hasToken(tokens, "IBSS"))
        return Security::Unsupported;
    if (hasManagement(tokens, "PSK")) // also beside SAE: a transition network is joined like WPA2
        return Security::Wpa;
    if (hasManagement(tokens, "SAE"))
        return Security::Wpa3;
    if (hasManagement(tokens, "EAP"))
        return Security::Enterprise;
    if (hasToken(tokens, "WEP"))
        return Security::Wep;
    return isOpen(tokens) ? Security::Open : Security::Unsupported;
}

/// "WPA", "WPA2", "WPA3" or some of them, where they take a passphrase, or a login.
QString generationsOf(const QVector<Token> &tokens, const char *management)
{
    QStringList generations;
    for (const Token &token : tokens) {
        if (token.has(management) && token.isWpa())
            generations << QStringLiteral("WPA");
        if (token.has(management) && token.isRsn())
            generations << QStringLiteral("WPA2");
    }
    return generations.join(QLatin1Char('/'));
}
} // namespace

Security securityOf(const QString &flags)
{
    return securityOf(tokensOf(flags));
}

QString securityText(const QString &flags)
{
    const QVector<Token> tokens = tokensOf(flags);
    switch (securityOf(tokens)) {
    case Security::Open:
        //: How a network is protected: not at all
        return QCoreApplication::translate("BxWifi::Security", "open");
    case Security::Wep:
        return QStringLiteral("WEP");
    case Security::Wpa3:
        return QStringLiteral("WPA3");
    case Security::Wpa:
        return generationsOf(tokens, "PSK") +
               QLatin1String(hasManagement(tokens, "SAE") ? "/WPA3" : "");
    case Security::Enterprise:
        //: How a network is protected; %1 is WPA, WPA2 or both
        return QCoreApplication::translate("BxWifi::Security", "%1 Enterprise")
            .arg(generationsOf(tokens, "EAP"));
    case Security::Automatic:
    case Security::Unsupported:
        break;
    }
    //: How a network is protected: in a way that the device cannot join
    return QCoreApplication::translate("BxWifi::Security", "unsupported");
}
} // namespace BxWifi
