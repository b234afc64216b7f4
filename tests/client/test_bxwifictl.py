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
from radio import SECRET, access_points, key_of


def sent(bed):
    """What the supplicant and the tools are told to change."""
    questions = r"STATUS|LIST_NETWORKS|SCAN.*|sync|fw_printenv.*|ifconfig.*|route.*"
    return [" ".join(entry.split()) for entry in bed.journal.take()
            if not re.fullmatch(rf"{questions}|\w+\(.*\)|.*::.*", entry, re.S)]


STORED = "Stored; takes effect at the next boot.\n"


@pytest.mark.parametrize("arguments, commands, status, output, error", [
    ("status", [], 0, "state             disconnected\nsupplicant state  DISCONNECTED\n", ""),
    ("scan", [], 0, """\
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
    ("address", [], 0, "", ""), ("address --json", [], 0, '{"address":""}\n', ""),
    ("disconnect", ["DISCONNECT", "SAVE_CONFIG"], 0, "", ""),
    ("relink", ["DETACH", "ATTACH", "RECONFIGURE"], 0, "", ""),
    ("forget \033[31mred", [], 6, "",
     "bxwifictl: \\u001b[31mred: no network is stored by that name\n"),
    ("connect " + 16 * "ü", [], 6, "", f"scanning ...\nbxwifictl: {16 * 'ü'}: no such network in "
     "sight; a hidden one needs --hidden\n"),
    ("wired live", [], 0, "address      10.0.0.9\nnetmask      255.0.0.0\n"
     "mac address  stored ethaddr\ndhcp         yes\n", ""),
    ("wired --json", [], 0, '{"address":"stored ipaddr","dhcp":true,"gateway":"stored gatewayip",'
     '"mac_address":"stored ethaddr","netmask":"stored netmask"}\n', ""),
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
        *[verb + " x" for verb in "status scan disconnect address relink monitor keep".split()])],
    ("wired static 10.0.0.2 10.0.0.1", "wired takes"), ("wired dhcp maybe", "wired takes"),
    *[(f"wired static {address} 10.0.0.1 255.0.0.0", f"{address} is not") for address in (
        "10.0.0.256", "10.0.2", "010.0.0.2", "10.0.0.0")],
    *[(f"wired static 10.0.0.2 {gateway} 255.0.0.0", f"{gateway} is not") for gateway in (
        "10.0.0.1x", "10.255.255.255", "11.0.0.1")],
    *[(f"wired static 10.0.0.2 10.0.0.1 {mask}", f"{mask} is not") for mask in (
        "255.0.255.0", "0.0.0.0")],
    ("connect --security wpa2 X", "--security is"), ("connect --timeout 1.5 X", "--timeout takes"),
    *[(f"connect --timeout {time} X", "a time limit is one second") for time in (0, 86401)],
    ("connect ", "the name of the network is empty"), ("connect \ufffd", "the daemon cannot pass"),
    (f"connect {17 * 'ü'}", "the name of a network has at most 32 bytes"),
    ("connect A:b=c --identity \udcfc", "'\ufffd' is not UTF-8 text"),
    ("connect --security open --password-file - X", "an open network takes no"),
    ("connect --security wpa --stored --password-file - X", "--stored and --pass"),
    ("connect --security wpa --identity ada --stored X", "--identity is for"),
    ("connect Grüße", "Grüße needs a passphrase: give --password-file, or --stored\n"),
    ("connect 你", "你 needs a passphrase: give --password-file\n"), ("connect Twin", "several"),
    ("connect --timeout 86400 A:b=c", "A:b=c needs --id"), ("connect --stored 你", "--stored is"),
    ('connect \\o"\n\U000e0041\u2028\\x', "the network is protected in a way"),
    *[(f"connect {name} --password-file - < {secret}", words) for name, secret, words in (
        ("Grüße", "7 chars", "a passphrase has 8"), ("Grüße", 64 * "x", "a passphrase has 8"),
        ("你", 64 * "a", "WPA3 takes"), ("\ufeffWep", "6 char", "a WEP key has 5 or 13"),
        ("Grüße", "", "the first line of - is empty"),
        ("Grüße", "correct h\udcf6rse", "the first line of - is not UTF-8"))],
    ("connect Grüße --password-file /nonexistent", "cannot read /nonexistent"),
    *[(f"connect --uri-file - < {code}", words) for code, words in (
        ("http://S:Lab;;", "this is no code"), ("WIFI:P:S:Lab;;", "the code does not name"),
        ("WIFI:T:WPA9;S:Lab;;", "the code names a kind of protection"),
        ("WIFI:T:WEP;S:Lab;P:ff00000000;;", "the daemon cannot pass on a WEP key"),
        ("WIFI:T:WPA2-EAP;S:Lab;E:TTLS;I:ada;P:lovelace;;", "of the enterprise networks"))],
    *[(f"connect --uri-file - --{option}", "--uri-file takes only") for option in (
        "hidden", "stored", "security=wpa", "identity=ada", "password-file=x")],
])
def test_refusals(bed, radio, arguments, words):
    arguments, _, given = arguments.partition(" < ")
    status, output, error = bxwifictl(*arguments.split(" "), given=given)
    assert (status, output) == (2, "")
    assert re.search("(^|: |gateway )" + re.escape(words), error, re.M), error
    assert sent(bed) == []


def test_help(radio):
    assert bxwifictl()[:2] == (2, "")
    for line, start in ("-h", "Usage: bxwifictl V"), ("-V", "bxwifictl 1."), ("scan -h", "Usage"):
        status, output, error = bxwifictl(*line.split())
        assert (status, error) == (0, "") and output.startswith(start)
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
       "5895 -85 [WPA-EAP-TKIP][RSN-EAP-CCMP-preauth]": "▂ -85 dBm 179 5 GHz WPA/WPA2 Enterprise",
       "900 -86 [WPA2-EAP+PSK-CCMP][ESS]": "-86 dBm 0 WPA2",
       "900 -89 [OWE-TRANS-OPEN][ESS]": "-89 dBm 0 open",
       **{f"900 -91 {flags}": "-91 dBm 0 unsupported" for flags in (
           "[OWE-TRANS][ESS]", "[OSEN-OSEN-CCMP]", "[RSN-SAE-CCMP][MESH]", "[IBSS]",
           "[WPA2-EAP-SHA256-CCMP]", "[WPA2-FT/PSK-CCMP]", "[WPA2-SAE-EXT-KEY-GCMP-256]")}}


def test_scan_in_words(radio):
    radio.table = access_points(*[f"{seen} {name}" for name, seen in enumerate(AIR)])
    shown = on_terminal("scan")[1].splitlines()[1:]
    assert [line.split(None, 1)[1].split() for line in shown] == [
        told.split() for told in AIR.values()]
    words = " ".join(network["security"] for network in json.loads(bxwifictl("scan", "--json")[1]))
    assert words == "open wep wpa wpa wpa3 peap peap wpa open" + 7 * " unsupported"


def test_a_file_that_cannot_be_saved(radio):
    radio.begin({"ssid": "Grüße", "psk": key_of("Grüße")})
    radio.answer("SAVE_CONFIG", "FAIL\n")
    assert "/prefs" in bxwifictl("forget", "Grüße")[2]


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

    def event(text):
        return lambda: radio.send_event(f"<3>CTRL-EVENT-{text}")

    connect = "connect", "Grüße", "--password-file", "-"
    for act, *signals in (
            (lambda: None, "connection state=DISCONNECTED bssid= address= ssid="),
            (event("BSS-REMOVED 3 02:00:00:00:01:01"), "lost bssid=02:00:00:00:01:01"),
            (lambda: bxwifictl("scan"), "status status=scan-started",
             "status status=scan-delivered", "network bssid=02:00:00:00:03:00 signal_dbm=-60 "
             "frequency_mhz=2437 flags=[ESS] ssid=\\u001b[31m\\u202ered"),
            (lambda: bxwifictl(*connect, given=SECRET), "status status=connection-requested",
             "status status=connected", "address address=10.20.2.15", "name ssid=Grüße",
             "connection state=COMPLETED bssid=02:00:00:00:01:00 address=10.20.2.15 ssid=Grüße"),
            (lambda: bxwifictl("forget", "Grüße"), "status status=network-removed"),
            (lambda: bxwifictl("status"), "connection state=INACTIVE bssid= address= ssid="),
            (event("SSID-TEMP-DISABLED reason=WRONG_KEY"), "status status=wrong-key"),
            (event("SSID-TEMP-DISABLED "), "status status=temporarily-disabled"),
            (lambda: bxwifictl("disconnect"), "status status=not-connected"),
            (lambda: bxwifictl("wired"), "dhcp dhcp=true", "wired address=stored ipaddr "
             "gateway=stored gatewayip netmask=stored netmask mac_address=stored ethaddr"),
            (event("TERMINATING "), "status status=supplicant-exiting"),
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
    bed.daemon.stop()
    assert bxwifictl("monitor") == (3, "", "bxwifictl: the daemon bxwifid is not running\n")
    bed.start()
    radio.send_event("<3>CTRL-EVENT-TERMINATING ")
    missing = "bxwifictl: the daemon has no supplicant to talk to\n"
    assert comes_true(lambda: bxwifictl("status") == (1, "state  no-supplicant\n", missing), 30)
    for verb in "scan", "address", "disconnect", "forget X", "connect --security open X":
        status, output, error = bxwifictl(*verb.split())
        assert (status, output) == (1, "") and error.endswith(missing[11:]), error
    Path("/run/bus-policy.conf").write_text(
        '<busconfig><policy context="mandatory"><deny send_path="/"/></policy></busconfig>')
    bed.bus.server.send_signal(signal.SIGHUP)
    assert comes_true(lambda: bxwifictl("status") == (
        4, "", "bxwifictl: this user may not call the daemon bxwifid\n"), 30)
    os.environ["DBUS_SYSTEM_BUS_ADDRESS"] = "unix:path=/nonexistent"
    assert bxwifictl("scan") == (3, "", "bxwifictl: cannot reach the system bus\n")
