// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#ifndef OVPARSER_INTERNAL_SECTIONSTORE_H
#define OVPARSER_INTERNAL_SECTIONSTORE_H

#include "SectionAccess.h"

#include <QtCore/QMap>
#include <QtCore/QStringList>

namespace ovparser::internal {

/**
 * The fields in which a document keeps its sections, which it owns: so that map, order and count
 * agree. Operations may throw std::bad_alloc; the document is then as it was.
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

    void remove(int place, const QString& mapKey);
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
