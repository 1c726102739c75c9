// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#ifndef OVPARSER_INTERNAL_ENTRIES_H
#define OVPARSER_INTERNAL_ENTRIES_H

#include "internal/text/InfoText.h"
#include "internal/text/Keys.h"

#include <vector>

namespace ovparser::internal {

/**
 * The entries of a section in file order, found by key in any letter case.
 *
 * Keys and values that stand in a text are kept as places in it: a QString is made of one when
 * somebody asks. Whatever was set is kept as it was given. A key that occurs again in a text has an
 * entry of its own, whose value is that of the first one. A comment line is an entry with a
 * generated key.
 *
 * Every operation may throw std::bad_alloc; the entries are then as they were, unless it reads.
 */
class Entries
{
public:
    /** Reads the lines of a section body, which stands in a text that is shared from then on. */
    void read(const SourceText& text, QLatin1String body);

    /** Adds a pair at the end, or gives the entry that has this key a new value. */
    void put(const QString& key, const QString& value);

    /** The place of the entry with this key; -1 without one. */
    [[nodiscard]] int find(const QString& key) const;

    /** Number of pairs: entries that are no comments. */
    [[nodiscard]] int pairCount() const { return int(m_entries.size() - m_comments.size()); }

    /** The place of the pair with this ordinal, which must be one of a pair. */
    [[nodiscard]] int placeOfPair(int ordinal) const;

    /** The key of an entry as it is spelled. */
    [[nodiscard]] QString key(int place) const { return text(entry(place).key); }

    /** The stored value of an entry, its comment included. */
    [[nodiscard]] QString rawValue(int place) const { return text(holder(place).value); }

    /** The value of an entry without its comment. */
    [[nodiscard]] QString value(int place) const;

    /** Gives an entry, and all others of its key, another value. */
    void setRawValue(int place, const QString& value);

    /** Appends the entries as they are written: a line each, ending in CR LF. */
    template <typename Text>
    void write(Text& out) const;

private:
    /** Where a key or value stands: at a place of the text, unless the size says otherwise. */
    struct Piece
    {
        static constexpr qint32 own = -1;      ///< number `at` of the strings that were given
        static constexpr qint32 numbered = -2; ///< the generated key of comment number `at`
        static constexpr qint32 shared = -3;   ///< the value of entry number `at`

        quint32 at = 0;
        qint32 size = 0;
    };

    struct Entry
    {
        quint32 hash = 0;
        Piece key;
        Piece value;
    };

    void append(Piece key, Piece value);
    void reserveSlots(std::size_t entries);
    [[nodiscard]] std::size_t slotOf(const FoldedKey& key, quint32 hash) const;
    [[nodiscard]] bool isLatin1(Piece piece) const;
    [[nodiscard]] FoldedKey folded(Piece key) const;
    [[nodiscard]] bool matches(const FoldedKey& key, Piece spelling) const;
    [[nodiscard]] const Entry& entry(int place) const { return m_entries[std::size_t(place)]; }
    [[nodiscard]] const Entry& holder(int place) const;
    [[nodiscard]] Piece pieceOf(QLatin1String part) const;
    [[nodiscard]] Piece ownPiece(const QString& text);
    [[nodiscard]] QLatin1String view(Piece piece) const;
    [[nodiscard]] QString text(Piece piece) const;
    [[nodiscard]] bool isBare(Piece key) const;
    void writePiece(QString& out, Piece piece) const;
    void writePiece(QByteArray& out, Piece piece) const;

    SourceText m_text;
    std::vector<Entry> m_entries;
    std::vector<quint32> m_slots;    ///< by hash: numbers of entries, counted from 1; 0 is free
    std::vector<quint32> m_comments; ///< the places of the comments
    std::vector<QString> m_own;
};

/** Appends the entries of a body, which stands in a text, as they are written. */
void writeBody(const SourceText& text, QLatin1String body, QByteArray& out);

} // namespace ovparser::internal

#endif
