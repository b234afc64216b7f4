// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "joinsettings.h"
#include "networkmodel.h"
#include "wifinetwork.h"
#include "wifireply.h"
#include "wifistatus.h"
#include "wiredsettings.h"

#include <QObject>

#include <chrono>
#include <memory>

namespace BxWifi
{
class WifiClientPrivate;
using ScanReply = WifiReplyWith<QVector<WifiNetwork>>;
using AddressReply = WifiReplyWith<QString>;
using StatusReply = WifiReplyWith<WifiStatus>;
using WiredReply = WifiReplyWith<WiredSettings>;

/// The network-configuration daemon bxwifid, for programs.
///
/// Every method returns at once; the object it returns finishes with a result or an error and then
/// deletes itself. Any number of clients may exist. The daemon may come, go and restart at any
/// time: requests on their way fail with WifiReply::NoDaemon, and the object goes on. So may the
/// system bus: with the next request, or poll, the object connects anew.
///
/// A client lives in the thread that made it, needs that thread's event loop, and is used from that
/// thread alone. All signals come from the event loop; whoever hears one may delete the client. The
/// structures that it hands out are part of the library's binary interface: they keep their fields
/// as long as the library keeps its name.
///
/// The daemon answers everybody at once. A request's answer is what the daemon said last before it
/// was done with the request, so an answer to another client is not taken for one's own. Where the
/// protocol leaves no way to tell: the results that a scan brings may be those of an earlier scan;
/// forget() may succeed for a name that is not stored, if another client removes a network at that
/// moment; and joining may fail with the trouble of a network that another client joins just then.
///
/// The properties follow what the daemon reports to any client. It does not report a connection
/// that is lost: with a poll interval the client asks from time to time.
class BXWIFI_EXPORT WifiClient : public QObject
{
    Q_OBJECT
    Q_PROPERTY(State state READ state NOTIFY stateChanged)
    Q_PROPERTY(QString ssid READ ssid NOTIFY ssidChanged)
    Q_PROPERTY(QString address READ address NOTIFY addressChanged)
    Q_PROPERTY(bool scanning READ isScanning NOTIFY scanningChanged)
    Q_PROPERTY(BxWifi::NetworkModel *networks READ networks CONSTANT)
    /// In milliseconds.
    Q_PROPERTY(
        int pollInterval READ pollInterval_ms WRITE setPollInterval_ms NOTIFY pollIntervalChanged)

public:
    /// What is known of the wireless connection.
    enum State {
        Unavailable,  ///< No daemon on the bus
        Disconnected, ///< No network is joined
        Connecting,   ///< Some client asked to join a network
        Connected,    ///< A network is joined
    };
    Q_ENUM(State)

    /// What the daemon announces to all clients.
    enum Event {
        AssociationCompleted, ///< A network is joined; the address follows
        NotConnected,         ///< No network is joined
        ScanStarted,          ///< A scan was asked for
        ScanDelivered,        ///< All that a scan found was reported
        SupplicantExiting,    ///< The daemon has lost its supplicant; see relink()
        ConnectionRequested,  ///< Some client asked to join a network
        TemporarilyDisabled,  ///< The supplicant set the network aside, not because of its key
        WrongKey,             ///< The supplicant set the network aside because of a wrong key
        NetworkRemoved,       ///< A stored network was removed
    };
    Q_ENUM(Event)

    /// Begins to listen to the daemon, whether it is there or not.
    explicit WifiClient(QObject *parent = nullptr);
    ~WifiClient() override;

    State state() const;            ///< What is known of the connection
    QString ssid() const;           ///< Name of the joined network, or empty
    QString address() const;        ///< Address of the wireless interface, or empty
    bool isScanning() const;        ///< Whether a scan is going on, of any client
    NetworkModel *networks() const; ///< The networks of the last scan, as a model

    /// How often the client asks for the state of the connection, never while a request of its own
    /// is on its way. Zero, as at first: not at all.
    std::chrono::milliseconds pollInterval() const;
    /// Sets it; zero turns asking off.
    void setPollInterval(std::chrono::milliseconds interval);

    /// Looks for networks; brings every access point found.
    Q_INVOKABLE BxWifi::ScanReply *scan();
    /// Joins a network; brings the address. A secret replaces what is stored under the name. A join
    /// that fails goes back first to the network that was joined before, see JoinSettings; its
    /// error's text then ends with what became of the device. A further join of the same client
    /// takes the place of one that is on its way, and goes back to where that one would have.
    BxWifi::AddressReply *connectTo(const JoinSettings &settings);
    /// Joins a network in the way that it announces; refused if access points under this name
    /// differ in that.
    Q_INVOKABLE BxWifi::AddressReply *connectTo(const QString &ssid, const QString &secret,
                                                const QString &identity = {});
    /// Joins a network in one of the ways that it announces.
    Q_INVOKABLE BxWifi::AddressReply *connectTo(const QString &ssid, const QString &secret,
                                                const QString &identity, BxWifi::Security security);
    /// Joins a network that does not announce its name, nor how it is protected.
    Q_INVOKABLE BxWifi::AddressReply *connectToHidden(const QString &ssid,
                                                      BxWifi::Security security,
                                                      const QString &secret,
                                                      const QString &identity = {});
    /// Leaves the network; it stays stored.
    Q_INVOKABLE BxWifi::WifiReply *disconnectFromNetwork();
    /// Removes all that is stored under a name.
    Q_INVOKABLE BxWifi::WifiReply *forget(const QString &ssid);
    /// Brings all that is known of the connection, and the properties up to date.
    Q_INVOKABLE BxWifi::StatusReply *status();
    /// Brings the address of the wireless interface; empty when there is none.
    Q_INVOKABLE BxWifi::AddressReply *wirelessAddress();
    /// Has the daemon connect to the supplicant anew, e.g. after the supplicant was restarted.
    Q_INVOKABLE BxWifi::WifiReply *relink();

    /// The wired settings that take effect at the next boot.
    Q_INVOKABLE BxWifi::WiredReply *wiredSettings();
    /// How the wired interface is addressed now; `dhcp` is the setting for the next boot.
    Q_INVOKABLE BxWifi::WiredReply *wiredStatus();
    /// Stores address, gateway and mask for the next boot, after looking for mistakes.
    Q_INVOKABLE BxWifi::WifiReply *setWiredAddress(const QString &address, const QString &gateway,
                                                   const QString &netmask);
    /// Whether the wired interface asks for a dynamic address at the next boot.
    Q_INVOKABLE BxWifi::WifiReply *setWiredDhcp(bool dhcp);

Q_SIGNALS:
    void stateChanged();        ///< state() is another
    void ssidChanged();         ///< ssid() is another
    void addressChanged();      ///< address() is another
    void scanningChanged();     ///< isScanning() is another
    void pollIntervalChanged(); ///< pollInterval() is another

    // What the daemon says, whoever asked.

    /// One of its announcements.
    void happened(BxWifi::WifiClient::Event event);
    /// One access point of a scan.
    void networkSeen(const BxWifi::WifiNetwork &network);
    /// An access point went out of sight.
    void accessPointLost(const QString &bssid);
    /// The name of the joined network, or an empty one.
    void ssidReported(const QString &ssid);
    /// The address of the wireless interface, or an empty one.
    void addressReported(const QString &address);
    /// All about the connection.
    void statusReported(const BxWifi::WifiStatus &status);
    /// The wired addressing, stored or live: only its caller knows which was asked for.
    void wiredReported(const BxWifi::WiredSettings &settings);
    /// Whether the wired interface asks for a dynamic address at the next boot.
    void dhcpReported(bool dhcp);

private:
    int pollInterval_ms() const;
    void setPollInterval_ms(int interval);

    std::unique_ptr<WifiClientPrivate> d;
};
} // namespace BxWifi
