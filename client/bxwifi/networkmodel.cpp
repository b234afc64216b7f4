// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "networkmodel.h"

#include <QSet>

#include <algorithm>

namespace BxWifi
{
struct NetworkModel::Private {
    QVector<WifiNetwork> accessPoints;
    QVector<WifiNetwork> rows;
    QString joined;
    QSet<QString> known;
};

NetworkModel::NetworkModel(QObject *parent)
    : QAbstractListModel(parent), d(std::make_unique<Private>())
{
}

NetworkModel::~NetworkModel() = default;

WifiNetwork NetworkModel::network(const QString &ssid) const
{
    return d->rows.value(rowOf(ssid));
}

Security NetworkModel::security(const QString &ssid) const
{
    return announcedSecurity(d->accessPoints, ssid);
}

int NetworkModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : d->rows.size();
}

QVariant NetworkModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const WifiNetwork &network = d->rows[index.row()];
    switch (role) {
    case Qt::DisplayRole:
    case SsidRole:
        return network.ssid;
    case SignalRole:
        return network.signal;
    case BarsRole:
        return network.bars();
    case SecurityRole:
        return static_cast<int>(network.security());
    case SecurityTextRole:
        return securityText(network.flags);
    case JoinedRole:
        return network.ssid == d->joined;
    case KnownRole:
        return d->known.contains(network.ssid);
    case AmbiguousRole:
        return security(network.ssid) == Security::Automatic;
    default:
        return {};
    }
}

QHash<int, QByteArray> NetworkModel::roleNames() const
{
    return {{SsidRole, "ssid"},     {SignalRole, "signal"},
            {BarsRole, "bars"},     {SecurityRole, "security"},
            {JoinedRole, "joined"}, {SecurityTextRole, "securityText"},
            {KnownRole, "known"},   {AmbiguousRole, "ambiguous"}};
}

void NetworkModel::setAccessPoints(const QVector<WifiNetwork> &accessPoints)
{
    d->accessPoints = accessPoints;
    const QVector<WifiNetwork> networks = strongestByName(accessPoints);
    removeMissing(networks);
    for (int row = 0; row < networks.size(); ++row)
        place(row, networks[row]);
}

void NetworkModel::removeMissing(const QVector<WifiNetwork> &networks)
{
    for (int row = d->rows.size() - 1; row >= 0; --row) {
        const auto sameName = [&](const auto &network) {
            return network.ssid == d->rows[row].ssid;
        };
        if (std::any_of(networks.begin(), networks.end(), sameName))
            continue;
        beginRemoveRows({}, row, row);
        d->rows.removeAt(row);
        endRemoveRows();
    }
}

/// Everything above the row is in place, so the network is below it, in it or nowhere.
void NetworkModel::place(int row, const WifiNetwork &network)
{
    const int from = rowOf(network.ssid);
    if (from < 0) {
        beginInsertRows({}, row, row);
        d->rows.insert(row, network);
        endInsertRows();
        return;
    }
    if (from != row) {
        beginMoveRows({}, from, from, {}, row);
        d->rows.move(from, row);
        endMoveRows();
    }
    d->rows[row] = network;
    announce(network.ssid);
}

void NetworkModel::setJoined(const QString &ssid)
{
    const QString before = d->joined;
    d->joined = ssid;
    if (!ssid.isEmpty())
        d->known.insert(ssid);
    announce(before);
    announce(ssid);
}

void NetworkModel::setForgotten(const QString &ssid)
{
    d->known.remove(ssid);
    announce(ssid);
}

int NetworkModel::rowOf(const QString &ssid) const
{
    const auto found = std::find_if(d->rows.cbegin(), d->rows.cend(),
                                    [&](const auto &network) { return network.ssid == ssid; });
    return found == d->rows.cend() ? -1 : static_cast<int>(found - d->rows.cbegin());
}

void NetworkModel::announce(const QString &ssid)
{
    const QModelIndex changed = index(rowOf(ssid));
    if (changed.isValid())
        emit dataChanged(changed, changed);
}
} // namespace BxWifi
