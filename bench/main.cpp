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
#include "tools.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <optional>
#include <stdexcept>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

namespace
{
constexpr auto settling = std::chrono::milliseconds(500); // for a started service to become idle

const std::filesystem::path binaries =
    std::filesystem::read_symlink("/proc/self/exe").parent_path();

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
    explicit Daemon(bool logs = false) : Service(set(logs), daemonName) {}
    static const char *set(bool logs)
    {
        setenv("QT_LOGGING_RULES", logs ? "default.debug=true" : "default.debug=false", 1);
        return "bxwifid";
    }
};

struct BareApplication : Service {
    BareApplication() : Service("bareapplication", bareName) {}
};

using Action = std::function<void()>;

struct Floor {
    double share;
    Action action;
};

/// Times an action beside the things that it cannot do without, turn by turn.
void measure(const std::string &name, int rounds, const std::vector<Floor> &floors,
             const Action &action, double aim)
{
    std::vector<Series> floorCosts(floors.size());
    Series costs;
    for (int round = 0; round < rounds; ++round) {
        for (size_t floor = 0; floor < floors.size(); ++floor)
            floorCosts[floor].time(floors[floor].action);
        costs.time(action);
    }
    double sum = 0;
    for (size_t floor = 0; floor < floors.size(); ++floor)
        sum += floors[floor].share * floorCosts[floor].median();
    print(name, costs, sum, aim);
}

/// A client that receives its service's signals.
class Client : public Bus
{
public:
    explicit Client(const char *serviceName) : Bus(serviceName)
    {
        listen("interface='" + std::string(serviceName) + "'");
    }

    /// A call until both are there, the answering signal and the reply, which comes after it.
    Action answeredCall(const char *method, const char *signal)
    {
        return [=] {
            call(method);
            awaitSignal(signal);
            awaitReply();
        };
    }
};

/// What the bus binding costs: the least service beside an exchange with the supplicant and three
/// messages on the bus (call, signal, reply), of which a ping is two.
void measureBinding(int rounds)
{
    const BareApplication bare;
    const int supplicant = connectToSupplicant();
    Client client(bareName);
    const std::vector<Floor> floors = {{1,
                                        [&] {
                                            exchange(supplicant, "STATUS");
                                        }},
                                       {1.5, [&] {
                                            client.ping();
                                        }}};
    measure("bare application", rounds, floors,
            client.answeredCall("statusRequest", "statusMessage"), 0);
    close(supplicant);
}

struct Method {
    const char *name;
    const char *signal;
};

const std::vector<Method> queries = {{"statusRequest", "statusMessage"},
                                     {"fullStatusRequest", "fullStatusResult"},
                                     {"ipRequest", "ipResult"}};
const std::vector<Method> toolRuns = {{"staticRequest", "staticResult"},
                                      {"dynamicRequest", "dynamicResult"}};

/// The daemon's methods beside those of the bare application.
void measureMethods(const std::vector<Method> &methods, int rounds, bool logs, double aim)
{
    const BareApplication bare;
    const Daemon daemon(logs);
    Client bareClient(bareName);
    Client client(daemonName);
    for (const Method &method : methods)
        measure(std::string(method.name) + (logs ? ", logging" : ", silent"), rounds,
                {{1, bareClient.answeredCall(method.name, method.signal)}},
                client.answeredCall(method.name, method.signal), aim);
}

/// From the supplicant's event to status 3, beside turning the same table into payloads.
void measureScan(int rounds)
{
    const Daemon daemon;
    const int supplicant = connectToSupplicant();
    Client client(daemonName);
    const QString table = QString::fromStdString(scanResults());
    const Action decode = [&] {
        for (const BXNetwork &network : scanTable(table)) {
            [[maybe_unused]] const QByteArray payload = payloadOf(network);
        }
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
                    bus.call("statusRequest");
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
    const BareApplication bare;
    const Daemon daemon;
    const double idle = daemon.memory("Private_Dirty:");
    print({"PSS, idle", "KiB", daemon.memory("Pss:"), 0, bare.memory("Pss:")});
    print({"private dirty, idle", "KiB", idle, 0, bare.memory("Private_Dirty:"), 1.1});
    Bus bus;
    for (int call = 0; call < calls; ++call) {
        bus.call("fullStatusRequest");
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
    measureBinding(rounds);
    measureMethods(queries, rounds, true, 1.2);
    measureMethods(queries, rounds, false, 1.15);
    measureScan(rounds / 4 + 1);
    measureThroughput(rounds);
    measureMethods(toolRuns, rounds / 20 + 1, false, 1.3);
    measureLifetime(rounds / 200 + 1);
    measureMemory(rounds * 5);
    return EXIT_SUCCESS;
} catch (const std::exception &failure) {
    std::cerr << "bench: " << failure.what() << '\n';
    return EXIT_FAILURE;
}
