// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "ValueSearch.h"

#include "InfoText.h"

#include <QtCore/QIODevice>

#include <algorithm>

namespace ovparser::internal {

namespace {

/** A byte as it is compared: a carriage return counts as a line feed. */
QChar folded(char byte)
{
    return byte == '\r' ? QChar(u'\n') : QChar(QLatin1Char(byte)).toCaseFolded();
}

} // namespace

ValueSearch::ValueSearch(const QString& key)
    : m_foldedKey(key)
{
    for (QChar& c : m_foldedKey)
        c = c.toCaseFolded();
}

// Every match ends in ':', so only what stands before a ':' is looked at.
std::optional<QString> ValueSearch::in(std::string_view piece) const
{
    constexpr std::string_view whiteSpace = " \t\n\v\f\r";
    const std::size_t start = piece.find_first_not_of(whiteSpace);
    if (start == std::string_view::npos || piece[start] == '#')
        return std::nullopt;
    const std::string_view text = piece.substr(start);
    for (std::size_t colon = 0; (colon = text.find(':', colon)) != std::string_view::npos;) {
        const std::string_view before = text.substr(0, colon++);
        if (endsWithKey(before))
            return decodeInfoText(QByteArray(text.data() + colon, int(text.size() - colon)));
    }
    return std::nullopt;
}

bool ValueSearch::endsWithKey(std::string_view text) const
{
    return text.size() >= std::size_t(m_foldedKey.size()) &&
           std::equal(m_foldedKey.rbegin(), m_foldedKey.rend(), text.rbegin(),
                      [](QChar a, char b) { return a == folded(b); });
}

std::size_t pieceLength(std::string_view text, std::size_t limit)
{
    const std::string_view piece = text.substr(0, limit);
    const std::size_t lineEnd = piece.find('\n');
    return lineEnd == std::string_view::npos ? piece.size() : lineEnd + 1;
}

bool PieceReader::next(std::string_view* piece)
{
    if (m_unread.size() < maxPiece && !m_atEnd)
        refill();
    const std::size_t length = pieceLength(m_unread, maxPiece);
    *piece = m_unread.substr(0, length);
    m_unread.remove_prefix(length);
    return length > 0;
}

void PieceReader::refill()
{
    std::copy(m_unread.begin(), m_unread.end(), m_buffer.begin());
    std::size_t size = m_unread.size();
    while (size < maxPiece && !m_atEnd) {
        const qint64 read = m_device.read(m_buffer.data() + size, qint64(m_buffer.size() - size));
        m_atEnd = read <= 0;
        size += m_atEnd ? 0 : std::size_t(read);
    }
    m_unread = {m_buffer.data(), size};
}

} // namespace ovparser::internal
