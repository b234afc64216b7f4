// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "daemoncall.h"
#include "records/status.h"
#include "wifinetwork.h"
#include "wifireply.h"
#include "wifistatus.h"
#include "wiredsettings.h"

#include <QDBusConnection>
#include <QObject>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class QDBusError;

namespace BxWifi
{
/// What the daemon said while one call of ours was on its way, the last of each kind. Signals come
/// before the reply, so the call's own answer is the last one before it.
struct Answer {
    WifiReply::Error error = WifiReply::NoError;
    QString errorText;
    bool removed = false; ///< A stored network was removed
    std::optional<QString> ssid;
    std::optional<QString> address;
    std::optional<WifiStatus> status;
    std::optional<WiredSettings> wired;
    std::optional<bool> dhcp;

    bool isWithoutSupplicant() const { return status && status->supplicantState.isEmpty(); }
};
/// The error text for that.
inline QString noSupplicant()
{
    return QStringLiteral("the daemon has no supplicant to talk to");
}
using AnswerHandler = std::function<void(const Answer &)>;

/// The daemon as seen over the system bus: its signals decoded, its methods called.
class DaemonLink : public QObject
{
    Q_OBJECT
public:
    explicit DaemonLink(QObject *parent);

    bool isAvailable() const { return available; }
    /// Calls and hands over the answer, unless `context` is gone by then.
    void call(const DaemonCall &call, QObject *context, const AnswerHandler &done);

signals:
    void availableChanged(bool available);
    void networkSeen(const BxWifi::WifiNetwork &network);
    void accessPointLost(const QString &bssid);
    void statusMessage(Status::Code status);
    void ssidReported(const QString &ssid);
    void addressReported(const QString &address);
    void statusReported(const BxWifi::WifiStatus &status);
    void wiredReported(const BxWifi::WiredSettings &settings);
    void dhcpReported(bool dhcp);

private slots:
    void onScanResult(const QByteArray &network);
    void onFullStatusResult(const QByteArray &network);
    void onStatusMessage(int status);
    void onSsidResult(const QString &printed);
    void onIpResult(const QString &ip);
    void onStaticResult(const QByteArray &info);
    void onDynamicResult(bool dynamic);

private:
    void setAvailable(bool nowAvailable);
    void setError(Answer &answer, const QDBusError &error) const;
    /// Notes something in the answer of every call on its way.
    void note(const std::function<void(Answer &)> &enter);

    QDBusConnection bus;
    bool available = false;
    std::vector<std::weak_ptr<Answer>> answers; ///< of the calls on their way
};
} // namespace BxWifi
