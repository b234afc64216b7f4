# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""What can go wrong around the daemon."""

import os
import re
import shutil
from pathlib import Path

from harness.bed import FAKE_TOOL, comes_true
from harness.bus import daemon_call, record, request_line, signal
from harness.supplicant import DIRECTORY
from jeepney import MessageFlag, message_bus
from jeepney.io.blocking import open_dbus_connection

CLIENTS = 16
# Some 16 bytes a call of a flood. The sanitizer keeps what is freed, and finds what is not itself.
CALLS, TOLERANCE_KIB = (800, 10**9) if "SANITIZED" in os.environ else (4000, 64)
NOTHING = signal("staticResult", record(None, None, None, None, ""))


def call(bed, method, *leads_to):
    """To these signals."""
    bed.bus.call(method)
    signals = [entry for entry in bed.journal.take() if re.fullmatch(r"\w+\(.*\)", entry)]
    assert signals == [*leads_to]


def check_answers(bed):
    """Three queries sent together are answered one after the other."""
    bed.supplicant.answer("STATUS", "ssid=office\nwpa_state=COMPLETED\nip_address=10.0.0.7\n")
    bed.bus.call("enableRequest")  # what comes late is in the journal after this
    bed.journal.take()
    bed.bus.send("statusRequest")
    bed.bus.send("ssidRequest")
    call(bed, "ipRequest", "statusMessage(0)", "ssidResult(office)", "ipResult(10.0.0.7)")


def relink(bed, leads_to):
    bed.bus.call("wpaConnectRequest")
    assert comes_true(lambda: leads_to in bed.journal.entries()), bed.journal.entries()


def supplicant_dies(bed):
    bed.supplicant.kill()
    shutil.rmtree(DIRECTORY)
    relink(bed, request_line("RECONFIGURE", "false"))
    call(bed, "statusRequest", "statusMessage(1)")
    bed.supplicant.start()
    relink(bed, "RECONFIGURE")


def tool_does(script):
    """With a tool that does this, the record of the wired port holds nothing."""
    def happen(bed):
        bed.tools.script("ifconfig", script)
        call(bed, "dynamicRequest", NOTHING, "dynamicResult(False)")
    return happen


def tool_is_missing(bed):
    tool = bed.tools.folder / "ifconfig"
    tool.unlink()
    call(bed, "dynamicRequest", NOTHING, "dynamicResult(False)")
    tool.symlink_to(FAKE_TOOL)


def flood(bed):
    """Clients that send without end, among it what is no record, and don't wait for any answer."""
    for number in range(CLIENTS):
        client = open_dbus_connection(bed.bus.address, auth_timeout=10)
        for method in ("ssidRequest", "statusRequest") * (CALLS // CLIENTS // 2):
            message = daemon_call(method)
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
    for fault in (supplicant_dies, tool_is_missing, tool_does("kill -KILL $$"),
                  tool_does("head -c 10000000 /dev/zero | tr '\\0' x"),
                  tool_does("head -c 10000000 /dev/zero >&2"), flood):
        check_fault(bed, fault)
