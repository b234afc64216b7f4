// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "secret.h"

#include "output.h"

#include <QFile>

#include <cstdio>

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

namespace
{
constexpr char interrupt = '\003'; // Ctrl-C

/// The terminal, set for the time of one question: Ctrl-C ends the line instead of the process, so
/// that a terminal without echo is never left behind.
class Terminal
{
public:
    explicit Terminal(bool echo)
    {
        if (!file.open(QIODevice::ReadWrite | QIODevice::Unbuffered) ||
            tcgetattr(file.handle(), &before) != 0)
            return;
        termios during = before;
        during.c_lflag &= ~static_cast<tcflag_t>(echo ? ISIG : ISIG | ECHO);
        during.c_cc[VEOL] = interrupt;
        tcsetattr(file.handle(), TCSAFLUSH, &during);
        isSet = true;
    }
    ~Terminal()
    {
        if (isSet)
            tcsetattr(file.handle(), TCSAFLUSH, &before);
    }
    Q_DISABLE_COPY_MOVE(Terminal)

    QFile file{QStringLiteral("/dev/tty")};

private:
    termios before{};
    bool isSet = false;
};

/// One line as the terminal hands it out, which may be more than one read.
QByteArray readLine(int descriptor)
{
    QByteArray line;
    for (char byte; ::read(descriptor, &byte, 1) == 1;) {
        line += byte;
        if (byte == '\n' || byte == interrupt)
            break;
    }
    return line;
}

QString withoutLineEnd(QByteArray line)
{
    if (line.endsWith('\n'))
        line.chop(1);
    if (line.endsWith('\r'))
        line.chop(1);
    return QString::fromUtf8(line);
}
} // namespace

std::optional<QString> readSecretFile(const QString &path)
{
    QFile file(path);
    const bool isOpen = path == QLatin1String("-") ? file.open(stdin, QIODevice::ReadOnly)
                                                   : file.open(QIODevice::ReadOnly);
    if (!isOpen)
        return std::nullopt;
    return withoutLineEnd(file.readLine());
}

bool canAsk()
{
    return isatty(STDIN_FILENO);
}

std::optional<QString> ask(const QString &question, bool echo)
{
    Terminal terminal(echo);
    terminal.file.write(terminalSafe(question).toUtf8());
    const QByteArray line = readLine(terminal.file.handle());
    if (!echo || !line.endsWith('\n'))
        terminal.file.write("\n");
    if (!line.endsWith('\n'))
        return std::nullopt;
    return withoutLineEnd(line);
}
