// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * How the library itself makes, fills, reads and writes sections: here a lack of memory is an
 * exception, which the guard of the operation that was called from outside turns into a status.
 */
#ifndef OVPARSER_INTERNAL_SECTIONACCESS_H
#define OVPARSER_INTERNAL_SECTIONACCESS_H

#include "Entries.h"
#include "PLSection.h"
#include "internal/text/Guard.h"
#include "internal/text/NumberFormat.h"

#include <memory>

namespace ovparser::internal {

/** What the library may do with a section beyond what everybody may. */
struct SectionAccess
{
    /** Replaces the entries by those of a body that stands in a text, which is shared. */
    static void load(CPLSection& section, const SourceText& text, QLatin1String body);

    [[nodiscard]] static const Entries& entries(const CPLSection& section);
    [[nodiscard]] static Entries& entries(CPLSection& section);

    [[nodiscard]] static const QString& key(const CPLSection& section)
    {
        return section.sectionKey;
    }

    /** Whether a document holds the section, so that no other one may take it. */
    [[nodiscard]] static bool& isHeld(CPLSection& section) { return section.held; }

    /** Appends the section as it is written: header line, entries and an empty line. */
    static void write(const CPLSection& section, QByteArray& text);
    static void write(const CPLSection& section, QString& text); ///< @overload

private:
    [[nodiscard]] static SourceText textOf(const CPLSection& section);
    [[nodiscard]] static QLatin1String bodyOf(const CPLSection& section);
};

/** Reads a value without its comment, as CPLSection::getValue() does. */
[[nodiscard]] inline tag_estatus readValue(const CPLSection& section, const QString& key,
                                           QString* value)
{
    if (!value || key.isEmpty())
        return eSTATUS_NULL_ARGUMENT;
    const Entries& entries = SectionAccess::entries(section);
    const int place = entries.find(key);
    if (place < 0)
        return eSTATUS_KEY_NOT_FOUND;
    *value = entries.value(place);
    return eSTATUS_SUCCESS;
}

/** The same for a number; a text that is none gives 0. */
template <typename Number>
[[nodiscard]] tag_estatus readValue(const CPLSection& section, const QString& key, Number* value)
{
    QString text;
    const tag_estatus status = value ? readValue(section, key, &text) : eSTATUS_NULL_ARGUMENT;
    if (status == eSTATUS_SUCCESS)
        *value = numberIn<Number>(text);
    return status;
}

/** Changes a value and keeps its comment, as CPLSection::setValue() does. */
inline tag_estatus changeValue(CPLSection& section, const QString& key, const QString& value)
{
    Entries& entries = SectionAccess::entries(section);
    const int place = entries.find(key);
    if (place < 0)
        return eSTATUS_KEY_NOT_FOUND;
    entries.setRawValue(place, withCommentOf(entries.rawValue(place), value));
    return eSTATUS_SUCCESS;
}

/** The same with a number. */
template <typename Number>
tag_estatus changeValue(CPLSection& section, const QString& key, Number value)
{
    return changeValue(section, key, numberText(value));
}

/** The value of a key without its comment; a null string when there is no such key. */
[[nodiscard]] inline QString valueOf(const CPLSection& section, const QString& key)
{
    QString value;
    static_cast<void>(readValue(section, key, &value));
    return value;
}

[[nodiscard]] inline bool hasKey(const CPLSection& section, const QString& key)
{
    return SectionAccess::entries(section).find(key) >= 0;
}

/** Adds a pair to a section, or gives the pair that has this key a new value. */
inline void addPair(CPLSection& section, const QString& key, const QString& value)
{
    if (!key.isEmpty())
        SectionAccess::entries(section).put(key, value);
}

/** A section whose name and body stand in a text. */
[[nodiscard]] inline std::unique_ptr<CPLSection>
makeSection(const QString& key, const SourceText& text, QLatin1String name, QLatin1String body)
{
    auto section = std::make_unique<CPLSection>(key, text.text(name));
    SectionAccess::load(*section, text, body);
    return section;
}

/** A section made of a whole text: its name from the header line, its entries from the rest. */
[[nodiscard]] inline std::unique_ptr<CPLSection>
makeSection(const QString& key, const SourceText& block, const ColonCut& header)
{
    const QLatin1String body(firstLine(block.view()).end(), block.view().end());
    return makeSection(key, block, header.after, body);
}

} // namespace ovparser::internal

#endif
