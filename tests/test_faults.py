# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""What can go wrong around the daemon."""

import os
import re
import shutil
import subprocess
from pathlib import Path

from harness.bed import request_line
from harness.bus import daemon_call
from harness.records import record
from harness.supplicant import DIRECTORY
from harness.waiting import comes_true
from jeepney import MessageFlag, message_bus

CLIENTS = 16
CALLS = 4000
# Some 16 bytes a call of a flood. The sanitizer keeps what is freed, and finds what is not itself.
TOLERANCE_KIB = 10**9 if "SANITIZED" in os.environ else 64


def signals(bed):
    return [entry for entry in bed.journal.take() if entry.endswith(")")]


def check_answers(bed):
    """Three queries sent together are answered one after the other."""
    bed.supplicant.answer("STATUS", "ssid=office\nwpa_state=COMPLETED\nip_address=10.0.0.7\n")
    bed.bus.call("enableRequest")  # what comes late is in the journal after this
    bed.journal.take()
    bed.bus.send("statusRequest")
    bed.bus.send("ssidRequest")
    bed.bus.call("ipRequest")
    assert signals(bed) == ["statusMessage(0)", "ssidResult(office)", "ipResult(10.0.0.7)"]


def check_no_answer(bed):
    bed.bus.call("statusRequest")
    assert signals(bed) == ["statusMessage(1)"]


def supplicant_dies(bed):
    bed.supplicant.kill()
    check_no_answer(bed)
    shutil.rmtree(DIRECTORY)
    logged = len(bed.daemon.log())
    bed.bus.call("wpaConnectRequest")
    assert comes_true(lambda: request_line("RECONFIGURE", "false") in bed.daemon.log()[logged:])
    check_no_answer(bed)
    bed.supplicant.start()
    bed.bus.call("wpaConnectRequest")
    assert comes_true(lambda: "RECONFIGURE" in bed.journal.entries())


def supplicant_babbles(bed):
    for garbage in "=" * 4000, "\n" * 4000, "\t" * 4000, "\udcff" * 4000, "\0" * 4000, "":
        bed.supplicant.answer("STATUS", garbage)
        bed.supplicant.answer("SCAN_RESULTS", garbage)
        bed.bus.call("fullStatusRequest")
        bed.journal.take()
        check_no_answer(bed)
        bed.supplicant.send_event("<3>CTRL-EVENT-SCAN-RESULTS " + garbage[:200])
        bed.check("SCAN_RESULTS", "statusMessage(3)")


def events_pile_up(bed):
    """While the daemon waits. A supplicant sends less than there is room for, to keep some for its
    replies; what it sent arrives, in order."""
    with bed.supplicant.silence:
        bed.bus.send("statusRequest")
        bed.check("STATUS")
        sent = [event for event in range(250)
                if bed.supplicant.send_event(f"<3>CTRL-EVENT-BSS-REMOVED 0 {event}")]
    bed.check("statusMessage(0)", *[f"bssRemoved({event})" for event in sent])
    assert len(sent) >= 10


def tool_does(script):
    """With a tool that does this, the record of the wired port holds nothing."""
    def happen(bed):
        bed.tools.script("ifconfig", script)
        check_nothing_read(bed)
    return happen


def tool_is_missing(bed):
    bed.tools.remove("ifconfig")
    check_nothing_read(bed)
    bed.tools.restore("ifconfig")


def check_nothing_read(bed):
    bed.bus.call("dynamicRequest")
    nothing = record(None, None, None, None, "").hex()
    assert signals(bed) == [f"staticResult({nothing})", "dynamicResult(False)"]


def flood(bed):
    """Clients that send without end, among it what is no record, and don't wait for any answer."""
    for number in range(CLIENTS):
        client = bed.bus.connect_client()
        for call in range(CALLS // CLIENTS):
            message = daemon_call("statusRequest" if call % 2 else "ssidRequest")
            message.header.flags |= MessageFlag.no_reply_expected
            client.send(message)
        # The first length is a lie in one, and true in the other as far as the payload goes.
        size = 1024 << number % 15
        client.send(daemon_call("setStaticRequest", b"\x7f" * size))
        client.send(daemon_call("connectRequest", bytes(size)))
        client.send_and_get_reply(message_bus.GetId())  # the bus has all that was sent before
        client.close()
    bed.bus.call("enableRequest")
    assert bed.journal.take().count("STATUS") >= CALLS


def holdings(bed):
    """Files that the daemon has open, its children, and its memory in KiB."""
    process = Path(f"/proc/{bed.daemon.process.pid}")
    children = "".join(file.read_text() for file in process.glob("task/*/children"))
    memory = re.search(r"RssAnon:\s*(\d+)", (process / "status").read_text())
    return len(os.listdir(process / "fd")), children, int(memory[1])


def check_fault(bed, happen):
    """After it the daemon answers, in order, and holds no more than before. The heap takes its
    shape after some turns; what is lost is lost every time."""
    growth = []
    while not growth or growth[-1] >= TOLERANCE_KIB:
        assert len(growth) < 6, f"{growth} KiB"
        before, _, memory_before = holdings(bed)
        happen(bed)
        check_answers(bed)
        files, children, memory = holdings(bed)
        assert (files, children) == (before, "")
        growth.append(memory - memory_before)


def test_faults(bed):
    """One daemon lives through all of it."""
    # What is freed goes back to the one heap and from there to the system, so that what is kept
    # shows.
    bed.daemon.environment |= {"MALLOC_ARENA_MAX": "1", "MALLOC_MMAP_THRESHOLD_": "65536",
                               "MALLOC_TRIM_THRESHOLD_": "65536"}
    bed.journal.settle = lambda: None  # which would take the flood's force away
    bed.start()
    flood(bed)  # brings the heap to its full size
    check_answers(bed)
    for fault in (supplicant_dies, supplicant_babbles, events_pile_up,
                  tool_is_missing, tool_does("kill -KILL $$"),
                  tool_does("head -c 10000000 /dev/zero | tr '\\0' x"),
                  tool_does("head -c 10000000 /dev/zero >&2"), flood):
        check_fault(bed, fault)


def test_bus_gone(bed):
    bed.start()
    bed.bus.close()
    # Nobody is left to be told, yet the address is refreshed.
    bed.supplicant.send_event("<3>CTRL-EVENT-CONNECTED - Connection to x completed")
    assert comes_true(lambda: "udhcpc" in "".join(bed.journal.entries()))


def test_address_is_no_option(bed):
    Path("/etc/fw_env.config").unlink(missing_ok=True)
    Path("/etc/fw_env.config").write_text("/run/boot.env 0x0 0x4000\n")
    Path("/run/boot.env").write_bytes(bytes(0x4000))
    Path("/run/defaults").write_text("ipaddr=10.0.0.2\n")
    Path("/run/script").write_text("bootargs=init=/tmp/shell\n")
    subprocess.run(["fw_setenv", "-f", "/run/defaults"], check=True)
    bed.tools.script("fw_setenv", 'exec fw_setenv "$@"')
    bed.start()
    bed.bus.call("setStaticRequest", record("-s/run/script", "", "", "", ""))
    stored = subprocess.run(["fw_printenv"], capture_output=True, text=True).stdout
    assert stored == "gatewayip=\nipaddr=-s/run/script\nnetmask=\n"
