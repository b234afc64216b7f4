# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""A control socket that answers like a supplicant."""

import os
import socket
import threading
from contextlib import suppress
from pathlib import Path

DIRECTORY = Path("/run/wpa_supplicant")


class FakeSupplicant:
    """Answers from a table, on a thread of its own: also while the test or the daemon waits for
    something else. Writes every command into the journal first. Several can run side by side."""

    def __init__(self, journal, name="wlan0"):
        self.journal = journal
        self.path = DIRECTORY / name
        self.answers = {}
        # A test that holds it keeps the answers back.
        self.silence = threading.Lock()
        self.start()

    def answer(self, command, *datagrams):
        """Without datagrams the command is not answered. An ATTACH that is answered otherwise than
        "OK" is refused."""
        self.answers[command] = datagrams

    def send_event(self, message):
        """To every connection that was ever attached."""
        for monitor in self.monitors:
            self._send(message, monitor)

    def start(self):
        DIRECTORY.mkdir(exist_ok=True)
        self.path.unlink(missing_ok=True)
        self.monitors = []
        self.socket = socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM)
        self.socket.bind(os.fspath(self.path))
        self.server = threading.Thread(target=self._serve, daemon=True)
        self.server.start()

    def kill(self):
        """It dies, if it has not yet, and leaves the socket's file behind."""
        if not self.server.is_alive():
            return
        self.socket.shutdown(socket.SHUT_RDWR)
        self.server.join()
        self.socket.close()

    def reply(self, command):
        """The answer to a command without an entry in the table."""
        return "OK\n"

    def react(self, command):
        """For what a supplicant does besides its answer."""

    def _serve(self):
        while True:
            command, client = self.socket.recvfrom(8192)
            if not client:  # killed
                return
            command = command.decode(errors="surrogateescape")
            self.journal.append(command)
            with self.silence:
                self._answer(command, client)
            self.react(command)

    def _answer(self, command, client):
        datagrams = self.answers[command] if command in self.answers else (self.reply(command),)
        if command == "ATTACH" and datagrams == ("OK\n",):
            self.monitors.append(client)
        for datagram in datagrams:
            self._send(datagram, client)

    def _send(self, datagram, client):
        with suppress(OSError):  # a daemon that does not read must not stop the test
            self.socket.sendto(datagram.encode(errors="surrogateescape"), socket.MSG_DONTWAIT,
                               client)
