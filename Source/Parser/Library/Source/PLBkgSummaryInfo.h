// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * The catalogues of stored background and reference images.
 */
#ifndef OVPARSER_PLBKGSUMMARYINFO_H
#define OVPARSER_PLBKGSUMMARYINFO_H

#include "PLClickInfo.h"

#include <QtCore/QList>

/**
 * A catalogue: the background summary, or the index of structure or fluorescent references.
 *
 * Each stored image is one section. The sections are keyed by a word and their number from 1 in
 * file order, e.g. "Background Click1" or "Structure reference1"; their names tell which image it
 * is. Every load starts from an empty document. Copies are deep.
 */
class PARSERLIBRARY_EXPORT CPLBkgSummaryInfo : public CPLClickInfo
{
public:
    /** An empty catalogue. */
    CPLBkgSummaryInfo();

    /** A copy, which shares nothing with the original. */
    CPLBkgSummaryInfo(const CPLBkgSummaryInfo& other);

    /** Becomes a copy of another; nothing is shared. */
    CPLBkgSummaryInfo& operator=(const CPLBkgSummaryInfo& other);
    ~CPLBkgSummaryInfo() override;

    /**
     * Builds a section from a block (header line and body) and adds it.
     *
     * @param block       the block; left holding the body only once the header was read
     * @param sectionKey  the key of the section; the one in the header does not count
     * @return eSTATUS_BAD_FORMAT for an empty block and for a header without ':' or with a '#'
     *         before it, eSTATUS_OUT_OF_MEMORY, otherwise the status of addSection()
     */
    tag_estatus loadSectionData(QString& block, QString sectionKey) override;

    /** Adds a section, as CPLClickInfo::addSection() does. */
    tag_estatus addSection(CPLSection* section) override;

    /** Removes and destroys a section. Always eSTATUS_SUCCESS, also when there is none. */
    tag_estatus removeSection(QString sectionKey) override;

    /**
     * Adds the sections of a background summary under the keys "Background Click1" and so on.
     *
     * Whatever a section's own key is, its place in the text numbers it. A key that contains
     * "Background Click" gives the document its click number. One-digit parts of a "Time" value
     * receive a leading zero. A section whose key is held already is left as it is. Reading stops
     * at the first failure; the sections read until then stay.
     *
     * @return eSTATUS_BAD_FORMAT for a malformed header line, eSTATUS_EMPTY_SECTION_KEY when a
     *         background section leaves the document without a click number, eSTATUS_OUT_OF_MEMORY
     */
    tag_estatus loadTextBuffer(const QString& text) override;

    /**
     * Loads a background summary, as loadTextBuffer() reads it.
     *
     * @return eSTATUS_FILE_OPEN_FAILED when the file cannot be opened (the document is unchanged);
     *         otherwise eSTATUS_SUCCESS, also for a malformed file: the sections before the fault
     *         are loaded then, and the file section count is 0
     */
    virtual tag_estatus load(QString path);

    /**
     * Loads an index of structure references, one per line: the mark "***" and pairs "key:value"
     * separated by ';', taken without trimming.
     *
     * A line without the key "Structure reference" is passed over and not numbered; a line without
     * the mark ends the reading. The file section count stays 0.
     *
     * @return eSTATUS_FILE_OPEN_FAILED when the file cannot be opened (the document is unchanged)
     */
    virtual tag_estatus SLload(QString path);

    /**
     * Writes the catalogue, as saveClickInfo() does, with the section keys as they stand.
     *
     * @return always eSTATUS_SUCCESS, also when nothing could be written
     */
    virtual tag_estatus save(QString path) const;

    /** The section with this key, borrowed; null when there is none. */
    [[nodiscard]] virtual CPLSection* getSection(const QString& sectionKey) const;

    /**
     * The sections in document order, borrowed.
     *
     * @param list  replaced by the sections
     * @return always eSTATUS_SUCCESS
     */
    virtual tag_estatus getSectionList(QList<CPLSection*>& list) const;

    /** Loads an index of fluorescent references, as SLload() does with "Fluorescent reference". */
    virtual tag_estatus FLload(QString path);

private:
    PARSERLIBRARY_NO_EXPORT tag_estatus loadBlock(const ovparser::internal::SourceText& text,
                                                  QLatin1String block, int number);
    PARSERLIBRARY_NO_EXPORT tag_estatus loadIndex(const QString& path, const QString& referenceKey);
    PARSERLIBRARY_NO_EXPORT void addReference(const QString& pairs, const QString& referenceKey);
};

#endif
