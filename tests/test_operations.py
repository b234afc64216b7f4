# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""What each bus method leads to: commands, to the byte, tool runs and signals in their order, and
what is read in records, replies and tool output."""

import os
from pathlib import Path
from xml.etree import ElementTree

import pytest
from harness.bed import Bed
from harness.bus import DAEMON, SERVICE, network, record, signal
from jeepney import new_method_call

LIST = ("network id\tssid\tbssid\tflags\n0\tHome\tany\t[CURRENT]\n1\tHome\tany\t\n"
        "2\tCafe %1\tany\t\n3\tThree\tany\n4\tFive\tany\t\t\nx y\tText\tany\t\n")


@pytest.fixture(scope="module")
def bed():
    with Bed() as bed:
        bed.supplicant.answer("ADD_NETWORK", "7\n")
        bed.supplicant.answer("LIST_NETWORKS", LIST)
        bed.tools.script("wpa_passphrase", """case $2 in
            short) echo Passphrase must be 8..63 characters ;;
            *) printf '\t#psk="x"\n\tPSK=c0de=2c\n}\n' ;;
            esac""")
        bed.tools.script("fw_printenv", """case $1$POSIXLY_CORRECT in
            ipaddr) echo ipaddr=10.0.0.2 ;;
            ethaddr) echo ethaddr=02:00:00:00:00:02=x ;;
            dynamicip) echo dynamicip=0 ;;
            esac""")
        # A value is none of fw_setenv's options, whatever it begins with.
        bed.tools.script("fw_setenv", "[ $# != 2 ] || [ $POSIXLY_CORRECT ] || exec ${0%/*}/sync")
        bed.start()
        yield bed


def check(bed, method, *arguments, leads_to):
    bed.bus.call(method, *arguments)
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
    (network("[WEP][ESS]", 'ä"%2\\', "abcde"), added('ä"%2\\'), "7\n", "NONE", "NULL"),
    (network("WPA", "Cafe %1", "p" + P59), ["wpa_passphrase|Cafe %1|p" + P59], "2", "NULL", "c0de"),
    (network("WPA", "Home", "short"), ["wpa_passphrase|Home|short"], "0", "NULL", ""),
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


EAP = record("a", "b", "c", "EAP")


@pytest.mark.parametrize("payload, ssid, key_mgmt, rest", [
    (network("WPA-PSK", "Home", 'a "%1%4" z'), "Home", "WPA-PSK", with_key("psk", 'a "%1%4" z')),
    (network("[WEP]", "Old", "abcde"), "Old", "NONE", with_key("wep_key0", "abcde")),
    (network("wep", "Old", "abcde"), "Old", "wep", with_key("psk", "abcde")),
    (network("WPA-EAP", "Work", "lovelace", "ada %3"), "Work", "WPA-EAP",
     with_login("ada %3", "lovelace")),
    (network("WEP EAP", "Work", "p", "i"), "Work", "NONE", with_login("i", "p")),
    # a flag and bytes behind it; too few; a length beyond the end, an odd one; the null text
    (EAP + record("e", "f", "g", False) + b"\xff", "e", "EAP", with_login("g", "f")),
    (EAP + record("e"), "e", "EAP", with_login("", "")),
    (EAP + bytes.fromhex("0000000800610062"), "", "EAP", with_login("", "")),
    (EAP + bytes.fromhex("00000003") + record("f", "g"), "", "EAP", with_login("g", "f")),
    (EAP + record("", None, "g"), "", "EAP", with_login("g", "")),
])
def test_join_by_hand(bed, payload, ssid, key_mgmt, rest):
    check(bed, "connectRequestHidden", payload, leads_to=[
        "DISCONNECT", *added(ssid), setting("7\n", "scan_ssid", "1"),
        setting("7\n", "key_mgmt", key_mgmt), setting("7\n", "pairwise", "CCMP"),
        setting("7\n", "group", "CCMP"), *rest])


STORED = record("10.0.0.2\n", "", "", None, "02:00:00:00:00:02")


def removal(network_id):
    return ["LIST_NETWORKS", f"REMOVE_NETWORK {network_id}", "SAVE_CONFIG", "RECONFIGURE", "sync",
            "statusMessage(8)"]


@pytest.mark.parametrize("method, arguments, leads_to", [
    ("removeRequest", ["Home"], removal(0)),
    ("removeRequest", ["Text"], removal("x y")),
    *(("removeRequest", [ssid], ["LIST_NETWORKS"]) for ssid in ("ssid", "HOME", "Three", "Five")),
    ("enableRequest", [], []),
    ("scanRequest", [], ["statusMessage(2)", "SCAN"]),
    ("setStaticRequest", [record(" 10.0.0.2\n", "a \t b", "c\n d", "reserved", "mac")],
     ["fw_setenv|ipaddr|10.0.0.2", "fw_setenv|gatewayip|a b", "fw_setenv|netmask|c d"]),
    ("setStaticRequest", [b""],
     ["fw_setenv|ipaddr|", "fw_setenv|gatewayip|", "fw_setenv|netmask|"]),
    ("setDynamic", [True], ["fw_setenv|dynamicip|1"]),
    ("setDynamic", [False], ["fw_setenv|dynamicip"]),
    ("staticRequest", [], ["fw_printenv|ipaddr", "fw_printenv|gatewayip", "fw_printenv|netmask",
                           "fw_printenv|ethaddr", signal("staticResult", STORED)]),
])
def test_other_methods(bed, method, arguments, leads_to):
    check(bed, method, *arguments, leads_to=leads_to)


@pytest.mark.parametrize("reply, code, ssid, address", [
    ("bssid=b\nssid=Home\nwpa_state=COMPLETED\nip_address=10.0.0.2\n", 0, "Home", "10.0.0.2"),
    ("wpa_state=xcompletedx", 0, "", ""),
    ("wpa_state=SCANNING\nwpa_state=COMPLETED\n", 1, "", ""),
    ("p2p_wpa_state=COMPLETED\n", 1, "", ""),
    ("bssid=b\nip_address=10.0.0.2\n", 1, "", ""),
    ("ssid=\nip_address=10.0.0.2\n", 1, "", ""),
    ("ssid=my ssid=net=1\nip_address=a\nip_address=b ip_address=c", 1, "my net=1", "b c"),
    ("ssid=ip_address=x", 1, "ip_address=x", "x"),
    ("ssid=one\nssid=two\nssid=\nip_address=a", 1, "one", "a"),
])
def test_status(bed, reply, code, ssid, address):
    bed.supplicant.answer("STATUS", reply)
    answers = ["STATUS", f"ssidResult({ssid})", "STATUS", f"ipResult({address})"]
    check(bed, "statusRequest", leads_to=["STATUS", f"statusMessage({code})"])
    check(bed, "ssidRequest", leads_to=answers[:2])
    check(bed, "ipRequest", leads_to=answers[2:])
    check(bed, "disableRequest",
          leads_to=["statusMessage(1)", "DISCONNECT", "SAVE_CONFIG", "sync", *answers])


def test_full_status(bed):
    bed.supplicant.answer("STATUS", "mode=station\nfreq=\nbssid=old\nbssid=b\nssid=a=b\n"
                          "ssid_verified=1\ngroup_cipher=TKIP\npairwise_cipher=CCMP\n"
                          "group_mgmt=BIP\nkey_mgmt=WPA2-PSK\nwpa_state=COMPLETED\n=x\n")
    status = record("b", "", "a", "station", "CCMP", "BIP", "WPA2-PSK", "COMPLETED", None)
    check(bed, "fullStatusRequest", leads_to=["STATUS", signal("fullStatusResult", status)])


@pytest.mark.parametrize("ifconfig, route, address, gateway, netmask", [
    # busybox
    ("      inet addr:10.0.0.2  Bcast:10.0.0.255  Mask:255.255.255.0\n"
     "      inet6 addr: fe80::1/64 Scope:Link\n"
     "inet addr:9.9.9.9  Link encap:Ethernet  HWaddr 02:00:00:00:00:01\n",
     "0.0.0.0  10.0.0.9  0.0.0.0  UG  0 0 0 wlan0\n0.0.0.0  10.0.0.1  0.0.0.0  UG  0 0 0 eth0\n"
     "10.0.0.0 10.0.0.8  255.0.0.0 U  0 0 0 eth0\n", "10.0.0.2", "10.0.0.1", "255.255.255.0"),
    ("\tinet addr:10.0.0.2\n", "0.0.0.0\t1.1.1.1 eth0\n0.0.0.0\t2.2.2.2 eth0\n", "10.0.0.2",
     "2.2.2.2", None),
    ("inet addr:1.1.1.1 Mask:2.2.2.2 Masks:9\ninet addr:3.3.3.3 addrs:9\n",
     "0.0.0.0 1.1.1.1 eth0 \n", "3.3.3.3", None, "2.2.2.2"),
    # another form
    ("inet 10.0.0.2  netmask 255.0.0.0 addr:1\n", "default 1.1.1.1 eth0\n", None, None, None),
])
def test_wired_port(bed, ifconfig, route, address, gateway, netmask):
    bed.tools.output("ifconfig", ifconfig)
    bed.tools.output("route", route)
    live = record(address, gateway, netmask, None, "02:00:00:00:00:02")
    check(bed, "dynamicRequest", leads_to=[
        "fw_printenv|dynamicip", "ifconfig|eth0", "route|-n", "fw_printenv|ethaddr",
        signal("staticResult", live), "dynamicResult(True)"])


def interface(introspection):
    found = ElementTree.fromstring(introspection).find(f"interface[@name='{SERVICE}']")
    return ElementTree.canonicalize(ElementTree.tostring(found), strip_text=True)


def test_interface(bed):
    introspectable = DAEMON.with_interface("org.freedesktop.DBus.Introspectable")
    described, = bed.bus.request(new_method_call(introspectable, "Introspect"))
    assert interface(described) == interface(Path(os.environ["INTERFACE"]).read_text())
