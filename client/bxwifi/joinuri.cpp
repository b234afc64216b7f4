// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

// The "WIFI:" scheme of QR codes. It has no standard that everybody follows; what is read here is
// what the cameras of phones read, and what is written is what all of them understand.

#include "joinsettings.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <optional>

namespace BxWifi
{
namespace
{
struct Type {
    const char *name;
    Security security;
};
constexpr Type types[] = {{"nopass", Security::Open},
                          {"WEP", Security::Wep},
                          {"WPA", Security::Wpa},
                          {"SAE", Security::Wpa3},
                          {"WPA2-EAP", Security::Enterprise}};

bool endsInEscape(const QString &text)
{
    static const QRegularExpression escape(QStringLiteral(R"((?<!\\)(\\\\)*\\\z)"));
    return escape.match(text).hasMatch();
}

/// The fields between the semicolons, their values still escaped.
QStringList fieldsOf(const QString &text)
{
    QStringList fields{QString()};
    bool isEscaped = false;
    for (const QChar c : text) {
        if (c == QLatin1Char(';') && !isEscaped)
            fields << QString();
        else
            fields.last() += c;
        isEscaped = c == QLatin1Char('\\') && !isEscaped;
    }
    return fields;
}

QString unescaped(QString text)
{
    static const QRegularExpression escape(QStringLiteral(R"(\\(.))"),
                                           QRegularExpression::DotMatchesEverythingOption);
    return text.replace(escape, QStringLiteral(R"(\1)"));
}

QString escaped(QString text)
{
    static const QRegularExpression special(QStringLiteral(R"(([\\;,":]))"));
    return text.replace(special, QStringLiteral(R"(\\1)"));
}

/// The text behind hexadecimal digits; none if there are other characters or the bytes are no
/// printable UTF-8: no name or key that the daemon could pass on.
std::optional<QString> textOfDigits(const QString &digits)
{
    static const QRegularExpression bytes(QStringLiteral(R"(\A([0-9A-Fa-f]{2})+\z)"));
    if (!bytes.match(digits).hasMatch())
        return std::nullopt;
    const QString text = QString::fromUtf8(QByteArray::fromHex(digits.toLatin1()));
    const bool isText = std::none_of(text.begin(), text.end(), [](QChar c) {
        return c == QChar::ReplacementCharacter || c.category() == QChar::Other_Control;
    });
    return isText ? std::optional(text) : std::nullopt;
}

struct Value {
    QString text;
    bool isQuoted = false; ///< It is no hexadecimal digits then, even if it looks like them
};

/// The value of a field, the first if there are several, or an empty one.
Value valueOf(const QStringList &fields, const char *name)
{
    const QString start = QLatin1String(name) + QLatin1Char(':');
    const auto field = std::find_if(fields.begin(), fields.end(), [&start](const QString &each) {
        return each.startsWith(start);
    });
    if (field == fields.end())
        return {};
    const QString raw = field->mid(start.size());
    const QString inner = raw.mid(1, raw.size() - 2);
    if (raw == QLatin1Char('"') + inner + QLatin1Char('"') && !endsInEscape(inner))
        return {unescaped(inner), true};
    return {unescaped(raw), false};
}

QString nameOf(const Value &value)
{
    return value.isQuoted ? value.text : textOfDigits(value.text).value_or(value.text);
}

/// A key of 10 or 26 digits stands for 5 or 13 bytes; none if these are no text.
std::optional<QString> wepKeyOf(const QString &secret)
{
    static const QRegularExpression digits(
        QStringLiteral(R"(\A([0-9A-Fa-f]{10}|[0-9A-Fa-f]{26})\z)"));
    return digits.match(secret).hasMatch() ? textOfDigits(secret) : secret;
}

/// Without a type the network is open.
std::optional<Security> securityOfType(const QString &name)
{
    if (name.isEmpty())
        return Security::Open;
    for (const Type &type : types) {
        if (name.compare(QLatin1String(type.name), Qt::CaseInsensitive) == 0)
            return type.security;
    }
    return std::nullopt;
}

/// Takes what the security asks for; a sentence about what is wrong with it.
QString takeSecret(JoinSettings &settings, const QStringList &fields)
{
    settings.secret = valueOf(fields, "P").text;
    if (settings.security == Security::Open) // phones overlook a left-over passphrase
        settings.secret.clear();
    if (settings.security == Security::Wep) {
        const std::optional<QString> key = wepKeyOf(settings.secret);
        if (!key)
            return QCoreApplication::translate(
                "BxWifi::JoinSettings", "the daemon cannot pass on a WEP key that is not text");
        settings.secret = *key;
    }
    if (settings.security == Security::Enterprise) {
        const QString method = valueOf(fields, "E").text;
        if (!method.isEmpty() && method.compare(QLatin1String("PEAP"), Qt::CaseInsensitive) != 0)
            return QCoreApplication::translate(
                "BxWifi::JoinSettings",
                "of the enterprise networks only those with PEAP can be joined");
        settings.identity = valueOf(fields, "I").text;
    }
    return {};
}

QString read(const QString &uri, JoinSettings &settings)
{
    const QString scheme = QStringLiteral("WIFI:");
    if (!uri.startsWith(scheme, Qt::CaseInsensitive))
        return QCoreApplication::translate(
            "BxWifi::JoinSettings",
            "this is no code of a wireless network: it does not begin with \"WIFI:\"");
    if (endsInEscape(uri))
        return QCoreApplication::translate("BxWifi::JoinSettings", "the code is cut off");
    const QStringList fields = fieldsOf(uri.mid(scheme.size()));
    settings.ssid = nameOf(valueOf(fields, "S"));
    if (settings.ssid.isEmpty())
        return QCoreApplication::translate("BxWifi::JoinSettings",
                                           "the code does not name a network");
    const std::optional<Security> security = securityOfType(valueOf(fields, "T").text);
    if (!security)
        return QCoreApplication::translate("BxWifi::JoinSettings",
                                           "the code names a kind of protection that is not known");
    settings.security = *security;
    settings.hidden =
        valueOf(fields, "H").text.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0;
    return takeSecret(settings, fields);
}

QString field(const char *name, const QString &value)
{
    return QStringLiteral("%1:%2;").arg(QLatin1String(name), value);
}

/// Phones that know hexadecimal names take any that looks like one for it.
QString quotedName(const QString &ssid)
{
    static const QRegularExpression digits(QStringLiteral(R"(\A[0-9A-Fa-f]+\z)"));
    return digits.match(ssid).hasMatch() ? QStringLiteral("\"%1\"").arg(ssid) : escaped(ssid);
}
} // namespace

JoinSettings JoinSettings::fromUri(const QString &uri, QString *problem)
{
    JoinSettings settings;
    *problem = read(uri.trimmed(), settings);
    return problem->isEmpty() ? settings : JoinSettings();
}

QString JoinSettings::toUri() const
{
    const Security written = security != Security::Automatic ? security
                             : secret.isEmpty()              ? Security::Open
                                                             : Security::Wpa;
    const auto type = std::find_if(std::begin(types), std::end(types), [written](const Type &each) {
        return each.security == written;
    });
    if (type == std::end(types))
        return {};
    QString uri = QStringLiteral("WIFI:") + field("T", QLatin1String(type->name)) +
                  field("S", quotedName(ssid));
    if (written == Security::Enterprise)
        uri += field("E", QStringLiteral("PEAP")) + field("PH2", QStringLiteral("MSCHAPV2")) +
               field("I", escaped(identity));
    if (!secret.isEmpty())
        uri += field("P", escaped(secret));
    if (hidden)
        uri += field("H", QStringLiteral("true"));
    return uri + QLatin1Char(';');
}
} // namespace BxWifi
