# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""What takes as long as the daemon's own waits; the functions are run side by side."""

import threading
import time

import pytest
from harness.bed import request_line


def test_time_out(bed):
    answered = threading.Event()
    bed.start()
    bed.supplicant.answer("STATUS", "ssid=Late\n")
    bed.supplicant.react = lambda command: answered.set()
    with bed.supplicant.silence:
        bed.bus.call("ssidRequest")  # the client library waits 10 s
        bed.check("STATUS", "ssidResult()")
        assert bed.daemon.logs(request_line("STATUS", "command timed out"))
    assert answered.wait(10)
    bed.supplicant.answer("STATUS", "ssid=Home\n")
    bed.bus.call("ssidRequest")
    bed.check("STATUS", "ssidResult(Home)")


def test_retry(bed):
    bed.supplicant.kill()
    bed.daemon.start()
    assert bed.daemon.logs("Failed to init with WPA_Supplicant")
    begun = time.monotonic()
    assert bed.daemon.logs("Retrying SETUP again in 4sec")
    assert time.monotonic() - begun == pytest.approx(4, abs=0.6)
    bed.supplicant.start()
    assert bed.daemon.logs("Finally init with WPA Supplicant")
    assert time.monotonic() - begun == pytest.approx(8, abs=0.6)
    # That was the last time, and the supplicant reads its configuration without being asked.
    time.sleep(4.5)
    bed.check("ATTACH")


def test_rebuild_during_retry(bed):
    bed.supplicant.kill()
    bed.daemon.start()
    assert bed.daemon.logs("Failed to init with WPA_Supplicant")
    bed.supplicant.start()
    bed.bus.call("wpaConnectRequest")
    time.sleep(4.5)
    bed.check("ATTACH", "RECONFIGURE")


def test_hanging_tool(bed):
    bed.tools.script("fw_setenv", "echo ipaddr=wrong; exec sleep 100")
    bed.tools.output("fw_printenv", "dynamicip=1\n")
    bed.start()
    begun = time.monotonic()
    bed.bus.call("setDynamic", True)
    assert time.monotonic() - begun == pytest.approx(30.5, abs=0.5)
    # The next tool gets its own output, and Qt has nothing to warn of.
    before = bed.daemon.log()
    bed.bus.call("dynamicRequest")
    assert bed.journal.take()[-1] == "dynamicResult(True)"
    assert bed.daemon.log() == before


def test_hanging_tool_at_end(bed):
    bed.tools.script("fw_setenv", "exec sleep 100")
    bed.start()
    bed.bus.call("setDynamic", True)
    bed.daemon.stop()
    assert bed.daemon.log()[-1] == request_line("SAVE_CONFIG", "true")
