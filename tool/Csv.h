// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * Comma-separated values (RFC 4180).
 */
#ifndef OVINFO_CSV_H
#define OVINFO_CSV_H

#include <QtCore/QStringList>

/** A line of cells, quoted where needed; it ends in CR LF. */
QString csvLine(const QStringList& cells);

/** A cell with an apostrophe before what a spreadsheet would take for a formula. */
QString guarded(const QString& cell);

#endif
