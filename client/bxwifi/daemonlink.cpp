// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "daemonlink.h"

#include "records/bxnetworkconnected.h"
#include "records/bxstatic.h"
#include "records/payload.h"
#include "ssid.h"

#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QThread>
#include <QTimer>

namespace BxWifi
{
namespace
{
// More networks than anybody stores by one name. A supplicant that cannot save reads each of them
// back after its removal.
constexpr int mostRemovals = 20;

/// Each thread has a connection of its own: when it has failed, one client drops it, and Qt crashes
/// if another thread is about to use it.
QString busName()
{
    return QStringLiteral("bxwifi-%1").arg(reinterpret_cast<quintptr>(QThread::currentThreadId()));
}

QString service()
{
    return QStringLiteral("com.brelvix.bxwifid");
}

WifiNetwork networkOf(const BXNetwork &record)
{
    WifiNetwork network;
    network.ssid = ssidOf(record.ssid);
    network.bssid = record.bssid;
    network.signal = record.signalLevel.toInt();
    network.frequency = record.frequency.toInt();
    network.flags = record.flags;
    return network;
}

WifiStatus statusOf(const BXNetworkConnected &record)
{
    WifiStatus status;
    status.connected = record.wpaState == QLatin1String("COMPLETED");
    status.ssid = ssidOf(record.ssid);
    status.address = record.ipAddress;
    status.bssid = record.bssid;
    status.frequency = record.frequency.toInt();
    status.mode = record.mode;
    status.pairwiseCipher = record.pairwiseCipher;
    status.groupCipher = record.groupCipher;
    status.keyManagement = record.keyMgmt;
    status.supplicantState = record.wpaState;
    return status;
}

/// The daemon cuts a name at its first "=" in one answer, and drops every "ssid=" in the other.
QString wholeName(const QString &cut, const QString &rest)
{
    const QLatin1String key("ssid");
    if (!cut.endsWith(key) || rest.startsWith(cut))
        return rest;
    const QString before = cut.chopped(key.size());
    return before + key + QLatin1Char('=') + rest.mid(before.size());
}

/// The boot environment's values come with the line feed that its tool prints.
WiredSettings wiredOf(const BXStatic &record)
{
    WiredSettings settings;
    settings.address = record.ipAddress.trimmed();
    settings.gateway = record.gateway.trimmed();
    settings.netmask = record.netmask.trimmed();
    settings.macAddress = record.macAddress.trimmed();
    return settings;
}
} // namespace

// A connection apart from the one that Qt shares: that one holds signals back until the event loop
// runs, but not replies, so that the first calls would end before their answers came.
DaemonLink::DaemonLink(QObject *parent) : QObject(parent), bus(busName())
{
    open();
}

DaemonLink::~DaemonLink() = default;

void DaemonLink::open()
{
    if (!QDBusConnection(busName()).isConnected()) // Qt keeps one that has failed
        QDBusConnection::disconnectFromBus(busName());
    bus = QDBusConnection::connectToBus(QDBusConnection::SystemBus, busName());
    if (!bus.isConnected())
        return;
    const auto listen = [this](const char *signal, const char *slot) {
        bus.connect(service(), QStringLiteral("/"), service(), QLatin1String(signal), this, slot);
    };
    listen("scanResult", SLOT(onScanResult(QByteArray)));
    listen("fullStatusResult", SLOT(onFullStatusResult(QByteArray)));
    listen("bssRemoved", SIGNAL(accessPointLost(QString)));
    listen("statusMessage", SLOT(onStatusMessage(int)));
    listen("ssidResult", SLOT(onSsidResult(QString)));
    listen("ipResult", SLOT(onIpResult(QString)));
    listen("staticResult", SLOT(onStaticResult(QByteArray)));
    listen("dynamicResult", SLOT(onDynamicResult(bool)));
    // What the bus library itself says when the bus ends.
    bus.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                SLOT(onBusLost()));

    owner = std::make_unique<QDBusServiceWatcher>(service(), bus,
                                                  QDBusServiceWatcher::WatchForOwnerChange);
    connect(owner.get(), &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &now) {
                // A change from one owner to the next is a restart: it is gone first.
                setAvailable(false);
                setAvailable(!now.isEmpty());
            });
    setAvailable(bus.interface()->isServiceRegistered(service()).value());
}

bool DaemonLink::reopen()
{
    if (!bus.isConnected())
        open();
    return available;
}

void DaemonLink::onBusLost()
{
    setAvailable(false);
}

void DaemonLink::setAvailable(bool nowAvailable)
{
    if (available == nowAvailable)
        return;
    available = nowAvailable;
    emit availableChanged(available);
}

QString DaemonLink::noSupplicant()
{
    return tr("the daemon has no supplicant to talk to");
}

void DaemonLink::call(const DaemonCall &call, QObject *context, const AnswerHandler &done)
{
    reopen();
    QDBusMessage message =
        QDBusMessage::createMethodCall(service(), QStringLiteral("/"), service(), call.method);
    message.setArguments(call.arguments);
    const auto answer = std::make_shared<Answer>();
    answers.push_back(answer);
    const QDBusPendingCall pending = bus.asyncCall(message, call.timeout_ms);
    if (!bus.isConnected()) { // then nothing ever finishes
        setError(*answer, pending.error());
        QTimer::singleShot(0, context, [answer, done] { done(*answer); });
        return;
    }
    auto *watcher = new QDBusPendingCallWatcher(pending, context);
    connect(watcher, &QDBusPendingCallWatcher::finished, context, [this, watcher, answer, done] {
        watcher->deleteLater();
        if (watcher->isError())
            setError(*answer, watcher->error());
        done(*answer);
    });
}

void DaemonLink::askStatus(QObject *context, const AnswerHandler &done)
{
    call(DaemonCall::fullStatus(), context, [=](const Answer &full) {
        if (full.error != WifiReply::NoError) {
            done(full);
            return;
        }
        call(DaemonCall::ssid(), context, [=](const Answer &named) {
            Answer whole = named;
            whole.status = full.status.value_or(WifiStatus());
            whole.status->ssid = wholeName(whole.status->ssid, named.ssid.value_or(QString()));
            done(whole);
        });
    });
}

void DaemonLink::removeAll(const DaemonCall &removal, QObject *context, const AnswerHandler &done)
{
    removeMore(removal, 0, context, done);
}

/// One after the other, as there may be several by a name.
void DaemonLink::removeMore(const DaemonCall &removal, int removed, QObject *context,
                            const AnswerHandler &done)
{
    call(removal, context, [=](const Answer &answer) {
        Answer last = answer;
        if (answer.removed && removed < mostRemovals) {
            removeMore(removal, removed + 1, context, done);
            return;
        }
        if (answer.removed) {
            last.error = WifiReply::Failed;
            last.errorText = tr("removed, but back each time: the supplicant cannot save its "
                                "configuration; look whether the file system under /prefs is full "
                                "or read-only");
        }
        last.removed = removed > 0;
        done(last);
    });
}

void DaemonLink::setError(Answer &answer, const QDBusError &error) const
{
    switch (error.type()) {
    case QDBusError::NoServer:
    case QDBusError::Disconnected:
        answer.error = WifiReply::NoDaemon;
        answer.errorText = tr("cannot reach the system bus");
        return;
    case QDBusError::ServiceUnknown:
        answer.error = WifiReply::NoDaemon;
        answer.errorText = tr("the daemon bxwifid is not running");
        return;
    case QDBusError::AccessDenied:
        answer.error = WifiReply::Denied;
        answer.errorText = tr("this user may not call the daemon bxwifid");
        return;
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
        // The bus also says "no reply" when the daemon ends during the call.
        answer.error = available ? WifiReply::TimedOut : WifiReply::NoDaemon;
        answer.errorText = available ? tr("the daemon bxwifid did not answer in time")
                                     : tr("the daemon bxwifid went away");
        return;
    default: // among them those of a bus that failed to start the daemon
        answer.error = available ? WifiReply::Failed : WifiReply::NoDaemon;
        answer.errorText = error.message();
    }
}

void DaemonLink::note(const std::function<void(Answer &)> &enter)
{
    std::vector<std::weak_ptr<Answer>> underway;
    for (const auto &entry : answers) {
        if (const auto answer = entry.lock()) {
            enter(*answer);
            underway.push_back(entry);
        }
    }
    answers.swap(underway);
}

void DaemonLink::onScanResult(const QByteArray &network)
{
    emit networkSeen(networkOf(recordOf<BXNetwork>(network)));
}

void DaemonLink::onFullStatusResult(const QByteArray &network)
{
    const WifiStatus status = statusOf(recordOf<BXNetworkConnected>(network));
    note([&](Answer &answer) { answer.status = status; });
    emit statusReported(status);
}

void DaemonLink::onStatusMessage(int status)
{
    note([&](Answer &answer) { answer.removed |= status == Status::NetworkRemoved; });
    emit statusMessage(static_cast<Status::Code>(status));
}

void DaemonLink::onSsidResult(const QString &printed)
{
    const QString ssid = ssidOf(printed);
    note([&](Answer &answer) { answer.ssid = ssid; });
    emit ssidReported(ssid);
}

void DaemonLink::onIpResult(const QString &ip)
{
    note([&](Answer &answer) { answer.address = ip; });
    emit addressReported(ip);
}

void DaemonLink::onStaticResult(const QByteArray &info)
{
    const WiredSettings settings = wiredOf(recordOf<BXStatic>(info));
    note([&](Answer &answer) { answer.wired = settings; });
    emit wiredReported(settings);
}

void DaemonLink::onDynamicResult(bool dynamic)
{
    note([&](Answer &answer) { answer.dhcp = dynamic; });
    emit dhcpReported(dynamic);
}
} // namespace BxWifi
