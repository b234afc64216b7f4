#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""Lists the networks in sight; with a name and a passphrase, joins that WPA network:
join.py [NAME PASSPHRASE]. Needs Debian's python3-jeepney."""
import hashlib
import re
import struct
import sys
import time
from collections import deque

from jeepney import (DBusAddress, DBusErrorResponse, HeaderFields, MatchRule, message_bus,
                     new_method_call)
from jeepney.io.blocking import open_dbus_connection
from jeepney.wrappers import unwrap_msg

DAEMON = DBusAddress("/", "com.brelvix.bxwifid", "com.brelvix.bxwifid")
SIGNALS = MatchRule(type="signal", interface=DAEMON.interface)
CALL_WAIT, OUTCOME_WAIT = 180, 45  # seconds
CONNECTED, SCAN_DELIVERED, SET_ASIDE, WRONG_KEY = 0, 3, 6, 7
ESCAPES = {"e": "\033", "n": "\n", "r": "\r", "t": "\t"}


class Daemon:
    def __init__(self):
        self.heard = deque()
        self.bus = open_dbus_connection("SYSTEM")
        self.bus.filter(SIGNALS, queue=self.heard)
        self.bus.send_and_get_reply(message_bus.AddMatch(SIGNALS))

    def call(self, method, signature=None, *arguments):
        """Returns when the daemon is done. What it said until then has been heard."""
        message = new_method_call(DAEMON, method, signature, arguments)
        unwrap_msg(self.bus.send_and_get_reply(message, timeout=CALL_WAIT))

    def signals(self):
        """The name and the argument of each, until nothing comes in time."""
        end = time.monotonic() + OUTCOME_WAIT
        while True:
            message = self.bus.recv_until_filtered(self.heard, timeout=end - time.monotonic())
            yield message.header.fields[HeaderFields.member], message.body[0]


def record(*texts):
    encoded = (text.encode("utf-16-be") for text in texts)
    return b"".join(struct.pack(">I", len(text)) + text for text in encoded) + b"\0"


def texts_of(payload):
    while len(payload) >= 4:
        end = 4 + struct.unpack(">I", payload[:4])[0] % 0xFFFFFFFF  # a null text has no bytes
        yield payload[4:end].decode("utf-16-be")
        payload = payload[end:]


def ssid_of(printed):
    def character(escape):
        return chr(int(escape[1], 16)) if escape[1] else ESCAPES.get(escape[2], escape[2])
    characters = re.sub(r"\\(?:x([0-9a-f]{2})|(.))", character, printed)
    return characters.encode("latin-1").decode(errors="replace")


def scan(daemon):
    daemon.call("scanRequest")
    for name, value in daemon.signals():
        if name == "scanResult":
            _, _, level, _, printed, *_ = texts_of(value)
            ssid = ssid_of(printed)
            print(f"{level} dBm  {ssid if ssid.isprintable() else printed}")
        elif (name, value) == ("statusMessage", SCAN_DELIVERED):
            return


def join(daemon, ssid, passphrase):
    # The key, since a passphrase would stand in the command line of a tool.
    key = hashlib.pbkdf2_hmac("sha1", passphrase.encode(), ssid.encode(), 4096, 32).hex()
    daemon.call("connectRequest", "ay", record("", "", "", "WPA-PSK", ssid, key, ""))
    daemon.heard.clear()  # The outcome follows the reply; what came before is somebody else's.
    connected = False
    for name, value in daemon.signals():
        connected = connected or (name, value) == ("statusMessage", CONNECTED)
        if name == "statusMessage" and value in (SET_ASIDE, WRONG_KEY):
            sys.exit("Not joined: " + ("wrong passphrase" if value == WRONG_KEY else "set aside"))
        if connected and name == "ipResult" and value:
            print("Joined with the address", value)
            return


try:
    daemon = Daemon()
    scan(daemon)
    if len(sys.argv) == 3:
        join(daemon, *sys.argv[1:])
except (DBusErrorResponse, OSError) as error:  # TimeoutError, which says nothing, among them
    sys.exit(f"Failed: {str(error) or 'no answer in time'}")
