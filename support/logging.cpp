// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "logging.h"

QDebug Logger::debug(const char *file, int line, const char *function) const
{
    return QMessageLogger(file, line, function).debug();
}

Logger &loggerInstance()
{
    static Logger logger;
    return logger;
}
