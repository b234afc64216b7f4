# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""The program against the daemon: what it asks for, what it prints and the status it ends with."""

import json
import os
import re
import signal
import subprocess
from pathlib import Path

import pytest
from harness.bed import comes_true

from command import BXWIFICTL, bxwifictl, on_terminal
from radio import access_points, key_of

GRUESSE = {"ssid": "Grüße", "psk": key_of("Grüße")}


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
   NAME                           SIGNAL   CHANNEL  BAND     SECURITY
   Grüße                          -50 dBm  36       5 GHz    WPA2
   \\u001b[31m\\u202ered            -60 dBm  6        2.4 GHz  open
   你                             -81 dBm  6        2.4 GHz  WPA3
   A:b=c                          -82 dBm  6        2.4 GHz  WPA2 Enterprise
   \\ufeffWep                      -83 dBm  6        2.4 GHz  WEP
   Twin                           -84 dBm  6        2.4 GHz  open
   \\o"\\u000a\\udb40\\udc41\\u2028\\x  -86 dBm  6        2.4 GHz  unsupported
   ssid=a=b                       -87 dBm  6        2.4 GHz  open
""", ""),
    ("address", [], 0, "", ""),
    ("disconnect", ["DISCONNECT", "SAVE_CONFIG"], 0, "", ""),
    ("relink", ["DETACH", "ATTACH", "RECONFIGURE"], 0, "", ""),
    ("forget \033[31mred", [], 6, "",
     "bxwifictl: \\u001b[31mred: no network is stored by that name\n"),
    ("connect " + 16 * "ü", ["SCAN"], 6, "", f"scanning ...\nbxwifictl: {16 * 'ü'}: no such "
     "network in sight; a hidden one needs --hidden\n"),
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
    ("wired static 10.0.0.1 10.0.0.0 255.255.255.254", [
        "fw_setenv|ipaddr|10.0.0.1", "fw_setenv|gatewayip|10.0.0.0",
        "fw_setenv|netmask|255.255.255.254"], 0, "", STORED),
    ("wired dhcp on", ["fw_setenv|dynamicip|1"], 0, "", STORED),
    ("wired dhcp off", ["fw_setenv|dynamicip"], 0, "", STORED),
])
def test_verbs(bed, radio, arguments, commands, status, output, error):
    assert bxwifictl(*arguments.split(" ")) == (status, output, error)
    assert sent(bed) == commands


# Each is refused before the supplicant is told to change anything; what is said begins like that.
# What stands behind "<" is on standard input.
@pytest.mark.parametrize("arguments, words", [
    ("nonsense", "no verb 'nonsense'"), ("scan --hidden", "scan takes no option --hidden"),
    *[(line, "Usage: bxwifictl " + line.split()[0]) for line in (
        "connect", "connect --uri-file - Grüße", "forget", "forget A B", "wired static a b c d",
        *[f"{verb} x" for verb in ("status", "scan", "disconnect", "address", "relink", "monitor",
                                   "keep")])],
    ("wired static 10.0.0.2 10.0.0.1", "wired takes"), ("wired dhcp maybe", "wired takes"),
    *[(f"wired static {values}", words) for values, words in (
        ("10.0.0.256 10.0.0.1 255.0.0.0", "10.0.0.256 is not a dotted"),
        ("10.0.2 10.0.0.1 255.0.0.0", "10.0.2 is not a dotted"),
        ("010.0.0.2 10.0.0.1 255.0.0.0", "010.0.0.2 is not a dotted"),
        ("10.0.0.2 10.0.0.1x 255.0.0.0", "10.0.0.1x is not a dotted"),
        ("10.0.0.2 10.0.0.1 255.0.255.0", "255.0.255.0 is not a network mask"),
        ("10.0.0.2 10.0.0.1 0.0.0.0", "0.0.0.0 is not a network mask"),
        ("10.0.0.0 10.0.0.1 255.0.0.0", "10.0.0.0 is not the address of a host"),
        ("10.0.0.2 10.255.255.255 255.0.0.0", "gateway 10.255.255.255 is not a host"),
        ("10.0.0.2 11.0.0.1 255.0.0.0", "gateway 11.0.0.1 is not a host in the network"))],
    ("connect --security wpa2 X", "--security is"),
    *[(f"connect --timeout {time} X", "--timeout takes whole s") for time in (1.5, 10**10)],
    *[(f"connect --timeout {time} X", "a time limit is one second") for time in (0, -1, 86401)],
    ("connect ", "the name of the network is empty"),
    (f"connect {'ü' * 17}", "the name of a network has at most 32 bytes"),
    ("connect \ufffd", "the daemon cannot pass on a name that is not UTF-8 text"),
    ("connect A:b=c --identity \udcfc", "'\ufffd' is not UTF-8 text"),
    ("connect --security open --password-file - X < right one", "an open network takes no"),
    ("connect --security wpa --stored --password-file - X < right one", "--stored and --pass"),
    ("connect --security wpa --identity ada --stored X", "--identity is for"),
    *[(f"connect --stored {name}", "--stored is for WPA, WPA2 and WEP")
      for name in ("\033[31m\u202ered", "你", "A:b=c --identity ada")],
    ("connect Grüße", "Grüße needs a passphrase: give --password-file, or --stored\n"),
    ("connect 你", "你 needs a passphrase: give --password-file\n"),
    ("connect --timeout 86400 A:b=c", "A:b=c needs --identity"),
    ("connect Twin", "several kinds of protection"),
    ('connect \\o"\n\U000e0041\u2028\\x', "the network is protected in a way"),
    ("connect Grüße --password-file - < 7 chars", "Grüße: a passphrase has 8 to 63 characters"),
    (f"connect Grüße --password-file - < {64 * 'x'}", "a passphrase has 8 to 63 characters"),
    (f"connect 你 --password-file - < {64 * 'a'}", "WPA3 takes a passphrase"),
    ("connect \ufeffWep --password-file - < 6 char", "a WEP key has 5 or 13"),
    ("connect Grüße --password-file - < ", "the first line of - is empty"),
    ("connect Grüße --password-file - < correct h\udcf6rse", "the first line of - is not UTF-8"),
    ("connect Grüße --password-file /nonexistent", "cannot read /nonexistent"),
    ("connect --uri-file - < ", "the first line of - is empty"),
    *[(f"connect --uri-file - < {code}", words) for code, words in (
        ("http://S:Lab;;", "this is no code of a wireless network"),
        ("WIFI:T:nopass;P:S:Lab;;", "the code does not name a network"),
        ("WIFI:T:WPA;S:Lab;P:abc\\", "the code is cut off"),
        ("WIFI:T:WPA9;S:Lab;;", "the code names a kind of protection"),
        ("WIFI:T:WEP;S:Lab;P:ff00000000;;", "the daemon cannot pass on a WEP key that is not text"),
        ("WIFI:T:WPA2-EAP;S:Lab;E:TTLS;I:ada;P:lovelace;;", "of the enterprise networks"))],
    ("connect --uri-file - --hidden", "--uri-file takes only"),
])
def test_refusals(bed, radio, arguments, words):
    arguments, _, given = arguments.partition(" < ")
    status, output, error = bxwifictl(*arguments.split(" "), given=given)
    assert (status, output) == (2, "")
    assert re.search("(^|: )" + re.escape(words), error, re.M), error
    assert [command for command in sent(bed) if command != "SCAN"] == []


def test_help(radio):
    assert bxwifictl()[:2] == (2, "")
    for arguments, beginning in (["--help"], "Usage: bxwifictl VERB"), (["-V"], "bxwifictl 1."), (
            ["connect", "X", "-h"], "Usage: bxwifictl connect"):
        status, output, error = bxwifictl(*arguments)
        assert (status, error) == (0, "") and output.startswith(beginning)
    for output in "/dev/full", "&-":  # nowhere to write to
        assert subprocess.run(f"'{BXWIFICTL}' status >{output}", shell=True).returncode == 1


def test_language(radio, monkeypatch):
    """People are told in theirs; what programs read stays."""
    monkeypatch.setenv("LC_ALL", "de_DE.UTF-8")
    monkeypatch.setenv("XDG_DATA_DIRS", str(Path(BXWIFICTL).parents[1] / "share"))
    assert bxwifictl("connect", "Grüße", "--password-file", "-", given="wrong horse") == (
        5, "", "Suche ...\nAnfrage beim Dienst ...\nVerbindungsaufbau ...\n"
        "bxwifictl: Grüße: falsches WLAN-Passwort oder falscher Schlüssel\n")
    assert '"security":"open"' in bxwifictl("scan", "--json")[1]
    monkeypatch.setenv("LANGUAGE", "fr:en_GB:de")
    assert bxwifictl("nonsense")[2].startswith("bxwifictl: no verb")
    table = bxwifictl("scan")  # and that without a locale, which tells how wide a character is
    subprocess.run(["mount", "-t", "tmpfs", "none", "/usr/lib/locale"], check=True)
    assert bxwifictl("scan") == table
    subprocess.run(["umount", "/usr/lib/locale"], check=True)


# By what the supplicant says of an access point: what is told of it.
AIR = {"2412 -55 [ESS]": "▂▄▆█ -55 dBm 1 2.4 GHz open",
       "2484 -56 [WEP][ESS]": "▂▄▆ -56 dBm 14 2.4 GHz WEP",
       "5745 -65 [WPA-PSK-TKIP][WPA2-PSK-CCMP][ESS]": "▂▄▆ -65 dBm 149 5 GHz WPA/WPA2",
       "5955 -66 [WPA2-PSK+SAE-CCMP][SAE-H2E][ESS]": "▂▄ -66 dBm 1 6 GHz WPA2/WPA3",
       "5160 -75 [WPA2-SAE-CCMP][ESS]": "▂▄ -75 dBm 32 5 GHz WPA3",
       "7115 -76 [WPA2-EAP-CCMP][ESS]": "▂ -76 dBm 233 6 GHz WPA2 Enterprise",
       "5895 -85 [WPA-EAP-TKIP][RSN-EAP+EAP-SHA256-CCMP-preauth]":
           "▂ -85 dBm 179 5 GHz WPA/WPA2 Enterprise",
       "900 -86 [WPA2-EAP+PSK-CCMP][ESS]": "-86 dBm 0 WPA2",
       "900 -87 [WPA2-PSK+FT/PSK-CCMP+TKIP][ESS]": "-87 dBm 0 WPA2",
       "900 -88 [WPA-PSK-TKIP]": "-88 dBm 0 WPA",
       "900 -89 [OWE-TRANS-OPEN][ESS]": "-89 dBm 0 open",
       "900 -90 [WPS][P2P][ESS]": "-90 dBm 0 open",
       **{f"900 -91 {flags}": "-91 dBm 0 unsupported" for flags in (
           "[OWE-TRANS][ESS]", "[OSEN-OSEN-CCMP]", "[RSN-SAE-CCMP][MESH]", "[IBSS]",
           "[WPA2-EAP-SHA256-CCMP][ESS]", "[WPA2-EAP-SUITE-B-192-GCMP-256]",
           "[WPA2-PSK-SHA256-CCMP][ESS]", "[WPA2-FT/PSK-CCMP][ESS]",
           "[WPA2-SAE-EXT-KEY-GCMP-256][ESS]")}}


def test_scan_in_words(radio):
    radio.table = access_points(*[f"{seen} {name}" for name, seen in enumerate(AIR)])
    shown = on_terminal("scan")[1].splitlines()[1:]
    assert [line.split(None, 1)[1].split() for line in shown] == [
        told.split() for told in AIR.values()]
    words = " ".join(network["security"] for network in json.loads(bxwifictl("scan", "--json")[1]))
    assert words == ("open wep wpa wpa wpa3 peap peap wpa wpa wpa open open" + 9 * " unsupported")


def test_a_file_that_cannot_be_saved(radio):
    radio.begin(GRUESSE)
    radio.answer("SAVE_CONFIG", "FAIL\n")
    status, output, error = bxwifictl("forget", "Grüße")
    assert (status, output) == (1, "") and "/prefs" in error


def test_monitor(bed, radio):
    """In words and as JSON."""
    forms = {bed.folder / "words": [], bed.folder / "objects": ["--json"]}
    monitors = [subprocess.Popen([BXWIFICTL, "monitor", *form], stdout=open(file, "w"))
                for file, form in forms.items()]

    def told(signal):
        words, objects = (file.read_text().replace('"', "").splitlines() for file in forms)
        fields = re.sub(r" (?=\w+=)", ",", f"signal={signal}").replace("=", ":").split(",")
        return signal in [line[24:] for line in words] and any(
            set(fields) <= set(line[1:-1].split(",")) for line in objects)

    def tell_of_a_loss():  # as soon as they listen
        radio.send_event("<3>CTRL-EVENT-BSS-REMOVED 3 02:00:00:00:01:01")
        return told("lost bssid=02:00:00:00:01:01")

    def vanish():
        radio.disconnect()
        radio.state, radio.has_addresses = "INACTIVE", False

    assert comes_true(tell_of_a_loss, 30)
    joined = "connection state=COMPLETED bssid=02:00:00:00:01:00 address="
    for act, *signals in (
            (lambda: bxwifictl("scan"), "status status=scan-started",
             "network bssid=02:00:00:00:03:00 signal_dbm=-60 frequency_mhz=2437 flags=[ESS] "
             "ssid=\\u001b[31m\\u202ered"),
            (lambda: radio.begin(GRUESSE), "status status=connected", "address address=10.20.2.15",
             "name ssid=Grüße", joined + "10.20.2.15 ssid=Grüße"),
            (vanish, "connection state=INACTIVE bssid= address= ssid="),
            (radio.look, joined + " ssid=Grüße"),
            (lambda: bxwifictl("wired"), "dhcp dhcp=true", "wired address=stored ipaddr "
             "gateway=stored gatewayip netmask=stored netmask mac_address=stored ethaddr"),
            (bed.daemon.stop, "daemon available=false"), (bed.start, "daemon available=true")):
        act()
        assert comes_true(lambda: all(map(told, signals)), 30), signals
    for monitor in monitors:
        monitor.kill()
        monitor.wait()
    # Of what they ask for themselves they tell what is new.
    lines = re.findall(" (connection .*)", next(iter(forms)).read_text())
    assert all(line != following for line, following in zip(lines, lines[1:]))


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
    radio.answer("LIST_NETWORKS")  # no answer; nobody but this asks for it
    with subprocess.Popen([BXWIFICTL, "forget", "X"], stderr=subprocess.PIPE, text=True) as run:
        assert comes_true(lambda: "LIST_NETWORKS" in bed.journal.entries(), 30)
        bed.daemon.process.kill()
        bed.daemon.process.wait()
        bed.daemon.process = None
        assert run.stderr.read() == "bxwifictl: X: the daemon bxwifid went away\n"
    assert run.returncode == 3
    radio.answers.clear()
    for verb in "scan", "monitor", "keep --once":
        assert bxwifictl(*verb.split()) == (
            3, "", "bxwifictl: the daemon bxwifid is not running\n")
    bed.start()
    radio.send_event("<3>CTRL-EVENT-TERMINATING ")
    missing = "bxwifictl: the daemon has no supplicant to talk to\n"
    assert comes_true(lambda: bxwifictl("status") == (1, "state  no-supplicant\n", missing), 30)
    for verb in "scan", "address", "disconnect", "forget X", "connect --security open X":
        status, output, error = bxwifictl(*verb.split())
        assert (status, output) == (1, "") and error.endswith(missing[11:]), error
    os.environ["DBUS_SYSTEM_BUS_ADDRESS"] = "unix:path=/nonexistent"
    assert bxwifictl("scan") == (3, "", "bxwifictl: cannot reach the system bus\n")
