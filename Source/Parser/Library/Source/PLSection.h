// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * One section of an info text.
 */
#ifndef OVPARSER_PLSECTION_H
#define OVPARSER_PLSECTION_H

#include "PLExport.h"
#include "PLStatus.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <atomic>

namespace ovparser::internal {
class Entries;
struct SectionAccess;
struct SectionStore;
struct SourceText;
} // namespace ovparser::internal

/**
 * One section of an info text: its key, its name and its entries in file order.
 *
 * An entry is a key/value pair or a comment line. Keys are matched ignoring letter case; the
 * spelling given first is kept and written back. In a value and in the section name the text from
 * the first '#' on is a comment: getters leave it out, setters keep it. Pairs are counted by
 * ordinals from 0 that pass over the comment lines.
 *
 * A section is a value: copies share nothing. A failing operation changes neither the section nor
 * its output arguments. Every operation that gives a status gives eSTATUS_OUT_OF_MEMORY when memory
 * runs out; a query gives nothing then: null, false or 0. Copying throws std::bad_alloc.
 *
 * Several threads may call const operations of a section that nobody changes. The text of a body is
 * taken apart when its entries are first asked for; that is safe, too.
 */
class PARSERLIBRARY_EXPORT CPLSection
{
public:
    /** An empty section; key and name are null. */
    CPLSection();

    /** An empty section with a key and a name. */
    CPLSection(QString key, QString name);

    /** A copy, which shares nothing with the original. */
    CPLSection(const CPLSection& other);

    /** Becomes a copy of another; nothing is shared. */
    CPLSection& operator=(const CPLSection& other);
    virtual ~CPLSection();

    /** @name Text form */
    ///@{

    /**
     * Replaces the entries by those of a section body: lines "key: value" and comment lines.
     *
     * Lines end in LF; white space around lines, keys and values does not count. A key that occurs
     * again keeps an entry of its own, but all its entries have the value read last.
     *
     * @param text  the text after the section's header line; when memory runs out, the section has
     *              no entries
     */
    void loadSectionData(QString text);

    /**
     * Gives the section as it is written: header line, entries and an empty line, ending in CR LF.
     *
     * @param text  replaced by the section's text; null when memory runs out
     */
    void saveSectionData(QString& text) const;
    ///@}

    /** @name Keys and values */
    ///@{

    /**
     * Adds a pair at the end, or gives the entry that has this key a new value.
     *
     * @return eSTATUS_INVALID_ARGUMENT when the key is empty
     */
    tag_estatus addKeyValue(QString key, QString value);

    /**
     * Reads a value without its comment.
     *
     * The forms with a number convert the text (base 10, '.' as decimal point, a long as wide as
     * the platform's); a text that is no such number gives 0 and eSTATUS_SUCCESS. A bool is true
     * for an integer other than 0.
     *
     * @param key    the key, in any letter case
     * @param value  receives the value
     * @return eSTATUS_NULL_ARGUMENT when `value` is null or the key is null or empty,
     *         eSTATUS_KEY_NOT_FOUND when there is no such key
     */
    tag_estatus getValue(QString key, QString* value) const;
    tag_estatus getValue(QString key, short* value) const;    ///< @overload
    tag_estatus getValue(QString key, int* value) const;      ///< @overload
    tag_estatus getValue(QString key, long* value) const;     ///< @overload
    tag_estatus getValue(QString key, float* value) const;    ///< @overload
    tag_estatus getValue(QString key, double* value) const;   ///< @overload
    tag_estatus getValue(QString key, qint64* value) const;   ///< @overload
    tag_estatus getValue(QString key, unsigned* value) const; ///< @overload
    tag_estatus getValue(QString key, bool* value) const;     ///< @overload

    /**
     * Reads a value as it is stored, with its comment.
     *
     * @return eSTATUS_NULL_ARGUMENT when `value` is null, eSTATUS_KEY_NOT_FOUND when there is no
     *         such key
     */
    tag_estatus getRawValue(QString key, QString* value) const;

    /**
     * Changes the value of a key; never adds one. An old comment stays unless the new value
     * brings its own. Floating-point numbers are written with six digits after the point.
     *
     * @return eSTATUS_KEY_NOT_FOUND when there is no such key
     */
    tag_estatus setValue(QString key, QString value);
    tag_estatus setValue(QString key, short value);    ///< @overload
    tag_estatus setValue(QString key, int value);      ///< @overload
    tag_estatus setValue(QString key, long value);     ///< @overload
    tag_estatus setValue(QString key, float value);    ///< @overload
    tag_estatus setValue(QString key, double value);   ///< @overload
    tag_estatus setValue(QString key, qint64 value);   ///< @overload
    tag_estatus setValue(QString key, unsigned value); ///< @overload

    /**
     * Changes the stored text of a key, comment included; never adds a key.
     *
     * @return eSTATUS_KEY_NOT_FOUND when there is no such key
     */
    tag_estatus setRawValue(QString key, QString value);

    /** The value of a key as getValue() gives it; a null string when that fails. */
    [[nodiscard]] QString operator[](QString key) const;

    /** The value of the pair with this ordinal; a null string when there is no such pair. */
    [[nodiscard]] QString operator[](int pairOrdinal) const;

    /** Whether an entry has this key. */
    [[nodiscard]] bool isKeyPresent(QString key) const;

    /**
     * Number of key/value pairs; comment lines do not count.
     *
     * @return eSTATUS_NULL_ARGUMENT when `count` is null
     */
    tag_estatus getKeyValuePairCount(int* count) const;

    /** Number of key/value pairs; comment lines do not count. */
    [[nodiscard]] int count() const;

    /**
     * The key of the pair with this ordinal, in its stored spelling.
     *
     * @return eSTATUS_NULL_ARGUMENT when `key` is null, eSTATUS_FAILED when there is no such pair
     */
    tag_estatus getKey(int pairOrdinal, QString* key) const;

    /**
     * The keys of all pairs in ordinal order; the list is replaced.
     *
     * @return eSTATUS_NULL_ARGUMENT when the list is null
     */
    tag_estatus getKeyList(QStringList* list) const;
    tag_estatus getValueList(QStringList* list) const;    ///< The same with the values.
    tag_estatus getRawValueList(QStringList* list) const; ///< The same with the stored values.

    /**
     * Appends the keys that start with `key` and contain `subkey`, letter case ignored.
     *
     * @param key     how the keys start
     * @param subkey  text that they contain; null takes every key, empty takes none
     * @param keys    the list to append to, in ordinal order
     * @return eSTATUS_NULL_ARGUMENT when the key is null or empty or the list is null
     */
    tag_estatus getKeylistFromKeyAndSubkey(QString key, QString subkey, QStringList* keys) const;

    /**
     * The multi-view angle: the value of "RDX-2 Angle", otherwise of "RoDX Angle".
     *
     * @param angle  receives the angle in degrees
     * @return eSTATUS_NULL_ARGUMENT when `angle` is null, eSTATUS_KEY_NOT_FOUND when neither key
     *         is present
     */
    tag_estatus getRDXAngle(double* angle) const;

    /** Removes every entry; key and name stay. */
    void clearKeyValuePairs();
    ///@}

    /** @name Identity */
    ///@{

    /**
     * The text after the ':' of the header line.
     *
     * @param name  receives the name
     * @param raw   true for the stored name, false for the name without its comment
     * @return eSTATUS_FAILED when `name` is null
     */
    tag_estatus getSectionName(QString* name, bool raw) const;

    /** Changes the name; an old comment stays unless the new name brings its own. */
    tag_estatus setSectionName(QString name);

    /**
     * The section's key, in its stored spelling.
     *
     * @return eSTATUS_FAILED when `key` is null
     */
    tag_estatus getSectionKey(QString* key) const;

    /**
     * Changes the key. A document that holds the section goes on finding it under the old key.
     *
     * @return eSTATUS_FAILED when the key is a null string; an empty one is accepted
     */
    tag_estatus setSectionKey(QString key);
    ///@}

private:
    friend struct ovparser::internal::SectionAccess;
    using Entries = ovparser::internal::Entries;

    QString sectionKey;
    QString sectionName;
    QByteArray fileText; ///< in which the body stands, as Latin-1; the sections of a file share it
    QString wideText;    ///< the same where Latin-1 does not tell all of it; otherwise null
    int bodyStart = 0;   ///< where the body stands in it
    int bodySize = 0;
    mutable std::atomic<Entries*> openEntries = {nullptr}; ///< owned; null until their first use
    bool held = false;                                     ///< by a document
};

#endif
