# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""A bus of the test's own, and the record of what happened around it."""

import os
import queue
import subprocess
import threading
from contextlib import suppress
from pathlib import Path

from jeepney import DBusAddress, HeaderFields, MatchRule, MessageType, message_bus, new_method_call
from jeepney.io import blocking
from jeepney.io.threading import open_dbus_connection

SERVICE = "com.brelvix.bxwifid"  # its object's interface, too
DAEMON = DBusAddress("/", SERVICE, SERVICE)
PING = new_method_call(DAEMON.with_interface("org.freedesktop.DBus.Peer"), "Ping")
SIGNATURES = {bytes: "ay", str: "s", bool: "b"}
REPLY_WAIT = 60  # seconds; longer than any operation of the daemon


def daemon_call(method, *arguments):
    signature = "".join(SIGNATURES[type(argument)] for argument in arguments)
    return new_method_call(DAEMON, method, signature, arguments)


def signal(name, value):
    """The journal's entry of a signal with its one argument, bytes in hexadecimal."""
    return f"{name}({value.hex() if isinstance(value, bytes) else value})"


class Journal:
    """The one ordered record. Entries are the commands a fake supplicant got, the tools that ran,
    as "tool|argument|argument", and the daemon's signals, as "signal(value)". Bytes that are not
    UTF-8 are kept in the texts."""

    def __init__(self, settle):
        self.settle = settle
        self.happened = []

    def append(self, entry):
        """A command or a tool. Signals take another road: those that left the daemon before are
        waited for."""
        self.settle()
        self.happened.append(entry)

    def entries(self):
        """All since the last take()."""
        return list(self.happened)

    def take(self):
        found = self.entries()
        del self.happened[:len(found)]
        return found


class Bus:
    """The system bus of the processes that are started from then on, with a client that writes each
    signal of the daemon into the journal."""

    def __init__(self):
        self.journal = Journal(self.settle)
        self.server = subprocess.Popen(
            ["dbus-daemon", f"--config-file={Path(__file__).with_name('bus.conf')}", "--nofork",
             "--print-address"], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        self.address = self.server.stdout.readline().strip()  # comes when the bus listens
        os.environ["DBUS_SYSTEM_BUS_ADDRESS"] = self.address
        self.client = open_dbus_connection(self.address, auth_timeout=10)
        self.replies = {}  # queues, by the serial of the call
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
        """Calls the daemon and leaves the reply alone. The call has reached it then."""
        self.client.send(daemon_call(method, *arguments))
        self.settle()

    def call(self, method, *arguments):
        """Calls the daemon and waits for its reply, which is empty. The signals that left it before
        that are in the journal then."""
        assert self.request(daemon_call(method, *arguments)) == ()

    def request(self, message):
        """The body of the reply, which must not be an error."""
        serial = next(self.client.outgoing_serial)
        self.replies[serial] = queue.SimpleQueue()
        self.client.send(message, serial)
        reply = self.replies[serial].get(timeout=REPLY_WAIT)
        del self.replies[serial]
        assert reply.header.message_type != MessageType.error, reply.body
        return reply.body

    def settle(self):
        """What the daemon has sent so far is in the journal. Its bus thread answers this also while
        the other one waits; one that is not on the bus sends nothing."""
        with suppress(OSError, AssertionError):
            self.request(PING)

    def _receive(self):
        while True:
            try:
                message = self.client.receive()
            except OSError:
                return
            fields = message.header.fields
            if message.header.message_type != MessageType.signal:
                # A call is one of our own, when a test has taken the daemon's name.
                serial = fields.get(HeaderFields.reply_serial, message.header.serial)
                if serial in self.replies:
                    self.replies[serial].put(message)
            elif fields[HeaderFields.interface] == SERVICE:
                self.journal.happened.append(signal(fields[HeaderFields.member], message.body[0]))
