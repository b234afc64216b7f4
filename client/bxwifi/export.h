// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QtGlobal>

#ifdef BXWIFI_BUILDING_CLIENT
#define BXWIFI_EXPORT Q_DECL_EXPORT
#else
#define BXWIFI_EXPORT Q_DECL_IMPORT
#endif
