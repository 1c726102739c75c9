// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * The spectral plot and the linear fit as a picture.
 */
#ifndef OVINFO_SPECTRALSVG_H
#define OVINFO_SPECTRALSVG_H

#include "SpectralFile.h"

/**
 * Draws the plots and the fit of a file side by side.
 *
 * @return false when the picture cannot be stored
 */
bool writeSpectralSvg(const SpectralFile& file, const QString& path);

#endif
