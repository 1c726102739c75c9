// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "ValueSearch.h"

#include "InfoText.h"

#include <QtCore/QIODevice>

#include <algorithm>
#include <array>
#include <string_view>

namespace ovparser::internal {

namespace {

/** A byte as it is compared: a carriage return counts as a line feed. */
QChar folded(char byte)
{
    return byte == '\r' ? QChar(u'\n') : QChar(QLatin1Char(byte)).toCaseFolded();
}

bool endsWithKey(std::string_view text, const QString& foldedKey)
{
    return text.size() >= std::size_t(foldedKey.size()) &&
           std::equal(foldedKey.rbegin(), foldedKey.rend(), text.rbegin(),
                      [](QChar a, char b) { return a == folded(b); });
}

// Every match ends in ':', so only what stands before a ':' is looked at.
std::optional<QString> valueIn(std::string_view piece, const QString& foldedKey)
{
    constexpr std::string_view whiteSpace = " \t\n\v\f\r";
    const std::size_t start = piece.find_first_not_of(whiteSpace);
    if (start == std::string_view::npos || piece[start] == '#')
        return std::nullopt;
    const std::string_view text = piece.substr(start);
    for (std::size_t colon = 0; (colon = text.find(':', colon)) != std::string_view::npos;) {
        const std::string_view before = text.substr(0, colon++);
        if (endsWithKey(before, foldedKey))
            return decodeInfoText(QByteArray(text.data() + colon, int(text.size() - colon)));
    }
    return std::nullopt;
}

/** Reads a device line by line; a line beyond the limit comes in several pieces. */
class PieceReader
{
public:
    PieceReader(QIODevice& device, int limit)
        : m_device(device)
        , m_limit(std::size_t(limit))
    {}

    /** The next piece, which is good until the call after; empty at the end. */
    std::string_view next()
    {
        if (m_unread.size() < m_limit && !m_atEnd)
            refill();
        const std::string_view piece = m_unread.substr(0, m_limit);
        const std::size_t lineEnd = piece.find('\n');
        const std::size_t length = lineEnd == std::string_view::npos ? piece.size() : lineEnd + 1;
        m_unread.remove_prefix(length);
        return piece.substr(0, length);
    }

private:
    void refill()
    {
        std::copy(m_unread.begin(), m_unread.end(), m_buffer.begin());
        std::size_t size = m_unread.size();
        while (size < m_limit && !m_atEnd) {
            const qint64 room = qint64(m_buffer.size() - size);
            const qint64 read = m_device.read(m_buffer.data() + size, room);
            m_atEnd = read <= 0;
            size += m_atEnd ? 0 : std::size_t(read);
        }
        m_unread = {m_buffer.data(), size};
    }

    QIODevice& m_device;
    std::size_t m_limit;
    std::array<char, 16384> m_buffer = {};
    std::string_view m_unread;
    bool m_atEnd = false;
};

} // namespace

std::optional<QString> findValue(QIODevice& device, int limit, const QString& key)
{
    QString foldedKey = key;
    for (QChar& c : foldedKey)
        c = c.toCaseFolded();
    PieceReader pieces(device, limit);
    std::optional<QString> value;
    for (std::string_view piece; !value && !(piece = pieces.next()).empty();)
        value = valueIn(piece, foldedKey);
    return value;
}

} // namespace ovparser::internal
