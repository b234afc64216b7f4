// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "export.h"

#include <QLocale>

namespace BxWifi
{
/// From now on texts of this library, and those of the QML module BxWifi.Controls, are in the
/// language of a locale; false if there is no translation into it, and they are in English. Needs
/// the application object, and belongs into its thread. The QML module calls it by itself, for the
/// default locale.
///
/// Translations are files bxwifi/translations/bxwifi_LANGUAGE.qm below the folders of shared data,
/// such as /usr/share; XDG_DATA_DIRS names others.
BXWIFI_EXPORT bool installTranslation(const QLocale &locale);
} // namespace BxWifi
