// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "journal.h"

#include <QFile>

constexpr char endOfEntry = '\036'; // as fake-tool writes it; occurs in no command or argument

void Journal::append(const QByteArray &entry) const
{
    // One write, so that entries of several writers don't mix.
    QFile file(path);
    if (!file.open(QIODevice::Append | QIODevice::Unbuffered) || file.write(entry + endOfEntry) < 0)
        qFatal("cannot write %s", qPrintable(path));
}

QByteArrayList Journal::entries() const
{
    QFile file(path);
    file.open(QIODevice::ReadWrite); // makes it when there is no entry yet
    QByteArrayList found = file.readAll().split(endOfEntry);
    found.removeLast();
    return found.mid(taken);
}

QByteArrayList Journal::take()
{
    const QByteArrayList found = entries();
    taken += found.size();
    return found;
}
