// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "quitsignals.h"
#include "wifidaemon.h"

#include <cstdio>
#include <cstdlib>
#include <optional>

#include <getopt.h>

namespace
{
constexpr int usageError = 2;

constexpr const char *usage =
    "Usage: bxwifid [OPTION]...\n"
    "Network-configuration daemon; serves com.brelvix.bxwifid on the system bus.\n"
    "\n"
    "      --reset-supplicant-config  first repair a missing or truncated\n"
    "                                 /prefs/etc/wpa_supplicant.conf\n"
    "      --wired-dhcp               first obtain an address for eth0 by DHCP, if the\n"
    "                                 boot environment asks for one\n"
    "  -h, --help                     print this text and exit\n"
    "  -V, --version                  print the version and exit\n";

struct Options {
    bool resetSupplicantConfig = false;
    bool wiredDhcp = false;
};

/// The options given; none after a usage error. Ends the process for --help and --version.
std::optional<Options> parseOptions(int argc, char **argv)
{
    enum { Reset = 256, WiredDhcp };
    static const option longOptions[] = {
        {"reset-supplicant-config", no_argument, nullptr, Reset},
        {"wired-dhcp", no_argument, nullptr, WiredDhcp},
        {"help", no_argument, nullptr, 'h'},
        {"version", no_argument, nullptr, 'V'},
        {nullptr, 0, nullptr, 0},
    };
    Options options;
    for (int chosen; (chosen = getopt_long(argc, argv, "hV", longOptions, nullptr)) != -1;) {
        switch (chosen) {
        case Reset:
            options.resetSupplicantConfig = true;
            break;
        case WiredDhcp:
            options.wiredDhcp = true;
            break;
        case 'h':
            std::fputs(usage, stdout);
            std::exit(EXIT_SUCCESS);
        case 'V':
            std::puts("bxwifid " BXWIFI_VERSION);
            std::exit(EXIT_SUCCESS);
        default:
            return std::nullopt;
        }
    }
    if (optind < argc) {
        std::fprintf(stderr, "bxwifid: unexpected argument '%s'\n", argv[optind]);
        return std::nullopt;
    }
    return options;
}
} // namespace

int main(int argc, char **argv)
{
    const std::optional<Options> options = parseOptions(argc, argv);
    if (!options) {
        std::fputs("Try 'bxwifid --help'.\n", stderr);
        return usageError;
    }

    catchQuitSignals();
    WifiDaemon daemon(argc, argv);
    quitOnSignals(daemon);
    if (options->resetSupplicantConfig)
        daemon.killFile();
    if (options->wiredDhcp && daemon.getDynamic())
        daemon.setDynamicEthernetIp();
    return WifiDaemon::exec();
}
