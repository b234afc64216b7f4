// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArrayList>
#include <QFile>
#include <QVariant>

#include <chrono>

/// The one ordered record of what happened around a daemon: the commands a fake supplicant got, to
/// the byte, the tools that ran, and the signals a bus client received. Threads and processes
/// append at the same time.
class Journal
{
public:
    explicit Journal(const QString &path);

    void append(const QByteArray &entry);

    /// All entries since the last `take()`, which also forgets them.
    QByteArrayList entries() const;
    QByteArrayList take();

    QString path() const { return file.fileName(); }

private:
    QFile file;
    int taken = 0;
};

/// The entry of a tool run: its name and its arguments.
QByteArray toolRun(const QByteArrayList &words);

/// The entry of a bus signal with its one argument; a byte array is shown in hexadecimal.
QByteArray busSignal(const QString &name, const QVariant &argument);
