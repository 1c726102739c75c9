#include "PLClickInfo.h"

#include "PLKeywords.h"
#include "internal/ImageSections.h"
#include "internal/InfoText.h"
#include "internal/LabelSets.h"
#include "internal/NewSection.h"
#include "internal/TextFile.h"
#include "internal/VersionStamp.h"

#include <QtCore/QFile>

#include <array>
#include <ctime>

using namespace ovparser::internal;

namespace Key = PLKeyword::Key;
namespace Section = PLKeyword::Section;
namespace Value = PLKeyword::Value;

namespace {

constexpr int maxClickNumberLength = 31;
constexpr std::size_t maxFilePiece = 249;
constexpr std::size_t maxTextPiece = 200;

bool isAsciiLetter(QChar c)
{
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
}

template <typename Result>
tag_estatus getFrom(const CPLSection* section, const QString& key, Result* value)
{
    return section ? section->getValue(key, value) : eSTATUS_SECTION_NOT_FOUND;
}

template <typename Input>
tag_estatus setIn(CPLSection* section, const QString& key, Input value)
{
    return section ? section->setValue(key, value) : eSTATUS_SECTION_NOT_FOUND;
}

/** Searches one piece of a text for a key with its ':'. */
bool findInPiece(const QByteArray& piece, const QString& searched, QString* value)
{
    const QString text = decodeInfoText(piece);
    if (text.startsWith(QLatin1Char('#')))
        return false;
    const auto found = text.indexOf(searched, 0, Qt::CaseInsensitive);
    if (found < 0)
        return false;
    *value = trimmed(QStringView(text).mid(found + searched.size())).toString();
    return true;
}

/** Length of the next line of a text, its LF included, but at most one piece. */
int pieceLength(const char* text)
{
    std::size_t length = 0;
    while (length < maxTextPiece && text[length] != '\0') {
        if (text[length++] == '\n')
            break;
    }
    return int(length);
}

QString timeStamp(const struct tm& time)
{
    return QString::asprintf("%d%02d%02d%02d%02d%02d", time.tm_year + 1900, time.tm_mon + 1,
                             time.tm_mday, time.tm_hour, time.tm_min, time.tm_sec);
}

void setBinning(sIASetupInfo& setup, tag_eimagetype type, int binning)
{
    switch (type) {
    case eIMAGE_PHOTOGRAPH:
    case eIMAGE_REFERENCE:
    case eIMAGE_STRUCTURE:
        setup.photographBinning = binning;
        break;
    case eIMAGE_LUMINESCENT:
    case eIMAGE_READ_BIAS:
    case eIMAGE_READ_SIGMA:
    case eIMAGE_BACKGROUND:
    case eIMAGE_BIAS:
    case eIMAGE_FLUORESCENT_BKG:
        setup.luminescentBinning = binning;
        break;
    default:
        break;
    }
}

struct DisplayType
{
    tag_eimagetype type = eIMAGE_PHOTOGRAPH;
    QLatin1String name;
};

constexpr DisplayType displayTypes[] = {
    {eIMAGE_PHOTOGRAPH, Value::DisplayPhotographic},
    {eIMAGE_LUMINESCENT, Value::DisplayLuminescent},
    {eIMAGE_STRUCTURE, Value::DisplayStructure},
};

/** The display type of an image; an empty string for an image type without one. */
QString displayTypeOf(tag_eimagetype type)
{
    for (const DisplayType& row : displayTypes) {
        if (row.type == type)
            return row.name;
    }
    return {};
}

} // namespace

CPLClickInfo::CPLClickInfo() = default;

CPLClickInfo::CPLClickInfo(const CPLClickInfo& other)
{
    copySections(other);
}

CPLClickInfo& CPLClickInfo::operator=(const CPLClickInfo& other)
{
    if (this != &other) {
        clearData();
        copySections(other);
    }
    return *this;
}

CPLClickInfo::~CPLClickInfo()
{
    CPLClickInfo::clearData();
}

void CPLClickInfo::copySections(const CPLClickInfo& other)
{
    clickNumber = other.clickNumber;
    sectionKeys = other.sectionKeys;
    sectionCount = other.sectionCount;
    fileSectionCount = other.fileSectionCount;
    preambleLines = other.preambleLines;
    for (auto entry = other.sections.cbegin(); entry != other.sections.cend(); ++entry)
        sections.insert(sections.cend(), entry.key(), new CPLSection(**entry));
}

tag_estatus CPLClickInfo::loadSectionData(QString& block, QString sectionKey)
{
    if (isSectionPresent(sectionKey))
        return eSTATUS_SUCCESS;
    if (sectionKey.isNull())
        return eSTATUS_FAILED;
    const ColonCut header = cutAtColon(firstLine(block));
    if (header.kind == ColonCut::NoColon)
        return eSTATUS_SUCCESS;
    if (header.kind == ColonCut::Commented)
        return eSTATUS_BAD_FORMAT;
    auto section = sectionOfBlock(sectionKey, block, header);
    return section ? addOrDestroy(*this, std::move(section)) : eSTATUS_OUT_OF_MEMORY;
}

tag_estatus CPLClickInfo::addSection(CPLSection* section)
{
    if (!section)
        return eSTATUS_NULL_ARGUMENT;
    QString key;
    section->getSectionKey(&key);
    if (key.isEmpty())
        return eSTATUS_EMPTY_SECTION_KEY;
    if (!isSectionPresent(key))
        insertSection(int(sectionKeys.size()), section);
    return eSTATUS_SUCCESS;
}

void CPLClickInfo::insertSection(int position, CPLSection* section)
{
    QString key;
    section->getSectionKey(&key);
    sections.insert(mapKey(key), section);
    sectionKeys.insert(position, key);
    ++sectionCount;
}

tag_estatus CPLClickInfo::removeSection(QString sectionKey)
{
    const QString lowerKey = mapKey(sectionKey);
    CPLSection* const section = sections.take(lowerKey);
    if (!section)
        return eSTATUS_SUCCESS;
    sectionKeys.removeAt(sectionPosition(lowerKey));
    --sectionCount;
    delete section;
    return eSTATUS_SUCCESS;
}

int CPLClickInfo::sectionPosition(const QString& lowerKey) const
{
    // Making a map key takes memory, so do it only for keys that look alike.
    for (int i = 0; i < sectionKeys.size(); ++i) {
        const QString& key = sectionKeys.at(i);
        if (key.compare(lowerKey, Qt::CaseInsensitive) == 0 && mapKey(key) == lowerKey)
            return i;
    }
    // A few letters, such as a capital I with a dot, do not look like their lower-case form.
    for (int i = 0; i < sectionKeys.size(); ++i) {
        if (mapKey(sectionKeys.at(i)) == lowerKey)
            return i;
    }
    return -1;
}

tag_estatus CPLClickInfo::loadTextBuffer(const QString& text)
{
    const QString latin1 = latin1Form(text);
    BlockReader blocks(trimmed(latin1));
    for (QStringView view; blocks.next(&view);) {
        const QStringView trimmedBlock = trimmed(view);
        const auto key = headerKey(firstLine(trimmedBlock));
        if (!key)
            return eSTATUS_BAD_FORMAT;
        const QString sectionKey = key->toString();
        QString block = trimmedBlock.toString();
        if (sectionKey.compare(Section::ClickNumber, Qt::CaseInsensitive) == 0) {
            loadClickNumber(block);
            if (clickNumber.isEmpty())
                return eSTATUS_EMPTY_SECTION_KEY;
        }
        const tag_estatus status = loadSectionData(block, sectionKey);
        if (status != eSTATUS_SUCCESS)
            return status;
    }
    return eSTATUS_SUCCESS;
}

void CPLClickInfo::clearData()
{
    const QStringList keys = sectionKeys;
    for (const QString& key : keys)
        removeSection(key);
    sections.clear();
    clickNumber = QString();
    sectionKeys.clear();
    preambleLines.clear();
    sectionCount = 0;
    fileSectionCount = 0;
}

tag_estatus CPLClickInfo::loadClickInfo(QString path, bool appendUser)
{
    QByteArray bytes;
    tag_estatus status = readFile(path, &bytes);
    if (status != eSTATUS_SUCCESS)
        return status;
    status = loadClickInfoText(decodeInfoText(bytes));
    if (status != eSTATUS_SUCCESS || !appendUser)
        return status;
    return appendUserSpecificSections(false);
}

tag_estatus CPLClickInfo::loadAnalyzedClickInfo(QString path)
{
    QByteArray bytes;
    tag_estatus status = readFile(path, &bytes);
    if (status != eSTATUS_SUCCESS)
        return status;
    startLoading();
    status = loadTextBuffer(decodeInfoText(bytes));
    return status == eSTATUS_SUCCESS ? appendUserSpecificSections(false) : status;
}

tag_estatus CPLClickInfo::loadClickInfoDcm(const char* buffer, int length)
{
    if (!buffer)
        return eSTATUS_NULL_ARGUMENT;
    const tag_estatus status =
        loadClickInfoText(decodeInfoText(QByteArray(buffer, qMax(length, 0))));
    return status == eSTATUS_SUCCESS ? appendUserSpecificSections(false) : status;
}

// A click number that the caller set on an otherwise empty document stays.
void CPLClickInfo::startLoading()
{
    if (sectionCount > 0 || !preambleLines.isEmpty())
        clearData();
}

tag_estatus CPLClickInfo::loadClickInfoText(const QString& text)
{
    startLoading();
    fileSectionCount = 0;
    preambleLines = preambleOf(text);
    const tag_estatus status = loadTextBuffer(text);
    if (status == eSTATUS_SUCCESS)
        fileSectionCount = sectionCount;
    return status;
}

tag_estatus CPLClickInfo::loadClickInfo(QString imagePath, QString prefix, tag_eimagetype imageType,
                                        int binning)
{
    const auto now = qint64(std::time(nullptr));
    loadClickNumber(prefix, timeStamp(localTime(now)));
    tag_estatus status = addTiffClickNumberSection(false, false, Value::ImportVersion);
    if (status != eSTATUS_SUCCESS)
        return status;
    status = addTiffUserSection(imageType, prefix);
    if (status != eSTATUS_SUCCESS)
        return status;
    status = appendLabelSet(*this);
    if (status != eSTATUS_SUCCESS)
        return status;
    sIASetupInfo setup;
    setup.acquisitionTime = now;
    setBinning(setup, imageType, binning);
    return addTiffImageSection(fileName(imagePath), imageType, &setup, false);
}

tag_estatus CPLClickInfo::obtainValueFromClickInfoFile(QString path, QString key,
                                                       QString* value) const
{
    if (!value)
        return eSTATUS_NULL_ARGUMENT;
    QFile file(path);
    if (path.isEmpty() || !file.open(QIODevice::ReadOnly))
        return eSTATUS_FILE_OPEN_FAILED;
    *value = QString();
    const QString searched = key + QLatin1Char(':');
    std::array<char, maxFilePiece + 1> piece = {}; // readLine() ends it with a NUL
    for (;;) {
        const qint64 length = file.readLine(piece.data(), qint64(piece.size()));
        if (length <= 0)
            return eSTATUS_KEY_NOT_FOUND;
        if (findInPiece(QByteArray(piece.data(), int(length)), searched, value))
            return eSTATUS_SUCCESS;
    }
}

// The text is not const: a string literal must go on to mean a path.
// NOLINTNEXTLINE(readability-non-const-parameter)
tag_estatus CPLClickInfo::obtainValueFromClickInfoFile(char* text, QString key,
                                                       QString* value) const
{
    if (!text || !value)
        return eSTATUS_NULL_ARGUMENT;
    *value = QString();
    const QString searched = key + QLatin1Char(':');
    for (const char* piece = text; *piece != '\0';) {
        const int length = pieceLength(piece);
        if (findInPiece(QByteArray(piece, length), searched, value))
            return eSTATUS_SUCCESS;
        piece += length;
    }
    return eSTATUS_KEY_NOT_FOUND;
}

tag_estatus CPLClickInfo::saveClickInfo(QString path) const
{
    const bool dicom = path.endsWith(PLKeyword::File::DicomSuffix);
    return writeFile(path, getClickInfoData(), dicom ? WriteMode::Append : WriteMode::Replace);
}

QByteArray CPLClickInfo::getClickInfoData() const
{
    QByteArray data;
    for (const QString& line : preambleLines)
        data += (line + PLKeyword::Text::LineEnd).toLatin1();
    QString text;
    for (const QString& key : sectionKeys) {
        sections.value(mapKey(key))->saveSectionData(text);
        data += text.toLatin1();
    }
    data += PLKeyword::Text::DocumentEnd.data();
    return data;
}

bool CPLClickInfo::isSectionPresent(QString sectionKey) const
{
    return sections.value(mapKey(sectionKey)) != nullptr;
}

CPLSection* CPLClickInfo::operator[](QString sectionKey) const
{
    return sections.value(mapKey(sectionKey));
}

CPLSection* CPLClickInfo::operator[](int index) const
{
    return index >= 0 && index < sectionCount ? (*this)[sectionKeys.at(index)] : nullptr;
}

tag_estatus CPLClickInfo::getSectionCount(int* count) const
{
    if (!count)
        return eSTATUS_NULL_ARGUMENT;
    *count = sectionCount;
    return eSTATUS_SUCCESS;
}

int CPLClickInfo::getFileSectionCount() const
{
    return fileSectionCount;
}

tag_estatus CPLClickInfo::appendUserSpecificSections(bool userFields)
{
    return appendUserSections(*this, userFields);
}

tag_estatus CPLClickInfo::appendAnalysisUserInputSection()
{
    if (isSectionPresent(Section::AnalysisUserInput))
        return eSTATUS_SUCCESS;
    auto section = makeSection(Section::AnalysisUserInput, Value::Empty);
    if (!section)
        return eSTATUS_OUT_OF_MEMORY;
    section->addKeyValue(Key::Comment2, Value::Empty);
    return addOrDestroy(*this, std::move(section));
}

tag_estatus CPLClickInfo::getClickNumber(QString* number) const
{
    if (!number)
        return eSTATUS_NULL_ARGUMENT;
    *number = clickNumber;
    return eSTATUS_SUCCESS;
}

tag_estatus CPLClickInfo::setClickNumber(QString number)
{
    if (number.isEmpty())
        return eSTATUS_INVALID_VALUE;
    clickNumber = number;
    return eSTATUS_SUCCESS;
}

void CPLClickInfo::loadClickNumber(QString block)
{
    const auto colon = block.indexOf(QLatin1Char(':'));
    const auto lineEnd = block.indexOf(QLatin1Char('\n'));
    if (colon < 0 || colon > lineEnd)
        return;
    const QStringView name = trimmed(QStringView(block).mid(colon + 1, lineEnd - colon - 1));
    const bool prefixed = !name.isEmpty() && isAsciiLetter(name.front());
    const QString number = prefixed ? name.toString() : QLatin1Char('X') + name.toString();
    clickNumber = number.left(maxClickNumberLength);
}

void CPLClickInfo::loadClickNumber(QString prefix, QString suffix)
{
    clickNumber = prefix + suffix;
}

tag_estatus CPLClickInfo::getValue(QString sectionKey, QString key, QString* value) const
{
    return getFrom((*this)[sectionKey], key, value);
}

tag_estatus CPLClickInfo::getValue(QString sectionKey, QString key, int* value) const
{
    return getFrom((*this)[sectionKey], key, value);
}

tag_estatus CPLClickInfo::getValue(QString sectionKey, QString key, long* value) const
{
    return getFrom((*this)[sectionKey], key, value);
}

tag_estatus CPLClickInfo::getValue(QString sectionKey, QString key, short* value) const
{
    return getFrom((*this)[sectionKey], key, value);
}

tag_estatus CPLClickInfo::getValue(QString sectionKey, QString key, float* value) const
{
    return getFrom((*this)[sectionKey], key, value);
}

tag_estatus CPLClickInfo::getValue(QString sectionKey, QString key, double* value) const
{
    return getFrom((*this)[sectionKey], key, value);
}

tag_estatus CPLClickInfo::setValue(QString sectionKey, QString key, QString value)
{
    return setIn((*this)[sectionKey], key, value);
}

tag_estatus CPLClickInfo::setValue(QString sectionKey, QString key, int value)
{
    return setIn((*this)[sectionKey], key, value);
}

tag_estatus CPLClickInfo::setValue(QString sectionKey, QString key, long value)
{
    return setIn((*this)[sectionKey], key, value);
}

tag_estatus CPLClickInfo::setValue(QString sectionKey, QString key, short value)
{
    return setIn((*this)[sectionKey], key, value);
}

tag_estatus CPLClickInfo::setValue(QString sectionKey, QString key, float value)
{
    return setIn((*this)[sectionKey], key, value);
}

tag_estatus CPLClickInfo::setValue(QString sectionKey, QString key, double value)
{
    return setIn((*this)[sectionKey], key, value);
}

tag_estatus CPLClickInfo::addImageSection(QString path, QString userId, tag_eimagetype type,
                                          const sIASetupInfo* setup, bool settings)
{
    setValue(Section::UserInput, Key::UserId, userId);
    return addTiffImageSection(fileName(path), type, setup, settings);
}

tag_estatus CPLClickInfo::addTiffImageSection(QString name, tag_eimagetype type,
                                              const sIASetupInfo* setup, bool settings)
{
    if (!setup)
        return eSTATUS_NULL_ARGUMENT;
    const QString key = imageSectionKey(type);
    if (key.isEmpty())
        return eSTATUS_UNSUPPORTED_IMAGE_TYPE;
    if (isSectionPresent(key))
        return eSTATUS_SECTION_EXISTS;
    auto section = makeSection(key, name);
    if (!section)
        return eSTATUS_OUT_OF_MEMORY;
    addImageKeys(*section, type, *setup, settings);
    const int readBiasOnly =
        followsReadBiasOnly(type) ? sectionPosition(mapKey(Section::ReadBiasOnly)) : -1;
    insertSection(readBiasOnly < 0 ? int(sectionKeys.size()) : readBiasOnly + 1, section.release());
    if (hasCorrectedCompanion(type) && !settings)
        addTiffImageSection(PLKeyword::File::CorrectedImage, eIMAGE_LUMINESCENT_CORRECTED, setup,
                            false);
    return eSTATUS_SUCCESS;
}

tag_estatus CPLClickInfo::addTiffClickNumberSection(bool acquired, bool inSequence, QString version)
{
    auto section = makeSection(Section::ClickNumber, clickNumber);
    if (!section)
        return eSTATUS_OUT_OF_MEMORY;
    section->addKeyValue(Key::ClickInfoType, Value::RawData);
    section->addKeyValue(Key::Version, versionStamp(version));
    if (acquired)
        section->addKeyValue(Key::ModifiedSinceSaved, Value::Zero);
    else
        section->addKeyValue(Key::AcquiredFromFile, Value::Yes);
    if (inSequence)
        section->addKeyValue(Key::SequenceId, clickNumber);
    addOrDestroy(*this, std::move(section));
    return eSTATUS_SUCCESS;
}

tag_estatus CPLClickInfo::addTiffUserSection(tag_eimagetype type, QString userId)
{
    const QString displayType = displayTypeOf(type);
    if (displayType.isEmpty())
        return eSTATUS_UNSUPPORTED_IMAGE_TYPE;
    auto section = makeSection(Section::UserInput, Value::Empty);
    if (!section)
        return eSTATUS_OUT_OF_MEMORY;
    section->addKeyValue(Key::UserId, userId);
    section->addKeyValue(Key::DisplayType, displayType);
    addOrDestroy(*this, std::move(section));
    return eSTATUS_SUCCESS;
}

tag_estatus CPLClickInfo::parseSectionFromBuffer(const QString& buffer, const QString& sectionKey,
                                                 CPLSection** section, bool)
{
    if (!section)
        return eSTATUS_NULL_ARGUMENT;
    *section = nullptr;
    if (sectionKey.isNull())
        return eSTATUS_FAILED;
    if (buffer.isEmpty())
        return eSTATUS_SUCCESS;
    const ColonCut header = cutAtColon(firstLine(buffer));
    if (header.kind != ColonCut::Pair)
        return eSTATUS_BAD_FORMAT;
    QString block = buffer;
    *section = sectionOfBlock(sectionKey, block, header).release();
    return *section ? eSTATUS_SUCCESS : eSTATUS_OUT_OF_MEMORY;
}

tag_estatus CPLClickInfo::copySectionBuffer(const QString& text, QString& sectionText, int& length,
                                            QString* sectionKey)
{
    length = 0;
    if (text.isEmpty())
        return eSTATUS_NULL_ARGUMENT;
    const QStringView header = firstLine(text);
    const ColonCut cut = cutAtColon(header);
    if (!text.startsWith(PLKeyword::Text::Marker) || cut.kind != ColonCut::Pair)
        return eSTATUS_BAD_FORMAT;
    const auto keyStart = PLKeyword::Text::Marker.size();
    length = int(sectionLength(text));
    sectionText = text.left(length);
    if (sectionKey)
        *sectionKey = trimmed(header.mid(keyStart, cut.colon - keyStart)).toString();
    return eSTATUS_SUCCESS;
}
