// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "candidates.h"

#include <algorithm>

using BxWifi::NetworkModel;
using BxWifi::Security;
using BxWifi::WifiStatus;
using Network = RememberedNetworks::Network;

namespace
{
bool takesNoSecret(Security security)
{
    return security == Security::Wpa || security == Security::Wep || security == Security::Open;
}
} // namespace

Security securityOf(const WifiStatus &status)
{
    if (status.keyManagement.contains(QLatin1String("EAP")))
        return Security::Enterprise;
    if (status.keyManagement.contains(QLatin1String("SAE")))
        return Security::Wpa3;
    if (status.keyManagement.contains(QLatin1String("PSK")))
        return Security::Wpa;
    if (status.keyManagement != QLatin1String("NONE"))
        return Security::Unsupported;
    return status.pairwiseCipher.startsWith(QLatin1String("WEP")) ? Security::Wep : Security::Open;
}

QVector<Network> candidatesOf(const QVector<Network> &remembered, const NetworkModel &inSight,
                              const QSet<QString> &tried)
{
    QVector<Network> networks;
    for (const Network &network : remembered) {
        if (takesNoSecret(network.security) && inSight.security(network.ssid) == network.security)
            networks.append(network);
    }
    const auto isStronger = [&](const Network &one, const Network &other) {
        return inSight.network(one.ssid).signal > inSight.network(other.ssid).signal;
    };
    if (networks.size() > 1)
        std::stable_sort(networks.begin() + 1, networks.end(), isStronger);
    std::stable_partition(networks.begin(), networks.end(),
                          [&](const Network &network) { return !tried.contains(network.ssid); });
    return networks;
}

bool isAssociating(const QString &supplicantState)
{
    const char *states[] = {"AUTHENTICATING", "ASSOCIATING", "ASSOCIATED", "4WAY_HANDSHAKE",
                            "GROUP_HANDSHAKE"};
    return std::any_of(std::begin(states), std::end(states),
                       [&](const char *state) { return supplicantState == QLatin1String(state); });
}
