// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "ssid.h"

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
    const QByteArray byte = QByteArray::fromHex(printed.mid(position + 2, 2));
    if (letter != 'x' || byte.size() != 1)
        return '\\';
    position += 3;
    return byte[0];
}
} // namespace

QString ssidOf(const QString &printed)
{
    const QByteArray text = printed.toUtf8();
    QByteArray bytes;
    for (int position = 0; position < text.size(); ++position)
        bytes += text[position] == '\\' ? escapedByte(text, position) : text[position];
    return QString::fromUtf8(bytes);
}

QString printedSsid(const QString &ssid)
{
    QByteArray printed;
    for (const char byte : ssid.toUtf8())
        printed += printedByte(byte);
    return QString::fromLatin1(printed);
}
} // namespace BxWifi
