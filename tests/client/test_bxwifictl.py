# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""The program against the daemon: what it asks for, what it prints and the status it ends with."""

import json
import os
import re
import signal
import subprocess
from functools import partial
from pathlib import Path

import pytest
from harness.bed import Bed, comes_true

from radio import Radio, key_of
from terminal import on_terminal

BXWIFICTL = os.environ["BXWIFICTL"]
TABLE = [r"02:00:00:00:01:00	2412	-70	[WPA2-PSK-CCMP][ESS]	Gr\xc3\xbc\xc3\x9fe",
         r"02:00:00:00:01:01	5180	-50	[WPA2-PSK-CCMP][ESS]	Gr\xc3\xbc\xc3\x9fe",
         r"02:00:00:00:02:00	2437	-60	[ESS]	\e[31m\xe2\x80\xaered",
         r"02:00:00:00:03:00	2437	-80	[WPA2-SAE-CCMP][ESS]	",
         r"02:00:00:00:04:00	2437	-81	[WPA2-SAE-CCMP][ESS]	\xe4\xbd\xa0",
         r"02:00:00:00:05:00	2437	-82	[WPA2-EAP-CCMP][ESS]	A:b=c",
         r"02:00:00:00:06:00	2437	-83	[WEP][ESS]	\xef\xbb\xbfWep",
         r"02:00:00:00:07:00	2437	-84	[ESS]	Twin",
         r"02:00:00:00:07:01	2437	-85	[WPA2-PSK-CCMP][ESS]	Twin"]
SECRET = "thirteen byte"  # fits WEP, too
GRUESSE = {"ssid": "Grüße", "psk": key_of(SECRET, "Grüße")}
FILES = {"right": SECRET, "crlf": SECRET + "\r\nmore", "wrong": "wrong horse\n", "short": "short\n",
         "empty": "\n", "latin": "correct h\udcf6rse\n", "code": f"WIFI:T:WPA;S:你;P:{SECRET};;"}


@pytest.fixture(scope="module")
def bed():
    os.environ["LOCPATH"] = "/nonexistent"  # a device may have no UTF-8 locale
    for name, text in FILES.items():
        Path("/tmp", name).write_text(text, errors="surrogateescape")
    with Bed(partial(Radio, table=TABLE, secret=SECRET)) as bed:
        os.environ["HOME"] = str(bed.folder)
        bed.tools.script("fw_printenv", 'echo "$1=stored $1"')
        bed.tools.output("ifconfig", "  inet addr:10.0.0.9  Mask:255.0.0.0\n")
        bed.start()
        yield bed


@pytest.fixture
def radio(bed):
    bed.supplicant.store()
    bed.journal.take()
    return bed.supplicant


def bxwifictl(*arguments, given=""):
    """Its status and what it prints to both outputs, with this on standard input."""
    run = subprocess.run([BXWIFICTL, *arguments], input=given, capture_output=True, text=True,
                         timeout=90)
    return run.returncode, run.stdout, run.stderr


def sent(bed):
    """What the supplicant and the tools got, but for questions; no log lines."""
    return [" ".join(entry.split()) for entry in bed.journal.take()
            if not re.fullmatch(r"STATUS|LIST_NETWORKS|SCAN_RESULTS|sync|\w+\(.*\)|.*::.*", entry,
                                re.S)]


STORED = "Stored; takes effect at the next boot.\n"
LIVE = ["fw_printenv|dynamicip", "ifconfig|eth0", "route|-n", "fw_printenv|ethaddr"]


@pytest.mark.parametrize("arguments, commands, status, output, error", [
    ("status", [], 0, "state             disconnected\nsupplicant state  DISCONNECTED\n", ""),
    ("scan", ["SCAN"], 0, """\
   NAME                 SIGNAL   CHANNEL  BAND     SECURITY
   Grüße                -50 dBm  36       5 GHz    WPA2
   \\u001b[31m\\u202ered  -60 dBm  6        2.4 GHz  open
   你                   -81 dBm  6        2.4 GHz  WPA3
   A:b=c                -82 dBm  6        2.4 GHz  WPA2 Enterprise
   \\ufeffWep            -83 dBm  6        2.4 GHz  WEP
   Twin                 -84 dBm  6        2.4 GHz  open
""", ""),
    ("address", [], 0, "", ""),
    ("disconnect", ["DISCONNECT", "SAVE_CONFIG"], 0, "", ""),
    ("relink", ["DETACH", "ATTACH", "RECONFIGURE"], 0, "", ""),
    ("forget \033[31mred", [], 6, "",
     "bxwifictl: \\u001b[31mred: no network is stored by that name\n"),
    ("wired", [f"fw_printenv|{name}" for name in
               ("ipaddr", "gatewayip", "netmask", "ethaddr", "dynamicip")] + LIVE[1:], 0, """\
address      stored ipaddr
gateway      stored gatewayip
netmask      stored netmask
mac address  stored ethaddr
dhcp         yes
""", ""),
    ("wired live --json", LIVE, 0, '{"address":"10.0.0.9","dhcp":true,"gateway":"",'
     '"mac_address":"stored ethaddr","netmask":"255.0.0.0"}\n', ""),
    ("wired static 10.0.0.2 10.0.0.1 255.0.0.0", [
        "fw_setenv|ipaddr|10.0.0.2", "fw_setenv|gatewayip|10.0.0.1", "fw_setenv|netmask|255.0.0.0"],
     0, "", STORED),
    ("wired dhcp on", ["fw_setenv|dynamicip|1"], 0, "", STORED),
    ("wired dhcp off", ["fw_setenv|dynamicip"], 0, "", STORED),
])
def test_verbs(bed, radio, arguments, commands, status, output, error):
    assert bxwifictl(*arguments.split(" ")) == (status, output, error)
    assert sent(bed) == commands


# Each is refused before the supplicant is told to change anything; what is said holds the word.
@pytest.mark.parametrize("arguments, word, status", [
    ("", "Usage: bxwifictl VERB", 2), ("nonsense", "'nonsense'", 2), ("connect", "NAME", 2),
    ("forget", "Usage", 2), ("forget A B", "Usage", 2), ("status x", "Usage", 2),
    ("scan --hidden", "scan takes no option --hidden", 2),
    ("wired static 10.0.0.2 11.0.0.1 255.0.0.0", "11.0.0.1 is not a host in the network", 2),
    ("wired static 10.0.0.2 10.0.0.1", "wired takes", 2), ("wired dhcp maybe", "wired takes", 2),
    ("connect --security wpa2 X", "--security is", 2),
    *[(f"connect --timeout {time} X", "from 1 to 86400", 2) for time in (0, -1, 1.5, 86401)],
    ("connect --security open --password-file /tmp/right X", "X: an open network takes no", 2),
    ("connect --security wpa --stored --password-file /tmp/right X", "exclude each other", 2),
    ("connect --security wpa --identity ada --stored X", "--identity is for", 2),
    *[(f"connect --stored {name}", "--stored is for WPA, WPA2 and WEP", 2)
      for name in ("\033[31m\u202ered", "你", "A:b=c --identity ada")],
    ("connect Grüße", "Grüße needs a passphrase: give --password-file, or --stored\n", 2),
    ("connect 你", "你 needs a passphrase: give --password-file\n", 2),
    ("connect A:b=c", "A:b=c needs --identity", 2),
    ("connect Twin --password-file /tmp/right", "say which", 2),
    ("connect Grüße --password-file /tmp/short", "Grüße: a passphrase has 8 to 63 characters", 2),
    ("connect Grüße --password-file /tmp/empty", "the first line of /tmp/empty is empty", 2),
    ("connect Grüße --password-file /tmp/latin", "/tmp/latin is not UTF-8 text", 2),
    ("connect --uri-file /tmp/empty", "the first line of /tmp/empty is empty", 2),
    ("connect --uri-file /tmp/right", 'it does not begin with "WIFI:"\n', 2),
    ("connect --uri-file /tmp/code Grüße", "NAME", 2),
    ("connect --uri-file /tmp/code --hidden", "--uri-file takes only", 2),
    ("connect Grüße --password-file /nonexistent", "cannot read /nonexistent", 2),
    ("connect A:b=c --identity \udcfc", "not UTF-8 text", 2),
    ("forget \udcfc", "not UTF-8 text", 2),
    (f"connect {'ü' * 17}", "at most 32 bytes", 2),
    ("connect Nowhere", "scanning ...\nbxwifictl: Nowhere: no such network in sight", 6),
])
def test_refusals(bed, radio, arguments, word, status):
    ended, output, error = bxwifictl(*arguments.split())
    assert (ended, output) == (status, "") and word in error, error
    assert [command for command in sent(bed) if command != "SCAN"] == []


def test_help(radio):
    for arguments, beginning in (["--help"], "Usage: bxwifictl VERB"), (["-V"], "bxwifictl 1."), (
            ["connect", "X", "-h"], "Usage: bxwifictl connect"):
        status, output, error = bxwifictl(*arguments)
        assert (status, error) == (0, "") and output.startswith(beginning)
    for output in "/dev/full", "&-":  # nowhere to write to
        assert subprocess.run(f"{BXWIFICTL} status >{output}", shell=True).returncode == 1


def test_language(radio, monkeypatch):
    """People are told in theirs; what programs read stays."""
    monkeypatch.setenv("LC_ALL", "de_DE.UTF-8")
    monkeypatch.setenv("XDG_DATA_DIRS", str(Path(BXWIFICTL).parents[1] / "share"))
    assert bxwifictl("connect", "Grüße", "--password-file", "/tmp/wrong") == (
        5, "", "Suche ...\nAnfrage beim Dienst ...\nVerbindungsaufbau ...\n"
        "bxwifictl: Grüße: falsches WLAN-Passwort oder falscher Schlüssel\n")
    assert '"security":"open"' in bxwifictl("scan", "--json")[1]


@pytest.mark.parametrize("arguments, network, own", [
    ("Grüße --password-file -", {"psk": GRUESSE["psk"]}, "Grüße"),
    ("Grüße --stored", {"psk": GRUESSE["psk"]}, "Grüße"),
    ("你 --password-file /tmp/right", {"key_mgmt": "SAE", "psk": SECRET}, "你"),
    ("A:b=c --identity ada --password-file /tmp/crlf",
     {"key_mgmt": "WPA-EAP", "eap": "PEAP", "identity": "ada", "password": SECRET}, "A:b=c"),
    ("\ufeffWep --password-file /tmp/right", {"wep_key0": SECRET}, "\\ufeffWep"),
    ("--security=open \033[31m\u202ered", {"key_mgmt": "NONE"}, "\\u001b[31m\\u202ered"),
    ("--security=wpa3 --hidden 你 --password-file /tmp/right", {"key_mgmt": "SAE"}, "你"),
    ("--uri-file /tmp/code", {"key_mgmt": "SAE", "psk": SECRET}, "你"),
    ("--hidden Grüße --json --password-file /tmp/right", {"scan_ssid": "1", **GRUESSE}, None),
])
def test_joins(radio, arguments, network, own):
    radio.store(GRUESSE)
    output = f"ssid     {own}\naddress  10.20.2.15\n"
    if not own:
        output = '{"address":"10.20.2.15","ssid":"Grüße"}\n'
    hints = "--security" in arguments or "--hidden" in arguments
    assert bxwifictl("connect", *arguments.split(), given=SECRET) == (
        0, output, "scanning ...\n" * (not hints) + "asking the daemon ...\nassociating ...\n"
        "waiting for an address ...\n")
    joined = next(network for network in radio.networks.values() if not network["disabled"])
    assert network.items() <= joined.items()


def test_status_and_warning_when_there_is_no_way_back(radio):
    bxwifictl("connect", "你", "--password-file", "/tmp/right")
    assert bxwifictl("status") == (0, """\
state             connected
ssid              你
address           10.20.2.15
bssid             02:00:00:00:04:00
frequency         2437 MHz
mode              station
pairwise cipher   CCMP
key management    SAE
supplicant state  COMPLETED
""", "")
    assert bxwifictl("address") == (0, "10.20.2.15\n", "")
    marked = "*  你                   02:00:00:00:04:00"
    assert [line[:len(marked)] for line in bxwifictl("scan", "--all")[1].splitlines()
            if line.startswith("*")] == [marked]
    assert json.loads(bxwifictl("scan", "--json")[1])[2] == {
        "ssid": "你", "bssid": "02:00:00:00:04:00", "signal_dbm": -81, "frequency_mhz": 2437,
        "channel": 6, "band": "2.4 GHz", "security": "wpa3", "joined": True}
    assert bxwifictl("connect", "Nowhere")[2].startswith(
        "should this fail, the device cannot go back to 你, whose passphrase or login has to be "
        "given every time\nscanning ...\n")
    status, _, error = bxwifictl("connect", "--security", "open", "--timeout", "2", "Nowhere")
    assert status == 7 and error.endswith("Nowhere: not joined within 2 s; 你 takes its secret each "
                                          "time; the device is in no network now\n")


@pytest.mark.parametrize("number, status", [
    (signal.SIGINT, 130), (signal.SIGTERM, 143), (signal.SIGHUP, 129)])
def test_interruption(radio, number, status):
    radio.store(GRUESSE)
    radio.look()
    assert comes_true(lambda: radio.state == "COMPLETED")
    with subprocess.Popen([BXWIFICTL, "connect", "--security", "open", "Nowhere"],
                          stderr=subprocess.PIPE, text=True) as run:
        while run.stderr.readline() != "associating ...\n":
            assert run.poll() is None
        run.send_signal(number)
        assert run.stderr.readline() == "going back to Grüße ...\n"
        if number == signal.SIGTERM:
            run.send_signal(signal.SIGINT)
            assert run.wait(2) == -signal.SIGINT
            return
        assert run.stderr.read() == "bxwifictl: Nowhere: given up; back in Grüße\n"
    assert run.returncode == status


def test_interruption_of_the_first_question(bed, radio):
    with radio.silence, subprocess.Popen([BXWIFICTL, "connect", "X"]) as run:
        assert comes_true(lambda: "STATUS" in bed.journal.entries())
        run.terminate()
        assert run.wait(9) == 143


@pytest.mark.parametrize("status, answer, end, options", [
    (0, b"thirteen byte\n", "address  10.20.2.15\r\n", {}),
    (0, b"thirteen byte\n", "address  10.20.2.15\r\n", {"controlled": False}),
    (5, b"wrong horse\n", "Grüße: wrong passphrase or key\r\n", {}),
    (6, b"\n", "Grüße: nothing is stored for this network to join it with\r\n", {}),
    (130, b"half\3", ": \r\n", {}),
    (1, b"\4", "\r\nbxwifictl: no answer\r\n", {}),
    (2, b"stop\x1a\x1cquit\n", "control characters in a passphrase, password or identity\r\n", {}),
    (2, b"correct h\xf6rse\n", "bxwifictl: what was typed is not UTF-8 text\r\n", {}),
    (143, b"", ": \r\n", {"number": signal.SIGTERM}),
    (129, b"", ": \r\n", {"number": signal.SIGHUP}),
])
def test_questions_on_a_terminal(radio, status, answer, end, options):
    ended, shown = on_terminal(BXWIFICTL, "connect", "Grüße", answers=[answer], **options)
    assert ended == status and shown.endswith(end), shown
    assert shown.startswith("scanning ...\r\nPassphrase for Grüße (empty: the stored one): \r\n")


def test_login_on_a_terminal(bed, radio):
    names = bed.folder / ".cache/bxwifictl/networks"
    names.unlink(missing_ok=True)
    bxwifictl("scan")
    assert not names.exists()
    shown = on_terminal(BXWIFICTL, "connect", "A:b=c", answers=[b"ada\n", b"thirteen byte\n"])[1]
    assert shown.startswith(
        "scanning ...\r\nIdentity for A:b=c: ada\r\nPassphrase for A:b=c: \r\nasking")
    assert names.read_text() == "Grüße\n你\nA:b=c\nTwin\n"
    assert "\033[1;32m*  A:b=c                ▂    -82 dBm" in on_terminal(BXWIFICTL, "scan")[1]


def test_monitor_decodes_signals(bed, radio):
    heard = {form: bed.folder / f"heard{form}" for form in ("", "--json")}
    monitors = [subprocess.Popen([BXWIFICTL, "monitor", *form.split()], stdout=open(file, "w"))
                for form, file in heard.items()]

    def hears(line, form=""):
        return comes_true(lambda: line in heard[form].read_text(), 30)

    def hear_of_the_loss():  # as soon as they listen
        bed.supplicant.send_event("<3>CTRL-EVENT-BSS-REMOVED 3 02:00:00:00:01:01")
        return all("02:00:00:00:01:01" in file.read_text() for file in heard.values())

    assert comes_true(hear_of_the_loss, 30) and hears(" lost bssid=02:00:00:00:01:01\n")
    bxwifictl("scan")
    assert hears(" status status=scan-started\n")
    assert hears(" network bssid=02:00:00:00:02:00 signal_dbm=-60 frequency_mhz=2437 "
                 "flags=[ESS] ssid=\\u001b[31m\\u202ered\n")
    radio.store(GRUESSE)
    radio.look()
    connection = " connection state=COMPLETED bssid=02:00:00:00:01:00 address=10.20.2.15 ssid=Gr"
    assert hears(connection) and hears('"signal":"address"', "--json")
    lost = " connection state=DISCONNECTED bssid= address= ssid=\n"
    times = heard[""].read_text().count(lost)
    radio.disconnect()
    assert comes_true(lambda: heard[""].read_text().count(lost) > times, 30)
    radio.look()
    assert comes_true(lambda: heard[""].read_text().count(connection) == 2, 30)
    assert bed.daemon.stop() == 0
    assert hears(" daemon available=false\n") and hears('"available":false', "--json")
    bed.start()
    assert hears(" daemon available=true\n")
    for monitor in monitors:
        monitor.kill()
        monitor.wait()
    reports = heard[""].read_text().splitlines()
    assert all(" connection " not in line or line[24:] != following[24:]
               for line, following in zip(reports, reports[1:]))
    assert {"status", "network", "lost"} < {json.loads(line)["signal"] for line in
                                            heard["--json"].read_text().splitlines()}


def test_missing_bus_daemon_and_supplicant(bed, radio):
    policy = Path("/run/bus-policy.conf")
    policy.write_text('<busconfig><policy context="mandatory"><deny send_destination='
                      '"com.brelvix.bxwifid"/></policy></busconfig>')
    bed.bus.server.send_signal(signal.SIGHUP)
    assert comes_true(lambda: bxwifictl("status") == (
        4, "", "bxwifictl: this user may not call the daemon bxwifid\n"), 30)
    policy.unlink()
    bed.bus.server.send_signal(signal.SIGHUP)
    assert comes_true(lambda: bxwifictl("status")[0] == 0, 30)

    bed.journal.take()
    with bed.supplicant.silence, subprocess.Popen([BXWIFICTL, "status"], stderr=subprocess.PIPE,
                                                  text=True) as run:
        assert comes_true(lambda: "STATUS" in bed.journal.entries())
        bed.daemon.process.kill()
        bed.daemon.process.wait()
        bed.daemon.process = None
        assert run.stderr.read() == "bxwifictl: the daemon bxwifid went away\n"
    assert run.returncode == 3
    for verb in "scan", "monitor":
        assert bxwifictl(verb) == (3, "", "bxwifictl: the daemon bxwifid is not running\n")
    bed.start()
    bed.supplicant.send_event("<3>CTRL-EVENT-TERMINATING ")
    missing = "bxwifictl: the daemon has no supplicant to talk to\n"
    assert comes_true(lambda: bxwifictl("status") == (1, "state  no-supplicant\n", missing), 30)
    for verb in "scan", "address", "disconnect", "forget X", "connect --security open X":
        status, output, error = bxwifictl(*verb.split())
        assert (status, output) == (1, "") and error.endswith(missing[11:]), error
    os.environ["DBUS_SYSTEM_BUS_ADDRESS"] = "unix:path=/nonexistent"
    assert bxwifictl("scan") == (3, "", "bxwifictl: cannot reach the system bus\n")
