// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "PLCameraInfo.h"

#include "internal/sections/Capabilities.h"
#include "internal/sections/SectionAccess.h"
#include "internal/text/DataFolders.h"
#include "internal/text/Guard.h"
#include "internal/text/InfoText.h"
#include "internal/text/OperatorChoices.h"
#include "internal/text/TextFile.h"

#include <QtCore/QDebug>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSet>

#include <algorithm>
#include <filesystem>
#include <optional>

using namespace ovparser::internal;

namespace Key = PLKeyword::Key;
namespace Section = PLKeyword::Section;

/** A debug message that carries its source location in release builds, too. */
#define OVPARSER_DEBUG() QMessageLogger(__FILE__, __LINE__, Q_FUNC_INFO).debug().noquote()

namespace {

QString cameraInfoHeader()
{
    return PLKeyword::Text::Marker + QString(Section::CameraSystemInfo) + u':';
}

/** The family of the installed instrument, as the reference description of the machine tells it. */
EVEXA_Types installedSystem()
{
    const QString file = dataFolderPath(OV_PATH_BASE) + PLKeyword::File::CameraInfo;
    QString text;
    if (readInfoText(file, &text) != eSTATUS_SUCCESS)
        return eVEXA_STANDARD;
    const auto key = text.indexOf(Key::SystemConfiguration);
    if (key < 0)
        return eVEXA_STANDARD;
    const auto start = key + Key::SystemConfiguration.size();
    const auto end = text.indexOf(u'\n', start);
    return classifySystem(text.mid(start, end < 0 ? -1 : end - start).remove(u':'));
}

/** The file of an instrument extension. */
class ExtensionFile : public CPLClickInfo
{
public:
    using CPLClickInfo::find;
};

/** An instrument extension that was found fit. */
struct Extension
{
    QString name;
    QString keyLines;
};

QString missingSection(QLatin1String section)
{
    return QStringLiteral("'%1' section not present").arg(section);
}

QString missingKey(QLatin1String key)
{
    return QStringLiteral("'%1' key/value not present").arg(key);
}

/** The text after a "Camera System Info" header that is spelled in an unusual way. */
QString otherKeyLines(QLatin1String text)
{
    LineReader lines(text);
    for (QLatin1String line; lines.next(&line);) {
        const auto key = isHeaderLine(line) ? headerKey(line) : std::nullopt;
        if (key && QString(*key).compare(Section::CameraSystemInfo, Qt::CaseInsensitive) == 0)
            return QLatin1String(line.begin() + cutAtColon(line).colon + 1, text.end());
    }
    return {};
}

/** The text of a file after its "Camera System Info" header mark. */
std::optional<QString> keyLinesOf(const QString& path)
{
    QByteArray bytes;
    if (readFile(path, &bytes) != eSTATUS_SUCCESS)
        return std::nullopt;
    const QByteArray lines = withLineFeeds(bytes);
    const QString text = latin1View(lines);
    const QString header = cameraInfoHeader();
    const auto found = text.indexOf(header);
    return found < 0 ? otherKeyLines(latin1View(lines)) : text.mid(found + header.size());
}

/**
 * Whether the head of an extension lets it join those that were loaded before.
 *
 * @param reason  receives why not, where that is worth a message
 */
tag_estatus checkHead(const CPLSection& head, EVEXA_Types system, const QSet<QString>& loaded,
                      QString* reason)
{
    if (!hasKey(head, Key::ExtensionName)) {
        *reason = missingKey(Key::ExtensionName);
        return eSTATUS_KEY_NOT_FOUND;
    }
    if (!hasKey(head, Key::SystemConfiguration)) {
        *reason = missingKey(Key::SystemConfiguration);
        return eSTATUS_EXTENSION_KEY_MISSING;
    }
    if (classifySystem(valueOf(head, Key::SystemConfiguration)) != system)
        return eSTATUS_SYSTEM_MISMATCH;
    if (!hasKey(head, Key::ConflictsWith)) {
        *reason = missingKey(Key::ConflictsWith);
        return eSTATUS_EXTENSION_KEY_MISSING;
    }
    const QStringList rivals = valueOf(head, Key::ConflictsWith).split(u',');
    const auto isLoaded = [&](const QString& rival) { return loaded.contains(rival); };
    if (std::any_of(rivals.begin(), rivals.end(), isLoaded)) {
        *reason = QStringLiteral("Conflicts with already loaded extensions.");
        return eSTATUS_EXTENSION_CONFLICT;
    }
    return eSTATUS_SUCCESS;
}

/** Reads an extension if it fits; `reason` receives why not, where that is worth a message. */
tag_estatus readExtension(const QString& path, EVEXA_Types system, const QSet<QString>& loaded,
                          Extension* extension, QString* reason)
{
    ExtensionFile info;
    if (QFileInfo(path).size() > maxTextFileSize ||
        checked(info.loadClickInfo(path, false)) != eSTATUS_SUCCESS)
        return eSTATUS_EXTENSION_LOAD_FAILED;
    const CPLSection* const head = info.find(Section::ExtensionInfo);
    if (!head) {
        *reason = missingSection(Section::ExtensionInfo);
        return eSTATUS_SECTION_NOT_FOUND;
    }
    const tag_estatus status = checkHead(*head, system, loaded, reason);
    if (status != eSTATUS_SUCCESS)
        return status;
    if (!info.find(Section::CameraSystemInfo)) {
        *reason = missingSection(Section::CameraSystemInfo);
        return eSTATUS_SECTION_NOT_FOUND;
    }
    const auto keyLines = keyLinesOf(path);
    if (!keyLines) {
        *reason = QStringLiteral("File open failed");
        return eSTATUS_FILE_OPEN_FAILED;
    }
    *extension = {valueOf(*head, Key::ExtensionName), *keyLines};
    return eSTATUS_SUCCESS;
}

/** The extensions that Qt leaves out of a folder's list: the locale cannot spell their names. */
QStringList unlistedExtensions(const QString& folder)
{
    QStringList names;
#ifdef Q_OS_UNIX
    using Entries = std::filesystem::directory_iterator;
    std::error_code failure;
    Entries entry(QFile::encodeName(folder).toStdString(), failure);
    for (; !failure && entry != Entries(); entry.increment(failure)) {
        const auto bytes = QByteArray::fromStdString(entry->path().filename().native());
        const QString name = QFile::decodeName(bytes);
        if (QFile::encodeName(name) != bytes &&
            QDir::match(PLKeyword::File::ExtensionPattern, name))
            names += name;
    }
#else
    Q_UNUSED(folder)
#endif
    return names;
}

void reportRefused(const QString& extension, const QString& reason)
{
    OVPARSER_DEBUG()
        << QStringLiteral("Loading cameraInfo extension '%1' failed: %2").arg(extension, reason);
}

/** Stores a choice of the operator; without memory it is good for this object alone. */
template <typename Choice>
void storeGuarded(QLatin1String key, const Choice& choice)
{
    guarded([&] { storeChoice(key, choice); });
}

} // namespace

CPLCameraInfo::CPLCameraInfo()
    : state(std::make_unique<InstrumentState>())
{}

CPLCameraInfo::CPLCameraInfo(const CPLCameraInfo& other)
    : CPLClickInfo(other)
    , state(std::make_unique<InstrumentState>(*other.state))
    , cameraInfoSectionHeld(other.isSectionPresent(Section::CameraSystemInfo))
{}

CPLCameraInfo& CPLCameraInfo::operator=(const CPLCameraInfo& other)
{
    if (this != &other) {
        CPLClickInfo::operator=(other);
        *state = *other.state;
        cameraInfoSectionHeld = isSectionPresent(Section::CameraSystemInfo);
    }
    return *this;
}

CPLCameraInfo::~CPLCameraInfo() = default;

bool CPLCameraInfo::loadCameraInfo(QString path)
{
    return answerOf([&] {
        cameraInfoSectionHeld = false;
        clearData();
        if (load(path) != eSTATUS_SUCCESS) {
            OVPARSER_DEBUG() << "Loading camera information failed.";
            return false;
        }
        const CPLSection* const section = find(Section::CameraSystemInfo);
        cameraInfoSectionHeld = section != nullptr;
        if (!section) {
            OVPARSER_DEBUG() << "Invalid camera information, while loading camera info.";
            return false;
        }
        state->systemType = classifySystem(valueOf(*section, Key::SystemConfiguration));
        if (state->systemType == eVEXA_STANDARD && !loadStandardState(path))
            return false;
        deriveCapabilities(*section, *state);
        return true;
    });
}

bool CPLCameraInfo::loadStandardState(const QString& path)
{
    const CPLSection& section = *find(Section::CameraSystemInfo);
    if (readsYes(section, Key::Zevr24))
        state->zevr24Attached = storedChoice(PLKeyword::Store::Zevr24, false).toBool();
    state->largeAnimalCapable = hasKey(section, Key::XRay2StagePositionC);
    if (state->largeAnimalCapable)
        isLargeAnimalSelected();
    if (readsYes(section, Key::RemovableFilterWheel) && !loadFilterWheel(path))
        return false;
    if (readsYes(section, Key::ZoomLensSupport))
        loadZoomLens(section);
    return true;
}

bool CPLCameraInfo::loadFilterWheel(const QString& path)
{
    const QString stored =
        storedChoice(PLKeyword::Store::FilterWheel, QString(PLKeyword::File::StandardFilterWheel))
            .toString();
    if (!stored.isEmpty())
        state->currentFilterWheelName = stored;
    if (state->currentFilterWheelName.isEmpty())
        return true;
    const QString wheelFile = folderInPath(path) + PLKeyword::File::EmissionFilterFolder + u'/' +
                              state->currentFilterWheelName;
    if (wheelFile.contains(QChar(u'\0')) || !QFile::exists(wheelFile)) {
        OVPARSER_DEBUG() << QStringLiteral(
                                "The Emission Filter Wheel Information file %1 does not exist.")
                                .arg(wheelFile);
        clearData();
        cameraInfoSectionHeld = false;
        return false;
    }
    if (loadappend(wheelFile) != eSTATUS_SUCCESS) {
        OVPARSER_DEBUG() << "Loading Removable filter wheel information file failed.";
        return false;
    }
    return true;
}

void CPLCameraInfo::loadZoomLens(const CPLSection& section)
{
    if (!hasKey(section, Key::ShelfPositionZ)) {
        OVPARSER_DEBUG() << "The Zoom Lens is supported. The Shelf position information for the "
                            "zoom lens is missing in the camerainfo file";
        return;
    }
    state->zoomLensSupported = true;
    state->zoomLensAttached = storedChoice(PLKeyword::Store::Zoom, false).toBool();
}

tag_estatus CPLCameraInfo::load(QString path)
{
    return guarded([&] {
        QString text;
        const tag_estatus read = readInfoText(path, &text);
        if (read != eSTATUS_SUCCESS)
            return read;
        clearData();
        auto marker = text.indexOf(PLKeyword::Text::Marker);
        if (!text.contains(cameraInfoHeader(), Qt::CaseInsensitive)) {
            const QString header = cameraInfoHeader() + u'\n';
            text.prepend(header);
            marker = marker < 0 ? marker : marker + header.size();
        }
        QString extensionText;
        checked(loadCameraInfoExtensions(folderInPath(path) + PLKeyword::File::ConfigFolder,
                                         extensionText));
        if (marker < 0)
            text.append(extensionText);
        else if (!extensionText.isEmpty())
            text.insert(marker, extensionText + u'\n');
        preambleLines = preambleOf(SourceText(trimmed(text)));
        const tag_estatus status = loadTextBuffer(text);
        if (status == eSTATUS_SUCCESS)
            fileSectionCount = sectionCount;
        return status;
    });
}

tag_estatus CPLCameraInfo::loadCameraInfoExtensions(QString configFolder, QString& extensionText)
{
    return guarded([&] {
        extensionText.clear();
        const EVEXA_Types system = installedSystem();
        const QStringList unlisted = unlistedExtensions(configFolder);
        for (const QString& file : unlisted)
            reportRefused(file, QStringLiteral("File name not valid in the locale"));
        QSet<QString> loaded;
        const QStringList files =
            QDir(configFolder)
                .entryList({PLKeyword::File::ExtensionPattern}, QDir::Files, QDir::Unsorted);
        for (const QString& file : files) {
            Extension extension;
            QString reason;
            const tag_estatus status =
                readExtension(configFolder + u'/' + file, system, loaded, &extension, &reason);
            if (status == eSTATUS_SUCCESS) {
                extensionText += extension.keyLines;
                loaded += extension.name;
            } else if (!reason.isEmpty()) {
                reportRefused(file, reason);
            }
        }
        return eSTATUS_SUCCESS;
    });
}

tag_estatus CPLCameraInfo::loadappend(QString path)
{
    return guarded([&] {
        QString text;
        const tag_estatus read = readInfoText(path, &text);
        return read == eSTATUS_SUCCESS ? addTextBuffer(text) : read;
    });
}

tag_estatus CPLCameraInfo::addTextBuffer(QString text)
{
    return guarded([&] {
        CPLSection* const section = find(Section::CameraSystemInfo);
        if (!section)
            return eSTATUS_FILE_OPEN_FAILED;
        const QByteArray latin1 = text.toLatin1();
        LineReader lines(trimmed(latin1View(latin1)));
        for (QLatin1String line; lines.next(&line);) {
            const ColonCut cut = cutAtColon(line);
            if (cut.kind == ColonCut::Pair)
                addPair(*section, simplified(cut.before), simplified(cut.after));
        }
        return eSTATUS_SUCCESS;
    });
}

CPLSection* CPLCameraInfo::getCameraInfoSection() const
{
    return cameraInfoSectionHeld ? answerOf([&] { return find(Section::CameraSystemInfo); })
                                 : nullptr;
}

tag_estatus CPLCameraInfo::getKeyListWithSameKey(QString prefix, QStringList* keys) const
{
    return getKeylistFromKeyAndSubkey(prefix, QString(), keys);
}

tag_estatus CPLCameraInfo::getLensFStopStepList(QString prefix, QStringList* keys) const
{
    return getKeylistFromKeyAndSubkey(prefix, Key::StepsPart, keys);
}

tag_estatus CPLCameraInfo::getKeylistFromKeyAndSubkey(QString key, QString subkey,
                                                      QStringList* keys) const
{
    if (!keys)
        return eSTATUS_NULL_ARGUMENT;
    return guarded([&] {
        const CPLSection* const section = find(Section::CameraSystemInfo);
        if (!section)
            return eSTATUS_SUCCESS;
        QStringList all;
        checked(section->getKeyList(&all));
        std::copy_if(
            all.cbegin(), all.cend(), std::back_inserter(*keys),
            [&](const QString& candidate) { return isKeySelected(candidate, key, subkey); });
        return eSTATUS_SUCCESS;
    });
}

EVEXA_Types CPLCameraInfo::getSystemType() const
{
    return state->systemType;
}

int CPLCameraInfo::getElectronicsTrayPartNum() const
{
    return state->electronicsTrayPartNum;
}

int CPLCameraInfo::getPolarity() const
{
    return state->polarity;
}

int CPLCameraInfo::getStructureLaserDelay() const
{
    return state->structureLaserDelay;
}

bool CPLCameraInfo::isFluorescentKitInstalled() const
{
    return state->fluorescentKitInstalled;
}

bool CPLCameraInfo::isVEXAAurora() const
{
    return state->aurora;
}

bool CPLCameraInfo::isPrincetonAurora() const
{
    return state->princetonAurora;
}

bool CPLCameraInfo::isTrayInstalled() const
{
    return state->trayInstalled;
}

bool CPLCameraInfo::isVEXACT() const
{
    return state->ct;
}

bool CPLCameraInfo::isVEXAKestrel() const
{
    return state->kestrel;
}

bool CPLCameraInfo::isOmegaInstalled() const
{
    return state->omegaInstalled;
}

bool CPLCameraInfo::isOmegaOutput2() const
{
    return state->omegaOutput2;
}

bool CPLCameraInfo::isEmissionWheel2Installed() const
{
    return state->emissionWheel2Installed;
}

bool CPLCameraInfo::isDoorClosedOnZeroStatus() const
{
    return state->doorClosedOnZeroStatus;
}

bool CPLCameraInfo::isUSB_IO_BoardInstalled() const
{
    return state->usbIoBoardInstalled;
}

bool CPLCameraInfo::isUACBoardInstalled() const
{
    return state->uacBoardInstalled;
}

bool CPLCameraInfo::isXrayInstalled() const
{
    return state->xrayInstalled;
}

bool CPLCameraInfo::isSpinnerInstalled() const
{
    return state->spinnerInstalled;
}

bool CPLCameraInfo::isChipReaderInstalled() const
{
    return state->chipReaderInstalled;
}

bool CPLCameraInfo::isSpinnerDeviceActive() const
{
    return state->spinnerDeviceActive;
}

bool CPLCameraInfo::isVEXATesselHT() const
{
    return state->tesselHT;
}

bool CPLCameraInfo::isZoomLensSupported() const
{
    return state->zoomLensSupported;
}

bool CPLCameraInfo::isZoomLensAttached() const
{
    return state->zoomLensAttached;
}

bool CPLCameraInfo::isVICChecked() const
{
    return state->vicChecked;
}

bool CPLCameraInfo::isTransportBedSupported() const
{
    return state->transportBedSupported;
}

bool CPLCameraInfo::isSideMirrorChecked() const
{
    return state->sideMirrorChecked;
}

bool CPLCameraInfo::isZEVR24Attached() const
{
    return state->zevr24Attached;
}

bool CPLCameraInfo::isVEXABL() const
{
    return state->bl;
}

bool CPLCameraInfo::isOldIllumController() const
{
    return state->systemType != eVEXA_200 && state->doorClosedOnZeroStatus;
}

bool CPLCameraInfo::isZEVR24Available() const
{
    return answerOf([&] {
        const CPLSection* const section = getCameraInfoSection();
        return section && readsYes(*section, Key::Zevr24);
    });
}

bool CPLCameraInfo::isLargeAnimalCapable()
{
    state->largeAnimalCapable = answerOf([&] {
        const CPLSection* const section = getCameraInfoSection();
        return section && hasKey(*section, Key::XRay2StagePositionC);
    });
    return state->largeAnimalCapable;
}

bool CPLCameraInfo::isLargeAnimalSelected()
{
    const auto stored = answerOf(storedLargeAnimalPosition);
    state->largeAnimalSelected = stored.value_or(state->largeAnimalSelected);
    return state->largeAnimalSelected;
}

QString CPLCameraInfo::getCurrentFilterWheelName() const
{
    return state->currentFilterWheelName;
}

void CPLCameraInfo::setOmegaInstalled(bool on)
{
    state->omegaInstalled = on;
}

void CPLCameraInfo::setSideMirrorChecked(bool on)
{
    state->sideMirrorChecked = on;
}

void CPLCameraInfo::setSpinnerDeviceStatus(bool on)
{
    state->spinnerDeviceActive = on;
}

void CPLCameraInfo::setVICChecked(bool on)
{
    state->vicChecked = on;
}

void CPLCameraInfo::setZEVR24Attached(bool on)
{
    if (on == state->zevr24Attached)
        return;
    state->zevr24Attached = on;
    storeGuarded(PLKeyword::Store::Zevr24, on);
}

void CPLCameraInfo::setZoomLensAttached(bool on)
{
    if (on == state->zoomLensAttached)
        return;
    state->zoomLensAttached = on;
    storeGuarded(PLKeyword::Store::Zoom, on);
}

void CPLCameraInfo::setCurrentFilterWheelName(const QString& name)
{
    if (name == state->currentFilterWheelName)
        return;
    state->currentFilterWheelName = name;
    storeGuarded(PLKeyword::Store::FilterWheel, name);
}

void CPLCameraInfo::setLargeAnimalState(bool on)
{
    guarded([&] {
        storeLargeAnimalPosition(on);
        return eSTATUS_SUCCESS;
    });
}
