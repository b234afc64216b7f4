// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArrayList>
#include <QString>

/// The one ordered record of what happened around a daemon: the commands a fake supplicant got, to
/// the byte, the tools that ran, as "tool|argument|argument", and the signals a bus client
/// received. Threads and processes append at the same time.
class Journal
{
public:
    explicit Journal(const QString &file) : path(file) {}

    void append(const QByteArray &entry) const;

    /// All entries since the last `take()`, which also forgets them.
    QByteArrayList entries() const;
    QByteArrayList take();

    const QString path;

private:
    int taken = 0;
};
