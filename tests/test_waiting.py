# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""What takes as long as the daemon's own waits; the functions are run side by side."""

import threading
import time

from harness.bed import LINKED, comes_true
from harness.bus import request_line

NOT_YET = "Failed to init with WPA_Supplicant"


def test_time_out(bed):
    answered = threading.Event()
    bed.start()
    bed.supplicant.answer("STATUS", "ssid=Late\n")
    bed.supplicant.react = lambda command: answered.set()
    with bed.supplicant.silence:
        bed.bus.call("ssidRequest")  # the client library waits 10 s
        bed.check("STATUS", "ssidResult()", request_line("STATUS", "command timed out"),
                  request_line("STATUS", "false"))
    assert answered.wait(10)
    bed.supplicant.answer("STATUS", "ssid=Home\n")
    bed.bus.call("ssidRequest")
    late = r'void ctrlRequestDebug(char*, size_t) "ssid=Late\n"'
    bed.check(late, "STATUS", "ssidResult(Home)")


def logs(bed, line):
    """When it did."""
    assert comes_true(lambda: line in bed.journal.entries()), bed.journal.entries()
    assert bed.journal.take()[-1] == line
    return bed.daemon.log_file.stat().st_mtime


def test_retry(bed):
    bed.supplicant.kill()
    for _ in range(20):
        bed.daemon.start()
        begun = logs(bed, NOT_YET)
        # From here on a timer that may be inexact ends 100 ms early, to meet a full half second.
        if 0.1 < (begun - time.time() + time.monotonic()) % 0.5 < 0.24:
            break
        bed.daemon.stop()
        bed.journal.take()
    assert begun + 3.98 <= logs(bed, "Retrying SETUP again in 4sec") < begun + 5
    bed.supplicant.start()
    assert begun + 7.98 <= logs(bed, "Finally init with WPA Supplicant") < begun + 9
    # That was the last time, and the supplicant reads its configuration without being asked.
    time.sleep(4.5)
    bed.check()


def test_rebuild_during_retry(bed):
    bed.supplicant.kill()
    bed.daemon.start()
    logs(bed, NOT_YET)
    bed.supplicant.start()
    bed.bus.call("wpaConnectRequest")
    time.sleep(4.5)
    assert bed.journal.take()[2:] == LINKED


def test_hanging_tool(bed):
    bed.tools.script("fw_setenv", "echo ipaddr=wrong; exec sleep 100")
    bed.tools.output("fw_printenv", "dynamicip=1\n")
    bed.start()
    begun = time.monotonic()
    bed.bus.call("setDynamic", True)
    assert 30 <= time.monotonic() - begun < 32
    # The next tool gets its own output, and Qt has nothing to warn of.
    bed.journal.take()
    bed.bus.call("dynamicRequest")
    assert bed.journal.take()[-1] == "dynamicResult(True)"


def test_hanging_tool_at_end(bed):
    bed.tools.script("fw_setenv", "exec sleep 100")
    bed.start()
    bed.bus.call("setDynamic", True)
    bed.daemon.stop()
    bed.check("fw_setenv|dynamicip|1", "SAVE_CONFIG", "sync", "DETACH")
