// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * A spectral analysis as JSON.
 */
#ifndef OVINFO_SPECTRALJSON_H
#define OVINFO_SPECTRALJSON_H

#include "SpectralFile.h"

#include <QtCore/QJsonObject>

/** The whole file; its path is one of the members. */
QJsonObject spectralJson(const QString& path, const SpectralFile& file);

#endif
