// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "faketools.h"

#include <QDir>

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
