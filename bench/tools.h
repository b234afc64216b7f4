// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <string>
#include <vector>

#include <unistd.h>

using Words = std::vector<std::string>;

/// What the daemon runs for staticRequest() and for dynamicRequest().
extern const std::vector<Words> staticTools;
extern const std::vector<Words> dynamicTools;

/// Starts a program by fork() and exec(), with the descriptor as its standard output.
pid_t start(Words words, int output = STDOUT_FILENO);

/// Runs tools one after the other to their ends, reading what they print.
void run(const std::vector<Words> &tools);
