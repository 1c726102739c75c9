// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * The grammar of the info-file text: lines, blocks, header lines and body lines.
 *
 * Everything here looks at text without copying it; a returned view is good as long as the text.
 * A text is a QLatin1String, the bytes of a file, or a QStringView, what a caller hands in; both
 * have the same grammar. White space is ASCII white space: a no-break space that a user typed is
 * text and is kept.
 */
#ifndef OVPARSER_INTERNAL_INFOTEXT_H
#define OVPARSER_INTERNAL_INFOTEXT_H

#include "Keys.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QStringView>

#include <optional>

namespace ovparser::internal {

/** The bytes as text: each byte one character. */
[[nodiscard]] inline QLatin1String latin1View(const QByteArray& bytes)
{
    return QLatin1String(bytes.constData(), int(bytes.size()));
}

/** A copy of the text, which is not null. */
[[nodiscard]] QString toText(QStringView text);
[[nodiscard]] QString toText(QLatin1String text); ///< @overload

/** Appends to a text, or to the Latin-1 bytes of one, which have '?' for what Latin-1 lacks. */
void appendText(QString& out, QLatin1String text);
void appendText(QString& out, const QString& text);    ///< @overload
void appendText(QByteArray& out, QLatin1String text);  ///< @overload
void appendText(QByteArray& out, const QString& text); ///< @overload

/** The text without white space at both ends. */
[[nodiscard]] QStringView trimmed(QStringView text);
[[nodiscard]] QLatin1String trimmed(QLatin1String text); ///< @overload

/** The text with every run of white space as one blank, and none at both ends. */
[[nodiscard]] QString simplified(QStringView text);

/** The text before the first '#', trimmed; a text without '#' as it is. */
[[nodiscard]] QString withoutComment(const QString& text);
[[nodiscard]] QLatin1String withoutComment(QLatin1String text); ///< @overload

/** `text` with the comment of `old` (from its first '#' on), if only `old` has one. */
[[nodiscard]] QString withCommentOf(const QString& old, const QString& text);

/** The name of a file in a path that separates folders by '/'. */
[[nodiscard]] QString fileName(const QString& path);

/** The folder part of a path, up to and including its last '/'; empty without one. */
[[nodiscard]] QString folderOf(const QString& path);

/** Turns CR LF, and then every remaining CR, into LF. */
[[nodiscard]] QByteArray withLineFeeds(QByteArray bytes);

/** Turns every CR that no LF follows into LF: lines end in LF then, though some in CR LF. */
[[nodiscard]] QByteArray withoutLoneReturns(QByteArray bytes);

/** The bytes of an info file without a byte-order mark and lone CRs, trimmed. */
[[nodiscard]] QByteArray infoBytes(QByteArray bytes);

/** The same as text, with LF line ends: each byte one character. */
[[nodiscard]] QString decodeInfoText(QByteArray bytes);

/** Whether Latin-1 has every character of the text. */
[[nodiscard]] bool isLatin1(QStringView text);

/** The text as Latin-1 keeps it: every other character is '?'. */
[[nodiscard]] QString latin1Form(const QString& text);

/** Cuts a text into lines; each line keeps its LF. */
template <typename Text>
class BasicLineReader
{
public:
    explicit BasicLineReader(Text text)
        : m_text(text)
    {}

    /** Gives the next line; false at the end of the text. */
    bool next(Text* line);

    /** Where the next line starts. */
    [[nodiscard]] qsizetype position() const { return m_position; }

private:
    Text m_text;
    qsizetype m_position = 0;
};

using LineReader = BasicLineReader<QStringView>;

/** Whether the first word of the line begins with three asterisks. */
[[nodiscard]] bool isHeaderLine(QStringView line);

/** The first line of a text, with its LF. */
[[nodiscard]] QStringView firstLine(QStringView text);
[[nodiscard]] QLatin1String firstLine(QLatin1String text); ///< @overload

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
[[nodiscard]] QStringList preambleOf(QStringView text);
[[nodiscard]] QStringList preambleOf(QLatin1String text); ///< @overload

/** A line cut at its first ':'. */
template <typename Text>
struct BasicColonCut
{
    enum Kind {
        NoColon,   ///< the line holds no ':'
        Commented, ///< a '#' stands before the first ':'
        Pair,      ///< text before and after the ':'
    };

    Kind kind = NoColon;
    qsizetype colon = -1; ///< position of the first ':', -1 without one
    Text before;          ///< trimmed text before the ':', when a pair
    Text after;           ///< trimmed text after the ':', when a pair
};

using ColonCut = BasicColonCut<QStringView>;

[[nodiscard]] BasicColonCut<QStringView> cutAtColon(QStringView line);
[[nodiscard]] BasicColonCut<QLatin1String> cutAtColon(QLatin1String line); ///< @overload

/** The text of a line after its section marker; nothing without one. */
[[nodiscard]] std::optional<QStringView> afterMarker(QStringView line);

/** The section key of a header line (marker, key, ':', name); nothing when it is malformed. */
[[nodiscard]] std::optional<QStringView> headerKey(QStringView header);
[[nodiscard]] std::optional<QLatin1String> headerKey(QLatin1String header); ///< @overload

/**
 * The click number that a block gives: the name on its header line, with "X" in front unless it
 * starts with an ASCII letter, 31 characters at most. Nothing when the line does not end in LF.
 */
[[nodiscard]] std::optional<QString> clickNumberOf(QStringView block);

/**
 * Where the section that opens the text ends: at the next header mark on a line that does not begin
 * with '#', or at the end.
 */
[[nodiscard]] qsizetype sectionLength(QStringView text);

} // namespace ovparser::internal

#endif
