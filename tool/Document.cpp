// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Document.h"

#include "Dicom.h"
#include "Entries.h"
#include "Files.h"
#include "InfoScan.h"

#include <algorithm>

using namespace ovparser::internal;

namespace {

namespace Key = PLKeyword::Key;
namespace Section = PLKeyword::Section;
using PLKeyword::keyword;

/** The names of the kinds: for programs, and for a heading. */
struct KindName
{
    FileKind kind = FileKind::InfoText;
    QLatin1String name;
    QLatin1String title;
};

constexpr KindName kindNames[] = {
    {FileKind::InfoText, keyword("infoText"), keyword("Info file")},
    {FileKind::Acquisition, keyword("acquisition"), keyword("Acquisition")},
    {FileKind::AnalyzedAcquisition, keyword("analyzedAcquisition"),
     keyword("Analysed acquisition")},
    {FileKind::Sequence, keyword("sequence"), keyword("Sequence")},
    {FileKind::BackgroundSummary, keyword("backgroundSummary"), keyword("Background summary")},
    {FileKind::StructureReferences, keyword("structureReferences"),
     keyword("Structure references")},
    {FileKind::FluorescentReferences, keyword("fluorescentReferences"),
     keyword("Fluorescent references")},
    {FileKind::Instrument, keyword("instrument"), keyword("Instrument")},
    {FileKind::InstrumentExtension, keyword("instrumentExtension"),
     keyword("Instrument extension")},
    {FileKind::FilterWheel, keyword("filterWheel"), keyword("Filter wheel")},
    {FileKind::Settings, keyword("settings"), keyword("Settings")},
    {FileKind::LabelSet, keyword("labelSet"), keyword("Label set")},
    {FileKind::OpticalProperties, keyword("opticalProperties"), keyword("Optical properties")},
    {FileKind::SpectralAnalysis, keyword("spectralAnalysis"), keyword("Spectral analysis")},
};

constexpr bool kindsStandAtTheirPlaces()
{
    int place = 0;
    for (const KindName& row : kindNames) {
        if (int(row.kind) != place++)
            return false;
    }
    return place == int(FileKind::SpectralAnalysis) + 1;
}
static_assert(kindsStandAtTheirPlaces());

const KindName& namesOf(FileKind kind)
{
    return kindNames[int(kind)];
}

/** A file that is read line by line: what it is, what each line holds, and how it is read. */
struct IndexKind
{
    FileKind kind = FileKind::StructureReferences;
    QLatin1String key;
    tag_estatus (CPLBkgSummaryInfo::*load)(QString) = nullptr;
};

constexpr IndexKind indexKinds[] = {
    {FileKind::StructureReferences, Key::StructureReference, &CPLBkgSummaryInfo::SLload},
    {FileKind::FluorescentReferences, Key::FluorescentReference, &CPLBkgSummaryInfo::FLload},
};

/** What the key of a section begins with tells what the file is. */
struct TextKind
{
    QLatin1String sectionKey;
    FileKind kind = FileKind::InfoText;
};

/** Of the first section. */
constexpr TextKind textKinds[] = {
    {Section::TissueProperties, FileKind::OpticalProperties},
    {Section::SourceModel, FileKind::OpticalProperties},
    {Section::UserLabelNameSet, FileKind::LabelSet},
};

/** Keys at the start of lines that stand in no section tell what the file is. */
constexpr TextKind keyLineKinds[] = {
    {Key::SystemConfiguration, FileKind::Instrument},
    {Key::CameraSystemInfo, FileKind::Instrument},
    {Key::EmissionFilter, FileKind::FilterWheel},
};

template <typename Sections>
QList<CPLSection*> allSections(const Sections& document)
{
    QList<CPLSection*> sections;
    for (int i = 0; CPLSection* const section = document[i]; ++i)
        sections.append(section);
    return sections;
}

constexpr const char* byteOrderMark = "\xEF\xBB\xBF"; // of UTF-8

/** Whether the first character is '<', in any of the encodings of XML. */
bool isXml(const QByteArray& bytes)
{
    QByteArray start = bytes.left(256);
    start.replace('\0', "");
    for (const char* const mark : {byteOrderMark, "\xFF\xFE", "\xFE\xFF"}) {
        if (start.startsWith(mark))
            start.remove(0, int(qstrlen(mark)));
    }
    return start.trimmed().startsWith('<');
}

bool hasSection(const CPLClickInfo& text, QLatin1String part)
{
    const QList<CPLSection*> sections = allSections(text);
    return std::any_of(sections.cbegin(), sections.cend(), [&](const CPLSection* section) {
        return keyOf(*section).contains(part, Qt::CaseInsensitive);
    });
}

FileKind kindOf(const CPLClickInfo& text)
{
    if (text.isSectionPresent(Section::ExtensionInfo))
        return FileKind::InstrumentExtension;
    if (text.isSectionPresent(Section::CameraSystemInfo))
        return FileKind::Instrument;
    QString clickNumber;
    text.getClickNumber(&clickNumber);
    if (!clickNumber.isEmpty()) {
        const bool analysed =
            text.isSectionPresent(Section::AnalysisUserInput) || hasSection(text, Section::RoiFile);
        return analysed ? FileKind::AnalyzedAcquisition : FileKind::Acquisition;
    }
    const QString key = keyOf(*text[0]);
    for (const TextKind& row : textKinds) {
        if (key.startsWith(row.sectionKey, Qt::CaseInsensitive))
            return row.kind;
    }
    return text[0]->isKeyPresent(Key::MenuName) ? FileKind::Settings : FileKind::InfoText;
}

/** What lines are that stand in no section; nothing when their keys tell of neither kind. */
std::optional<FileKind> kindOfKeyLines(const CPLSection& lines)
{
    QStringList keys;
    lines.getKeyList(&keys);
    for (const TextKind& row : keyLineKinds) {
        const bool found = std::any_of(keys.cbegin(), keys.cend(), [&](const QString& key) {
            return key.startsWith(row.sectionKey, Qt::CaseInsensitive);
        });
        if (found)
            return row.kind;
    }
    return std::nullopt;
}

} // namespace

bool Document::load(const QString& file)
{
    m_path = file;
    const auto bytes = ::readFile(file, &m_problem);
    if (!bytes)
        return false;
    m_bytes = *bytes;
    m_lines = withoutLoneReturns(m_bytes);
    m_wasRead = true;
    if (m_bytes.startsWith(byteOrderMark))
        m_textStart = int(qstrlen(byteOrderMark));
    if (isXml(m_bytes))
        return loadSpectral(file);
    if (isDicom())
        return loadDicom();
    return loadIndex(file) || loadText(file);
}

QString Document::kindName() const
{
    return namesOf(m_kind).name;
}

QLatin1String Document::text() const
{
    return QLatin1String(m_lines.constData() + m_textStart, int(m_lines.size()) - m_textStart);
}

bool Document::isDicom() const
{
    return ::isDicom(m_bytes);
}

QString Document::referenceName() const
{
    return m_kind == FileKind::StructureReferences ? Key::StructureReference
                                                   : Key::FluorescentReference;
}

bool Document::isIndex() const
{
    return m_kind == FileKind::StructureReferences || m_kind == FileKind::FluorescentReferences;
}

bool Document::setProblem(tag_estatus status)
{
    m_status = status;
    m_problem = explained(status, m_path);
    return false;
}

bool Document::loadSpectral(const QString& file)
{
    m_spectral = readSpectralFile(file, &m_problem);
    m_kind = FileKind::SpectralAnalysis;
    m_title = namesOf(m_kind).title;
    return m_spectral.has_value();
}

bool Document::loadText(const QString& file)
{
    const tag_estatus status = m_text.loadClickInfo(file, false);
    if (status == eSTATUS_FILE_OPEN_FAILED)
        return setProblem(status);
    if (hasSection(m_text, Section::BackgroundClick) && loadSummary(file))
        return true;
    if (m_text.isSectionPresent(Section::ClickNumbers) ||
        m_text.isSectionPresent(Section::Sequence) || status == eSTATUS_BAD_FORMAT)
        return loadSequence(file);
    if (status != eSTATUS_SUCCESS)
        return setProblem(status);
    if (loadKeyLines())
        return true;
    if (!m_text[0]) {
        m_problem = QStringLiteral("no section; not a file that the library knows");
        return false;
    }
    setTextKind();
    return true;
}

void Document::setTextKind()
{
    m_kind = kindOf(m_text);
    m_title = namesOf(m_kind).title;
    if (!clickNumber().isEmpty())
        m_title += QLatin1Char(' ') + clickNumber();
}

// The reader of sequences passes over what is malformed.
bool Document::loadSequence(const QString& file)
{
    const tag_estatus status = m_sequence.loadFile(file);
    const bool listsNothing =
        status == eSTATUS_EMPTY_SEQUENCE || status == eSTATUS_NO_CLICK_NUMBERS;
    const bool holdsSequence = m_sequence.isSectionPresent(Section::Sequence) ||
                               m_sequence.isSectionPresent(Section::ClickNumbers);
    if (status != eSTATUS_SUCCESS && !(listsNothing && holdsSequence))
        return setProblem(eSTATUS_BAD_FORMAT);
    m_kind = FileKind::Sequence;
    m_title = namesOf(m_kind).title + QLatin1Char(' ') + m_sequence.getDatasetName();
    return true;
}

bool Document::loadIndex(const QString& file)
{
    const QByteArray lower = m_bytes.toLower();
    const auto* const row =
        std::find_if(std::cbegin(indexKinds), std::cend(indexKinds), [&](const IndexKind& kind) {
            return lower.contains(QByteArray(kind.key.data()).toLower()) &&
                   (m_catalogue.*kind.load)(file) == eSTATUS_SUCCESS && m_catalogue[0];
        });
    if (row == std::cend(indexKinds))
        return false;
    m_kind = row->kind;
    m_title = namesOf(m_kind).title;
    return true;
}

bool Document::loadSummary(const QString& file)
{
    if (m_catalogue.load(file) != eSTATUS_SUCCESS || !m_catalogue[0])
        return false;
    m_kind = FileKind::BackgroundSummary;
    m_title = namesOf(m_kind).title;
    return true;
}

bool Document::loadDicom()
{
    const auto start = appendedText(m_bytes);
    if (!start) {
        m_problem = QStringLiteral("a DICOM file without click info");
        return false;
    }
    m_textStart = *start;
    const tag_estatus status =
        m_text.loadTextBuffer(latin1View(withLineFeeds(m_bytes.mid(m_textStart))));
    if (status != eSTATUS_SUCCESS)
        return setProblem(status);
    setTextKind();
    return true;
}

// The library puts the section's header in front of an instrument's description that has none, and
// the lines of a filter wheel into that section.
bool Document::loadKeyLines()
{
    const QLatin1String before = beforeHeaders(text());
    const auto part = [this](int start, int length) -> QString {
        return latin1View(withLineFeeds(m_bytes.mid(start, length)));
    };
    const int end = placeOf(before.end());
    const QString header =
        PLKeyword::Text::Marker + QString(Section::CameraSystemInfo) + QLatin1Char(':');
    CPLClickInfo lines;
    lines.loadTextBuffer(header + QLatin1Char('\n') + part(m_textStart, end - m_textStart));
    const auto kind = kindOfKeyLines(*lines[0]);
    if (!kind || (*kind == FileKind::FilterWheel && m_text[0]) ||
        m_bytes.toLower().contains(header.toLatin1().toLower()) ||
        lines.loadTextBuffer(part(end, -1)) != eSTATUS_SUCCESS)
        return false;
    m_text = lines;
    m_kind = *kind;
    m_title = namesOf(m_kind).title;
    m_startsWithoutHeader = true;
    return true;
}

CPLSection* Document::section(const QString& key) const
{
    const QList<CPLSection*> all = sections();
    for (CPLSection* const section : all) {
        if (keyOf(*section).compare(key, Qt::CaseInsensitive) == 0)
            return section;
    }
    return nullptr;
}

QList<CPLSection*> Document::sections() const
{
    if (isIndex() || m_kind == FileKind::BackgroundSummary)
        return allSections(m_catalogue);
    return m_kind == FileKind::Sequence ? allSections(m_sequence) : allSections(m_text);
}

QStringList Document::preamble() const
{
    if (m_kind == FileKind::Sequence || isIndex() || m_startsWithoutHeader)
        return {};
    const QLatin1String content = trimmed(text());
    return preambleOf(SourceText(QByteArray::fromRawData(content.data(), int(content.size()))));
}

QString Document::clickNumber() const
{
    QString number;
    m_text.getClickNumber(&number);
    return number;
}

std::optional<QByteArray> Document::writtenForm() const
{
    if (m_kind == FileKind::Sequence)
        return ::writtenForm(m_sequence);
    const bool isWritten = !isIndex() && !m_startsWithoutHeader && !isDicom() && !m_spectral &&
                           m_kind != FileKind::BackgroundSummary;
    return isWritten ? std::optional(m_text.getClickInfoData()) : std::nullopt;
}

QByteArray writtenForm(const CPLSequenceInfo& sequence)
{
    QByteArray data;
    for (int i = 0; const CPLSection* const section = sequence[i]; ++i) {
        QString text;
        section->saveSectionData(text);
        data += text.toLatin1();
    }
    return data + PLKeyword::Text::DocumentEnd.data();
}
