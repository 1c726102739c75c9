// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * Everything that a spectral-analysis file tells.
 */
#ifndef OVINFO_SPECTRALFILE_H
#define OVINFO_SPECTRALFILE_H

#include "ParserLibrary.h"

#include <QtCore/QList>
#include <QtCore/QString>

#include <optional>

/** The attributes of an analysis, and its acquisitions with their first regions of interest. */
struct SpectralAnalysis
{
    QString sequenceId;
    QString activeImage;
    QString tissue;
    QString sourceModel;
    QString refraction;
    QList<_tagSClickROIInformation> clicks;
};

/**
 * The values that were plotted and fitted for one region of interest. Labels that differ only in
 * letter case are one, in the spelling that comes first.
 */
struct SpectralCurve
{
    QString label;
    QList<SPlotResults> plot;
    QList<SFitResults> fit;
};

/** The line A x + B. */
struct LinearFit
{
    double a = 0.0;
    double b = 0.0;
};

/** What the library does not read, or does not read as it is written. */
struct SpectralFault
{
    int line = 0;          ///< from 1
    const char* code = ""; ///< for programs
    QString message;
};

using SpectralFaults = QList<SpectralFault>;

struct SpectralFile
{
    QList<SpectralAnalysis> analyses;
    QList<_tagSROISpectralResults> results;
    QList<SpectralCurve> curves;
    std::optional<LinearFit> linearFit;
    SpectralFaults faults; ///< where another number of parts is stated than there is
};

/**
 * Reads a file.
 *
 * @param problem  receives what is wrong
 * @return nothing when the file cannot be read or is no spectral-analysis file
 */
std::optional<SpectralFile> readSpectralFile(const QString& path, QString* problem);

/** What is not read of the elements of a file, and attributes that should be numbers. */
SpectralFaults elementFaults(const QString& path);

#endif
