// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Entries.h"

#include "PLKeywords.h"

#include <algorithm>
#include <bitset>

namespace ovparser::internal {

namespace {

constexpr QLatin1Char commentSign('#');

/** The key of a comment, which no line gives. */
QString generatedKey(quint32 number)
{
    return PLKeyword::Text::CommentKey + QString::number(number);
}

/** Tells most keys of a body apart. */
class KeyMarks
{
public:
    /** Marks a key, in any letter case; false when it, or one with the same mark, was marked. */
    bool add(QLatin1String key)
    {
        quint32 hash = 0;
        for (const char c : key)
            hash = (hash ^ (uchar(c) | 0x20U)) * 0x01000193U;
        const std::size_t mark = (hash ^ hash >> 15U) % m_marks.size();
        const bool isNew = !m_marks[mark];
        m_marks[mark] = true;
        return isNew;
    }

private:
    std::bitset<4096> m_marks;
};

/** Whether a line of a body, its line end left out, is surely written as it stands. */
bool isWritten(QLatin1String line, KeyMarks& marks)
{
    const QLatin1String keyEnd = PLKeyword::Text::KeyEnd;
    const ColonCut cut = cutAtColon(line);
    if (cut.kind == ColonCut::Pair)
        return line.size() == cut.before.size() + keyEnd.size() + cut.after.size() &&
               QLatin1String(line.begin() + cut.colon, line.end()).startsWith(keyEnd) &&
               !isCommentKey(cut.before) && marks.add(cut.before);
    return line.size() == 0 || (line.startsWith(commentSign) && trimmed(line) == line);
}

/** The same of all lines; the last one has no line end. */
bool isWritten(QLatin1String lines)
{
    const QLatin1String lineEnd = PLKeyword::Text::LineEnd;
    KeyMarks marks;
    LineReader reader(lines);
    for (QLatin1String line; reader.next(&line);) {
        const bool isLast = line.end() == lines.end();
        if (!isLast && !line.endsWith(lineEnd))
            return false;
        if (!isWritten(isLast ? line : line.chopped(lineEnd.size()), marks))
            return false;
    }
    return true;
}

} // namespace

void Entries::read(const SourceText& text, QLatin1String body)
{
    m_text = text;
    const QLatin1String content = trimmed(body);
    const auto lineEnds = std::count(content.begin(), content.end(), '\n');
    m_entries.reserve(std::size_t(lineEnds) + 1);
    reserveSlots(std::size_t(lineEnds) + 1);
    LineReader lines(content);
    for (QLatin1String line; lines.next(&line);) {
        line = trimmed(line);
        const ColonCut cut = cutAtColon(line);
        if (cut.kind == ColonCut::Pair) {
            append(pieceOf(cut.before), pieceOf(cut.after));
            continue;
        }
        const auto number = quint32(m_comments.size());
        const bool complete = line.size() == 0 || line.startsWith(commentSign);
        m_comments.push_back(quint32(m_entries.size()));
        append(Piece{number, Piece::numbered},
               complete ? pieceOf(line) : ownPiece(commentSign + m_text.text(line)));
    }
}

void Entries::append(Piece key, Piece value)
{
    const FoldedKey foldedKey = folded(key);
    const quint32 hash = foldedKey.hash();
    quint32& slot = m_slots[slotOf(foldedKey, hash)];
    if (slot == 0) {
        m_entries.push_back({hash, key, value});
        slot = quint32(m_entries.size());
        return;
    }
    m_entries[slot - 1].value = value;
    m_entries.push_back({hash, key, {slot - 1, Piece::shared}});
}

/** Makes room for so many entries, half of which at most fill the slots. */
void Entries::reserveSlots(std::size_t entries)
{
    constexpr std::size_t fewest = 16;
    std::size_t size = std::max(fewest, m_slots.size());
    while (size < entries * 2)
        size *= 2;
    if (size == m_slots.size())
        return;
    std::vector<quint32> slots(size, 0);
    for (std::size_t place = 0; place < m_entries.size(); ++place) {
        if (m_entries[place].value.size == Piece::shared)
            continue;
        std::size_t slot = m_entries[place].hash & (size - 1);
        while (slots[slot] != 0)
            slot = (slot + 1) & (size - 1);
        slots[slot] = quint32(place + 1);
    }
    m_slots.swap(slots);
}

/** The slot of a key, or the free one that it would have. There are always free ones. */
std::size_t Entries::slotOf(const FoldedKey& key, quint32 hash) const
{
    const std::size_t mask = m_slots.size() - 1;
    std::size_t slot = hash & mask;
    while (m_slots[slot] != 0) {
        const Entry& other = m_entries[m_slots[slot] - 1];
        if (other.hash == hash && matches(key, other.key))
            break;
        slot = (slot + 1) & mask;
    }
    return slot;
}

/** Whether the bytes tell all of a piece. */
bool Entries::isLatin1(Piece piece) const
{
    return piece.size >= 0 && m_text.wide.isNull();
}

FoldedKey Entries::folded(Piece key) const
{
    return isLatin1(key) ? FoldedKey(view(key)) : FoldedKey(text(key));
}

bool Entries::matches(const FoldedKey& key, Piece spelling) const
{
    return isLatin1(spelling) ? key.matches(view(spelling)) : key == FoldedKey(text(spelling));
}

int Entries::find(const QString& key) const
{
    if (m_slots.empty())
        return -1;
    const FoldedKey foldedKey(key);
    return int(m_slots[slotOf(foldedKey, foldedKey.hash())]) - 1;
}

void Entries::put(const QString& key, const QString& value)
{
    const FoldedKey foldedKey(key);
    const quint32 hash = foldedKey.hash();
    reserveSlots(m_entries.size() + 1);
    quint32& slot = m_slots[slotOf(foldedKey, hash)];
    if (slot != 0) {
        setRawValue(int(slot) - 1, value);
        return;
    }
    const Piece ownKey = ownPiece(key);
    const Piece ownValue = ownPiece(value);
    m_entries.push_back({hash, ownKey, ownValue});
    slot = quint32(m_entries.size());
}

// Before a pair there are as many comments as the pair's place is after its ordinal.
int Entries::placeOfPair(int ordinal) const
{
    const auto later =
        std::partition_point(m_comments.begin(), m_comments.end(), [&](const quint32& place) {
            return int(place) - int(&place - m_comments.data()) <= ordinal;
        });
    return ordinal + int(later - m_comments.begin());
}

QString Entries::value(int place) const
{
    const Piece value = holder(place).value;
    return value.size < 0 ? withoutComment(text(value)) : m_text.text(withoutComment(view(value)));
}

void Entries::setRawValue(int place, const QString& value)
{
    const auto first = std::size_t(&holder(place) - m_entries.data());
    if (m_entries[first].value.size == Piece::own)
        m_own[m_entries[first].value.at] = value;
    else
        m_entries[first].value = ownPiece(value);
}

/** The first entry that has the key of an entry; it holds the value of all of them. */
const Entries::Entry& Entries::holder(int place) const
{
    const Entry& found = entry(place);
    return found.value.size == Piece::shared ? m_entries[found.value.at] : found;
}

Entries::Piece Entries::pieceOf(QLatin1String part) const
{
    return {quint32(part.data() - m_text.bytes.constData()), qint32(part.size())};
}

Entries::Piece Entries::ownPiece(const QString& text)
{
    m_own.push_back(text);
    return {quint32(m_own.size() - 1), Piece::own};
}

QLatin1String Entries::view(Piece piece) const
{
    return QLatin1String(m_text.bytes.constData() + piece.at, piece.size);
}

QString Entries::text(Piece piece) const
{
    if (piece.size == Piece::own)
        return m_own[piece.at];
    return piece.size == Piece::numbered ? generatedKey(piece.at) : m_text.text(view(piece));
}

void Entries::writePiece(QString& out, Piece piece) const
{
    out.append(text(piece));
}

void Entries::writePiece(QByteArray& out, Piece piece) const
{
    if (piece.size < 0)
        appendText(out, text(piece));
    else
        appendText(out, view(piece));
}

/** Whether an entry is written as its value alone. */
bool Entries::isBare(Piece key) const
{
    if (key.size == Piece::own)
        return isCommentKey(m_own[key.at]);
    return key.size == Piece::numbered || isCommentKey(view(key));
}

template <typename Text>
void Entries::write(Text& out) const
{
    for (int place = 0; place < int(m_entries.size()); ++place) {
        const Piece key = entry(place).key;
        if (!isBare(key)) {
            writePiece(out, key);
            appendText(out, PLKeyword::Text::KeyEnd);
        }
        writePiece(out, holder(place).value);
        appendText(out, PLKeyword::Text::LineEnd);
    }
}

template void Entries::write(QString& out) const;
template void Entries::write(QByteArray& out) const;

// The library wrote most bodies itself; those are copied.
void writeBody(const SourceText& text, QLatin1String body, QByteArray& out)
{
    const QLatin1String lines = trimmed(body);
    if (lines.size() > 0 && text.wide.isNull() && isWritten(lines)) {
        appendText(out, lines);
        return appendText(out, PLKeyword::Text::LineEnd);
    }
    Entries entries;
    entries.read(text, lines);
    entries.write(out);
}

} // namespace ovparser::internal
