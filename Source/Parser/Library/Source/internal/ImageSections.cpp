#include "ImageSections.h"

#include "LocalTime.h"
#include "NumberFormat.h"
#include "PLKeywords.h"
#include "SectionAccess.h"

#include <algorithm>
#include <variant>

namespace ovparser::internal {

namespace {

namespace Key = PLKeyword::Key;
namespace Value = PLKeyword::Value;

/** What is true of an image and its setup; a row of a key table names the facts that it needs. */
enum Fact : unsigned {
    Always = 0,
    // the image
    Photograph = 1U << 0U,
    Structure = 1U << 1U,
    Uncorrected = 1U << 2U,
    Corrected = 1U << 3U,
    FlReference = 1U << 4U,
    // the setup
    Settings = 1U << 5U,
    Mirror = 1U << 6U,
    Fluorescent = 1U << 7U,
    EmGain = 1U << 8U,
    Mode1 = 1U << 9U,
    Mode2 = 1U << 10U,
    NotMode2 = 1U << 11U,
    Grid = 1U << 12U,
    SingleSpot = 1U << 13U,
    MultiSpot = 1U << 14U,
};

using Facts = unsigned;

/** Where a value comes from: a fixed text, a field of the setup, or a function of the setup. */
using Source =
    std::variant<QLatin1String, QString sIASetupInfo::*, int sIASetupInfo::*, float sIASetupInfo::*,
                 double sIASetupInfo::*, QString (*)(const sIASetupInfo&)>;

struct KeyRow
{
    QLatin1String key;
    Source source;
    Facts needs = Always;
};

struct KeyTable
{
    const KeyRow* rows = nullptr;
    std::size_t size = 0;

    constexpr KeyTable() = default;
    template <std::size_t N>
    constexpr KeyTable(const KeyRow (&table)[N])
        : rows(table)
        , size(N)
    {}

    [[nodiscard]] const KeyRow* begin() const { return rows; }
    [[nodiscard]] const KeyRow* end() const { return rows + size; }
};

QString acquisitionDate(const sIASetupInfo& setup)
{
    auto time = brokenDownLocalTime(setup.acquisitionTime);
    return getDateOVSFormat(time ? &*time : nullptr);
}

QString acquisitionClock(const sIASetupInfo& setup)
{
    auto time = brokenDownLocalTime(setup.acquisitionTime);
    return getTimeOVSFormat(time ? &*time : nullptr);
}

QString acquisitionSeconds(const sIASetupInfo& setup)
{
    return getTimefrom1904(double(setup.acquisitionTime));
}

QString objectRadius(const sIASetupInfo& setup)
{
    return generalText(setup.subjectSize / 2);
}

QString xrayImagingMode(const sIASetupInfo& setup)
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

QString singleGridPosition(const sIASetupInfo& setup)
{
    return gridPosition(setup.flGridPositionX, setup.flGridPositionY);
}

QString multiGridPosition(const sIASetupInfo& setup)
{
    QString text;
    for (const QPoint& point : setup.flGridPoints)
        text += gridPosition(point.x(), point.y()) + QLatin1Char(';');
    return text;
}

QString singleXSpot(const sIASetupInfo& setup)
{
    return spotText(double(setup.flXSpot));
}

QString singleYSpot(const sIASetupInfo& setup)
{
    return spotText(double(setup.flYSpot));
}

/** 100 times the square of the whole binning quotient; a raw binning of 0 gives 0. */
QString minimalCounts(const sIASetupInfo& setup)
{
    const qint64 raw = setup.rawBinning;
    const qint64 quotient = raw == 0 ? 0 : setup.luminescentBinning / raw;
    return generalText(double(100.0F * float(quotient) * float(quotient)));
}

constexpr KeyRow commonKeys[] = {
    {Key::AcquisitionDate, acquisitionDate},
    {Key::AcquisitionTime, acquisitionClock},
    {Key::AcquisitionSeconds, acquisitionSeconds},
    {Key::PixelWidth, Value::One},
    {Key::PixelHeight, Value::One},
    {Key::ImagingAngle, &sIASetupInfo::imagingAngle, Mode2},
};

constexpr KeyRow photographKeys[] = {
    {Key::SideViewMirrorEnabled, Value::Yes, Photograph | Mirror},
    {Key::BinningFactor, &sIASetupInfo::photographBinning, Photograph},
    {Key::BinningFactor, &sIASetupInfo::structureBinning, Structure},
    {Key::ImageUnits, Value::Counts, Settings},
    {Key::FNumber, &sIASetupInfo::photographFNumber, Settings},
    {Key::FieldOfView, &sIASetupInfo::fieldOfView, Settings},
    {Key::FilterPosition, Value::One, Settings},
    {Key::EmissionFilter, Value::OpenFilter, Settings},
    {Key::ExposureTimeSec, &sIASetupInfo::photographExposure, Settings},
    {Key::ObjectRadius, objectRadius, Settings},
    {Key::SubjectSize, &sIASetupInfo::subjectSize, Settings},
    {Key::HeightReference, &sIASetupInfo::heightReference, Settings | Structure | Mode1},
    {Key::HeightReferencePixelX, &sIASetupInfo::heightReferencePixelX,
     Settings | Structure | Mode1},
    {Key::HeightReferencePixelY, &sIASetupInfo::heightReferencePixelY,
     Settings | Structure | Mode1},
    {Key::StructureFrequency, &sIASetupInfo::structureFrequencyText,
     Settings | Structure | NotMode2},
    {Key::MvStageDistance, &sIASetupInfo::stageDistance, Settings | Structure | Mode2},
    {Key::StructuredLightLittleL, &sIASetupInfo::stageDistance, Settings | Structure | Mode2},
    {Key::StructureFrequency, &sIASetupInfo::structureFrequency, Settings | Structure | Mode2},
    {Key::ErrorWave, Value::NoError, Settings},
};

constexpr Facts OnFlGrid = Settings | Fluorescent | Mode1 | Grid;

constexpr KeyRow luminescentKeys[] = {
    {Key::ImageUnits, Value::Counts},
    {Key::BinningFactor, &sIASetupInfo::luminescentBinning},
    {Key::SideViewMirrorEnabled, Value::Yes, Mirror},
    {Key::LuminescentExposure, &sIASetupInfo::luminescentExposure, Settings},
    {Key::LuminescentExposureUnits, &sIASetupInfo::luminescentExposureUnits, Settings},
    {Key::EmGain, &sIASetupInfo::emGain, Settings | EmGain},
    {Key::FNumber, &sIASetupInfo::luminescentFNumber, Settings},
    {Key::FieldOfView, &sIASetupInfo::fieldOfView, Settings},
    {Key::ReadBiasLevel, &sIASetupInfo::readBiasLevel, Settings},
    {Key::EmissionFilter, &sIASetupInfo::emissionFilter, Settings},
    {Key::FilterPosition, &sIASetupInfo::filterPosition, Settings},
    {Key::ExcitationFilter, &sIASetupInfo::excitationFilter, Settings},
    {Key::SubjectSize, &sIASetupInfo::subjectSize, Settings},
    {Key::ImageSubtype, Value::Fluorescent, Settings | Fluorescent},
    {Key::FluorescenceLevel, &sIASetupInfo::fluorescenceLevel, Settings | Fluorescent},
    {Key::FluorescenceLevelString, &sIASetupInfo::fluorescenceLevelText, Settings | Fluorescent},
    {Key::FlGridName, &sIASetupInfo::flGridName, OnFlGrid},
    {Key::FlGridPosition, singleGridPosition, OnFlGrid | SingleSpot},
    {Key::FlGridPosition, multiGridPosition, OnFlGrid | MultiSpot},
    {Key::FlXMotorPosition, &sIASetupInfo::flXMotorPosition, OnFlGrid | SingleSpot},
    {Key::FlXMotorPosition, &sIASetupInfo::flXMotorPositionText, OnFlGrid | MultiSpot},
    {Key::FlYMotorPosition, &sIASetupInfo::flYMotorPosition, OnFlGrid | SingleSpot},
    {Key::FlYMotorPosition, &sIASetupInfo::flYMotorPositionText, OnFlGrid | MultiSpot},
    {Key::FlXSpot, singleXSpot, OnFlGrid | SingleSpot},
    {Key::FlXSpot, &sIASetupInfo::flXSpotText, OnFlGrid | MultiSpot},
    {Key::FlYSpot, singleYSpot, OnFlGrid | SingleSpot},
    {Key::FlYSpot, &sIASetupInfo::flYSpotText, OnFlGrid | MultiSpot},
    {Key::MinimalCounts, minimalCounts, OnFlGrid | FlReference},
    {Key::RawBinning, &sIASetupInfo::rawBinning, OnFlGrid | FlReference},
    {Key::DemandTemperature, &sIASetupInfo::demandTemperature, Settings},
    {Key::MeasuredTemperature, &sIASetupInfo::measuredTemperature, Settings},
    {Key::ErrorWave, Value::NoError, Settings},
    {Key::Cosmic, Value::Zero, Uncorrected},
    {Key::Cosmic, Value::One, Corrected},
    {Key::BackgroundCorrected, Value::Zero, Uncorrected},
    {Key::BackgroundCorrected, Value::One, Corrected},
    {Key::FlatFieldCorrected, Value::Zero, Uncorrected},
    {Key::FlatFieldCorrected, Value::One, Corrected},
};

constexpr KeyRow readBiasOnlyKeys[] = {
    {Key::BinningFactor, &sIASetupInfo::luminescentBinning},
    {Key::ReadBiasLevel, &sIASetupInfo::readBiasLevel, Settings},
    {Key::DemandTemperature, &sIASetupInfo::demandTemperature, Settings},
    {Key::MeasuredTemperature, &sIASetupInfo::measuredTemperature, Settings},
    {Key::DataMultiplier, Value::One, Settings},
    {Key::BackgroundExposure, Value::NoExposure, Settings},
};

constexpr KeyRow fluorescentBackgroundKeys[] = {
    {Key::BinningFactor, &sIASetupInfo::luminescentBinning},
    {Key::FNumber, &sIASetupInfo::luminescentFNumber},
    {Key::FieldOfView, &sIASetupInfo::fieldOfView},
    {Key::ReadBiasLevel, &sIASetupInfo::readBiasLevel},
    {Key::FluorescenceLevel, &sIASetupInfo::fluorescenceLevel},
    {Key::FluorescenceLevelString, &sIASetupInfo::fluorescenceLevelText},
    {Key::DemandTemperature, &sIASetupInfo::demandTemperature},
    {Key::MeasuredTemperature, &sIASetupInfo::measuredTemperature},
    {Key::DataMultiplier, Value::One},
    {Key::BackgroundExposure, &sIASetupInfo::luminescentExposure},
};

constexpr KeyRow xrayKeys[] = {
    {Key::BinningFactor, &sIASetupInfo::xrayBinning},
    {Key::FNumber, &sIASetupInfo::xrayFNumber},
    {Key::FieldOfView, &sIASetupInfo::fieldOfView},
    {Key::ReadBiasLevel, &sIASetupInfo::xrayReadBiasLevel},
    {Key::XRayTubeVoltage, &sIASetupInfo::xrayTubeVoltage},
    {Key::XRayTubePlateCurrent, &sIASetupInfo::xrayTubePlateCurrent},
    {Key::XRayTubeFilter, &sIASetupInfo::xrayTubeFilter},
    {Key::ExposureTimeSec, &sIASetupInfo::xrayExposure},
    {Key::SideViewMirrorEnabled, Value::Yes, Mirror},
    {Key::ImagingMode, xrayImagingMode},
};

// A blemish image is no acquisition: its first five rows replace the common values in place.
constexpr KeyRow blemishKeys[] = {
    {Key::AcquisitionDate, Value::BlemishDate},
    {Key::AcquisitionTime, Value::BlemishTime},
    {Key::AcquisitionSeconds, Value::BlemishSeconds},
    {Key::PixelWidth, Value::One},
    {Key::PixelHeight, Value::One},
    {Key::BinningFactor, &sIASetupInfo::blemishBinning},
    {Key::DemandTemperature, &sIASetupInfo::demandTemperature},
    {Key::MeasuredTemperature, &sIASetupInfo::measuredTemperature},
};

struct ImageSection
{
    tag_eimagetype type = eIMAGE_PHOTOGRAPH;
    QLatin1String key;
    KeyTable keys;
    Facts facts = Always;
};

namespace Section = PLKeyword::Section;

constexpr ImageSection imageSections[] = {
    {eIMAGE_PHOTOGRAPH, Section::Photograph, photographKeys, Photograph},
    {eIMAGE_STRUCTURE, Section::Structure, photographKeys, Structure},
    {eIMAGE_LUMINESCENT, Section::Luminescent, luminescentKeys, Uncorrected},
    {eIMAGE_LUMINESCENT_CORRECTED, Section::LuminescentCorrected, luminescentKeys, Corrected},
    {eIMAGE_BIAS, Section::ReadBiasOnly, readBiasOnlyKeys},
    {eIMAGE_FLUORESCENT_BKG, Section::FluorescentBackground, fluorescentBackgroundKeys},
    {eIMAGE_READ_BIAS, Section::ReadBias, {}},
    {eIMAGE_READ_SIGMA, Section::ReadSigma, {}},
    {eIMAGE_BACKGROUND, Section::DarkCharge, {}},
    {eIMAGE_FL_REFERENCE, Section::FluorescentReference, luminescentKeys,
     Uncorrected | FlReference},
    {eIMAGE_XRAY, Section::XRay, xrayKeys},
    {eIMAGE_BLEMISH, Section::Blemish, blemishKeys},
};

const ImageSection* findImageSection(tag_eimagetype type)
{
    const auto* const found =
        std::find_if(std::begin(imageSections), std::end(imageSections),
                     [type](const ImageSection& row) { return row.type == type; });
    return found == std::end(imageSections) ? nullptr : found;
}

Facts factsOf(const sIASetupInfo& setup, bool settings)
{
    const auto when = [](bool condition, Fact fact) { return condition ? Facts(fact) : 0U; };
    return when(settings, Settings) | when(setup.sideViewMirrorEnabled, Mirror) |
           when(setup.fluorescent, Fluorescent) | when(setup.emGain > 0, EmGain) |
           when(setup.imagingMode == 1, Mode1) | when(setup.flGridEnabled, Grid) |
           (setup.imagingMode == 2 ? Mode2 : NotMode2) |
           (setup.flGridPoints.size() < 2 ? SingleSpot : MultiSpot);
}

/** Makes the text of a value out of where it comes from. */
struct ValueText
{
    const sIASetupInfo& setup;

    QString operator()(QLatin1String fixed) const { return fixed; }
    QString operator()(QString sIASetupInfo::*text) const { return setup.*text; }
    QString operator()(int sIASetupInfo::*number) const { return QString::number(setup.*number); }
    QString operator()(float sIASetupInfo::*number) const
    {
        return generalText(double(setup.*number));
    }
    QString operator()(double sIASetupInfo::*number) const { return generalText(setup.*number); }
    QString operator()(QString (*compute)(const sIASetupInfo&)) const { return compute(setup); }
};

void addKeys(CPLSection& section, const KeyTable& table, const sIASetupInfo& setup, Facts facts)
{
    for (const KeyRow& row : table) {
        if ((row.needs & ~facts) == 0)
            addPair(section, row.key, std::visit(ValueText{setup}, row.source));
    }
}

} // namespace

QString imageSectionKey(tag_eimagetype type)
{
    const ImageSection* const section = findImageSection(type);
    return section ? QString(section->key) : QString();
}

bool followsReadBiasOnly(tag_eimagetype type)
{
    return type == eIMAGE_READ_BIAS || type == eIMAGE_READ_SIGMA || type == eIMAGE_BACKGROUND;
}

bool hasCorrectedCompanion(tag_eimagetype type)
{
    return type == eIMAGE_LUMINESCENT || type == eIMAGE_FL_REFERENCE;
}

void addImageKeys(CPLSection& section, tag_eimagetype type, const sIASetupInfo& setup,
                  bool settings)
{
    const ImageSection* const image = findImageSection(type);
    if (!image)
        return;
    const Facts facts = factsOf(setup, settings) | image->facts;
    addKeys(section, commonKeys, setup, facts);
    addKeys(section, image->keys, setup, facts);
}

} // namespace ovparser::internal
