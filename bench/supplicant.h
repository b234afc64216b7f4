// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <string>

/// Starts a bare responder in the supplicant's place: a process that answers each command with a
/// text that lies ready, and sends an event of new scan results on the command EVENT. It ends with
/// this process.
void startSupplicant();

/// The table of 30 networks that it answers SCAN_RESULTS with.
std::string scanResults();

/// A connection to its control socket without any client library; returns the descriptor.
int connectToSupplicant();
/// One command and its reply.
void exchange(int supplicant, const std::string &command);
