// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * Puts the records of several runs together.
 */
#ifndef OVINFO_STUDYMERGE_H
#define OVINFO_STUDYMERGE_H

#include "StudyWriter.h"
#include "Terminal.h"

/**
 * Reads records, one JSON object per line, and hands them on in the order of a single run, whatever
 * the order of the parts. Each part must be in that order itself.
 */
ExitCode mergeRecords(const QStringList& parts, StudyWriter* writer);

#endif
