# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""What each bus method leads to: commands, to the byte, tool runs and signals in their order."""

import os
from pathlib import Path
from xml.etree import ElementTree

import pytest
from harness.bed import Bed
from harness.bus import DAEMON, SERVICE, signal
from harness.records import network, record
from jeepney import new_method_call


@pytest.fixture(scope="module")
def bed():
    with Bed() as bed:
        bed.supplicant.answer("ADD_NETWORK", "7\n")
        bed.supplicant.answer("LIST_NETWORKS", "network id / ssid / bssid / flags\n"
                              "0\tHome\tany\t\n1\tHome\tany\t\n2\tCafe %1\tany\t\n")
        bed.supplicant.answer("STATUS", "bssid=02:00:00:00:00:01\nssid=Home\n"
                              "wpa_state=COMPLETED\nip_address=10.0.0.2\n")
        bed.tools.output("wpa_passphrase", '\t#psk="x"\n\tpsk=c0de\n')
        bed.tools.script("fw_printenv", """case $1 in
            ipaddr) echo ipaddr=10.0.0.2 ;;
            ethaddr) echo ethaddr=02:00:00:00:00:02 ;;
            dynamicip) echo dynamicip=0 ;;
            esac""")
        bed.tools.output("ifconfig", " inet addr:10.0.0.3  Mask:255.0.0.0\n")
        bed.tools.remove("route")
        # Time for a signal to arrive, on a busy machine, before what happens next is written down.
        bed.supplicant.pace = 0.1
        bed.daemon.environment["PACE"] = "0.1"
        bed.start()
        yield bed


def check(bed, method, *arguments, leads_to):
    assert bed.bus.call(method, *arguments).body == ()
    assert bed.journal.take() == leads_to


def setting(network_id, parameter, value):
    return f"SET_NETWORK {network_id} {parameter} {value}"


def added(ssid):
    return ["ADD_NETWORK", setting("7\n", "ssid", f'"{ssid}"')]


P59 = "p" * 59


@pytest.mark.parametrize("payload, found, network_id, key_mgmt, psk", [
    (network("[WPA2-PSK-CCMP][ESS]", "Home", "secret 1"), ["wpa_passphrase|Home|secret 1"], "0",
     "NULL", "c0de"),
    (network("[wpa2-psk-ccmp]", "home"), added("home") + ["wpa_passphrase|home|"], "7\n", "NULL",
     "c0de"),
    (network("[WEP][ESS]", 'a"%2\\', "abcde"), added('a"%2\\'), "7\n", "NONE", "NULL"),
    (network("WPA", "Cafe %1", "p" + P59), ["wpa_passphrase|Cafe %1|p" + P59], "2", "NULL", "c0de"),
    (network("[WPA2-EAP-CCMP]", "Home", "%1" + P59), [], "0", "NULL", "%1" + P59),
    (b"", added(""), "7\n", "NONE", "NULL"),
])
def test_join(bed, payload, found, network_id, key_mgmt, psk):
    check(bed, "connectRequest", payload, leads_to=[
        "statusMessage(5)", "LIST_NETWORKS", *found, setting(network_id, "key_mgmt", key_mgmt),
        setting(network_id, "psk", psk), f"SELECT_NETWORK {network_id}", "SAVE_CONFIG", "sync",
        "RECONFIGURE"])


def with_key(parameter, value):
    return [setting("7\n", parameter, f'"{value}"'), "ENABLE_NETWORK 7\n", "SAVE_CONFIG",
            "SELECT_NETWORK 7\n", "sync", "RECONFIGURE"]


def with_login(identity, password):
    return [setting("7\n", "eap", "PEAP"), setting("7\n", "identity", f'"{identity}"'),
            setting("7\n", "password", f'"{password}"'), "ENABLE_NETWORK 7\n", "SELECT_NETWORK 7\n",
            "sync"]


@pytest.mark.parametrize("payload, ssid, key_mgmt, rest", [
    (network("WPA-PSK", "Home", 'a "%1%4" z'), "Home", "WPA-PSK", with_key("psk", 'a "%1%4" z')),
    (network("WEP", "Old", "abcde"), "Old", "NONE", with_key("wep_key0", "abcde")),
    (network("wep", "Old", "abcde"), "Old", "wep", with_key("psk", "abcde")),
    (network("WPA-EAP", "Work", "lovelace", "ada %3"), "Work", "WPA-EAP",
     with_login("ada %3", "lovelace")),
    (network("WEP EAP", "Work", "p", "i"), "Work", "NONE", with_login("i", "p")),
])
def test_join_by_hand(bed, payload, ssid, key_mgmt, rest):
    check(bed, "connectRequestHidden", payload, leads_to=[
        "DISCONNECT", *added(ssid), setting("7\n", "scan_ssid", "1"),
        setting("7\n", "key_mgmt", key_mgmt), setting("7\n", "pairwise", "CCMP"),
        setting("7\n", "group", "CCMP"), *rest])


STATUS = record("02:00:00:00:00:01", None, "Home", None, None, None, None, "COMPLETED", "10.0.0.2")
STORED = record("10.0.0.2\n", "", "", None, "02:00:00:00:00:02\n")
LIVE = record("10.0.0.3", None, "255.0.0.0", None, "02:00:00:00:00:02\n")


@pytest.mark.parametrize("method, arguments, leads_to", [
    ("removeRequest", ["Home"], ["LIST_NETWORKS", "REMOVE_NETWORK 0", "SAVE_CONFIG", "RECONFIGURE",
                                 "sync", "statusMessage(8)"]),
    ("removeRequest", ["HOME"], ["LIST_NETWORKS"]),
    ("disableRequest", [], ["statusMessage(1)", "DISCONNECT", "SAVE_CONFIG", "sync", "STATUS",
                            "ssidResult(Home)", "STATUS", "ipResult(10.0.0.2)"]),
    ("enableRequest", [], []),
    ("scanRequest", [], ["statusMessage(2)", "SCAN"]),
    ("statusRequest", [], ["STATUS", "statusMessage(0)"]),
    ("ssidRequest", [], ["STATUS", "ssidResult(Home)"]),
    ("ipRequest", [], ["STATUS", "ipResult(10.0.0.2)"]),
    ("fullStatusRequest", [], ["STATUS", signal("fullStatusResult", STATUS)]),
    ("staticRequest", [], ["fw_printenv|ipaddr", "fw_printenv|gatewayip", "fw_printenv|netmask",
                           "fw_printenv|ethaddr", signal("staticResult", STORED)]),
    ("dynamicRequest", [], ["fw_printenv|dynamicip", "ifconfig|eth0", "fw_printenv|ethaddr",
                            signal("staticResult", LIVE), "dynamicResult(True)"]),
    ("setStaticRequest", [record(" 10.0.0.2\n", "a \t b", "c\n d", "reserved", "mac")],
     ["fw_setenv|ipaddr|10.0.0.2", "fw_setenv|gatewayip|a b", "fw_setenv|netmask|c d"]),
    ("setStaticRequest", [b""],
     ["fw_setenv|ipaddr|", "fw_setenv|gatewayip|", "fw_setenv|netmask|"]),
    ("setDynamic", [True], ["fw_setenv|dynamicip|1"]),
    ("setDynamic", [False], ["fw_setenv|dynamicip"]),
])
def test_other_methods(bed, method, arguments, leads_to):
    check(bed, method, *arguments, leads_to=leads_to)


def members(introspection):
    """The members of the daemon's interface and their arguments, by name and type."""
    interface = ElementTree.fromstring(introspection).find(f"interface[@name='{SERVICE}']")
    return [(member.tag, member.get("name"),
             [(argument.get("name"), argument.get("type")) for argument in member.iter("arg")])
            for member in interface]


def test_interface(bed):
    shipped = members(Path(os.environ["INTERFACE"]).read_text())
    assert len(shipped) == 23
    introspectable = DAEMON.with_interface("org.freedesktop.DBus.Introspectable")
    reply = bed.bus.request(new_method_call(introspectable, "Introspect"))
    assert members(reply.body[0]) == shipped
