# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""The link to the supplicant: its events, its replies, its end and its return."""

import os
import time
from pathlib import Path

import pytest
from harness.bed import request_line
from harness.bus import signal
from harness.records import record
from harness.supplicant import DIRECTORY, FakeSupplicant
from harness.waiting import comes_true


REPLIED = request_line("STATUS", "true")
FAILED = request_line("STATUS", "false")
MESSAGE = "void WifiControl::processMessage(const QString&) "
EVENT = "<3>CTRL-EVENT-"
REMOVED = EVENT + "BSS-REMOVED 7 02:00:00:00:00:01"
CONNECTED = EVENT + "CONNECTED - Connection to x completed"


def dhcp_client(interface):
    return f"udhcpc|-i{interface}|-n|-q|-p/etc/udhcpc.pid"


@pytest.mark.parametrize("messages, happens, last_line", [
    ([REMOVED + " more", EVENT + "SSID-TEMP-DISABLED id=0 auth_failures=1",
      EVENT + "SSID-TEMP-DISABLED id=0 reason=WRONG_KEY"],
     ["bssRemoved(02:00:00:00:00:01)", "statusMessage(6)", "statusMessage(7)"], REPLIED),
    (["CTRL-EVENT-DISCONNECTED x", "<3>Associated x", "<3>Trying to associate with x",
      EVENT + "BSS-ADDED 7 x", EVENT + "BSS-REMOVED 7"], [], REPLIED),
    *(([other], [], MESSAGE + f'other: "{other}"') for other in (
        EVENT + "SCAN-RESULTS", "<3>ctrl-event-connected ")),
    (["<3>CTRL-REQ-OTP-0:CTRL-EVENT-CONNECTED "], [],
     MESSAGE + 'ctrl_req: "<3>CTRL-REQ-OTP-0:CTRL-EVENT-CONNECTED "'),
    (["x" * 254 + "\0y"], [], MESSAGE + f'other: "{"x" * 254}"'),
    (["x" * 233 + "CTRL-EVENT-TERMINATING "], [],
     MESSAGE + f'other: "{"x" * 233}CTRL-EVENT-TERMINATING"'),
    ([REMOVED, EVENT + "TERMINATING ", REMOVED, REMOVED],
     ["bssRemoved(02:00:00:00:00:01)", "statusMessage(4)", "DETACH", "ssidResult()", "ipResult()"],
     FAILED),
], ids=["signals", "no signals", "no blank", "small letters", "request first", "zero byte",
        "cut at 255 bytes", "supplicant ends"])
def test_events(bed, messages, happens, last_line):
    bed.start()
    with bed.supplicant.silence:  # while the daemon waits for a reply, its events pile up
        bed.bus.send("statusRequest")
        bed.check("STATUS")
        for message in messages:
            bed.supplicant.send_event(message)
    bed.check("statusMessage(1)", *happens)
    assert comes_true(lambda: bed.daemon.log()[-1] == last_line)
    # Nothing comes after that, and the daemon is well.
    bed.bus.call("enableRequest")
    bed.check()


def test_events_before_calls(bed):
    bed.start()
    # What is pending when the daemon looks is handled together, also when a call came meanwhile.
    with bed.supplicant.silence:
        for event in "SCAN-RESULTS ", "SSID-TEMP-DISABLED x", "SSID-TEMP-DISABLED WRONG_KEY":
            bed.supplicant.send_event(EVENT + event)
        bed.check("SCAN_RESULTS")
        bed.bus.send("scanRequest")
    bed.check("statusMessage(3)", "statusMessage(6)", "statusMessage(7)", "statusMessage(2)",
              "SCAN")


def test_connected(bed):
    bed.supplicant.answer("STATUS", "ssid=Home\nip_address=10.0.0.2\n")
    bed.start()
    begun = time.monotonic()
    bed.supplicant.send_event(CONNECTED)
    assert comes_true(lambda: dhcp_client("wlan0") in bed.journal.entries())
    assert time.monotonic() >= begun + 0.6
    bed.check("statusMessage(0)", "STATUS", "ssidResult(Home)", "STATUS", "ipResult(10.0.0.2)",
              dhcp_client("wlan0"), "STATUS", "ipResult(10.0.0.2)")
    assert "void WifiDaemon::onConnected() about to refresh IP" in bed.daemon.log()


HEADER = "bssid / frequency / signal level / flags / ssid\n"
ROW = "b\t1\t-1\t\t"


@pytest.mark.parametrize("reply, rows", [
    ("FAIL\n", []),
    (ROW + "x\na\t2\t-2\t[ESS]\t y z \n" + ROW + "\n", ["a\t2\t-2\t[ESS]\t y z ", ROW]),
    (HEADER + "a\t1\t-1\t[ESS]\na\t1\t-1\t[ESS]\tx\ty\n\n" + ROW + "cu", [ROW + "cu"]),
    # 2047 bytes get through: first the last SSID is cut, then its line.
    (HEADER + ROW + "x" * 1958 + "\n" + ROW + "y" * 2500, [ROW + "x" * 1958, ROW + "y" * 24]),
    (HEADER + ROW + "x" * 1987 + "\n" + ROW + "z", [ROW + "x" * 1987]),
], ids=["refused", "first line dropped", "other shapes", "cut SSID", "cut line"])
def test_scan_results(bed, reply, rows):
    bed.start()
    bed.supplicant.answer("SCAN_RESULTS", reply)
    bed.supplicant.send_event(EVENT + "SCAN-RESULTS ")
    networks = [record(*row.split("\t"), None, None, False) for row in rows]
    bed.check("SCAN_RESULTS", *[signal("scanResult", network) for network in networks],
              "statusMessage(3)")


UNASKED = "void ctrlRequestDebug(char*, size_t) "


@pytest.mark.parametrize("datagrams, ssid, lines", [
    (["ssid=Ho\0me\n"], "Ho", [REPLIED]),
    (["ssid=Grün\n"], "Grün", [REPLIED]),
    (["Fail\nssid=x\n"], "x", [FAILED]),
    (["FAIL\n"], "", [REPLIED]),
    (["<3>CTRL-EVENT-X ", "ssid=Home\n"], "Home", [UNASKED + '"<3>CTRL-EVENT-X "', REPLIED]),
    (["ssid=Home\n", "ssid=Old\n"], "Home", [UNASKED + r'"ssid=Old\n"', REPLIED]),
])
def test_replies(bed, datagrams, ssid, lines):
    bed.start()
    bed.supplicant.answer("STATUS", *datagrams)
    for _ in range(2):  # what is left over must not answer the next command
        logged = len(bed.daemon.log())
        bed.bus.call("ssidRequest")
        bed.check("STATUS", f"ssidResult({ssid})")
    assert comes_true(lambda: bed.daemon.log()[logged:] == lines)


def test_refusing_sockets(bed):
    bed.supplicant.kill()  # another takes its place
    supplicants = {name: FakeSupplicant(bed.journal, name)
                   for name in ("wlan0", "wlan1", "a0", "z0", "p2p-dev-wlan0")}
    names = os.listdir(DIRECTORY)  # in its own order
    for name in names[:-1]:
        supplicants[name].answer("ATTACH", "FAIL\n")
    bed.start()
    trying = 'bool WifiControl::setup() trying ctrl_iface: "{}" ...'.format
    assert [line for line in bed.daemon.log() if "trying" in line] == [*map(trying, names)]
    # Two connections are left, and the one that works names the interface.
    assert len(list(Path("/tmp").glob("wpa_ctrl_*"))) == 2
    for supplicant in supplicants.values():
        supplicant.send_event(CONNECTED)
    assert comes_true(lambda: dhcp_client(names[-1]) in bed.journal.entries())
    for supplicant in supplicants.values():
        supplicant.kill()


def test_death(bed):
    bed.start()
    bed.supplicant.kill()
    bed.bus.call("statusRequest")
    bed.check("statusMessage(1)")
    assert bed.daemon.logs(request_line("STATUS", "command failed"))
    assert bed.daemon.logs(FAILED)

    # It comes back, and nothing happens until a client asks; its call is answered first.
    bed.supplicant.start()
    for happens in ["ATTACH", "RECONFIGURE"], ["DETACH", "ATTACH", "RECONFIGURE"]:
        begun = time.monotonic()
        bed.bus.call("wpaConnectRequest")
        assert bed.journal.entries() == []
        bed.check(*happens)
        assert time.monotonic() >= begun + 0.1
    last = " to establish connection to wpa_supplicant"
    assert bed.daemon.logs("void WifiDaemon::wpaConnectRequest() about" + last)
    assert bed.daemon.logs("void WifiDaemon::onWpaConnectRequest() trying" + last)


def test_tools_inherit_nothing(bed):
    state = bed.folder / "state"
    bed.tools.script("sync",
                     f"{{ readlink /proc/$$/fd/*; grep SigBlk /proc/self/status; }} >{state}")
    bed.start()
    bed.bus.call("disableRequest")
    *inherited, signals = state.read_text().splitlines()
    assert signals == "SigBlk:\t0000000000000000"
    # What both the daemon and its tool have open came from where the daemon was started.
    shared = open_files(bed.daemon.process.pid) & set(inherited)
    assert shared <= open_files("self")


def open_files(process):
    """What it has open, as "pipe:[17]" and the like."""
    links = list(Path(f"/proc/{process}/fd").iterdir())
    assert len(links) > 3
    return {os.readlink(link) for link in links if link.is_symlink()}
