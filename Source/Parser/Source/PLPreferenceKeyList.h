// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * The remembered values of all labels of a label set.
 */
#ifndef OVPARSER_PLPREFERENCEKEYLIST_H
#define OVPARSER_PLPREFERENCEKEYLIST_H

#include "PLExport.h"
#include "PLLabelDataSet.h"
#include "PLPreferenceKey.h"
#include "PLStatus.h"

#include <QtCore/QFile>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>

/**
 * One preference key per label of a label set, in the label set's order.
 *
 * The list owns its keys. A key that it hands out is borrowed and stays valid until its slot is
 * given another key, or the list is assigned to or destroyed. A slot stays empty only if memory for
 * its key could not be had; that is reported to the message log. Copies are deep.
 */
class PARSERLIBRARY_EXPORT CPLPreferenceKeyList
{
public:
    /** A list of `count` keys without values; of none when the number is negative. */
    CPLPreferenceKeyList(int count);

    /** A list with copies of the keys of another; without slots when `other` is null. */
    CPLPreferenceKeyList(const CPLPreferenceKeyList* other);

    /** Takes over number and copies of another list's keys; nothing when `other` is null. */
    void operator=(const CPLPreferenceKeyList* other);

    /** A copy, which shares nothing with the original. */
    CPLPreferenceKeyList(const CPLPreferenceKeyList& other);

    /** Becomes a copy of another; nothing is shared. */
    CPLPreferenceKeyList& operator=(const CPLPreferenceKeyList& other);
    virtual ~CPLPreferenceKeyList();

    /** The key in this slot, borrowed; null when there is no such slot. */
    [[nodiscard]] CPLPreferenceKey* operator[](int index) const;

    /**
     * The key in this slot.
     *
     * @param index  the slot, from 0
     * @param key    receives the key, borrowed
     * @return eSTATUS_INVALID_VALUE when there is no such slot or `key` is null
     */
    tag_estatus getKey(int index, CPLPreferenceKey** key) const;

    /**
     * Puts a key into a slot and destroys the one that it held. A key belongs to one slot of one
     * list: it may be put into its own slot again, but not into another one, nor into another list.
     *
     * @param index  the slot, from 0
     * @param key    a key from new, which the list owns from then on
     * @return eSTATUS_INVALID_VALUE when there is no such slot, `key` is null or another slot of
     *         this list holds it; nothing changes then, and a key that no slot holds stays the
     *         caller's
     */
    tag_estatus setKey(int index, CPLPreferenceKey* key);

    /**
     * Fills the slots from the text of a "User Label Name Set" section.
     *
     * The values of a label are the rest of the line after the first place, anywhere in the text,
     * where the label is followed by ':'. A label without values leaves its slot as it was.
     *
     * @param text        the section
     * @param labelNames  the labels in slot order
     * @return eSTATUS_INVALID_ARGUMENT when `labelNames` is null
     */
    tag_estatus loadData(QString text, const QStringList* labelNames);

    /**
     * Writes the keys as a "User Label Name Set" section, in Latin-1.
     *
     * @param file    a file that is open for writing; it stays open and is flushed
     * @param labels  the label set that names the section and its lines
     * @return eSTATUS_INVALID_ARGUMENT when `labels` is null, eSTATUS_FAILED when fewer bytes than
     *         asked were stored
     */
    tag_estatus saveData(QFile& file, const CPLLabelDataSet* labels) const;

    /**
     * Gives the text of that section.
     *
     * @param labels  the label set that names the section and its lines
     * @param text    replaced by the section
     * @return eSTATUS_INVALID_ARGUMENT when `labels` or `text` is null
     */
    tag_estatus saveData(const CPLLabelDataSet* labels, QString* text) const;

private:
    [[nodiscard]] PARSERLIBRARY_NO_EXPORT bool isSlot(int index) const;
    PARSERLIBRARY_NO_EXPORT void makeSlots(int count);
    PARSERLIBRARY_NO_EXPORT void copyKeys(const CPLPreferenceKeyList& other);
    [[nodiscard]] PARSERLIBRARY_NO_EXPORT QString sectionText(const CPLLabelDataSet& labels) const;

    std::unique_ptr<std::unique_ptr<CPLPreferenceKey>[]> keys;
    qint32 keyCount = 0;
};

#endif
