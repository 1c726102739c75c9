// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * Which attributes of a spectral-analysis file are which fields of the records, and how their texts
 * are read.
 */
#ifndef OVPARSER_SPECTRALFIELDS_H
#define OVPARSER_SPECTRALFIELDS_H

#include "PLKeywords.h"
#include "PLSpectralWrapper.h"

#include <QtCore/QString>

#include <algorithm>
#include <array>
#include <charconv>
#include <variant>

namespace ovparser::internal {

namespace Attribute = PLKeyword::Spectral::Attribute;

/** An attribute and the field of a record that holds its value. */
template <typename Record>
struct Field
{
    QLatin1String attribute;
    std::variant<QString Record::*, double Record::*, int Record::*> member;
};

/** Of an acquisition. */
inline constexpr Field<_tagSClickROIInformation> clickFields[] = {
    {Attribute::ClickNumber, &_tagSClickROIInformation::clickNumber},
    {Attribute::ImageWavelength, &_tagSClickROIInformation::imageWavelength},
};

/** Of its filter. */
inline constexpr Field<_tagSClickROIInformation> filterFields[] = {
    {Attribute::AvgTransmission, &_tagSClickROIInformation::avgTransmission},
    {Attribute::BandWidth, &_tagSClickROIInformation::bandWidth},
    {Attribute::CentralWavelength, &_tagSClickROIInformation::centralWavelength},
};

/** Of its first region of interest. */
inline constexpr Field<_tagSClickROIInformation> clickRoiFields[] = {
    {Attribute::Roi, &_tagSClickROIInformation::roi},
    {Attribute::RoiLabel, &_tagSClickROIInformation::roiLabel},
};

/** Of the shape of that region. */
inline constexpr Field<_tagSClickROIInformation> propertyFields[] = {
    {Attribute::Angle, &_tagSClickROIInformation::angle},
    {Attribute::Height, &_tagSClickROIInformation::height},
    {Attribute::RoiShape, &_tagSClickROIInformation::roiShape},
    {Attribute::Width, &_tagSClickROIInformation::width},
    {Attribute::Xc, &_tagSClickROIInformation::xc},
    {Attribute::Yc, &_tagSClickROIInformation::yc},
    {Attribute::RoiPixels, &_tagSClickROIInformation::roiPixels},
    {Attribute::Area, &_tagSClickROIInformation::area},
    {Attribute::CmPerPixel, &_tagSClickROIInformation::cmPerPixel},
    {Attribute::RoiType, &_tagSClickROIInformation::roiType},
    {Attribute::LockPosition, &_tagSClickROIInformation::lockPosition},
    {Attribute::LockSize, &_tagSClickROIInformation::lockSize},
    {Attribute::BkgRoi, &_tagSClickROIInformation::bkgROI},
    {Attribute::BkgAssociation, &_tagSClickROIInformation::bkgAssociation},
    {Attribute::SubAssociation, &_tagSClickROIInformation::subAssociation},
    {Attribute::FractionalPeak, &_tagSClickROIInformation::fractionalPeak},
};

/** Of its contour. */
inline constexpr Field<_tagSClickROIInformation> contourFields[] = {
    {Attribute::ContourDirections, &_tagSClickROIInformation::contourDirections},
    {Attribute::ContourStartX, &_tagSClickROIInformation::contourStartX},
    {Attribute::ContourStartY, &_tagSClickROIInformation::contourStartY},
    {Attribute::ContourPeakX, &_tagSClickROIInformation::contourPeakX},
    {Attribute::ContourPeakY, &_tagSClickROIInformation::contourPeakY},
    {Attribute::ContourXDelta, &_tagSClickROIInformation::contourXDelta},
    {Attribute::ContourYDelta, &_tagSClickROIInformation::contourYDelta},
};

/** Of what was measured in it. */
inline constexpr Field<_tagSClickROIInformation> measurementFields[] = {
    {Attribute::AverageRadiance, &_tagSClickROIInformation::averageRadiance},
    {Attribute::FilterLabel, &_tagSClickROIInformation::filterLabel},
    {Attribute::TotalFlux, &_tagSClickROIInformation::totalFlux},
};

/** Of the total flux of a region of interest. */
inline constexpr Field<_tagSROISpectralResults> fluxFields[] = {
    {Attribute::TotalFlux, &_tagSROISpectralResults::totalFlux},
    {Attribute::FluxStdDev, &_tagSROISpectralResults::fluxStdDev},
};

/** Of the depth of its source. */
inline constexpr Field<_tagSROISpectralResults> depthFields[] = {
    {Attribute::AverageDepth, &_tagSROISpectralResults::averageDepth},
    {Attribute::DepthStdDev, &_tagSROISpectralResults::depthStdDev},
};

/** Of one value of a plot. */
inline constexpr Field<SPlotResults> plotFields[] = {
    {Attribute::Intensity, &SPlotResults::intensity},
    {Attribute::WaveLength, &SPlotResults::waveLength},
};

/** Of one value of a fit. */
inline constexpr Field<SFitResults> fitFields[] = {
    {Attribute::Intensity, &SFitResults::intensity},
    {Attribute::Attenuation, &SFitResults::attenuation},
    {Attribute::FitValue, &SFitResults::fitValue},
    {Attribute::HorizontalError, &SFitResults::horizontalError},
    {Attribute::VerticalError, &SFitResults::verticalError},
};

/** Whether the numbers that the library writes have such characters. */
[[nodiscard]] inline bool isPlain(QChar character)
{
    return (character >= u'0' && character <= u'9') || character == u'.' || character == u'-' ||
           character == u'+' || character == u'e';
}

/** Converts what the files hold, for which Qt takes several times as long; otherwise gives false.
 */
[[nodiscard]] inline bool convertPlain(const QString& text, double* value)
{
    std::array<char, 24> digits = {};
    if (text.size() > int(digits.size()) || !std::all_of(text.begin(), text.end(), isPlain))
        return false;
    std::transform(text.begin(), text.end(), digits.begin(), [](QChar c) { return c.toLatin1(); });
    const char* const end = digits.data() + text.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, *value);
    return stop == end && error == std::errc();
}

/** Reads the text of an attribute; a text that is no number, or one too large, gives 0. */
inline void convert(const QString& text, QString* value)
{
    *value = text;
}

inline void convert(const QString& text, int* value)
{
    *value = text.toInt();
}

inline void convert(const QString& text, double* value)
{
    if (convertPlain(text, value))
        return;
    bool converted = false;
    *value = text.toDouble(&converted);
    if (!converted) // also what is too large, for which Qt gives infinity
        *value = 0;
}

} // namespace ovparser::internal

#endif
