// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "options.h"

#include "command.h"

#include <cstring>

#include <getopt.h>

using BxWifi::Security;

namespace
{
const option longOptions[] = {
    {"json", no_argument, nullptr, 'j'},
    {"all", no_argument, nullptr, 'a'},
    {"hidden", no_argument, nullptr, 'H'},
    {"stored", no_argument, nullptr, 'S'},
    {"security", required_argument, nullptr, 's'},
    {"identity", required_argument, nullptr, 'i'},
    {"password-file", required_argument, nullptr, 'p'},
    {"timeout", required_argument, nullptr, 't'},
    {"help", no_argument, nullptr, 'h'},
    {nullptr, 0, nullptr, 0},
};

struct SecurityName {
    const char *name;
    Security security;
};
constexpr SecurityName securityNames[] = {{"open", Security::Open},
                                          {"wep", Security::Wep},
                                          {"wpa", Security::Wpa},
                                          {"wpa3", Security::Wpa3},
                                          {"peap", Security::Enterprise}};

bool setSecurity(Options &options, const char *value)
{
    for (const SecurityName &entry : securityNames) {
        if (std::strcmp(entry.name, value) == 0) {
            options.security = entry.security;
            return true;
        }
    }
    printError(QStringLiteral("--security is open, wpa, wpa3, wep or peap"));
    return false;
}

bool setTimeout(Options &options, const char *value)
{
    bool isNumber = false;
    const int seconds = QByteArray(value).toInt(&isNumber);
    options.timeout = std::chrono::seconds(seconds);
    if (isNumber && seconds > 0)
        return true;
    printError(QStringLiteral("--timeout takes whole seconds"));
    return false;
}

bool setOption(Options &options, int letter, const char *value)
{
    switch (letter) {
    case 'j':
        return options.json = true;
    case 'a':
        return options.all = true;
    case 'H':
        return options.hidden = true;
    case 'S':
        return options.stored = true;
    case 'h':
        return options.help = true;
    case 's':
        return setSecurity(options, value);
    case 'i':
        options.identity = QString::fromUtf8(value);
        return true;
    case 'p':
        options.passwordFile = QString::fromUtf8(value);
        return true;
    case 't':
        return setTimeout(options, value);
    default: // getopt has said what is wrong
        return false;
    }
}
} // namespace

std::optional<Options> parseOptions(int argc, char **argv, const char *accepted)
{
    Options options;
    int index = 0;
    for (int letter; (letter = getopt_long(argc, argv, "h", longOptions, &index)) != -1;) {
        if (letter != '?' && letter != 'h' && !std::strchr(accepted, letter)) {
            printError(
                QStringLiteral("%1 takes no option --%2")
                    .arg(QString::fromUtf8(argv[0]), QString::fromUtf8(longOptions[index].name)));
            return std::nullopt;
        }
        if (!setOption(options, letter, optarg))
            return std::nullopt;
    }
    // Names of networks are bytes, whatever the locale says.
    for (int i = optind; i < argc; ++i)
        options.arguments << QString::fromUtf8(argv[i]);
    return options;
}
