# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""Stand-ins for the external tools."""

import os
import threading
from pathlib import Path

FAKE_TOOL = Path(__file__).with_name("fake-tool")
TOOLS = ("fw_printenv", "fw_setenv", "ifconfig", "route", "sync", "udhcpc", "wpa_passphrase")
END = b"\036"  # of an entry, as fake-tool writes it


class FakeTools:
    """A folder of tools that only have their name and arguments written into the journal. As the
    daemon's whole search path it hides the machine's own; "ln" alone is real."""

    def __init__(self, folder, journal):
        self.folder = folder
        self.journal = journal
        folder.mkdir()
        (folder / "ln").symlink_to("/bin/ln")
        for tool in TOOLS:
            self.restore(tool)
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

    def remove(self, tool):
        (self.folder / tool).unlink()

    def restore(self, tool):
        (self.folder / tool).symlink_to(FAKE_TOOL)

    def _serve(self, begun, go_on):
        while True:
            entry = os.read(begun, 4096).removesuffix(END)
            self.journal.append(entry.decode(errors="surrogateescape"))
            os.write(go_on, b"\n")
