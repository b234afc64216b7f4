// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "journal.h"

#include <unistd.h>

// As fake-tool writes them; neither occurs in a command or an argument.
constexpr char endOfEntry = '\036';
constexpr char endOfWord = '\037';

Journal::Journal(const QString &path) : file(path)
{
    if (!file.open(QIODevice::ReadWrite | QIODevice::Append | QIODevice::Unbuffered))
        qFatal("cannot write %s", qPrintable(path));
}

void Journal::append(const QByteArray &entry)
{
    // One write, so that entries of several writers don't mix.
    const QByteArray line = entry + endOfEntry;
    if (write(file.handle(), line.constData(), static_cast<size_t>(line.size())) != line.size())
        qFatal("cannot write %s", qPrintable(path()));
}

QByteArrayList Journal::entries() const
{
    QFile reader(path());
    reader.open(QIODevice::ReadOnly);
    QByteArrayList found = reader.readAll().split(endOfEntry);
    found.removeLast();
    return found.mid(taken);
}

QByteArrayList Journal::take()
{
    const QByteArrayList found = entries();
    taken += found.size();
    return found;
}

QByteArray toolRun(const QByteArrayList &words)
{
    return words.join(endOfWord);
}

QByteArray busSignal(const QString &name, const QVariant &argument)
{
    const QByteArray value = argument.type() == QVariant::ByteArray ? argument.toByteArray().toHex()
                                                                    : argument.toString().toUtf8();
    return name.toUtf8() + '(' + value + ')';
}
