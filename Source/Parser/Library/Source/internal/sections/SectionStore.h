// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#ifndef OVPARSER_INTERNAL_SECTIONSTORE_H
#define OVPARSER_INTERNAL_SECTIONSTORE_H

#include "SectionAccess.h"

#include <QtCore/QMap>
#include <QtCore/QStringList>

namespace ovparser::internal {

/**
 * What adds sections to a document, takes them away, copies and writes them, so that the map, the
 * order and the count of the document's sections agree. Sections are owned. Operations may throw
 * std::bad_alloc; the document is then as it was.
 *
 * The place of a section is looked for in the order of the keys; a document whose map has another
 * form of the keys gives that form along.
 */
struct SectionStore
{
    QMap<QString, CPLSection*>& sections; ///< by the form of their keys that is looked up
    QStringList& keys;                    ///< in document order, as they are spelled
    qint32& count;

    /**
     * Inserts a section at a place; the document owns it then.
     *
     * @return eSTATUS_INVALID_ARGUMENT when a document holds the section already; it stays there
     */
    tag_estatus insert(int place, const QString& mapKey, CPLSection* section);

    /** Inserts a section that no document holds. */
    void insert(int place, const QString& mapKey, std::unique_ptr<CPLSection> section);

    /** Removes and destroys the section at a place. */
    void remove(int place, const QString& mapKey);

    /** Removes and destroys every section. */
    void clear();

    /** Fills an empty store with copies of another document's sections. */
    void copy(const QMap<QString, CPLSection*>& others, const QStringList& otherKeys);
};

/**
 * Where a key stands that occurs once; -1 when it does not occur. It is looked for from both ends,
 * so that taking keys away one by one is quick in either direction.
 */
template <typename Match>
[[nodiscard]] int placeOfKey(const QStringList& keys, Match matches)
{
    for (int first = 0, last = int(keys.size()) - 1; first <= last; ++first, --last) {
        if (matches(keys.at(first)))
            return first;
        if (matches(keys.at(last)))
            return last;
    }
    return -1;
}

} // namespace ovparser::internal

#endif
