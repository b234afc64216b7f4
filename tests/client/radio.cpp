// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "radio.h"

Radio::Radio(TestBed &testBed) : bed(testBed)
{
    setStatus("wpa_state=DISCONNECTED\n");
    bed.supplicant.answer("ADD_NETWORK", {"0\n"});
    bed.supplicant.answer("LIST_NETWORKS", {"network id / ssid / bssid / flags\n"});
    connect(&timer, &QTimer::timeout, this, &Radio::lookAtCommands);
    timer.start(10);
}

void Radio::setNetworks(const QByteArrayList &rows)
{
    networks = "bssid / frequency / signal level / flags / ssid\n" + rows.join('\n') + '\n';
    bed.supplicant.answer("SCAN_RESULTS", {networks});
}

void Radio::lookAtCommands()
{
    const QByteArrayList entries = bed.journal.entries();
    if (entries.size() < seen) // the journal was taken
        seen = 0;
    for (; seen < entries.size(); ++seen)
        react(entries[seen]);
}

void Radio::react(const QByteArray &command)
{
    if (command == "SCAN") {
        bed.supplicant.sendEvent("<3>CTRL-EVENT-SCAN-RESULTS ");
    } else if (command == "DISCONNECT") {
        setStatus("wpa_state=DISCONNECTED\n");
    } else if (command.startsWith("ADD_NETWORK")) {
        hasSecret = secret.isEmpty();
    } else if (command.startsWith("SET_NETWORK")) {
        if (const int at = command.indexOf(" ssid \""); at > 0)
            ssid = command.mid(at + 6);
        hasSecret |= command.endsWith(secret);
    } else if (command.startsWith("SELECT_NETWORK")) {
        isSelected = true;
    } else if (command == "RECONFIGURE" && isSelected) {
        isSelected = false;
        associate();
    } else if (command.startsWith("REMOVE_NETWORK")) {
        bed.supplicant.answer("LIST_NETWORKS", {"network id / ssid / bssid / flags\n"});
    }
}

void Radio::associate()
{
    const QByteArray name = ssid.mid(1, ssid.size() - 2);
    bed.supplicant.answer("LIST_NETWORKS", {"header\n0\t" + name + "\tany\t[CURRENT]\n"});
    if (!networks.contains('\t' + name + '\n'))
        return;
    if (!hasSecret) {
        bed.supplicant.sendEvent("<3>CTRL-EVENT-SSID-TEMP-DISABLED id=0 reason=WRONG_KEY");
        return;
    }
    setStatus("bssid=02:00:00:00:01:00\nfreq=2412\nssid=" + name +
              "\nkey_mgmt=WPA2-PSK\nwpa_state=COMPLETED\nip_address=10.20.2.15\n");
    bed.supplicant.sendEvent("<3>CTRL-EVENT-CONNECTED - Connection to 02:00:00:00:01:00 completed");
}

void Radio::setStatus(const QByteArray &reply)
{
    bed.supplicant.answer("STATUS", {reply});
}
