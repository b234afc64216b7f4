# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""The program as scripts and people run it."""

import os
import pty
import subprocess
import termios
from contextlib import suppress

BXWIFICTL = os.environ.get("BXWIFICTL")
ATTENTIVE = ["env", "--default-signal"]  # to signals, whatever this was started with


def bxwifictl(*arguments, given=""):
    """Its status and what it prints to both outputs, with this on standard input."""
    run = subprocess.run([BXWIFICTL, *arguments], input=given, capture_output=True, text=True,
                         errors="surrogateescape", timeout=90)
    return run.returncode, run.stdout, run.stderr


def on_terminal(*arguments, answers=(), ctty=True, variable="TERM=xterm"):
    """Runs it on a terminal of its own and, as often as it asks, types an answer. Its status and
    what the terminal shows."""
    terminal, inside = pty.openpty()
    before = termios.tcgetattr(inside)
    session = ["setsid", *["--ctty"] * ctty, *ATTENTIVE, variable]
    shown = b""
    with subprocess.Popen([*session, BXWIFICTL, *arguments], stdin=inside, stdout=inside,
                          stderr=inside) as run:
        for answer in answers:
            shown += os.read(terminal, 4096)
            while not shown.endswith(b": "):
                shown += os.read(terminal, 4096)
            os.write(terminal, answer)
    assert termios.tcgetattr(inside) == before
    os.close(inside)
    with suppress(OSError):  # the end
        while True:
            shown += os.read(terminal, 4096)
    os.close(terminal)
    return run.returncode, shown.decode()
