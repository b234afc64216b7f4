// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "wifinetwork.h"

#include <QAbstractListModel>

#include <memory>

namespace BxWifi
{
/// The networks of the last scan, one row per name, by falling signal. A further scan moves and
/// updates the rows in place.
class BXWIFI_EXPORT NetworkModel : public QAbstractListModel
{
    Q_OBJECT
public:
    /// What a row tells, by role; the name in QML is in quotation marks.
    enum Role {
        SsidRole = Qt::UserRole, ///< "ssid": name
        SignalRole,              ///< "signal": dBm
        BarsRole,                ///< "bars": strength of the signal, 0 to 4
        SecurityRole,            ///< "security": a BxWifi::Security
        SecurityTextRole,        ///< "securityText": security in words
        JoinedRole,              ///< "joined": whether this is the network of the moment
        KnownRole,               ///< "known": whether it was seen joined and not forgotten since;
                                 ///< the daemon does not tell what the supplicant has stored
        AmbiguousRole,           ///< "ambiguous": whether access points under this name differ in
                                 ///< how they are protected, so that joining has to say which
    };
    Q_ENUM(Role)

    /// Stays empty: WifiClient fills its own.
    explicit NetworkModel(QObject *parent);
    ~NetworkModel() override;

    /// The network of a name; none of that name has an empty BSSID.
    Q_INVOKABLE WifiNetwork network(const QString &ssid) const;
    /// How a network is protected, by all access points of its name; Automatic if there are several
    /// kinds, or none in sight.
    Q_INVOKABLE BxWifi::Security security(const QString &ssid) const;

    /// As in every model.
    int rowCount(const QModelIndex &parent = {}) const override;
    /// One fact of a row; invalid for a role that is none of Role.
    QVariant data(const QModelIndex &index, int role) const override;
    /// The names for QML.
    QHash<int, QByteArray> roleNames() const override;

private:
    friend class WifiClient;
    friend class WifiClientPrivate;
    void setAccessPoints(const QVector<WifiNetwork> &accessPoints);
    void setJoined(const QString &ssid);
    void setForgotten(const QString &ssid);

    void removeMissing(const QVector<WifiNetwork> &networks);
    void place(int row, const WifiNetwork &network);
    int rowOf(const QString &ssid) const;
    void announce(const QString &ssid);

    struct Private;
    std::unique_ptr<Private> d;
};
} // namespace BxWifi
