# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""The examples: the panel and the console program."""

import os
import subprocess
from functools import partial

import pytest
from harness.bed import Bed
from harness.waiting import comes_true

from radio import Radio

TABLE = [r"02:00:00:00:01:00	2412	-48	[WPA2-PSK-CCMP][ESS]	Lab WPA2",
         r"02:00:00:00:02:00	2437	-60	[ESS]	Lab Open",
         r"02:00:00:00:03:00	2437	-66	[WPA2-EAP-CCMP][ESS]	Lab Enterprise",
         r"02:00:00:00:04:00	5745	-72	[WPA2-SAE-CCMP][ESS]	Gr\xc3\xbc\xc3\x9fe",
         r"02:00:00:00:05:00	5180	-80	[WEP][ESS]	Lab WEP",
         r"02:00:00:00:06:00	5180	-90	[ESS]	\e[31mred"]
SECRET = "correct horse battery"


@pytest.fixture
def bed():
    with Bed(partial(Radio, table=TABLE, secret=SECRET)) as bed:
        bed.tools.script("fw_printenv", 'echo "$1=stored $1"')
        bed.start()
        yield bed


def test_panel(bed):
    with subprocess.Popen([os.environ["PANEL"]], stdout=subprocess.PIPE, text=True) as fingers:
        for line in fingers.stdout:
            print(line, end="")
            if line == "stop when that is forgotten\n":
                assert comes_true(lambda: bed.supplicant.stored() == [])
                bed.daemon.stop()
            elif line == "start\n":
                bed.daemon.start()
    assert fingers.returncode == 0
    assert bed.journal.entries().count("ADD_NETWORK") == 3


@pytest.mark.parametrize("program", ["CONSOLE", "PYTHON"])
def test_console(bed, program):
    console = subprocess.run([os.environ[program], "Lab WPA2", SECRET],
                             capture_output=True, text=True, timeout=60)
    assert console.stdout.startswith("-48 dBm  Lab WPA2\n"), console
    assert "\n-72 dBm  Grüße\n" in console.stdout, console
    assert "[31mred\n" in console.stdout and "\033" not in console.stdout, console
    assert console.stdout.endswith("\nJoined with the address 10.20.2.15\n"), console
