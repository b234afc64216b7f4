// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "control/wificontrol.h"
#include "support/tool.h"

#include <QTest>

#include <csignal>

#include <fcntl.h>
#include <poll.h>
#include <pthread.h>
#include <unistd.h>

/// Real tools: what they print, and what becomes of them.
class ToolsTest : public QObject
{
    Q_OBJECT

private slots:
    void keys();
    void killedWhileStarting();
};

void ToolsTest::keys()
{
    // IEEE 802.11i, H.4.3
    const std::array<QString, 3> vectors[] = {
        {"password", "IEEE", "f42c6fc52df0ebef9ebb4b90b38a5f902e83fe1b135a70e23aed762e9710a12e"},
        {"ThisIsAPassword", "ThisIsASSID",
         "0dc0d6eb90555ed6419756b9a15ec3e3209b63df707dd508d14581f8982721af"},
        {QString(32, 'a'), QString(32, 'Z'),
         "becb93866bb8c3832cb777c2f559807c8c59afcb6eae734885001300a981cc62"},
    };
    WifiControl control(nullptr);
    for (const auto &[passphrase, ssid, key] : vectors) {
        QCOMPARE(control.hashPassword(passphrase, ssid), key);
        QCOMPARE(control.hashPasswordVantrel(passphrase, ssid), key);
    }
    QVERIFY(control.hashPasswordVantrel("too few", "IEEE").isEmpty());
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", "/nowhere");
    QVERIFY(control.hashPasswordVantrel("password", "IEEE").isEmpty());
    qputenv("PATH", path);
}

void ToolsTest::killedWhileStarting()
{
    int ends[2];
    QVERIFY(pipe2(ends, O_CLOEXEC) == 0);
    if (fork() == 0) {
        pthread_atfork(
            nullptr, [] { raise(SIGKILL); }, nullptr);
        ToolProcess().run("true", {});
        _exit(0);
    }
    close(ends[1]);
    // No half-started tool holds on to what the killed process had open.
    pollfd end{ends[0], POLLIN, 0};
    QTRY_COMPARE(poll(&end, 1, 0), 1);
    close(ends[0]);
}

QTEST_GUILESS_MAIN(ToolsTest)
#include "tst_tools.moc"
