// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * One value out of a text, without a document.
 */
#ifndef OVPARSER_INTERNAL_VALUESEARCH_H
#define OVPARSER_INTERNAL_VALUESEARCH_H

#include <QtCore/QString>

#include <array>
#include <optional>
#include <string_view>

class QIODevice;

namespace ovparser::internal {

/** Looks for a key with its ':' in pieces of a text, in any letter case. */
class ValueSearch
{
public:
    explicit ValueSearch(const QString& key);

    /** The text behind the key, when the piece holds the key and is no comment. */
    [[nodiscard]] std::optional<QString> in(std::string_view piece) const;

private:
    [[nodiscard]] bool endsWithKey(std::string_view text) const;

    QString m_foldedKey;
};

/** Length of the first line of a text, its LF included, but at most `limit` bytes. */
[[nodiscard]] std::size_t pieceLength(std::string_view text, std::size_t limit);

/** Reads a device line by line; a longer line comes in several pieces. */
class PieceReader
{
public:
    static constexpr std::size_t maxPiece = 249;

    explicit PieceReader(QIODevice& device)
        : m_device(device)
    {}

    /** Gives the next piece, which is good until the call after; false at the end. */
    bool next(std::string_view* piece);

private:
    void refill();

    QIODevice& m_device;
    std::array<char, 16384> m_buffer = {};
    std::string_view m_unread;
    bool m_atEnd = false;
};

} // namespace ovparser::internal

#endif
