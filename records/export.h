// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QtGlobal>

// The daemon's library offers the records to its users; a library that only carries them inside
// defines BX_RECORDS_PRIVATE and keeps them to itself.
#ifdef BX_RECORDS_PRIVATE
#define BX_RECORDS_EXPORT
#else
#define BX_RECORDS_EXPORT Q_DECL_EXPORT
#endif
