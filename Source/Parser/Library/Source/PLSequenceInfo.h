// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * The document of a sequence of acquisitions.
 */
#ifndef OVPARSER_PLSEQUENCEINFO_H
#define OVPARSER_PLSEQUENCEINFO_H

#include "PLExport.h"
#include "PLHelpers.h"
#include "PLSection.h"
#include "PLStatus.h"

#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>

/**
 * A sequence: the ordered click numbers of its acquisitions, its name, and descriptive sections.
 *
 * A sequence folder holds "SequenceInfo.txt" and one sub-folder per acquisition, named by the click
 * number. The document owns its sections; pointers that the lookups return are borrowed and valid
 * until the section is removed, a file is loaded, or the document is assigned to or destroyed.
 * Section keys are compared exactly. Copies are deep.
 *
 * Files are read as UTF-8 (a section that is not valid UTF-8 as Latin-1) and written as Latin-1.
 */
class PARSERLIBRARY_EXPORT CPLSequenceInfo
{
public:
    /** An empty sequence. */
    CPLSequenceInfo();

    /** A copy, which shares nothing with the original. */
    CPLSequenceInfo(const CPLSequenceInfo& other);

    /** Becomes a copy of another; nothing is shared. */
    CPLSequenceInfo& operator=(const CPLSequenceInfo& other);
    virtual ~CPLSequenceInfo();

    /** @name Loading and saving */
    ///@{

    /**
     * Replaces the sections by those of a sequence file.
     *
     * Click numbers, name and the empty-sequence mark change only if the file holds the section
     * that sets them. A malformed section is passed over, and so is one whose ':' stands more than
     * 128 bytes after the next section mark; a mark without any ':' after it ends the reading.
     * Text before the first mark is not kept. The path is handed to the file system as Latin-1; if
     * there is no such file, in the platform's own encoding. Pipes and devices are not opened.
     *
     * @param path  the file; its folder becomes the sequence info path
     * @return eSTATUS_INVALID_ARGUMENT for an empty path, the document is unchanged then;
     *         eSTATUS_FILE_NOT_FOUND, eSTATUS_FILE_READ_FAILED or, for a file of more than
     *         512 MiB, eSTATUS_OUT_OF_MEMORY, the document holds no sections then;
     *         eSTATUS_NO_CLICK_NUMBERS or, for a sequence marked as empty, eSTATUS_EMPTY_SEQUENCE
     *         when no click numbers are listed, the sections are loaded all the same
     */
    tag_estatus loadFile(QString path);

    /**
     * Writes the sections to a file, which is replaced at once, as CPLClickInfo::saveClickInfo()
     * replaces one.
     *
     * @return eSTATUS_FILE_OPEN_FAILED when the file cannot be opened, eSTATUS_FAILED when fewer
     *         bytes than asked could be stored; the file is then as it was before
     */
    tag_estatus saveFile(QString path) const;
    ///@}

    /** @name Acquisitions */
    ///@{

    /** Number of click numbers. */
    [[nodiscard]] int getNumDatasets() const;

    /** The folder of the sequence, ending in '/'; empty in a new document. */
    [[nodiscard]] QString getSequenceInfoPath() const;

    /** Sets the folder of the sequence as it is given; it should end in '/'. */
    void setSequenceInfoPath(QString path);

    /** The name of the sequence. */
    [[nodiscard]] QString getDatasetName() const;

    /** Sets the name that addSequenceNumberSection() writes. */
    void setSeqDatasetName(QString name);

    /**
     * The path of an acquisition's click info.
     *
     * @param index  place in the click-number list, from 0
     * @return an empty string when there is no such place
     */
    [[nodiscard]] QString getDatasetPath(int index) const;

    /** The click numbers in sequence order. */
    [[nodiscard]] QStringList getClickNumberList() const;

    /** Appends a click number to the list and to a held "ClickNumbers" section: to both or none. */
    void addClickNumber(QString clickNumber);

    /**
     * Removes the first occurrence of a click number; a held "ClickNumbers" section is numbered
     * anew.
     *
     * @return false when it is not listed or memory runs out; then nothing has changed
     */
    bool removeClickNumber(QString clickNumber);

    /** Empties the list and a held "ClickNumbers" section, which stays. */
    void clearSequenceList();
    ///@}

    /** @name Sections */
    ///@{

    /** Whether a section with exactly this key is held. */
    [[nodiscard]] bool isSectionPresent(QString sectionKey) const;

    /** The section with exactly this key, borrowed; null when there is none. */
    [[nodiscard]] CPLSection* operator[](QString sectionKey) const;

    /** The section at this place, counted from 0, borrowed; null when there is none. */
    [[nodiscard]] CPLSection* operator[](int index) const;

    /**
     * Adds a section at the end. The document owns it from then on, unless a section with that key
     * is held already: then nothing changes, and the section stays the caller's.
     *
     * @return eSTATUS_NULL_ARGUMENT when `section` is null, eSTATUS_EMPTY_SECTION_KEY when its key
     *         is empty, eSTATUS_INVALID_ARGUMENT when a document holds it already under another
     *         key or another document holds it; eSTATUS_SUCCESS also when the key was held already
     */
    tag_estatus addSection(CPLSection* section);

    /**
     * Removes and destroys a section.
     *
     * @return eSTATUS_NULL_ARGUMENT when there is no such section
     */
    tag_estatus removeSection(QString sectionKey);

    /** Number of sections that were held when the last load finished. */
    [[nodiscard]] int getFileSectionCount() const;

    /**
     * Adds the "Sequence" section, named by the dataset name, if it is missing.
     *
     * @param version  version of the software that makes the sequence
     * @return always eSTATUS_SUCCESS
     */
    tag_estatus addSequenceNumberSection(QString version);

    /**
     * Adds the "User Input" section and the universal label set, each if it is missing.
     *
     * @param imageType  eIMAGE_OVERLAY makes the display type "Overlay", any other "Single"
     * @param userId     the "User ID"
     * @return eSTATUS_OUT_OF_MEMORY or the first failing status of the label set
     */
    tag_estatus addSeqUserSection(tag_eimagetype imageType, QString userId);

    /**
     * Records a pair in the "Restore Results" section, which is added if it is missing. Nothing
     * happens when the key or the value is empty.
     */
    void addRestoreResult(QString key, QString value);

    /**
     * Adds the label set and the "User Input" section, each where it is missing. "User Input"
     * receives the labels of a universal set with their values and the list of the first five
     * labels of any set.
     *
     * @param userFields  has no effect on sequences
     * @return the first failing status, eSTATUS_OUT_OF_MEMORY included; a section added before the
     *         failure stays
     */
    tag_estatus appendUserSpecificSections(bool userFields);
    ///@}

private:
    PARSERLIBRARY_NO_EXPORT void loadSections(const QByteArray& bytes);
    PARSERLIBRARY_NO_EXPORT void
    loadChunk(const QString& key, const ovparser::internal::SourceText& text, QLatin1String chunk);
    PARSERLIBRARY_NO_EXPORT tag_estatus interpret(std::unique_ptr<CPLSection> section);
    PARSERLIBRARY_NO_EXPORT tag_estatus take(std::unique_ptr<CPLSection> section);
    [[nodiscard]] PARSERLIBRARY_NO_EXPORT ovparser::internal::SectionStore store();
    [[nodiscard]] PARSERLIBRARY_NO_EXPORT CPLSection* clickNumberSection() const;

    QStringList clickNumbers;
    QString sequenceInfoPath;
    QString datasetName;
    QString userId; ///< of the "User Input" section read last; nothing gives it out yet
    int datasetCount = 0;
    bool emptySequence = false;
    QMap<QString, CPLSection*> sections;
    QStringList sectionKeys;
    int sectionCount = 0;
    int fileSectionCount = 0;
};

#endif
