// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

// Measures the daemon beside floors that are taken in the same run, turn by turn, so that a ratio
// holds on any machine. bench/run prepares what this expects: a system bus, a control-socket
// directory of its own, the tools on the search path, everything on one processor.

#include "bus.h"
#include "daemon/supplicantreply.h"
#include "figures.h"
#include "records/payload.h"
#include "supplicant.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <optional>
#include <stdexcept>
#include <thread>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
using Words = std::vector<std::string>;

constexpr auto settling = std::chrono::milliseconds(500); // for a started service to become idle

const std::filesystem::path binaries =
    std::filesystem::read_symlink("/proc/self/exe").parent_path();

pid_t start(Words words, int output = STDOUT_FILENO)
{
    std::vector<char *> arguments;
    for (std::string &word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    pid_t process = 0;
    if (posix_spawnp(&process, arguments[0], &actions, nullptr, arguments.data(), environ) != 0)
        throw std::runtime_error("cannot start " + words[0]);
    posix_spawn_file_actions_destroy(&actions);
    return process;
}

/// Runs a tool to its end, reading what it prints.
void runTool(const Words &words)
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

/// A program with a name on the bus, from that name's being owned to the program's exit.
class Service
{
public:
    Service(const std::string &program, const std::string &name)
    {
        Bus bus;
        bus.listen("member='NameOwnerChanged',arg0='" + name + "'");
        startUp.time([&] {
            process = start({binaries / program});
            bus.awaitSignal("NameOwnerChanged");
        });
        std::this_thread::sleep_for(settling);
    }
    ~Service()
    {
        kill(process, SIGTERM);
        waitpid(process, nullptr, 0);
    }
    Service(const Service &) = delete;
    Service &operator=(const Service &) = delete;

    /// A value in KiB from the sums over the process's memory.
    double memory(const std::string &key) const
    {
        std::ifstream sums("/proc/" + std::to_string(process) + "/smaps_rollup");
        for (std::string word; sums >> word;) {
            if (word == key)
                break;
        }
        double size = 0;
        sums >> size;
        return size;
    }

    Series startUp;

private:
    pid_t process = 0;
};

struct Daemon : Service {
    explicit Daemon(bool logs = false) : Service(set(logs), "com.brelvix.bxwifid") {}
    static const char *set(bool logs)
    {
        setenv("QT_LOGGING_RULES", logs ? "default.debug=true" : "default.debug=false", 1);
        return "bxwifid";
    }
};

using Action = std::function<void()>;

struct Floor {
    double share;
    Action action;
};

/// Times an action beside the things that it cannot do without, turn by turn.
void measure(
    const std::string &name, int rounds, const std::vector<Floor> &floors, const Action &action,
    double aim, const Action &after = [] {})
{
    std::vector<Series> floorCosts(floors.size());
    Series costs;
    for (int round = 0; round < rounds; ++round) {
        for (size_t floor = 0; floor < floors.size(); ++floor)
            floorCosts[floor].time(floors[floor].action);
        costs.time(action);
        after();
    }
    double sum = 0;
    for (size_t floor = 0; floor < floors.size(); ++floor)
        sum += floors[floor].share * floorCosts[floor].median();
    print(name, costs, sum, aim);
}

/// A client that receives the daemon's signals.
class Client : public Bus
{
public:
    Client() { listen("interface='com.brelvix.bxwifid'"); }

    /// Times a method from its call to the answering signal.
    void measureMethod(const std::string &name, int rounds, const std::vector<Floor> &floors,
                       const char *method, const char *signal, double aim)
    {
        const Action call = [&] {
            send(method);
            awaitSignal(signal);
        };
        measure(name, rounds, floors, call, aim, [this] { awaitReply(); });
    }
};

/// The floor is the supplicant's exchange and three messages on the bus (call, signal, reply), of
/// which a ping is two.
void measureQueries(int rounds, bool logs)
{
    const Daemon daemon(logs);
    const std::string suffix = logs ? ", logging" : ", silent";
    const double aim = logs ? 1.4 : 1.3;
    const int supplicant = connectToSupplicant();
    Client client;
    const Action ping = [&] {
        client.send("Ping", "org.freedesktop.DBus.Peer");
        client.awaitReply();
    };
    const std::vector<Floor> floors = {{1,
                                        [&] {
                                            exchange(supplicant, "STATUS");
                                        }},
                                       {1.5, ping}};
    client.measureMethod("statusRequest" + suffix, rounds, floors, "statusRequest", "statusMessage",
                         aim);
    client.measureMethod("fullStatusRequest" + suffix, rounds, floors, "fullStatusRequest",
                         "fullStatusResult", aim);
    client.measureMethod("ipRequest" + suffix, rounds, floors, "ipRequest", "ipResult", aim);
    close(supplicant);
}

/// From the supplicant's event to status 3, beside turning the same table into payloads.
void measureScan(int rounds)
{
    const Daemon daemon;
    const int supplicant = connectToSupplicant();
    Client client;
    const QString table = QString::fromStdString(scanResults());
    const Action decode = [&] {
        for (const BXNetwork &network : scanTable(table))
            [[maybe_unused]] const QByteArray payload = payloadOf(network);
    };
    const Action deliver = [&] {
        exchange(supplicant, "EVENT");
        client.awaitSignal("statusMessage");
    };
    measure("scan table of 30", rounds, {{1, decode}}, deliver, 0);
    close(supplicant);
}

void measureThroughput(int calls)
{
    const Daemon daemon;
    for (const int clients : {1, 4, 16}) {
        Series total;
        total.time([&] {
            for (int client = 0; client < clients; ++client) {
                if (fork() != 0)
                    continue;
                Bus bus;
                for (int call = 0; call < calls / clients; ++call) {
                    bus.send("statusRequest");
                    bus.awaitReply();
                }
                _exit(EXIT_SUCCESS);
            }
            for (int client = 0; client < clients; ++client)
                wait(nullptr);
        });
        print({"calls with " + std::to_string(clients) + " clients", "/s",
               calls / total.median() * 1e6});
    }
}

/// Beside starting the same tools without the daemon.
void measureTools(int rounds)
{
    const Daemon daemon;
    Client client;
    const std::vector<Words> settings = {{"fw_printenv", "ipaddr"},
                                         {"fw_printenv", "gatewayip"},
                                         {"fw_printenv", "netmask"},
                                         {"fw_printenv", "ethaddr"}};
    const std::vector<Words> report = {{"fw_printenv", "dynamicip"},
                                       {"ifconfig", "eth0"},
                                       {"route", "-n"},
                                       {"fw_printenv", "ethaddr"}};
    const auto run = [](const std::vector<Words> &tools) {
        return [&tools] {
            std::for_each(tools.begin(), tools.end(), runTool);
        };
    };
    client.measureMethod("staticRequest", rounds, {{1, run(settings)}}, "staticRequest",
                         "staticResult", 1.3);
    client.measureMethod("dynamicRequest", rounds, {{1, run(report)}}, "dynamicRequest",
                         "dynamicResult", 1.3);
}

void measureLifetime(int rounds)
{
    Series startUps;
    Series exits;
    for (int round = 0; round < rounds; ++round) {
        std::optional<Daemon> daemon(std::in_place);
        startUps.add(daemon->startUp.median());
        exits.time([&] { daemon.reset(); });
    }
    print("start to name owned", startUps);
    print("stop to exit", exits);
}

void measureMemory(int calls)
{
    const Service bare("bareapplication", "com.brelvix.bare");
    const Daemon daemon;
    const double idle = daemon.memory("Private_Dirty:");
    print({"PSS, idle", "KiB", daemon.memory("Pss:"), 0, bare.memory("Pss:")});
    print({"private dirty, idle", "KiB", idle, 0, bare.memory("Private_Dirty:"), 1.1});
    Bus bus;
    for (int call = 0; call < calls; ++call) {
        bus.send("fullStatusRequest");
        bus.awaitReply();
    }
    print({"private dirty after " + std::to_string(calls) + " calls", "KiB",
           daemon.memory("Private_Dirty:"), 0, idle});
}
} // namespace

int main(int argc, char **argv)
try {
    if (argc != 2)
        throw std::runtime_error("usage: bench ROUNDS");
    const int rounds = std::stoi(argv[1]);
    startSupplicant();
    measureQueries(rounds, true);
    measureQueries(rounds, false);
    measureScan(rounds / 4 + 1);
    measureThroughput(rounds);
    measureTools(rounds / 20 + 1);
    measureLifetime(rounds / 200 + 1);
    measureMemory(rounds * 5);
    return EXIT_SUCCESS;
} catch (const std::exception &failure) {
    std::cerr << "bench: " << failure.what() << '\n';
    return EXIT_FAILURE;
}
