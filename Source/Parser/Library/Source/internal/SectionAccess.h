/**
 * @file
 * How the library itself makes, fills and reads sections: here a lack of memory is an exception,
 * which the guard of the operation that was called from outside turns into a status.
 */
#ifndef OVPARSER_INTERNAL_SECTIONACCESS_H
#define OVPARSER_INTERNAL_SECTIONACCESS_H

#include "Guard.h"
#include "InfoText.h"
#include "PLSection.h"

#include <memory>

namespace ovparser::internal {

/** The value of a key without its comment; a null string when there is no such key. */
[[nodiscard]] inline QString valueOf(const CPLSection& section, const QString& key)
{
    QString value;
    checked(section.getValue(key, &value));
    return value;
}

[[nodiscard]] inline bool hasKey(const CPLSection& section, const QString& key)
{
    QString value;
    return checked(section.getRawValue(key, &value)) == eSTATUS_SUCCESS;
}

/**
 * Where a key stands of which there is one; -1 when there is none. It is looked for from both ends,
 * so that taking keys away one by one is quick in either direction.
 */
template <typename Match>
[[nodiscard]] int positionOf(const QStringList& keys, Match matches)
{
    for (int first = 0, last = int(keys.size()) - 1; first <= last; ++first, --last) {
        if (matches(keys.at(first)))
            return first;
        if (matches(keys.at(last)))
            return last;
    }
    return -1;
}

/** Adds a pair to a section, or gives the pair that has this key a new value. */
inline void addPair(CPLSection& section, const QString& key, const QString& value)
{
    checked(section.addKeyValue(key, value));
}

/**
 * A section made of a block: its name from the header line, its entries from the rest, which is all
 * that the block is left holding.
 *
 * @param header  the block's first line, cut
 */
[[nodiscard]] inline std::unique_ptr<CPLSection> sectionOfBlock(const QString& key, QString& block,
                                                                const ColonCut& header)
{
    auto section = std::make_unique<CPLSection>(key, header.after.toString());
    block.remove(0, int(firstLine(block).size()));
    section->loadSectionData(block);
    return section;
}

/** The section as it is written to a file. */
[[nodiscard]] inline QByteArray latin1TextOf(const CPLSection& section)
{
    QString text;
    section.saveSectionData(text);
    if (text.isEmpty())
        throw std::bad_alloc();
    return text.toLatin1();
}

} // namespace ovparser::internal

#endif
