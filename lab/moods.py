# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""A program of the user's interface, given as a command, on the daemon and a radio with moods."""

import select
import subprocess
import sys

from harness.bed import Bed, comes_true
from harness.supplicant import FakeSupplicant

ORDINARY = [(2412, -48, "[WPA2-PSK-CCMP][ESS]", "Lab WPA2"),
            (2437, -55, "[ESS]", "Lab Open"),
            (2437, -62, "[WPA2-EAP-CCMP][ESS]", "Lab Enterprise"),
            (5180, -69, "[WPA2-SAE-CCMP][ESS]", r"Gr\xc3\xbc\xc3\x9fe"),
            (5745, -80, "[WEP][ESS]", "Lab WEP")]
THIRTY = [(2412, -40 - number, "[WPA2-PSK-CCMP][ESS]", f"Network {number}") for number in range(30)]
HOSTILE = [(2412, -40, "[ESS]", "<b>bold</b><img src=x>"),
           (2412, -45, "[ESS]", r"\e[31mred\n\x07"),
           (2412, -50, "[WPA2-PSK-CCMP][ESS]", r"\xe2\x80\xaegnp.exe"),
           (2412, -55, "[ESS]", "W" * 32),
           (2412, -60, "[ESS]", r"\xff\xfe"),
           (2412, -65, "[ESS]", r"\xf0\x9f\x98\x80 %1 &amp; \"\\"),
           (2412, -70, "[ESS]", "   ")]
MOODS = ["all is well: any passphrase joins", "wrong key", "no address", "supplicant gone",
         "nothing in sight", "thirty networks", "hostile names"]
SECRETS = ["psk", "password", "wep_key0"]
START_WAIT = 60  # seconds


class Radio(FakeSupplicant):
    """Stores networks, and joins the one that is selected as the mood has it. A key is wrong for as
    long as it is not set again in another mood."""

    def __init__(self, journal):
        self.stored = {}
        self.refused = set()
        self.joined = None
        self.number = 0
        self.mood = MOODS[0]
        super().__init__(journal)
        self.tell()

    def react(self, command):
        word, *arguments = command.split(None, 3)
        if word == "SCAN":
            self.send_event("<3>CTRL-EVENT-SCAN-RESULTS ")
        elif word == "ADD_NETWORK":
            self.stored[str(self.number)] = ""
            self.number += 1
        elif word == "SET_NETWORK" and arguments[1] == "ssid":
            self.stored[arguments[0]] = printed(arguments[2][1:-1])
        elif word == "SET_NETWORK" and arguments[1] in SECRETS and arguments[2] != "NULL":
            (self.refused.add if self.mood == "wrong key" else self.refused.discard)(arguments[0])
        elif word == "REMOVE_NETWORK":
            self.stored.pop(arguments[0], None)
            self.joined = self.joined if self.joined in self.stored else None
        elif word == "DISCONNECT":
            self.joined = None
        elif word == "SELECT_NETWORK":
            self.select(arguments[0])
        self.tell()

    def select(self, number):
        self.joined = None if number in self.refused else number
        self.tell()  # before the daemon is told to look
        self.send_event("<3>CTRL-EVENT-CONNECTED - Connection completed" if self.joined
                        else f"<3>CTRL-EVENT-SSID-TEMP-DISABLED id={number} reason=WRONG_KEY")

    def tell(self):
        """Has the answers say what is so now."""
        networks = {"nothing in sight": [], "thirty networks": THIRTY, "hostile names": HOSTILE}
        rows = [f"02:00:00:00:{row:02}:00\t" + "\t".join(map(str, network))
                for row, network in enumerate(networks.get(self.mood, ORDINARY))]
        self.answer("SCAN_RESULTS", "\n".join(["header", *rows, ""]))
        rows = [f"{number}\t{ssid}\tany\t\n" for number, ssid in self.stored.items()]
        self.answer("LIST_NETWORKS", "header\n" + "".join(rows))
        self.answer("ADD_NETWORK", f"{self.number}\n")
        status = "wpa_state=DISCONNECTED\n"
        if self.joined:
            ssid = self.stored[self.joined]
            status = (f"bssid=02:00:00:00:00:00\nssid={ssid}\nkey_mgmt={key_management(ssid)}\n"
                      "wpa_state=COMPLETED\n")
            status += "" if self.mood == "no address" else "ip_address=10.20.2.15\n"
        self.answer("STATUS", status)


def printed(ssid):
    """A name as the supplicant prints it."""
    special = {'"': '\\"', "\\": "\\\\", "\033": r"\e", "\n": r"\n", "\r": r"\r", "\t": r"\t"}
    return "".join(special.get(chr(byte)) or (chr(byte) if 32 <= byte < 127 else f"\\x{byte:02x}")
                   for byte in ssid.encode(errors="surrogateescape"))


def key_management(ssid):
    """As the supplicant's status names it."""
    flags = next((row[2] for row in ORDINARY + THIRTY + HOSTILE if row[3] == ssid), "")
    names = {"PSK": "WPA2-PSK", "SAE": "SAE", "EAP": "WPA2/IEEE 802.1X/EAP"}
    return next((name for token, name in names.items() if token in flags), "NONE")


def set_mood(bed, mood):
    radio = bed.supplicant
    was_gone, radio.mood = radio.mood == "supplicant gone", mood
    if mood == "supplicant gone":
        radio.send_event("<3>CTRL-EVENT-TERMINATING ")
        radio.kill()
    elif was_gone:
        radio.joined = None
        radio.start()
        bed.bus.call("wpaConnectRequest")  # which the service manager of a device would see to
        comes_true(lambda: radio.monitors)
    radio.tell()
    radio.send_event("<3>CTRL-EVENT-SCAN-RESULTS ")


def run(bed, program):
    bed.tools.script("fw_printenv", 'echo "$1=192.168.0.2"')
    bed.start()
    with subprocess.Popen(program, stdin=subprocess.DEVNULL) as panel:
        if not comes_true(lambda: "SCAN" in bed.journal.entries(), START_WAIT):
            panel.terminate()
            sys.exit(f"{program[0]} has not asked for a scan")
        for number, mood in enumerate(MOODS, 1):
            print(f"  {number}  {mood}")
        print("Type a number and Enter; end with Ctrl-D, or by closing the window.", flush=True)
        while panel.poll() is None:
            if not select.select([sys.stdin], [], [], 0.2)[0]:
                continue
            line = sys.stdin.readline()
            if not line:
                panel.terminate()
                break
            if line.strip() in map(str, range(1, len(MOODS) + 1)):
                set_mood(bed, MOODS[int(line) - 1])
                print("now:", bed.supplicant.mood, flush=True)
    return panel.returncode


with Bed(Radio) as the_bed:
    status = run(the_bed, sys.argv[1:])
sys.exit(0 if status in (0, -15) else f"{sys.argv[1]} ended with {status}")
