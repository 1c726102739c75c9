// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Instrument.h"

#include "Json.h"

#include "internal/sections/Capabilities.h"

#include <cstdio>

namespace {

namespace Key = PLKeyword::Key;

/** A capability: its name for programs, its name for people, and the query. */
struct Capability
{
    const char* name;
    const char* label;
    bool (CPLCameraInfo::*query)() const;
};

constexpr Capability capabilityRows[] = {
    {"xray", "X-ray", &CPLCameraInfo::isXrayInstalled},
    {"fluorescenceKit", "Fluorescence kit", &CPLCameraInfo::isFluorescentKitInstalled},
    {"aurora", "Aurora", &CPLCameraInfo::isVEXAAurora},
    {"princetonAurora", "Aurora with Princeton camera", &CPLCameraInfo::isPrincetonAurora},
    {"bl", "BL", &CPLCameraInfo::isVEXABL},
    {"ct", "CT", &CPLCameraInfo::isVEXACT},
    {"kestrel", "Kestrel", &CPLCameraInfo::isVEXAKestrel},
    {"tesselHt", "Tessel HT", &CPLCameraInfo::isVEXATesselHT},
    {"secondEmissionWheel", "Second emission wheel", &CPLCameraInfo::isEmissionWheel2Installed},
    {"omegaController", "Omega controller", &CPLCameraInfo::isOmegaInstalled},
    {"omegaOutput2", "Omega on output 2", &CPLCameraInfo::isOmegaOutput2},
    {"tray", "Tray", &CPLCameraInfo::isTrayInstalled},
    {"spinner", "Spinner", &CPLCameraInfo::isSpinnerInstalled},
    {"spinnerActive", "Spinner active", &CPLCameraInfo::isSpinnerDeviceActive},
    {"chipReader", "Chip reader", &CPLCameraInfo::isChipReaderInstalled},
    {"usbIoBoard", "USB I/O board", &CPLCameraInfo::isUSB_IO_BoardInstalled},
    {"uacBoard", "UAC board", &CPLCameraInfo::isUACBoardInstalled},
    {"wideFieldLensAvailable", "Wide-field lens available", &CPLCameraInfo::isZEVR24Available},
    {"wideFieldLensAttached", "Wide-field lens attached", &CPLCameraInfo::isZEVR24Attached},
    {"zoomLensSupported", "Zoom lens supported", &CPLCameraInfo::isZoomLensSupported},
    {"zoomLensAttached", "Zoom lens attached", &CPLCameraInfo::isZoomLensAttached},
    {"transportBed", "Transport bed", &CPLCameraInfo::isTransportBedSupported},
    {"sideMirror", "Side mirror", &CPLCameraInfo::isSideMirrorChecked},
    {"vic", "VIC", &CPLCameraInfo::isVICChecked},
    {"doorClosedOnZeroStatus", "Door closed on zero status",
     &CPLCameraInfo::isDoorClosedOnZeroStatus},
    {"oldIlluminationController", "Old illumination controller",
     &CPLCameraInfo::isOldIllumController},
};

constexpr Family families[] = {
    {eVEXA_STANDARD, "standard", "VEXA 50 or VEXA 100"},
    {eVEXA_200, "vexa200", "VEXA 200"},
    {eVEXA_CORVIX, "corvix", "Corvix"},
};

constexpr BinnedType binnedTypes[] = {
    {eIMAGE_PHOTOGRAPH, "photograph"},
    {eIMAGE_STRUCTURE, "structure"},
    {eIMAGE_LUMINESCENT, "luminescent"},
    {eIMAGE_XRAY, "xray"},
};

/** What the library reports while this thread loads a description; null while it does not. */
thread_local QStringList* reports = nullptr;

void collectReport(QtMsgType, const QMessageLogContext&, const QString& text)
{
    if (reports)
        *reports += text;
    else // another thread's
        std::fprintf(stderr, "%s\n", qPrintable(text));
}

Family familyOf(EVEXA_Types type)
{
    for (const Family& family : families) {
        if (family.type == type)
            return family;
    }
    return {type, "", ""};
}

QList<StagePosition> stagePositions(const CPLCameraInfo& info)
{
    const CPLSection& section = *info.getCameraInfoSection();
    QStringList keys;
    info.getKeylistFromKeyAndSubkey(Key::ShelfPosition, Key::FovPart, &keys);
    QList<StagePosition> positions;
    for (const QString& key : qAsConst(keys)) {
        StagePosition position;
        position.name = ovparser::internal::positionName(key);
        if (position.name.isEmpty())
            continue;
        bool isNumber = false;
        const double fieldOfView = section[key].toDouble(&isNumber);
        if (isNumber)
            position.fieldOfView = fieldOfView;
        positions += position;
    }
    return positions;
}

Instrument describe(CPLCameraInfo& info)
{
    const CPLSection& section = *info.getCameraInfoSection();
    Instrument instrument;
    instrument.family = familyOf(info.getSystemType());
    instrument.configuration = section[Key::SystemConfiguration];
    instrument.camera = section[Key::CameraSystemInfo];
    instrument.pixels =
        getCCDPixels(instrument.camera, instrument.configuration, instrument.camera);
    for (const Capability& capability : capabilityRows)
        instrument.capabilities += {QLatin1String(capability.name), QLatin1String(capability.label),
                                    (info.*capability.query)()};
    instrument.electronicsTray = info.getElectronicsTrayPartNum();
    instrument.lightsPolarity = info.getPolarity();
    instrument.structuredLightDelay = info.getStructureLaserDelay();
    instrument.emissionFilterWheel = info.getCurrentFilterWheelName();
    instrument.capabilities +=
        {QStringLiteral("largeAnimalPosition"), QStringLiteral("Large-animal position"),
         info.isLargeAnimalCapable()};
    instrument.capabilities +=
        {QStringLiteral("largeAnimalSelected"), QStringLiteral("Large-animal selected"),
         info.isLargeAnimalSelected()};
    instrument.positions = stagePositions(info);
    for (const BinnedType& type : binnedTypes) {
        Binning binning;
        binning.imageType = type;
        getCCDBinningsForImageType(instrument.camera, instrument.configuration, instrument.camera,
                                   type.type, binning.large, binning.medium, binning.small);
        instrument.binnings += binning;
    }
    return instrument;
}

/** A number for which the library has a value that stands for "not given". */
QJsonValue numberUnless(double absent, double value)
{
    return value == absent ? QJsonValue() : QJsonValue(value);
}

QJsonObject positionJson(const StagePosition& position)
{
    return object(
        {{"name", position.name},
         {"fieldOfView", position.fieldOfView ? QJsonValue(*position.fieldOfView) : QJsonValue()}});
}

QJsonObject binningJson(const Binning& binning)
{
    return object({{"imageType", QLatin1String(binning.imageType.name)},
                   {"large", numberUnless(-1, double(binning.large))},
                   {"medium", numberUnless(-1, double(binning.medium))},
                   {"small", numberUnless(-1, double(binning.small))}});
}

} // namespace

bool loadInstrument(const QString& path, CPLCameraInfo* info, Instrument* instrument)
{
    QStringList messages;
    reports = &messages;
    const QtMessageHandler before = qInstallMessageHandler(collectReport);
    const bool loaded = info->loadCameraInfo(path);
    qInstallMessageHandler(before);
    reports = nullptr;
    const bool describes = loaded && info->getCameraInfoSection()->count() > 0;
    if (describes)
        *instrument = describe(*info);
    instrument->messages = messages;
    return describes;
}

QJsonObject instrumentJson(const Instrument& instrument)
{
    QJsonObject capabilities;
    for (const Answer& capability : instrument.capabilities)
        capabilities.insert(capability.name, capability.yes);
    return object({{"family", QLatin1String(instrument.family.name)},
                   {"systemConfiguration", instrument.configuration},
                   {"camera", instrument.camera},
                   {"ccdPixels", instrument.pixels},
                   {"electronicsTray", numberUnless(0, instrument.electronicsTray)},
                   {"lightsPolarity", numberUnless(-1, instrument.lightsPolarity)},
                   {"structuredLightDelay", instrument.structuredLightDelay},
                   {"emissionFilterWheel", instrument.emissionFilterWheel},
                   {"capabilities", capabilities},
                   {"stagePositions", arrayOf(instrument.positions, positionJson)},
                   {"binnings", arrayOf(instrument.binnings, binningJson)},
                   {"messages", QJsonArray::fromStringList(instrument.messages)}});
}
