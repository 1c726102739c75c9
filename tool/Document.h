/**
 * @file
 * A file of either kind, opened by what it holds.
 */
#ifndef OVINFO_DOCUMENT_H
#define OVINFO_DOCUMENT_H

#include "ParserLibrary.h"

#include <QtCore/QList>

/** An acquisition or a sequence. */
class Document
{
public:
    /** Loads a file; any status but eSTATUS_SUCCESS leaves the document unusable. */
    tag_estatus load(const QString& file);

    /** What the file is, for a heading. */
    [[nodiscard]] QString title() const;

    [[nodiscard]] bool isSequence() const { return m_isSequence; }

    /** The section with this key, in any letter case; null when there is none. */
    [[nodiscard]] CPLSection* section(const QString& key) const;

    /** Every section in order. */
    [[nodiscard]] QList<CPLSection*> sections() const;

    /** The acquisition, or the text of the sequence with every byte of it kept. */
    [[nodiscard]] CPLClickInfo& text() { return m_text; }

private:
    CPLClickInfo m_text;
    CPLSequenceInfo m_sequence;
    bool m_isSequence = false;
};

#endif
