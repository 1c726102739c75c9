// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * The section of a report about spectral analyses.
 */
#ifndef OVINFO_REPORTSPECTRA_H
#define OVINFO_REPORTSPECTRA_H

#include "ReportContext.h"

void writeSpectralResults(const ReportContext& at);

#endif
