// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * The sections of a report that are tables and lists.
 */
#ifndef OVINFO_REPORTTABLES_H
#define OVINFO_REPORTTABLES_H

#include "ReportContext.h"

void writeDeviations(const ReportContext& at);

/** Writes the values of the labels. */
void writeLabels(const ReportContext& at);
void writeProblems(const ReportContext& at);

#endif
