// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

class QCoreApplication;

/// Catches SIGTERM and SIGINT from here on. Call once, before the application object exists, so
/// that a signal during start-up is not lost. The signals are handled rather than blocked: a
/// blocked mask would be inherited by every tool the daemon starts, a handler is not.
void catchQuitSignals();

/// Ends the application's event loop when one of the signals has come or comes.
void quitOnSignals(QCoreApplication &application);
