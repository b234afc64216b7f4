# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""The one ordered record of what happened around a daemon."""

END = b"\036"  # as fake-tool writes it; occurs in no command or argument


class Journal:
    """Entries are the commands a fake supplicant got, the tools that ran, as
    "tool|argument|argument", and the signals a bus client received, as "signal(value)". Threads and
    processes append at the same time. Bytes that are not UTF-8 are kept in the texts."""

    def __init__(self, path):
        self.path = path
        self.taken = 0
        path.touch()

    def append(self, entry):
        with open(self.path, "ab", buffering=0) as file:  # in one write, so that entries don't mix
            file.write(entry.encode(errors="surrogateescape") + END)

    def entries(self):
        """All since the last take()."""
        found = self.path.read_bytes().split(END)[self.taken:-1]
        return [entry.decode(errors="surrogateescape") for entry in found]

    def take(self):
        found = self.entries()
        self.taken += len(found)
        return found
