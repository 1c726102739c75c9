/**
 * @file
 * The grammar of the info-file text: lines, blocks, header lines and body lines.
 *
 * Everything here looks at text without copying it; a returned view is good as long as the text.
 * White space is ASCII white space: a no-break space that a user typed is text and is kept.
 */
#ifndef OVPARSER_INTERNAL_INFOTEXT_H
#define OVPARSER_INTERNAL_INFOTEXT_H

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QStringView>

#include <optional>

namespace ovparser::internal {

/** The text without white space at both ends. */
[[nodiscard]] QStringView trimmed(QStringView text);

/** The text with every run of white space as one blank, and none at both ends. */
[[nodiscard]] QString simplified(QStringView text);

/** The text before the first '#', trimmed; a text without '#' as it is. */
[[nodiscard]] QString withoutComment(const QString& text);

/** `text` with the comment of `old` (from its first '#' on), if only `old` has one. */
[[nodiscard]] QString withCommentOf(const QString& old, const QString& text);

/** The form of a key under which maps hold it. */
[[nodiscard]] QString mapKey(QString key);

/**
 * Whether a candidate starts with a key and contains a subkey, in any letter case. A null subkey is
 * contained in every candidate, an empty one in none.
 */
[[nodiscard]] bool isKeySelected(const QString& candidate, const QString& key,
                                 const QString& subkey);

/** The name of a file in a path that separates folders by '/'. */
[[nodiscard]] QString fileName(const QString& path);

/** The folder part of a path, up to and including its last '/'; empty without one. */
[[nodiscard]] QString folderOf(const QString& path);

/** Turns CR LF, and then every remaining CR, into LF. */
[[nodiscard]] QByteArray withLineFeeds(QByteArray bytes);

/** The bytes of an info file as text: trimmed, with LF line ends, each byte one character. */
[[nodiscard]] QString decodeInfoText(QByteArray bytes);

/** The text as Latin-1 keeps it: every other character is '?'. */
[[nodiscard]] QString latin1Form(const QString& text);

/** Cuts a text into lines; each line keeps its LF. */
class LineReader
{
public:
    explicit LineReader(QStringView text)
        : m_text(text)
    {}

    /** Gives the next line; false at the end of the text. */
    bool next(QStringView* line);

    /** Where the next line starts. */
    [[nodiscard]] qsizetype position() const { return m_position; }

private:
    QStringView m_text;
    qsizetype m_position = 0;
};

/** Whether the first word of the line begins with three asterisks. */
[[nodiscard]] bool isHeaderLine(QStringView line);

/** The first line of a text, with its LF. */
[[nodiscard]] QStringView firstLine(QStringView text);

/** Cuts a text into blocks: a header line and what follows up to the next header line. */
class BlockReader
{
public:
    explicit BlockReader(QStringView text);

    /** Gives the next block; false when there is none. */
    bool next(QStringView* block);

private:
    void moveToHeader();

    QStringView m_text;
    LineReader m_lines;
    std::optional<qsizetype> m_header;
};

/** The lines before the first header line, each trimmed. */
[[nodiscard]] QStringList preambleOf(QStringView text);

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
    QStringView before;   ///< trimmed text before the ':', when a pair
    QStringView after;    ///< trimmed text after the ':', when a pair
};

[[nodiscard]] ColonCut cutAtColon(QStringView line);

/** The text of a line after its section marker; nothing without one. */
[[nodiscard]] std::optional<QStringView> afterMarker(QStringView line);

/** The section key of a header line (marker, key, ':', name); nothing when it is malformed. */
[[nodiscard]] std::optional<QStringView> headerKey(QStringView header);

/**
 * The click number that a block gives: the name on its header line, with "X" in front unless it
 * starts with an ASCII letter, 31 characters at most. Nothing when the line does not end in LF.
 */
[[nodiscard]] std::optional<QString> clickNumberOf(QStringView block);

/** Where the section that opens the text ends: the next header mark not behind a '#', or the end.
 */
[[nodiscard]] qsizetype sectionLength(QStringView text);

} // namespace ovparser::internal

#endif
