// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "bxnetwork.h"
#include "bxnetworkconnected.h"
#include "bxstatic.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QString>

class QTimer;
class ToolProcess;
class WifiControl;

/// The daemon: the process's application object and its one object on the system bus, named
/// "com.brelvix.bxwifid", path "/".
///
/// Construct one, optionally call the public operations below, then run exec(). Start-up is
/// due 100 ms after construction, carries on after every failure and logs it. The scriptable slots
/// are the bus methods; they return nothing, block until they are done and answer with the
/// scriptable signals. A bus method runs to its end before the next call or supplicant event is
/// handled, and waits up to 10 s for each supplicant reply and up to 30 s for each external tool.
class Q_DECL_EXPORT WifiDaemon : public QCoreApplication
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.brelvix.bxwifid")

public:
    WifiDaemon(int &argc, char **argv);
    /// Has the supplicant save its configuration and flushes the file systems. Before start-up
    /// there is no supplicant to ask, and only the flush happens.
    ~WifiDaemon() override;
    Q_DISABLE_COPY_MOVE(WifiDaemon)

    /// Repairs /prefs/etc/wpa_supplicant.conf when it is missing or too short to be one, and makes
    /// /etc/wpa_supplicant.conf a link to it. A file of 77 bytes or more is left as it is.
    void killFile();
    /// Whether the boot environment asks for a dynamic address: the variable "dynamicip" exists.
    bool getDynamic();
    /// Runs the DHCP client once on eth0, for at most 30 s, and logs what it printed.
    void setDynamicEthernetIp();

signals:
    /// One network of a scan: a BXNetwork.
    Q_SCRIPTABLE void scanResult(QByteArray network);
    /// The current association: a BXNetworkConnected.
    Q_SCRIPTABLE void fullStatusResult(QByteArray network);
    /// An access point went out of sight.
    Q_SCRIPTABLE void bssRemoved(QString bssid);
    /// 0 connected, 1 not connected, 2 scan started, 3 scan delivered, 4 supplicant exiting,
    /// 5 connection requested, 6 network temporarily disabled, 7 the same because of a wrong key,
    /// 8 network removed.
    Q_SCRIPTABLE void statusMessage(int status);
    /// Name of the current network, or empty.
    Q_SCRIPTABLE void ssidResult(QString ssid);
    /// Address of the wireless interface, or empty.
    Q_SCRIPTABLE void ipResult(QString ip);
    /// Addressing of the wired interface: a BXStatic.
    Q_SCRIPTABLE void staticResult(QByteArray info);
    /// Whether the boot environment asks for a dynamic address on the wired interface.
    Q_SCRIPTABLE void dynamicResult(bool dynamic);

public slots:
    void setup();
    Q_SCRIPTABLE void wpaConnectRequest();
    Q_SCRIPTABLE void scanRequest();
    Q_SCRIPTABLE void connectRequest(const QByteArray &data);
    Q_SCRIPTABLE void connectRequestHidden(const QByteArray &data);
    Q_SCRIPTABLE void disableRequest();
    Q_SCRIPTABLE void removeRequest(QString ssid);
    Q_SCRIPTABLE void enableRequest();
    Q_SCRIPTABLE void statusRequest();
    Q_SCRIPTABLE void fullStatusRequest();
    Q_SCRIPTABLE void ssidRequest();
    Q_SCRIPTABLE void ipRequest();
    Q_SCRIPTABLE void staticRequest();
    Q_SCRIPTABLE void setStaticRequest(const QByteArray &data);
    Q_SCRIPTABLE void setDynamic(bool dynamic);
    Q_SCRIPTABLE void dynamicRequest();

private slots:
    void onScanResultsIn();
    void onConnectRequest(const BXNetwork &network);
    void onConnectRequestManual(const BXNetwork &network);
    void onDisconnected();
    void onConnected();
    void onTerminating();
    void onWpaConnectRequest();
    void onAssociating();
    void onAssociated();
    void onConnectError(int status);
    void retryWPASetup();

private:
    void registerOnBus(const char *caller);
    void connectControl();
    void discardRetryTimer();
    void sync();

    void setNetwork(const QString &networkId, const QString &parameter, const QString &value);
    void setNetworkPassword(const BXNetwork &network, const QString &networkId);

    QString bootVariable(const QString &name);
    void setBootVariable(const QString &name, const QString &value);

    WifiControl *control = nullptr;
    ToolProcess *syncProcess; ///< Flushes the file systems
    ToolProcess *envProcess;  ///< Reads and writes the boot environment
    QTimer *retryTimer = nullptr;
};
