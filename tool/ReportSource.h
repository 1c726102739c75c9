// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * Where a report gets its records from.
 */
#ifndef OVINFO_REPORTSOURCE_H
#define OVINFO_REPORTSOURCE_H

#include "ArchiveRequest.h"
#include "StudyRecords.h"

/** Reads and checks everything in and below folders; tells what cannot be read. */
ExitCode readFolders(const QStringList& folders, ArchiveRequest archive, StudyRecords* records);

/** Reads what other runs printed, one JSON object per line; tells of a file that holds others. */
ExitCode readJsonLines(const QStringList& files, StudyRecords* records);

/** Reads the records of indexes; tells of a file that is none. */
ExitCode readIndexes(const QStringList& files, StudyRecords* records);

#endif
