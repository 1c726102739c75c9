#include "PLHelpers.h"

#include "PLCameraInfo.h"
#include "PLKeywords.h"
#include "PLStatus.h"
#include "internal/Guard.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QRegularExpression>
#include <QtCore/QStandardPaths>
#include <QtCore/QStringList>

#include <array>
#include <cmath>

using namespace ovparser::internal;

namespace {

using PLKeyword::keyword;

template <std::size_t N>
QString nameAt(const std::array<QLatin1String, N>& names, int index)
{
    return index >= 0 && std::size_t(index) < N ? QString(names[std::size_t(index)]) : QString();
}

constexpr std::array<QLatin1String, 17> imageTypeNames = {
    keyword("Photograph"),   keyword("Luminescent"),   keyword("Read Bias"),
    keyword("Read Sigma"),   keyword("Background"),    keyword("Bias"),
    keyword("Reference"),    keyword("Structure"),     keyword("Fluorescent Bkg"),
    keyword("FL Reference"), keyword("Luminescent A"), keyword("Luminescent B"),
    keyword("X-Ray"),        keyword("Overlay"),       keyword("Saturation Map"),
    keyword("Height Map"),   keyword("Photo Mask"),
};
constexpr QLatin1String blemishName = keyword("Blemish");

constexpr std::array<QLatin1String, 7> dayNames = {
    keyword("Sunday"),   keyword("Monday"), keyword("Tuesday"),  keyword("Wednesday"),
    keyword("Thursday"), keyword("Friday"), keyword("Saturday"),
};

constexpr std::array<QLatin1String, 12> monthNames = {
    keyword("January"),   keyword("February"), keyword("March"),    keyword("April"),
    keyword("May"),       keyword("June"),     keyword("July"),     keyword("August"),
    keyword("September"), keyword("October"),  keyword("November"), keyword("December"),
};

struct StatusName
{
    tag_estatus status = eSTATUS_SUCCESS;
    QLatin1String name;
};

constexpr StatusName statusNames[] = {
    {eSTATUS_SUCCESS, keyword("eSTATUS_SUCCESS")},
    {eSTATUS_EXTENSION_LOAD_FAILED, keyword("eSTATUS_EXTENSION_LOAD_FAILED")},
    {eSTATUS_NO_CLICK_NUMBERS, keyword("eSTATUS_NO_CLICK_NUMBERS")},
    {eSTATUS_BAD_FORMAT, keyword("eSTATUS_BAD_FORMAT")},
    {eSTATUS_FILE_READ_FAILED, keyword("eSTATUS_FILE_READ_FAILED")},
    {eSTATUS_FILE_OPEN_FAILED, keyword("eSTATUS_FILE_OPEN_FAILED")},
    {eSTATUS_FILE_NOT_FOUND, keyword("eSTATUS_FILE_NOT_FOUND")},
    {eSTATUS_NULL_ARGUMENT, keyword("eSTATUS_NULL_ARGUMENT")},
    {eSTATUS_INVALID_ARGUMENT, keyword("eSTATUS_INVALID_ARGUMENT")},
    {eSTATUS_BAD_LABEL_FORMAT, keyword("eSTATUS_BAD_LABEL_FORMAT")},
    {eSTATUS_KEY_NOT_FOUND, keyword("eSTATUS_KEY_NOT_FOUND")},
    {eSTATUS_SYSTEM_MISMATCH, keyword("eSTATUS_SYSTEM_MISMATCH")},
    {eSTATUS_EXTENSION_CONFLICT, keyword("eSTATUS_EXTENSION_CONFLICT")},
    {eSTATUS_FAILED, keyword("eSTATUS_FAILED")},
    {eSTATUS_EMPTY_SECTION_KEY, keyword("eSTATUS_EMPTY_SECTION_KEY")},
    {eSTATUS_OUT_OF_MEMORY, keyword("eSTATUS_OUT_OF_MEMORY")},
    {eSTATUS_SECTION_EXISTS, keyword("eSTATUS_SECTION_EXISTS")},
    {eSTATUS_EXTENSION_KEY_MISSING, keyword("eSTATUS_EXTENSION_KEY_MISSING")},
    {eSTATUS_INVALID_VALUE, keyword("eSTATUS_INVALID_VALUE")},
    {eSTATUS_SECTION_NOT_FOUND, keyword("eSTATUS_SECTION_NOT_FOUND")},
    {eSTATUS_UNSUPPORTED_IMAGE_TYPE, keyword("eSTATUS_UNSUPPORTED_IMAGE_TYPE")},
    {eSTATUS_FOLDER_NOT_FOUND, keyword("eSTATUS_FOLDER_NOT_FOUND")},
    {eSTATUS_EMPTY_SEQUENCE, keyword("eSTATUS_EMPTY_SEQUENCE")},
};

/** Decimal, with a leading zero when the text is a single character. */
QString twoDigits(int number)
{
    return QString::number(number).rightJustified(2, QLatin1Char('0'));
}

/** The kinds of images that binnings tell apart; a row of a binning table each. */
enum ImageKind { StillPhotograph, XRayImage, OtherImage };

struct Binnings
{
    int large = 0;
    int medium = 0;
    int small = 0;
};

constexpr int notOffered = -1;

enum CameraGroup { GroupS, GroupE, GroupO };

struct GroupMember
{
    QLatin1String model;
    CameraGroup group = GroupO;
};

/** The camera models of the integer form, compared as whole texts. */
constexpr GroupMember groupMembers[] = {
    {keyword("site"), GroupS},   {keyword("andor"), GroupS},  {keyword("dw434"), GroupS},
    {keyword("ds934r"), GroupS}, {keyword("eev"), GroupE},    {keyword("dz436"), GroupE},
    {keyword("dz930"), GroupE},  {keyword("dz936r"), GroupE},
};

// clang-format off
/** Binnings of the integer form, by image kind and camera group. */
constexpr Binnings groupBinnings[][3] = {
    //   S                    E                    O
    {{notOffered, 2, 1}, {notOffered, 4, 2}, {notOffered, 2, 1}}, // still photograph
    {{notOffered, 2, 1}, {notOffered, 2, 1}, {notOffered, 2, 1}}, // X-ray
    {{8, 4, 2},          {16, 8, 4},         {10, 5, 2}},         // any other
};

/** Binnings of the integer form with a Sophia camera, by image kind. */
constexpr Binnings groupSophiaBinnings[] = {
    {notOffered, 4, 2}, {notOffered, 2, 1}, {16, 8, 4},
};

enum CameraClass { ClassA, ClassB, ClassC, ClassD, ClassF };

struct ClassWord {
    QLatin1String word;
    CameraClass cameraClass = ClassF;
    QLatin1String unless = {};
};

/** The words that a camera model may contain; the first that it does tells its class. */
constexpr ClassWord classWords[] = {
    {keyword("dz930"),  ClassA},
    {keyword("dz936r"), ClassA},
    {keyword("ds934r"), ClassB},
    {keyword("dz436"),  ClassC},
    {keyword("eev"),    ClassC, keyword("andor")},
    {keyword("site"),   ClassD},
    {keyword("andor"),  ClassD},
    {keyword("dw434"),  ClassD},
};

/** Binnings of the float form, by image kind and camera class. */
constexpr Binnings classBinnings[][5] = {
    // A          B          C           D          F
    {{4, 4, 2},  {2, 2, 1}, {4, 4, 2},  {2, 2, 1}, {2, 2, 1}},  // still photograph
    {{4, 2, 1},  {4, 2, 1}, {4, 2, 1},  {4, 2, 1}, {4, 2, 1}},  // X-ray
    {{16, 8, 4}, {8, 4, 2}, {16, 8, 4}, {8, 4, 2}, {10, 5, 2}}, // any other
};

/** Binnings of the float form with a Sophia camera, by image kind. */
constexpr Binnings classSophiaBinnings[] = {
    {4, 4, 2}, {4, 2, 1}, {16, 8, 4},
};

/** Pixels of a CCD, by camera class. */
constexpr double classPixels[] = {2048, 1024, 1920, 1024, 1300};

struct BinningLabels {
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

CameraGroup groupOf(const QString& cameraModel)
{
    for (const GroupMember& member : groupMembers) {
        if (equals(cameraModel, member.model))
            return member.group;
    }
    return GroupO;
}

CameraClass classOf(const QString& cameraModel)
{
    for (const ClassWord& row : classWords) {
        const bool excluded = !row.unless.isEmpty() && contains(cameraModel, row.unless);
        if (contains(cameraModel, row.word) && !excluded)
            return row.cameraClass;
    }
    return ClassF;
}

ImageKind kindOf(const QString& imageTypeName)
{
    if (equals(imageTypeName, imageTypeNames[eIMAGE_PHOTOGRAPH]) ||
        equals(imageTypeName, imageTypeNames[eIMAGE_STRUCTURE]))
        return StillPhotograph;
    return equals(imageTypeName, imageTypeNames[eIMAGE_XRAY]) ? XRayImage : OtherImage;
}

ImageKind kindOf(tag_eimagetype imageType)
{
    if (imageType == eIMAGE_PHOTOGRAPH || imageType == eIMAGE_STRUCTURE)
        return StillPhotograph;
    return imageType == eIMAGE_XRAY ? XRayImage : OtherImage;
}

/** Whether a Sophia camera overrides the binnings: for X-ray images on any system. */
bool isSophiaOverride(const QString& systemConfiguration, const QString& cameraSystemInfo,
                      ImageKind kind)
{
    return contains(cameraSystemInfo, PLKeyword::Value::Sophia) &&
           (kind == XRayImage || contains(systemConfiguration, PLKeyword::Value::Vexa50) ||
            contains(systemConfiguration, PLKeyword::Value::Vexa200));
}

struct DataFolder
{
    OV_PATH_TAGS tag = OV_PATH_BASE;
    QLatin1String name;
};

constexpr DataFolder dataFolders[] = {
    {OV_PATH_BASE, PLKeyword::Value::Empty},
    {OV_PATH_DATABASE, PLKeyword::Folder::Database},
    {OV_PATH_ORGANS, PLKeyword::Folder::Organs},
    {OV_PATH_FL_REFERENCE, PLKeyword::Folder::FlReference},
    {OV_PATH_SL_REFERENCE, PLKeyword::Folder::SlReference},
    {OV_PATH_BACKGROUND, PLKeyword::Folder::Background},
    {OV_PATH_AUTO_BACKGROUND, PLKeyword::Folder::AutoBackground},
    {OV_PATH_EMFILTERS, PLKeyword::Folder::EmissionFilters},
    {OV_PATH_USAGE, PLKeyword::Folder::Usage},
    {OV_PATH_AOI_CORR_DB, PLKeyword::Folder::AoiCorrections},
};

/**
 * The machine-wide data folder: beside the second of the platform's locations for local data, or
 * the last one where there are fewer. The location's parent is taken by name; it need not exist.
 */
QString dataFolder()
{
    const QStringList locations =
        QStandardPaths::standardLocations(QStandardPaths::AppLocalDataLocation);
    const QString location =
        QDir::cleanPath(QDir(locations.value(1, locations.value(0))).absolutePath());
    const QString parent = location.left(location.lastIndexOf(QLatin1Char('/')));
    return parent + QLatin1Char('/') + PLKeyword::Value::Organization + QLatin1Char('/') +
           PLKeyword::Value::Product + QLatin1Char('/');
}

/** Gives the background folder that the instrument asks for; false when it asks for none. */
bool getInstrumentBackground(const CPLCameraInfo* camera, QString* path)
{
    const CPLSection* const section = camera ? camera->getCameraInfoSection() : nullptr;
    return section && section->getValue(PLKeyword::Key::DarkchargePath, path) == eSTATUS_SUCCESS;
}

QString folderPath(OV_PATH_TAGS tag, const CPLCameraInfo* camera)
{
    if (tag == OV_PATH_APPLICATION)
        return QCoreApplication::applicationDirPath();
    QString background;
    if (tag == OV_PATH_BACKGROUND && getInstrumentBackground(camera, &background))
        return background;
    for (const DataFolder& folder : dataFolders) {
        if (folder.tag == tag)
            return dataFolder() + folder.name;
    }
    return {};
}

/** The word character that stands between white space in a stage-position key. */
QByteArray positionName(const QString& key)
{
    static const QRegularExpression betweenBlanks(QStringLiteral("\\s(\\w)\\s"),
                                                  QRegularExpression::UseUnicodePropertiesOption);
    return betweenBlanks.match(key).captured(1).toLatin1();
}

bool isPositionKey(const QString& key)
{
    return key.startsWith(PLKeyword::Key::ShelfPosition, Qt::CaseInsensitive) &&
           contains(key, PLKeyword::Key::FovPart);
}

bool hasFieldOfView(const CPLSection& section, const QString& key, double fieldOfView)
{
    constexpr double tolerance = 1e-5;
    float value = 0;
    return section.getValue(key, &value) == eSTATUS_SUCCESS &&
           std::abs(fieldOfView - double(value)) <= tolerance;
}

} // namespace

QString getStatusString(tag_estatus status)
{
    for (const StatusName& row : statusNames) {
        if (row.status == status)
            return row.name;
    }
    return {};
}

QString getImageTypeString(tag_eimagetype type)
{
    switch (type) {
    case eIMAGE_LUMINESCENT_CORRECTED:
        return nameAt(imageTypeNames, eIMAGE_LUMINESCENT);
    case eIMAGE_SATURATION_MAP_2:
        return nameAt(imageTypeNames, eIMAGE_SATURATION_MAP);
    case eIMAGE_BLEMISH:
        return blemishName;
    default:
        return nameAt(imageTypeNames, type);
    }
}

QString getTimefrom1904(double secondsSince1970)
{
    constexpr double secondsFrom1904To1970 = 24107.0 * 86400.0;
    const QString seconds = QString::number(secondsSince1970 + secondsFrom1904To1970, 'f', 6);
    return seconds.left(seconds.indexOf(QLatin1Char('.')));
}

QString getDateOVSFormat(struct tm* time)
{
    if (!time)
        return {};
    const QString day = QString::number(time->tm_mday);
    return nameAt(dayNames, time->tm_wday) + QLatin1String(", ") +
           nameAt(monthNames, time->tm_mon) + QLatin1Char(' ') +
           (time->tm_mday < 10 ? QLatin1Char('0') + day : day) + QLatin1String(", ") +
           QString::number(qint64(time->tm_year) + 1900);
}

QString getTimeOVSFormat(struct tm* time)
{
    if (!time)
        return {};
    const QChar separator = QLatin1Char(':');
    return twoDigits(time->tm_hour) + separator + twoDigits(time->tm_min) + separator +
           twoDigits(time->tm_sec);
}

QString camelCaseString(const QString& text)
{
    QStringList words = text.split(QLatin1Char(' '));
    words.removeAll(QString());
    for (QString& word : words)
        word[0] = word.at(0).toUpper();
    return words.join(QLatin1Char(' '));
}

QString updateLabelSetName(QString name)
{
    return name.replace(PLKeyword::Value::FormerProduct, PLKeyword::Value::Product);
}

QString getSectionBuffer(QString text)
{
    const auto start = text.indexOf(PLKeyword::Text::Marker);
    if (start < 0)
        return {};
    const auto end = text.indexOf(PLKeyword::Text::Marker, start + 1);
    return end < 0 ? text.mid(start) : text.mid(start, end - start);
}

void getCCDBinningsForImageType(QString cameraModel, QString systemConfiguration,
                                QString cameraSystemInfo, QString imageTypeName, int& largeBinning,
                                int& mediumBinning, int& smallBinning)
{
    const ImageKind kind = kindOf(imageTypeName);
    const Binnings& binnings = isSophiaOverride(systemConfiguration, cameraSystemInfo, kind)
                                   ? groupSophiaBinnings[kind]
                                   : groupBinnings[kind][groupOf(cameraModel)];
    largeBinning = binnings.large;
    mediumBinning = binnings.medium;
    smallBinning = binnings.small;
}

void getCCDBinningsForImageType(const QString& cameraModel, QString systemConfiguration,
                                QString cameraSystemInfo, tag_eimagetype imageType,
                                float& largeBinning, float& mediumBinning, float& smallBinning)
{
    const ImageKind kind = kindOf(imageType);
    const Binnings& binnings = isSophiaOverride(systemConfiguration, cameraSystemInfo, kind)
                                   ? classSophiaBinnings[kind]
                                   : classBinnings[kind][classOf(cameraModel)];
    largeBinning = float(binnings.large);
    mediumBinning = float(binnings.medium);
    smallBinning = float(binnings.small);
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
    const CameraClass cameraClass = classOf(cameraModel);
    const bool du88 = cameraClass == ClassF && contains(cameraModel, PLKeyword::Value::Du88);
    return classPixels[du88 ? ClassD : cameraClass];
}

bool hasCCDMapData(const CPLClickInfo& info)
{
    return answerOf([&] {
        const CPLSection* const section = info[PLKeyword::Section::CameraSystemInfo];
        return section && section->isKeyPresent(PLKeyword::Key::CcdMap);
    });
}

bool getFOVName(const CPLClickInfo* info, double fieldOfView, QByteArray& name)
{
    return answerOf([&] {
        const CPLSection* const section =
            info ? (*info)[PLKeyword::Section::CameraSystemInfo] : nullptr;
        if (!section)
            return false;
        QStringList keys;
        checked(section->getKeyList(&keys));
        for (const QString& key : qAsConst(keys)) {
            if (!isPositionKey(key) || !hasFieldOfView(*section, key, fieldOfView))
                continue;
            const QByteArray position = positionName(key);
            if (position.isEmpty())
                continue;
            name = position;
            return true;
        }
        return false;
    });
}

QString getOVPath(OV_PATH_TAGS tag, bool withSlash, const CPLCameraInfo* camera)
{
    const QString path = folderPath(tag, camera);
    const bool complete = !withSlash || path.endsWith(QLatin1Char('/'));
    return complete ? path : path + QLatin1Char('/');
}
