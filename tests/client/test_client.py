# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""The client library, by tst_client.cpp, which says what is to happen around it."""

import os
import re
import subprocess

from harness.bus import Bus

from radio import access_points, key_of

TABLE = access_points("2412 -50 [WPA2-PSK-CCMP][ESS] Home", "2412 -55 [WPA2-PSK-CCMP][ESS] Other",
                      "2437 -60 [WPA2-SAE-CCMP][ESS] Third", "2437 -65 [ESS] ssid=a=b")


def test_client(bed, radio):
    road = bed.folder / "bus"  # to the bus there is

    def open_road():
        road.unlink(missing_ok=True)
        road.symlink_to(re.search("path=([^,]*)", bed.bus.address)[1])

    def lose_bus():
        bed.daemon.stop()
        bed.bus.close()
        bed.bus = Bus(bed.daemon.log_file)
        bed.daemon.start()

    def home():
        """In the one network that is stored."""
        radio.begin({"ssid": "Home", "psk": key_of("Home")})

    open_road()
    scope = {**globals(), **locals()}
    with subprocess.Popen([os.environ["CLIENT"]], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                          env=os.environ | {"DBUS_SYSTEM_BUS_ADDRESS": f"unix:path={road}"},
                          text=True) as client:
        try:
            for line in client.stdout:
                print(line, end="")
                if line.startswith("> "):
                    exec(line[2:], scope)
                    print("done", file=client.stdin, flush=True)
        except BaseException:
            client.kill()
            raise
    assert client.returncode == 0
