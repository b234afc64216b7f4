// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QProcess>

/// A bus daemon of the test's own that lets everybody do everything; it is the system bus of this
/// process and of those that are started from then on.
class PrivateBus
{
public:
    PrivateBus();
    ~PrivateBus();
    Q_DISABLE_COPY_MOVE(PrivateBus)

    QString address() const { return busAddress; }

private:
    QProcess busDaemon;
    QString busAddress;
};
