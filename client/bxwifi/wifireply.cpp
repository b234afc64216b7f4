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

void WifiReply::setStage(Stage stage)
{
    d->stage = stage;
    emit stageChanged(stage);
}

void WifiReply::finish(const QVariant &result)
{
    if (d->isFinished)
        return;
    d->isFinished = true;
    d->result = result;
    deleteLater();
    emit finished(); // whoever hears it may delete the client, and this with it
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
