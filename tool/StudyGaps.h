// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * Which time points are missing.
 */
#ifndef OVINFO_STUDYGAPS_H
#define OVINFO_STUDYGAPS_H

#include "StudyReport.h"

/** Adds the gaps of a group's subjects. @param report  whose acquisitions the group has */
void addGaps(const StudyReport& report, ReportedGroup* group);

#endif
