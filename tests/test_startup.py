# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""The daemon from its start to its first exchange, and its end."""

import os
import re
import shutil
import signal
import subprocess
from pathlib import Path

import pytest
from harness.bed import LINKED, OPENED, SEARCHING, SETUP, TRYING, Bed, comes_true
from harness.bus import SERVICE, request_line
from harness.supplicant import DIRECTORY
from jeepney import message_bus

REGISTERED = "void WifiDaemon::setup() Registered service: " + SERVICE
NOT_LINKED = [SETUP + "failed to establish a connection to wpa_supplicant",
              "Failed to init with WPA_Supplicant"]
LOGGER = "wifidaemon|WifiDaemon::setup|"
NO_NAME = LOGGER + f"Failed to register service: {SERVICE}  error: "
NO_BUS = '"Not connected to D-Bus server"'


def no_socket(bed):
    bed.supplicant.kill()
    shutil.rmtree(DIRECTORY)


def no_supplicant(bed):
    """A killed one leaves its socket; what is no socket at all is not tried."""
    bed.supplicant.kill()
    (DIRECTORY / "file").touch()


def one_connection(bed):
    """What is in the way of the second one's own socket is no socket that could be removed."""
    bed.daemon.prepare = lambda: os.mkdir(f"/tmp/wpa_ctrl_{os.getpid()}-2")


def name_taken(bed):
    bed.bus.request(message_bus.RequestName(SERVICE))
    bed.journal.settle = lambda: None  # the daemon is not reached by this name


@pytest.mark.parametrize("prepare, happens", [
    (lambda bed: None, [REGISTERED, *LINKED]),
    (no_socket, [REGISTERED, SEARCHING, *NOT_LINKED]),
    (no_supplicant, [REGISTERED, SEARCHING, TRYING,
                     SETUP + "failed to open control connection to wpa_supplicant", *NOT_LINKED]),
    (one_connection, [REGISTERED, SEARCHING, TRYING,
                      SETUP + "failed to open monitor connection to wpa_supplicant", *NOT_LINKED]),
    (lambda bed: bed.supplicant.answer("ATTACH", "FAIL\n"),
     [REGISTERED, SEARCHING, TRYING, OPENED, "ATTACH",
      SETUP + "failed to attach to wpa_supplicant", *NOT_LINKED]),
    (name_taken, [LOGGER + "Service already registered: " + SERVICE, NO_NAME + '""', *LINKED]),
    (lambda bed: bed.bus.close(),
     [LOGGER + "Cannot connect to the D-Bus system bus.", NO_NAME + NO_BUS,
      LOGGER + "Failed to register object: " + NO_BUS, *LINKED]),
], ids=["all there", "no socket", "no supplicant", "one connection", "refused", "name taken",
        "no bus"])
def test_start_and_end(bed, prepare, happens):
    prepare(bed)
    bed.daemon.start()
    bed.check(*happens)
    bed.daemon.stop()
    bed.check(*["SAVE_CONFIG", "sync", "DETACH"] if "RECONFIGURE" in happens else
              [request_line("SAVE_CONFIG", "false"), "sync"])


TRY = "Try 'bxwifid --help'.\n"


@pytest.mark.parametrize("argument, status, text", [
    ("--bogus", 2, ".*'--bogus'\n" + TRY), ("--wired-dhcp=1", 2, ".*'--wired-dhcp' .*\n" + TRY),
    ("start", 2, "bxwifid: unexpected argument 'start'\n" + TRY),
    ("--help", 0, r"Usage: bxwifid \[OPTION\]\.\.\.\n.* --reset-supplicant-config .*"
                  r"/prefs/etc/wpa_supplicant.conf\n.* --wired-dhcp .* -h, --help .* exit\n"
                  r" .* -V, --version .* exit\n"),
    ("-V", 0, r"bxwifid \d+\.\d+\.\d+\n")])
def test_usage(argument, status, text):
    run = subprocess.run([os.environ["BXWIFID"], argument], capture_output=True, text=True)
    said, silent = (run.stderr, run.stdout) if status else (run.stdout, run.stderr)
    assert (run.returncode, silent) == (status, "") and re.fullmatch(text, said, re.S), said


CONFIGURATION = Path("/prefs/etc/wpa_supplicant.conf")
LINK = Path("/etc/wpa_supplicant.conf")
TEMPLATE = "ctrl_interface=/var/run/wpa_supplicant\nctrl_interface_group=0\nupdate_config=1\n"


def content_after_start():
    LINK.unlink(missing_ok=True)
    LINK.write_text("in the way")
    with Bed() as bed:
        bed.daemon.start("--reset-supplicant-config")
        bed.check("sync", REGISTERED, *LINKED)
        assert comes_true(LINK.is_symlink)
    assert Path(os.readlink(LINK)) == CONFIGURATION
    return CONFIGURATION.read_bytes().decode() if CONFIGURATION.exists() else None


def test_configuration_reset():
    folder = CONFIGURATION.parent
    assert content_after_start() == TEMPLATE
    for content, repaired in [("x" * 77, "x" * 77), (TEMPLATE + "network={\r\n}\n",) * 2,
                              ("x" * 76, TEMPLATE)]:
        CONFIGURATION.write_bytes(content.encode())
        assert content_after_start() == repaired

    # No room, then some again.
    subprocess.run(["mount", "-t", "tmpfs", "-o", "size=4k", "none", folder], check=True)
    (folder / "filler").write_text("x" * 4096)
    assert content_after_start() == ""
    (folder / "filler").unlink()
    assert content_after_start() == TEMPLATE
    subprocess.run(["umount", folder], check=True)

    shutil.rmtree(folder)
    assert content_after_start() is None


@pytest.mark.parametrize("flag, happens", [
    ("dynamicip=\n", ["udhcpc|-ieth0|-n|-q|-p/etc/udhcpc.pid",
                      r'void WifiDaemon::setDynamicEthernetIp() "lease \"of\" 10.0.0.4\n"']),
    ("", []),
    ("## dynamicip\n", []),
])
def test_wired_dhcp(bed, flag, happens):
    bed.tools.output("fw_printenv", flag)
    bed.tools.output("udhcpc", 'lease "of" 10.0.0.4\n')
    bed.daemon.start("--wired-dhcp")
    bed.check("fw_printenv|dynamicip", *happens, REGISTERED, *LINKED)


def test_end(bed):
    bed.start()
    with bed.supplicant.silence:  # an exchange that the signal falls into is finished first
        bed.bus.send("scanRequest")
        bed.check("statusMessage(2)", "SCAN")
        bed.daemon.process.send_signal(signal.SIGINT)
    bed.daemon.exit_status()
    bed.check("SAVE_CONFIG", "sync", "DETACH")


def test_killed(bed):
    """The tool that runs then finishes what it is at."""
    bed.tools.script("fw_setenv", """kill -KILL $PPID
        while read -r _ _ _ parent _ </proc/$$/stat && [ $parent = $PPID ]; do :; done
        exec ${0%/*}/sync""")
    bed.start()
    bed.bus.send("setDynamic", True)
    bed.check("fw_setenv|dynamicip|1", "sync")
    bed.daemon.process = bed.daemon.process.kill()  # None: its status is not asked for


def test_end_before_start_up(bed):
    bed.tools.script("fw_printenv", "kill $PPID")
    bed.daemon.start("--wired-dhcp")
    bed.daemon.exit_status()
    # On a busy machine start-up is due by then.
    end = bed.journal.take()
    assert end in (["fw_printenv|dynamicip", "sync"],
                   ["fw_printenv|dynamicip", REGISTERED, *LINKED, "SAVE_CONFIG", "sync", "DETACH"])
