// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "wifireply.h"

namespace BxWifi
{
struct WifiReply::Private {
    bool isFinished = false;
    Error error = NoError;
    QString errorText;
    Stage stage = Waiting;
    QVariant result;
    std::function<void()> abortHandler;
};

WifiReply::WifiReply(QObject *parent) : QObject(parent), d(std::make_unique<Private>()) {}

WifiReply::~WifiReply() = default;

bool WifiReply::isFinished() const
{
    return d->isFinished;
}

WifiReply::Error WifiReply::error() const
{
    return d->error;
}

QString WifiReply::errorText() const
{
    return d->errorText;
}

WifiReply::Stage WifiReply::stage() const
{
    return d->stage;
}

QVariant WifiReply::result() const
{
    return d->result;
}

void WifiReply::abort()
{
    if (d->abortHandler && !d->isFinished)
        d->abortHandler();
    else
        fail(Aborted, tr("given up"));
}

void WifiReply::setAbortHandler(std::function<void()> handler)
{
    d->abortHandler = std::move(handler);
}

void WifiReply::setStage(Stage stage)
{
    if (d->stage == stage)
        return;
    d->stage = stage;
    QMetaObject::invokeMethod(
        this, [this, stage] { emit stageChanged(stage); }, Qt::QueuedConnection);
}

void WifiReply::finish(const QVariant &result)
{
    if (d->isFinished)
        return;
    d->isFinished = true;
    d->result = result;
    const auto tell = [this] {
        deleteLater();
        emit finished(); // whoever hears it may delete this
    };
    QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
}

void WifiReply::fail(Error error, const QString &text)
{
    if (d->isFinished)
        return;
    d->error = error;
    d->errorText = text;
    finish({});
}
} // namespace BxWifi
