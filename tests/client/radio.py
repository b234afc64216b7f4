# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""Networks on the air around a supplicant that stores and joins them as the real one does."""

import hashlib
import threading
from copy import deepcopy

from harness.bed import comes_true
from harness.supplicant import FakeSupplicant

SECRET = "thirteen byte"  # of every network; fits WEP, too

ESCAPES = {ord(byte): "\\" + letter for byte, letter in zip('"\\\033\n\r\t', '"\\enrt')}
LOOK_WAIT = 0.2  # seconds; what is selected is loaded anew before it is found
OPEN = "[ESS]"
# By the word for it in an access point's flags: the word for it in STATUS, and what the supplicant
# calls a refusal of the secret, if it tells.
KINDS = {"PSK": ("WPA2-PSK", "WRONG_KEY"), "SAE": ("SAE", "CONN_FAILED"),
         "EAP": ("WPA2/IEEE 802.1X/EAP", "AUTH_FAILED"), "WEP": ("NONE", None),
         OPEN: ("NONE", None)}


def printed(ssid):
    """An SSID as the supplicant prints it."""
    return "".join(ESCAPES.get(byte) or (chr(byte) if 32 <= byte < 127 else f"\\x{byte:02x}")
                   for byte in ssid.encode(errors="surrogateescape"))


def key_of(ssid):
    return hashlib.pbkdf2_hmac("sha1", SECRET.encode(), ssid.encode(), 4096, 32).hex()


def access_points(*rows):
    """A table of these, as "FREQUENCY SIGNAL FLAGS NAME" each."""
    return [f"02:00:00:00:{number:02}:00\t" + "\t".join(row.split(" ", 3))
            for number, row in enumerate(rows, 1)]


def kind_of(network):
    if network.get("key_mgmt") == "NONE":
        return "WEP" if "wep_key0" in network else OPEN
    return network.get("key_mgmt", "PSK")[-3:]


TABLE = access_points(
    r"2412 -70 [WPA2-PSK-CCMP][ESS] Gr\xc3\xbc\xc3\x9fe",
    r"5180 -50 [WPA2-PSK-CCMP][ESS] Gr\xc3\xbc\xc3\x9fe",
    r"2437 -60 [ESS] \e[31m\xe2\x80\xaered",
    r"2437 -80 [WPA2-SAE-CCMP][ESS] ",
    r"2437 -81 [WPA2-SAE-CCMP][ESS] \xe4\xbd\xa0",
    r"2437 -82 [WPA2-EAP-CCMP][ESS] A:b=c",
    r"2437 -83 [WEP][ESS] \xef\xbb\xbfWep",
    r"2437 -84 [ESS] Twin",
    r"2437 -85 [WPA2-PSK-CCMP][ESS] Twin",
    r'2437 -86 [WPA2-OWE-CCMP][ESS] \\o\"\n\xf3\xa0\x81\x81\xe2\x80\xa8\x',
    r"2437 -87 [ESS] ssid=a=b")


class Radio(FakeSupplicant):
    """A scan finds the access points of a table, in rows as the supplicant prints them. `networks`
    is what the supplicant knows, by id, and `saved` what its configuration file holds; a network
    has its parameters as they were set, without quotation marks, and "disabled"."""

    def __init__(self, journal, table):
        self.full_table = table
        self.begin()
        super().__init__(journal)

    def begin(self, *networks):
        """Has these in its file and, as after a start, in use; joins the one it can, if any."""
        self.table = list(self.full_table)
        self.has_addresses = True
        self.answers = {}
        vars(self).pop("react", None)
        self.saved = [{"disabled": False, **network} for network in networks]
        self.networks = dict(enumerate(deepcopy(self.saved)))
        self.disconnect()
        if networks:
            self.look()
            assert comes_true(lambda: self.state == "COMPLETED")

    def stored(self):
        """The names in its file, those of the disabled in parentheses."""
        return [f"({network['ssid']})" if network["disabled"] else network["ssid"]
                for network in self.saved]

    def reply(self, command):
        verb, *arguments = command.split(None, 3)
        if arguments:
            arguments[0] = int(arguments[0])
        return getattr(self, verb.lower(), lambda *_: None)(*arguments) or "OK\n"

    def add_network(self):
        number = max(self.networks, default=-1) + 1
        self.networks[number] = {"ssid": "", "disabled": True}
        return f"{number}\n"

    def set_network(self, number, parameter, value=""):
        is_text = value.startswith('"')
        text = value[1:-1] if is_text else value
        if value in ("", "NULL") or parameter == "psk" and is_text and not 8 <= len(text) <= 63:
            return "FAIL\n"
        self.networks[number][parameter] = text

    def enable_network(self, number):
        self.networks[number]["disabled"] = False

    def select_network(self, number):
        for other, network in self.networks.items():
            network["disabled"] = other != number
        if kind_of(self.networks[number]) in ("WEP", OPEN):  # the network before is told of late
            self.send_event("<3>CTRL-EVENT-SSID-TEMP-DISABLED id=0 reason=WRONG_KEY")
        self.look()

    def remove_network(self, number):
        network = self.networks.pop(number)
        if f"ssid={printed(network['ssid'])}\n" in self.connection:
            self.disconnect()

    def save_config(self):
        self.saved = [deepcopy(network) for network in self.networks.values()
                      if "psk" in network or network.get("key_mgmt") not in ("WPA-PSK", "SAE")]

    def reconfigure(self):
        self.networks = dict(enumerate(deepcopy(self.saved)))
        self.look()

    def list_networks(self):
        return "header\n" + "".join(
            f"{number}\t{printed(network['ssid'])}\tany\t{'[DISABLED]' * network['disabled']}\n"
            for number, network in self.networks.items())

    def scan_results(self):
        return "\n".join(["header", *self.table, ""])

    def status(self):
        return f"{self.connection}wpa_state={self.state}\naddress=02:00:00:00:00:00\n"

    def react(self, command):
        if command == "SCAN":
            self.send_event("<3>CTRL-EVENT-SCAN-RESULTS ")

    def disconnect(self):
        self.connection, self.state, self.candidates = "", "DISCONNECTED", []

    def look(self):
        """Leaves what is joined, and joins one of those that are enabled and have a key."""
        self.disconnect()
        self.candidates = [network for network in self.networks.values() if not network["disabled"]
                           and ("psk" in network or kind_of(network) not in ("PSK", "SAE"))]
        self.state = "SCANNING" if self.candidates else "INACTIVE"
        threading.Timer(LOOK_WAIT, self.associate, [self.candidates]).start()

    def associate(self, candidates):
        if candidates is not self.candidates:  # it has begun anew
            return
        self.send_event("<3>CTRL-EVENT-SCAN-RESULTS ")
        for network in candidates:
            for bssid, frequency, _, flags, name in (row.split("\t") for row in self.table):
                kind = kind_of(network)
                if name == printed(network["ssid"]) and (
                        flags == OPEN if kind == OPEN else kind in flags):
                    point = f"bssid={bssid}\nfreq={frequency}\nssid={name}\n"
                    return self.meet(network, kind, point)

    def meet(self, network, kind, point):
        word, refusal = KINDS[kind]
        secret = network.get("password", network.get("wep_key0", network.get("psk")))
        is_right = kind == OPEN or secret in (SECRET, key_of(network["ssid"]))
        if refusal and not is_right:
            self.send_event(f"<3>CTRL-EVENT-SSID-TEMP-DISABLED id=0 reason={refusal}")
            threading.Timer(2, self.associate, [self.candidates]).start()
            return
        address = "ip_address=10.20.2.15\n" if is_right and self.has_addresses else ""
        self.connection = (f"{point}mode=station\npairwise_cipher=CCMP\ngroup_cipher=TKIP\n"
                           f"key_mgmt={word}\n{address}")
        self.state = "COMPLETED"
        self.send_event("<3>CTRL-EVENT-CONNECTED - Connection completed")
