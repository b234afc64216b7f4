// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "control/wificontrol.h"
#include "support/tool.h"

#include <QTest>

#include <csignal>
#include <thread>

#include <fcntl.h>
#include <poll.h>
#include <pthread.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

/// Real tools: what they print, and what becomes of them.
class ToolsTest : public QObject
{
    Q_OBJECT

private slots:
    void keys();
    void killedWhileStarting();
    void anotherThreadForks();
};

void ToolsTest::keys()
{
    const QString key = "f42c6fc52df0ebef9ebb4b90b38a5f902e83fe1b135a70e23aed762e9710a12e";
    const QString umlauts = QString::fromUtf8("\xc3\xa4\xc3\xb6\xc3\xbc\xc3\xa4\xc3\xb6\xc3\xbc");
    WifiControl control(nullptr);
    QCOMPARE(control.hashPassword("password", "IEEE"), key); // IEEE 802.11i, H.4.3
    QCOMPARE(control.hashPassword(umlauts, umlauts), control.hashPasswordVantrel(umlauts, umlauts));
    QVERIFY(control.hashPasswordVantrel("too few", "IEEE").isEmpty());
}

void ToolsTest::killedWhileStarting()
{
    int ends[2];
    QVERIFY(pipe2(ends, O_CLOEXEC) == 0);
    if (fork() == 0) {
        const auto die = [] {
            raise(SIGKILL);
        };
        pthread_atfork(nullptr, die, nullptr);
        ToolProcess().run("true", {});
        _exit(0);
    }
    close(ends[1]);
    // No half-started tool holds on to what the killed process had open.
    pollfd end{ends[0], POLLIN, 0};
    QTRY_COMPARE(poll(&end, 1, 0), 1);
    close(ends[0]);
}

void ToolsTest::anotherThreadForks()
{
    static int found = -1;
    static const auto forkAndLook = [] {
        found = 0;
        const pid_t child = fork();
        if (child == 0) {
            prctl(PR_GET_PDEATHSIG, &found);
            _exit(found);
        }
        waitpid(child, &found, 0);
    };
    const auto beforeFork = [] {
        if (found == -1)
            std::thread(forkAndLook).join();
    };
    pthread_atfork(beforeFork, nullptr, nullptr);
    ToolProcess().run("true", {});
    QCOMPARE(found, 0); // its child was not taken for a tool
}

QTEST_GUILESS_MAIN(ToolsTest)
#include "tst_tools.moc"
