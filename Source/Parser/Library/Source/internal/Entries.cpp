// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Entries.h"

#include "PLKeywords.h"

#include <algorithm>
#include <charconv>
#include <iterator>

namespace ovparser::internal {

namespace {

constexpr QLatin1Char commentSign('#');

bool isLineFeed(char c)
{
    return c == '\n';
}

bool isLineFeed(QChar c)
{
    return c == u'\n';
}

/** The key of a comment, which no line gives. */
class GeneratedKey
{
public:
    explicit GeneratedKey(quint32 number)
    {
        const QLatin1String stem = PLKeyword::Text::CommentKey;
        char* const digits = std::copy(stem.begin(), stem.end(), m_text);
        m_end = std::to_chars(digits, std::end(m_text), number).ptr;
    }

    [[nodiscard]] QLatin1String view() const { return QLatin1String(m_text, m_end); }

private:
    char m_text[32];
    const char* m_end;
};

quint32 hashOf(QLatin1String key)
{
    return keyHash(key);
}

quint32 hashOf(QStringView key)
{
    return FoldedKey(key.toString()).hash();
}

} // namespace

void Entries::read(const QByteArray& text, QLatin1String body)
{
    m_text = text;
    readLines(body);
}

void Entries::read(QStringView body)
{
    readLines(body);
}

template <typename Text>
void Entries::readLines(Text body)
{
    const Text content = trimmed(body);
    const auto lineEnds =
        std::count_if(content.begin(), content.end(), [](auto c) { return isLineFeed(c); });
    m_entries.reserve(std::size_t(lineEnds) + 1);
    reserveSlots(std::size_t(lineEnds) + 1);
    BasicLineReader<Text> lines(content);
    for (Text line; lines.next(&line);) {
        line = trimmed(line);
        const auto parts = cutAtColon(line);
        if (parts.kind == parts.Pair) {
            append(pieceOf(parts.before), hashOf(parts.before), pieceOf(parts.after));
            continue;
        }
        const auto number = quint32(m_comments.size());
        const bool complete = line.size() == 0 || line.startsWith(commentSign);
        const Piece value = complete ? pieceOf(line) : ownPiece(commentSign + toText(line));
        m_comments.push_back(quint32(m_entries.size()));
        append({number, Piece::numbered}, keyHash(GeneratedKey(number).view()), value);
    }
}

void Entries::append(Piece key, quint32 hash, Piece value)
{
    quint32& slot =
        m_slots[slotOf(hash, [&](Piece other) { return matches(FoldedKey(text(key)), other); })];
    if (slot == 0) {
        m_entries.push_back({hash, key, value});
        slot = quint32(m_entries.size());
        return;
    }
    m_entries[slot - 1].value = value;
    m_entries.push_back({hash, key, {slot - 1, Piece::shared}});
}

void Entries::clear()
{
    m_text.clear();
    m_entries.clear();
    m_comments.clear();
    m_own.clear();
    m_slots.clear();
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
    std::vector<quint32> slots;
    if (m_entries.empty())
        slots.swap(m_slots); // their memory serves again
    slots.assign(size, 0);
    m_slots.swap(slots);
    const auto isOther = [](Piece) { return false; };
    for (std::size_t place = 0; place < m_entries.size(); ++place) {
        if (m_entries[place].value.size != Piece::shared)
            m_slots[slotOf(m_entries[place].hash, isOther)] = quint32(place + 1);
    }
}

/** The slot of a key, or the free one that it would have. There are always free ones. */
template <typename Matches>
std::size_t Entries::slotOf(quint32 hash, Matches matches) const
{
    const std::size_t mask = m_slots.size() - 1;
    std::size_t slot = hash & mask;
    while (m_slots[slot] != 0) {
        const Entry& entry = m_entries[m_slots[slot] - 1];
        if (entry.hash == hash && matches(entry.key))
            break;
        slot = (slot + 1) & mask;
    }
    return slot;
}

bool Entries::matches(const FoldedKey& key, Piece spelling) const
{
    if (spelling.size == Piece::own)
        return key.matches(m_own[spelling.at]);
    if (spelling.size == Piece::numbered)
        return key.matches(GeneratedKey(spelling.at).view());
    return key.matches(view(spelling));
}

int Entries::find(const QString& key) const
{
    if (m_slots.empty())
        return -1;
    const FoldedKey folded(key);
    const auto isKey = [&](Piece other) { return matches(folded, other); };
    return int(m_slots[slotOf(folded.hash(), isKey)]) - 1;
}

void Entries::put(const QString& key, const QString& value)
{
    const FoldedKey folded(key);
    reserveSlots(m_entries.size() + 1);
    const auto isKey = [&](Piece other) { return matches(folded, other); };
    quint32& slot = m_slots[slotOf(folded.hash(), isKey)];
    if (slot != 0) {
        setRawValue(int(slot) - 1, value);
        return;
    }
    const Piece ownKey = ownPiece(key);
    const Piece ownValue = ownPiece(value);
    m_entries.push_back({folded.hash(), ownKey, ownValue});
    slot = quint32(m_entries.size());
}

// Before a pair there are as many comments as the pair's place is behind its ordinal.
int Entries::placeOfPair(int ordinal) const
{
    const auto later =
        std::partition_point(m_comments.begin(), m_comments.end(), [&](const quint32& place) {
            return int(place) - int(&place - m_comments.data()) <= ordinal;
        });
    return ordinal + int(later - m_comments.begin());
}

QString Entries::key(int place) const
{
    return text(m_entries[std::size_t(place)].key);
}

QString Entries::rawValue(int place) const
{
    return text(valueOf(place));
}

QString Entries::value(int place) const
{
    const Piece value = valueOf(place);
    return value.size < 0 ? withoutComment(text(value)) : QString(withoutComment(view(value)));
}

void Entries::setRawValue(int place, const QString& value)
{
    Piece& piece = m_entries[std::size_t(firstOf(place))].value;
    if (piece.size == Piece::own)
        m_own[piece.at] = value;
    else
        piece = ownPiece(value);
}

/** The first entry that has the key of an entry; it holds the value of all of them. */
int Entries::firstOf(int place) const
{
    const Piece value = m_entries[std::size_t(place)].value;
    return value.size == Piece::shared ? int(value.at) : place;
}

Entries::Piece Entries::valueOf(int place) const
{
    return m_entries[std::size_t(firstOf(place))].value;
}

Entries::Piece Entries::pieceOf(QLatin1String text) const
{
    return {quint32(text.data() - m_text.constData()), qint32(text.size())};
}

Entries::Piece Entries::pieceOf(QStringView text)
{
    return ownPiece(text.toString());
}

Entries::Piece Entries::ownPiece(const QString& text)
{
    m_own.push_back(text);
    return {quint32(m_own.size() - 1), Piece::own};
}

QLatin1String Entries::view(Piece piece) const
{
    return QLatin1String(m_text.constData() + piece.at, piece.size);
}

QString Entries::text(Piece piece) const
{
    if (piece.size == Piece::own)
        return m_own[piece.at];
    return piece.size == Piece::numbered ? QString(GeneratedKey(piece.at).view()) : view(piece);
}

template <typename Out>
void Entries::writePiece(Out& out, Piece piece) const
{
    if (piece.size == Piece::own)
        appendText(out, m_own[piece.at]);
    else
        appendText(out, view(piece));
}

template <typename Out>
void Entries::writeLines(Out& out) const
{
    for (int place = 0; place < int(m_entries.size()); ++place) {
        const Piece key = m_entries[std::size_t(place)].key;
        const bool bare =
            key.size == Piece::numbered ||
            (key.size == Piece::own ? isCommentKey(m_own[key.at]) : isCommentKey(view(key)));
        if (!bare) {
            writePiece(out, key);
            appendText(out, PLKeyword::Text::KeyEnd);
        }
        writePiece(out, valueOf(place));
        appendText(out, PLKeyword::Text::LineEnd);
    }
}

void Entries::write(QString& text) const
{
    writeLines(text);
}

void Entries::write(QByteArray& text) const
{
    writeLines(text);
}

} // namespace ovparser::internal
