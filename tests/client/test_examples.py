# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""The panel under a user's fingers, as paneldriver.cpp moves them, the module that it is made with,
and the examples without a window."""

import math
import os
import re
import subprocess
import time
from collections import Counter

import pytest
from harness.bed import comes_true

from command import bxwifictl
from panel import PANEL, Panel
from radio import SECRET, access_points

# At last two access points of one name, and names that are markup, and colour a terminal.
TABLE = access_points("2412 -48 [WPA2-PSK-CCMP][ESS] Lab WPA2", "2437 -60 [ESS] Lab Open",
                      "2437 -66 [WPA2-EAP-CCMP][ESS] Lab Enterprise",
                      r"5745 -72 [WPA2-SAE-CCMP][ESS] Gr\xc3\xbc\xc3\x9fe",
                      "5180 -80 [WEP][ESS] Lab WEP", "2412 -81 [ESS] Twin",
                      "2412 -82 [WPA2-PSK-CCMP][ESS] Twin",
                      "2412 -83 [WPA2-PSK-CCMP][ESS] <img src=http://192.0.2.1/x>",
                      r"5180 -90 [WPA2-OWE-CCMP][ESS] \e[31mred")
MARKUP = "<img src=http://192.0.2.1/x>"
SHEET = {"ssid", "name", "kinds", "identity", "secret", "advice", "problem"}  # one below the other
CONNECTED = {"address": "10.20.2.15", "secret": None}


def test_join_and_wired(bed, panel):
    panel.press("Lab WPA2")
    panel.shows(advice="Leave it empty to use what the device has stored.")
    panel.type("secret", "wrong horse")
    panel.shows(problem="wrong passphrase or key", state="Not connected")
    panel.type("secret", SECRET)
    panel.shows(state="Lab WPA2", **CONNECTED)

    # The daemon dies as it stores what the switch says.
    bed.tools.script("fw_setenv", '[ "$1" != dynamicip ] || kill -KILL $PPID')
    panel.press("wiredTab")
    panel.shows(address="stored ipaddr", gateway="stored gatewayip", netmask="stored netmask")
    panel.press("dhcp")
    panel.shows(message="the daemon bxwifid went away")
    assert panel.item("dhcp")["checked"]
    assert not panel.item("store")["enabled"]
    panel.press("wirelessTab")
    panel.shows(state="The network service is not running")
    bed.daemon.process = None
    bed.daemon.start()

    panel.shows(state="Lab WPA2")
    panel.press("Lab WPA2")
    panel.press("disconnect")
    panel.shows(state="Not connected")
    panel.press("Lab WPA2")  # which joins it at once
    panel.shows(state="Lab WPA2", **CONNECTED)
    panel.press("Lab WPA2")
    panel.press("forget")
    panel.shows(state="Not connected")
    panel.press("Lab WPA2")
    panel.shows(focus="secret")


def test_known_networks(radio, panel):
    """How they are listed, and what is asked before one is joined again."""
    panel.shows(Twin="")
    for name, *login in ["Grüße"], ["Lab Enterprise", "--identity", "ada"], ["Lab WPA2"]:
        assert bxwifictl("connect", name, "--password-file", "-", *login, given=SECRET)[0] == 0
        panel.shows(state=name)
    assert bxwifictl("connect", "Lab Open")[0] == 0
    panel.hears("ListItem Lab WPA2 WPA2, known, signal 4 of 4",
                "ListItem Lab Open Connected, signal 3 of 4",
                "ListItem Lab Enterprise WPA2 Enterprise, known, signal 2 of 4")
    for name, question in ("Grüße", "secret"), ("Lab Enterprise", "identity"):
        panel.press(name)
        panel.shows(focus=question, progress=None)
        panel.press("cancel")
    panel.press("Twin")
    panel.shows(advice="There are several networks of this name. Choose how yours is protected.")
    assert panel.item("kinds")["displayText"] == "WPA, WPA2"
    panel.type("kinds", "", "Tab")
    panel.type("secret", SECRET)
    panel.shows(state="Twin", secret=None)
    panel.press("Lab Open")
    panel.shows(focus="join", progress=None, secret=None, advice="This network is not protected: "
                "others can read what is sent over it.")
    panel.press("cancel")
    panel.press("\033[31mred")
    panel.shows(focus="cancel", secret=None, advice="This device cannot join a network that is "
                "protected in this way.")
    assert not panel.item("join")["enabled"]
    panel.press("cancel")
    radio.table = [TABLE[1], TABLE[0].replace("-48", "-72"), TABLE[5]]
    panel.press("scan")
    for line in "Open open, known, signal 3 of 4", "WPA2 WPA2, known, signal 2 of 4":
        panel.hears("ListItem Lab " + line)
    assert comes_true(lambda: panel.item("Lab Open")["top"] < panel.item("Lab WPA2")["top"])
    assert panel.all("currentIndex", "NetworkList") == [1]  # which goes with the network
    assert panel.all("highlighted", "NetworkRow") == [False, False, True]
    radio.disconnect()  # which shows, though nobody asked
    panel.shows(state="Not connected")
    radio.table, radio.react = [], lambda _: None
    panel.press("scan")
    assert comes_true(lambda: panel.all("running", "BusyIndicator") == [True], 40)
    assert not panel.item("scan")["enabled"]
    radio.send_event("<3>CTRL-EVENT-SCAN-RESULTS ")
    panel.hears("StaticText No networks in sight")
    assert panel.all("running", "BusyIndicator") == [False]
    del radio.react


def test_under_way(radio, panel):
    """What the sheet shows of a join until it ends, in this way or that."""
    panel.join_nowhere()
    assert not panel.item("secret")["enabled"]
    assert panel.all("running", "BusyIndicator") == [False, True]
    panel.ask("key", "Esc")
    panel.shows(secret=None, state="Not connected")  # there is nothing to go back to

    panel.press(MARKUP)
    panel.type("secret", SECRET)
    panel.shows(state=MARKUP, secret=None)
    radio.table = TABLE[:7]
    panel.press("Grüße")
    panel.type("secret", "wrong horse")
    panel.run("width = 240")
    panel.shows(progress="Going back to the former network …")
    assert panel.item("progress")["lineCount"] == 2
    radio.table = TABLE
    radio.look()
    panel.shows(problem=f"refused; most likely a wrong passphrase; back in {MARKUP}", ssid="Grüße")
    # Wherever a name is shown, it is not read as markup.
    assert 3 * [0] == [item["textFormat"] for item in panel.ask("look")  # plain text
                       if MARKUP in item.get("text", "")]
    panel.press("cancel")
    panel.run("bar.problem = 'as long as this '.repeat(9)")
    assert panel.item("address")["lineCount"] > 3

    # The end of a join does nothing to a sheet that was opened since.
    panel.join_nowhere()
    panel.run(f"sheet.openForUri('WIFI:T:WPA;S:Lab WPA2;P:{SECRET};;')")
    panel.shows(state=MARKUP, problem=None, ssid="Lab WPA2", focus="secret")


def test_scanned_code(panel):
    """The sheet shows what a code says before it does that, and does nothing with a broken one."""
    panel.run(r"sheet.openForUri('WIFI:T:WPA;S:Lab\\')")
    panel.shows(problem="the code is cut off", focus="cancel", secret=None)
    assert not panel.item("join")["enabled"]
    panel.run(f"sheet.openForUri('WIFI:T:WPA;S:Lab WPA2;P:{SECRET};;')")
    panel.shows(ssid="Lab WPA2", secret=SECRET)
    panel.press("join")
    panel.shows(state="Lab WPA2", secret=None)
    panel.run(f"sheet.openForUri('WIFI:T:WPA;S:Twin;P:{SECRET};;')")
    panel.press("join")
    panel.shows(problem="several kinds of protection under this name; say which", focus="kinds")
    panel.press("join")
    panel.shows(state="Twin")


def test_screen_reader_and_tabulator(panel):
    panel.hears("PageTab Wi-Fi", "PageTab Wired", "StaticText Not connected", "Button Scan",
                "List Networks", "ListItem Lab WPA2 WPA2, signal 4 of 4",
                "ListItem Lab Open open, signal 3 of 4",
                "ListItem Lab Enterprise WPA2 Enterprise, signal 2 of 4",
                "ListItem Grüße WPA3, signal 2 of 4", "ListItem Lab WEP WEP, signal 1 of 4",
                "ListItem Twin several kinds of protection, signal 1 of 4",
                f"ListItem {MARKUP} WPA2, signal 1 of 4",
                "ListItem \033[31mred unsupported, signal 0 of 4", "Button Hidden network …")
    drawn = Counter((item["width"], item["height"]) for item in panel.ask("look")
                    if item["type"] == "QQuickRectangle" and item["opacity"] == 1)
    bars, locks = {(4, 4): 7, (4, 8): 4, (4, 12): 2, (4, 16): 1}, {(8, 12): 7, (12, 9): 7}
    assert {**bars, **locks}.items() <= drawn.items()
    panel.press("Lab Enterprise")
    assert panel.all("inputMethodHints") == [68, 70]  # of Qt; and dots for the password
    assert panel.all("echoMode") == [0, 2]
    panel.type("identity", "ada", "Tab")
    panel.hears("Button Hidden network …", "StaticText Join a network", "StaticText Lab Enterprise",
                "EditableText User name", "EditableText  Password", "CheckBox Show",
                "Button Cancel", "Button Join")
    tour = [item["objectName"] for _ in range(5) for item in panel.ask("key", "Tab")
            if item["activeFocus"] and item["objectName"]]
    assert tour == ["reveal", "cancel", "join", "identity", "secret"]
    panel.press("reveal")
    assert panel.all("echoMode") == [0, 0]
    panel.press("cancel")
    panel.press("wiredTab")
    panel.shows(address="stored ipaddr")
    assert panel.all("inputMethodHints") == [8, 8, 8]
    assert panel.all("text", "Label") == ["Address", "Gateway", "Network mask", ""]
    panel.hears("PageTab Wi-Fi", "PageTab Wired", "EditableText Address", "EditableText Gateway",
                "EditableText Network mask", "Button Store", "CheckBox Address by DHCP",
                "StaticText")


@pytest.mark.parametrize("language, share",
                         [("C", "share"), ("de_DE", "share"), ("en_US", "pseudo")])
def test_languages(radio, language, share):
    """All texts are translated and have their room, in whatever language; leaves pictures."""
    radio.table = TABLE[:7]
    panel = Panel(LC_ALL=language, XDG_DATA_DIRS=str(PANEL.parents[1] / share))
    numbers = iter(range(99))
    width = 320 if language == "en_US" else 400
    panel.run(f"width = {width}")

    def fits(item):
        return item["right"] <= width and not item.get("truncated") and (
            "truncated" not in item or item["contentWidth"] <= math.ceil(item["width"]))

    def look():
        time.sleep(0.3)  # what moves has arrived
        assert comes_true(lambda: all(map(fits, panel.ask("look"))))
        items = panel.ask("picture", f"panel-{language}-{next(numbers)}.png")
        assert len({item["right"] for item in items if item["objectName"] in SHEET}) < 2
        texts = panel.ask("hear") + [item["text"] for item in items if "textFormat" in item]
        assert language != "en_US" or [text for text in texts if not re.fullmatch(
            r"(\w+ )?(.*\[.*|10.*|WPA.*|WEP|Lab.*|Grüße|Twin|)", text)] == []

    panel.press("Lab WPA2")
    panel.type("secret", SECRET)
    panel.shows(state="Lab WPA2", **CONNECTED)
    for button in "wirelessTab", "Lab WPA2", "Lab Enterprise", "Lab Open", "Twin", "hidden":
        panel.press(button)
        look()
        panel.ask("key", "Esc")
    panel.press("Grüße")
    panel.type("secret", "wrong horse")
    assert comes_true(lambda: panel.item("problem").get("text"), 40)
    look()
    panel.press("cancel")
    panel.press("wiredTab")
    panel.shows(address="stored ipaddr")
    panel.press("store")
    assert comes_true(lambda: panel.item("message")["text"])
    look()
    panel.close()


def test_results(panel):
    """QML sees all fields of what the client brings."""
    assert bxwifictl("connect", "Lab Open")[0] == 0
    panel.shows(state="Lab Open", Twin="")
    assert list(panel.outcome("scan()")[3].values()) == [
        "Grüße", "02:00:00:00:04:00", -72, 5745, "[WPA2-SAE-CCMP][ESS]", 4, 149, "5 GHz", 2]
    assert list(panel.outcome("status()").values()) == [
        True, "Lab Open", "10.20.2.15", "02:00:00:00:02:00", 2437, "station", "CCMP", "TKIP",
        "NONE", "COMPLETED"]
    assert panel.outcome("wiredSettings()") == {
        "address": "stored ipaddr", "gateway": "stored gatewayip", "dhcp": True,
        "netmask": "stored netmask", "macAddress": "stored ethaddr"}


@pytest.mark.parametrize("program", ["CONSOLE", "PYTHON"])
def test_console(radio, program):
    console = subprocess.run([os.environ[program], "Lab WPA2", SECRET],
                             capture_output=True, text=True, timeout=60)
    assert console.stdout.startswith("-48 dBm  Lab WPA2\n"), console
    assert "\n-72 dBm  Grüße\n" in console.stdout, console
    assert "[31mred\n" in console.stdout and "\033" not in console.stdout, console
    assert console.stdout.endswith("\nJoined with the address 10.20.2.15\n"), console
