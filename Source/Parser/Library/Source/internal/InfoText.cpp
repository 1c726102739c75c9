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

constexpr ushort code(QChar c)
{
    return c.unicode();
}

constexpr ushort code(char c)
{
    return uchar(c);
}

template <typename Character>
bool isWhiteSpace(Character c)
{
    return code(c) == ' ' || (code(c) >= '\t' && code(c) <= '\r');
}

bool isAsciiLetter(QChar c)
{
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
}

template <typename Character>
bool isWordDelimiter(Character c)
{
    return code(c) == ' ' || code(c) == '\t';
}

qsizetype indexOf(QStringView text, char sign, qsizetype from = 0)
{
    const auto* const found = std::find(text.begin() + from, text.end(), QLatin1Char(sign));
    return found == text.end() ? -1 : found - text.begin();
}

/** The first such byte of a range; its end without one. */
const char* find(const char* first, const char* last, char sign)
{
    const void* const found = std::memchr(first, sign, std::size_t(last - first));
    return found ? static_cast<const char*>(found) : last;
}

qsizetype indexOf(QLatin1String text, char sign, qsizetype from = 0)
{
    const char* const found = find(text.begin() + from, text.end(), sign);
    return found == text.end() ? -1 : found - text.begin();
}

template <typename Text>
qsizetype indexOf(Text text, QLatin1String words, qsizetype from = 0)
{
    const auto* const found =
        std::search(text.begin() + from, text.end(), words.begin(), words.end(),
                    [](auto a, char b) { return code(a) == code(b); });
    return found == text.end() ? -1 : found - text.begin();
}

template <typename Text>
Text trimmedText(Text text)
{
    const auto* first = text.begin();
    const auto* last = text.end();
    while (first != last && isWhiteSpace(*first))
        ++first;
    while (last != first && isWhiteSpace(*(last - 1)))
        --last;
    return Text(first, last);
}

template <typename Text>
Text part(Text text, qsizetype first, qsizetype last)
{
    return Text(text.begin() + first, text.begin() + last);
}

template <typename Text>
Text firstLineOf(Text text)
{
    const qsizetype end = indexOf(text, lineFeed);
    return part(text, 0, end < 0 ? text.size() : end + 1);
}

template <typename Text>
bool isHeader(Text line)
{
    const QLatin1String marker = PLKeyword::Text::BareMarker;
    const auto* const word =
        std::find_if(line.begin(), line.end(), [](auto c) { return !isWordDelimiter(c); });
    return line.end() - word >= marker.size() &&
           std::equal(marker.begin(), marker.end(), word,
                      [](char a, auto b) { return code(a) == code(b); });
}

template <typename Text>
BasicColonCut<Text> cut(Text line)
{
    const qsizetype colon = indexOf(line, colonSign);
    if (colon < 0)
        return {};
    const Text before = part(line, 0, colon);
    if (indexOf(before, commentSign) >= 0)
        return {BasicColonCut<Text>::Commented, colon, {}, {}};
    return {BasicColonCut<Text>::Pair, colon, trimmedText(before),
            trimmedText(part(line, colon + 1, line.size()))};
}

/** Where the text after a section marker starts; -1 without one. */
template <typename Text>
qsizetype markerEnd(Text line)
{
    for (const QLatin1String marker : {PLKeyword::Text::Marker, PLKeyword::Text::BareMarker}) {
        const qsizetype position = indexOf(line, marker);
        if (position >= 0)
            return position + marker.size();
    }
    return -1;
}

template <typename Text>
std::optional<Text> keyOfHeader(Text header)
{
    const auto parts = cut(header);
    const qsizetype start = markerEnd(header);
    if (parts.kind != parts.Pair || start < 0 || start > parts.colon)
        return std::nullopt;
    return trimmedText(part(header, start, parts.colon));
}

template <typename Text>
QStringList preamble(Text text)
{
    QStringList lines;
    BasicLineReader<Text> reader(text);
    for (Text line; reader.next(&line) && !isHeader(line);)
        lines.append(toText(trimmedText(line)));
    return lines;
}

} // namespace

QString toText(QStringView text)
{
    return text.toString();
}

QString toText(QLatin1String text)
{
    return text;
}

void appendText(QString& out, QLatin1String text)
{
    out.append(text);
}

void appendText(QString& out, const QString& text)
{
    out.append(text);
}

void appendText(QByteArray& out, QLatin1String text)
{
    out.append(text.data(), int(text.size()));
}

void appendText(QByteArray& out, const QString& text)
{
    out.append(text.toLatin1());
}

QStringView trimmed(QStringView text)
{
    return trimmedText(text);
}

QLatin1String trimmed(QLatin1String text)
{
    return trimmedText(text);
}

QString simplified(QStringView text)
{
    QString result;
    bool gap = false;
    for (const QChar c : text) {
        if (!isWhiteSpace(c)) {
            if (gap && !result.isEmpty())
                result += QLatin1Char(' ');
            result += c;
        }
        gap = isWhiteSpace(c);
    }
    return result;
}

QString withoutComment(const QString& text)
{
    const auto comment = text.indexOf(QLatin1Char(commentSign));
    return comment < 0 ? text : trimmed(QStringView(text).left(comment)).toString();
}

QLatin1String withoutComment(QLatin1String text)
{
    const qsizetype comment = indexOf(text, commentSign);
    return comment < 0 ? text : trimmed(part(text, 0, comment));
}

QString withCommentOf(const QString& old, const QString& text)
{
    const auto comment = old.indexOf(QLatin1Char(commentSign));
    if (comment < 0 || text.contains(QLatin1Char(commentSign)))
        return text;
    return text + QLatin1Char('\t') + old.mid(comment);
}

QString fileName(const QString& path)
{
    return path.mid(path.lastIndexOf(QLatin1Char('/')) + 1);
}

QString folderOf(const QString& path)
{
    return path.left(path.lastIndexOf(QLatin1Char('/')) + 1);
}

QByteArray withLineFeeds(QByteArray bytes)
{
    const char* const end = bytes.data() + bytes.size();
    const auto nextReturn = [end](const char* from) {
        const auto* const found =
            static_cast<const char*>(std::memchr(from, '\r', std::size_t(end - from)));
        return found ? found : end;
    };
    const char* in = nextReturn(bytes.constData());
    char* out = bytes.data() + (in - bytes.constData());
    while (in != end) {
        *out++ = '\n';
        in += end - in > 1 && in[1] == '\n' ? 2 : 1;
        const char* const next = nextReturn(in);
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
    const auto isLone = [](const char* place) { return place[0] == '\r' && place[1] != '\n'; };
    uchar found = 0;
    for (int i = 0; i < bytes.size(); ++i)
        found |= uchar(text[i] == '\r') & uchar(text[i + 1] != '\n');
    if (found == 0)
        return bytes;
    for (char& c : bytes)
        c = isLone(&c) ? lineFeed : c;
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

QString latin1Form(const QString& text)
{
    return isLatin1(text) ? text : QString(latin1View(text.toLatin1()));
}

bool isLatin1(QStringView text)
{
    ushort bits = 0;
    for (const QChar c : text)
        bits |= c.unicode();
    return bits <= 0xFF;
}

template <typename Text>
bool BasicLineReader<Text>::next(Text* line)
{
    if (m_position >= m_text.size())
        return false;
    const qsizetype end = indexOf(m_text, lineFeed, m_position);
    const qsizetype following = end < 0 ? m_text.size() : end + 1;
    *line = part(m_text, m_position, following);
    m_position = following;
    return true;
}

template class BasicLineReader<QStringView>;
template class BasicLineReader<QLatin1String>;

bool isHeaderLine(QStringView line)
{
    return isHeader(line);
}

QStringView firstLine(QStringView text)
{
    return firstLineOf(text);
}

QLatin1String firstLine(QLatin1String text)
{
    return firstLineOf(text);
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
    const QLatin1String marker = PLKeyword::Text::BareMarker;
    for (const char* star = find(place, m_end, '*'); star != m_end; star = find(star, m_end, '*')) {
        const char* lineStart = star;
        while (lineStart != m_begin && isWordDelimiter(lineStart[-1]))
            --lineStart;
        const bool starts = lineStart == m_begin || lineStart[-1] == lineFeed;
        if (starts && m_end - star >= marker.size() &&
            std::equal(marker.begin(), marker.end(), star))
            return lineStart;
        star = std::find_if(star, m_end, [](char c) { return c != '*'; });
    }
    return m_end;
}

QStringList preambleOf(QStringView text)
{
    return preamble(text);
}

QStringList preambleOf(QLatin1String text)
{
    return preamble(text);
}

BasicColonCut<QStringView> cutAtColon(QStringView line)
{
    return cut(line);
}

BasicColonCut<QLatin1String> cutAtColon(QLatin1String line)
{
    return cut(line);
}

std::optional<QStringView> afterMarker(QStringView line)
{
    const qsizetype start = markerEnd(line);
    return start < 0 ? std::nullopt : std::optional(line.mid(start));
}

std::optional<QStringView> headerKey(QStringView header)
{
    return keyOfHeader(header);
}

std::optional<QLatin1String> headerKey(QLatin1String header)
{
    return keyOfHeader(header);
}

std::optional<QString> clickNumberOf(QStringView block)
{
    constexpr int longest = 31;
    const QStringView header = firstLine(block);
    const qsizetype colon = indexOf(header, colonSign);
    if (colon < 0 || !header.endsWith(QLatin1Char(lineFeed)))
        return std::nullopt;
    const QStringView name = trimmed(header.mid(colon + 1));
    const bool prefixed = !name.isEmpty() && isAsciiLetter(name.front());
    const QString number = prefixed ? name.toString() : QLatin1Char('X') + name.toString();
    return number.left(longest);
}

qsizetype sectionLength(QStringView text)
{
    qsizetype from = PLKeyword::Text::Marker.size();
    while (from < text.size()) {
        const qsizetype found = indexOf(text, PLKeyword::Text::Marker, from);
        if (found < 0)
            break;
        qsizetype lineStart = found;
        while (lineStart > 0 && code(text[lineStart - 1]) != lineFeed)
            --lineStart;
        if (code(text[lineStart]) != commentSign)
            return found;
        const qsizetype lineEnd = indexOf(text, lineFeed, found);
        if (lineEnd < 0)
            break;
        from = lineEnd;
    }
    return text.size();
}

} // namespace ovparser::internal
