# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""The link to the supplicant: its events, its replies, its end and its return."""

import os
import re
import time
from pathlib import Path

import pytest
from harness.bed import LINKED, comes_true
from harness.bus import record, request_line, signal
from harness.supplicant import DIRECTORY, FakeSupplicant

MESSAGE = "void WifiControl::processMessage(const QString&) "
EVENT = "<3>CTRL-EVENT-"
REMOVED = EVENT + "BSS-REMOVED 7 02:00:00:00:00:01"
CONNECTED = EVENT + "CONNECTED - Connection to x completed"
NO_LINK = request_line("STATUS", "false")


def dhcp_client(interface):
    return f"udhcpc|-i{interface}|-n|-q|-p/etc/udhcpc.pid"


@pytest.mark.parametrize("messages, happens", [
    ([REMOVED + " more", EVENT + "SSID-TEMP-DISABLED id=0 auth_failures=1",
      EVENT + "SSID-TEMP-DISABLED id=0 reason=WRONG_KEY"],
     ["bssRemoved(02:00:00:00:00:01)", "statusMessage(6)", "statusMessage(7)"]),
    (["CTRL-EVENT-DISCONNECTED x", "<3>Associated x", "<3>Trying to associate with x",
      EVENT + "BSS-ADDED 7 x", EVENT + "BSS-REMOVED 7"], []),
    *(([other], [MESSAGE + f'other: "{other}"']) for other in (
        EVENT + "SCAN-RESULTS", "<3>ctrl-event-connected ")),
    (["<3>CTRL-REQ-OTP-0:CTRL-EVENT-CONNECTED "],
     [MESSAGE + 'ctrl_req: "<3>CTRL-REQ-OTP-0:CTRL-EVENT-CONNECTED "']),
    (["x" * 254 + "\0y"], [MESSAGE + f'other: "{"x" * 254}"']),
    (["x" * 233 + "CTRL-EVENT-TERMINATING "],
     [MESSAGE + f'other: "{"x" * 233}CTRL-EVENT-TERMINATING"']),
    ([REMOVED, EVENT + "TERMINATING ", REMOVED, REMOVED],
     ["bssRemoved(02:00:00:00:00:01)", "statusMessage(4)",
      "void WifiDaemon::onTerminating() removing connection to wpa_supplicant", "DETACH",
      "ssidResult()", "ipResult()", NO_LINK, NO_LINK]),
], ids=["signals", "no signals", "no blank", "small letters", "request first", "zero byte",
        "cut at 255 bytes", "supplicant ends"])
def test_events(bed, messages, happens):
    """What is pending when the daemon looks is handled together, also when a call came before."""
    bed.start()
    with bed.supplicant.silence:
        bed.supplicant.send_event(EVENT + "SCAN-RESULTS ")
        bed.check("SCAN_RESULTS")
        bed.bus.send("setDynamic", True)
        for message in messages:
            bed.supplicant.send_event(message)
    bed.check("statusMessage(3)", *happens, "fw_setenv|dynamicip|1")


def test_connected(bed):
    bed.supplicant.answer("STATUS", "ssid=Home\nip_address=10.0.0.2\n")
    bed.start()
    begun = time.monotonic()
    bed.supplicant.send_event(CONNECTED)
    assert comes_true(lambda: dhcp_client("wlan0") in bed.journal.entries())
    assert 0.6 <= time.monotonic() - begun < 2.6
    bed.check("statusMessage(0)", "void WifiDaemon::onConnected() about to refresh IP", "STATUS",
              "ssidResult(Home)", "STATUS", "ipResult(10.0.0.2)", dhcp_client("wlan0"), "STATUS",
              "ipResult(10.0.0.2)")


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


HOME = ["STATUS", "ssidResult(Home)"]


@pytest.mark.parametrize("datagrams, happens", [
    (["ssid=Ho\0me\n"], 2 * ["STATUS", "ssidResult(Ho)"]),
    (["ssid=Grün\n"], 2 * ["STATUS", "ssidResult(Grün)"]),
    (["Fail\nssid=x\n"], 2 * ["STATUS", "ssidResult(x)", NO_LINK]),
    (["FAIL\n"], 2 * ["STATUS", "ssidResult()"]),
    (["\0" * 4000], 2 * ["STATUS", "ssidResult()", NO_LINK]),
    (["ssid=\udcff\n" * 400], 2 * ["STATUS", "ssidResult(\ufffd)"]),
    (["<3>CTRL-EVENT-X ", "ssid=Home\n"], 2 * [*HOME, UNASKED + '"<3>CTRL-EVENT-X "']),
    (["ssid=Home\n", "ssid=Old\n"], [*HOME, UNASKED + r'"ssid=Old\n"', *HOME]),
])
def test_replies(bed, datagrams, happens):
    bed.start()
    bed.supplicant.answer("STATUS", *datagrams)
    for _ in range(2):  # what is left over must not answer the next command
        bed.bus.call("ssidRequest")
        with bed.supplicant.silence:
            pass  # all is sent now
    bed.check(*happens)


def test_refusing_sockets(bed):
    bed.supplicant.kill()  # another takes its place
    supplicants = {name: FakeSupplicant(bed.journal, name)
                   for name in ("wlan0", "wlan1", "a0", "z0", "p2p-dev-wlan0")}
    names = os.listdir(DIRECTORY)  # in its own order
    for name in names[:-1]:
        supplicants[name].answer("ATTACH", "FAIL\n")
    bed.daemon.start()
    assert comes_true(lambda: "RECONFIGURE" in bed.journal.entries())
    assert re.findall('trying ctrl_iface: "(.*)"', "\n".join(bed.journal.take())) == names
    # Two connections are left, and the one that works names the interface.
    assert len(list(Path("/tmp").glob("wpa_ctrl_*"))) == 2
    for supplicant in supplicants.values():
        supplicant.send_event(CONNECTED)
    assert comes_true(lambda: dhcp_client(names[-1]) in bed.journal.entries())


def test_death(bed):
    bed.start()
    bed.supplicant.kill()
    bed.bus.call("statusRequest")
    bed.check("statusMessage(1)", request_line("STATUS", "command failed"), NO_LINK)

    # It comes back, and nothing happens until a client asks; its call is answered first.
    bed.supplicant.start()
    rebuild = " to establish connection to wpa_supplicant"
    for detach in [], ["DETACH"]:
        begun = time.monotonic()
        with bed.supplicant.silence:
            bed.bus.call("wpaConnectRequest")
        bed.check("void WifiDaemon::wpaConnectRequest() about" + rebuild,
                  "void WifiDaemon::onWpaConnectRequest() trying" + rebuild, *detach, *LINKED)
        assert time.monotonic() >= begun + 0.1


def test_tools_inherit_nothing(bed):
    held = bed.folder / "held"
    bed.tools.script("sync", f"exec ls /proc/self/fd >{held}")
    bed.start()
    bed.bus.call("disableRequest")
    assert held.read_text().split() == ["0", "1", "2", "3"]  # the last one is this folder
