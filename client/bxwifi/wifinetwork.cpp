// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "wifinetwork.h"

#include <QSet>

#include <algorithm>

namespace BxWifi
{
namespace
{
// IEEE 802.11, annex E: channel numbers count steps of 5 MHz from the start of their band.
constexpr int channelSpacing_MHz = 5;
constexpr int lastChannelOf2GHz_MHz = 2484; // channel 14 is out of step

struct Band {
    int first, last, start; // MHz
    const char *name;
};
constexpr Band bands[] = {{2412, lastChannelOf2GHz_MHz, 2407, "2.4 GHz"},
                          {5160, 5895, 5000, "5 GHz"},
                          {5955, 7115, 5950, "6 GHz"}};

const Band *bandOf(int frequency)
{
    for (const Band &band : bands) {
        if (frequency >= band.first && frequency <= band.last)
            return &band;
    }
    return nullptr;
}
} // namespace

int WifiNetwork::channel() const
{
    if (frequency == lastChannelOf2GHz_MHz)
        return 14;
    const Band *found = bandOf(frequency);
    return found ? (frequency - found->start) / channelSpacing_MHz : 0;
}

QString WifiNetwork::band() const
{
    const Band *found = bandOf(frequency);
    return found ? QLatin1String(found->name) : QString();
}

int WifiNetwork::bars() const
{
    const int thresholds[] = {-85, -75, -65, -55}; // dBm
    return static_cast<int>(std::count_if(std::begin(thresholds), std::end(thresholds),
                                          [this](int threshold) { return signal >= threshold; }));
}

Security announcedSecurity(const QVector<WifiNetwork> &accessPoints, const QString &ssid)
{
    QVector<Security> kinds;
    for (const WifiNetwork &accessPoint : accessPoints) {
        if (accessPoint.ssid == ssid && !kinds.contains(accessPoint.security()))
            kinds.append(accessPoint.security());
    }
    // What cannot be joined does not matter beside what can, unless that is without protection.
    if (kinds.size() > 1 && !kinds.contains(Security::Open))
        kinds.removeOne(Security::Unsupported);
    return kinds.size() == 1 ? kinds.constFirst() : Security::Automatic;
}

QVector<WifiNetwork> bySignal(QVector<WifiNetwork> accessPoints)
{
    std::stable_sort(accessPoints.begin(), accessPoints.end(),
                     [](const auto &a, const auto &b) { return a.signal > b.signal; });
    return accessPoints;
}

QVector<WifiNetwork> strongestByName(QVector<WifiNetwork> accessPoints)
{
    accessPoints = bySignal(std::move(accessPoints));
    QVector<WifiNetwork> networks;
    QSet<QString> names;
    for (const WifiNetwork &accessPoint : qAsConst(accessPoints)) {
        if (accessPoint.ssid.isEmpty() || names.contains(accessPoint.ssid))
            continue;
        names.insert(accessPoint.ssid);
        networks.append(accessPoint);
    }
    return networks;
}
} // namespace BxWifi
