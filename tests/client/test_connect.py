# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""How the program joins a network, and what becomes of the device when it does not."""

import json
import re
import signal
import subprocess
from pathlib import Path

import pytest
from harness.bed import comes_true

from command import ATTENTIVE, BXWIFICTL, bxwifictl, on_terminal
from radio import SECRET, key_of

HOME = {"ssid": "Grüße", "psk": key_of("Grüße")}
BY_HAND = {"scan_ssid": "1", "pairwise": "CCMP", "group": "CCMP"}
THIRD = {**BY_HAND, "ssid": "你", "key_mgmt": "SAE", "psk": SECRET}
LOGIN = {**BY_HAND, "ssid": "A:b=c", "key_mgmt": "WPA-EAP", "eap": "PEAP", "identity": "ada",
         "password": SECRET}
OPEN = {"ssid": "ssid=a=b", "key_mgmt": "NONE"}


# With what on standard input: what is set.
@pytest.mark.parametrize("arguments, given, network", [
    ("Grüße --password-file -", SECRET, HOME),
    ("Grüße --stored", "", HOME),
    ("--hidden Grüße --json --password-file -", HOME["psk"],
     {**BY_HAND, **HOME, "key_mgmt": "WPA-PSK"}),
    ("--security=wpa3 --hidden 你 --password-file -", SECRET, THIRD),
    ("--uri-file -", f"WIFI:T:WPA;S:你;P:{SECRET};;", THIRD),
    ("A:b=c --identity ada --password-file /dev/stdin", SECRET + "\r\nmore", LOGIN),
    ("\ufeffWep --password-file -", SECRET,
     {**BY_HAND, **OPEN, "ssid": "\ufeffWep", "wep_key0": SECRET}),
    ("--security=open \033[31m\u202ered", "", {**OPEN, "ssid": "\033[31m\u202ered"}),
    ("--security=open --hidden ssid=a=b", "", {**BY_HAND, **OPEN}),
])
def test_joins(radio, arguments, given, network):
    radio.begin(HOME)
    status, output, error = bxwifictl("connect", *arguments.split(), given=given)
    hints = "--security" in arguments or "--hidden" in arguments
    assert (status, error) == (0, "scanning ...\n" * (not hints) + "asking the daemon ...\n"
                               "associating ...\nwaiting for an address ...\n")
    name = network["ssid"].translate({0x1b: "\\u001b", 0x202e: "\\u202e", 0xfeff: "\\ufeff"})
    assert output == ('{"address":"10.20.2.15","ssid":"Grüße"}\n' if "--json" in arguments else
                      f"ssid     {name}\naddress  10.20.2.15\n")
    assert list(radio.networks.values())[-1] == {**network, "disabled": False}
    is_alone = network["ssid"] == "Grüße" or "eap" in network  # a login is not stored
    assert radio.stored() == (["Grüße"] if is_alone else ["(Grüße)", network["ssid"]])


def test_status_when_joined(radio):
    radio.begin(THIRD)
    assert " ".join(bxwifictl("status")[1].split()) == (
        "state connected ssid 你 address 10.20.2.15 bssid 02:00:00:00:05:00 frequency 2437 MHz "
        "mode station pairwise cipher CCMP group cipher TKIP key management SAE "
        "supplicant state COMPLETED")
    assert json.loads(bxwifictl("status", "--json")[1])["frequency_mhz"] == 2437
    assert bxwifictl("address") == (0, "10.20.2.15\n", "")
    assert re.findall(r"^(.)  (\S+) +02:00:00:00:0([45])", bxwifictl("scan", "--all")[1], re.M) == [
        (" ", "(hidden)", "4"), ("*", "你", "5")]
    assert json.loads(bxwifictl("scan", "--json")[1])[2] == {
        "ssid": "你", "bssid": "02:00:00:00:05:00", "signal_dbm": -81, "frequency_mhz": 2437,
        "channel": 6, "band": "2.4 GHz", "security": "wpa3", "joined": True}


NOWHERE = "the device is in no network now"


# From what network, with what arguments: the status, what is said last, and what is stored then.
# With status 1 it is the address that does not come.
@pytest.mark.parametrize("home, arguments, status, text, stored", [
    (HOME, "--security peap --identity ada --timeout 3 Twin", 7,
     "not joined within 3 s; back in Grüße", ["Grüße"]),
    (HOME, "Grüße", 5, f"wrong passphrase or key; its former key is lost; {NOWHERE}", []),
    (THIRD, "Grüße", 5, f"or key; 你 takes its secret each time; {NOWHERE}", ["(你)"]),
    (OPEN, "--security wpa Grüße", 5, "wrong passphrase or key; back in ssid=a=b", ["ssid=a=b"]),
    (LOGIN, "你", 5, "refused; most likely a wrong passphrase; A:b=c takes its secret each time; "
     + NOWHERE, ["(A:b=c)"]),
    (None, "A:b=c --identity ada", 5, "identity or password refused", []),
    (HOME, "你", 1, "joined, but no address came; back in Grüße", ["Grüße", "(你)"]),
])
def test_way_back(radio, home, arguments, status, text, stored):
    radio.begin(*[home] * bool(home))
    radio.has_addresses = status != 1
    if not home:  # The supplicant names a network from the moment that it tries to join it.
        radio.connection, radio.state = "ssid=\\xe4\\xbd\\xa0\nkey_mgmt=SAE\n", "ASSOCIATING"
    ended, _, error = bxwifictl("connect", "--password-file", "-", *arguments.split(),
                                given=SECRET if status == 1 else "wrong horse")
    assert ended == status
    assert re.sub(r"within \d", "within 3", error).endswith(f"{text}\n"), error
    assert radio.stored() == stored
    assert error.startswith("should this fail, the device cannot go") == (home in (THIRD, LOGIN))


def test_progress_that_nobody_reads(radio):
    """A program that it ends would leave the device where it was."""
    for streams, status in ("2>&1 >/dev/null", 0), ("", 128 + signal.SIGPIPE):  # result unread
        command = f"'{BXWIFICTL}' connect --security open ssid=a=b {streams} | true"
        assert subprocess.run(["bash", "-o", "pipefail", "-c", command]).returncode == status


@pytest.mark.parametrize("numbers, status, end", [
    ([signal.SIGHUP], 129, "bxwifictl: Nowhere: given up; back in Grüße\n"),
    ([signal.SIGTERM, signal.SIGINT], -signal.SIGINT, "")])
def test_interruption(radio, numbers, status, end):
    radio.begin(HOME)
    with subprocess.Popen([*ATTENTIVE, BXWIFICTL, "connect", "--security", "open", "Nowhere"],
                          stderr=subprocess.PIPE, text=True) as run:
        for number, line in zip(numbers, ["associating ...\n", "going back to Grüße ...\n"]):
            while run.stderr.readline() != line:
                assert run.poll() is None
            run.send_signal(number)
        assert run.stderr.read().endswith(end)
    assert run.returncode == status


def test_interruption_of_the_first_question(radio):
    command = [*ATTENTIVE, "--ignore-signal=HUP", BXWIFICTL, "connect", "X"]  # as nohup has it
    with radio.silence, subprocess.Popen(command) as run:
        state = Path(f"/proc/{run.pid}/status")
        assert comes_true(lambda: re.search("SigCgt.*4...$", state.read_text(), re.M))  # SIGTERM
        run.send_signal(signal.SIGHUP)
        run.terminate()
        assert run.wait(9) == 143
        assert bxwifictl("connect", "--timeout=1", "X") == (7, "", "bxwifictl: no answer in time\n")


@pytest.mark.parametrize("status, answer, end", [
    (0, b"thirteen byte\n", "address  10.20.2.15\r\n"),
    (5, b"wrong horse\n", "Grüße: wrong passphrase or key\r\n"),
    (6, b"\n", "Grüße: nothing is stored for this network to join it with\r\n"),
    (130, b"half\3", ": \r\n"),
    (1, b"\4", "\r\nbxwifictl: no answer\r\n"),
    (2, b"stop\x1a\x1cquit\n", "control characters in a passphrase, password or identity\r\n"),
    (2, b"correct h\xf6rse\n", "bxwifictl: what was typed is not UTF-8 text\r\n"),
])
def test_questions_on_a_terminal(radio, status, answer, end):
    ended, shown = on_terminal("connect", "Grüße", answers=[answer])
    assert ended == status and shown.endswith(end), shown
    assert shown.startswith("scanning ...\r\nPassphrase for Grüße (empty: the stored one): \r\n")


def test_login_on_a_terminal(bed, radio):
    names = bed.folder / ".cache/bxwifictl/networks"
    names.unlink(missing_ok=True)
    bxwifictl("scan")
    assert not names.exists()
    shown = on_terminal("connect", "A:b=c", ctty=False, answers=[b"ada\n", b"thirteen byte\n"])[1]
    assert shown.startswith(
        "scanning ...\r\nIdentity for A:b=c: ada\r\nPassphrase for A:b=c: \r\nasking")
    assert names.read_text() == "Grüße\n你\nA:b=c\nTwin\nssid=a=b\n"
    assert "\033[1;32m*  A:b=c                          ▂    -82 dBm" in on_terminal("scan")[1]
    for plain in "NO_COLOR=1", "TERM=dumb":
        assert "\033" not in on_terminal("scan", variable=plain)[1]
