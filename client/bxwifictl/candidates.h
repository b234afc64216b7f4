// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "rememberednetworks.h"

#include <bxwifi/networkmodel.h>
#include <bxwifi/wifistatus.h>

#include <QSet>

/// How the network that is joined is protected, as far as joining it again goes.
BxWifi::Security securityOf(const BxWifi::WifiStatus &status);

/// Those of the remembered networks, the one joined last first, that are in sight with the
/// protection that is remembered, and no other, and take no secret. In the order in which they are
/// to be tried: the one joined last, then by signal; those that were tried in vain last.
QVector<RememberedNetworks::Network>
candidatesOf(const QVector<RememberedNetworks::Network> &remembered,
             const BxWifi::NetworkModel &inSight, const QSet<QString> &tried);

/// Whether the supplicant is in the midst of joining something, which takes it a few seconds.
bool isAssociating(const QString &supplicantState);
