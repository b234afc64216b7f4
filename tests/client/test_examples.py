# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""The panel under a user's fingers, as paneldriver.cpp moves them, the module that it is made with,
and the examples without a window."""

import os
import re
import subprocess
import time
from collections import Counter

import pytest

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


def test_join_and_wired(bed, panel):
    panel.press("Lab WPA2")
    panel.shows(advice="Leave it empty to use what the device has stored.")
    panel.type("secret", "wrong horse")
    panel.shows(problem="wrong passphrase or key", state="Not connected")
    panel.type("secret", SECRET)
    panel.shows(state="Lab WPA2", address="10.20.2.15", secret=None)

    # The daemon dies as it stores what the switch says.
    bed.tools.script("fw_setenv", '[ "$1" != dynamicip ] || kill -KILL $PPID')
    panel.press("wiredTab")
    panel.shows(address="stored ipaddr", gateway="stored gatewayip", netmask="stored netmask")
    panel.press("dhcp")
    panel.shows(message="the daemon bxwifid went away")
    assert panel.run("memory.item('dhcp').checked")
    assert panel.run("memory.item('store').enabled") is False
    panel.press("wirelessTab")
    panel.shows(state="The network service is not running")
    bed.daemon.process = None
    bed.daemon.start()

    panel.shows(state="Lab WPA2")
    panel.press("Lab WPA2", "disconnect")
    panel.shows(state="Not connected")
    panel.press("Lab WPA2")  # which joins it at once
    panel.shows(state="Lab WPA2", address="10.20.2.15", secret=None)
    panel.press("Lab WPA2", "forget")
    panel.shows(state="Not connected")
    panel.press("Lab WPA2")
    panel.shows(focus="secret")


def test_known_networks(radio, panel):
    """How they are listed, and what is asked before one is joined again."""
    panel.shows(Twin="")
    for name in "Grüße", "Lab WPA2":
        assert bxwifictl("connect", name, "--password-file", "-", given=SECRET)[0] == 0
    assert bxwifictl("connect", "Lab Open")[0] == 0
    panel.hears("ListItem Lab WPA2 WPA2, known, signal 4 of 4",
                "ListItem Lab Open Connected, signal 3 of 4 selected")
    panel.press("Grüße")
    panel.shows(focus="secret", progress=None)
    panel.press("cancel", "Twin")
    panel.shows(advice="There are several networks of this name. Choose how yours is protected.")
    assert panel.run("memory.item('kinds').displayText") == "WPA, WPA2"
    panel.run("driver.key('Tab')")
    panel.type("secret", SECRET)
    panel.shows(state="Twin", secret=None)
    panel.press("Lab Open")
    panel.shows(focus="join", progress=None, secret=None, advice="This network is not protected: "
                "others can read what is sent over it.")
    panel.press("cancel", "\033[31mred")
    panel.shows(focus="cancel", secret=None, advice="This device cannot join a network that is "
                "protected in this way.")
    assert panel.run("memory.item('join').enabled") is False
    radio.table = [TABLE[1], TABLE[0].replace("-48", "-72"), TABLE[5]]
    panel.press("cancel", "scan")
    panel.hears("ListItem Lab WPA2 WPA2, known, signal 2 of 4",  # as it was the first to be drawn
                "ListItem Lab Open open, known, signal 3 of 4")
    panel.waits("memory.item('Lab Open').y < memory.item('Lab WPA2').y")
    assert panel.all("NetworkList", "item.currentIndex") == [1]  # which goes with the network
    assert panel.all("NetworkRow", "item.highlighted") == [False, False, True]
    radio.networks = {}
    panel.press("Twin", "forget")
    panel.shows(address="no network is stored by that name")
    radio.disconnect()  # which shows, though nobody asked
    panel.shows(state="Not connected")
    radio.table, radio.react = [], lambda _: None
    panel.press("scan")
    panel.waits("wifi.scanning")
    assert panel.all("BusyIndicator", "item.running") == [True]
    assert panel.run("memory.item('scan').enabled") is False
    radio.send_event("<3>CTRL-EVENT-SCAN-RESULTS ")
    panel.hears("StaticText No networks in sight")
    assert panel.all("BusyIndicator", "item.running") == [False]


def test_under_way(radio, panel):
    """What the sheet shows of a join until it ends, in this way or that."""
    panel.press("hidden")
    panel.type("name", "Nowhere", "Tab, Tab")
    panel.type("secret", SECRET)
    panel.shows(progress="Joining the network …")
    assert panel.run("memory.item('secret').enabled") is False
    assert panel.all("BusyIndicator", "item.running") == [False, True]
    panel.run("driver.key('Esc')")
    panel.shows(secret=None, state="Not connected")  # there is nothing to go back to

    panel.run("width = 240")
    panel.press(MARKUP)
    panel.waits("memory.item('ssid').truncated")
    panel.type("secret", SECRET)
    panel.shows(state=MARKUP, secret=None)
    radio.table = TABLE[:7]
    panel.press("Grüße", secret="wrong horse")
    panel.shows(progress="Going back to the former network …")
    assert panel.run("memory.item('progress').lineCount") > 1
    radio.table = TABLE
    radio.look()
    panel.shows(problem=f"refused; most likely a wrong passphrase; back in {MARKUP}", ssid="Grüße")
    # Wherever a name is shown, it is not read as markup.
    plain = f"item.text.includes('{MARKUP}') && item.textFormat === Text.PlainText"
    assert panel.all("Label", plain).count(True) == 3
    panel.press("cancel")

    # The end of a join does nothing to a sheet that was opened since.
    radio.table = []
    panel.press("Lab WPA2", secret=SECRET)
    panel.shows(progress="Joining the network …")
    radio.table = TABLE
    panel.run(f"sheet.openForUri('WIFI:T:WPA;S:Twin;P:{SECRET};;')")
    panel.shows(state=MARKUP, problem=None, ssid="Twin", focus="secret")

    radio.react = lambda _: None
    radio.answer("STATUS", "FAIL\n")
    panel.press("cancel", "scan")
    panel.shows(address="the daemon has no supplicant to talk to")
    assert panel.run("memory.item('address').lineCount") > 1


def test_scanned_code(radio, panel):
    """The sheet shows what a code says before it does that, and does nothing with a broken one."""
    panel.run(r"sheet.openForUri('WIFI:T:WPA;S:Lab\\')")
    panel.shows(problem="the code is cut off", focus="cancel", secret=None)
    assert panel.run("memory.item('join').enabled") is False
    panel.run(f"sheet.openForUri('WIFI:T:WPA2-EAP;S:Lab Enterprise;I:ada;P:{SECRET};;')")
    panel.shows(ssid="Lab Enterprise", identity="ada", secret=SECRET)
    panel.press("join")
    panel.shows(state="Lab Enterprise", secret=None)
    assert [network["identity"] for network in radio.networks.values()] == ["ada"]
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
    lit = "item.opacity === 1 && item.width + ' ' + item.height"  # of the bars, and the locks
    assert {"4 4": 7, "4 8": 4, "4 12": 2, "4 16": 1, "8 12": 7, "12 9": 7}.items() <= Counter(
        panel.all("QQuickRectangle", lit)).items()
    panel.run("memory.item('scan').forceActiveFocus(), driver.key('Tab, Down, Down, Return')")
    fields = "TextField", "[item.inputMethodHints, item.echoMode]"  # as Qt numbers them
    assert panel.all(*fields) == [[68, 0], [70, 2]]
    panel.type("identity", "ada", "Tab")
    panel.hears("Button Hidden network …", "StaticText Join a network", "StaticText Lab Enterprise",
                "EditableText User name", "EditableText  Password", "CheckBox Show",
                "Button Cancel", "Button Join")
    tour = [panel.run("driver.key('Tab'), activeFocusItem.objectName") for _ in range(5)]
    assert tour == ["reveal", "cancel", "join", "identity", "secret"]
    panel.press("reveal")
    assert panel.all(*fields) == [[68, 0], [70, 0]]
    panel.press("cancel", "wiredTab")
    panel.shows(address="stored ipaddr")
    assert panel.all(*fields) == 3 * [[8, 0]]
    assert panel.all("Label", "item.text") == ["Address", "Gateway", "Network mask", ""]
    panel.hears("PageTab Wi-Fi", "PageTab Wired", "EditableText Address", "EditableText Gateway",
                "EditableText Network mask", "Button Store", "CheckBox Address by DHCP",
                "StaticText")


@pytest.mark.parametrize("language, share, width", [
    ("C", "share", 400), ("de_DE", "share", 400), ("en_US", "pseudo", 320)])
def test_languages(radio, language, share, width):
    """All texts are translated and have their room, in whatever language; leaves pictures."""
    radio.table = TABLE[:7]
    panel = Panel(LC_ALL=language, XDG_DATA_DIRS=str(PANEL.parents[1] / share))
    panel.run(f"width = {width}")

    def look(number):
        time.sleep(0.3)  # what moves has arrived
        panel.waits("memory.items().every(item => item.mapToItem(null, item.width, 0).x <= width &&"
                    " !item.truncated && !(item.lineCount && item.contentWidth > item.width + 1))")
        assert panel.run(f"driver.picture('panel-{language}-{number}.png')")
        assert share != "pseudo" or [
            text for text in panel.run("driver.hear()") if not re.fullmatch(
                r"(\w+ )?(.*\[.*|10.*|WPA.*|WEP|Lab.*|Grüße|Twin|)", text)] == []

    panel.press("Lab WPA2", secret=SECRET)
    panel.shows(state="Lab WPA2", address="10.20.2.15", secret=None)
    for number, button in enumerate(["wirelessTab", "Lab WPA2", "Lab Enterprise", "Lab Open",
                                     "Twin", "hidden"]):
        panel.press(button)
        look(number)
        panel.run("driver.key('Esc')")
    panel.press("Grüße", secret="wrong horse")
    panel.waits("memory.item('problem').text")
    look(6)
    panel.press("cancel", "wiredTab")
    panel.shows(address="stored ipaddr")
    panel.press("store")
    panel.waits("memory.item('message').text")
    look(7)
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
    assert panel.outcome("wiredSettings()")["macAddress"] == "stored ethaddr"


@pytest.mark.parametrize("program", ["CONSOLE", "PYTHON"])
def test_console(radio, program):
    for arguments, end in (
            [], ""), (["Lab WPA2", SECRET], "Joined with the address 10.20.2.15\n"), (
            ["Lab WPA2", "wrong horse"], "Not joined: wrong passphrase.*\n"):
        console = subprocess.run([os.environ[program], *arguments], text=True, timeout=60,
                                 stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        assert re.fullmatch(r"-48 dBm  Lab WPA2\n[^\033]*\n-72 dBm  Grüße\n[^\033]*\[31mred\n"
                            + end, console.stdout), console
        assert (console.returncode != 0) == ("Not" in end)
