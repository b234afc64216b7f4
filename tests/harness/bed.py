# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""A daemon with all that surrounds it."""

import os
import re
import shutil
import signal
import subprocess
import tempfile
import threading
import time
from pathlib import Path

from .bus import Bus
from .supplicant import DIRECTORY, FakeSupplicant

FAKE_TOOL = Path(__file__).with_name("fake-tool")
TOOLS = ("fw_printenv", "fw_setenv", "ifconfig", "route", "sync", "udhcpc", "wpa_passphrase")
# What log lines look like: Qt's warnings can be told from them, and their source can be seen. A Qt
# that is built for it would send them elsewhere when there is no terminal.
LOGGING = {"QT_MESSAGE_PATTERN": "%{if-warning}Warning %{endif}%{if-category}%{category} %{endif}"
                                 "%{file}|%{function}|%{message}",
           "QT_FORCE_STDERR_LOGGING": "1"}
# What happens when the daemon builds the link.
SETUP = "bool WifiControl::setup() "
SEARCHING = SETUP + 'ctrl_iface_dir: "/var/run/wpa_supplicant"'
TRYING = SETUP + 'trying ctrl_iface: "wlan0" ...'
OPENED = SETUP + "opened connection to wpa_supplicant"
LINKED = [SEARCHING, TRYING, OPENED, "ATTACH", SETUP + "attached to wpa_supplicant", "RECONFIGURE"]


def comes_true(condition, seconds=10):
    """Whether it does in time."""
    end = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > end:
            return False
        time.sleep(0.01)
    return True


class Bed:
    """Bus, supplicant, tools and the daemon, which is started by the test. Whenever the daemon
    ends, it has to end cleanly, without a report of the sanitizers or a warning of Qt's."""

    def __init__(self, make_supplicant=FakeSupplicant):
        self.folder = Path(tempfile.mkdtemp())
        log_file = self.folder / "log"
        log_file.touch()
        self.bus = Bus(log_file)
        self.journal = self.bus.journal
        self.tools = FakeTools(self.folder / "tools", self.journal)
        shutil.rmtree(DIRECTORY, ignore_errors=True)  # with what another test left there
        self.supplicant = make_supplicant(self.journal)
        self.daemon = Daemon(log_file, LOGGING | {"PATH": str(self.tools.folder)})

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
        assert comes_true(lambda: "RECONFIGURE" in self.journal.entries()), self.journal.entries()
        self.journal.take()

    def check(self, *expected):
        """Waits until exactly this has happened, and takes it from the journal."""
        comes_true(lambda: self.journal.entries() == list(expected))
        assert self.journal.take() == list(expected)


class Daemon:
    def __init__(self, log_file, environment):
        self.log_file = log_file
        self.environment = environment
        self.prepare = None  # what its process does before it becomes the daemon
        self.process = None

    def start(self, *arguments):
        if self.process:
            self.exit_status()
        with open(self.log_file, "ab") as log:
            self.process = subprocess.Popen([os.environ["BXWIFID"], *arguments], stderr=log,
                                            env=os.environ | self.environment,
                                            preexec_fn=self.prepare)

    def stop(self):
        self.process.send_signal(signal.SIGTERM)  # which one that has ended does not get
        return self.exit_status()

    def exit_status(self):
        status = self.process.wait(15)  # A supplicant that does not answer SAVE_CONFIG costs 10 s.
        log = self.log_file.read_text(errors="replace")
        assert (status, re.findall("^Warning .*|.*Sanitizer.*", log, re.M)) == (0, []), log
        return status


class FakeTools:
    """A folder of tools that only have their name and arguments written into the journal. As the
    daemon's whole search path it hides the machine's own; "ln" alone is real."""

    def __init__(self, folder, journal):
        self.folder = folder
        self.journal = journal
        folder.mkdir()
        (folder / "ln").symlink_to("/bin/ln")
        for tool in TOOLS:
            (folder / tool).symlink_to(FAKE_TOOL)
        # Both ways through pipes that stay open: neither side waits for the other to open its end.
        ends = []
        for pipe in "begun", "go-on":
            os.mkfifo(folder / pipe)
            ends.append(os.open(folder / pipe, os.O_RDWR))
        threading.Thread(target=self._serve, args=ends, daemon=True).start()

    def script(self, tool, script):
        """Has a tool go on, after its entry, with a piece of shell script."""
        (self.folder / f"{tool}.sh").write_text(script)

    def output(self, tool, lines):
        self.script(tool, f"cat <<'END'\n{lines}END\n")

    def _serve(self, begun, go_on):
        while True:
            self.journal.append(os.read(begun, 4096).decode(errors="surrogateescape"))
            os.write(go_on, b"\n")
