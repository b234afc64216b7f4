# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""The QML module and the example on the console."""

import json
import os
import subprocess

import pytest

from radio import SECRET, access_points

# At last two access points of one name, and names that are markup, and colour a terminal.
TABLE = access_points("2412 -48 [WPA2-PSK-CCMP][ESS] Lab WPA2", "2437 -60 [ESS] Lab Open",
                      "2437 -66 [WPA2-EAP-CCMP][ESS] Lab Enterprise",
                      r"5745 -72 [WPA2-SAE-CCMP][ESS] Gr\xc3\xbc\xc3\x9fe",
                      "5180 -80 [WEP][ESS] Lab WEP", "2412 -81 [ESS] Twin",
                      "2412 -82 [WPA2-PSK-CCMP][ESS] Twin",
                      "2412 -83 [WPA2-PSK-CCMP][ESS] <img src=http://192.0.2.1/x>",
                      r"5180 -90 [ESS] \e[31mred")
MODULE = """
import QtQuick 2.15
import BxWifi 1.0
Item {
    function follow(reply, next) {
        reply.finished.connect(function() { console.log(JSON.stringify(reply.result)); next() })
    }
    WifiClient { id: wifi }
    Component.onCompleted:
        follow(wifi.scan(), () => follow(wifi.connectTo("Lab Open", ""),
            () => follow(wifi.status(), () => follow(wifi.wiredSettings(), Qt.quit))))
}
"""


@pytest.mark.skipif("SANITIZED" in os.environ, reason="qml is built without sanitizers")
def test_module(radio, tmp_path):
    """QML alone sees all fields of what the client brings."""
    (tmp_path / "module.qml").write_text(MODULE)
    qml = subprocess.run(["qml", tmp_path / "module.qml"], capture_output=True, text=True,
                         timeout=60)
    said = [line[5:] for line in qml.stderr.splitlines() if line.startswith("qml: ")]
    assert len(said) == 4, qml
    scan, address, status, wired = map(json.loads, said)
    assert list(scan[3].values()) == ["Grüße", "02:00:00:00:04:00", -72, 5745,
                                      "[WPA2-SAE-CCMP][ESS]", 4, 149, "5 GHz", 2]
    assert list(status.values()) == [True, "Lab Open", address, "02:00:00:00:02:00", 2437,
                                     "station", "CCMP", "TKIP", "NONE", "COMPLETED"]
    assert wired == {"address": "stored ipaddr", "gateway": "stored gatewayip", "dhcp": True,
                     "netmask": "stored netmask", "macAddress": "stored ethaddr"}


@pytest.mark.parametrize("program", ["CONSOLE", "PYTHON"])
def test_console(radio, program):
    console = subprocess.run([os.environ[program], "Lab WPA2", SECRET],
                             capture_output=True, text=True, timeout=60)
    assert console.stdout.startswith("-48 dBm  Lab WPA2\n"), console
    assert "\n-72 dBm  Grüße\n" in console.stdout, console
    assert "[31mred\n" in console.stdout and "\033" not in console.stdout, console
    assert console.stdout.endswith("\nJoined with the address 10.20.2.15\n"), console
