/**
 * @file
 * A spectral analysis as JSON.
 */
#ifndef OVINFO_SPECTRALJSON_H
#define OVINFO_SPECTRALJSON_H

#include "SpectralFile.h"

/** The whole file as one indented object that ends in a line feed. */
QString spectralJson(const SpectralFile& file);

#endif
