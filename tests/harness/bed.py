# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""A daemon with all that surrounds it."""

import shutil
import tempfile
from pathlib import Path

from .bus import Bus
from .daemon import Daemon
from .journal import Journal
from .supplicant import DIRECTORY, FakeSupplicant
from .tools import FakeTools
from .waiting import comes_true


class Bed:
    """Bus, supplicant, tools and the daemon, which is started by the test. It has to end cleanly,
    without a report of the sanitizers."""

    def __init__(self, make_supplicant=FakeSupplicant):
        self.folder = Path(tempfile.mkdtemp())
        self.journal = Journal(self.folder / "journal")
        self.bus = Bus(self.journal)
        self.tools = FakeTools(self.folder / "tools")
        shutil.rmtree(DIRECTORY, ignore_errors=True)  # with what another test left there
        self.supplicant = make_supplicant(self.journal)
        self.daemon = Daemon(self.folder / "log", {"PATH": str(self.tools.folder),
                                                   "JOURNAL": str(self.journal.path)})

    def __enter__(self):
        return self

    def __exit__(self, *_):
        try:
            if self.daemon.is_running():
                assert self.daemon.stop() == 0, self.daemon.log()
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
