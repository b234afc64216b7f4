// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QCoreApplication>

/// Message::tr() is for what the program says to people: errors, progress, questions. Help and
/// results are read by programs too, and are the same in every language.
struct Message {
    Q_DECLARE_TR_FUNCTIONS(bxwifictl)
};
