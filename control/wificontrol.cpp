// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "wificontrol.h"

#include "event.h"
#include "passphrase.h"
#include "records/status.h"
#include "support/dhcpclient.h"
#include "support/logging.h"
#include "support/psk.h"
#include "support/text.h"
#include "support/tool.h"

#include <QDir>
#include <QSocketNotifier>

#include <array>

#include <fcntl.h>
#include <wpa_ctrl.h>

namespace
{
// What the supplicant sends is read up to one byte less, and cut there.
using ReplyBuffer = std::array<char, 2048>;
using EventBuffer = std::array<char, 256>;

constexpr int requestTimedOut = -2; // wpa_ctrl_request()'s result for no reply within 10 s

QString controlSocketDirectory()
{
    return QStringLiteral("/var/run/wpa_supplicant");
}

/// Opens a connection that the tools we start do not inherit; the client library leaves that out.
wpa_ctrl *openConnection(const QByteArray &socketPath)
{
    wpa_ctrl *connection = wpa_ctrl_open(socketPath.constData());
    if (connection)
        fcntl(wpa_ctrl_get_fd(connection), F_SETFD, FD_CLOEXEC);
    return connection;
}

void closeConnection(wpa_ctrl *&connection)
{
    wpa_ctrl_close(connection);
    connection = nullptr;
}
} // namespace

// Logs what the supplicant says on the control connection without being asked. Not in the unnamed
// namespace, whose name would show in the logged signature.
static void ctrlRequestDebug(char *msg, size_t len)
{
    qCDebug(debugLog) << Q_FUNC_INFO << QString::fromLocal8Bit(msg, static_cast<int>(len));
}

WifiControl::WifiControl(QObject *parent) : QObject(parent) {}

WifiControl::~WifiControl()
{
    cleanup();
}

bool WifiControl::setup()
{
    const QString directory = controlSocketDirectory();
    qCDebug(debugLog) << Q_FUNC_INFO << "ctrl_iface_dir:" << directory;

    // The order is given to the object: as an argument of entryInfoList(), NoSort means "as the
    // object says", which is by name.
    const QDir sockets(directory, QString(), QDir::NoSort, QDir::System | QDir::NoDotAndDotDot);
    const QFileInfoList entries = sockets.entryInfoList();
    for (const QFileInfo &entry : entries) {
        const QString name = entry.fileName();
        qCDebug(debugLog) << Q_FUNC_INFO << "trying ctrl_iface:" << name << "...";
        if (const char *failure = openConnections(directory + QLatin1Char('/') + name)) {
            qCDebug(debugLog) << Q_FUNC_INFO << failure;
            continue;
        }
        qCDebug(debugLog) << Q_FUNC_INFO << "opened connection to wpa_supplicant";
        if (wpa_ctrl_attach(monitorConn) != 0) {
            closeConnection(ctrlConn);
            closeConnection(monitorConn);
            qCDebug(debugLog) << Q_FUNC_INFO << "failed to attach to wpa_supplicant";
            continue;
        }
        qCDebug(debugLog) << Q_FUNC_INFO << "attached to wpa_supplicant";
        ifaceName = name;
        watchMonitorConnection();
        return true;
    }
    qCDebug(debugLog) << Q_FUNC_INFO << "failed to establish a connection to wpa_supplicant";
    return false;
}

const char *WifiControl::openConnections(const QString &socketPath)
{
    const QByteArray path = socketPath.toLocal8Bit();
    ctrlConn = openConnection(path);
    if (!ctrlConn)
        return "failed to open control connection to wpa_supplicant";
    monitorConn = openConnection(path);
    if (!monitorConn) {
        closeConnection(ctrlConn);
        return "failed to open monitor connection to wpa_supplicant";
    }
    return nullptr;
}

void WifiControl::watchMonitorConnection()
{
    monitorNotifier =
        new QSocketNotifier(wpa_ctrl_get_fd(monitorConn), QSocketNotifier::Read, this);
    connect(monitorNotifier, &QSocketNotifier::activated, this, &WifiControl::receiveMessages);
}

void WifiControl::cleanup()
{
    if (monitorNotifier) {
        // The terminating event gets here from within the notifier's own activation.
        monitorNotifier->setEnabled(false);
        monitorNotifier->deleteLater();
        monitorNotifier = nullptr;
    }
    if (monitorConn) {
        wpa_ctrl_detach(monitorConn);
        closeConnection(monitorConn);
    }
    if (ctrlConn)
        closeConnection(ctrlConn);
}

QString WifiControl::ctrlRequest(const QString &cmd)
{
    QString reply;
    if (ctrlConn) {
        drainControlConnection();
        const QByteArray command = cmd.toLocal8Bit();
        ReplyBuffer buffer;
        size_t length = buffer.size() - 1;
        const int result = wpa_ctrl_request(ctrlConn, command.constData(), qstrlen(command),
                                            buffer.data(), &length, ctrlRequestDebug);
        if (result >= 0)
            reply = textOf(QByteArray(buffer.data(), static_cast<int>(length)));
        else if (result == requestTimedOut)
            qCDebug(debugLog) << Q_FUNC_INFO << cmd << "command timed out";
        else
            qCDebug(debugLog) << Q_FUNC_INFO << cmd << "command failed";
    }
    qCDebug(debugLog) << Q_FUNC_INFO << cmd << processReturn(reply);
    return reply;
}

void WifiControl::drainControlConnection()
{
    ReplyBuffer buffer;
    while (wpa_ctrl_pending(ctrlConn) > 0) {
        size_t length = buffer.size() - 1;
        if (wpa_ctrl_recv(ctrlConn, buffer.data(), &length) != 0)
            return;
        ctrlRequestDebug(buffer.data(), length);
    }
}

bool WifiControl::processReturn(const QString &returnString)
{
    return !returnString.isEmpty() && !returnString.startsWith(QLatin1String("Fail"));
}

void WifiControl::receiveMessages()
{
    // The connection is looked at anew for every message: what a message leads to may close it.
    while (monitorConn && wpa_ctrl_pending(monitorConn) > 0) {
        EventBuffer buffer;
        size_t length = buffer.size() - 1;
        if (wpa_ctrl_recv(monitorConn, buffer.data(), &length) == 0)
            processMessage(textOf(QByteArray(buffer.data(), static_cast<int>(length))));
    }
}

void WifiControl::processMessage(const QString &message)
{
    switch (eventOf(message)) {
    case Event::Request:
        qCDebug(debugLog) << Q_FUNC_INFO << "ctrl_req:" << message;
        break;
    case Event::ScanResults:
        emit scanResultsIn();
        break;
    case Event::Disconnected:
        emit disconnected();
        break;
    case Event::Connected:
        emit connected();
        break;
    case Event::BssAdded:
        // Comes for every access point that a scan finds anew; the scan results tell it all.
        break;
    case Event::BssRemoved: {
        const QString bssid = removedBssidOf(message);
        if (!bssid.isNull())
            emit bssRemoved(bssid);
        break;
    }
    case Event::Associating:
        emit associating();
        break;
    case Event::Associated:
        emit associated();
        break;
    case Event::Terminating:
        emit terminating();
        break;
    case Event::TemporarilyDisabled:
        emit ssidError(isWrongKey(message) ? Status::WrongKey : Status::TemporarilyDisabled);
        break;
    case Event::Other:
        qCDebug(debugLog) << Q_FUNC_INFO << "other:" << message;
        break;
    }
}

void WifiControl::refreshIP()
{
    ToolProcess client;
    client.run(QStringLiteral("udhcpc"), dhcpClientArguments(ifaceName));
    emit ipRefreshed(); // before a client that hangs is ended
}

QString WifiControl::hashPassword(const QString &passphrase, const QString &ssid)
{
    // Up to the first zero byte, as everything that goes to the supplicant.
    const QByteArray password(passphrase.toLocal8Bit().constData());
    const QByteArray salt(ssid.toLocal8Bit().constData());
    return QString::fromLatin1(pskOf(password, salt));
}

QString WifiControl::hashPasswordVantrel(const QString &passphrase, const QString &ssid)
{
    ToolProcess tool;
    return printedPskOf(tool.run(QStringLiteral("wpa_passphrase"), {ssid, passphrase}));
}
