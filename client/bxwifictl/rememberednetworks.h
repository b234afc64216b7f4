// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <bxwifi/security.h>

#include <QDateTime>
#include <QString>
#include <QVector>

/// The networks that were joined, the one joined last first, in a file that holds no secret. The
/// order is that of the file, as the clock of a device may begin in 1970 at each start.
class RememberedNetworks
{
public:
    struct Network {
        QString ssid;
        BxWifi::Security security;
        QDateTime joined; ///< For whoever reads the file
    };

    explicit RememberedNetworks(QString file);

    /// Reads the file. One that cannot be read or understood is set aside, as FILE.damaged. The
    /// result is a sentence about what is wrong, without a full stop, or empty; as in the others.
    QString load();
    QString note(const QString &ssid, BxWifi::Security security);
    QString forget(const QString &ssid);

    const QVector<Network> &all() const { return networks; }
    bool contains(const QString &ssid) const;
    /// Whether a network was joined since the device was booted.
    bool isOfThisBoot() const;

private:
    QString setAside(const QString &why) const;
    QString save() const;

    QString file;
    QString boot; ///< In which the last network was joined
    QVector<Network> networks;
};
