# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""The program as scripts and people run it."""

import os
import pty
import subprocess
import termios
from contextlib import suppress

BXWIFICTL = os.environ.get("BXWIFICTL")
ATTENTIVE = ["env", "--default-signal", BXWIFICTL]  # to signals, whatever this was started with


def bxwifictl(*arguments, given=""):
    """Its status and what it prints to both outputs, with this on standard input."""
    run = subprocess.run([BXWIFICTL, *arguments], input=given, capture_output=True, text=True,
                         errors="surrogateescape", timeout=90)
    return run.returncode, run.stdout, run.stderr


def on_terminal(*arguments, answers=(), number=0, controlled=True):
    """Runs it on a terminal of its own and, as often as it asks, types an answer; sends it a signal
    at the last question. Returns its status and what the terminal shows."""
    terminal, inside = pty.openpty()
    before = termios.tcgetattr(inside)
    command = ["setsid", *["--ctty"] * controlled, *ATTENTIVE[:-1], "TERM=xterm", BXWIFICTL,
               *arguments]
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
