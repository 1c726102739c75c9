// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * The remembered values of one user label.
 */
#ifndef OVPARSER_PLPREFERENCEKEY_H
#define OVPARSER_PLPREFERENCEKEY_H

#include "PLExport.h"
#include "PLStatus.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

/**
 * The values that were given to a user label before, in the order in which they are offered.
 *
 * Values are counted from 0 and may repeat. A failing operation changes neither the key nor its
 * output argument. A key is a value: copies share nothing.
 */
class PARSERLIBRARY_EXPORT CPLPreferenceKey
{
public:
    /** A key without values. */
    CPLPreferenceKey();

    /** A key with the values of another; without values when `other` is null. */
    CPLPreferenceKey(const CPLPreferenceKey* other);

    /** Takes over the values of another key; nothing happens when `other` is null. */
    void operator=(const CPLPreferenceKey* other);

    /** A copy, which shares nothing with the original. */
    CPLPreferenceKey(const CPLPreferenceKey& other);

    /** Becomes a copy of another; nothing is shared. */
    CPLPreferenceKey& operator=(const CPLPreferenceKey& other);
    virtual ~CPLPreferenceKey();

    /**
     * Appends a value, also one that is held already.
     *
     * @return eSTATUS_INVALID_VALUE when it is empty
     */
    tag_estatus addValue(QString value);

    /**
     * Removes every value that is equal to this one, letter case included.
     *
     * @return eSTATUS_INVALID_VALUE when there is none
     */
    tag_estatus deleteValue(QString value);

    /** Removes every value. */
    void clearValues();

    /** Replaces the values by those of a save buffer; text after its last ';' does not count. */
    void loadData(QString text);

    /**
     * The save buffer: every value followed by ';'.
     *
     * @return eSTATUS_NULL_ARGUMENT when `text` is null
     */
    tag_estatus getSaveBuffer(QString* text) const;

    /**
     * Gives access to the key's own list. Changes through it change the key.
     *
     * @param list  receives the list, borrowed and valid while the key lives
     * @return eSTATUS_NULL_ARGUMENT when `list` is null
     */
    tag_estatus getCompleteData(QStringList** list);

    /**
     * The value at this place.
     *
     * @return eSTATUS_INVALID_VALUE when there is no such place or `value` is null
     */
    tag_estatus getValue(unsigned index, QString* value) const;

    /**
     * Replaces the value at this place; an empty one is accepted.
     *
     * @return eSTATUS_INVALID_VALUE when there is no such place
     */
    tag_estatus setValue(QString value, unsigned index);

    /** The value at this place; a null string when there is no such place. */
    [[nodiscard]] QString operator[](unsigned index) const;

    /**
     * Number of values.
     *
     * @return eSTATUS_NULL_ARGUMENT when `count` is null
     */
    tag_estatus getCount(int* count) const;

    /**
     * Swaps the value at this place with the one before it.
     *
     * @return eSTATUS_INVALID_VALUE when there is no such place or none before it
     */
    tag_estatus moveUp(unsigned index);

    /**
     * Swaps the value at this place with the one after it.
     *
     * @return eSTATUS_INVALID_VALUE when there is no such place or none after it
     */
    tag_estatus moveDown(unsigned index);

private:
    [[nodiscard]] PARSERLIBRARY_NO_EXPORT bool isIndex(unsigned index) const;

    QStringList values;
};

#endif
