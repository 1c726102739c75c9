#include "PLClickInfo.h"

#include "PLKeywords.h"
#include "internal/Guard.h"
#include "internal/ImageSections.h"
#include "internal/InfoText.h"
#include "internal/LabelSets.h"
#include "internal/LocalTime.h"
#include "internal/SectionAccess.h"
#include "internal/TextFile.h"
#include "internal/ValueSearch.h"
#include "internal/VersionStamp.h"

#include <QtCore/QFile>

#include <ctime>
#include <string_view>

using namespace ovparser::internal;

namespace Key = PLKeyword::Key;
namespace Section = PLKeyword::Section;
namespace Value = PLKeyword::Value;

namespace {

constexpr std::size_t maxTextPiece = 200;

template <typename Result>
tag_estatus getFrom(const CPLSection* section, QString key, Result* value)
{
    return section ? section->getValue(std::move(key), value) : eSTATUS_SECTION_NOT_FOUND;
}

template <typename Input>
tag_estatus setIn(CPLSection* section, QString key, Input value)
{
    return section ? section->setValue(std::move(key), value) : eSTATUS_SECTION_NOT_FOUND;
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
    : CPLClickInfo()
{
    for (auto entry = other.sections.cbegin(); entry != other.sections.cend(); ++entry) {
        auto copy = std::make_unique<CPLSection>(**entry);
        copy->shareKeys(&keyCache);
        sections.insert(sections.cend(), entry.key(), copy.get());
        static_cast<void>(copy.release());
    }
    clickNumber = other.clickNumber;
    sectionKeys = other.sectionKeys;
    sectionCount = other.sectionCount;
    fileSectionCount = other.fileSectionCount;
    preambleLines = other.preambleLines;
}

CPLClickInfo& CPLClickInfo::operator=(const CPLClickInfo& other)
{
    if (this == &other)
        return *this;
    CPLClickInfo copy(other);
    clearData();
    clickNumber.swap(copy.clickNumber);
    sections.swap(copy.sections);
    sectionKeys.swap(copy.sectionKeys);
    std::swap(sectionCount, copy.sectionCount);
    std::swap(fileSectionCount, copy.fileSectionCount);
    preambleLines.swap(copy.preambleLines);
    keyCache.swap(copy.keyCache);
    return *this;
}

CPLClickInfo::~CPLClickInfo()
{
    qDeleteAll(sections);
}

tag_estatus CPLClickInfo::loadSectionData(QString& block, QString sectionKey)
{
    return guarded([&] {
        if (find(sectionKey))
            return eSTATUS_SUCCESS;
        if (sectionKey.isNull())
            return eSTATUS_FAILED;
        const ColonCut header = cutAtColon(firstLine(block));
        if (header.kind == ColonCut::NoColon)
            return eSTATUS_SUCCESS;
        if (header.kind == ColonCut::Commented)
            return eSTATUS_BAD_FORMAT;
        return take(sectionOfBlock(sectionKey, block, header));
    });
}

tag_estatus CPLClickInfo::addSection(CPLSection* section)
{
    if (!section)
        return eSTATUS_NULL_ARGUMENT;
    QString key;
    section->getSectionKey(&key);
    if (key.isEmpty())
        return eSTATUS_EMPTY_SECTION_KEY;
    return guarded([&] {
        const QString lowerKey = mapKey(key);
        if (!sections.contains(lowerKey))
            insertSection(sectionCount, key, lowerKey, section);
        return eSTATUS_SUCCESS;
    });
}

// Either the document holds the section afterwards, or it is as it was.
void CPLClickInfo::insertSection(int position, const QString& key, const QString& lowerKey,
                                 CPLSection* section)
{
    const auto entry = sections.insert(lowerKey, section);
    try {
        sectionKeys.insert(position, key);
    } catch (...) {
        sections.erase(entry);
        throw;
    }
    ++sectionCount;
}

// An override of addSection() may put a section in the place of another one, or fail after the
// document took it: what counts is whether the document holds the section.
tag_estatus CPLClickInfo::take(std::unique_ptr<CPLSection> section)
{
    QString key;
    section->getSectionKey(&key);
    key = mapKey(std::move(key));
    section->shareKeys(&keyCache);
    const tag_estatus status = addSection(section.get());
    if (sections.value(key) == section.get())
        static_cast<void>(section.release());
    return checked(status);
}

tag_estatus CPLClickInfo::removeSection(QString sectionKey)
{
    return guarded([&] {
        const QString lowerKey = mapKey(std::move(sectionKey));
        const int position = sections.contains(lowerKey) ? sectionPosition(lowerKey) : -1;
        if (position < 0)
            return eSTATUS_SUCCESS;
        sectionKeys.removeAt(position);
        --sectionCount;
        delete sections.take(lowerKey);
        return eSTATUS_SUCCESS;
    });
}

int CPLClickInfo::sectionPosition(const QString& lowerKey) const
{
    // Making a map key takes memory, so do it only for keys that look alike.
    const int position = positionOf(sectionKeys, [&](const QString& key) {
        return key.compare(lowerKey, Qt::CaseInsensitive) == 0 && mapKey(key) == lowerKey;
    });
    if (position >= 0)
        return position;
    // A few letters, such as a capital I with a dot, do not look like their lower-case form.
    return positionOf(sectionKeys, [&](const QString& key) { return mapKey(key) == lowerKey; });
}

tag_estatus CPLClickInfo::loadTextBuffer(const QString& text)
{
    return guarded([&] {
        const QString latin1 = latin1Form(text);
        BlockReader blocks(trimmed(latin1));
        tag_estatus status = eSTATUS_SUCCESS;
        for (QStringView block; status == eSTATUS_SUCCESS && blocks.next(&block);)
            status = loadBlock(trimmed(block));
        return status;
    });
}

tag_estatus CPLClickInfo::loadBlock(QStringView text)
{
    const auto key = headerKey(firstLine(text));
    if (!key)
        return eSTATUS_BAD_FORMAT;
    const QString sectionKey = key->toString();
    QString block = text.toString();
    if (sectionKey.compare(Section::ClickNumber, Qt::CaseInsensitive) == 0) {
        clickNumber = clickNumberOf(block).value_or(clickNumber);
        if (clickNumber.isEmpty())
            return eSTATUS_EMPTY_SECTION_KEY;
    }
    return loadSectionData(block, sectionKey);
}

void CPLClickInfo::clearData()
{
    const QStringList keys = sectionKeys;
    for (const QString& key : keys)
        removeSection(key);
    qDeleteAll(sections); // what an overriding removeSection() has left
    sections.clear();
    clickNumber = QString();
    sectionKeys.clear();
    preambleLines.clear();
    keyCache.reset();
    sectionCount = 0;
    fileSectionCount = 0;
}

tag_estatus CPLClickInfo::loadClickInfo(QString path, bool appendUser)
{
    return guarded([&] {
        QByteArray bytes;
        tag_estatus status = readFile(path, &bytes);
        if (status != eSTATUS_SUCCESS)
            return status;
        status = loadClickInfoText(decodeInfoText(std::move(bytes)));
        if (status != eSTATUS_SUCCESS || !appendUser)
            return status;
        return appendUserSpecificSections(false);
    });
}

tag_estatus CPLClickInfo::loadAnalyzedClickInfo(QString path)
{
    return guarded([&] {
        QByteArray bytes;
        tag_estatus status = readFile(path, &bytes);
        if (status != eSTATUS_SUCCESS)
            return status;
        startLoading();
        status = loadTextBuffer(decodeInfoText(std::move(bytes)));
        return status == eSTATUS_SUCCESS ? appendUserSpecificSections(false) : status;
    });
}

tag_estatus CPLClickInfo::loadClickInfoDcm(const char* buffer, int length)
{
    if (!buffer)
        return eSTATUS_NULL_ARGUMENT;
    return guarded([&] {
        const tag_estatus status =
            loadClickInfoText(decodeInfoText(QByteArray(buffer, qMax(length, 0))));
        return status == eSTATUS_SUCCESS ? appendUserSpecificSections(false) : status;
    });
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
    return guarded([&] {
        const auto now = qint64(std::time(nullptr));
        clickNumber = prefix + timeStamp(brokenDownLocalTime(now).value_or(tm{}));
        tag_estatus status = addTiffClickNumberSection(false, false, Value::ImportVersion);
        if (status != eSTATUS_SUCCESS)
            return status;
        status = addTiffUserSection(imageType, prefix);
        if (status != eSTATUS_SUCCESS)
            return status;
        if (!find(Section::UserLabelNameSet))
            status = take(makeUniversalLabelSet());
        if (status != eSTATUS_SUCCESS)
            return status;
        sIASetupInfo setup;
        setup.acquisitionTime = now;
        setBinning(setup, imageType, binning);
        return addTiffImageSection(fileName(imagePath), imageType, &setup, false);
    });
}

tag_estatus CPLClickInfo::obtainValueFromClickInfoFile(QString path, QString key,
                                                       QString* value) const
{
    if (!value)
        return eSTATUS_NULL_ARGUMENT;
    return guarded([&] {
        QFile file(path);
        if (!openToRead(file))
            return eSTATUS_FILE_OPEN_FAILED;
        *value = QString();
        const ValueSearch search(key);
        PieceReader pieces(file);
        for (std::string_view piece; pieces.next(&piece);) {
            if (const auto found = search.in(piece)) {
                *value = *found;
                return eSTATUS_SUCCESS;
            }
        }
        return eSTATUS_KEY_NOT_FOUND;
    });
}

// The text is not const: a string literal must go on to mean a path.
// NOLINTNEXTLINE(readability-non-const-parameter)
tag_estatus CPLClickInfo::obtainValueFromClickInfoFile(char* text, QString key,
                                                       QString* value) const
{
    if (!text || !value)
        return eSTATUS_NULL_ARGUMENT;
    return guarded([&] {
        *value = QString();
        const ValueSearch search(key);
        std::string_view unread(text);
        while (!unread.empty()) {
            const std::size_t length = pieceLength(unread, maxTextPiece);
            if (const auto found = search.in(unread.substr(0, length))) {
                *value = *found;
                return eSTATUS_SUCCESS;
            }
            unread.remove_prefix(length);
        }
        return eSTATUS_KEY_NOT_FOUND;
    });
}

tag_estatus CPLClickInfo::saveClickInfo(QString path) const
{
    return guarded([&] {
        const bool dicom = path.endsWith(PLKeyword::File::DicomSuffix);
        return writeFile(path, documentText(), dicom ? WriteMode::Append : WriteMode::Replace);
    });
}

QByteArray CPLClickInfo::getClickInfoData() const
{
    return answerOf([&] { return documentText(); });
}

QByteArray CPLClickInfo::documentText() const
{
    QByteArray data;
    for (const QString& line : preambleLines)
        data += (line + PLKeyword::Text::LineEnd).toLatin1();
    for (const QString& key : sectionKeys)
        data += latin1TextOf(*find(key));
    data += PLKeyword::Text::DocumentEnd.data();
    return data;
}

bool CPLClickInfo::isSectionPresent(QString sectionKey) const
{
    return (*this)[std::move(sectionKey)] != nullptr;
}

CPLSection* CPLClickInfo::operator[](QString sectionKey) const
{
    return answerOf([&] { return find(std::move(sectionKey)); });
}

CPLSection* CPLClickInfo::find(QString sectionKey) const
{
    return sections.value(mapKey(std::move(sectionKey)));
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
    return guarded([&] {
        return appendUserSections(
            [this](const QString& key) { return find(key); },
            [this](std::unique_ptr<CPLSection> section) { return take(std::move(section)); },
            userFields);
    });
}

tag_estatus CPLClickInfo::appendAnalysisUserInputSection()
{
    return guarded([&] {
        if (find(Section::AnalysisUserInput))
            return eSTATUS_SUCCESS;
        auto section = std::make_unique<CPLSection>(Section::AnalysisUserInput, Value::Empty);
        addPair(*section, Key::Comment2, Value::Empty);
        return take(std::move(section));
    });
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
    guarded([&] {
        clickNumber = clickNumberOf(block).value_or(clickNumber);
        return eSTATUS_SUCCESS;
    });
}

void CPLClickInfo::loadClickNumber(QString prefix, QString suffix)
{
    guarded([&] {
        clickNumber = prefix + suffix;
        return eSTATUS_SUCCESS;
    });
}

tag_estatus CPLClickInfo::getValue(QString sectionKey, QString key, QString* value) const
{
    return guarded([&] { return getFrom(find(std::move(sectionKey)), std::move(key), value); });
}

tag_estatus CPLClickInfo::getValue(QString sectionKey, QString key, int* value) const
{
    return guarded([&] { return getFrom(find(std::move(sectionKey)), std::move(key), value); });
}

tag_estatus CPLClickInfo::getValue(QString sectionKey, QString key, long* value) const
{
    return guarded([&] { return getFrom(find(std::move(sectionKey)), std::move(key), value); });
}

tag_estatus CPLClickInfo::getValue(QString sectionKey, QString key, short* value) const
{
    return guarded([&] { return getFrom(find(std::move(sectionKey)), std::move(key), value); });
}

tag_estatus CPLClickInfo::getValue(QString sectionKey, QString key, float* value) const
{
    return guarded([&] { return getFrom(find(std::move(sectionKey)), std::move(key), value); });
}

tag_estatus CPLClickInfo::getValue(QString sectionKey, QString key, double* value) const
{
    return guarded([&] { return getFrom(find(std::move(sectionKey)), std::move(key), value); });
}

tag_estatus CPLClickInfo::setValue(QString sectionKey, QString key, QString value)
{
    return guarded([&] { return setIn(find(std::move(sectionKey)), std::move(key), value); });
}

tag_estatus CPLClickInfo::setValue(QString sectionKey, QString key, int value)
{
    return guarded([&] { return setIn(find(std::move(sectionKey)), std::move(key), value); });
}

tag_estatus CPLClickInfo::setValue(QString sectionKey, QString key, long value)
{
    return guarded([&] { return setIn(find(std::move(sectionKey)), std::move(key), value); });
}

tag_estatus CPLClickInfo::setValue(QString sectionKey, QString key, short value)
{
    return guarded([&] { return setIn(find(std::move(sectionKey)), std::move(key), value); });
}

tag_estatus CPLClickInfo::setValue(QString sectionKey, QString key, float value)
{
    return guarded([&] { return setIn(find(std::move(sectionKey)), std::move(key), value); });
}

tag_estatus CPLClickInfo::setValue(QString sectionKey, QString key, double value)
{
    return guarded([&] { return setIn(find(std::move(sectionKey)), std::move(key), value); });
}

tag_estatus CPLClickInfo::addImageSection(QString path, QString userId, tag_eimagetype type,
                                          const sIASetupInfo* setup, bool settings)
{
    return guarded([&] {
        checked(setValue(Section::UserInput, Key::UserId, userId));
        return addTiffImageSection(fileName(path), type, setup, settings);
    });
}

tag_estatus CPLClickInfo::addTiffImageSection(QString name, tag_eimagetype type,
                                              const sIASetupInfo* setup, bool settings)
{
    if (!setup)
        return eSTATUS_NULL_ARGUMENT;
    return guarded([&] {
        const QString key = imageSectionKey(type);
        if (key.isEmpty())
            return eSTATUS_UNSUPPORTED_IMAGE_TYPE;
        const QString lowerKey = mapKey(key);
        if (sections.contains(lowerKey))
            return eSTATUS_SECTION_EXISTS;
        auto section = makeImageSection(type, name, *setup, settings);
        auto companion = makeCorrectedCompanion(type, *setup, settings);
        if (find(Section::LuminescentCorrected))
            companion.reset();
        const int readBiasOnly =
            followsReadBiasOnly(type) ? sectionPosition(mapKey(Section::ReadBiasOnly)) : -1;
        insertSection(readBiasOnly < 0 ? sectionCount : readBiasOnly + 1, key, lowerKey,
                      section.get());
        const tag_estatus status =
            companion ? CPLClickInfo::addSection(companion.get()) : eSTATUS_SUCCESS;
        if (status != eSTATUS_SUCCESS) {
            // Both sections or none, so that the caller can try again.
            sectionKeys.removeOne(key);
            sections.remove(lowerKey);
            --sectionCount;
            return status;
        }
        static_cast<void>(section.release());
        static_cast<void>(companion.release());
        return status;
    });
}

tag_estatus CPLClickInfo::addTiffClickNumberSection(bool acquired, bool inSequence, QString version)
{
    return guarded([&] {
        auto section = std::make_unique<CPLSection>(Section::ClickNumber, clickNumber);
        addPair(*section, Key::ClickInfoType, Value::RawData);
        addPair(*section, Key::Version, versionStamp(version));
        if (acquired)
            addPair(*section, Key::ModifiedSinceSaved, Value::Zero);
        else
            addPair(*section, Key::AcquiredFromFile, Value::Yes);
        if (inSequence)
            addPair(*section, Key::SequenceId, clickNumber);
        take(std::move(section));
        return eSTATUS_SUCCESS;
    });
}

tag_estatus CPLClickInfo::addTiffUserSection(tag_eimagetype type, QString userId)
{
    return guarded([&] {
        const QString displayType = displayTypeOf(type);
        if (displayType.isEmpty())
            return eSTATUS_UNSUPPORTED_IMAGE_TYPE;
        auto section = std::make_unique<CPLSection>(Section::UserInput, Value::Empty);
        addPair(*section, Key::UserId, userId);
        addPair(*section, Key::DisplayType, displayType);
        take(std::move(section));
        return eSTATUS_SUCCESS;
    });
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
    return guarded([&] {
        const ColonCut header = cutAtColon(firstLine(buffer));
        if (header.kind != ColonCut::Pair)
            return eSTATUS_BAD_FORMAT;
        QString block = buffer;
        *section = sectionOfBlock(sectionKey, block, header).release();
        return eSTATUS_SUCCESS;
    });
}

tag_estatus CPLClickInfo::copySectionBuffer(const QString& text, QString& sectionText, int& length,
                                            QString* sectionKey)
{
    length = 0;
    if (text.isEmpty())
        return eSTATUS_NULL_ARGUMENT;
    return guarded([&] {
        const QStringView header = firstLine(text);
        const ColonCut cut = cutAtColon(header);
        if (!text.startsWith(PLKeyword::Text::Marker) || cut.kind != ColonCut::Pair)
            return eSTATUS_BAD_FORMAT;
        const auto keyStart = PLKeyword::Text::Marker.size();
        const QString key = trimmed(header.mid(keyStart, cut.colon - keyStart)).toString();
        const auto end = int(sectionLength(text));
        sectionText = text.left(end);
        length = end;
        if (sectionKey)
            *sectionKey = key;
        return eSTATUS_SUCCESS;
    });
}
