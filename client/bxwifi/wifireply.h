// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "export.h"

#include <QObject>
#include <QVariant>

#include <functional>
#include <memory>

namespace BxWifi
{
/// One request on its way. Finishes exactly once and deletes itself after finished() has been
/// delivered. All its signals come from the event loop, so whoever hears them may do anything:
/// start requests, delete this reply, others or the client.
///
/// Deleting a reply is allowed at any time: nobody is told how the request ends, and the calls that
/// it has not made yet are not made. What the daemon was told already goes on; a join that is to be
/// given up needs abort(), which goes back to the network that was joined before.
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
        Aborted,             ///< abort() was called
        Superseded,          ///< Another join of the same client took its place
    };
    Q_ENUM(Error)

    /// How far joining a network has come.
    enum Stage {
        Waiting,     ///< Nothing to tell; the stage of every other request
        Scanning,    ///< Looking for the network
        Asking,      ///< Telling the daemon
        Associating, ///< The supplicant is at it
        Addressing,  ///< Joined, waiting for an address
        Returning,   ///< Not joined; on the way back to the network that was joined before
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

public Q_SLOTS:
    /// Gives the request up: it finishes with Aborted. A join goes back to the network that was
    /// joined before, and finishes when it is there, after 30 s, or with a second abort().
    void abort();

Q_SIGNALS:
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
    /// What abort() does in place of failing at once.
    void setAbortHandler(std::function<void()> handler);

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
