// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "tools.h"

#include <array>
#include <cstdlib>
#include <stdexcept>

#include <fcntl.h>
#include <sys/wait.h>

const std::vector<Words> staticTools = {{"fw_printenv", "ipaddr"},
                                        {"fw_printenv", "gatewayip"},
                                        {"fw_printenv", "netmask"},
                                        {"fw_printenv", "ethaddr"}};
const std::vector<Words> dynamicTools = {{"fw_printenv", "dynamicip"},
                                         {"ifconfig", "eth0"},
                                         {"route", "-n"},
                                         {"fw_printenv", "ethaddr"}};

pid_t start(Words words, int output)
{
    std::vector<char *> arguments;
    for (std::string &word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);

    const pid_t process = fork();
    if (process == 0) {
        dup2(output, STDOUT_FILENO);
        execvp(arguments[0], arguments.data());
        _exit(EXIT_FAILURE);
    }
    if (process < 0)
        throw std::runtime_error("cannot start " + words[0]);
    return process;
}

static void runTool(const Words &words)
{
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    const pid_t process = start(words, ends[1]);
    close(ends[1]);
    std::array<char, 4096> output;
    while (read(ends[0], output.data(), output.size()) > 0) {
    }
    close(ends[0]);
    waitpid(process, nullptr, 0);
}

void run(const std::vector<Words> &tools)
{
    for (const Words &words : tools)
        runTool(words);
}
