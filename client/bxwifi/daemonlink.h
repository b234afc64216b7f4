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
class QDBusServiceWatcher;

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
using AnswerHandler = std::function<void(const Answer &)>;

/// The daemon as seen over the system bus: its signals decoded, its methods called.
class DaemonLink : public QObject
{
    Q_OBJECT
public:
    explicit DaemonLink(QObject *parent);
    ~DaemonLink() override;

    bool isAvailable() const { return available; }
    /// The same, after connecting to the bus anew if it was lost.
    bool reopen();
    /// Calls and hands over the answer, unless `context` is gone by then.
    void call(const DaemonCall &call, QObject *context, const AnswerHandler &done);
    /// Asks for the full status, and for the whole name of the network, which the status lacks.
    void askStatus(QObject *context, const AnswerHandler &done);
    /// Makes a removal until nothing is left to remove; the answer tells whether anything was.
    void removeAll(const DaemonCall &removal, QObject *context, const AnswerHandler &done);

    /// The error text for an answer that is without supplicant.
    static QString noSupplicant();

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
    void onBusLost();

private:
    void open();
    void removeMore(const DaemonCall &removal, int removed, QObject *context,
                    const AnswerHandler &done);
    void setAvailable(bool nowAvailable);
    void setError(Answer &answer, const QDBusError &error) const;
    /// Notes something in the answer of every call on its way.
    void note(const std::function<void(Answer &)> &enter);

    QDBusConnection bus;
    std::unique_ptr<QDBusServiceWatcher> owner;
    bool available = false;
    std::vector<std::weak_ptr<Answer>> answers; ///< of the calls on their way
};
} // namespace BxWifi
