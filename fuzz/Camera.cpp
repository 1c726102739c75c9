// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Support.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QSettings>

#include <utility>

using namespace fuzz;

namespace {

/** The files of an instrument, relative to the temporary folder, and the parts that hold them. */
constexpr const char* files[] = {"config/first.cfg", "config/second.cfg", "emfilters/standard.xem"};

void ignoreMessage(QtMsgType, const QMessageLogContext&, const QString&) {}

/** Keeps what the machine remembers of its own instrument out of the run. */
bool makeMachine()
{
    qInstallMessageHandler(ignoreMessage);
    qputenv("XDG_DATA_HOME", QFile::encodeName(temporaryPath("home"_s)));
    qputenv("XDG_DATA_DIRS", QFile::encodeName(temporaryPath("share"_s)));
    QSettings::setPath(QSettings::NativeFormat, QSettings::SystemScope, temporaryPath("store"_s));
    const QDir folder;
    return folder.mkpath(temporaryPath("config"_s)) &&
           folder.mkpath(temporaryPath("emfilters"_s)) &&
           folder.mkpath(getOVPath(OV_PATH_DATABASE, false, nullptr));
}

void writeOrRemove(const QString& path, const Input& input, const char* part)
{
    QFile file(path);
    file.remove();
    if (input.parts.contains(part) && file.open(QIODevice::WriteOnly))
        file.write(input.parts.value(part));
}

/** The machine's own description and the operator's last choice. */
QString referenceFile()
{
    return getOVPath(OV_PATH_BASE, true, nullptr) + PLKeyword::File::CameraInfo;
}

QString statusFile()
{
    return getOVPath(OV_PATH_DATABASE, true, nullptr) + PLKeyword::File::UiStatus;
}

void checkDerived(const CPLCameraInfo& camera)
{
    const bool vexa200 = camera.getSystemType() == eVEXA_200;
    require(camera.isOldIllumController() == (!vexa200 && camera.isDoorClosedOnZeroStatus()),
            "the illumination controller follows the door");
    require(!camera.isVEXAAurora() || (vexa200 && camera.isFluorescentKitInstalled()),
            "an Aurora is a VEXA 200 with a kit");
    require(!camera.isVEXABL() || (vexa200 && !camera.isFluorescentKitInstalled()),
            "a BL is a VEXA 200 without a kit");
    require(!camera.isZoomLensAttached() || camera.isZoomLensSupported(),
            "an attached lens is supported");
    require(!camera.isVEXATesselHT() || camera.isEmissionWheel2Installed(),
            "a Tessel has the second wheel");
    require(!camera.isOmegaOutput2() || camera.isOmegaInstalled(), "a used output is installed");
}

void checkKeys(const CPLCameraInfo& camera, const CPLSection& section)
{
    QStringList all;
    QStringList listed;
    QStringList steps;
    section.getKeyList(&all);
    require(camera.getKeyListWithSameKey(QString(), &listed) == 0 && listed == all,
            "every key begins with nothing");
    require(camera.getLensFStopStepList("Lens"_s, &steps) == 0, "steps can be listed");
    for (const QString& key : std::as_const(steps))
        require(key.contains("steps"_s, Qt::CaseInsensitive) && all.contains(key),
                "steps are keys");
    require(hasCCDMapData(camera) == section.isKeyPresent(PLKeyword::Key::CcdMap),
            "the CCD map is the key");
}

/** Asks what programs ask of a description: geometry, binnings, paths. */
void checkHelpers(const CPLCameraInfo& camera, const CPLSection& section)
{
    const QString model = section[PLKeyword::Key::CameraCcdType];
    const QString system = section[PLKeyword::Key::SystemConfiguration];
    const QString info = section[PLKeyword::Key::CameraSystemInfo];
    for (int type = -1; type <= eIMAGE_BLEMISH + 1; ++type) {
        float large = 0;
        float medium = 0;
        float small = 0;
        getCCDBinningsForImageType(model, system, info, tag_eimagetype(type), large, medium, small);
        require(large != 0 && medium != 0 && small != 0, "a preset is offered or -1");
    }
    require(getCCDPixels(model, system, info) > 0, "a CCD has pixels");
    QByteArray name;
    for (int i = 0; i < section.count(); ++i) {
        if (getFOVName(&camera, section[i].toDouble(), name))
            require(name.size() == 1, "a stage position has a name of one character");
    }
    for (int tag = -1; tag <= OV_PATH_AOI_CORR_DB + 1; ++tag)
        require(getOVPath(OV_PATH_TAGS(tag), true, &camera).endsWith(u'/'), "a path ends in '/'");
}

void checkChoices(CPLCameraInfo& camera, const QString& choice)
{
    const bool on = !choice.isEmpty();
    camera.setZEVR24Attached(on);
    camera.setZoomLensAttached(on);
    camera.setCurrentFilterWheelName(choice);
    camera.setLargeAnimalState(on);
    require(camera.isZEVR24Attached() == on && camera.isZoomLensAttached() == on &&
                camera.getCurrentFilterWheelName() == choice,
            "a choice holds");
    require(camera.isLargeAnimalSelected() == on, "a written position is read back");
    QDir(temporaryPath("store"_s)).removeRecursively();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const bool made = makeMachine();
    require(made, "the folders can be made");
    const Input input(data, size);
    for (const char* const file : files)
        writeOrRemove(temporaryPath(QString::fromLatin1(file)), input, file);
    writeOrRemove(referenceFile(), input, "reference");
    writeOrRemove(statusFile(), input, "status");
    const QString path = temporaryFile("CameraInfo.txt"_s, input.file);

    CPLCameraInfo camera;
    const bool loaded = camera.loadCameraInfo(path);
    const CPLSection* const section = camera.getCameraInfoSection();
    checkSections(camera);
    checkDerived(camera);
    require(section == nullptr || section == camera[PLKeyword::Section::CameraSystemInfo],
            "the section is the document's");
    require(!loaded || section != nullptr, "a loaded description has the section");
    if (section != nullptr) {
        checkKeys(camera, *section);
        checkHelpers(camera, *section);
    }
    CPLCameraInfo again;
    require(again.loadCameraInfo(path) == loaded, "a description loads twice");
    require(again.getClickInfoData() == camera.getClickInfoData(), "and alike");
    const CPLCameraInfo copy(camera);
    require(copy.getClickInfoData() == camera.getClickInfoData(), "a copy saves alike");
    checkDerived(copy);
    checkRoundTrip(camera.getClickInfoData());
    if (input.parts.contains("choice"))
        checkChoices(camera, latin1(input.parts.value("choice")));
    return 0;
}
