# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""Programs on a terminal of their own."""

import os
import pty
import subprocess
import termios
from contextlib import suppress


def on_terminal(*arguments, answers=(), number=0, controlled=True):
    """Runs a program on a terminal and, as often as it asks, types an answer; sends it a signal at
    the last question. Returns its status and what the terminal shows."""
    terminal, inside = pty.openpty()
    before = termios.tcgetattr(inside)
    command = ["env", "TERM=xterm", "setsid", *["--ctty"] * controlled, *arguments]
    shown = b""
    with subprocess.Popen(command, stdin=inside, stdout=inside, stderr=inside) as run:
        for answer in answers:
            question = b""
            while not question.endswith(b": "):
                question += os.read(terminal, 4096)
            shown += question
            os.write(terminal, answer)
        if number:
            run.send_signal(number)
    assert termios.tcgetattr(inside) == before
    os.close(inside)
    with suppress(OSError):  # the end
        while True:
            shown += os.read(terminal, 4096)
    os.close(terminal)
    return run.returncode, shown.decode()
