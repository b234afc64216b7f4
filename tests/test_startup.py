# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""The daemon from its start to its first exchange, and its end."""

import os
import shutil
import signal
import subprocess
from pathlib import Path

import pytest
from harness.bed import Bed, request_line
from harness.bus import SERVICE
from harness.supplicant import DIRECTORY
from harness.waiting import comes_true
from jeepney import message_bus

REGISTERED = "void WifiDaemon::setup() Registered service: " + SERVICE
SETUP = "bool WifiControl::setup() "
SEARCHING = SETUP + 'ctrl_iface_dir: "/var/run/wpa_supplicant"'
TRYING = SETUP + 'trying ctrl_iface: "wlan0" ...'
OPENED = SETUP + "opened connection to wpa_supplicant"
LINKED = [SEARCHING, TRYING, OPENED, SETUP + "attached to wpa_supplicant",
          request_line("RECONFIGURE", "true")]
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


@pytest.mark.parametrize("prepare, lines", [
    (lambda bed: None, [REGISTERED, *LINKED]),
    (no_socket, [REGISTERED, SEARCHING, *NOT_LINKED]),
    (no_supplicant, [REGISTERED, SEARCHING, TRYING,
                     SETUP + "failed to open control connection to wpa_supplicant", *NOT_LINKED]),
    (lambda bed: bed.supplicant.answer("ATTACH", "FAIL\n"),
     [REGISTERED, SEARCHING, TRYING, OPENED, SETUP + "failed to attach to wpa_supplicant",
      *NOT_LINKED]),
    (lambda bed: bed.bus.request(message_bus.RequestName(SERVICE)),
     [LOGGER + "Service already registered: " + SERVICE, NO_NAME + '""', *LINKED]),
    (lambda bed: bed.bus.close(),
     [LOGGER + "Cannot connect to the D-Bus system bus.", NO_NAME + NO_BUS,
      LOGGER + "Failed to register object: " + NO_BUS, *LINKED]),
], ids=["all there", "no socket", "no supplicant", "refused", "name taken", "no bus"])
def test_log(bed, prepare, lines):
    bed.daemon.environment["QT_MESSAGE_PATTERN"] = (
        "%{if-warning}warning %{endif}%{if-category}%{category} %{endif}"
        "%{file}|%{function}|%{message}")
    prepare(bed)
    bed.daemon.start()

    def log():  # of the two kinds of line, one carries no source
        return [line.replace("unknown|unknown|", "") for line in bed.daemon.log()]

    comes_true(lambda: log() == lines)
    assert log() == lines


@pytest.mark.parametrize("argument, status", [
    ("--bogus", 2), ("--wired-dhcp=1", 2), ("start", 2), ("--help", 0), ("-V", 0)])
def test_usage(argument, status):
    assert subprocess.run([os.environ["BXWIFID"], argument]).returncode == status


CONFIGURATION = Path("/prefs/etc/wpa_supplicant.conf")
LINK = Path("/etc/wpa_supplicant.conf")
TEMPLATE = "ctrl_interface=/var/run/wpa_supplicant\nctrl_interface_group=0\nupdate_config=1\n"


def content_after_start():
    LINK.unlink(missing_ok=True)
    LINK.write_text("in the way")
    with Bed() as bed:
        bed.daemon.start("--reset-supplicant-config")
        bed.check("sync", "ATTACH", "RECONFIGURE")
        assert comes_true(LINK.is_symlink)
    target = Path(os.readlink(LINK))
    return target.read_bytes().decode() if target.exists() else None


def test_configuration_reset():
    CONFIGURATION.unlink(missing_ok=True)
    assert content_after_start() == TEMPLATE
    for kept in "x" * 77, TEMPLATE + "network={\r\n}\n":
        CONFIGURATION.write_bytes(kept.encode())
        assert content_after_start() == kept
    CONFIGURATION.write_text("x" * 76)
    assert content_after_start() == TEMPLATE

    # No room, then some again.
    folder = CONFIGURATION.parent
    subprocess.run(["mount", "-t", "tmpfs", "-o", "size=4k", "none", folder], check=True)
    (folder / "filler").write_text("x" * 4096)
    assert content_after_start() == ""
    (folder / "filler").unlink()
    assert content_after_start() == TEMPLATE
    subprocess.run(["umount", folder], check=True)

    shutil.rmtree(folder)
    assert content_after_start() is None


@pytest.mark.parametrize("flag, runs, first_line", [
    ("dynamicip=\n", ["udhcpc|-ieth0|-n|-q|-p/etc/udhcpc.pid"],
     r'void WifiDaemon::setDynamicEthernetIp() "lease \"of\" 10.0.0.4\n"'),
    ("", [], REGISTERED),
    ("## dynamicip\n", [], REGISTERED),
])
def test_wired_dhcp(bed, flag, runs, first_line):
    bed.tools.output("fw_printenv", flag)
    bed.tools.output("udhcpc", 'lease "of" 10.0.0.4\n')
    bed.daemon.start("--wired-dhcp")
    bed.check("fw_printenv|dynamicip", *runs, "ATTACH", "RECONFIGURE")
    assert comes_true(bed.daemon.log)
    assert bed.daemon.log()[0] == first_line


def test_end(bed):
    bed.start()
    with bed.supplicant.silence:  # an exchange that the signal falls into is finished first
        bed.bus.send("scanRequest")
        bed.check("statusMessage(2)", "SCAN")
        bed.daemon.process.send_signal(signal.SIGINT)
    assert bed.daemon.exit_status() == 0
    bed.check("SAVE_CONFIG", "sync", "DETACH")
    assert request_line("SCAN", "true") in bed.daemon.log()


def test_end_before_start_up(bed):
    bed.tools.script("fw_printenv", "kill $PPID")
    bed.daemon.start("--wired-dhcp")
    assert bed.daemon.exit_status() == 0
    # On a busy machine start-up is due by then.
    assert bed.journal.take() in (
        ["fw_printenv|dynamicip", "sync"],
        ["fw_printenv|dynamicip", "ATTACH", "RECONFIGURE", "SAVE_CONFIG", "sync", "DETACH"])
