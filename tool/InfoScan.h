// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * Where the lines, sections and values of a text file are in its bytes, by the library's rules.
 *
 * A line ends in CR LF, LF or CR. White space is that of ASCII. The library reads text; here the
 * same is found in bytes, so that one value can be replaced and each finding has a line.
 */
#ifndef OVINFO_INFOSCAN_H
#define OVINFO_INFOSCAN_H

#include "Document.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>
#include <vector>

/** A range of bytes: from its start up to, not including, its end. */
struct Span
{
    int start = 0;
    int end = 0;
};

/** A line without its line end; lines are numbered from 1. */
struct InfoLine
{
    int number = 0;
    Span span;
};

using InfoLines = std::vector<InfoLine>;

/** The bytes of a range, without white space at both ends. */
QByteArray textOf(const QByteArray& bytes, Span span);
Span trimmed(const QByteArray& bytes, Span span);

/** Whether bytes are UTF-8, without a byte order mark. */
bool isUtf8(const QByteArray& bytes);

/** Cuts a range into lines. @param number  the number of its first line */
InfoLines linesOf(const QByteArray& bytes, Span range, int number);

/** Where the first header line begins, from the start of a line on; the end when there is none. */
int firstHeader(const QByteArray& bytes, int start);

/** A line of a section, or of a header behind its mark. */
struct LineCut
{
    enum Kind {
        Blank,
        Comment,        ///< begins with '#'
        NoColon,        ///< holds no ':'
        CommentedColon, ///< has a '#' before its ':'
        Pair,
    };

    Kind kind = Blank;
    int colon = -1; ///< where the ':' is
    Span before;    ///< of a pair: the key, trimmed
    Span after;     ///< of a pair: the value with its comment, trimmed
};

LineCut cutLine(const QByteArray& bytes, Span line);

/** What is wrong with a header line. */
enum class HeaderFault {
    None,
    NoColon,
    CommentedColon,
    ColonBeforeMark,
    EmptyKey,
    TooFar, ///< of a sequence: the ':' is too far behind the next mark
    Spans,  ///< of a sequence: the ':' is behind the next mark; the section is read all the same
};

/** A header line and the lines behind it, up to the next one. */
struct InfoBlock
{
    QString key;
    InfoLine header; ///< its number is 0 for the lines before the first header line
    HeaderFault fault = HeaderFault::None;
    bool utf8 = false;   ///< whether the library reads the block as UTF-8
    bool inLine = false; ///< of a sequence: the mark stands behind other text
    bool open = false;   ///< of a sequence: the header line has no line end
    InfoLines lines;
};

/** The blocks of an info text; the lines before the first header line come as the first one. */
std::vector<InfoBlock> blocksOf(const QByteArray& bytes, int start);

/** The blocks of a sequence; those that a missing ':' ends are not read, the last one says so. */
std::vector<InfoBlock> sequenceBlocksOf(const QByteArray& bytes, int start);

/** A text of a block, as the library reads it. */
QString decoded(const InfoBlock& block, const QByteArray& text);

/** The block that a section is read from; nothing when there is none, as in an index. */
std::optional<InfoBlock> findBlock(const Document& document, const QString& section);

/** A place of a file that holds a value with its comment. */
struct ValuePlace
{
    Span span;
    bool utf8 = false;
};

/** Finds the place that decides the value of a key; nothing when there is none. */
std::optional<ValuePlace> findValue(const Document& document, const QString& section,
                                    const QString& key);

#endif
