// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "export.h"

#include <QMetaType>
#include <QObject>
#include <QString>

namespace BxWifi
{
/// Addressing of the wired interface, eth0. What is not set is empty.
struct BXWIFI_EXPORT WiredSettings {
    Q_GADGET
    Q_PROPERTY(QString address MEMBER address)
    Q_PROPERTY(QString gateway MEMBER gateway)
    Q_PROPERTY(QString netmask MEMBER netmask)
    Q_PROPERTY(QString macAddress MEMBER macAddress)
    Q_PROPERTY(bool dhcp MEMBER dhcp)

public:
    QString address;    ///< IPv4, dotted decimal
    QString gateway;    ///< IPv4, dotted decimal
    QString netmask;    ///< Dotted decimal
    QString macAddress; ///< As the boot environment stores it
    bool dhcp = false;  ///< The boot environment asks for a dynamic address

    /// What is wrong with address, gateway and mask as static settings, in one sentence; empty when
    /// they can work.
    QString problem() const;
};
} // namespace BxWifi
Q_DECLARE_METATYPE(BxWifi::WiredSettings)
