// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "options.h"

#include "command.h"
#include "message.h"
#include "securityword.h"
#include "utf8.h"

#include <QFile>

#include <chrono>
#include <cstring>

#include <getopt.h>

using BxWifi::JoinSettings;

namespace
{
const option longOptions[] = {
    {"json", no_argument, nullptr, 'j'},
    {"all", no_argument, nullptr, 'a'},
    {"hidden", no_argument, nullptr, 'H'},
    {"stored", no_argument, nullptr, 'S'},
    {"once", no_argument, nullptr, 'o'},
    {"security", required_argument, nullptr, 's'},
    {"identity", required_argument, nullptr, 'i'},
    {"password-file", required_argument, nullptr, 'p'},
    {"uri-file", required_argument, nullptr, 'u'},
    {"timeout", required_argument, nullptr, 't'},
    {"help", no_argument, nullptr, 'h'},
    {nullptr, 0, nullptr, 0},
};

/// Names of networks are bytes, whatever the locale says.
bool setText(QString &text, const char *value)
{
    const auto decoded = textOf(value);
    if (!decoded)
        printError(Message::tr("'%1' is not UTF-8 text").arg(QString::fromUtf8(value)));
    text = decoded.value_or(QString());
    return decoded.has_value();
}

bool setSecurity(JoinSettings &settings, const char *value)
{
    const auto security = securityByWord(QLatin1String(value));
    settings.security = security.value_or(settings.security);
    if (!security)
        printError(Message::tr("--security is open, wpa, wpa3, wep or peap"));
    return security.has_value();
}

bool setTimeout(JoinSettings &settings, const char *value)
{
    bool isNumber = false;
    settings.timeout = std::chrono::seconds(QByteArray(value).toInt(&isNumber));
    if (!isNumber)
        printError(Message::tr("--timeout takes whole seconds"));
    return isNumber;
}

bool setOption(Options &options, int letter, const char *value)
{
    switch (letter) {
    case 'j':
        return options.json = true;
    case 'a':
        return options.all = true;
    case 'H':
        return options.join.hidden = true;
    case 'S':
        return options.stored = true;
    case 'o':
        return options.once = true;
    case 'h':
        return options.help = true;
    case 's':
        return setSecurity(options.join, value);
    case 'i':
        return setText(options.join.identity, value);
    case 'p':
        options.passwordFile = QFile::decodeName(value);
        return true;
    case 'u':
        options.uriFile = QFile::decodeName(value);
        return true;
    case 't':
        return setTimeout(options.join, value);
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
                //: %1 is a verb of the command line
                Message::tr("%1 takes no option --%2")
                    .arg(QString::fromUtf8(argv[0]), QString::fromUtf8(longOptions[index].name)));
            return std::nullopt;
        }
        if (!setOption(options, letter, optarg))
            return std::nullopt;
    }
    for (int i = optind; i < argc; ++i) {
        QString argument;
        if (!setText(argument, argv[i]))
            return std::nullopt;
        options.arguments << argument;
    }
    return options;
}
