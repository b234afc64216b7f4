// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "export.h"

#include <QObject>
#include <QVariant>

#include <memory>

namespace BxWifi
{
/// One request on its way. Finishes exactly once, never before control has returned to the event
/// loop, and deletes itself after finished() has been delivered.
class BXWIFI_EXPORT WifiReply : public QObject
{
    Q_OBJECT
    Q_PROPERTY(BxWifi::WifiReply::Error error READ error NOTIFY finished)
    Q_PROPERTY(QVariant result READ result NOTIFY finished)
    Q_PROPERTY(QString errorText READ errorText NOTIFY finished)
    Q_PROPERTY(BxWifi::WifiReply::Stage stage READ stage NOTIFY stageChanged)

public:
    /// What became of the request.
    enum Error {
        NoError,             ///< All is well, or not finished yet
        NoDaemon,            ///< No system bus, no daemon on it, or it went away
        Denied,              ///< The bus does not let this user call the daemon
        TimedOut,            ///< No answer in time
        WrongKey,            ///< The access point refused the passphrase, key or login
        TemporarilyDisabled, ///< The supplicant set the network aside for another reason
        NotFound,            ///< No such network in sight, or none stored under that name
        NoAddress,           ///< Joined, but no address came
        NoSupplicant,        ///< The daemon has no supplicant to talk to
        InvalidRequest,      ///< Refused before anything was sent
        Failed,              ///< Anything else
    };
    Q_ENUM(Error)

    /// How far joining a network has come.
    enum Stage {
        Waiting,     ///< Nothing to tell; the stage of every other request
        Scanning,    ///< Looking for the network
        Asking,      ///< Telling the daemon
        Associating, ///< The supplicant is at it
        Addressing,  ///< Joined, waiting for an address
    };
    Q_ENUM(Stage)

    /// For the library; programs get theirs from WifiClient.
    explicit WifiReply(QObject *parent);
    ~WifiReply() override;

    /// Whether finished() was sent, or is about to be.
    bool isFinished() const;
    /// What went wrong, to tell apart.
    Error error() const;
    /// What went wrong, in one sentence without a full stop.
    QString errorText() const;
    /// How far it has come.
    Stage stage() const;
    /// What a successful request brings, as the method that started it says; see WifiReplyWith.
    QVariant result() const;

signals:
    /// It has come further.
    void stageChanged(BxWifi::WifiReply::Stage stage);
    /// Comes once, with or without an error; the reply is deleted after it.
    void finished();

private:
    friend class WifiClient;
    friend class WifiClientPrivate;
    friend class Join;
    void setStage(Stage stage);
    void finish(const QVariant &result);
    void fail(Error error, const QString &text);

    struct Private;
    std::unique_ptr<Private> d;
};

/// A request whose success brings a value. The value means nothing before, or after an error.
template<typename Value>
class WifiReplyWith : public WifiReply
{
public:
    using WifiReply::WifiReply;
    /// What the request brought.
    Value value() const { return result().template value<Value>(); }
};
} // namespace BxWifi
