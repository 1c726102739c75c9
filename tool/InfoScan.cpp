// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "InfoScan.h"

#include <algorithm>

namespace {

namespace Text = PLKeyword::Text;

/** The ':' of a sequence's mark may stand so many bytes behind the next mark, but not more. */
constexpr int maxSpanningKey = 128;

bool isWhiteSpace(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

int find(const QByteArray& bytes, char c, Span span)
{
    const auto* const end = bytes.constData() + span.end;
    const auto* const found = std::find(bytes.constData() + span.start, end, c);
    return found == end ? -1 : int(found - bytes.constData());
}

int findMark(const QByteArray& bytes, QLatin1String mark, Span span)
{
    const auto* const end = bytes.constData() + span.end;
    const auto* const found =
        std::search(bytes.constData() + span.start, end, mark.begin(), mark.end());
    return found == end ? -1 : int(found - bytes.constData());
}

bool isHeader(const QByteArray& bytes, Span line)
{
    int word = line.start;
    while (word < line.end && (bytes[word] == ' ' || bytes[word] == '\t'))
        ++word;
    const int size = int(Text::BareMarker.size());
    return line.end - word >= size &&
           findMark(bytes, Text::BareMarker, {word, word + size}) == word;
}

/** Takes the first line off a range. */
Span takeLine(const QByteArray& bytes, Span* range)
{
    int end = range->start;
    while (end < range->end && bytes[end] != '\n' && bytes[end] != '\r')
        ++end;
    const Span line = {range->start, end};
    const bool pair = end + 1 < range->end && bytes[end] == '\r' && bytes[end + 1] == '\n';
    range->start = end + (pair ? 2 : 1);
    return line;
}

/** Reads the key of a header line, or what is wrong with it. */
void readHeader(const QByteArray& bytes, InfoBlock* block)
{
    const Span line = block->header.span;
    const LineCut cut = cutLine(bytes, line);
    if (cut.kind != LineCut::Pair) {
        block->fault = cut.colon < 0 ? HeaderFault::NoColon : HeaderFault::CommentedColon;
        return;
    }
    int mark = findMark(bytes, Text::Marker, line);
    const int size = int(mark < 0 ? Text::BareMarker.size() : Text::Marker.size());
    if (mark < 0)
        mark = findMark(bytes, Text::BareMarker, line);
    if (mark + size > cut.colon) {
        block->fault = HeaderFault::ColonBeforeMark;
        return;
    }
    block->key = decoded(*block, textOf(bytes, {mark + size, cut.colon}));
    if (block->key.isEmpty())
        block->fault = HeaderFault::EmptyKey;
}

bool holdsLineEnd(const QByteArray& bytes, Span span)
{
    return find(bytes, '\n', span) >= 0 || find(bytes, '\r', span) >= 0;
}

/** A chunk of a sequence: from a mark up to the next one. */
InfoBlock chunkBlock(const QByteArray& bytes, Span chunk, int colon, int number)
{
    InfoBlock block;
    block.utf8 = isUtf8(bytes.mid(chunk.start, chunk.end - chunk.start));
    block.lines = linesOf(bytes, chunk, number);
    block.header = block.lines.front();
    block.open = !holdsLineEnd(bytes, chunk);
    if (!block.open) // a header line without a line end is read as a line of the section, too
        block.lines.erase(block.lines.begin());
    if (colon - chunk.end >= maxSpanningKey) { // many such keys would take quadratic time
        block.fault = HeaderFault::TooFar;
        return block;
    }
    block.key = decoded(block, textOf(bytes, {chunk.start + int(Text::Marker.size()), colon}));
    if (block.key.isEmpty())
        block.fault = HeaderFault::EmptyKey;
    else if (colon >= chunk.end)
        block.fault = HeaderFault::Spans;
    else if (cutLine(bytes, block.header.span).kind == LineCut::CommentedColon)
        block.fault = HeaderFault::CommentedColon;
    return block;
}

/** The last pair of a block that has the key: its value counts. */
std::optional<ValuePlace> lastValue(const QByteArray& bytes, const InfoBlock& block,
                                    const QString& key)
{
    for (auto line = block.lines.rbegin(); line != block.lines.rend(); ++line) {
        const LineCut cut = cutLine(bytes, line->span);
        if (cut.kind == LineCut::Pair &&
            decoded(block, textOf(bytes, cut.before)).toLower() == key.toLower())
            return ValuePlace{cut.after, block.utf8};
    }
    return std::nullopt;
}

/** The pairs of a line of an index: texts as they stand, cut at ';' and ':'. */
std::vector<LineCut> piecesOf(const QByteArray& bytes, Span line)
{
    std::vector<LineCut> pieces;
    int mark = findMark(bytes, Text::Marker, line);
    const int size = int(mark < 0 ? Text::BareMarker.size() : Text::Marker.size());
    if (mark < 0)
        mark = findMark(bytes, Text::BareMarker, line);
    for (int start = mark < 0 ? line.end + 1 : mark + size; start <= line.end;) {
        const int found = find(bytes, ';', {start, line.end});
        const int end = found < 0 ? line.end : found;
        const int colon = find(bytes, ':', {start, end});
        if (colon >= 0)
            pieces.push_back({LineCut::Pair, colon, {start, colon}, {colon + 1, end}});
        start = end + 1;
    }
    return pieces;
}

bool hasKey(const QByteArray& bytes, const LineCut& piece, const QString& key)
{
    const Span span = piece.before;
    const QString text = QString::fromLatin1(bytes.constData() + span.start, span.end - span.start);
    return text.toLower() == key.toLower();
}

/** The lines of an index become sections that are numbered; a line without the name is none. */
std::optional<ValuePlace> valueOfIndex(const Document& document, const QString& section,
                                       const QString& key)
{
    const QByteArray& bytes = document.bytes();
    const QString name = document.kind() == FileKind::StructureReferences
                             ? PLKeyword::Key::StructureReference
                             : PLKeyword::Key::FluorescentReference;
    int number = 0;
    for (const InfoLine& line : linesOf(bytes, {0, int(bytes.size())}, 1)) {
        const std::vector<LineCut> pieces = piecesOf(bytes, line.span);
        const auto named = std::find_if(pieces.begin(), pieces.end(), [&](const LineCut& piece) {
            return hasKey(bytes, piece, name);
        });
        if (named == pieces.end() ||
            (name + QString::number(++number)).toLower() != section.toLower())
            continue;
        const auto found = std::find_if(pieces.rbegin(), pieces.rend(), [&](const LineCut& piece) {
            return hasKey(bytes, piece, key);
        });
        return found == pieces.rend() ? std::nullopt : std::optional(ValuePlace{found->after});
    }
    return std::nullopt;
}

/** The blocks under the keys that the document gives them. */
std::vector<InfoBlock> documentBlocks(const Document& document)
{
    std::vector<InfoBlock> blocks = blocksOf(document.bytes(), document.textStart());
    if (document.startsWithoutHeader()) {
        blocks.front().key = PLKeyword::Section::CameraSystemInfo;
        return blocks;
    }
    blocks.erase(blocks.begin());
    if (document.kind() != FileKind::BackgroundSummary)
        return blocks;
    int number = 0;
    for (InfoBlock& block : blocks)
        block.key = PLKeyword::Section::BackgroundClick + QString::number(++number);
    return blocks;
}

} // namespace

bool isUtf8(const QByteArray& bytes)
{
    return QString::fromUtf8(bytes.constData(), bytes.size()).toUtf8() == bytes;
}

Span trimmed(const QByteArray& bytes, Span span)
{
    while (span.start < span.end && isWhiteSpace(bytes[span.start]))
        ++span.start;
    while (span.end > span.start && isWhiteSpace(bytes[span.end - 1]))
        --span.end;
    return span;
}

QByteArray textOf(const QByteArray& bytes, Span span)
{
    const Span text = trimmed(bytes, span);
    return bytes.mid(text.start, text.end - text.start);
}

InfoLines linesOf(const QByteArray& bytes, Span range, int number)
{
    InfoLines lines;
    while (range.start < range.end)
        lines.push_back({number++, takeLine(bytes, &range)});
    return lines;
}

int firstHeader(const QByteArray& bytes, int start)
{
    Span rest = {start, int(bytes.size())};
    while (rest.start < rest.end) {
        const Span line = takeLine(bytes, &rest);
        if (isHeader(bytes, line))
            return line.start;
    }
    return rest.end;
}

LineCut cutLine(const QByteArray& bytes, Span line)
{
    LineCut cut;
    const Span text = trimmed(bytes, line);
    cut.colon = find(bytes, ':', text);
    const int sign = find(bytes, '#', text);
    if (text.start == text.end)
        cut.kind = LineCut::Blank;
    else if (sign == text.start)
        cut.kind = LineCut::Comment;
    else if (cut.colon < 0)
        cut.kind = LineCut::NoColon;
    else if (sign >= 0 && sign < cut.colon)
        cut.kind = LineCut::CommentedColon;
    else
        cut = {LineCut::Pair, cut.colon, trimmed(bytes, {text.start, cut.colon}),
               trimmed(bytes, {cut.colon + 1, line.end})};
    return cut;
}

QString decoded(const InfoBlock& block, const QByteArray& text)
{
    return block.utf8 ? QString::fromUtf8(text.constData(), text.size())
                      : QString::fromLatin1(text.constData(), text.size());
}

std::vector<InfoBlock> blocksOf(const QByteArray& bytes, int start)
{
    std::vector<InfoBlock> blocks(1);
    for (const InfoLine& line : linesOf(bytes, {start, int(bytes.size())}, 1)) {
        if (!isHeader(bytes, line.span)) {
            blocks.back().lines.push_back(line);
            continue;
        }
        InfoBlock block;
        block.header = line;
        readHeader(bytes, &block);
        blocks.push_back(block);
    }
    return blocks;
}

std::vector<InfoBlock> sequenceBlocksOf(const QByteArray& bytes, int start)
{
    std::vector<InfoBlock> blocks;
    const int end = int(bytes.size());
    const InfoLines lines = linesOf(bytes, {start, end}, 1);
    auto line = lines.begin();
    int colon = 0;
    int next = 0;
    int previous = 0; // the line of the mark before
    for (int mark = findMark(bytes, Text::Marker, {0, end}); mark >= 0; mark = next) {
        const int keyStart = mark + int(Text::Marker.size());
        next = findMark(bytes, Text::Marker, {keyStart, end});
        while (line + 1 != lines.end() && (line + 1)->span.start <= mark)
            ++line;
        const int chunkEnd = next < 0 ? end : next;
        colon = colon < 0 ? -1 : find(bytes, ':', {std::max(colon, keyStart), end});
        if (colon < 0) {
            InfoBlock last;
            last.header = {line->number, {mark, chunkEnd}};
            last.fault = HeaderFault::NoColon;
            blocks.push_back(last);
            break;
        }
        InfoBlock block = chunkBlock(bytes, {mark, chunkEnd}, colon, line->number);
        block.inLine =
            previous == line->number || !textOf(bytes, {line->span.start, mark}).isEmpty();
        blocks.push_back(block);
        previous = line->number;
    }
    return blocks;
}

std::optional<InfoBlock> findBlock(const Document& document, const QString& section)
{
    if (document.isIndex() || document.spectral())
        return std::nullopt;
    const auto blocks = document.kind() == FileKind::Sequence
                            ? sequenceBlocksOf(document.bytes(), document.textStart())
                            : documentBlocks(document);
    for (const InfoBlock& block : blocks) {
        const bool read = block.fault == HeaderFault::None || block.fault == HeaderFault::Spans ||
                          block.fault == HeaderFault::CommentedColon;
        if (read && block.key.toLower() == section.toLower())
            return block;
    }
    return std::nullopt;
}

std::optional<ValuePlace> findValue(const Document& document, const QString& section,
                                    const QString& key)
{
    if (document.isIndex())
        return valueOfIndex(document, section, key);
    const auto block = findBlock(document, section);
    return block ? lastValue(document.bytes(), *block, key) : std::nullopt;
}
