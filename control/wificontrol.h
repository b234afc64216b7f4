// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QObject>
#include <QString>

class QSocketNotifier;
struct wpa_ctrl;

/// The daemon's one link to wpa_supplicant.
///
/// Finds the supplicant's control socket and holds two connections to it: the control connection
/// for commands, the monitor connection for unsolicited events, which become the signals below.
/// Everything happens on the thread that owns the object, and an exchange blocks that thread until
/// the reply is there or the client library gives up (10 s).
class WifiControl : public QObject
{
    Q_OBJECT

public:
    explicit WifiControl(QObject *parent);
    ~WifiControl() override;
    Q_DISABLE_COPY_MOVE(WifiControl)

signals:
    void scanResultsIn();
    void disconnected();
    void connected();
    void associating();
    void associated();
    void bssRemoved(QString bssid);
    void terminating();
    /// A network was set aside; `status` is Status::WrongKey or Status::TemporarilyDisabled.
    void ssidError(int status);
    /// The DHCP client has run, with or without success.
    void ipRefreshed();

public slots:
    /// Closes what is open. Safe at any time, also from a slot that an event runs: no event is
    /// delivered after it returns. Blocks up to 10 s when the supplicant does not answer the
    /// detach.
    void cleanup();

    /// Opens both connections through the first control socket that works, in the directory's own
    /// order. Expects the link to be closed. False when there is no such socket.
    bool setup();

    /// Sends one command and returns the reply as received, line feed included and at most 2047
    /// bytes; empty when there is no link, the exchange failed or the supplicant did not answer.
    /// A reply that comes after its request was given up is logged and dropped, if it comes before
    /// the next request is sent: replies carry nothing that tells what they answer.
    QString ctrlRequest(const QString &cmd);

    /// Runs the DHCP client once on the wireless interface, for at most 30 s, then emits
    /// `ipRefreshed()`.
    void refreshIP();

    /// The WPA pre-shared key as 64 lower-case hexadecimal digits: PBKDF2-HMAC-SHA1 over the
    /// passphrase with the SSID as salt, 4096 rounds, 256 bits (IEEE 802.11i, H.4.1).
    QString hashPassword(const QString &passphrase, const QString &ssid);

    /// Whether a reply counts as success: it is there and does not begin with "Fail". The
    /// supplicant's "FAIL" does count; callers judge that reply themselves.
    bool processReturn(const QString &returnString);

    /// The pre-shared key as the supplicant's own tool `wpa_passphrase` prints it; empty when it
    /// prints none, as for a passphrase outside 8 to 63 characters.
    QString hashPasswordVantrel(const QString &passphrase, const QString &ssid);

private slots:
    void receiveMessages();
    void processMessage(const QString &message);

private:
    /// Opens both connections through one control socket. Null when that succeeded, else what
    /// failed; nothing is left open then.
    const char *openConnections(const QString &socketPath);
    void watchMonitorConnection();
    /// Takes replies off the control connection that came after their request was given up.
    void drainControlConnection();

    wpa_ctrl *ctrlConn = nullptr;
    wpa_ctrl *monitorConn = nullptr;
    QSocketNotifier *monitorNotifier = nullptr;
    QString ifaceName; ///< Name of the control socket last opened; kept when the link closes
};
