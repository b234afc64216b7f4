// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "harness/testbed.h"

#include <QTest>
#include <QTimer>

/// For what other processes do, however busy the machine is.
#define EVENTUALLY(condition) QTRY_VERIFY_WITH_TIMEOUT(condition, 30000)

/// Networks on the air around the fake supplicant, while the event loop runs: a scan finds them,
/// and the first can be joined with the right key.
class Radio
{
public:
    /// `scanTable` holds rows as the supplicant prints them.
    Radio(TestBed &testBed, const QByteArrayList &scanTable, const QByteArray &rightKey)
        : bed(testBed), ssid(scanTable[0].split('\t').last()), key(rightKey)
    {
        bed.supplicant.answer("SCAN_RESULTS", {"header\n" + scanTable.join('\n') + '\n'});
        bed.supplicant.answer("STATUS", {"wpa_state=DISCONNECTED\n"});
        bed.supplicant.answer("LIST_NETWORKS", {"header\n"});
        bed.supplicant.answer("ADD_NETWORK", {"0\n"});
        QObject::connect(&timer, &QTimer::timeout, [this] { followCommands(); });
        timer.start(10);
    }

private:
    void followCommands()
    {
        const QByteArrayList commands = bed.journal.entries();
        if (commands.size() < seen) // the journal was taken
            seen = 0;
        while (seen < commands.size())
            react(commands[seen++]);
    }

    void react(const QByteArray &command)
    {
        if (command == "SCAN")
            bed.supplicant.sendEvent("<3>CTRL-EVENT-SCAN-RESULTS ");
        else if (command == "ADD_NETWORK")
            bed.supplicant.answer("LIST_NETWORKS", {"header\n0\t" + ssid + "\tany\t[CURRENT]\n"});
        else if (command == "REMOVE_NETWORK 0")
            bed.supplicant.answer("LIST_NETWORKS", {"header\n"});
        else if (const int at = command.indexOf(" psk "); at > 0)
            secret = command.mid(at + 5);
        else if (command.startsWith("SELECT_NETWORK"))
            associate();
    }

    void associate()
    {
        if (secret == key) {
            bed.supplicant.answer("STATUS", {"bssid=02:00:00:00:01:00\nssid=" + ssid +
                                             "\nwpa_state=COMPLETED\nip_address=10.20.2.15\n"});
            bed.supplicant.sendEvent("<3>CTRL-EVENT-CONNECTED - Connection completed");
        } else if (secret != "NULL") {
            bed.supplicant.sendEvent("<3>CTRL-EVENT-SSID-TEMP-DISABLED id=0 reason=WRONG_KEY");
        }
    }

    TestBed &bed;
    const QByteArray ssid; ///< as the supplicant prints it
    const QByteArray key;
    QByteArray secret;
    QTimer timer;
    int seen = 0; ///< entries of the journal
};
