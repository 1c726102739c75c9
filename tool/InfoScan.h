// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * Where the lines, sections and values of a text file are in its bytes, by the library's grammar.
 *
 * Every text here is a view of Document::text(), so that one value can be replaced and each finding
 * has a line.
 */
#ifndef OVINFO_INFOSCAN_H
#define OVINFO_INFOSCAN_H

#include "Document.h"

#include "internal/text/InfoText.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>
#include <vector>

using ovparser::internal::cutAtColon;
using ovparser::internal::latin1View;
using ovparser::internal::trimmed;

/** A line, or a header after its mark, cut at its ':'. */
using LineCut = ovparser::internal::ColonCut;

/** A line without its line end; lines are numbered from 1. */
struct InfoLine
{
    int number = 0;
    QLatin1String text;
};

using InfoLines = std::vector<InfoLine>;

/** Whether bytes are UTF-8, without a byte order mark. */
bool isUtf8(QLatin1String bytes);

/** Cuts a text into lines. @param number  the number of its first line */
InfoLines linesOf(QLatin1String text, int number = 1);

/** The number of the line that holds a place. */
int lineAt(QLatin1String text, int place);

/** The text before the first header line: all of it when there is none. */
QLatin1String beforeHeaders(QLatin1String text);

/** What is wrong with a header line. */
enum class HeaderFault {
    None,
    NoColon,
    CommentedColon,
    ColonBeforeMark,
    EmptyKey,
    TooFar, ///< of a sequence: the ':' is too far after the next mark
    Spans,  ///< of a sequence: the ':' is after the next mark; the section is read all the same
};

/** A header line and the lines after it, up to the next one. */
struct InfoBlock
{
    QString key;
    InfoLine header; ///< its number is 0 for the lines before the first header line
    HeaderFault fault = HeaderFault::None;
    bool utf8 = false;   ///< whether the library reads the block as UTF-8
    bool inLine = false; ///< of a sequence: the mark stands after other text
    bool open = false;   ///< of a sequence: the header line has no line end
    InfoLines lines;
};

/** The blocks of an info text; the lines before the first header line come as the first one. */
std::vector<InfoBlock> blocksOf(QLatin1String text);

/** The blocks of a sequence; those that a missing ':' ends are not read, the last one says so. */
std::vector<InfoBlock> sequenceBlocksOf(const Document& document);

/** A text of a block, as the library reads it. */
QString decoded(const InfoBlock& block, QLatin1String text);

/** The block that a section is read from; nothing when there is none, as in an index. */
std::optional<InfoBlock> findBlock(const Document& document, const QString& section);

/** A value with its comment. */
struct ValuePlace
{
    QLatin1String text;
    bool utf8 = false;
};

/** Finds the place that decides the value of a key; nothing when there is none. */
std::optional<ValuePlace> findValue(const Document& document, const QString& section,
                                    const QString& key);

#endif
