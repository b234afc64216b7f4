# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""A daemon with all that surrounds it."""

import os
import re
import shutil
import signal
import subprocess
import tempfile
from pathlib import Path

from .bus import Bus
from .supplicant import DIRECTORY, FakeSupplicant
from .tools import FakeTools
from .waiting import comes_true

EXIT_WAIT = 15  # seconds; a supplicant that does not answer SAVE_CONFIG costs 10


def request_line(command, outcome):
    return f'QString WifiControl::ctrlRequest(const QString&) "{command}" {outcome}'


class Bed:
    """Bus, supplicant, tools and the daemon, which is started by the test. Whenever the daemon
    ends, it has to end cleanly, without a report of the sanitizers or a warning of Qt's."""

    def __init__(self, make_supplicant=FakeSupplicant):
        self.folder = Path(tempfile.mkdtemp())
        self.bus = Bus()
        self.journal = self.bus.journal
        self.tools = FakeTools(self.folder / "tools", self.journal)
        shutil.rmtree(DIRECTORY, ignore_errors=True)  # with what another test left there
        self.supplicant = make_supplicant(self.journal)
        self.daemon = Daemon(self.folder / "log", {"PATH": str(self.tools.folder)})

    def __enter__(self):
        return self

    def __exit__(self, *_):
        try:
            if self.daemon.process:
                self.daemon.stop()
        finally:
            self.supplicant.kill()
            self.bus.close()

    def start(self, *arguments):
        """Starts the daemon and waits until it has found the supplicant; the journal is empty
        then."""
        self.daemon.start(*arguments)
        assert comes_true(lambda: "RECONFIGURE" in self.journal.entries()), self.daemon.log()
        self.journal.take()

    def check(self, *expected):
        """Waits until exactly this has happened, and takes it from the journal."""
        comes_true(lambda: self.journal.entries() == list(expected))
        assert self.journal.take() == list(expected)


class Daemon:
    def __init__(self, log_file, environment):
        self.log_file = log_file
        # A Qt that is built for it would send the log elsewhere when there is no terminal.
        self.environment = environment | {"QT_FORCE_STDERR_LOGGING": "1"}
        self.process = None

    def start(self, *arguments):
        if self.process:
            self.exit_status()
        with open(self.log_file, "wb") as log:
            self.process = subprocess.Popen([os.environ["BXWIFID"], *arguments], stderr=log,
                                            env=os.environ | self.environment)

    def stop(self):
        self.process.send_signal(signal.SIGTERM)  # which one that has ended does not get
        return self.exit_status()

    def exit_status(self):
        status = self.process.wait(EXIT_WAIT)
        complaints = [line for line in self.log() if re.search(r"Sanitizer|^Q\w+(::\w+)?: ", line)]
        assert (status, complaints) == (0, []), self.log()
        return status

    def log(self):
        return self.log_file.read_text().splitlines()

    def logs(self, line):
        """Whether the log holds this line in time."""
        return comes_true(lambda: line in self.log())
