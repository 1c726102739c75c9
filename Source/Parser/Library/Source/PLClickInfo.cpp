// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "PLClickInfo.h"

#include "PLKeywords.h"
#include "internal/sections/ImageSections.h"
#include "internal/sections/LabelSets.h"
#include "internal/sections/SectionStore.h"
#include "internal/text/Guard.h"
#include "internal/text/InfoText.h"
#include "internal/text/Keys.h"
#include "internal/text/LocalTime.h"
#include "internal/text/TextFile.h"
#include "internal/text/ValueSearch.h"
#include "internal/text/VersionStamp.h"

#include <QtCore/QBuffer>
#include <QtCore/QFile>

#include <ctime>
#include <typeinfo>

using namespace ovparser::internal;

namespace Key = PLKeyword::Key;
namespace Section = PLKeyword::Section;
namespace Value = PLKeyword::Value;

namespace {

/** How much of a line is looked at as one when a value is looked for in a text or a file. */
constexpr int maxTextPiece = 200;
constexpr int maxFilePiece = 249;

tag_estatus giveValue(const std::optional<QString>& found, QString* value)
{
    *value = found.value_or(QString());
    return found ? eSTATUS_SUCCESS : eSTATUS_KEY_NOT_FOUND;
}

template <typename Value>
tag_estatus getFrom(const CPLSection* section, const QString& key, Value* value)
{
    return section ? readValue(*section, key, value) : eSTATUS_SECTION_NOT_FOUND;
}

template <typename Value>
tag_estatus setIn(CPLSection* section, const QString& key, const Value& value)
{
    return section ? changeValue(*section, key, value) : eSTATUS_SECTION_NOT_FOUND;
}

/**
 * Where the section that opens a text ends: at the next section mark on a line that does not begin
 * with '#', or at the end.
 */
int sectionLength(const QString& text)
{
    const QLatin1Char lineFeed('\n');
    auto mark = text.indexOf(PLKeyword::Text::Marker, PLKeyword::Text::Marker.size());
    while (mark >= 0) {
        if (text.at(text.lastIndexOf(lineFeed, mark) + 1) != QLatin1Char('#'))
            return int(mark);
        const auto lineEnd = text.indexOf(lineFeed, mark);
        mark = lineEnd < 0 ? -1 : text.indexOf(PLKeyword::Text::Marker, lineEnd);
    }
    return int(text.size());
}

QString timeStamp(const struct tm& time)
{
    return QString::asprintf("%d%02d%02d%02d%02d%02d", time.tm_year + 1900, time.tm_mon + 1,
                             time.tm_mday, time.tm_hour, time.tm_min, time.tm_sec);
}

} // namespace

CPLClickInfo::CPLClickInfo() = default;

CPLClickInfo::CPLClickInfo(const CPLClickInfo& other)
    : CPLClickInfo()
{
    store().copy(other.sections, other.sectionKeys);
    clickNumber = other.clickNumber;
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
    return *this;
}

CPLClickInfo::~CPLClickInfo()
{
    qDeleteAll(sections);
}

SectionStore CPLClickInfo::store()
{
    return {sections, sectionKeys, sectionCount};
}

tag_estatus CPLClickInfo::loadSectionData(QString& block, QString sectionKey)
{
    return guarded([&] {
        if (find(sectionKey))
            return eSTATUS_SUCCESS;
        if (sectionKey.isNull())
            return eSTATUS_FAILED;
        const SourceText text(block);
        const ColonCut header = cutAtColon(firstLine(text.view()));
        if (header.kind == ColonCut::NoColon)
            return eSTATUS_SUCCESS;
        if (header.kind == ColonCut::Commented)
            return eSTATUS_BAD_FORMAT;
        auto section = makeSection(sectionKey, text, header);
        block.remove(0, int(firstLine(text.view()).size()));
        return take(std::move(section));
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
        return sections.contains(lowerKey) ? eSTATUS_SUCCESS
                                           : store().insert(sectionCount, lowerKey, section);
    });
}

// An override of addSection() may put a section in the place of another one, or fail after the
// document took it: what counts is whether the document holds the section.
tag_estatus CPLClickInfo::take(std::unique_ptr<CPLSection> section)
{
    QString key;
    section->getSectionKey(&key);
    key = mapKey(std::move(key));
    const tag_estatus status = addSection(section.get());
    if (sections.value(key) == section.get())
        static_cast<void>(section.release());
    return checked(status);
}

tag_estatus CPLClickInfo::removeSection(QString sectionKey)
{
    return guarded([&] {
        const QString lowerKey = mapKey(std::move(sectionKey));
        const int place = sections.contains(lowerKey) ? placeOf(lowerKey) : -1;
        if (place >= 0)
            store().remove(place, lowerKey);
    });
}

int CPLClickInfo::placeOf(const QString& lowerKey) const
{
    const FoldedKey wanted(lowerKey);
    return placeOfKey(sectionKeys, [&](const QString& key) { return FoldedKey(key) == wanted; });
}

tag_estatus CPLClickInfo::loadTextBuffer(const QString& text)
{
    return guarded([&] { return loadBlocks(SourceText(text.toLatin1())); });
}

/** Whether no derived class may want to see the blocks or sections of a text. */
bool CPLClickInfo::isPlain() const
{
    return typeid(*this) == typeid(CPLClickInfo);
}

tag_estatus CPLClickInfo::loadBlocks(const SourceText& text)
{
    BlockReader blocks(trimmed(text.view()));
    tag_estatus status = eSTATUS_SUCCESS;
    for (QLatin1String block; status == eSTATUS_SUCCESS && blocks.next(&block);)
        status = loadBlock(text, trimmed(block));
    return status;
}

tag_estatus CPLClickInfo::loadBlock(const SourceText& text, QLatin1String block)
{
    const QLatin1String header = firstLine(block);
    const auto key = headerKey(header);
    if (!key)
        return eSTATUS_BAD_FORMAT;
    const QString sectionKey = *key;
    if (sectionKey.compare(Section::ClickNumber, Qt::CaseInsensitive) == 0) {
        clickNumber = clickNumberOf(text, header).value_or(clickNumber);
        if (clickNumber.isEmpty())
            return eSTATUS_EMPTY_SECTION_KEY;
    }
    if (!isPlain()) {
        QString ownBlock = block;
        return loadSectionData(ownBlock, sectionKey);
    }
    const QString lowerKey = mapKey(sectionKey);
    if (sections.contains(lowerKey))
        return eSTATUS_SUCCESS;
    if (sectionKey.isEmpty())
        return eSTATUS_EMPTY_SECTION_KEY;
    const QLatin1String body(header.end(), block.end());
    store().insert(sectionCount, lowerKey,
                   makeSection(sectionKey, text, cutAtColon(header).after, body));
    return eSTATUS_SUCCESS;
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
    sectionCount = 0;
    fileSectionCount = 0;
}

tag_estatus CPLClickInfo::loadClickInfo(QString path, bool appendUser)
{
    return guarded([&] {
        QByteArray text;
        tag_estatus status = readInfoText(path, &text);
        if (status == eSTATUS_SUCCESS)
            status = loadInfoBytes(text);
        return status == eSTATUS_SUCCESS && appendUser ? appendUserSections(false) : status;
    });
}

tag_estatus CPLClickInfo::loadAnalyzedClickInfo(QString path)
{
    return guarded([&] {
        QByteArray text;
        tag_estatus status = readInfoText(path, &text);
        if (status != eSTATUS_SUCCESS)
            return status;
        startLoading();
        status = isPlain() ? loadBlocks(SourceText(text)) : loadTextBuffer(decodeInfoText(text));
        return status == eSTATUS_SUCCESS ? appendUserSections(false) : status;
    });
}

tag_estatus CPLClickInfo::loadClickInfoDcm(const char* buffer, int length)
{
    if (!buffer)
        return eSTATUS_NULL_ARGUMENT;
    return guarded([&] {
        const tag_estatus status = loadInfoBytes(infoBytes(QByteArray(buffer, qMax(length, 0))));
        return status == eSTATUS_SUCCESS ? appendUserSections(false) : status;
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
    return loadInfoText(SourceText(text), [&] { return loadTextBuffer(text); });
}

// As loadClickInfoText(), which overrides of loadTextBuffer() ask for, but without copies.
tag_estatus CPLClickInfo::loadInfoBytes(const QByteArray& bytes)
{
    if (!isPlain())
        return loadClickInfoText(decodeInfoText(bytes));
    const SourceText text(bytes);
    return loadInfoText(text, [&] { return loadBlocks(text); });
}

template <typename Load>
tag_estatus CPLClickInfo::loadInfoText(const SourceText& text, Load load)
{
    startLoading();
    fileSectionCount = 0;
    preambleLines = preambleOf(text);
    const tag_estatus status = load();
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
        addClickNumber(false, false, Value::ImportVersion);
        tag_estatus status = addUser(imageType, prefix);
        if (status != eSTATUS_SUCCESS)
            return status;
        if (!find(Section::UserLabelNameSet))
            status = take(makeUniversalLabelSet());
        if (status != eSTATUS_SUCCESS)
            return status;
        sIASetupInfo setup;
        setup.acquisitionTime = now;
        (imageType == eIMAGE_LUMINESCENT ? setup.luminescentBinning : setup.photographBinning) =
            binning;
        return addImage(fileNameInPath(imagePath), imageType, &setup, false);
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
        return giveValue(findValue(file, maxFilePiece, key), value);
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
        QByteArray bytes = QByteArray::fromRawData(text, int(qstrlen(text)));
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::ReadOnly);
        return giveValue(findValue(buffer, maxTextPiece, key), value);
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
        appendText(data, line + PLKeyword::Text::LineEnd);
    for (const QString& key : sectionKeys)
        SectionAccess::write(*find(key), data);
    appendText(data, PLKeyword::Text::DocumentEnd);
    return data;
}

bool CPLClickInfo::isSectionPresent(QString sectionKey) const
{
    return (*this)[std::move(sectionKey)] != nullptr;
}

CPLSection* CPLClickInfo::operator[](QString sectionKey) const
{
    return answerOf([&] { return find(sectionKey); });
}

CPLSection* CPLClickInfo::find(const QString& sectionKey) const
{
    return isMapKey(sectionKey) ? sections.value(sectionKey) : sections.value(mapKey(sectionKey));
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
    return guarded([&] { return appendUserSections(userFields); });
}

tag_estatus CPLClickInfo::appendUserSections(bool userFields)
{
    return ovparser::internal::appendUserSections(
        [this](const QString& key) { return find(key); },
        [this](std::unique_ptr<CPLSection> section) { return take(std::move(section)); },
        userFields);
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
        const SourceText text(block);
        clickNumber = clickNumberOf(text, text.view()).value_or(clickNumber);
    });
}

void CPLClickInfo::loadClickNumber(QString prefix, QString suffix)
{
    guarded([&] { clickNumber = prefix + suffix; });
}

// The overloads of a reader or writer differ in the type of the value only.
#define GET_VALUE(Pointer)                                                                         \
    tag_estatus CPLClickInfo::getValue(QString sectionKey, QString key, Pointer value) const       \
    {                                                                                              \
        return guarded([&] { return getFrom(find(sectionKey), key, value); });                     \
    }
GET_VALUE(QString*)
GET_VALUE(short*)
GET_VALUE(int*)
GET_VALUE(long*)
GET_VALUE(float*)
GET_VALUE(double*)
GET_VALUE(qint64*)
GET_VALUE(unsigned*)
GET_VALUE(bool*)
#undef GET_VALUE

#define SET_VALUE(Value)                                                                           \
    tag_estatus CPLClickInfo::setValue(QString sectionKey, QString key, Value value)               \
    {                                                                                              \
        return guarded([&] { return setIn(find(sectionKey), key, value); });                       \
    }
SET_VALUE(QString)
SET_VALUE(short)
SET_VALUE(int)
SET_VALUE(long)
SET_VALUE(float)
SET_VALUE(double)
SET_VALUE(qint64)
SET_VALUE(unsigned)
#undef SET_VALUE

tag_estatus CPLClickInfo::addImageSection(QString path, QString userId, tag_eimagetype type,
                                          const sIASetupInfo* setup, bool settings)
{
    return guarded([&] {
        setIn(find(Section::UserInput), Key::UserId, userId);
        return addImage(fileNameInPath(path), type, setup, settings);
    });
}

tag_estatus CPLClickInfo::addTiffImageSection(QString name, tag_eimagetype type,
                                              const sIASetupInfo* setup, bool settings)
{
    return guarded([&] { return addImage(name, type, setup, settings); });
}

tag_estatus CPLClickInfo::addImage(const QString& name, tag_eimagetype type,
                                   const sIASetupInfo* setup, bool settings)
{
    if (!setup)
        return eSTATUS_NULL_ARGUMENT;
    const ImageKind* const kind = imageKind(type);
    if (!kind)
        return eSTATUS_UNSUPPORTED_IMAGE_TYPE;
    const QString key = mapKey(kind->section);
    if (sections.contains(key))
        return eSTATUS_SECTION_EXISTS;
    auto image = makeImageSection(*kind, name, *setup, settings);
    auto corrected = makeCorrectedCompanion(*kind, *setup, settings);
    const QString correctedKey = mapKey(Section::LuminescentCorrected);
    const int readBiasOnly =
        kind->followsReadBiasOnly ? placeOf(mapKey(Section::ReadBiasOnly)) : -1;
    const int place = readBiasOnly < 0 ? sectionCount : readBiasOnly + 1;
    store().insert(place, key, std::move(image));
    if (!corrected || sections.contains(correctedKey))
        return eSTATUS_SUCCESS;
    try {
        store().insert(sectionCount, correctedKey, std::move(corrected));
    } catch (...) {
        store().remove(place, key); // both sections or none, so that the caller can try again
        throw;
    }
    return eSTATUS_SUCCESS;
}

tag_estatus CPLClickInfo::addTiffClickNumberSection(bool acquired, bool inSequence, QString version)
{
    return guarded([&] { addClickNumber(acquired, inSequence, version); });
}

void CPLClickInfo::addClickNumber(bool acquired, bool inSequence, const QString& version)
{
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
}

tag_estatus CPLClickInfo::addTiffUserSection(tag_eimagetype type, QString userId)
{
    return guarded([&] { return addUser(type, userId); });
}

tag_estatus CPLClickInfo::addUser(tag_eimagetype type, const QString& userId)
{
    const ImageKind* const kind = imageKind(type);
    if (!kind || kind->displayType.isEmpty())
        return eSTATUS_UNSUPPORTED_IMAGE_TYPE;
    auto section = std::make_unique<CPLSection>(Section::UserInput, Value::Empty);
    addPair(*section, Key::UserId, userId);
    addPair(*section, Key::DisplayType, kind->displayType);
    take(std::move(section));
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
    return guarded([&] {
        const SourceText block(buffer);
        const ColonCut header = cutAtColon(firstLine(block.view()));
        if (header.kind != ColonCut::Pair)
            return eSTATUS_BAD_FORMAT;
        *section = makeSection(sectionKey, block, header).release();
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
        const SourceText header(text.left(text.indexOf(QLatin1Char('\n'))));
        const ColonCut cut = cutAtColon(header.view());
        if (!text.startsWith(PLKeyword::Text::Marker) || cut.kind != ColonCut::Pair)
            return eSTATUS_BAD_FORMAT;
        const QLatin1String key(header.view().begin() + PLKeyword::Text::Marker.size(),
                                header.view().begin() + cut.colon);
        const int end = sectionLength(text);
        sectionText = text.left(end);
        length = end;
        if (sectionKey)
            *sectionKey = header.text(trimmed(key));
        return eSTATUS_SUCCESS;
    });
}
