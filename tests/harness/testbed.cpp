// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "testbed.h"

#include <QDir>
#include <QTest>

void FakeTools::setScript(const QString &tool, const QByteArray &script) const
{
    QFile file(path + '/' + tool + ".sh");
    if (!file.open(QIODevice::WriteOnly) || file.write(script) != script.size())
        qFatal("cannot write %s", qPrintable(file.fileName()));
}

void FakeTools::setOutput(const QString &tool, const QByteArray &lines) const
{
    setScript(tool, "cat <<'END'\n" + lines + "END\n");
}

void FakeTools::remove(const QString &tool) const
{
    QFile::remove(path + '/' + tool);
}

void FakeTools::restore() const
{
    QDir().mkpath(path);
    QFile::link("/bin/ln", path + "/ln");
    for (const char *tool :
         {"fw_printenv", "fw_setenv", "ifconfig", "route", "sync", "udhcpc", "wpa_passphrase"})
        QFile::link(HARNESS "/fake-tool", path + '/' + tool);
}

TestBed::TestBed()
{
    daemon.environment.insert("PATH", tools.path);
    daemon.environment.insert("JOURNAL", journal.path);
}

void TestBed::start(const QStringList &arguments)
{
    daemon.start(arguments);
    if (!QTest::qWaitFor([&] { return journal.entries().contains("RECONFIGURE"); }))
        QTest::qFail("the daemon did not find the supplicant", __FILE__, __LINE__);
    journal.take();
}

bool TestBed::happens(const QByteArrayList &expected)
{
    const bool has = QTest::qWaitFor([&] { return journal.entries() == expected; });
    const QByteArrayList happened = journal.take();
    if (!has)
        qWarning() << "expected" << expected << "but what happened is" << happened;
    return has;
}

QByteArray printedBy(const QString &script)
{
    QProcess shell;
    shell.start("sh", {"-c", script});
    shell.waitForFinished();
    return shell.readAllStandardOutput().trimmed();
}
