// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "InfoScan.h"

#include <algorithm>

using namespace ovparser::internal;

namespace {

namespace Text = PLKeyword::Text;

QLatin1String view(const char* begin, const char* end)
{
    return QLatin1String(begin, end);
}

const char* findMark(QLatin1String text, QLatin1String mark)
{
    return std::search(text.begin(), text.end(), mark.begin(), mark.end());
}

QLatin1String withoutLineEnd(QLatin1String line)
{
    const char* end = line.end();
    for (const char sign : {'\n', '\r'}) {
        if (end != line.begin() && end[-1] == sign)
            --end;
    }
    return view(line.begin(), end);
}

HeaderFault faultOf(QLatin1String header)
{
    const LineCut cut = cutAtColon(header);
    if (cut.kind != LineCut::Pair)
        return cut.kind == LineCut::NoColon ? HeaderFault::NoColon : HeaderFault::CommentedColon;
    const auto key = headerKey(header);
    if (!key)
        return HeaderFault::ColonBeforeMark;
    return key->size() == 0 ? HeaderFault::EmptyKey : HeaderFault::None;
}

InfoBlock textBlock(QLatin1String text, int number)
{
    InfoBlock block;
    block.lines = linesOf(text, number);
    block.header = block.lines.front();
    block.lines.erase(block.lines.begin());
    block.fault = faultOf(block.header.text);
    if (block.fault == HeaderFault::None)
        block.key = *headerKey(block.header.text);
    return block;
}

/** A chunk of a sequence: from a mark up to the next one. @param key  up to its ':' */
InfoBlock chunkBlock(QLatin1String chunk, QLatin1String key, int number)
{
    InfoBlock block;
    block.utf8 = isUtf8(chunk);
    block.lines = linesOf(chunk, number);
    block.header = block.lines.front();
    block.open = !firstLine(chunk).endsWith(QLatin1Char('\n'));
    if (!block.open) // a header line without a line end is read as a line of the section, too
        block.lines.erase(block.lines.begin());
    const auto beyond = key.size() + Text::Marker.size() - chunk.size();
    if (beyond >= maxSpanningKey) { // many such keys would take quadratic time
        block.fault = HeaderFault::TooFar;
        return block;
    }
    block.key = decoded(block, trimmed(key));
    if (block.key.isEmpty())
        block.fault = HeaderFault::EmptyKey;
    else if (beyond >= 0)
        block.fault = HeaderFault::Spans;
    else if (cutAtColon(block.header.text).kind == LineCut::Commented)
        block.fault = HeaderFault::CommentedColon;
    return block;
}

/** The last pair of a block that has the key: its value counts. */
std::optional<ValuePlace> lastValue(const InfoBlock& block, const QString& key)
{
    for (auto line = block.lines.rbegin(); line != block.lines.rend(); ++line) {
        const LineCut cut = cutAtColon(line->text);
        if (cut.kind == LineCut::Pair && decoded(block, cut.before).toLower() == key.toLower())
            return ValuePlace{cut.after, block.utf8};
    }
    return std::nullopt;
}

/** What follows the mark of a line; empty without one. */
QLatin1String afterMark(QLatin1String line)
{
    for (const QLatin1String mark : {Text::Marker, Text::BareMarker}) {
        const char* const found = findMark(line, mark);
        if (found != line.end())
            return view(found + mark.size(), line.end());
    }
    return {};
}

/** A pair of a line of an index: texts as they stand. */
struct Piece
{
    QString key;
    QLatin1String value;
};

/** The pairs of a line of an index, cut at ';' and ':'. */
std::vector<Piece> piecesOf(QLatin1String line)
{
    std::vector<Piece> pieces;
    const QLatin1String text = afterMark(line);
    for (const char* start = text.begin(); start < text.end();) {
        const char* const end = std::find(start, text.end(), ';');
        const char* const colon = std::find(start, end, ':');
        if (colon != end)
            pieces.push_back({view(start, colon), view(colon + 1, end)});
        start = end + 1;
    }
    return pieces;
}

/** The lines of an index become sections that are numbered; a line without the name is none. */
std::optional<ValuePlace> valueOfIndex(const Document& document, const QString& section,
                                       const QString& key)
{
    const auto is = [](const QString& wanted) {
        return [&wanted](const Piece& piece) { return piece.key.toLower() == wanted.toLower(); };
    };
    const QString name = document.referenceName();
    int number = 0;
    for (const InfoLine& line : linesOf(document.text())) {
        const std::vector<Piece> pieces = piecesOf(line.text);
        if (std::none_of(pieces.begin(), pieces.end(), is(name)) ||
            (name + QString::number(++number)).toLower() != section.toLower())
            continue;
        const auto found = std::find_if(pieces.rbegin(), pieces.rend(), is(key));
        return found == pieces.rend() ? std::nullopt : std::optional(ValuePlace{found->value});
    }
    return std::nullopt;
}

/** The blocks under the keys that the document gives them. */
std::vector<InfoBlock> documentBlocks(const Document& document)
{
    if (document.kind() == FileKind::Sequence)
        return sequenceBlocksOf(document);
    std::vector<InfoBlock> blocks = blocksOf(document.text());
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

bool isUtf8(QLatin1String bytes)
{
    return latin1View(QString::fromUtf8(bytes.data(), int(bytes.size())).toUtf8()) == bytes;
}

InfoLines linesOf(QLatin1String text, int number)
{
    InfoLines lines;
    LineReader reader(text);
    for (QLatin1String line; reader.next(&line);)
        lines.push_back({number++, withoutLineEnd(line)});
    return lines;
}

int lineAt(QLatin1String text, int place)
{
    const auto last = qMax(0, qMin(place, int(text.size()) - 1));
    return 1 + int(std::count(text.begin(), text.begin() + last, '\n'));
}

QLatin1String beforeHeaders(QLatin1String text)
{
    QLatin1String block;
    const bool found = BlockReader(text).next(&block);
    return found ? view(text.begin(), block.begin()) : text;
}

QString decoded(const InfoBlock& block, QLatin1String text)
{
    return block.utf8 ? QString::fromUtf8(text.data(), int(text.size())) : QString(text);
}

std::vector<InfoBlock> blocksOf(QLatin1String text)
{
    std::vector<InfoBlock> blocks(1);
    blocks.front().lines = linesOf(beforeHeaders(text));
    int number = 1 + int(blocks.front().lines.size());
    BlockReader reader(text);
    for (QLatin1String block; reader.next(&block);) {
        blocks.push_back(textBlock(block, number));
        number += 1 + int(blocks.back().lines.size());
    }
    return blocks;
}

std::vector<InfoBlock> sequenceBlocksOf(const Document& document)
{
    std::vector<InfoBlock> blocks;
    const QLatin1String text = document.text();
    const InfoLines lines = linesOf(text);
    auto line = lines.begin();
    const char* colon = text.begin();
    const char* next = nullptr;
    for (const char* mark = findMark(text, Text::Marker); mark != text.end(); mark = next) {
        const char* const keyStart = mark + Text::Marker.size();
        next = findMark(view(keyStart, text.end()), Text::Marker);
        while (line + 1 != lines.end() && (line + 1)->text.begin() <= mark)
            ++line;
        colon = std::find(std::max(colon, keyStart), text.end(), ':');
        if (colon == text.end()) {
            blocks.emplace_back();
            blocks.back().header = {line->number, view(mark, next)};
            blocks.back().fault = HeaderFault::NoColon;
            break;
        }
        // The library makes the key of the bytes as they stand: a CR in it stays.
        const char* const key = document.bytes().constData() + document.placeOf(keyStart);
        blocks.push_back(
            chunkBlock(view(mark, next), view(key, key + (colon - keyStart)), line->number));
        blocks.back().inLine = trimmed(view(line->text.begin(), mark)).size() > 0;
    }
    return blocks;
}

std::optional<InfoBlock> findBlock(const Document& document, const QString& section)
{
    if (document.isIndex() || document.spectral())
        return std::nullopt;
    for (const InfoBlock& block : documentBlocks(document)) {
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
    return block ? lastValue(*block, key) : std::nullopt;
}
