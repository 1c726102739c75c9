#include "Document.h"

#include <algorithm>

namespace {

template <typename Sections>
QList<CPLSection*> allSections(const Sections& document)
{
    QList<CPLSection*> sections;
    for (int i = 0; CPLSection* const section = document[i]; ++i)
        sections.append(section);
    return sections;
}

/** A file that is read line by line: what it is, and how it is read. */
struct IndexKind
{
    QLatin1String title;
    tag_estatus (CPLBkgSummaryInfo::*load)(QString) = nullptr;
};

constexpr IndexKind indexKinds[] = {
    {PLKeyword::keyword("Structure references"), &CPLBkgSummaryInfo::SLload},
    {PLKeyword::keyword("Fluorescent references"), &CPLBkgSummaryInfo::FLload},
};

/** What the key of the first section begins with tells what the file is. */
struct TextKind
{
    QLatin1String sectionKey;
    QLatin1String title;
};

constexpr TextKind textKinds[] = {
    {PLKeyword::Section::TissueProperties, PLKeyword::keyword("Optical properties")},
    {PLKeyword::Section::SourceModel, PLKeyword::keyword("Optical properties")},
    {PLKeyword::Section::UserLabelNameSet, PLKeyword::keyword("Label set")},
};

QString titleOf(const CPLClickInfo& text)
{
    QString clickNumber;
    text.getClickNumber(&clickNumber);
    if (!clickNumber.isEmpty())
        return QLatin1String("Acquisition ") + clickNumber;
    QString key;
    text[0]->getSectionKey(&key);
    for (const TextKind& kind : textKinds) {
        if (key.startsWith(kind.sectionKey, Qt::CaseInsensitive))
            return kind.title;
    }
    const bool menu = text[0]->isKeyPresent(PLKeyword::Key::MenuName);
    return menu ? QStringLiteral("Settings") : QStringLiteral("Info file");
}

bool isSummary(const CPLClickInfo& text)
{
    const QList<CPLSection*> sections = allSections(text);
    return std::any_of(sections.cbegin(), sections.cend(), [](const CPLSection* section) {
        QString key;
        section->getSectionKey(&key);
        return key.contains(PLKeyword::Section::BackgroundClick, Qt::CaseInsensitive);
    });
}

} // namespace

tag_estatus Document::load(const QString& file)
{
    const tag_estatus status = m_text.loadClickInfo(file, false);
    if (status == eSTATUS_FILE_OPEN_FAILED || loadCatalogue(file))
        return status == eSTATUS_BAD_FORMAT ? eSTATUS_SUCCESS : status;
    if (m_text.isSectionPresent(PLKeyword::Section::ClickNumbers) ||
        m_text.isSectionPresent(PLKeyword::Section::Sequence) || status == eSTATUS_BAD_FORMAT)
        return loadSequence(file);
    if (status != eSTATUS_SUCCESS)
        return status;
    if (!m_text[0])
        return eSTATUS_BAD_FORMAT;
    m_title = titleOf(m_text);
    return eSTATUS_SUCCESS;
}

// The reader of sequences passes over what is malformed.
tag_estatus Document::loadSequence(const QString& file)
{
    const tag_estatus status = m_sequence.loadFile(file);
    const bool listsNothing =
        status == eSTATUS_EMPTY_SEQUENCE || status == eSTATUS_NO_CLICK_NUMBERS;
    m_isSequence =
        status == eSTATUS_SUCCESS ||
        (listsNothing && (m_sequence.isSectionPresent(PLKeyword::Section::Sequence) ||
                          m_sequence.isSectionPresent(PLKeyword::Section::ClickNumbers)));
    m_title = QLatin1String("Sequence ") + m_sequence.getDatasetName();
    return m_isSequence ? eSTATUS_SUCCESS : eSTATUS_BAD_FORMAT;
}

bool Document::loadCatalogue(const QString& file)
{
    for (const IndexKind& kind : indexKinds) {
        m_title = kind.title;
        if ((m_catalogue.*kind.load)(file) == eSTATUS_SUCCESS && m_catalogue[0])
            return true;
    }
    m_title = QStringLiteral("Background summary");
    return isSummary(m_text) && m_catalogue.load(file) == eSTATUS_SUCCESS && m_catalogue[0];
}

CPLSection* Document::section(const QString& key) const
{
    const QList<CPLSection*> all = sections();
    for (CPLSection* const section : all) {
        QString name;
        section->getSectionKey(&name);
        if (name.compare(key, Qt::CaseInsensitive) == 0)
            return section;
    }
    return nullptr;
}

QList<CPLSection*> Document::sections() const
{
    if (isCatalogue())
        return allSections(m_catalogue);
    return m_isSequence ? allSections(m_sequence) : allSections(m_text);
}
