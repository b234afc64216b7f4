// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "command.h"
#include "message.h"

#include <bxwifi/translation.h>

#include <QCoreApplication>

#include <clocale>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

namespace
{
constexpr const char *usage =
    "Usage: bxwifictl VERB [OPTION]... [ARGUMENT]...\n"
    "Shows and changes how this device is connected, through the daemon bxwifid.\n"
    "\n"
    "Wireless:\n"
    "  status       show the connection\n"
    "  scan         list the networks in sight\n"
    "  connect      join a network by name, e.g. bxwifictl connect 'My Network'\n"
    "  disconnect   leave the network; it stays stored\n"
    "  forget       remove a stored network\n"
    "  address      print the address of the wireless interface\n"
    "  relink       have the daemon connect to a restarted supplicant\n"
    "  monitor      show all that the daemon says, until interrupted\n"
    "  keep         keep the device in a network, until interrupted\n"
    "\n"
    "Wired:\n"
    "  wired        show or set how the wired port is addressed\n"
    "\n"
    "  -h, --help     print this text; behind a verb: all about that verb\n"
    "  -V, --version  print the version\n"
    "\n"
    "Exit status: 0 success, 1 any other failure, 2 wrong usage, 3 no daemon,\n"
    "4 access denied, 5 wrong key, 6 network not found, 7 timed out.\n";

struct Verb {
    const char *name;
    const char *options; ///< letters, see options.cpp
    int fewestArguments;
    int mostArguments;
    ExitStatus (*run)(const Command &command);
    const char *help;
};

const Verb verbs[] = {
    {"status", "j", 0, 0, showStatus,
     "Usage: bxwifictl status [--json]\n"
     "Shows the wireless connection: network, address, access point, security.\n"},
    {"scan", "ja", 0, 0, scan,
     "Usage: bxwifictl scan [--all] [--json]\n"
     "Looks for networks and lists them by signal, one row per network. The joined\n"
     "one is marked with '*'.\n"
     "\n"
     "      --all   one row per access point, hidden networks included\n"
     "      --json  for programs\n"},
    {"connect", "jHSsiput", 1, 1, connectTo,
     "Usage: bxwifictl connect [OPTION]... NAME\n"
     "       bxwifictl connect --uri-file FILE [--timeout SECONDS] [--json]\n"
     "Joins a network, waits for an address and prints it. Asks for the passphrase if\n"
     "the network needs one. What is stored under the name is replaced.\n"
     "\n"
     "      --password-file FILE  take passphrase, key or password from the first line\n"
     "                            of FILE, or of standard input for -\n"
     "      --stored              join with what is stored for this network; for WPA,\n"
     "                            WPA2 and WEP\n"
     "      --hidden              the network does not announce its name\n"
     "      --security KIND       open, wpa (WPA and WPA2), wpa3, wep or peap; without\n"
     "                            it, what the network announces (hidden: wpa)\n"
     "      --identity NAME       user name on an enterprise network\n"
     "      --uri-file FILE       take all of that from the text of a QR code, WIFI:...,\n"
     "                            in the first line of FILE, or of standard input for -\n"
     "      --timeout SECONDS     give up after that time (45)\n"
     "      --json                print the result for programs\n"},
    {"disconnect", "", 0, 0, disconnect,
     "Usage: bxwifictl disconnect\n"
     "Leaves the network. It stays stored; 'connect --stored' joins it again.\n"},
    {"forget", "", 1, 1, forget,
     "Usage: bxwifictl forget NAME\n"
     "Removes all that is stored under the name of a network.\n"},
    {"address", "j", 0, 0, showAddress,
     "Usage: bxwifictl address [--json]\n"
     "Prints the address of the wireless interface; nothing when it has none.\n"},
    {"relink", "", 0, 0, relink,
     "Usage: bxwifictl relink\n"
     "Has the daemon connect to the supplicant anew, after that was restarted.\n"},
    {"monitor", "j", 0, 0, monitor,
     "Usage: bxwifictl monitor [--json]\n"
     "Shows all that the daemon says to anybody, one signal a line.\n"},
    {"keep", "jo", 0, 0, keep,
     "Usage: bxwifictl keep [--once] [--json]\n"
     "Keeps the device in a network: joins one that was joined before when none is,\n"
     "and has the daemon find a supplicant that was restarted. Tells what it decides,\n"
     "one line each.\n"
     "\n"
     "      --once  decide once; 0: in a network, or not to be, 6: none in sight\n"
     "      --json  for programs, on standard output\n"},
    {"wired", "j", 0, 4, wired,
     "Usage: bxwifictl wired [live] [--json]\n"
     "       bxwifictl wired static ADDRESS GATEWAY NETMASK\n"
     "       bxwifictl wired dhcp on|off\n"
     "Shows the settings of the wired port in the boot environment, or with 'live' how\n"
     "it is addressed now; stores a static address, or whether DHCP is wanted. What is\n"
     "stored takes effect at the next boot.\n"},
};

const Verb *verbOf(const char *name)
{
    for (const Verb &verb : verbs) {
        if (std::strcmp(verb.name, name) == 0)
            return &verb;
    }
    return nullptr;
}

bool isOneOf(const char *word, const char *shortForm, const char *longForm)
{
    return std::strcmp(word, shortForm) == 0 || std::strcmp(word, longForm) == 0;
}

/// A closed descriptor would become the bus's or a file's, which were then read or written to. In
/// its place comes one that can be neither.
void occupyStandardDescriptors()
{
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(descriptor, F_GETFD) == -1)
            open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
}

/// What is not written has not succeeded.
ExitStatus withOutput(ExitStatus status)
{
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0)
        return status;
    printError(Message::tr("cannot write to standard output"));
    return status == Success ? Failure : status;
}

ExitStatus run(const Verb &verb, int argc, char **argv)
{
    const std::optional<Options> options = parseOptions(argc, argv, verb.options);
    if (!options)
        return UsageError;
    if (options->help) {
        std::fputs(verb.help, stdout);
        return Success;
    }
    // A code names the network as an argument does.
    const int count = options->arguments.size() + (options->uriFile.isEmpty() ? 0 : 1);
    if (count < verb.fewestArguments || count > verb.mostArguments) {
        std::fputs(verb.help, stderr);
        return UsageError;
    }
    BxWifi::WifiClient client;
    return verb.run({client, *options});
}
} // namespace

int main(int argc, char **argv)
{
    occupyStandardDescriptors();
    if (argc < 2) {
        std::fputs(usage, stderr);
        return UsageError;
    }
    if (isOneOf(argv[1], "-h", "--help")) {
        std::fputs(usage, stdout);
        return withOutput(Success);
    }
    if (isOneOf(argv[1], "-V", "--version")) {
        std::puts("bxwifictl " BXWIFI_VERSION);
        return withOutput(Success);
    }
    const QCoreApplication application(argc, argv);
    std::setlocale(LC_CTYPE, "C.UTF-8"); // what is written is always UTF-8
    const Verb *verb = verbOf(argv[1]);
    if (!verb || verb->run != keep) // a service's log, as text and as JSON, is in English
        BxWifi::installTranslation(QLocale());
    if (!verb)
        return failUsage(
            Message::tr("no verb '%1'; see bxwifictl --help").arg(QString::fromUtf8(argv[1])));
    return withOutput(run(*verb, argc - 1, argv + 1));
}
