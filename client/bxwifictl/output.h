// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QJsonObject>
#include <QJsonValue>
#include <QPair>
#include <QString>
#include <QStringList>
#include <QVector>

/// Named values in the order in which people read them. A name that ends in "_dbm" or "_mhz" tells
/// the unit.
using Fields = QVector<QPair<QString, QJsonValue>>;

/// Text without anything that a terminal acts upon or that hides what is printed: control and
/// format characters, and line separators, come out as \uXXXX, which is right in JSON too. Names
/// of networks come from strangers.
QString terminalSafe(const QString &text);

/// Whether standard output is a terminal on which colour may be used.
bool isTerminal();

/// Writes a line to standard output.
void print(const QString &line);
void printJson(const QJsonValue &value);

QJsonObject jsonOf(const Fields &fields);
/// "name  value" lines, aligned; empty values are left out.
QString listOf(const Fields &fields);
/// The fields in one line, name=value.
QString lineOf(const Fields &fields);
/// Rows in aligned columns, by the width that the terminal gives each character.
QStringList tableOf(const QVector<QStringList> &rows);

/// Strength of a signal as a picture, for 0 to 4 bars.
QString barsPicture(int bars);
