// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * The document class of the library, with its file loaders and acquisition writers.
 */
#ifndef OVPARSER_PLCLICKINFO_H
#define OVPARSER_PLCLICKINFO_H

#include "PLExport.h"
#include "PLHelpers.h"
#include "PLIASetupInfo.h"
#include "PLSection.h"
#include "PLStatus.h"

#include <QtCore/QByteArray>
#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>

/**
 * An info-text document: sections in order, a click number and preamble lines.
 *
 * The document owns its sections. Pointers that the lookups return are borrowed: they stay valid
 * until the section is removed or the document is cleared, loaded anew, assigned to or destroyed.
 * Section keys are matched ignoring letter case. Copies are deep.
 *
 * Text is Latin-1, each byte of a file one character; a character outside Latin-1 is written as
 * '?'. A file in the form in which documents are written saves back byte for byte; in any other the
 * first section of a key and the last value of a key count, white space around keys and values is
 * normalised, and a line that is no pair becomes a '#' comment. Nothing is printed.
 */
class PARSERLIBRARY_EXPORT CPLClickInfo
{
public:
    /** An empty document; its click number is null. */
    CPLClickInfo();

    /** A copy, which shares nothing with the original. */
    CPLClickInfo(const CPLClickInfo& other);

    /** Becomes a copy of another; nothing is shared. */
    CPLClickInfo& operator=(const CPLClickInfo& other);
    virtual ~CPLClickInfo();

    /**
     * Builds a section from a block (header line and body) and adds it.
     *
     * A block whose key is held already, or whose header has no ':', is passed over.
     *
     * @param block       the block; left holding the body only once the header was read
     * @param sectionKey  the key of the section
     * @return eSTATUS_BAD_FORMAT when a '#' stands at or before the header's ':', eSTATUS_FAILED
     *         when the key is null, eSTATUS_EMPTY_SECTION_KEY when it is empty,
     *         eSTATUS_OUT_OF_MEMORY
     */
    virtual tag_estatus loadSectionData(QString& block, QString sectionKey);

    /**
     * Adds a section at the end. The document owns it from then on, unless it holds a section with
     * that key already: then nothing changes, and the section stays the caller's.
     *
     * @return eSTATUS_NULL_ARGUMENT when `section` is null, eSTATUS_EMPTY_SECTION_KEY when its key
     *         is empty, eSTATUS_INVALID_ARGUMENT when a document holds it already under another
     *         key or another document holds it; eSTATUS_SUCCESS also when the key was held already
     */
    virtual tag_estatus addSection(CPLSection* section);

    /** Removes and destroys a section. Always eSTATUS_SUCCESS, also when there is none. */
    virtual tag_estatus removeSection(QString sectionKey);

    /**
     * Adds the sections of a text. Text before the first header line is passed over, and so is a
     * section whose key is held already.
     *
     * Reading stops at the first failure; the sections read until then stay.
     *
     * @return eSTATUS_BAD_FORMAT for a header line without ':' after its marker or with a '#' at or
     *         before that ':'; eSTATUS_EMPTY_SECTION_KEY for an empty key, or when a "ClickNumber"
     *         section leaves the document without a click number; eSTATUS_OUT_OF_MEMORY
     */
    virtual tag_estatus loadTextBuffer(const QString& text);

    /** Removes every section, the preamble and the click number. */
    virtual void clearData();

    /** @name Loading */
    ///@{

    /**
     * Loads a click-info file into the document, which is emptied first if it holds anything.
     *
     * @param path        the file
     * @param appendUser  whether to add the label set and the "User Input" section where missing
     * @return eSTATUS_FILE_OPEN_FAILED, eSTATUS_FILE_READ_FAILED or, for a file of more than
     *         512 MiB, eSTATUS_OUT_OF_MEMORY (the document is unchanged then); otherwise the
     *         status of loadTextBuffer() or of appendUserSpecificSections(). Sections read before a
     *         failure stay.
     */
    tag_estatus loadClickInfo(QString path, bool appendUser);

    /**
     * Loads an analysed click-info file as loadClickInfo() does, with the user sections appended.
     * No preamble is kept and the file section count is not set.
     *
     * @return as loadClickInfo()
     */
    tag_estatus loadAnalyzedClickInfo(QString path);

    /**
     * Loads click-info text that was taken out of a DICOM file, as loadClickInfo() does with the
     * user sections appended.
     *
     * @param buffer  the text; need not end in NUL
     * @param length  its length in bytes
     * @return eSTATUS_NULL_ARGUMENT when `buffer` is null, otherwise as loadClickInfo()
     */
    tag_estatus loadClickInfoDcm(const char* buffer, int length);

    /**
     * Makes up click info for a bare image file: click number, user, label set and image sections.
     * The click number is the prefix followed by the current local time in fourteen digits. The
     * image file is not read.
     *
     * @param imagePath  path of the image; its file name becomes the image section's name
     * @param prefix     start of the click number, and the user ID
     * @param imageType  eIMAGE_PHOTOGRAPH, eIMAGE_LUMINESCENT or eIMAGE_STRUCTURE
     * @param binning    binning factor of the image
     * @return eSTATUS_UNSUPPORTED_IMAGE_TYPE for another type, eSTATUS_SECTION_EXISTS when the
     *         image section is held already, eSTATUS_OUT_OF_MEMORY; sections added before a
     *         failure stay
     */
    tag_estatus loadClickInfo(QString imagePath, QString prefix, tag_eimagetype imageType,
                              int binning);

    /**
     * Reads one value from a click-info file without building a document.
     *
     * The first line that holds the key followed by ':' decides, wherever in the line that is and
     * in any letter case; lines that start with '#' are passed over. Lines count in pieces of at
     * most 249 bytes.
     *
     * @param path   the file
     * @param key    the key, in any letter case
     * @param value  receives the rest of the line, trimmed; null when the key does not occur
     * @return eSTATUS_NULL_ARGUMENT when `value` is null, eSTATUS_FILE_OPEN_FAILED,
     *         eSTATUS_KEY_NOT_FOUND
     */
    tag_estatus obtainValueFromClickInfoFile(QString path, QString key, QString* value) const;

    /**
     * The same for a text in memory that ends in NUL. Lines count in pieces of at most 200
     * characters.
     *
     * @return eSTATUS_NULL_ARGUMENT when `text` or `value` is null, eSTATUS_KEY_NOT_FOUND
     */
    tag_estatus obtainValueFromClickInfoFile(char* text, QString key, QString* value) const;
    ///@}

    /** @name Saving */
    ///@{

    /**
     * Writes the document to a file. At the end of a file whose name ends in ".dcm" it is appended.
     * Any other file is replaced at once, by a second one in its folder that is complete and
     * synced, so that a crash, a full disk or a reader meets the old document or the new one. Links
     * are followed; owner, rights and attributes stay. Where replacing would change what the file
     * is (hard links, a device, somebody else's file, a folder that takes no other), it is
     * overwritten instead: a full disk leaves the old document then, but a crash in the middle
     * leaves a mixture, and a reader may meet one. A crash in an append leaves a part of the text.
     *
     * @return eSTATUS_FILE_OPEN_FAILED when the file cannot be opened, eSTATUS_FAILED when fewer
     *         bytes than asked could be stored; the file is then as it was before
     */
    tag_estatus saveClickInfo(QString path) const;

    /** The bytes that saveClickInfo() writes. */
    [[nodiscard]] QByteArray getClickInfoData() const;
    ///@}

    /** @name Sections */
    ///@{

    /** Whether the document holds a section with this key. */
    [[nodiscard]] bool isSectionPresent(QString sectionKey) const;

    /** The section with this key, borrowed; null when there is none. */
    [[nodiscard]] CPLSection* operator[](QString sectionKey) const;

    /** The section at this place, counted from 0, borrowed; null when there is none. */
    [[nodiscard]] CPLSection* operator[](int index) const;

    /**
     * Number of sections.
     *
     * @return eSTATUS_NULL_ARGUMENT when `count` is null
     */
    tag_estatus getSectionCount(int* count) const;

    /** Number of sections that the last load read from its file. */
    [[nodiscard]] int getFileSectionCount() const;

    /**
     * Adds the label set and the "User Input" section, each where it is missing.
     *
     * A missing label set becomes the universal one. "User Input" receives the labels of a
     * universal set with their values and the list of the first five labels of any set.
     *
     * @param userFields  whether "User Input" begins with "User ID" and "Display Type"
     * @return the first failing status, eSTATUS_OUT_OF_MEMORY included; a section added before the
     *         failure stays
     */
    tag_estatus appendUserSpecificSections(bool userFields);

    /**
     * Adds the "Analysis User Input" section if it is missing.
     *
     * @return eSTATUS_OUT_OF_MEMORY or the status of addSection()
     */
    tag_estatus appendAnalysisUserInputSection();
    ///@}

    /** @name Click number */
    ///@{

    /**
     * The identifier of the acquisition.
     *
     * @return eSTATUS_NULL_ARGUMENT when `number` is null
     */
    tag_estatus getClickNumber(QString* number) const;

    /**
     * Sets the click number as it is given.
     *
     * @return eSTATUS_INVALID_VALUE when it is empty; the old one stays
     */
    tag_estatus setClickNumber(QString number);

    /**
     * Takes the click number from the text of a "ClickNumber" section: the name on its header
     * line, with "X" in front unless it starts with an ASCII letter, 31 characters at most. A text
     * whose header line does not end in LF, or a lack of memory, leaves the click number as it was.
     */
    void loadClickNumber(QString block);

    /** Sets the click number to `prefix` followed by `suffix`, unchecked. */
    void loadClickNumber(QString prefix, QString suffix);
    ///@}

    /** @name Values by section and key */
    ///@{

    /**
     * Reads a value of a section, as CPLSection::getValue() does.
     *
     * @return eSTATUS_SECTION_NOT_FOUND, otherwise the section's status
     */
    tag_estatus getValue(QString sectionKey, QString key, QString* value) const;
    tag_estatus getValue(QString sectionKey, QString key, int* value) const;      ///< @overload
    tag_estatus getValue(QString sectionKey, QString key, long* value) const;     ///< @overload
    tag_estatus getValue(QString sectionKey, QString key, short* value) const;    ///< @overload
    tag_estatus getValue(QString sectionKey, QString key, float* value) const;    ///< @overload
    tag_estatus getValue(QString sectionKey, QString key, double* value) const;   ///< @overload
    tag_estatus getValue(QString sectionKey, QString key, qint64* value) const;   ///< @overload
    tag_estatus getValue(QString sectionKey, QString key, unsigned* value) const; ///< @overload
    tag_estatus getValue(QString sectionKey, QString key, bool* value) const;     ///< @overload

    /**
     * Changes a value of a section, as CPLSection::setValue() does; never adds a key.
     *
     * @return eSTATUS_SECTION_NOT_FOUND, otherwise the section's status
     */
    tag_estatus setValue(QString sectionKey, QString key, QString value);
    tag_estatus setValue(QString sectionKey, QString key, int value);      ///< @overload
    tag_estatus setValue(QString sectionKey, QString key, long value);     ///< @overload
    tag_estatus setValue(QString sectionKey, QString key, short value);    ///< @overload
    tag_estatus setValue(QString sectionKey, QString key, float value);    ///< @overload
    tag_estatus setValue(QString sectionKey, QString key, double value);   ///< @overload
    tag_estatus setValue(QString sectionKey, QString key, qint64 value);   ///< @overload
    tag_estatus setValue(QString sectionKey, QString key, unsigned value); ///< @overload
    ///@}

    /** @name Sections of a new acquisition */
    ///@{

    /**
     * Adds an image section named after the image file, and sets the "User ID" of a held
     * "User Input" section.
     *
     * @param path      path of the image; its file name becomes the section's name
     * @param userId    the "User ID"
     * @param type      type of the image
     * @param setup     as for addTiffImageSection()
     * @param settings  as for addTiffImageSection()
     * @return the status of addTiffImageSection()
     */
    tag_estatus addImageSection(QString path, QString userId, tag_eimagetype type,
                                const sIASetupInfo* setup, bool settings);

    /**
     * Adds the section of an image with the keys that belong to its type.
     *
     * Read-bias, read-sigma and dark-charge sections go right after a held "readbiasonly image"
     * section, others to the end. Without settings, a luminescent or fluorescent-reference image
     * also adds the section of its corrected image.
     *
     * Date and time of the acquisition are local: in the time zone that the environment names at
     * the moment of the call, also where the process has changed it. Both are empty for a moment
     * that the C runtime cannot convert.
     *
     * @param name      file name of the image
     * @param type      type of the image
     * @param setup     how the image was acquired; read only
     * @param settings  whether `setup` carries the acquisition settings; without, only the fixed
     *                  keys of the type are written
     * @return eSTATUS_NULL_ARGUMENT when `setup` is null, eSTATUS_UNSUPPORTED_IMAGE_TYPE for a type
     *         without a section, eSTATUS_SECTION_EXISTS when the section is held already,
     *         eSTATUS_OUT_OF_MEMORY; the document is unchanged then
     */
    tag_estatus addTiffImageSection(QString name, tag_eimagetype type, const sIASetupInfo* setup,
                                    bool settings);

    /**
     * Adds the "ClickNumber" section, named by the document's click number.
     *
     * @param acquired    true for an acquisition, false for an image that was read from a file
     * @param inSequence  whether the click number is also the sequence ID
     * @param version     version of the software that makes the acquisition
     * @return eSTATUS_OUT_OF_MEMORY; eSTATUS_SUCCESS also when the section is held already
     */
    tag_estatus addTiffClickNumberSection(bool acquired, bool inSequence, QString version);

    /**
     * Adds the "User Input" section with the user ID and the display type.
     *
     * @param type    eIMAGE_PHOTOGRAPH, eIMAGE_LUMINESCENT or eIMAGE_STRUCTURE
     * @param userId  the "User ID"
     * @return eSTATUS_UNSUPPORTED_IMAGE_TYPE for another type, eSTATUS_OUT_OF_MEMORY;
     *         eSTATUS_SUCCESS also when the section is held already
     */
    tag_estatus addTiffUserSection(tag_eimagetype type, QString userId);
    ///@}

    /** @name Single sections of a text */
    ///@{

    /**
     * Builds a section from a block (header line and body).
     *
     * @param buffer      the block
     * @param sectionKey  the key of the new section; the one in the header does not count
     * @param section     receives the section, which is then the caller's; null for an empty buffer
     *                    and on failure
     * @return eSTATUS_NULL_ARGUMENT when `section` is null, eSTATUS_OUT_OF_MEMORY, eSTATUS_FAILED
     *         when the key is null, eSTATUS_BAD_FORMAT for a malformed header line
     */
    static tag_estatus parseSectionFromBuffer(const QString& buffer, const QString& sectionKey,
                                              CPLSection** section, bool);

    /**
     * Copies the first section of a text, which must begin with its header line. The section ends
     * before the next "*** " that does not stand on a line beginning with '#'.
     *
     * @param text         the text
     * @param sectionText  receives the section's text
     * @param length       receives its length, 0 on failure
     * @param sectionKey   receives its key; may be null
     * @return eSTATUS_NULL_ARGUMENT for an empty text, eSTATUS_BAD_FORMAT for a malformed header
     */
    static tag_estatus copySectionBuffer(const QString& text, QString& sectionText, int& length,
                                         QString* sectionKey);
    ///@}

protected:
    /** Reads a whole info text into the document: preamble, sections, file section count. */
    tag_estatus loadClickInfoText(const QString& text);

    /** The section with this key; null when absent. Throws std::bad_alloc, unlike operator[]. */
    [[nodiscard]] CPLSection* find(const QString& sectionKey) const;

    /**
     * Adds a new section; one that the document does not take is destroyed. Throws std::bad_alloc.
     *
     * @return the status of addSection()
     */
    tag_estatus take(std::unique_ptr<CPLSection> section);

    QString clickNumber;                 ///< null in a new document
    QMap<QString, CPLSection*> sections; ///< owned, by lower-case key
    QStringList sectionKeys;             ///< in document order, in their stored spelling
    qint32 sectionCount = 0;             ///< number of sections
    qint32 fileSectionCount = 0;         ///< number of sections after the last load
    QStringList preambleLines;           ///< the lines before the first section

private:
    template <typename Load>
    PARSERLIBRARY_NO_EXPORT tag_estatus loadInfoText(const ovparser::internal::SourceText& text,
                                                     Load load);
    PARSERLIBRARY_NO_EXPORT tag_estatus loadInfoBytes(const QByteArray& bytes);
    PARSERLIBRARY_NO_EXPORT tag_estatus loadBlocks(const ovparser::internal::SourceText& text);
    PARSERLIBRARY_NO_EXPORT tag_estatus loadBlock(const ovparser::internal::SourceText& text,
                                                  QLatin1String block);
    PARSERLIBRARY_NO_EXPORT void startLoading();
    PARSERLIBRARY_NO_EXPORT tag_estatus appendUserSections(bool userFields);
    PARSERLIBRARY_NO_EXPORT tag_estatus addImage(const QString& name, tag_eimagetype type,
                                                 const sIASetupInfo* setup, bool settings);
    PARSERLIBRARY_NO_EXPORT void addClickNumber(bool acquired, bool inSequence,
                                                const QString& version);
    PARSERLIBRARY_NO_EXPORT tag_estatus addUser(tag_eimagetype type, const QString& userId);
    [[nodiscard]] PARSERLIBRARY_NO_EXPORT bool isPlain() const;
    [[nodiscard]] PARSERLIBRARY_NO_EXPORT QByteArray documentText() const;
    [[nodiscard]] PARSERLIBRARY_NO_EXPORT int placeOf(const QString& lowerKey) const;
    [[nodiscard]] PARSERLIBRARY_NO_EXPORT ovparser::internal::SectionStore store();
};

#endif
