// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "PLHelpers.h"
#include "PLKeywords.h"

#include <array>

namespace {

using PLKeyword::keyword;

struct Binnings
{
    int large = 0;
    int medium = 0;
    int small = 0;
};

constexpr int notOffered = -1;

/** The binnings of a camera, for each kind of image that binnings tell apart. */
struct CameraBinnings
{
    Binnings stillPhotograph;
    Binnings xray;
    Binnings other;
};

using ImageKind = Binnings CameraBinnings::*;

struct ImageKindName
{
    QLatin1String name;
    ImageKind kind = nullptr;
};

/** The names of image types that have binnings of their own. */
constexpr ImageKindName imageKindNames[] = {
    {PLKeyword::ImageType::Photograph, &CameraBinnings::stillPhotograph},
    {PLKeyword::ImageType::Structure, &CameraBinnings::stillPhotograph},
    {PLKeyword::ImageType::XRay, &CameraBinnings::xray},
};

// clang-format off
// Binnings of the integer form:              still photograph     X-ray                other
constexpr CameraBinnings siteBinnings     = {{notOffered, 2, 1}, {notOffered, 2, 1}, {8, 4, 2}};
constexpr CameraBinnings eevBinnings      = {{notOffered, 4, 2}, {notOffered, 2, 1}, {16, 8, 4}};
constexpr CameraBinnings otherBinnings    = {{notOffered, 2, 1}, {notOffered, 2, 1}, {10, 5, 2}};
constexpr CameraBinnings sophiaBinnings   = {{notOffered, 4, 2}, {notOffered, 2, 1}, {16, 8, 4}};

struct NamedCamera
{
    QLatin1String model;
    const CameraBinnings* binnings = nullptr;
};

/** The camera models of the integer form, compared as whole texts. */
constexpr NamedCamera namedCameras[] = {
    {keyword("site"),   &siteBinnings}, {keyword("andor"),  &siteBinnings},
    {keyword("dw434"),  &siteBinnings}, {keyword("ds934r"), &siteBinnings},
    {keyword("eev"),    &eevBinnings},  {keyword("dz436"),  &eevBinnings},
    {keyword("dz930"),  &eevBinnings},  {keyword("dz936r"), &eevBinnings},
};

/** The pixels of a CCD along a side, and the binnings of the float form. */
struct Sensor
{
    double pixels = 0;
    CameraBinnings binnings;
};

//                                              still photograph  X-ray  other
constexpr Sensor dz930Sensor = {2048, {{4, 4, 2}, {4, 2, 1}, {16, 8, 4}}};
constexpr Sensor ds934Sensor = {1024, {{2, 2, 1}, {4, 2, 1}, {8, 4, 2}}};
constexpr Sensor eevSensor   = {1920, {{4, 4, 2}, {4, 2, 1}, {16, 8, 4}}};
constexpr Sensor andorSensor = {1024, {{2, 2, 1}, {4, 2, 1}, {8, 4, 2}}};
constexpr Sensor du88Sensor  = {1024, {{2, 2, 1}, {4, 2, 1}, {10, 5, 2}}};
constexpr Sensor otherSensor = {1300, {{2, 2, 1}, {4, 2, 1}, {10, 5, 2}}};
constexpr CameraBinnings sophiaFloatBinnings = {{4, 4, 2}, {4, 2, 1}, {16, 8, 4}};

struct SensorWord
{
    QLatin1String word;
    const Sensor* sensor = nullptr;
};

/** The words that a camera model may contain; the first that it does tells its sensor. */
constexpr SensorWord sensorWords[] = {
    {keyword("dz930"),        &dz930Sensor},
    {keyword("dz936r"),       &dz930Sensor},
    {keyword("ds934r"),       &ds934Sensor},
    {keyword("dz436"),        &eevSensor},
    {keyword("andor"),        &andorSensor}, // a model that names "eev", too, is one of these
    {keyword("eev"),          &eevSensor},
    {keyword("site"),         &andorSensor},
    {keyword("dw434"),        &andorSensor},
    {PLKeyword::Value::Du88,  &du88Sensor},
};

struct BinningLabels
{
    QLatin1String small;
    QLatin1String large;
    QLatin1String medium;
};

/** The labels of the presets, by label style. */
constexpr std::array<BinningLabels, 4> binningLabels = {{
    {keyword("HR"),                    keyword("HS"),                     keyword("M")},
    {keyword("Small (Hi Res)"),        keyword("Large (Hi Sens)"),        keyword("Med.")},
    {keyword("Small (Hi Res)"),        keyword("Large (Hi Sens)"),        keyword("Med.")},
    {keyword("Small (Hi Resolution)"), keyword("Large (Hi Sensitivity)"), keyword("Medium")},
}};
// clang-format on

bool contains(const QString& text, QLatin1String word)
{
    return text.contains(word, Qt::CaseInsensitive);
}

bool equals(const QString& text, QLatin1String word)
{
    return text.compare(word, Qt::CaseInsensitive) == 0;
}

const CameraBinnings& namedCameraBinnings(const QString& model)
{
    for (const NamedCamera& camera : namedCameras) {
        if (equals(model, camera.model))
            return *camera.binnings;
    }
    return otherBinnings;
}

const Sensor& sensorOf(const QString& cameraModel)
{
    for (const SensorWord& row : sensorWords) {
        if (contains(cameraModel, row.word))
            return *row.sensor;
    }
    return otherSensor;
}

ImageKind kindOf(const QString& imageTypeName)
{
    for (const ImageKindName& row : imageKindNames) {
        if (equals(imageTypeName, row.name))
            return row.kind;
    }
    return &CameraBinnings::other;
}

ImageKind kindOf(tag_eimagetype imageType)
{
    if (imageType == eIMAGE_PHOTOGRAPH || imageType == eIMAGE_STRUCTURE)
        return &CameraBinnings::stillPhotograph;
    return imageType == eIMAGE_XRAY ? &CameraBinnings::xray : &CameraBinnings::other;
}

/** Whether a Sophia camera overrides the binnings: for X-ray images on any system. */
bool isSophiaOverride(const QString& systemConfiguration, const QString& cameraSystemInfo,
                      ImageKind kind)
{
    return contains(cameraSystemInfo, PLKeyword::Value::Sophia) &&
           (kind == &CameraBinnings::xray ||
            contains(systemConfiguration, PLKeyword::Value::Vexa50) ||
            contains(systemConfiguration, PLKeyword::Value::Vexa200));
}

} // namespace

void getCCDBinningsForImageType(QString cameraModel, QString systemConfiguration,
                                QString cameraSystemInfo, QString imageTypeName, int& largeBinning,
                                int& mediumBinning, int& smallBinning)
{
    const ImageKind kind = kindOf(imageTypeName);
    const CameraBinnings& camera = isSophiaOverride(systemConfiguration, cameraSystemInfo, kind)
                                       ? sophiaBinnings
                                       : namedCameraBinnings(cameraModel);
    largeBinning = (camera.*kind).large;
    mediumBinning = (camera.*kind).medium;
    smallBinning = (camera.*kind).small;
}

void getCCDBinningsForImageType(const QString& cameraModel, QString systemConfiguration,
                                QString cameraSystemInfo, tag_eimagetype imageType,
                                float& largeBinning, float& mediumBinning, float& smallBinning)
{
    const ImageKind kind = kindOf(imageType);
    const CameraBinnings& camera = isSophiaOverride(systemConfiguration, cameraSystemInfo, kind)
                                       ? sophiaFloatBinnings
                                       : sensorOf(cameraModel).binnings;
    largeBinning = float((camera.*kind).large);
    mediumBinning = float((camera.*kind).medium);
    smallBinning = float((camera.*kind).small);
}

QString getValueToCCDBinningCode(float binning, QString cameraModel, QString systemConfiguration,
                                 QString cameraSystemInfo, QString imageTypeName, int labelStyle)
{
    if (labelStyle < 0 || std::size_t(labelStyle) >= binningLabels.size())
        return {};
    const BinningLabels& labels = binningLabels[std::size_t(labelStyle)];
    Binnings binnings;
    getCCDBinningsForImageType(cameraModel, systemConfiguration, cameraSystemInfo, imageTypeName,
                               binnings.large, binnings.medium, binnings.small);
    if (binning == float(binnings.small))
        return labels.small;
    if (binning == float(binnings.large))
        return labels.large;
    return binning == float(binnings.medium) ? QString(labels.medium) : QString();
}

double getCCDPixels(const QString& cameraModel, QString systemConfiguration,
                    QString cameraSystemInfo)
{
    constexpr double sophiaPixels50 = 2048;
    constexpr double sophiaPixels200 = 1920;
    if (contains(cameraSystemInfo, PLKeyword::Value::Sophia)) {
        if (contains(systemConfiguration, PLKeyword::Value::Vexa50))
            return sophiaPixels50;
        if (contains(systemConfiguration, PLKeyword::Value::Vexa200))
            return sophiaPixels200;
    }
    return sensorOf(cameraModel).pixels;
}
