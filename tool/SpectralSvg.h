// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * The spectral plot and the linear fit as a picture.
 */
#ifndef OVINFO_SPECTRALSVG_H
#define OVINFO_SPECTRALSVG_H

#include "Chart.h"
#include "SpectralFile.h"

#include <QtCore/QByteArray>

/** The plots and the fit of a file. */
QList<Chart> spectralCharts(const SpectralFile& file);

/** The same side by side, as an SVG document. */
QByteArray spectralSvg(const SpectralFile& file);

#endif
