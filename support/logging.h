// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDebug>
#include <QLoggingCategory>

// Two kinds of line leave the daemon, both at debug level in Qt's category "default": debug lines,
// which carry no source context, and logger lines, which do.

/// The category of every line. `qCDebug(debugLog) << ...` writes a debug line, and evaluates
/// nothing when the category is silenced.
inline const QLoggingCategory &debugLog()
{
    return *QLoggingCategory::defaultCategory();
}

/// Where logger lines go.
class Logger
{
public:
    /// A line at debug level with the source context given; it is written when the stream ends.
    QDebug debug(const char *file, int line, const char *function) const;
};

Logger &loggerInstance();

/// Builds one logger line.
class CuteMessageLogger
{
public:
    /// The texts must outlive the line; string literals do.
    CuteMessageLogger(const char *file, int line, const char *function)
        : sourceFile(file), sourceLine(line), sourceFunction(function)
    {
    }

    QDebug write() const { return loggerInstance().debug(sourceFile, sourceLine, sourceFunction); }

private:
    const char *sourceFile;
    int sourceLine;
    const char *sourceFunction;
};
