// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "ImageSections.h"

#include "PLKeywords.h"
#include "SectionAccess.h"
#include "internal/text/LocalTime.h"
#include "internal/text/NumberFormat.h"

#include <algorithm>
#include <iterator>
#include <variant>

namespace ovparser::internal {

namespace {

namespace Key = PLKeyword::Key;
namespace Value = PLKeyword::Value;

using Setup = sIASetupInfo;

/** Image types as a set. */
using Images = unsigned;

constexpr Images only(tag_eimagetype type)
{
    return 1U << unsigned(type);
}

constexpr Images Photograph = only(eIMAGE_PHOTOGRAPH);
constexpr Images Structure = only(eIMAGE_STRUCTURE);
constexpr Images Photographic = Photograph | Structure;
constexpr Images Corrected = only(eIMAGE_LUMINESCENT_CORRECTED);
constexpr Images FlReference = only(eIMAGE_FL_REFERENCE);
constexpr Images Uncorrected = only(eIMAGE_LUMINESCENT) | FlReference;
constexpr Images Light = Uncorrected | Corrected;
constexpr Images ReadBiasOnly = only(eIMAGE_BIAS);
constexpr Images FluorescentBkg = only(eIMAGE_FLUORESCENT_BKG);
constexpr Images XRay = only(eIMAGE_XRAY);
constexpr Images Blemish = only(eIMAGE_BLEMISH);
constexpr Images AnyImage = ~0U;

/** What is true of a setup, as a set. */
enum Fact : unsigned {
    Always = 0,
    Settings = 1U << 0U,
    Mirror = 1U << 1U,
    Fluorescent = 1U << 2U,
    EmGain = 1U << 3U,
    Mode1 = 1U << 4U,
    Mode2 = 1U << 5U,
    NotMode2 = 1U << 6U,
    Grid = 1U << 7U,
    SingleSpot = 1U << 8U,
    MultiSpot = 1U << 9U,
};

/** Where a value comes from: a fixed text, a field of the setup, or a function of it or its time.
 */
using Source = std::variant<QLatin1String, QString Setup::*, int Setup::*, float Setup::*,
                            double Setup::*, QString (*)(const Setup&), QString (*)(struct tm*)>;

/** A key, its value, the images that have it, and the facts that must all be true for that. */
struct KeyRow
{
    QLatin1String key;
    Source source;
    Images images = AnyImage;
    unsigned needs = Always;
};

QString acquisitionSeconds(const Setup& setup)
{
    return getTimefrom1904(double(setup.acquisitionTime));
}

QString objectRadius(const Setup& setup)
{
    return qtGeneralText(setup.subjectSize / 2);
}

QString xrayImagingMode(const Setup& setup)
{
    switch (setup.xrayImagingMode) {
    case 1:
        return Value::LargeAnimal;
    case 2:
        return Value::HighResolution;
    default:
        return Value::Mouse;
    }
}

QString gridPosition(int x, int y)
{
    return QString::number(x) + QLatin1String(", ") + QString::number(y);
}

QString singleGridPosition(const Setup& setup)
{
    return gridPosition(setup.flGridPositionX, setup.flGridPositionY);
}

QString multiGridPosition(const Setup& setup)
{
    QString text;
    for (const QPoint& point : setup.flGridPoints)
        text += gridPosition(point.x(), point.y()) + QLatin1Char(';');
    return text;
}

QString singleXSpot(const Setup& setup)
{
    return fourDecimalText(double(setup.flXSpot));
}

QString singleYSpot(const Setup& setup)
{
    return fourDecimalText(double(setup.flYSpot));
}

/** 100 times the square of the whole binning quotient; a raw binning of 0 gives 0. */
QString minimalCounts(const Setup& setup)
{
    const qint64 raw = setup.rawBinning;
    const qint64 quotient = raw == 0 ? 0 : setup.luminescentBinning / raw;
    return qtGeneralText(double(100.0F * float(quotient) * float(quotient)));
}

constexpr unsigned OnFlGrid = Settings | Fluorescent | Mode1 | Grid;

/** The keys of all images; those of one image are in the order in which they are written. */
constexpr KeyRow keyRows[] = {
    {Key::AcquisitionDate, getDateOVSFormat},
    {Key::AcquisitionTime, getTimeOVSFormat},
    {Key::AcquisitionSeconds, acquisitionSeconds},
    {Key::PixelWidth, Value::One},
    {Key::PixelHeight, Value::One},
    {Key::ImagingAngle, &Setup::imagingAngle, AnyImage, Mode2},

    {Key::SideViewMirrorEnabled, Value::Yes, Photograph, Mirror},
    {Key::BinningFactor, &Setup::photographBinning, Photograph},
    {Key::BinningFactor, &Setup::structureBinning, Structure},
    {Key::ImageUnits, Value::Counts, Photographic, Settings},
    {Key::FNumber, &Setup::photographFNumber, Photographic, Settings},
    {Key::FieldOfView, &Setup::fieldOfView, Photographic, Settings},
    {Key::FilterPosition, Value::One, Photographic, Settings},
    {Key::EmissionFilter, Value::OpenFilter, Photographic, Settings},
    {Key::ExposureTimeSec, &Setup::photographExposure, Photographic, Settings},
    {Key::ObjectRadius, objectRadius, Photographic, Settings},
    {Key::SubjectSize, &Setup::subjectSize, Photographic, Settings},
    {Key::HeightReference, &Setup::heightReference, Structure, Settings | Mode1},
    {Key::HeightReferencePixelX, &Setup::heightReferencePixelX, Structure, Settings | Mode1},
    {Key::HeightReferencePixelY, &Setup::heightReferencePixelY, Structure, Settings | Mode1},
    {Key::StructureFrequency, &Setup::structureFrequencyText, Structure, Settings | NotMode2},
    {Key::MvStageDistance, &Setup::stageDistance, Structure, Settings | Mode2},
    {Key::StructuredLightLittleL, &Setup::stageDistance, Structure, Settings | Mode2},
    {Key::StructureFrequency, &Setup::structureFrequency, Structure, Settings | Mode2},
    {Key::ErrorWave, Value::NoError, Photographic, Settings},

    {Key::ImageUnits, Value::Counts, Light},
    {Key::BinningFactor, &Setup::luminescentBinning, Light},
    {Key::SideViewMirrorEnabled, Value::Yes, Light, Mirror},
    {Key::LuminescentExposure, &Setup::luminescentExposure, Light, Settings},
    {Key::LuminescentExposureUnits, &Setup::luminescentExposureUnits, Light, Settings},
    {Key::EmGain, &Setup::emGain, Light, Settings | EmGain},
    {Key::FNumber, &Setup::luminescentFNumber, Light, Settings},
    {Key::FieldOfView, &Setup::fieldOfView, Light, Settings},
    {Key::ReadBiasLevel, &Setup::readBiasLevel, Light, Settings},
    {Key::EmissionFilter, &Setup::emissionFilter, Light, Settings},
    {Key::FilterPosition, &Setup::filterPosition, Light, Settings},
    {Key::ExcitationFilter, &Setup::excitationFilter, Light, Settings},
    {Key::SubjectSize, &Setup::subjectSize, Light, Settings},
    {Key::ImageSubtype, Value::Fluorescent, Light, Settings | Fluorescent},
    {Key::FluorescenceLevel, &Setup::fluorescenceLevel, Light, Settings | Fluorescent},
    {Key::FluorescenceLevelString, &Setup::fluorescenceLevelText, Light, Settings | Fluorescent},
    {Key::FlGridName, &Setup::flGridName, Light, OnFlGrid},
    {Key::FlGridPosition, singleGridPosition, Light, OnFlGrid | SingleSpot},
    {Key::FlGridPosition, multiGridPosition, Light, OnFlGrid | MultiSpot},
    {Key::FlXMotorPosition, &Setup::flXMotorPosition, Light, OnFlGrid | SingleSpot},
    {Key::FlXMotorPosition, &Setup::flXMotorPositionText, Light, OnFlGrid | MultiSpot},
    {Key::FlYMotorPosition, &Setup::flYMotorPosition, Light, OnFlGrid | SingleSpot},
    {Key::FlYMotorPosition, &Setup::flYMotorPositionText, Light, OnFlGrid | MultiSpot},
    {Key::FlXSpot, singleXSpot, Light, OnFlGrid | SingleSpot},
    {Key::FlXSpot, &Setup::flXSpotText, Light, OnFlGrid | MultiSpot},
    {Key::FlYSpot, singleYSpot, Light, OnFlGrid | SingleSpot},
    {Key::FlYSpot, &Setup::flYSpotText, Light, OnFlGrid | MultiSpot},
    {Key::MinimalCounts, minimalCounts, FlReference, OnFlGrid},
    {Key::RawBinning, &Setup::rawBinning, FlReference, OnFlGrid},
    {Key::DemandTemperature, &Setup::demandTemperature, Light, Settings},
    {Key::MeasuredTemperature, &Setup::measuredTemperature, Light, Settings},
    {Key::ErrorWave, Value::NoError, Light, Settings},
    {Key::Cosmic, Value::Zero, Uncorrected},
    {Key::BackgroundCorrected, Value::Zero, Uncorrected},
    {Key::FlatFieldCorrected, Value::Zero, Uncorrected},
    {Key::Cosmic, Value::One, Corrected},
    {Key::BackgroundCorrected, Value::One, Corrected},
    {Key::FlatFieldCorrected, Value::One, Corrected},

    {Key::BinningFactor, &Setup::luminescentBinning, ReadBiasOnly},
    {Key::ReadBiasLevel, &Setup::readBiasLevel, ReadBiasOnly, Settings},
    {Key::DemandTemperature, &Setup::demandTemperature, ReadBiasOnly, Settings},
    {Key::MeasuredTemperature, &Setup::measuredTemperature, ReadBiasOnly, Settings},
    {Key::DataMultiplier, Value::One, ReadBiasOnly, Settings},
    {Key::BackgroundExposure, Value::NoExposure, ReadBiasOnly, Settings},

    {Key::BinningFactor, &Setup::luminescentBinning, FluorescentBkg},
    {Key::FNumber, &Setup::luminescentFNumber, FluorescentBkg},
    {Key::FieldOfView, &Setup::fieldOfView, FluorescentBkg},
    {Key::ReadBiasLevel, &Setup::readBiasLevel, FluorescentBkg},
    {Key::FluorescenceLevel, &Setup::fluorescenceLevel, FluorescentBkg},
    {Key::FluorescenceLevelString, &Setup::fluorescenceLevelText, FluorescentBkg},
    {Key::DemandTemperature, &Setup::demandTemperature, FluorescentBkg},
    {Key::MeasuredTemperature, &Setup::measuredTemperature, FluorescentBkg},
    {Key::DataMultiplier, Value::One, FluorescentBkg},
    {Key::BackgroundExposure, &Setup::luminescentExposure, FluorescentBkg},

    {Key::BinningFactor, &Setup::xrayBinning, XRay},
    {Key::FNumber, &Setup::xrayFNumber, XRay},
    {Key::FieldOfView, &Setup::fieldOfView, XRay},
    {Key::ReadBiasLevel, &Setup::xrayReadBiasLevel, XRay},
    {Key::XRayTubeVoltage, &Setup::xrayTubeVoltage, XRay},
    {Key::XRayTubePlateCurrent, &Setup::xrayTubePlateCurrent, XRay},
    {Key::XRayTubeFilter, &Setup::xrayTubeFilter, XRay},
    {Key::ExposureTimeSec, &Setup::xrayExposure, XRay},
    {Key::SideViewMirrorEnabled, Value::Yes, XRay, Mirror},
    {Key::ImagingMode, xrayImagingMode, XRay},

    // A blemish image is no acquisition: these replace the values that every image has, in place.
    {Key::AcquisitionDate, Value::BlemishDate, Blemish},
    {Key::AcquisitionTime, Value::BlemishTime, Blemish},
    {Key::AcquisitionSeconds, Value::BlemishSeconds, Blemish},
    {Key::BinningFactor, &Setup::blemishBinning, Blemish},
    {Key::DemandTemperature, &Setup::demandTemperature, Blemish},
    {Key::MeasuredTemperature, &Setup::measuredTemperature, Blemish},
};

namespace Section = PLKeyword::Section;

constexpr ImageKind imageSections[] = {
    {eIMAGE_PHOTOGRAPH, Section::Photograph, Value::DisplayPhotographic},
    {eIMAGE_STRUCTURE, Section::Structure, Value::DisplayStructure},
    {eIMAGE_LUMINESCENT, Section::Luminescent, Value::DisplayLuminescent},
    {eIMAGE_LUMINESCENT_CORRECTED, Section::LuminescentCorrected},
    {eIMAGE_BIAS, Section::ReadBiasOnly},
    {eIMAGE_FLUORESCENT_BKG, Section::FluorescentBackground},
    {eIMAGE_READ_BIAS, Section::ReadBias, {}, true},
    {eIMAGE_READ_SIGMA, Section::ReadSigma, {}, true},
    {eIMAGE_BACKGROUND, Section::DarkCharge, {}, true},
    {eIMAGE_FL_REFERENCE, Section::FluorescentReference},
    {eIMAGE_XRAY, Section::XRay},
    {eIMAGE_BLEMISH, Section::Blemish},
};

unsigned factsOf(const Setup& setup, bool settings)
{
    const auto when = [](bool condition, Fact fact) { return condition ? fact : Always; };
    return when(settings, Settings) | when(setup.sideViewMirrorEnabled, Mirror) |
           when(setup.fluorescent, Fluorescent) | when(setup.emGain > 0, EmGain) |
           when(setup.imagingMode == 1, Mode1) | when(setup.flGridEnabled, Grid) |
           (setup.imagingMode == 2 ? Mode2 : NotMode2) |
           (setup.flGridPoints.size() < 2 ? SingleSpot : MultiSpot);
}

/** Makes the text of a value out of where it comes from. */
struct ValueText
{
    const Setup& setup;
    std::optional<struct tm> time;

    QString operator()(QLatin1String fixed) const { return fixed; }
    QString operator()(QString Setup::*text) const { return setup.*text; }
    QString operator()(int Setup::*number) const { return QString::number(setup.*number); }
    QString operator()(float Setup::*number) const { return qtGeneralText(double(setup.*number)); }
    QString operator()(double Setup::*number) const { return qtGeneralText(setup.*number); }
    QString operator()(QString (*compute)(const Setup&)) const { return compute(setup); }
    QString operator()(QString (*spell)(struct tm*)) { return spell(time ? &*time : nullptr); }
};

} // namespace

const ImageKind* imageKind(tag_eimagetype type)
{
    const auto* const kind = std::find_if(std::begin(imageSections), std::end(imageSections),
                                          [&](const ImageKind& each) { return each.type == type; });
    return kind == std::end(imageSections) ? nullptr : kind;
}

std::unique_ptr<CPLSection> makeImageSection(const ImageKind& kind, const QString& name,
                                             const Setup& setup, bool settings)
{
    auto section = std::make_unique<CPLSection>(kind.section, name);
    const unsigned facts = factsOf(setup, settings);
    ValueText valueText = {setup, brokenDownLocalTime(setup.acquisitionTime)};
    for (const KeyRow& row : keyRows) {
        if ((row.images & only(kind.type)) != 0 && (row.needs & ~facts) == 0)
            addPair(*section, row.key, std::visit(valueText, row.source));
    }
    return section;
}

std::unique_ptr<CPLSection> makeCorrectedCompanion(const ImageKind& kind, const Setup& setup,
                                                   bool settings)
{
    if (settings || (only(kind.type) & Uncorrected) == 0)
        return nullptr;
    return makeImageSection(*imageKind(eIMAGE_LUMINESCENT_CORRECTED),
                            PLKeyword::File::CorrectedImage, setup, false);
}

} // namespace ovparser::internal
