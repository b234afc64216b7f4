# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""A bus of the test's own, what travels on it, and the record of what happens around it."""

import json
import os
import struct
import subprocess
import threading
from contextlib import suppress
from pathlib import Path

from jeepney import DBusAddress, HeaderFields, MatchRule, message_bus, new_method_call
from jeepney.io.threading import DBusRouter, open_dbus_connection
from jeepney.wrappers import unwrap_msg

SERVICE = "com.brelvix.bxwifid"  # its object's interface, too
DAEMON = DBusAddress("/", SERVICE, SERVICE)
PING = new_method_call(DAEMON.with_interface("org.freedesktop.DBus.Peer"), "Ping")
SIGNATURES = {bytes: "ay", str: "s", bool: "b"}
REPLY_WAIT = 150  # seconds; longer than any operation of the daemon, and than a flood of calls


def daemon_call(method, *arguments):
    signature = "".join(SIGNATURES[type(argument)] for argument in arguments)
    return new_method_call(DAEMON, method, signature, arguments)


def record(*fields):
    """A record as it travels: texts and truth values one behind the other. None is the null text,
    which is not the empty one."""
    return b"".join(map(_encoded, fields))


def network(flags, ssid, password="", identity=""):
    """What a client sends to join a network."""
    return record("b", "f", "s", flags, ssid, password, identity, True)


def _encoded(field):
    if isinstance(field, bool):
        return struct.pack("?", field)
    if field is None:
        return b"\xff\xff\xff\xff"
    text = field.encode("utf-16-be")
    return struct.pack(">I", len(text)) + text


def request_line(command, outcome):
    """What the daemon logs of a command at last."""
    quoted = json.dumps(command, ensure_ascii=False)
    return f"QString WifiControl::ctrlRequest(const QString&) {quoted} {outcome}"


def signal(name, value):
    """The entry of a signal with its one argument, bytes in hexadecimal."""
    return f"{name}({value.hex() if isinstance(value, bytes) else value})"


class Journal:
    """Entries are the commands a fake supplicant got, the tools that ran, as
    "tool|argument|argument", the daemon's signals, as "signal(value)", and the lines of its log but
    for those that tell of an answered command. Between two commands or tools the order of signals
    and lines is not known, and the lines stand last. Bytes that are not UTF-8 are kept."""

    def __init__(self, log_file, settle):
        self.log = open(log_file, "rb")
        self.settle = settle
        self.lock = threading.RLock()
        self.rest, self.answered = b"", ""
        self.happened, self.signals, self.lines = [], [], []

    def append(self, entry):
        """A command or a tool. The signals that left the daemon before are waited for."""
        self.settle()
        with self.lock:
            self._read_log()
            self.happened += [*self.signals, *self.lines, entry]
            self.signals, self.lines = [], []
            self.answered = request_line(entry, "true")

    def put_nowait(self, message):
        """A signal's message."""
        entry = signal(message.header.fields[HeaderFields.member], message.body[0])
        with self.lock:
            self.signals.append(entry)

    def entries(self):
        """All since the last take()."""
        with self.lock:
            self._read_log()
            return self.happened + self.signals + self.lines

    def take(self):
        with self.lock:
            found = self.entries()
            self.happened, self.signals, self.lines = [], [], []
            return found

    def _read_log(self):
        *lines, self.rest = (self.rest + self.log.read()).split(b"\n")
        for line in lines:
            # Of the two kinds of line, one carries no source.
            line = line.decode(errors="surrogateescape").replace("unknown|unknown|", "")
            if line == self.answered:
                self.answered = ""
            else:
                self.lines.append(line)


class Bus:
    """The system bus of the processes that are started from then on, with a client that has each
    signal of the daemon written into the journal."""

    def __init__(self, log):
        self.server = subprocess.Popen(
            ["dbus-daemon", f"--config-file={Path(__file__).with_name('bus.conf')}", "--nofork",
             "--print-address"], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        self.address = self.server.stdout.readline().strip()  # comes when the bus listens
        os.environ["DBUS_SYSTEM_BUS_ADDRESS"] = self.address
        self.journal = Journal(log, self.settle)
        self.client = DBusRouter(open_dbus_connection(self.address, auth_timeout=10))
        signals = MatchRule(type="signal", interface=SERVICE)
        self.client.filter(signals, queue=self.journal)
        self.request(message_bus.AddMatch(signals))

    def close(self):
        self.client.close()
        self.server.kill()
        self.server.wait()
        self.server.stdout.close()

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
        return unwrap_msg(self.client.send_and_get_reply(message, timeout=REPLY_WAIT))

    def settle(self):
        """What the daemon has sent so far is in the journal. Its bus thread answers this also while
        the other one waits; one that is not on the bus sends nothing."""
        with suppress(Exception):
            self.request(PING)
            # If that thread was late, it met the ping before the signals that were waiting for it.
            self.request(PING)
