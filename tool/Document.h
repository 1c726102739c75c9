/**
 * @file
 * A file of any kind, opened by what it holds.
 */
#ifndef OVINFO_DOCUMENT_H
#define OVINFO_DOCUMENT_H

#include "ParserLibrary.h"

#include <QtCore/QList>

/** An acquisition, a sequence, a catalogue of images, settings, menus or a label set. */
class Document
{
public:
    /** Loads a file; any status but eSTATUS_SUCCESS leaves the document unusable. */
    tag_estatus load(const QString& file);

    /** What the file is, for a heading. */
    [[nodiscard]] QString title() const { return m_title; }

    [[nodiscard]] bool isSequence() const { return m_isSequence; }

    /** Whether the sections are those of a catalogue: they are not the file's own ones. */
    [[nodiscard]] bool isCatalogue() const { return m_catalogue[0] != nullptr; }

    /** The section with this key, in any letter case; null when there is none. */
    [[nodiscard]] CPLSection* section(const QString& key) const;

    /** Every section in order. */
    [[nodiscard]] QList<CPLSection*> sections() const;

    /** The file as an info text; incomplete for a sequence with malformed sections. */
    [[nodiscard]] const CPLClickInfo& text() const { return m_text; }

private:
    tag_estatus loadSequence(const QString& file);
    bool loadCatalogue(const QString& file);

    CPLClickInfo m_text;
    CPLSequenceInfo m_sequence;
    CPLBkgSummaryInfo m_catalogue;
    QString m_title;
    bool m_isSequence = false;
};

#endif
