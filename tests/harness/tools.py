# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""Stand-ins for the external tools."""

from pathlib import Path

FAKE_TOOL = Path(__file__).with_name("fake-tool")
TOOLS = ("fw_printenv", "fw_setenv", "ifconfig", "route", "sync", "udhcpc", "wpa_passphrase")


class FakeTools:
    """A folder of tools that only write their name and arguments into the journal. As the daemon's
    whole search path it hides the machine's own; "ln" alone is real."""

    def __init__(self, folder):
        self.folder = folder
        folder.mkdir()
        (folder / "ln").symlink_to("/bin/ln")
        for tool in TOOLS:
            self.restore(tool)

    def script(self, tool, script):
        """Has a tool go on, after its entry, with a piece of shell script."""
        (self.folder / f"{tool}.sh").write_text(script)

    def output(self, tool, lines):
        self.script(tool, f"cat <<'END'\n{lines}END\n")

    def remove(self, tool):
        (self.folder / tool).unlink()

    def restore(self, tool):
        (self.folder / tool).symlink_to(FAKE_TOOL)
