// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Commands.h"
#include "Files.h"
#include "Json.h"
#include "Terminal.h"

#include "ParserLibrary.h"
#include "internal/sections/Capabilities.h"

#include <optional>

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

struct Family
{
    EVEXA_Types type;
    const char* name;
    const char* label;
};

constexpr Family families[] = {
    {eVEXA_STANDARD, "standard", "VEXA 50 or VEXA 100"},
    {eVEXA_200, "vexa200", "VEXA 200"},
    {eVEXA_CORVIX, "corvix", "Corvix"},
};

struct BinnedType
{
    tag_eimagetype type;
    const char* name;
};

constexpr BinnedType binnedTypes[] = {
    {eIMAGE_PHOTOGRAPH, "photograph"},
    {eIMAGE_STRUCTURE, "structure"},
    {eIMAGE_LUMINESCENT, "luminescent"},
    {eIMAGE_XRAY, "xray"},
};

struct StagePosition
{
    QString name;
    std::optional<double> fieldOfView; ///< nothing when the text is no number
};

struct Binning
{
    BinnedType imageType{};
    float large = 0;
    float medium = 0;
    float small = 0;
};

struct Answer
{
    QString name;
    QString label;
    bool yes = false;
};

/** Everything that the verb tells about an instrument. */
struct Instrument
{
    Family family{};
    QString configuration;
    QString camera;
    double pixels = 0;
    QList<Answer> capabilities;
    QList<StagePosition> positions;
    QList<Binning> binnings;
};

/** What the library reports while a description is loaded. */
QStringList reports;

void collectReport(QtMsgType, const QMessageLogContext&, const QString& text)
{
    reports += text;
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

QString textOf(const Instrument& instrument, const CPLCameraInfo& info)
{
    const auto number = [](double value) { return QString::number(value); };
    QList<QStringList> facts = {
        {QStringLiteral("Family"), QLatin1String(instrument.family.label)},
        {QStringLiteral("System configuration"), instrument.configuration},
        {QStringLiteral("Camera"), instrument.camera},
        {QStringLiteral("CCD pixels"), number(instrument.pixels)},
        {QStringLiteral("Electronics tray"), number(info.getElectronicsTrayPartNum())},
        {QStringLiteral("Lights polarity"), number(info.getPolarity())},
        {QStringLiteral("Structured-light delay"), number(info.getStructureLaserDelay())},
        {QStringLiteral("Emission filter wheel"), info.getCurrentFilterWheelName()},
        {},
    };
    for (const Answer& capability : instrument.capabilities)
        facts += {capability.label, QLatin1String(capability.yes ? "yes" : "no")};
    QList<QStringList> positions = {{QStringLiteral("Position"), QStringLiteral("Field of view")}};
    for (const StagePosition& position : instrument.positions)
        positions +=
            {position.name, position.fieldOfView ? number(*position.fieldOfView) : QString()};
    QList<QStringList> binnings = {{QStringLiteral("Binning"), QStringLiteral("Large"),
                                    QStringLiteral("Medium"), QStringLiteral("Small")}};
    for (const Binning& binning : instrument.binnings)
        binnings += {getImageTypeString(binning.imageType.type), number(double(binning.large)),
                     number(double(binning.medium)), number(double(binning.small))};
    const QChar gap = QLatin1Char('\n');
    return columns(facts) + gap + columns(positions) + gap + columns(binnings);
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

QJsonObject jsonOf(const QString& file, const Instrument& instrument, const CPLCameraInfo& info)
{
    QJsonObject capabilities;
    for (const Answer& capability : instrument.capabilities)
        capabilities.insert(capability.name, capability.yes);
    return withSchema("ovinfo-camera/1",
                      {{"file", file},
                       {"family", QLatin1String(instrument.family.name)},
                       {"systemConfiguration", instrument.configuration},
                       {"camera", instrument.camera},
                       {"ccdPixels", instrument.pixels},
                       {"electronicsTray", numberUnless(0, info.getElectronicsTrayPartNum())},
                       {"lightsPolarity", numberUnless(-1, info.getPolarity())},
                       {"structuredLightDelay", info.getStructureLaserDelay()},
                       {"emissionFilterWheel", info.getCurrentFilterWheelName()},
                       {"capabilities", capabilities},
                       {"stagePositions", arrayOf(instrument.positions, positionJson)},
                       {"binnings", arrayOf(instrument.binnings, binningJson)},
                       {"messages", QJsonArray::fromStringList(reports)}});
}

} // namespace

ExitCode cameraCommand(const Request& request)
{
    const QString file = request.files.at(0);
    QString problem;
    if (!readFile(file, &problem))
        return fail(file, problem);
    CPLCameraInfo info;
    const QtMessageHandler before = qInstallMessageHandler(collectReport);
    const bool loaded = info.loadCameraInfo(file);
    qInstallMessageHandler(before);
    for (const QString& report : qAsConst(reports))
        fail(file, report);
    if (!loaded && !reports.isEmpty())
        return BadFile;
    if (!loaded || info.getCameraInfoSection()->count() == 0)
        return fail(file, QLatin1String("describes no instrument"));
    const Instrument instrument = describe(info);
    if (request.has(Options::json))
        print(jsonOf(file, instrument, info));
    else
        print(textOf(instrument, info));
    return Success;
}
