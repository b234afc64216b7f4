# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""A bus of the test's own, and clients on it."""

import os
import queue
import subprocess
import threading
from pathlib import Path

from jeepney import DBusAddress, HeaderFields, MatchRule, MessageType, message_bus, new_method_call
from jeepney.io import blocking
from jeepney.io.threading import open_dbus_connection

SERVICE = "com.brelvix.bxwifid"  # its object's interface, too
DAEMON = DBusAddress("/", SERVICE, SERVICE)
SIGNATURES = {bytes: "ay", str: "s", bool: "b"}
REPLY_WAIT = 60  # seconds; longer than any operation of the daemon


def daemon_call(method, *arguments):
    signature = "".join(SIGNATURES[type(argument)] for argument in arguments)
    return new_method_call(DAEMON, method, signature, arguments)


def signal(name, value):
    """The journal's entry of a signal with its one argument, bytes in hexadecimal."""
    return f"{name}({value.hex() if isinstance(value, bytes) else value})"


class Bus:
    """The system bus of the processes that are started from then on, with a client that writes each
    signal of the daemon into the journal."""

    def __init__(self, journal):
        self.journal = journal
        self.server = subprocess.Popen(
            ["dbus-daemon", f"--config-file={Path(__file__).with_name('bus.conf')}", "--nofork",
             "--print-address"], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        self.address = self.server.stdout.readline().strip()  # comes when the bus listens
        os.environ["DBUS_SYSTEM_BUS_ADDRESS"] = self.address
        self.client = open_dbus_connection(self.address, auth_timeout=10)
        self.replies = queue.SimpleQueue()
        threading.Thread(target=self._receive, daemon=True).start()
        self.request(message_bus.AddMatch(MatchRule(type="signal", interface=SERVICE)))

    def close(self):
        self.server.kill()
        self.server.wait()
        self.server.stdout.close()

    def connect_client(self):
        """One more connection, as of another client."""
        return blocking.open_dbus_connection(self.address, auth_timeout=10)

    def send(self, method, *arguments):
        """Calls the daemon and leaves the reply alone."""
        self.client.send(daemon_call(method, *arguments))

    def call(self, method, *arguments):
        """Calls the daemon and returns its reply. The signals that left it before that are in the
        journal then."""
        return self.request(daemon_call(method, *arguments))

    def request(self, message):
        serial = next(self.client.outgoing_serial)
        self.client.send(message, serial)
        while True:
            reply = self.replies.get(timeout=REPLY_WAIT)
            if reply.header.fields[HeaderFields.reply_serial] == serial:
                return reply

    def _receive(self):
        while True:
            try:
                message = self.client.receive()
            except OSError:
                return
            if message.header.message_type != MessageType.signal:
                self.replies.put(message)
            elif message.header.fields[HeaderFields.interface] == SERVICE:
                self.journal.append(signal(message.header.fields[HeaderFields.member],
                                           message.body[0]))
