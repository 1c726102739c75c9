// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * What parts two versions of a text file, for people.
 */
#ifndef OVINFO_LINEDIFF_H
#define OVINFO_LINEDIFF_H

#include <QtCore/QByteArray>
#include <QtCore/QString>

/**
 * Two versions of a file as a unified diff without common lines around it; empty when they have the
 * same lines. Each TAB is printed as two blanks, as by `show`.
 *
 * @param start  where the text begins; lines are counted from there
 */
QString lineDiff(const QString& file, const QByteArray& before, const QByteArray& after, int start);

#endif
