// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "secret.h"

#include "interruption.h"
#include "message.h"
#include "output.h"
#include "utf8.h"

#include <QFile>

#include <cstdio>

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

namespace
{
// More than the supplicant takes; what has no lines has an end like that.
constexpr qint64 longestLine_bytes = 4096;

/// The terminal, set for the time of one question. The keys that stop a program or dump its core
/// are dead meanwhile, so that a terminal without echo is never left behind.
class Terminal
{
public:
    explicit Terminal(bool echo)
    {
        tcgetattr(input, &before);
        termios during = before;
        during.c_cc[VSUSP] = during.c_cc[VQUIT] = _POSIX_VDISABLE;
        if (!echo)
            during.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        tcsetattr(input, TCSAFLUSH, &during);
    }
    ~Terminal()
    {
        tcsetattr(input, TCSAFLUSH, &before);
        if (own >= 0)
            close(own);
    }
    Q_DISABLE_COPY_MOVE(Terminal)

    void write(const QByteArray &text) const
    {
        [[maybe_unused]] const ssize_t written =
            ::write(output, text.constData(), static_cast<size_t>(text.size()));
    }

    /// One line as the terminal hands it out, which may be more than one read; without a line feed
    /// if it was given up.
    QByteArray readLine() const
    {
        QByteArray line;
        pollfd sources[] = {{input, POLLIN, 0}, {Interruption::descriptor(), POLLIN, 0}};
        while (!line.endsWith('\n')) {
            char byte = 0;
            if (poll(sources, 2, -1) < 0)
                continue; // a signal, which the next round sees
            if (sources[1].revents != 0 || ::read(input, &byte, 1) != 1)
                break;
            line += byte;
        }
        return line;
    }

private:
    // A serial console may have no terminal by that name, and is asked as it is.
    const int own = open("/dev/tty", O_RDWR | O_NOCTTY | O_CLOEXEC);
    const int input = own >= 0 ? own : STDIN_FILENO;
    const int output = own >= 0 ? own : STDERR_FILENO;
    termios before{};
};

/// The text of a line without its end.
ExitStatus take(QByteArray line, const QString &source, QString &text)
{
    if (line.endsWith('\n'))
        line.chop(1);
    if (line.endsWith('\r'))
        line.chop(1);
    const auto decoded = textOf(line);
    if (!decoded)
        //: %1 is "the first line of FILE" or "what was typed"
        return failUsage(Message::tr("%1 is not UTF-8 text").arg(source));
    text = *decoded;
    return Success;
}
} // namespace

ExitStatus readSecretFile(const QString &path, QString &secret)
{
    QFile file(path);
    const bool isOpen = path == QLatin1String("-") ? file.open(stdin, QIODevice::ReadOnly)
                                                   : file.open(QIODevice::ReadOnly);
    if (!isOpen)
        return failUsage(Message::tr("cannot read %1").arg(path));
    const QString firstLine = Message::tr("the first line of %1").arg(path);
    const ExitStatus status = take(file.readLine(longestLine_bytes), firstLine, secret);
    if (status == Success && secret.isEmpty())
        //: %1 is "the first line of FILE"
        return failUsage(Message::tr("%1 is empty").arg(firstLine));
    return status;
}

bool canAsk()
{
    return isatty(STDIN_FILENO);
}

ExitStatus ask(const QString &question, bool echo, QString &answer)
{
    const Interruption interruption;
    const Terminal terminal(echo);
    terminal.write(terminalSafe(question).toUtf8());
    const QByteArray line = terminal.readLine();
    if (!echo || !line.endsWith('\n'))
        terminal.write("\n");
    if (Interruption::status() != Success)
        return Interruption::status();
    if (!line.endsWith('\n')) {
        printError(Message::tr("no answer"));
        return Failure;
    }
    return take(line, Message::tr("what was typed"), answer);
}
