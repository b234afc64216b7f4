# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""The program against the daemon: what it prints and the status it ends with."""

import json
import os
import subprocess
from functools import partial
from pathlib import Path

import pytest
from harness.bed import Bed
from harness.waiting import comes_true

from radio import Radio

BXWIFICTL = os.environ["BXWIFICTL"]
TABLE = [r"02:00:00:00:01:00	2412	-70	[WPA2-PSK-CCMP][ESS]	Gr\xc3\xbc\xc3\x9fe",
         r"02:00:00:00:01:01	5180	-50	[WPA2-PSK-CCMP][ESS]	Gr\xc3\xbc\xc3\x9fe",
         r"02:00:00:00:02:00	2437	-60	[ESS]	\e[31m\xe2\x80\xaered",
         r"02:00:00:00:03:00	2437	-80	[WPA2-SAE-CCMP][ESS]	"]
KEY = "b48563220c09bcc3c588249ec9f6c88a554ec7fd639ae9b89ee93368f0176898"


@pytest.fixture(scope="module")
def bed():
    with Bed(partial(Radio, table=TABLE, key=KEY)) as bed:
        bed.tools.script("fw_printenv", 'echo "$1=stored $1"')
        Path("/tmp/short").write_text("short\n")
        os.environ["XDG_CACHE_HOME"] = str(bed.folder)  # for completion
        bed.start()
        yield bed


def bxwifictl(*arguments, given=""):
    """Its status and what it prints to both outputs, with this on standard input."""
    run = subprocess.run([BXWIFICTL, *arguments], input=given, capture_output=True, text=True,
                         timeout=60)
    return run.returncode, run.stdout, run.stderr


@pytest.mark.parametrize("arguments, status, output, error", [
    ("status", 0, "state             disconnected\nsupplicant state  DISCONNECTED\n", ""),
    ("scan", 0, """\
   NAME                 SIGNAL   CHANNEL  BAND     SECURITY
   Grüße                -50 dBm  36       5 GHz    WPA2
   \\u001b[31m\\u202ered  -60 dBm  6        2.4 GHz  open
""", ""),
    ("scan --all", 0, """\
   NAME                 BSSID              SIGNAL   CHANNEL  BAND     SECURITY
   Grüße                02:00:00:00:01:01  -50 dBm  36       5 GHz    WPA2
   \\u001b[31m\\u202ered  02:00:00:00:02:00  -60 dBm  6        2.4 GHz  open
   Grüße                02:00:00:00:01:00  -70 dBm  1        2.4 GHz  WPA2
   (hidden)             02:00:00:00:03:00  -80 dBm  6        2.4 GHz  WPA3
""", ""),
    ("scan --hidden", 2, "", "bxwifictl: scan takes no option --hidden\n"),
    ("wired --json", 0, '{"address":"stored ipaddr","dhcp":true,"gateway":"stored gatewayip",'
     '"mac_address":"stored ethaddr","netmask":"stored netmask"}\n', ""),
    ("wired static 10.0.0.2 10.0.0.1 255.0.0.0", 0, "", "Stored; takes effect at the next boot.\n"),
    ("wired static 10.0.0.2 11.0.0.1 255.0.0.0", 2, "",
     "bxwifictl: gateway 11.0.0.1 is not a host in the network of 10.0.0.2\n"),
    ("forget \033[31mred", 6, "", "bxwifictl: \\u001b[31mred: no network is stored by that name\n"),
    ("connect Nowhere", 6, "",
     "scanning ...\nbxwifictl: Nowhere: no such network in sight; a hidden one needs --hidden\n"),
    ("connect --security wpa Nowhere", 2, "",
     "bxwifictl: Nowhere needs a passphrase: give --password-file, or --stored\n"),
    ("connect --security wpa --password-file /tmp/short Nowhere", 2, "",
     "bxwifictl: Nowhere: a passphrase has 8 to 63 characters, a key 64 hexadecimal digits\n"),
    ("connect --security open --timeout 3 Nowhere", 7, "",
     "asking the daemon ...\nassociating ...\nbxwifictl: Nowhere: not joined within 3 s\n"),
])
def test_verbs(bed, arguments, status, output, error):
    assert bxwifictl(*arguments.split(" ")) == (status, output, error)


def test_joins_with_what_the_network_announces(bed):
    join = "connect", "Grüße", "--password-file", "-"
    progress = "scanning ...\nasking the daemon ...\nassociating ...\n"
    assert bxwifictl(*join, given="wrong horse battery\n") == (
        5, "", progress + "bxwifictl: Grüße: wrong passphrase or key\n")
    assert bxwifictl(*join, given="correct horse battery\n") == (
        0, "ssid     Grüße\naddress  10.20.2.15\n", progress + "waiting for an address ...\n")
    # Those that were stored with the wrong key went first.
    assert bed.supplicant.stored == ["0", "1"]
    assert "horse" not in "".join(bed.journal.entries())

    assert "*  Grüße " in bxwifictl("scan")[1]
    networks = bxwifictl("scan", "--json")[1]
    assert '"ssid":"\\u001b[31m\\u202ered"' in networks
    assert json.loads(networks)[0] == {
        "ssid": "Grüße", "bssid": "02:00:00:00:01:01", "signal_dbm": -50, "frequency_mhz": 5180,
        "channel": 36, "band": "5 GHz", "security": "wpa", "joined": True}
    assert bxwifictl("forget", "Grüße")[0] == 0
    assert bed.supplicant.stored == []
    assert bxwifictl("forget", "Grüße")[0] == 6


def test_monitor_decodes_signals(bed):
    heard = bed.folder / "heard"
    with open(heard, "w") as output:
        monitor = subprocess.Popen([BXWIFICTL, "monitor"], stdout=output)

    def hears(line):
        return comes_true(lambda: line in heard.read_text(), 30)

    def hears_of_the_loss():  # as soon as it listens
        bed.supplicant.send_event("<3>CTRL-EVENT-BSS-REMOVED 3 02:00:00:00:01:01")
        return " lost bssid=02:00:00:00:01:01\n" in heard.read_text()

    assert comes_true(hears_of_the_loss, 30)
    bxwifictl("scan")
    assert hears(" status status=scan-started\n")
    assert hears(" network bssid=02:00:00:00:02:00 signal_dbm=-60 frequency_mhz=2437 "
                 "flags=[ESS] ssid=\\u001b[31m\\u202ered\n")
    assert bed.daemon.stop() == 0
    assert hears(" daemon available=false\n")
    bed.start()
    assert hears(" daemon available=true\n")
    assert bed.daemon.stop() == 0
    monitor.kill()
    monitor.wait()


def test_missing_bus_daemon_and_supplicant(bed):
    scan = partial(bxwifictl, "scan")
    assert scan() == (3, "", "bxwifictl: the daemon bxwifid is not running\n")
    bed.journal.take()
    bed.start()
    bed.supplicant.send_event("<3>CTRL-EVENT-TERMINATING ")
    assert comes_true(lambda: bxwifictl("status") == (0, "state  no-supplicant\n", ""), 30)
    assert scan() == (1, "", "bxwifictl: the daemon has no supplicant to talk to\n")
    os.environ["DBUS_SYSTEM_BUS_ADDRESS"] = "unix:path=/nonexistent"
    assert scan() == (3, "", "bxwifictl: cannot reach the system bus\n")
