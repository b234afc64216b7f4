# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""The keeper against the daemon, on a radio from which networks vanish."""

import json
import os
import subprocess
import threading
import time
from pathlib import Path

from harness.bed import comes_true

from command import BXWIFICTL, bxwifictl
from radio import SECRET, access_points, key_of

TABLE = access_points("2412 -40 [WPA2-PSK-CCMP][ESS] A", "2412 -50 [WPA2-PSK-CCMP][ESS] B",
                      "2412 -60 [WPA2-PSK-CCMP][ESS] C")
NOTHING = '{"networks":[]}'


def start(folder, *options):
    """A keeper with its state in this folder."""
    return subprocess.Popen([BXWIFICTL, "keep", *options], text=True, stdout=subprocess.PIPE,
                            stderr=subprocess.PIPE,
                            env=os.environ | {"STATE_DIRECTORY": str(folder)})


def said(keeper):
    """What one has said when it has ended, and with what status."""
    _, error = keeper.communicate(timeout=60)
    return keeper.returncode, error.replace("bxwifictl: ", "").splitlines()


def test_keep(bed, radio):
    state, elsewhere = Path("/tmp/state"), Path("/tmp/elsewhere")
    state.mkdir(), elsewhere.mkdir()
    (state / "networks.json").write_text("[")
    # A disk with no room for a further file.
    subprocess.run(["mount", "-t", "tmpfs", "-o", "nr_blocks=1", "full", elsewhere], check=True)
    (elsewhere / "networks.json").write_text(NOTHING)
    events = []

    def follow(keeper):
        for line in keeper.stderr:
            events.append(line.removeprefix("bxwifictl: ").rstrip())

    def comes(*expected, within=10):
        """Exactly these come next, in time; which of two is first may be chance."""
        comes_true(lambda: len(events) >= len(expected), within)
        assert len(events) == len(expected) and set(events) == set(expected)
        events.clear()

    def connect(name):
        status, _, error = bxwifictl("connect", name, "--password-file", "-", given=SECRET)
        assert status == 0, error

    hands_off = "another client joins; hands off for a minute"
    address = "with the address 10.20.2.15"
    keeper = start(state)
    threading.Thread(target=follow, args=[keeper], daemon=True).start()
    comes("/tmp/state/networks.json: no list of networks; set aside as "
          "/tmp/state/networks.json.damaged")
    assert (state / "networks.json.damaged").read_text() == "["
    for name in "ACB":
        connect(name)
        comes(hands_off, f"remembering {name}", f"in {name} {address}")
    joined = time.monotonic()
    assert bxwifictl("forget", "C")[0] == 0
    status, (remembering, problem, online) = said(start(elsewhere, "--once"))
    assert (status, remembering, online) == (0, "remembering B", f"in B {address}")
    assert problem.startswith("/tmp/elsewhere/networks.json: ")
    remembered = (state / "networks.json").read_text()
    assert [entry["ssid"] for entry in json.loads(remembered)["networks"]] == list("BCA")
    assert (elsewhere / "networks.json").read_text() == NOTHING
    assert SECRET not in remembered and key_of("A") not in remembered

    # The supplicant is restarted: it has an end without a farewell, and comes back with what
    # it has stored.
    radio.kill()
    comes("the daemon has no supplicant; relinking", within=20)
    radio.start()
    comes("the daemon has its supplicant", f"in B {address}", within=20)

    # The access point is gone, and a stranger shows its name. For a minute after the join the
    # keeper waits for the client. What was joined before is not stored any more.
    radio.table[1] = TABLE[1].replace("-50\t[WPA2-PSK-CCMP]", "-40\t")
    radio.look()
    stranger = start(elsewhere, "--once")
    searching = "in no network; looking for one that is remembered"
    comes(searching, "joining C", "C is not stored any more; forgotten", "joining A",
          f"in A {address}", within=90)
    assert 60 <= time.monotonic() - joined
    assert radio.stored() == ["A", "(B)"]
    assert said(stranger) == (6, [searching, "no remembered network in sight"])

    assert bxwifictl("disconnect")[0] == 0
    left = start(state, "--once", "--json")
    assert json.loads(left.stdout.readline())["event"] == "left" and said(left) == (0, [])
    comes("disconnected on purpose; waiting for a join")
    connect("C")
    comes(hands_off, "remembering C", f"in C {address}")
    keeper.terminate()
    assert keeper.wait(10) == -15
