// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "ssid.h"

#include <QTextCodec>

#include <algorithm>
#include <cctype>

namespace BxWifi
{
namespace
{
struct Escape {
    char letter;
    char byte;
};
constexpr Escape escapes[] = {{'"', '"'},  {'\\', '\\'}, {'e', '\033'},
                              {'n', '\n'}, {'r', '\r'},  {'t', '\t'}};

QByteArray printedByte(char byte)
{
    for (const Escape &escape : escapes) {
        if (escape.byte == byte)
            return QByteArray("\\") + escape.letter;
    }
    if (byte >= ' ' && byte <= '~')
        return {1, byte};
    return "\\x" + QByteArray(1, byte).toHex();
}

bool isHexDigit(char character)
{
    return std::isxdigit(static_cast<unsigned char>(character)) != 0;
}

/// The byte behind the backslash at `position`, which is moved to the escape's last character. What
/// is no escape is kept: the daemon may have cut the text.
char escapedByte(const QByteArray &printed, int &position)
{
    const char letter = position + 1 < printed.size() ? printed[position + 1] : '\0';
    for (const Escape &escape : escapes) {
        if (escape.letter == letter) {
            ++position;
            return escape.byte;
        }
    }
    const QByteArray digits = printed.mid(position + 2, 2);
    const bool isHex = digits.size() == 2 && std::all_of(digits.begin(), digits.end(), isHexDigit);
    if (letter != 'x' || !isHex)
        return '\\';
    position += 3;
    return QByteArray::fromHex(digits)[0];
}

/// Like QString::fromUtf8(), which drops a byte order mark in front. What is cut at the end counts
/// as wrong, as it does elsewhere.
QString textOf(const QByteArray &utf8)
{
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    const QString text =
        QTextCodec::codecForName("UTF-8")->toUnicode(utf8.constData(), utf8.size(), &state);
    return text + QString(state.remainingChars > 0, QChar::ReplacementCharacter);
}
} // namespace

QString ssidOf(const QString &printed)
{
    const QByteArray text = printed.toUtf8();
    QByteArray bytes;
    for (int position = 0; position < text.size(); ++position)
        bytes += text[position] == '\\' ? escapedByte(text, position) : text[position];
    return textOf(bytes);
}

QString reportedSsid(QString ssid)
{
    return ssid.remove(QLatin1String("ssid="));
}

QString printedSsid(const QString &ssid)
{
    QByteArray printed;
    for (const char byte : ssid.toUtf8())
        printed += printedByte(byte);
    return QString::fromLatin1(printed);
}
} // namespace BxWifi
