// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * The order in which a walk through folders meets them, told from their paths.
 */
#ifndef OVINFO_WALKORDER_H
#define OVINFO_WALKORDER_H

#include <QtCore/QString>

/**
 * What a folder is sorted by: texts compare as a walk meets their folders, each before those below
 * it.
 */
QString walkKey(const QString& folder);

/** The folder of a file, as its path spells it: empty when it names none. */
QString folderOf(const QString& path);

#endif
