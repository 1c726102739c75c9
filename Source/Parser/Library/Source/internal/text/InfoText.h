// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * The grammar of the info-file text: lines, blocks, header lines and body lines.
 *
 * The grammar reads Latin-1 bytes, without copying them; a returned view is good as long as the
 * bytes. White space is ASCII white space: a no-break space that a user typed is text and is kept.
 */
#ifndef OVPARSER_INTERNAL_INFOTEXT_H
#define OVPARSER_INTERNAL_INFOTEXT_H

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

namespace ovparser::internal {

/** The bytes as text: each byte one character. */
[[nodiscard]] inline QLatin1String latin1View(const QByteArray& bytes)
{
    return QLatin1String(bytes.constData(), int(bytes.size()));
}

/**
 * A text, and the Latin-1 bytes that the grammar reads in its place. A character that Latin-1 lacks
 * is '?' in the bytes, which is text to the grammar, too, so that both have the same places.
 */
struct SourceText
{
    SourceText() = default;
    explicit SourceText(const QByteArray& latin1)
        : bytes(latin1)
    {}
    explicit SourceText(const QString& text);

    [[nodiscard]] QLatin1String view() const { return latin1View(bytes); }

    /** The text of a part of the bytes. */
    [[nodiscard]] QString text(QLatin1String part) const;

    QByteArray bytes;
    QString wide; ///< the text where the bytes do not tell all of it; otherwise null
};

/** Appends to a text, or to the Latin-1 bytes of one, which have '?' for what Latin-1 lacks. */
inline void appendText(QString& out, const QString& text)
{
    out.append(text);
}
inline void appendText(QString& out, QLatin1String text) ///< @overload
{
    out.append(text);
}
void appendText(QByteArray& out, const QString& text);      ///< @overload
inline void appendText(QByteArray& out, QLatin1String text) ///< @overload
{
    out.append(text.data(), int(text.size()));
}

/** The text without white space at both ends. */
[[nodiscard]] QLatin1String trimmed(QLatin1String text);
[[nodiscard]] QString trimmed(const QString& text); ///< @overload

/** The text with every run of white space as one blank, and none at both ends. */
[[nodiscard]] QString simplified(QLatin1String text);

/** The text before the first '#', trimmed; a text without '#' as it is. */
[[nodiscard]] QLatin1String withoutComment(QLatin1String text);
[[nodiscard]] QString withoutComment(const QString& text); ///< @overload

/** `text` with the comment of `old` (from its first '#' on), if only `old` has one. */
[[nodiscard]] QString withCommentOf(const QString& old, const QString& text);

/** The name of a file in a path that separates folders by '/'. */
[[nodiscard]] QString fileNameInPath(const QString& path);

/** The folder part of a path, up to and including its last '/'; empty without one. */
[[nodiscard]] QString folderInPath(const QString& path);

/** Turns CR LF, and then every remaining CR, into LF. */
[[nodiscard]] QByteArray withLineFeeds(QByteArray bytes);

/** Turns every CR that no LF follows into LF: lines end in LF then, though some in CR LF. */
[[nodiscard]] QByteArray withoutLoneReturns(QByteArray bytes);

/** The bytes of an info file without a byte-order mark and lone CRs, trimmed. */
[[nodiscard]] QByteArray infoBytes(QByteArray bytes);

/** The same as text, with LF line ends: each byte one character. */
[[nodiscard]] QString decodeInfoText(QByteArray bytes);

/** Cuts a text into lines; each line keeps its LF. */
class LineReader
{
public:
    explicit LineReader(QLatin1String text)
        : m_unread(text)
    {}

    /** Gives the next line; false at the end of the text. */
    bool next(QLatin1String* line);

private:
    QLatin1String m_unread;
};

/** Whether the first word of the line begins with three asterisks. */
[[nodiscard]] bool isHeaderLine(QLatin1String line);

/** The first line of a text, with its LF. */
[[nodiscard]] QLatin1String firstLine(QLatin1String text);

/** Cuts a text into blocks: a header line and what follows up to the next header line. */
class BlockReader
{
public:
    explicit BlockReader(QLatin1String text);

    /** Gives the next block; false when there is none. */
    bool next(QLatin1String* block);

private:
    [[nodiscard]] const char* headerFrom(const char* place) const;

    const char* m_begin;
    const char* m_end;
    const char* m_header; ///< the line that starts the next block; the end without one
};

/** The lines before the first header line, each trimmed. */
[[nodiscard]] QStringList preambleOf(const SourceText& text);

/** A line cut at its first ':'. */
struct ColonCut
{
    enum Kind {
        NoColon,   ///< the line holds no ':'
        Commented, ///< a '#' stands before the first ':'
        Pair,      ///< text before and after the ':'
    };

    Kind kind = NoColon;
    qsizetype colon = -1; ///< position of the first ':', -1 without one
    QLatin1String before; ///< trimmed text before the ':', when a pair
    QLatin1String after;  ///< trimmed text after the ':', when a pair
};

[[nodiscard]] ColonCut cutAtColon(QLatin1String line);

/** The text of a line after its section marker; nothing without one. */
[[nodiscard]] std::optional<QLatin1String> afterMarker(QLatin1String line);

/**
 * A section mark of a sequence may have its ':' after the next mark; its key then spans both. A
 * section whose ':' lies so many bytes after that mark is passed over: without a limit, many marks
 * before one ':' would take quadratic memory.
 */
inline constexpr int maxSpanningKey = 128;

/** The section key of a header line (marker, key, ':', name); nothing when it is malformed. */
[[nodiscard]] std::optional<QLatin1String> headerKey(QLatin1String header);

/**
 * The click number that a block of a text gives: the name on its header line, with "X" in front
 * unless it starts with an ASCII letter, 31 characters at most. Nothing when the line does not end
 * in LF.
 */
[[nodiscard]] std::optional<QString> clickNumberOf(const SourceText& text, QLatin1String block);

} // namespace ovparser::internal

#endif
