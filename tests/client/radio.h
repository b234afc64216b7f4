// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "harness/testbed.h"

#include <QTimer>

/// Networks on the air around the fake supplicant: a scan finds them, and joining one succeeds
/// with the right secret. Works while the test's event loop runs.
class Radio : public QObject
{
    Q_OBJECT

public:
    explicit Radio(TestBed &bed);

    /// Rows of the supplicant's scan table, as the supplicant prints them.
    void setNetworks(const QByteArrayList &rows);
    /// The command that sets the right secret ends like this; all others are wrong.
    void setSecret(const QByteArray &end) { secret = end; }

private:
    void lookAtCommands();
    void react(const QByteArray &command);
    void associate();
    void setStatus(const QByteArray &reply);

    TestBed &bed;
    QTimer timer;
    int seen = 0;        ///< entries of the journal
    QByteArray networks; ///< the scan table
    QByteArray secret;
    QByteArray ssid; ///< as the daemon set it, with its quotation marks
    bool isSelected = false;
    bool hasSecret = false;
};
