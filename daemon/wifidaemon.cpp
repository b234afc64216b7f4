// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "wifidaemon.h"

#include "control/wificontrol.h"
#include "records/status.h"
#include "support/logging.h"
#include "support/tool.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QTimer>

#include <limits>

#include <dbus/dbus.h>

namespace
{
constexpr int startUpDelay_ms = 100;
constexpr int supplicantRetryInterval_ms = 4000;
constexpr int reconnectDelay_ms = 100;      // lets the bus reply leave before the link is rebuilt
constexpr int addressRefreshDelay_ms = 600; // lets the link settle before an address is asked for

constexpr const char *serviceName = "com.brelvix.bxwifid";
constexpr const char *logFileName = "wifidaemon";

template<typename Record>
void registerRecord(const char *name)
{
    qRegisterMetaType<Record>(name);
    qRegisterMetaTypeStreamOperators<Record>(name);
}

bool isServiceTaken(const QDBusConnection &bus)
{
    // There is no interface to ask when there is no bus.
    const QDBusConnectionInterface *busDaemon = bus.interface();
    return busDaemon && busDaemon->isServiceRegistered(QLatin1String(serviceName)).value();
}

/// Takes away the limit of 63 MiB of calls that wait to be handled. Beyond it libdbus would stop
/// reading, and Qt could not have it go on: it handles calls on another thread than it reads on.
void keepReading(const QDBusConnection &bus)
{
    if (bus.isConnected())
        dbus_connection_set_max_received_size(static_cast<DBusConnection *>(bus.internalPointer()),
                                              std::numeric_limits<long>::max());
}
} // namespace

WifiDaemon::WifiDaemon(int &argc, char **argv)
    : QCoreApplication(argc, argv), syncProcess(new ToolProcess(this)),
      envProcess(new ToolProcess(this))
{
    QTimer::singleShot(startUpDelay_ms, this, &WifiDaemon::setup);
}

WifiDaemon::~WifiDaemon()
{
    if (control)
        control->ctrlRequest(QStringLiteral("SAVE_CONFIG"));
    sync();
}

void WifiDaemon::setup()
{
    registerRecord<BXNetwork>("BXNetwork");
    registerRecord<BXNetworkConnected>("BXNetworkConnected");
    registerRecord<BXStatic>("BXStatic");
    registerOnBus(Q_FUNC_INFO);

    control = new WifiControl(this);
    retryTimer = new QTimer(this);
    retryTimer->setTimerType(Qt::PreciseTimer); // a coarse one strays by 5 %
    connectControl();

    if (control->setup()) {
        control->ctrlRequest(QStringLiteral("RECONFIGURE"));
    } else {
        retryTimer->start(supplicantRetryInterval_ms);
        qCDebug(debugLog) << "Failed to init with WPA_Supplicant";
    }
}

// The lines are setup()'s own and carry its signature; Q_FUNC_INFO would name this function.
void WifiDaemon::registerOnBus(const char *caller)
{
    QDBusConnection bus = QDBusConnection::systemBus();
    const auto logger = [caller](int line) {
        return CuteMessageLogger(logFileName, line, caller).write();
    };

    if (!bus.isConnected())
        logger(__LINE__) << "Cannot connect to the D-Bus system bus.";
    keepReading(bus);
    if (isServiceTaken(bus))
        logger(__LINE__) << "Service already registered:" << serviceName;
    if (bus.registerService(QLatin1String(serviceName)))
        qCDebug(debugLog) << caller << "Registered service:" << serviceName;
    else
        logger(__LINE__) << "Failed to register service:" << serviceName
                         << " error:" << bus.lastError().message();
    if (!bus.registerObject(QStringLiteral("/"), this, QDBusConnection::ExportScriptableContents))
        logger(__LINE__) << "Failed to register object:" << bus.lastError().message();
}

void WifiDaemon::connectControl()
{
    connect(retryTimer, &QTimer::timeout, this, &WifiDaemon::retryWPASetup);
    connect(control, &WifiControl::scanResultsIn, this, &WifiDaemon::onScanResultsIn);
    connect(control, &WifiControl::connected, this, &WifiDaemon::onConnected);
    connect(control, &WifiControl::bssRemoved, this, &WifiDaemon::bssRemoved);
    connect(control, &WifiControl::disconnected, this, &WifiDaemon::onDisconnected);
    connect(control, &WifiControl::associating, this, &WifiDaemon::onAssociating);
    connect(control, &WifiControl::associated, this, &WifiDaemon::onAssociated);
    connect(control, &WifiControl::terminating, this, &WifiDaemon::onTerminating);
    connect(control, &WifiControl::ssidError, this, &WifiDaemon::onConnectError);
    connect(control, &WifiControl::ipRefreshed, this, &WifiDaemon::ipRequest);
}

void WifiDaemon::retryWPASetup()
{
    if (control->setup()) {
        discardRetryTimer();
        qCDebug(debugLog) << "Finally init with WPA Supplicant";
    } else {
        qCDebug(debugLog) << "Retrying SETUP again in 4sec";
    }
}

void WifiDaemon::discardRetryTimer()
{
    retryTimer->stop();
    retryTimer->deleteLater();
    retryTimer = nullptr;
}

void WifiDaemon::wpaConnectRequest()
{
    qCDebug(debugLog) << Q_FUNC_INFO << "about to establish connection to wpa_supplicant";
    QTimer::singleShot(reconnectDelay_ms, this, &WifiDaemon::onWpaConnectRequest);
}

void WifiDaemon::onWpaConnectRequest()
{
    qCDebug(debugLog) << Q_FUNC_INFO << "trying to establish connection to wpa_supplicant";
    control->cleanup();
    // A retry on the link that is now open would open it a second time.
    if (control->setup() && retryTimer && retryTimer->isActive())
        discardRetryTimer();
    control->ctrlRequest(QStringLiteral("RECONFIGURE"));
}

void WifiDaemon::onConnected()
{
    qCDebug(debugLog) << Q_FUNC_INFO << "about to refresh IP";
    QTimer::singleShot(addressRefreshDelay_ms, control, &WifiControl::refreshIP);
    emit statusMessage(Status::Connected);
    ssidRequest();
    ipRequest();
}

void WifiDaemon::onTerminating()
{
    emit statusMessage(Status::SupplicantExiting);
    qCDebug(debugLog) << Q_FUNC_INFO << "removing connection to wpa_supplicant";
    control->cleanup();
    ssidRequest();
    ipRequest();
}

void WifiDaemon::onConnectError(int status)
{
    emit statusMessage(status);
}

// Nothing to report for these: clients learn of the end of an association by asking, and of a
// beginning one when it is complete.
void WifiDaemon::onDisconnected() {}
void WifiDaemon::onAssociating() {}
void WifiDaemon::onAssociated() {}

void WifiDaemon::sync()
{
    syncProcess->run(QStringLiteral("sync"), {});
}
