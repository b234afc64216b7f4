# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""The keeper against the daemon, on a radio from which networks vanish."""

import json
import os
import subprocess
import threading
import time
from copy import deepcopy
from pathlib import Path

from harness.bed import comes_true

from command import BXWIFICTL, bxwifictl
from radio import SECRET, access_points, key_of

TABLE = access_points("2412 -40 [WPA2-PSK-CCMP][ESS] A", "2412 -50 [WPA2-PSK-CCMP][ESS] B",
                      "2412 -60 [WPA2-PSK-CCMP][ESS] C", "2412 -70 [ESS] Open")
# Its minutes are long: all that runs beside this process lives five times as fast.
SPEED = 5
os.environ |= {"LD_PRELOAD": "/usr/$LIB/faketime/libfaketimeMT.so.1", "FAKETIME": f"+0 x{SPEED}",
               "ASAN_OPTIONS": "verify_asan_link_order=0"}
STATE, ELSEWHERE = Path("/tmp/state"), Path("/tmp/elsewhere")
FILE = "networks.json"
DAMAGED = (f"{ELSEWHERE}/{FILE}: no list of networks; set aside as {ELSEWHERE}/{FILE}.damaged")
NO_SUPPLICANT = "the daemon has no supplicant; relinking"
RELINKED = "the daemon has its supplicant"
HANDS_OFF = "another client joins; hands off for a minute"
SEARCHING = "in no network; looking for one that is remembered"


def online(name):
    return f"in {name} with the address 10.20.2.15"


def forgotten(name):
    return f"{name} is not stored any more; forgotten"


def wrong_key(name, pause):
    return f"{name}: wrong passphrase or key; the next try in {pause} s"


class Keeper:
    """One with its state in this folder."""

    def __init__(self, folder, *options):
        folder.mkdir(exist_ok=True)
        self.process = subprocess.Popen([BXWIFICTL, "keep", *options], text=True,
                                        stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                        env=os.environ | {"STATE_DIRECTORY": str(folder)})
        self.lines = []
        self.reader = threading.Thread(target=self._follow, daemon=True)
        self.reader.start()

    def _follow(self):
        for line in self.process.stderr:
            self.lines.append(line.removeprefix("bxwifictl: ").rstrip())

    def says(self, *expected, after=0):
        """Exactly these come next and, in its seconds, not before that time."""
        begun = time.monotonic()
        assert comes_true(lambda: len(self.lines) >= len(expected), 20), self.lines
        assert self.lines == list(expected)
        assert (time.monotonic() - begun) * SPEED >= after
        self.lines.clear()

    def rests(self, seconds=10):
        """Has nothing to say for so long, in its seconds."""
        assert not comes_true(lambda: self.lines, seconds / SPEED), self.lines

    def ends(self):
        """Its status and all that it has said."""
        status = self.process.wait(20)
        self.reader.join()
        return status, self.lines


def connect(name):
    secret = [] if name == "Open" else ["--password-file", "-"]
    status, _, error = bxwifictl("connect", name, *secret, "--timeout=200", given=SECRET)
    assert status == 0, error


def entry(ssid, security="wpa"):
    return {"ssid": ssid, "security": security, "joined": "2026-01-01T00:00:00Z"}


def names_in(folder):
    return [entry["ssid"] for entry in json.loads((folder / FILE).read_text())["networks"]]


def test_state(radio):
    connect("A")
    many = [entry("x" * 32), *(entry(str(number), "open") for number in range(49))]
    said = "remembering A", online("A")
    ELSEWHERE.mkdir()
    (ELSEWHERE / FILE).write_text(json.dumps({"networks": many}))
    assert Keeper(ELSEWHERE, "--once").ends() == (0, [*said])
    assert names_in(ELSEWHERE) == ["A", "x" * 32, *map(str, range(48))]
    for text in "[", *(json.dumps({"networks": [entry(*damaged)]}) for damaged in (
            [""], ["x" * 33], ["x", "?"])):
        (ELSEWHERE / FILE).write_text(text)
        assert Keeper(ELSEWHERE, "--once").ends() == (0, [DAMAGED, *said])
        assert names_in(ELSEWHERE) == ["A"]
        assert (ELSEWHERE / f"{FILE}.damaged").read_text() == text
    # In no network since the device was booted: there was none to be left.
    (ELSEWHERE / FILE).write_text(json.dumps({"networks": [entry("A")]}))
    radio.disconnect()
    assert Keeper(ELSEWHERE, "--once").ends() == (0, [SEARCHING, "joining A", online("A")])
    # A disk with no room for a further file.
    subprocess.run(["mount", "-t", "tmpfs", "-o", "nr_blocks=1", "full", ELSEWHERE], check=True)
    (ELSEWHERE / FILE).write_text('{"networks":[]}')
    status, (remembering, problem, in_a) = Keeper(ELSEWHERE, "--once").ends()
    assert (status, remembering, in_a) == (0, *said)
    assert problem.startswith(f"{ELSEWHERE}/{FILE}: ")
    assert names_in(ELSEWHERE) == []


def test_keep(bed, radio):
    def on_air(*names):
        """These access points are, and the supplicant sees what it can join of them."""
        radio.table = [row for row in TABLE if row.split("\t")[-1] in names]
        radio.look()

    connect("Open")
    keeper = Keeper(STATE)
    keeper.says("remembering Open", online("Open"))
    for name in "ACB":
        connect(name)
        keeper.says(HANDS_OFF, f"remembering {name}", online(name))
    joined = time.monotonic()
    # What is removed now may be part of a join, and names no network.
    assert bxwifictl("forget", "C")[0] == 0
    assert names_in(STATE) == ["B", "C", "A", "Open"]
    remembered = (STATE / FILE).read_text()
    assert SECRET not in remembered and key_of("A") not in remembered

    # The supplicant is restarted: it has an end without a farewell, and comes back with what
    # it has stored.
    radio.kill()
    keeper.says(NO_SUPPLICANT)
    radio.start()
    keeper.says(RELINKED, online("B"))
    # Another's relink is not enough: nobody has asked for an address.
    radio.send_event("<3>CTRL-EVENT-TERMINATING ")
    assert bxwifictl("relink")[0] == 0
    keeper.says(NO_SUPPLICANT, RELINKED, online("B"))

    # The access point is gone, and a stranger shows its name. For a minute after the join the
    # keeper waits for the client. What was joined before is not stored any more.
    radio.table[1] = TABLE[1].replace("-50\t[WPA2-PSK-CCMP]", "-40\t")
    radio.look()
    stranger = Keeper(ELSEWHERE, "--once")
    keeper.says(SEARCHING, "joining C", forgotten("C"), "joining A", online("A"))
    assert 60 <= (time.monotonic() - joined) * SPEED
    assert radio.stored() == ["(Open)", "A", "(B)"]
    assert stranger.ends() == (6, [SEARCHING, "no remembered network in sight"])
    keeper.rests()

    # Away for a moment, then with other keys: each is tried once, with longer and longer pauses;
    # when a further network is seen, all begins anew.
    on_air("B")
    keeper.rests(7)
    on_air("A", "B")
    keeper.rests()
    networks = deepcopy(radio.networks)
    radio.networks[1]["psk"] = radio.networks[2]["psk"] = "another"
    radio.save_config()
    radio.look()
    keeper.says(SEARCHING, "joining A", wrong_key("A", 30), after=20)
    keeper.says("joining B", wrong_key("B", 60), after=29)
    keeper.says("joining A", wrong_key("A", 120), after=59)
    on_air("A", "B", "Open")
    assert bxwifictl("scan")[0] == 0
    keeper.says("joining A", wrong_key("A", 30))
    keeper.says("joining B", wrong_key("B", 60), after=29)
    keeper.says("joining Open", online("Open"), after=59)
    keeper.rests()

    # Another client comes first, also while the keeper is joining one that does not answer.
    radio.networks = networks
    radio.meet = lambda *_: None
    radio.table = TABLE[:2]
    radio.disconnect()  # it rests, but nobody has asked for that
    keeper.rests(7)
    for query in "statusRequest", "ssidRequest", "ipRequest":
        bed.bus.call(query)
    keeper.says(SEARCHING, "joining A")
    radio.table = [TABLE[1]]
    del radio.meet
    connect("B")
    keeper.says(HANDS_OFF, online("B"))

    # Who disconnects on purpose is left alone, until the supplicant looks for networks again.
    assert bxwifictl("disconnect")[0] == 0
    left = Keeper(STATE, "--once", "--json")
    assert json.loads(left.process.stdout.readline())["event"] == "left"
    assert left.ends() == (0, [])
    keeper.says("disconnected on purpose; waiting for a join")
    on_air("A")
    keeper.says(SEARCHING, "joining A", online("A"))

    bed.daemon.stop()
    keeper.says("waiting for the daemon bxwifid")
    assert Keeper(ELSEWHERE, "--once").ends() == (3, ["the daemon bxwifid is not running"])
    bed.daemon.start()
    keeper.says(online("A"))

    # A removal names no network: only what can be joined as it is in sight is forgotten for it.
    assert bxwifictl("forget", "B")[0] == 0
    keeper.says(forgotten("Open"))
    radio.table = [TABLE[0], TABLE[3]]
    connect("Open")
    keeper.says(HANDS_OFF, "remembering Open", online("Open"))
    assert bxwifictl("forget", "Open")[0] == 0
    keeper.says(forgotten("Open"))
    keeper.process.terminate()
    assert keeper.process.wait(10) == -15
