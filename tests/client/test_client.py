# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""The client library, by the panel's client."""

import json
import re
import time

import pytest
from harness.bed import comes_true
from harness.bus import Bus, signal

from panel import Panel
from radio import SECRET, access_points, key_of

TABLE = access_points("2412 -50 [WPA2-PSK-CCMP][ESS] Home", "2412 -55 [WPA2-PSK-CCMP][ESS] Other",
                      "2437 -60 [WPA2-SAE-CCMP][ESS] Third", "2437 -65 [ESS] ssid=a=b")
HOME = {"ssid": "Home", "psk": key_of("Home")}
OTHER = "connectTo('Other', 'wrong horse', '', Security.Wpa)"
CLIENT = "Qt.createQmlObject('import BxWifi 1.0; WifiClient {}', tabs)"


CODES = [
    ("wifi:;P:12345678;Z:x;H:True;S:Lab;T:sae\n", "WIFI:T:SAE;S:Lab;P:12345678;H:true;;"),
    (r'WIFI:T:WEP;S:\"Say\"\; a\,b\:c\\;P:"ab\"cd";;',
     r'WIFI:T:WEP;S:\"Say\"\; a\,b\:c\\;P:ab\"cd;;'),
    (r'WIFI:T:WEP;S:"a\";P:6162636465;;', r'WIFI:T:WEP;S:\"a\";P:abcde;;'),
    ("WIFI:T:WPA;S:4772c3bcc39f65;P:correct horse;;", "WIFI:T:WPA;S:Grüße;P:correct horse;;"),
    ('WIFI:S:"4c6162";;', 'WIFI:T:nopass;S:"4c6162";;'),
    ("WIFI:S:CAFE;P:left over;;", 'WIFI:T:nopass;S:"CAFE";;'),
    ("WIFI:T:WPA2-EAP;S:Lab;E:PEAP;PH2:GTC;A:anyone;I:ada;P:lovelace;;",
     "WIFI:T:WPA2-EAP;S:Lab;E:PEAP;PH2:MSCHAPV2;I:ada;P:lovelace;;")]


@pytest.fixture
def home(radio, panel):
    radio.begin(HOME)
    panel.shows(state="Home")


def test_codes(panel):
    """They are written as all phones read them."""
    for code, plain in CODES:
        for text in code, plain:
            assert panel.run(f"driver.rewritten({json.dumps(text)})") == plain


def test_impossible_joins(panel):
    for request, words in (
            (f"connectTo('Home', '{63 * 'a'}')", "wrong passphrase"),  # that is a possible one
            ("connectTo('Lab', 'lovelace', '', Security.Enterprise)", "takes an identity"),
            ("connectTo('Lab', '', 'ada', Security.Enterprise)", "takes an identity"),
            ("connectToHidden('Lab', Security.Automatic, 'abcdefgh')", "hidden network"),
            (r"connectTo('\0', '')", "UTF-8")):
        assert words in panel.outcome(request), request


def test_goes_back_with_what_it_joined(radio, panel):
    """What takes its secret each time, and what was stored under the same name."""
    for home in "Third", "Home":
        assert panel.outcome(f"connectTo('{home}', '{SECRET}')") == "10.20.2.15"
        assert panel.outcome(OTHER) == "wrong passphrase or key; back in " + home
    assert panel.outcome("connectTo('Home', 'wrong horse')").endswith("; back in Home")
    assert radio.stored() == ["(Third)", "Home"]


def test_gives_up_and_gives_way(radio, home, panel):
    panel.run("memory.begin(wifi.scan()), memory.reply.abort()")
    assert panel.outcome() == "given up"

    del radio.table[1]  # the other one
    panel.begin(OTHER)
    panel.reaches("Associating")
    panel.run(f"memory.reply = wifi.connectTo('Nowhere', '{SECRET}', '', Security.Wpa)")
    assert panel.outcome() == "another network was asked for meanwhile"
    panel.reaches("Associating")
    assert radio.stored() == ["(Home)", "Nowhere"]
    assert panel.outcome("connectTo('Elsewhere', 'x')") == "no such network in sight; back in Home"
    assert radio.stored() == ["Home"]

    for is_repeated in True, False:  # which ends the way back at once
        radio.begin(HOME)
        del radio.table[1]
        panel.shows(state="Home")
        panel.begin(OTHER)
        panel.reaches("Associating")
        radio.table = []
        panel.run("memory.reply.abort()")
        panel.reaches("Returning")
        begin = time.monotonic()
        if is_repeated:
            panel.run("memory.reply.abort()")
        assert panel.outcome() == "given up; the device is in no network now"
        assert (time.monotonic() - begin < 20) == is_repeated


def test_forgets_a_lost_connection(radio, home, panel):
    assert panel.outcome("forget('Home')") is None
    assert panel.outcome(OTHER) == "wrong passphrase or key"
    assert panel.run("wifi.pollInterval = 0, wifi.pollInterval") == 0
    panel.shows(state="Not connected")
    radio.send_event("<3>CTRL-EVENT-CONNECTED ")  # to what has no name yet
    panel.shows(state="")


def test_asks_nothing_during_a_request(bed, radio, home, panel):
    """Not even one that nobody answers."""
    radio.react = lambda _: None
    bed.journal.take()
    panel.run("wifi.pollInterval = 10")
    assert panel.outcome("scan()") == "no scan results"
    assert bed.journal.entries().count("STATUS") < 9


def test_handlers_do_anything(bed, radio, home, panel):
    """They may end what tells them, and begin what ends at once."""
    panel.run("memory.reply = wifi.scan(), memory.reply.finished.connect(() => (driver.erase("
              "memory.reply), driver.erase(wifi.status()), wifi.scan().finished.connect(() => "
              "memory.second = 'over')))")
    panel.waits("memory.second")
    panel.run(f"memory.reply = wifi.{OTHER}, memory.reply.stageChanged.connect(stage => "
              "stage === WifiReply.Associating && driver.erase(memory.reply))")
    # Nobody is there to follow this one's end.
    panel.waits("wifi.state === WifiClient.Disconnected")

    with radio.silence:
        panel.run("wifi.scan().finished.connect(() => memory.begin(wifi.scan()))")
        bed.daemon.process.kill()
        bed.daemon.process.wait()
        assert panel.outcome() == "the daemon bxwifid is not running"
    panel.run(f"memory.client = {CLIENT}, "
              "memory.client.stateChanged.connect(() => (driver.erase(memory.client), "
              "memory.client = null))")
    bed.daemon.process = None
    bed.start()
    panel.waits("memory.client === null")


def test_finds_a_new_bus(bed, radio):
    radio.begin(HOME)
    road = bed.folder / "bus"  # to the bus there is
    road.symlink_to(re.search("path=([^,]*)", bed.bus.address)[1])
    assert comes_true(lambda: signal("ipResult", "10.20.2.15") in bed.journal.entries())
    panel = Panel(DBUS_SYSTEM_BUS_ADDRESS=f"unix:path={road}")
    panel.shows(state="Home", address="10.20.2.15")  # though nobody has told of it since
    bed.daemon.stop()
    bed.bus.close()
    bed.bus = Bus(bed.daemon.log_file)
    bed.daemon.start()
    panel.shows(state="The network service is not running")
    assert panel.run(CLIENT + ".state === WifiClient.Unavailable")
    assert panel.outcome("status()") == "cannot reach the system bus"
    road.unlink()
    road.symlink_to(re.search("path=([^,]*)", bed.bus.address)[1])
    panel.run("wifi.pollInterval = 0")
    assert comes_true(lambda: "ssid" in panel.outcome("status()"), 40)
    panel.shows(state="Home")
    panel.close()
