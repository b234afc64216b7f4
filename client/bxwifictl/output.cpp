// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "output.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <cstdio>
#include <cwchar>

#include <unistd.h>

namespace
{
bool isSafe(uint character)
{
    switch (QChar::category(character)) {
    case QChar::Other_Control:
    case QChar::Other_Format: // among them those that turn the direction of writing
    case QChar::Other_Surrogate:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return false;
    default:
        return true;
    }
}

// For a device without the locale from which the C library takes the widths: the blocks of East
// Asian and pictorial characters of Unicode's EastAsianWidth.txt.
struct Block {
    uint first, last;
};
constexpr Block wideBlocks[] = {
    {0x1100, 0x115f}, {0x2e80, 0xa4cf}, {0xac00, 0xd7a3},   {0xf900, 0xfaff},   {0xfe30, 0xfe6f},
    {0xff01, 0xff60}, {0xffe0, 0xffe6}, {0x1f300, 0x1f64f}, {0x1f900, 0x1f9ff}, {0x20000, 0x3fffd}};

int likelyWidthOf(uint character)
{
    const auto category = QChar::category(character);
    if (category == QChar::Mark_NonSpacing || category == QChar::Mark_Enclosing)
        return 0;
    const bool isWide =
        std::any_of(std::begin(wideBlocks), std::end(wideBlocks), [=](const Block &block) {
            return character >= block.first && character <= block.last;
        });
    return isWide ? 2 : 1;
}

/// QString::fromUcs4() drops a byte-order mark.
QString textOf(uint character)
{
    if (!QChar::requiresSurrogates(character))
        return QChar(static_cast<ushort>(character));
    return QString(QChar(QChar::highSurrogate(character))) + QChar(QChar::lowSurrogate(character));
}

int widthOf(const QString &text)
{
    int width = 0;
    for (const uint character : text.toUcs4()) {
        const int known = wcwidth(static_cast<wchar_t>(character));
        width += known >= 0 ? known : likelyWidthOf(character);
    }
    return width;
}

struct Unit {
    const char *suffix;
    const char *text;
};
constexpr Unit units[] = {{"_dbm", " dBm"}, {"_mhz", " MHz"}};

const Unit *unitOf(const QString &name)
{
    const auto *found = std::find_if(std::begin(units), std::end(units), [&](const Unit &unit) {
        return name.endsWith(QLatin1String(unit.suffix));
    });
    return found == std::end(units) ? nullptr : found;
}

QString labelOf(QString name)
{
    if (const Unit *unit = unitOf(name))
        name.chop(static_cast<int>(qstrlen(unit->suffix)));
    return name.replace(QLatin1Char('_'), QLatin1Char(' '));
}

QString textOf(const QString &name, const QJsonValue &value)
{
    if (value.isBool())
        return value.toBool() ? QStringLiteral("yes") : QStringLiteral("no");
    if (value.isString())
        return terminalSafe(value.toString());
    const int number = value.toInt();
    const Unit *unit = unitOf(name);
    if (number == 0)
        return {};
    return QString::number(number) + QLatin1String(unit ? unit->text : "");
}
} // namespace

QString terminalSafe(const QString &text)
{
    QString safe;
    for (const uint character : text.toUcs4()) {
        const QString piece = textOf(character);
        if (isSafe(character)) {
            safe += piece;
            continue;
        }
        for (const QChar unit : piece)
            safe += QStringLiteral("\\u%1").arg(unit.unicode(), 4, 16, QLatin1Char('0'));
    }
    return safe;
}

bool isTerminal()
{
    return isatty(STDOUT_FILENO) && !qEnvironmentVariableIsSet("NO_COLOR") &&
           qgetenv("TERM") != "dumb";
}

void print(const QString &line)
{
    std::puts(line.toUtf8().constData());
    std::fflush(stdout); // whoever reads from a pipe wants it now
}

void printJson(const QJsonValue &value)
{
    const QJsonDocument document =
        value.isArray() ? QJsonDocument(value.toArray()) : QJsonDocument(value.toObject());
    print(terminalSafe(QString::fromUtf8(document.toJson(QJsonDocument::Compact))));
}

QJsonObject jsonOf(const Fields &fields)
{
    QJsonObject object;
    for (const auto &[name, value] : fields)
        object.insert(name, value);
    return object;
}

QString listOf(const Fields &fields)
{
    QVector<QStringList> rows;
    for (const auto &[name, value] : fields) {
        const QString text = textOf(name, value);
        if (!text.isEmpty())
            rows.append({labelOf(name), text});
    }
    return tableOf(rows).join(QLatin1Char('\n'));
}

QString lineOf(const Fields &fields)
{
    QStringList pieces;
    for (const auto &[name, value] : fields)
        pieces << name + QLatin1Char('=') + terminalSafe(value.toVariant().toString());
    return pieces.join(QLatin1Char(' '));
}

QStringList tableOf(const QVector<QStringList> &rows)
{
    QVector<int> widths;
    for (const QStringList &row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (int column = 0; column < row.size(); ++column)
            widths[column] = std::max(widths[column], widthOf(row[column]));
    }
    QStringList lines;
    for (const QStringList &row : rows) {
        QString line;
        for (int column = 0; column < row.size(); ++column) {
            line += row[column];
            if (column + 1 < row.size())
                line += QString(widths[column] - widthOf(row[column]) + 2, QLatin1Char(' '));
        }
        lines << line;
    }
    return lines;
}

QString barsPicture(int bars)
{
    return QStringLiteral("▂▄▆█").left(bars).leftJustified(4);
}
