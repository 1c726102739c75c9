// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "PLSequenceInfo.h"

#include "PLKeywords.h"
#include "internal/sections/LabelSets.h"
#include "internal/sections/SectionStore.h"
#include "internal/text/Guard.h"
#include "internal/text/InfoText.h"
#include "internal/text/TextFile.h"
#include "internal/text/VersionStamp.h"

#include <QtCore/QByteArray>
#include <QtCore/QFile>
#include <QtCore/QStringBuilder>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <iterator>
#include <memory>
#include <optional>
#include <utility>

using namespace ovparser::internal;

namespace Key = PLKeyword::Key;
namespace Section = PLKeyword::Section;
namespace Value = PLKeyword::Value;

namespace {

QString clickNumberKey(int number)
{
    char digits[16];
    const char* const end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
    return Key::ClickNumberPrefix % QLatin1String(digits, int(end - digits));
}

/** Finds the section mark "*** " in a range of bytes; `last` when there is none. */
const char* findMark(const char* first, const char* last)
{
    const QLatin1String mark = PLKeyword::Text::Marker;
    return std::search(first, last, mark.begin(), mark.end());
}

// Given its size, Qt reads past a NUL.
QString fromUtf8(QLatin1String bytes)
{
    return QString::fromUtf8(bytes.data(), int(bytes.size()));
}

/** The text of UTF-8, null for ASCII, which needs no decoding; nothing for other bytes. */
std::optional<QString> decodeUtf8(QLatin1String bytes)
{
    uchar bits = 0;
    for (const char c : bytes)
        bits |= uchar(c);
    if (bits <= 0x7F)
        return QString();
    const QString text = fromUtf8(bytes);
    return latin1View(text.toUtf8()) == bytes ? std::optional(text) : std::nullopt;
}

// A QFile takes a name of characters only, in the platform's encoding.
tag_estatus readNamed(const QByteArray& path, QByteArray* bytes)
{
    using Stream = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;
    const Stream stream(mayBeRead(path) ? std::fopen(path.constData(), "rb") : nullptr,
                        &std::fclose);
    QFile file;
    if (!stream || !file.open(stream.get(), QIODevice::ReadOnly | QIODevice::Unbuffered))
        return eSTATUS_FILE_NOT_FOUND;
    const qint64 size = file.size();
    const tag_estatus status = readAll(file, bytes);
    return status == eSTATUS_SUCCESS && bytes->size() < size ? eSTATUS_FILE_READ_FAILED : status;
}

} // namespace

CPLSequenceInfo::CPLSequenceInfo() = default;

CPLSequenceInfo::CPLSequenceInfo(const CPLSequenceInfo& other)
    : CPLSequenceInfo()
{
    store().copy(other.sections, other.sectionKeys);
    clickNumbers = other.clickNumbers;
    sequenceInfoPath = other.sequenceInfoPath;
    datasetName = other.datasetName;
    userId = other.userId;
    datasetCount = other.datasetCount;
    emptySequence = other.emptySequence;
    fileSectionCount = other.fileSectionCount;
}

CPLSequenceInfo& CPLSequenceInfo::operator=(const CPLSequenceInfo& other)
{
    CPLSequenceInfo copy(other);
    clickNumbers.swap(copy.clickNumbers);
    sequenceInfoPath.swap(copy.sequenceInfoPath);
    datasetName.swap(copy.datasetName);
    userId.swap(copy.userId);
    std::swap(datasetCount, copy.datasetCount);
    std::swap(emptySequence, copy.emptySequence);
    sections.swap(copy.sections);
    sectionKeys.swap(copy.sectionKeys);
    std::swap(sectionCount, copy.sectionCount);
    std::swap(fileSectionCount, copy.fileSectionCount);
    return *this;
}

CPLSequenceInfo::~CPLSequenceInfo()
{
    qDeleteAll(sections);
}

SectionStore CPLSequenceInfo::store()
{
    return {sections, sectionKeys, sectionCount};
}

tag_estatus CPLSequenceInfo::loadFile(QString path)
{
    if (path.isEmpty())
        return eSTATUS_INVALID_ARGUMENT;
    return guarded([&] {
        store().clear();
        fileSectionCount = 0;
        sequenceInfoPath = folderInPath(path);
        QByteArray bytes;
        tag_estatus status = eSTATUS_FILE_NOT_FOUND;
        const QByteArray latin1Path = path.toLatin1();
        if (latin1View(latin1Path) == path)
            status = readNamed(latin1Path, &bytes);
        if (status == eSTATUS_FILE_NOT_FOUND)
            status = readNamed(QFile::encodeName(path), &bytes);
        if (status != eSTATUS_SUCCESS)
            return status;
        loadSections(bytes);
        fileSectionCount = sectionCount;
        if (datasetCount > 0)
            return eSTATUS_SUCCESS;
        return emptySequence ? eSTATUS_EMPTY_SEQUENCE : eSTATUS_NO_CLICK_NUMBERS;
    });
}

// The text has the length of the bytes. A key is made of the bytes: a CR in it stays.
void CPLSequenceInfo::loadSections(const QByteArray& bytes)
{
    const SourceText text(withoutLoneReturns(bytes));
    const char* const begin = bytes.constData();
    const char* const end = begin + bytes.size();
    const char* colon = begin;
    const char* next = nullptr;
    for (const char* mark = findMark(begin, end); mark != end; mark = next) {
        const char* const keyStart = mark + PLKeyword::Text::Marker.size();
        next = findMark(keyStart, end);
        colon = std::find(std::max(colon, keyStart), end, ':');
        if (colon == end)
            return;
        if (colon - next >= maxSpanningKey)
            continue;
        const QLatin1String chunk(text.view().begin() + (mark - begin), int(next - mark));
        const QLatin1String keyBytes(keyStart, colon);
        const auto decoded = decodeUtf8(chunk);
        const QString key = decoded ? fromUtf8(keyBytes) : QString(keyBytes);
        const SourceText own(decoded.value_or(QString()));
        const bool isOwn = own.view().size() > 0;
        loadChunk(key, isOwn ? own : text, isOwn ? own.view() : chunk);
    }
}

// A header line without an end is read as a line of the body, too.
void CPLSequenceInfo::loadChunk(const QString& key, const SourceText& text, QLatin1String chunk)
{
    const QLatin1String header = firstLine(chunk);
    const bool closed = header.endsWith(QLatin1Char('\n'));
    const ColonCut cut = closed ? cutAtColon(header) : ColonCut();
    const QLatin1String body(closed ? header.end() : chunk.begin(), chunk.end());
    interpret(makeSection(trimmed(key), text, withoutComment(cut.after), body));
}

// A section whose key is held already is interpreted, but not taken.
tag_estatus CPLSequenceInfo::interpret(std::unique_ptr<CPLSection> section)
{
    const QString& sectionKey = SectionAccess::key(*section);
    if (sectionKey == Section::Sequence) {
        checked(section->getSectionName(&datasetName, false));
    } else if (sectionKey == Section::ClickNumbers) {
        checked(section->getValueList(&clickNumbers));
        datasetCount = int(clickNumbers.size());
    } else if (sectionKey == Section::UserInput) {
        userId = valueOf(*section, Key::UserId);
    } else if (sectionKey == Section::GraphControls) {
        emptySequence = valueOf(*section, Key::EmptySequence).toInt() != 0;
    }
    return take(std::move(section));
}

tag_estatus CPLSequenceInfo::saveFile(QString path) const
{
    return guarded([&] {
        QByteArray data;
        for (const QString& key : sectionKeys)
            SectionAccess::write(*sections.value(key), data);
        appendText(data, PLKeyword::Text::DocumentEnd);
        return writeFile(path, data, WriteMode::Replace);
    });
}

int CPLSequenceInfo::getNumDatasets() const
{
    return datasetCount;
}

QString CPLSequenceInfo::getSequenceInfoPath() const
{
    return sequenceInfoPath;
}

void CPLSequenceInfo::setSequenceInfoPath(QString path)
{
    sequenceInfoPath = path;
}

QString CPLSequenceInfo::getDatasetName() const
{
    return datasetName;
}

void CPLSequenceInfo::setSeqDatasetName(QString name)
{
    datasetName = name;
}

QString CPLSequenceInfo::getDatasetPath(int index) const
{
    if (index < 0 || index >= datasetCount)
        return {};
    return answerOf([&]() -> QString {
        return sequenceInfoPath + clickNumbers.at(index) + QLatin1Char('/') +
               PLKeyword::File::ClickInfo;
    });
}

QStringList CPLSequenceInfo::getClickNumberList() const
{
    return clickNumbers;
}

void CPLSequenceInfo::addClickNumber(QString clickNumber)
{
    guarded([&] {
        CPLSection* const section = clickNumberSection();
        clickNumbers.append(clickNumber);
        const auto count = int(clickNumbers.size());
        try {
            if (section)
                addPair(*section, clickNumberKey(count), clickNumber);
        } catch (...) {
            clickNumbers.removeLast();
            throw;
        }
        datasetCount = count;
    });
}

bool CPLSequenceInfo::removeClickNumber(QString clickNumber)
{
    return answerOf([&] {
        QStringList rest = clickNumbers;
        if (!rest.removeOne(clickNumber))
            return false;
        if (CPLSection* const section = clickNumberSection()) {
            CPLSection renumbered = *section;
            renumbered.clearKeyValuePairs();
            for (int i = 0; i < rest.size(); ++i)
                addPair(renumbered, clickNumberKey(i + 1), rest.at(i));
            *section = renumbered;
        }
        clickNumbers.swap(rest);
        datasetCount = int(clickNumbers.size());
        return true;
    });
}

void CPLSequenceInfo::clearSequenceList()
{
    guarded([&] {
        CPLSection* const section = clickNumberSection();
        clickNumbers.clear();
        datasetCount = 0;
        if (section)
            section->clearKeyValuePairs();
    });
}

CPLSection* CPLSequenceInfo::clickNumberSection() const
{
    return sections.value(Section::ClickNumbers);
}

bool CPLSequenceInfo::isSectionPresent(QString sectionKey) const
{
    return sections.contains(sectionKey);
}

CPLSection* CPLSequenceInfo::operator[](QString sectionKey) const
{
    return sections.value(sectionKey);
}

CPLSection* CPLSequenceInfo::operator[](int index) const
{
    return index >= 0 && index < sectionCount ? sections.value(sectionKeys.at(index)) : nullptr;
}

tag_estatus CPLSequenceInfo::addSection(CPLSection* section)
{
    if (!section)
        return eSTATUS_NULL_ARGUMENT;
    QString key;
    section->getSectionKey(&key);
    if (key.isEmpty())
        return eSTATUS_EMPTY_SECTION_KEY;
    if (sections.contains(key))
        return eSTATUS_SUCCESS;
    return guarded([&] { return store().insert(sectionCount, key, section); });
}

tag_estatus CPLSequenceInfo::take(std::unique_ptr<CPLSection> section)
{
    const int before = sectionCount;
    const tag_estatus status = checked(addSection(section.get()));
    if (sectionCount > before)
        static_cast<void>(section.release());
    return status;
}

tag_estatus CPLSequenceInfo::removeSection(QString sectionKey)
{
    return guarded([&] {
        if (!sections.contains(sectionKey))
            return eSTATUS_NULL_ARGUMENT;
        const auto isKey = [&](const QString& key) { return key == sectionKey; };
        store().remove(placeOfKey(sectionKeys, isKey), sectionKey);
        return eSTATUS_SUCCESS;
    });
}

int CPLSequenceInfo::getFileSectionCount() const
{
    return fileSectionCount;
}

tag_estatus CPLSequenceInfo::addSequenceNumberSection(QString version)
{
    guarded([&] {
        auto section = std::make_unique<CPLSection>(Section::Sequence, datasetName);
        addPair(*section, Key::Version, versionStamp(version));
        addPair(*section, Key::FolderOnDisk, Value::Empty);
        addPair(*section, Key::ClickInfoType, Value::SingleClickAnalysis);
        return take(std::move(section));
    });
    return eSTATUS_SUCCESS;
}

tag_estatus CPLSequenceInfo::addSeqUserSection(tag_eimagetype imageType, QString user)
{
    return guarded([&] {
        const bool overlay = imageType == eIMAGE_OVERLAY;
        auto section = std::make_unique<CPLSection>(Section::UserInput, Value::Empty);
        addPair(*section, Key::UserId, user);
        addPair(*section, Key::DisplayType, overlay ? Value::DisplayOverlay : Value::DisplaySingle);
        take(std::move(section));
        return isSectionPresent(Section::UserLabelNameSet) ? eSTATUS_SUCCESS
                                                           : take(makeUniversalLabelSet());
    });
}

void CPLSequenceInfo::addRestoreResult(QString key, QString value)
{
    if (key.isEmpty() || value.isEmpty())
        return;
    guarded([&] {
        if (CPLSection* const section = sections.value(Section::RestoreResults))
            return section->addKeyValue(key, value);
        auto section = std::make_unique<CPLSection>(Section::RestoreResults, Value::Empty);
        addPair(*section, key, value);
        return take(std::move(section));
    });
}

tag_estatus CPLSequenceInfo::appendUserSpecificSections(bool)
{
    return guarded([&] {
        return appendUserSections(
            [this](const QString& key) { return sections.value(key); },
            [this](std::unique_ptr<CPLSection> section) { return take(std::move(section)); },
            false);
    });
}
