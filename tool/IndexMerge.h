// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * Puts the indexes of several runs together.
 */
#ifndef OVINFO_INDEXMERGE_H
#define OVINFO_INDEXMERGE_H

#include "Terminal.h"

/** Makes the index of a single run out of those of its parts, whatever their order. */
ExitCode mergeIndexes(const QStringList& parts, const QString& path);

#endif
