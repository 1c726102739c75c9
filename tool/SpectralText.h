// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * A spectral analysis as tables.
 */
#ifndef OVINFO_SPECTRALTEXT_H
#define OVINFO_SPECTRALTEXT_H

#include "SpectralFile.h"

QString spectralText(const SpectralFile& file);

#endif
