// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <bxwifi/joinsettings.h>

#include <QString>
#include <QStringList>

#include <optional>

/// What was given behind the verb.
struct Options {
    bool json = false;
    bool all = false;
    bool stored = false;
    bool once = false;
    bool help = false;
    BxWifi::JoinSettings join; ///< without name and secret
    QString passwordFile;
    QString uriFile;
    QStringList arguments; ///< without options
};

/// The options in `argv`, behind the verb in its first place. `accepted` holds the letters of those
/// that the verb takes (see the source). None after a usage error, which is then printed.
std::optional<Options> parseOptions(int argc, char **argv, const char *accepted);
