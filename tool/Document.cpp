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

} // namespace

tag_estatus Document::load(const QString& file)
{
    const tag_estatus status = m_text.loadClickInfo(file, false);
    if (status != eSTATUS_SUCCESS)
        return status;
    m_isSequence = m_text.isSectionPresent(PLKeyword::Section::ClickNumbers) ||
                   m_text.isSectionPresent(PLKeyword::Section::Sequence);
    if (m_isSequence) {
        const tag_estatus loaded = m_sequence.loadFile(file);
        const bool empty = loaded == eSTATUS_EMPTY_SEQUENCE || loaded == eSTATUS_NO_CLICK_NUMBERS;
        return empty ? eSTATUS_SUCCESS : loaded;
    }
    return m_text[0] ? eSTATUS_SUCCESS : eSTATUS_BAD_FORMAT;
}

QString Document::title() const
{
    if (m_isSequence)
        return QLatin1String("Sequence ") + m_sequence.getDatasetName();
    QString clickNumber;
    m_text.getClickNumber(&clickNumber);
    return clickNumber.isEmpty() ? QString(QLatin1String("Info file"))
                                 : QLatin1String("Acquisition ") + clickNumber;
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
    return m_isSequence ? allSections(m_sequence) : allSections(m_text);
}
