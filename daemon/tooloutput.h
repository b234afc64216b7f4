// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "records/bxstatic.h"

#include <QString>

/// The value in what `fw_printenv NAME` printed, "NAME=VALUE" and a line feed, which the value
/// keeps. It ends at its next "="; empty when nothing was printed.
QString bootValueOf(const QString &output);

/// Fills address and mask from what busybox `ifconfig` printed: the pieces "addr:A" and "Mask:M" of
/// a line that holds "inet addr" and not "HWaddr". What it does not print stays as it is.
void readInterfaceAddress(const QString &output, BXStatic &addressing);

/// Fills the gateway from what `route -n` printed: the second word of the last line that begins
/// with "0.0.0.0" and ends with "eth0". Without such a line it stays as it is.
void readDefaultGateway(const QString &output, BXStatic &addressing);
