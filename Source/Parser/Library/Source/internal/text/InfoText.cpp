// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "InfoText.h"

#include "PLKeywords.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace ovparser::internal {

namespace {

constexpr char colonSign = ':';
constexpr char commentSign = '#';
constexpr char lineFeed = '\n';
constexpr QLatin1String byteOrderMark = PLKeyword::keyword("\xEF\xBB\xBF");

bool isWhiteSpace(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool isAsciiLetter(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

bool isWordDelimiter(char c)
{
    return c == ' ' || c == '\t';
}

/** The first such byte of a range; its end without one. */
const char* find(const char* first, const char* last, char sign)
{
    const void* const found =
        first == last ? nullptr : std::memchr(first, sign, std::size_t(last - first));
    return found ? static_cast<const char*>(found) : last;
}

qsizetype indexOf(QLatin1String text, char sign)
{
    const char* const found = find(text.begin(), text.end(), sign);
    return found == text.end() ? -1 : found - text.begin();
}

QLatin1String part(QLatin1String text, qsizetype first, qsizetype last)
{
    return QLatin1String(text.begin() + first, text.begin() + last);
}

bool isLatin1(const QString& text)
{
    ushort bits = 0;
    for (const QChar c : text)
        bits |= c.unicode();
    return bits <= 0xFF;
}

/** Where the text after a section marker starts; null without one. */
const char* markerEnd(QLatin1String line)
{
    for (const QLatin1String marker : {PLKeyword::Text::Marker, PLKeyword::Text::BareMarker}) {
        const char* const found =
            std::search(line.begin(), line.end(), marker.begin(), marker.end());
        if (found != line.end())
            return found + marker.size();
    }
    return nullptr;
}

} // namespace

SourceText::SourceText(const QString& text)
    : bytes(text.toLatin1())
    , wide(isLatin1(text) ? QString() : text)
{}

QString SourceText::text(QLatin1String part) const
{
    if (wide.isNull() || part.isNull())
        return part;
    return wide.mid(int(part.data() - bytes.constData()), int(part.size()));
}

void appendText(QByteArray& out, const QString& text)
{
    const auto size = out.size();
    out.resize(size + text.size());
    std::transform(text.begin(), text.end(), out.data() + size,
                   [](QChar c) { return c.unicode() > 0xFF ? '?' : char(c.unicode()); });
}

QLatin1String trimmed(QLatin1String text)
{
    const char* first = text.begin();
    const char* last = text.end();
    while (first != last && isWhiteSpace(*first))
        ++first;
    while (last != first && isWhiteSpace(last[-1]))
        --last;
    return QLatin1String(first, last);
}

QString trimmed(const QString& text)
{
    const SourceText source(text);
    return source.text(trimmed(source.view()));
}

QString simplified(QLatin1String text)
{
    QString result;
    bool gap = false;
    for (const char c : trimmed(text)) {
        if (gap && !isWhiteSpace(c))
            result += QLatin1Char(' ');
        gap = isWhiteSpace(c);
        if (!gap)
            result += QLatin1Char(c);
    }
    return result;
}

QLatin1String withoutComment(QLatin1String text)
{
    const qsizetype comment = indexOf(text, commentSign);
    return comment < 0 ? text : trimmed(part(text, 0, comment));
}

QString withoutComment(const QString& text)
{
    const auto comment = text.indexOf(QLatin1Char(commentSign));
    return comment < 0 ? text : trimmed(text.left(comment));
}

QString withCommentOf(const QString& old, const QString& text)
{
    const auto comment = old.indexOf(QLatin1Char(commentSign));
    if (comment < 0 || text.contains(QLatin1Char(commentSign)))
        return text;
    return text + QLatin1Char('\t') + old.mid(comment);
}

QString fileNameInPath(const QString& path)
{
    return path.mid(path.lastIndexOf(QLatin1Char('/')) + 1);
}

QString folderInPath(const QString& path)
{
    return path.left(path.lastIndexOf(QLatin1Char('/')) + 1);
}

QByteArray withLineFeeds(QByteArray bytes)
{
    const char* const end = bytes.data() + bytes.size();
    const char* in = find(bytes.constData(), end, '\r');
    char* out = bytes.data() + (in - bytes.constData());
    while (in != end) {
        *out++ = lineFeed;
        in += end - in > 1 && in[1] == lineFeed ? 2 : 1;
        const char* const next = find(in, end, '\r');
        std::memmove(out, in, std::size_t(next - in));
        out += next - in;
        in = next;
    }
    bytes.truncate(int(out - bytes.constData()));
    return bytes;
}

// Nearly no file has one, so that looking for one must be cheap: here the compiler takes many
// characters at once. A NUL follows the last one.
QByteArray withoutLoneReturns(QByteArray bytes)
{
    const char* const text = bytes.constData();
    uchar found = 0;
    for (int i = 0; i < bytes.size(); ++i)
        found |= uchar(text[i] == '\r') & uchar(text[i + 1] != lineFeed);
    if (found == 0)
        return bytes;
    for (char& c : bytes)
        c = c == '\r' && (&c)[1] != lineFeed ? lineFeed : c;
    return bytes;
}

QByteArray infoBytes(QByteArray bytes)
{
    QByteArray text = withoutLoneReturns(std::move(bytes));
    if (text.startsWith(byteOrderMark.data()))
        text.remove(0, int(byteOrderMark.size()));
    return std::move(text).trimmed();
}

QString decodeInfoText(QByteArray bytes)
{
    return latin1View(infoBytes(withLineFeeds(std::move(bytes))));
}

bool LineReader::next(QLatin1String* line)
{
    *line = firstLine(m_unread);
    m_unread = QLatin1String(line->end(), m_unread.end());
    return line->size() > 0;
}

bool isHeaderLine(QLatin1String line)
{
    const QLatin1String marker = PLKeyword::Text::BareMarker;
    const char* const word =
        std::find_if(line.begin(), line.end(), [](char c) { return !isWordDelimiter(c); });
    return QLatin1String(word, line.end()).startsWith(marker);
}

QLatin1String firstLine(QLatin1String text)
{
    const qsizetype end = indexOf(text, lineFeed);
    return part(text, 0, end < 0 ? text.size() : end + 1);
}

BlockReader::BlockReader(QLatin1String text)
    : m_begin(text.begin())
    , m_end(text.end())
    , m_header(headerFrom(m_begin))
{}

bool BlockReader::next(QLatin1String* block)
{
    if (m_header == m_end)
        return false;
    const char* const start = m_header;
    m_header = headerFrom(find(start, m_end, lineFeed));
    *block = QLatin1String(start, m_header);
    return true;
}

// Asterisks are rare: from each, the way back over blanks and TABs tells whether a line starts.
const char* BlockReader::headerFrom(const char* place) const
{
    for (const char* star = find(place, m_end, '*'); star != m_end; star = find(star, m_end, '*')) {
        const char* lineStart = star;
        while (lineStart != m_begin && isWordDelimiter(lineStart[-1]))
            --lineStart;
        const bool starts = lineStart == m_begin || lineStart[-1] == lineFeed;
        if (starts && QLatin1String(star, m_end).startsWith(PLKeyword::Text::BareMarker))
            return lineStart;
        star = std::find_if(star, m_end, [](char c) { return c != '*'; });
    }
    return m_end;
}

QStringList preambleOf(const SourceText& text)
{
    QStringList lines;
    LineReader reader(text.view());
    for (QLatin1String line; reader.next(&line) && !isHeaderLine(line);)
        lines.append(text.text(trimmed(line)));
    return lines;
}

ColonCut cutAtColon(QLatin1String line)
{
    const qsizetype colon = indexOf(line, colonSign);
    if (colon < 0)
        return {};
    const QLatin1String before = part(line, 0, colon);
    if (indexOf(before, commentSign) >= 0)
        return {ColonCut::Commented, colon, {}, {}};
    return {ColonCut::Pair, colon, trimmed(before), trimmed(part(line, colon + 1, line.size()))};
}

std::optional<QLatin1String> afterMarker(QLatin1String line)
{
    const char* const start = markerEnd(line);
    return start ? std::optional(QLatin1String(start, line.end())) : std::nullopt;
}

std::optional<QLatin1String> headerKey(QLatin1String header)
{
    const ColonCut cut = cutAtColon(header);
    const char* const start = markerEnd(header);
    const char* const colon = header.begin() + cut.colon;
    if (cut.kind != ColonCut::Pair || !start || start > colon)
        return std::nullopt;
    return trimmed(QLatin1String(start, colon));
}

std::optional<QString> clickNumberOf(const SourceText& text, QLatin1String block)
{
    constexpr int longest = 31;
    const QLatin1String header = firstLine(block);
    const qsizetype colon = indexOf(header, colonSign);
    if (colon < 0 || !header.endsWith(QLatin1Char(lineFeed)))
        return std::nullopt;
    const QLatin1String name = trimmed(part(header, colon + 1, header.size()));
    const bool prefixed = name.size() > 0 && isAsciiLetter(*name.begin());
    const QString number = (prefixed ? QString() : QStringLiteral("X")) + text.text(name);
    return number.left(longest);
}

} // namespace ovparser::internal
