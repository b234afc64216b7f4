// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "faketools.h"

#include <QDir>

FakeTools::FakeTools(const Journal &journal, const QString &folder) : path(folder)
{
    QDir().mkpath(path);
    QFile::link(journal.path(), path + "/journal");
    QFile::link("/bin/ln", path + "/ln");
    for (const char *tool :
         {"fw_printenv", "fw_setenv", "ifconfig", "route", "sync", "udhcpc", "wpa_passphrase"})
        QFile::link(HARNESS "/fake-tool", path + '/' + tool);
}

void FakeTools::setScript(const QString &tool, const QByteArray &script) const
{
    write(tool + ".sh", script);
}

void FakeTools::setOutput(const QString &tool, const QByteArray &output) const
{
    write(tool + ".out", output);
    setScript(tool, "cat \"$0.out\"\n");
}

void FakeTools::setPace(std::chrono::milliseconds pace) const
{
    write("pace", QByteArray::number(static_cast<double>(pace.count()) / 1000));
}

void FakeTools::remove(const QString &tool) const
{
    QFile::remove(path + '/' + tool);
}

void FakeTools::write(const QString &name, const QByteArray &content) const
{
    QFile file(path + '/' + name);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(file.fileName()));
}
