// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * Which acquisitions have another setting than is common in their group.
 */
#ifndef OVINFO_STUDYDEVIATIONS_H
#define OVINFO_STUDYDEVIATIONS_H

#include "StudyReport.h"

/** Compares the acquisitions of a report, which are in groups already. */
void addDeviations(StudyReport* report);

#endif
