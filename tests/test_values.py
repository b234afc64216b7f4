# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""What the daemon takes from the texts and bytes that others send, in tables of both."""

import pytest
from harness.bed import Bed
from harness.bus import signal
from harness.records import network, record


@pytest.fixture(scope="module")
def bed():
    with Bed() as bed:
        bed.start()
        yield bed


LIST = ("network id\tssid\tbssid\tflags\n3\tTwice\tany\t[CURRENT]\n4\tTwice\tany\t\n"
        "5\tNo flags\tany\t\n6\tThree columns\tany\n7\tFive columns\tany\t\t\nx y\tText\tany\t\n")


@pytest.mark.parametrize("ssid, network_id", [
    ("ssid", None), ("Twice", "3"), ("twice", None), ("No flags", "5"), ("Three columns", None),
    ("Five columns", None), ("Text", "x y")])
def test_stored_network(bed, ssid, network_id):
    bed.supplicant.answer("LIST_NETWORKS", LIST)
    bed.bus.call("removeRequest", ssid)
    removal = [] if network_id is None else [f"REMOVE_NETWORK {network_id}"]
    assert bed.journal.take()[1:2] == removal


@pytest.mark.parametrize("reply, code, ssid, address", [
    ("bssid=b\nssid=Home\nwpa_state=COMPLETED\nip_address=10.0.0.2\n", 0, "Home", "10.0.0.2"),
    ("wpa_state=xcompletedx", 0, "", ""),
    ("wpa_state=SCANNING\nwpa_state=COMPLETED\n", 1, "", ""),
    ("p2p_wpa_state=COMPLETED\n", 1, "", ""),
    ("bssid=b\nip_address=10.0.0.2\n", 1, "", ""),
    ("ssid=\nip_address=10.0.0.2\n", 1, "", ""),
    ("ssid=Home\n", 1, "Home", ""),
    ("ssid=my ssid=net=1\nip_address=a\nip_address=b ip_address=c", 1, "my net=1", "b c"),
    ("ssid=ip_address=x", 1, "ip_address=x", "x"),
    ("ssid=one\nssid=two\nssid=\nip_address=a", 1, "one", "a"),
])
def test_status(bed, reply, code, ssid, address):
    bed.supplicant.answer("STATUS", reply)
    for method in "statusRequest", "ssidRequest", "ipRequest":
        bed.bus.call(method)
    signals = [entry for entry in bed.journal.take() if entry != "STATUS"]
    assert signals == [f"statusMessage({code})", f"ssidResult({ssid})", f"ipResult({address})"]


def test_full_status(bed):
    bed.supplicant.answer("STATUS", "mode=station\nfreq=\nbssid=old\nbssid=b\nssid=a=b\n"
                          "ssid_verified=1\ngroup_cipher=TKIP\npairwise_cipher=CCMP\n"
                          "group_mgmt=BIP\nkey_mgmt=WPA2-PSK\nwpa_state=COMPLETED\n=x\n")
    bed.bus.call("fullStatusRequest")
    status = record("b", "", "a", "station", "CCMP", "BIP", "WPA2-PSK", "COMPLETED", None)
    assert bed.journal.take()[-1] == signal("fullStatusResult", status)


@pytest.mark.parametrize("ifconfig, route, address, gateway, netmask", [
    # busybox
    ("      inet addr:10.0.0.2  Bcast:10.0.0.255  Mask:255.255.255.0\n"
     "      inet6 addr: fe80::1/64 Scope:Link\n"
     "inet addr:9.9.9.9  Link encap:Ethernet  HWaddr 02:00:00:00:00:01\n",
     "0.0.0.0  10.0.0.9  0.0.0.0  UG  0 0 0 wlan0\n0.0.0.0  10.0.0.1  0.0.0.0  UG  0 0 0 eth0\n"
     "10.0.0.0 10.0.0.8  255.0.0.0 U  0 0 0 eth0\n", "10.0.0.2", "10.0.0.1", "255.255.255.0"),
    ("\tinet addr:10.0.0.2\n", "0.0.0.0\t1.1.1.1 eth0\n0.0.0.0\t2.2.2.2 eth0\n", "10.0.0.2",
     "2.2.2.2", None),
    ("inet addr:1.1.1.1 Mask:2.2.2.2\ninet addr:3.3.3.3\n", "0.0.0.0 1.1.1.1 eth0 \n", "3.3.3.3",
     None, "2.2.2.2"),
    # another form
    ("inet 10.0.0.2  netmask 255.0.0.0 addr:1\n", "default 1.1.1.1 eth0\n", None, None, None),
])
def test_wired_port(bed, ifconfig, route, address, gateway, netmask):
    bed.tools.output("ifconfig", ifconfig)
    bed.tools.output("route", route)
    bed.tools.output("fw_printenv", "ethaddr=a=b\n")
    bed.bus.call("dynamicRequest")
    expected = record(address, gateway, netmask, None, "a")
    assert bed.journal.take()[-2] == signal("staticResult", expected)


@pytest.mark.parametrize("output, key", [
    ('\t#psk="secret"\n\tpsk=0a1b\n}\n', "0a1b"), ("PSK=0A1B=2c\n", "0A1B"),
    ("Passphrase must be 8..63 characters\n", "")])
def test_printed_key(bed, output, key):
    bed.tools.output("wpa_passphrase", output)
    bed.bus.call("connectRequest", network("WPA", "Home", "secret"))
    assert f"SET_NETWORK OK\n psk {key}" in bed.journal.take()


FLAGS = record("a", "b", "c", "EAP")


@pytest.mark.parametrize("payload, ssid, identity, password", [
    (FLAGS + record("e", "f", "g", True), "e", "g", "f"),
    (FLAGS + record("e", "f", "g", False) + b"\xff", "e", "g", "f"),
    (FLAGS + record("e"), "e", "", ""),
    (FLAGS + bytes.fromhex("0000000800610062"), "", "", ""),
    (FLAGS + bytes.fromhex("00000003") + record("f", "g"), "", "g", "f"),
    (FLAGS + record("", None, "g"), "", "g", ""),
])
def test_decoding(bed, payload, ssid, identity, password):
    bed.bus.call("connectRequestHidden", payload)
    values = [entry.split('"')[1] for entry in bed.journal.take() if '"' in entry]
    assert values == [ssid, identity, password]
