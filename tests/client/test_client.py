# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""The client library, by tst_client.cpp, which says what is to happen around it."""

import os
import re
import subprocess
from functools import partial

from harness.bed import Bed, comes_true

from radio import Radio, key_of

SECRET = "correct horse battery"
TABLE = ["02:00:00:00:01:00	2412	-50	[WPA2-PSK-CCMP][ESS]	Home",
         "02:00:00:00:02:00	2412	-55	[WPA2-PSK-CCMP][ESS]	Other",
         "02:00:00:00:03:00	2437	-60	[WPA2-SAE-CCMP][ESS]	Third",
         "02:00:00:00:04:00	2437	-65	[ESS]	ssid=a=b",
         "02:00:00:00:05:00	2437	-70	[ESS]	Twin",
         "02:00:00:00:05:01	2437	-75	[WPA2-PSK-CCMP][ESS]	Twin"]


def test_client():
    with Bed(partial(Radio, table=TABLE, secret=SECRET)) as bed:
        radio = bed.supplicant
        bed.start()

        def home():
            """In the one network that is stored."""
            radio.table = list(TABLE)
            radio.store({"ssid": "Home", "psk": key_of(SECRET, "Home")})
            radio.look()
            assert comes_true(lambda: radio.state == "COMPLETED")

        scope = {**globals(), "bed": bed, "radio": radio, "home": home}
        late = bed.folder / "bus"  # the way to the bus, once it is there
        scope["bus"] = lambda: late.symlink_to(re.search("path=([^,]*)", bed.bus.address)[1])
        with subprocess.Popen([os.environ["CLIENT"]], stdout=subprocess.PIPE,
                              env=os.environ | {"DBUS_SYSTEM_BUS_ADDRESS": f"unix:path={late}"},
                              stdin=subprocess.PIPE, text=True) as client:
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
