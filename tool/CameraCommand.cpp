#include "Commands.h"
#include "Terminal.h"

#include "ParserLibrary.h"

#include <QtCore/QJsonArray>
#include <QtCore/QRegularExpression>

namespace {

namespace Key = PLKeyword::Key;

struct Capability
{
    const char* name;
    bool (CPLCameraInfo::*query)() const;
};

constexpr Capability capabilityRows[] = {
    {"X-ray", &CPLCameraInfo::isXrayInstalled},
    {"Fluorescence kit", &CPLCameraInfo::isFluorescentKitInstalled},
    {"Aurora", &CPLCameraInfo::isVEXAAurora},
    {"Aurora with Princeton camera", &CPLCameraInfo::isPrincetonAurora},
    {"BL", &CPLCameraInfo::isVEXABL},
    {"CT", &CPLCameraInfo::isVEXACT},
    {"Kestrel", &CPLCameraInfo::isVEXAKestrel},
    {"Tessel HT", &CPLCameraInfo::isVEXATesselHT},
    {"Second emission wheel", &CPLCameraInfo::isEmissionWheel2Installed},
    {"Omega controller", &CPLCameraInfo::isOmegaInstalled},
    {"Omega on output 2", &CPLCameraInfo::isOmegaOutput2},
    {"Tray", &CPLCameraInfo::isTrayInstalled},
    {"Spinner", &CPLCameraInfo::isSpinnerInstalled},
    {"Spinner active", &CPLCameraInfo::isSpinnerDeviceActive},
    {"Chip reader", &CPLCameraInfo::isChipReaderInstalled},
    {"USB I/O board", &CPLCameraInfo::isUSB_IO_BoardInstalled},
    {"UAC board", &CPLCameraInfo::isUACBoardInstalled},
    {"Wide-field lens available", &CPLCameraInfo::isZEVR24Available},
    {"Wide-field lens attached", &CPLCameraInfo::isZEVR24Attached},
    {"Zoom lens supported", &CPLCameraInfo::isZoomLensSupported},
    {"Zoom lens attached", &CPLCameraInfo::isZoomLensAttached},
    {"Transport bed", &CPLCameraInfo::isTransportBedSupported},
    {"Side mirror", &CPLCameraInfo::isSideMirrorChecked},
    {"VIC", &CPLCameraInfo::isVICChecked},
    {"Door closed on zero status", &CPLCameraInfo::isDoorClosedOnZeroStatus},
    {"Old illumination controller", &CPLCameraInfo::isOldIllumController},
};

struct Family
{
    EVEXA_Types type;
    const char* name;
};

constexpr Family families[] = {
    {eVEXA_STANDARD, "VEXA 50 or VEXA 100"},
    {eVEXA_200, "VEXA 200"},
    {eVEXA_CORVIX, "Corvix"},
};

constexpr tag_eimagetype binnedTypes[] = {eIMAGE_PHOTOGRAPH, eIMAGE_STRUCTURE, eIMAGE_LUMINESCENT,
                                          eIMAGE_XRAY};

struct StagePosition
{
    QString name;
    double fieldOfView = 0;
};

struct Binning
{
    QString imageType;
    float large = 0;
    float medium = 0;
    float small = 0;
};

/** Everything that the verb tells about an instrument. */
struct Instrument
{
    QString family;
    QString configuration;
    QString camera;
    double pixels = 0;
    QList<QPair<QString, bool>> capabilities;
    QList<StagePosition> positions;
    QList<Binning> binnings;
};

/** What the library reports while a description is loaded. */
QStringList reports;

void collectReport(QtMsgType, const QMessageLogContext&, const QString& text)
{
    reports += text;
}

QString familyName(EVEXA_Types type)
{
    for (const Family& family : families) {
        if (family.type == type)
            return QLatin1String(family.name);
    }
    return {};
}

QList<StagePosition> stagePositions(const CPLCameraInfo& info)
{
    static const QRegularExpression name(QStringLiteral("\\s(\\w)\\s"),
                                         QRegularExpression::UseUnicodePropertiesOption);
    const CPLSection& section = *info.getCameraInfoSection();
    QStringList keys;
    info.getKeylistFromKeyAndSubkey(Key::ShelfPosition, Key::FovPart, &keys);
    QList<StagePosition> positions;
    for (const QString& key : qAsConst(keys)) {
        StagePosition position;
        position.name = name.match(key).captured(1);
        if (position.name.isEmpty())
            continue;
        section.getValue(key, &position.fieldOfView);
        positions += position;
    }
    return positions;
}

Instrument describe(CPLCameraInfo& info)
{
    const CPLSection& section = *info.getCameraInfoSection();
    Instrument instrument;
    instrument.family = familyName(info.getSystemType());
    instrument.configuration = section[Key::SystemConfiguration];
    instrument.camera = section[Key::CameraSystemInfo];
    instrument.pixels =
        getCCDPixels(instrument.camera, instrument.configuration, instrument.camera);
    for (const Capability& capability : capabilityRows)
        instrument.capabilities += {QLatin1String(capability.name), (info.*capability.query)()};
    instrument.capabilities +=
        {QStringLiteral("Large-animal position"), info.isLargeAnimalCapable()};
    instrument.capabilities +=
        {QStringLiteral("Large-animal selected"), info.isLargeAnimalSelected()};
    instrument.positions = stagePositions(info);
    for (const tag_eimagetype type : binnedTypes) {
        Binning binning;
        binning.imageType = getImageTypeString(type);
        getCCDBinningsForImageType(instrument.camera, instrument.configuration, instrument.camera,
                                   type, binning.large, binning.medium, binning.small);
        instrument.binnings += binning;
    }
    return instrument;
}

QString textOf(const Instrument& instrument, const CPLCameraInfo& info)
{
    const auto number = [](double value) { return QString::number(value); };
    QList<QStringList> facts = {
        {QStringLiteral("Family"), instrument.family},
        {QStringLiteral("System configuration"), instrument.configuration},
        {QStringLiteral("Camera"), instrument.camera},
        {QStringLiteral("CCD pixels"), number(instrument.pixels)},
        {QStringLiteral("Electronics tray"), number(info.getElectronicsTrayPartNum())},
        {QStringLiteral("Lights polarity"), number(info.getPolarity())},
        {QStringLiteral("Structured-light delay"), number(info.getStructureLaserDelay())},
        {QStringLiteral("Emission filter wheel"), info.getCurrentFilterWheelName()},
        {},
    };
    for (const auto& capability : instrument.capabilities)
        facts += {capability.first, QLatin1String(capability.second ? "yes" : "no")};
    QList<QStringList> positions = {{QStringLiteral("Position"), QStringLiteral("Field of view")}};
    for (const StagePosition& position : instrument.positions)
        positions += {position.name, number(position.fieldOfView)};
    QList<QStringList> binnings = {{QStringLiteral("Binning"), QStringLiteral("Large"),
                                    QStringLiteral("Medium"), QStringLiteral("Small")}};
    for (const Binning& binning : instrument.binnings)
        binnings += {binning.imageType, number(double(binning.large)),
                     number(double(binning.medium)), number(double(binning.small))};
    const QChar gap = QLatin1Char('\n');
    return columns(facts) + gap + columns(positions) + gap + columns(binnings);
}

QJsonObject jsonOf(const Instrument& instrument, const CPLCameraInfo& info)
{
    QJsonObject capabilities;
    for (const auto& capability : instrument.capabilities)
        capabilities.insert(capability.first, capability.second);
    QJsonArray positions;
    for (const StagePosition& position : instrument.positions)
        positions += QJsonObject{{QStringLiteral("name"), position.name},
                                 {QStringLiteral("fieldOfView"), position.fieldOfView}};
    QJsonArray binnings;
    for (const Binning& binning : instrument.binnings)
        binnings += QJsonObject{{QStringLiteral("imageType"), binning.imageType},
                                {QStringLiteral("large"), double(binning.large)},
                                {QStringLiteral("medium"), double(binning.medium)},
                                {QStringLiteral("small"), double(binning.small)}};
    return {
        {QStringLiteral("family"), instrument.family},
        {QStringLiteral("systemConfiguration"), instrument.configuration},
        {QStringLiteral("camera"), instrument.camera},
        {QStringLiteral("ccdPixels"), instrument.pixels},
        {QStringLiteral("electronicsTray"), info.getElectronicsTrayPartNum()},
        {QStringLiteral("lightsPolarity"), info.getPolarity()},
        {QStringLiteral("structuredLightDelay"), info.getStructureLaserDelay()},
        {QStringLiteral("emissionFilterWheel"), info.getCurrentFilterWheelName()},
        {QStringLiteral("capabilities"), capabilities},
        {QStringLiteral("stagePositions"), positions},
        {QStringLiteral("binnings"), binnings},
    };
}

} // namespace

int cameraCommand(const QStringList& words)
{
    QCommandLineParser parser;
    const QCommandLineOption json = jsonOption();
    parser.addOption(json);
    parser.setApplicationDescription(
        QLatin1String("Prints what an instrument can do: its family, capabilities, stage positions "
                      "with their fields of view, CCD pixels and binning presets."));
    if (const auto done = parse(parser, QLatin1String("camera"), QLatin1String("FILE"), words))
        return *done;
    const QString file = parser.positionalArguments().at(0);
    CPLCameraInfo info;
    qInstallMessageHandler(collectReport);
    const bool loaded = info.loadCameraInfo(file);
    qInstallMessageHandler(nullptr);
    if (!loaded)
        return fail(BadFile, file + QLatin1String(": ") + reports.join(QLatin1Char(' ')));
    for (const QString& report : qAsConst(reports))
        fail(Success, report);
    const Instrument instrument = describe(info);
    if (parser.isSet(json))
        print(jsonOf(instrument, info));
    else
        print(textOf(instrument, info));
    return Success;
}
