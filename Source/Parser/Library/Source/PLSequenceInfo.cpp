#include "PLSequenceInfo.h"

#include "PLKeywords.h"
#include "internal/Guard.h"
#include "internal/InfoText.h"
#include "internal/LabelSets.h"
#include "internal/SectionAccess.h"
#include "internal/TextFile.h"
#include "internal/VersionStamp.h"

#include <QtCore/QByteArray>
#include <QtCore/QFile>
#include <QtCore/QStringBuilder>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <iterator>
#include <memory>
#include <new>
#include <utility>

#include <sys/stat.h>

using namespace ovparser::internal;

namespace Key = PLKeyword::Key;
namespace Section = PLKeyword::Section;
namespace Value = PLKeyword::Value;

namespace {

/**
 * A section mark may have its ':' behind the next mark; its key then spans both. A section whose
 * ':' lies further behind that mark is passed over: without a limit, many marks before one ':'
 * would take quadratic memory.
 */
constexpr std::ptrdiff_t maxSpanningKey = 128;

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

/** How the bytes of one section are turned into text. */
class ChunkDecoder
{
public:
    explicit ChunkDecoder(const QByteArray& chunk)
        : m_utf8(fromUtf8(chunk).toUtf8() == chunk)
    {}

    [[nodiscard]] QString operator()(const QByteArray& bytes) const
    {
        return m_utf8 ? fromUtf8(bytes) : QString::fromLatin1(bytes.constData(), bytes.size());
    }

private:
    // Given its size, Qt reads past a NUL.
    static QString fromUtf8(const QByteArray& bytes)
    {
        return QString::fromUtf8(bytes.constData(), bytes.size());
    }

    bool m_utf8;
};

/** The name that a section's header line gives, without its comment. */
QString nameIn(QStringView header)
{
    const ColonCut cut = cutAtColon(header);
    return cut.kind == ColonCut::Pair ? withoutComment(cut.after.toString()) : QString();
}

struct FileBytes
{
    tag_estatus status = eSTATUS_SUCCESS;
    std::unique_ptr<char[]> bytes;
    int size = 0;
};

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

FileBytes readWhole(const QByteArray& path)
{
    struct stat info = {};
    if (!mayBeRead(path) || ::stat(path.constData(), &info) != 0)
        return {eSTATUS_FILE_NOT_FOUND, nullptr, 0};
    if (qint64(info.st_size) > maxTextFileSize)
        return {eSTATUS_OUT_OF_MEMORY, nullptr, 0};
    const auto size = std::size_t(info.st_size);
    std::unique_ptr<char[]> bytes(new (std::nothrow) char[size + 1]());
    if (!bytes)
        return {eSTATUS_OUT_OF_MEMORY, nullptr, 0};
    const File file(std::fopen(path.constData(), "rb"), &std::fclose);
    if (!file)
        return {eSTATUS_FILE_NOT_FOUND, nullptr, 0};
    if (std::fread(bytes.get(), 1, size, file.get()) < size)
        return {eSTATUS_FILE_READ_FAILED, nullptr, 0};
    return {eSTATUS_SUCCESS, std::move(bytes), int(size)};
}

} // namespace

CPLSequenceInfo::CPLSequenceInfo() = default;

CPLSequenceInfo::CPLSequenceInfo(const CPLSequenceInfo& other)
    : CPLSequenceInfo()
{
    for (auto entry = other.sections.cbegin(); entry != other.sections.cend(); ++entry) {
        auto copy = std::make_unique<CPLSection>(**entry);
        sections.insert(sections.cend(), entry.key(), copy.get());
        static_cast<void>(copy.release());
    }
    clickNumbers = other.clickNumbers;
    sequenceInfoPath = other.sequenceInfoPath;
    datasetName = other.datasetName;
    userId = other.userId;
    datasetCount = other.datasetCount;
    emptySequence = other.emptySequence;
    sectionKeys = other.sectionKeys;
    sectionCount = other.sectionCount;
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
    clearSections();
}

void CPLSequenceInfo::clearSections()
{
    qDeleteAll(sections);
    sections.clear();
    sectionKeys.clear();
    sectionCount = 0;
    fileSectionCount = 0;
}

tag_estatus CPLSequenceInfo::loadFile(QString path)
{
    if (path.isEmpty())
        return eSTATUS_INVALID_ARGUMENT;
    return guarded([&] {
        clearSections();
        sequenceInfoPath = folderOf(path);
        const QByteArray latin1Path = path.toLatin1();
        FileBytes file;
        file.status = eSTATUS_FILE_NOT_FOUND;
        if (QString::fromLatin1(latin1Path) == path)
            file = readWhole(latin1Path);
        if (file.status == eSTATUS_FILE_NOT_FOUND)
            file = readWhole(QFile::encodeName(path));
        if (file.status != eSTATUS_SUCCESS)
            return file.status;
        loadSections(file.bytes.get(), file.size);
        fileSectionCount = sectionCount;
        if (datasetCount > 0)
            return eSTATUS_SUCCESS;
        return emptySequence ? eSTATUS_EMPTY_SEQUENCE : eSTATUS_NO_CLICK_NUMBERS;
    });
}

void CPLSequenceInfo::loadSections(const char* bytes, int size)
{
    const char* const end = bytes + size;
    const char* colon = bytes;
    const char* next = nullptr;
    for (const char* mark = findMark(bytes, end); mark != end; mark = next) {
        const char* const keyStart = mark + PLKeyword::Text::Marker.size();
        next = findMark(keyStart, end);
        colon = std::find(std::max(colon, keyStart), end, ':');
        if (colon == end)
            return;
        if (colon - next < maxSpanningKey)
            loadChunk(QByteArray(mark, int(next - mark)),
                      QByteArray(keyStart, int(colon - keyStart)));
    }
}

void CPLSequenceInfo::loadChunk(const QByteArray& chunk, const QByteArray& key)
{
    const ChunkDecoder decode(chunk);
    QString text = decode(withLineFeeds(chunk));
    loadSectionData(text, trimmed(decode(key)).toString());
}

tag_estatus CPLSequenceInfo::loadSectionData(QString& text, QString sectionKey)
{
    const QStringView header = firstLine(text);
    const bool closed = header.endsWith(QLatin1Char('\n'));
    auto section = std::make_unique<CPLSection>(sectionKey, closed ? nameIn(header) : QString());
    if (closed)
        text.remove(0, int(header.size()));
    section->loadSectionData(text);
    interpret(sectionKey, *section);
    return take(std::move(section));
}

void CPLSequenceInfo::interpret(const QString& sectionKey, const CPLSection& section)
{
    if (sectionKey == Section::Sequence) {
        checked(section.getSectionName(&datasetName, false));
    } else if (sectionKey == Section::ClickNumbers) {
        checked(section.getValueList(&clickNumbers));
        datasetCount = int(clickNumbers.size());
    } else if (sectionKey == Section::UserInput) {
        userId = valueOf(section, Key::UserId);
    } else if (sectionKey == Section::GraphControls) {
        int empty = 0;
        checked(section.getValue(Key::EmptySequence, &empty));
        emptySequence = empty != 0;
    }
}

tag_estatus CPLSequenceInfo::saveFile(QString path) const
{
    return guarded([&] {
        QByteArray data;
        for (const QString& key : sectionKeys)
            data += latin1TextOf(*sections.value(key));
        data += PLKeyword::Text::DocumentEnd.data();
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
        return eSTATUS_SUCCESS;
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
        return eSTATUS_SUCCESS;
    });
}

CPLSection* CPLSequenceInfo::clickNumberSection() const
{
    static const QString key = Section::ClickNumbers;
    return sections.value(key);
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
    return guarded([&] {
        sectionKeys.append(key);
        try {
            sections.insert(key, section);
        } catch (...) {
            sectionKeys.removeLast();
            throw;
        }
        ++sectionCount;
        return eSTATUS_SUCCESS;
    });
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
        sectionKeys.removeAt(
            positionOf(sectionKeys, [&](const QString& key) { return key == sectionKey; }));
        --sectionCount;
        delete sections.take(sectionKey);
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
