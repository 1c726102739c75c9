#include "Document.h"

namespace {

template <typename Sections>
QList<CPLSection*> allSections(const Sections& document)
{
    QList<CPLSection*> sections;
    for (int i = 0; CPLSection* const section = document[i]; ++i)
        sections.append(section);
    return sections;
}

constexpr Document::Kind kinds[] = {
    {PLKeyword::Section::BackgroundClick, PLKeyword::keyword("Background summary"),
     &CPLBkgSummaryInfo::load},
    {PLKeyword::Key::StructureReference, PLKeyword::keyword("Structure references"),
     &CPLBkgSummaryInfo::SLload},
    {PLKeyword::Key::FluorescentReference, PLKeyword::keyword("Fluorescent references"),
     &CPLBkgSummaryInfo::FLload},
    {PLKeyword::Section::TissueProperties, PLKeyword::keyword("Optical properties"), nullptr},
    {PLKeyword::Section::SourceModel, PLKeyword::keyword("Optical properties"), nullptr},
    {PLKeyword::Section::UserLabelNameSet, PLKeyword::keyword("Label set"), nullptr},
};

const Document::Kind* kindOf(const CPLSection& first)
{
    QString key;
    first.getSectionKey(&key);
    for (const Document::Kind& kind : kinds) {
        if (key.startsWith(kind.sectionKey, Qt::CaseInsensitive))
            return &kind;
    }
    return nullptr;
}

} // namespace

tag_estatus Document::load(const QString& file)
{
    const tag_estatus status = m_text.loadClickInfo(file, false);
    if (status == eSTATUS_BAD_FORMAT && m_sequence.loadFile(file) == eSTATUS_SUCCESS) {
        // The reader of sequences passes over what is malformed.
        m_isSequence = true;
        return eSTATUS_SUCCESS;
    }
    if (status != eSTATUS_SUCCESS)
        return status;
    m_isSequence = m_text.isSectionPresent(PLKeyword::Section::ClickNumbers) ||
                   m_text.isSectionPresent(PLKeyword::Section::Sequence);
    if (m_isSequence) {
        const tag_estatus loaded = m_sequence.loadFile(file);
        const bool empty = loaded == eSTATUS_EMPTY_SEQUENCE || loaded == eSTATUS_NO_CLICK_NUMBERS;
        return empty ? eSTATUS_SUCCESS : loaded;
    }
    if (!m_text[0])
        return eSTATUS_BAD_FORMAT;
    recognise(file);
    return eSTATUS_SUCCESS;
}

void Document::recognise(const QString& file)
{
    m_kind = kindOf(*m_text[0]);
    if (m_kind && m_kind->load)
        (m_catalogue.*m_kind->load)(file);
}

QString Document::title() const
{
    if (m_isSequence)
        return QLatin1String("Sequence ") + m_sequence.getDatasetName();
    QString clickNumber;
    m_text.getClickNumber(&clickNumber);
    if (!clickNumber.isEmpty())
        return QLatin1String("Acquisition ") + clickNumber;
    if (m_kind)
        return m_kind->title;
    const bool menu = m_text[0]->isKeyPresent(PLKeyword::Key::MenuName);
    return menu ? QStringLiteral("Settings") : QStringLiteral("Info file");
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
