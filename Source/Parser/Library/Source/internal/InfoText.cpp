#include "InfoText.h"

#include "PLKeywords.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace ovparser::internal {

namespace {

constexpr QChar colonSign(u':');
constexpr QChar commentSign(u'#');
constexpr QChar lineFeed(u'\n');

bool isWhiteSpace(QChar c)
{
    return c == u' ' || (c >= u'\t' && c <= u'\r');
}

bool isAsciiLetter(QChar c)
{
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
}

bool isWordDelimiter(QChar c)
{
    return c == u' ' || c == u'\t';
}

qsizetype indexOf(QStringView text, QChar c, qsizetype from = 0)
{
    const auto* const found = std::find(text.begin() + from, text.end(), c);
    return found == text.end() ? -1 : found - text.begin();
}

qsizetype indexOf(QStringView text, QLatin1String words, qsizetype from = 0)
{
    const auto* const found =
        std::search(text.begin() + from, text.end(), words.begin(), words.end(),
                    [](QChar a, char b) { return a == QLatin1Char(b); });
    return found == text.end() ? -1 : found - text.begin();
}

} // namespace

QStringView trimmed(QStringView text)
{
    const auto* first = text.begin();
    const auto* last = text.end();
    while (first != last && isWhiteSpace(*first))
        ++first;
    while (last != first && isWhiteSpace(*(last - 1)))
        --last;
    return {first, last};
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

// Nearly all keys are ASCII, which needs no Unicode tables; a key that nobody else holds is changed
// in place.
QString mapKey(QString key)
{
    const auto isUpper = [](QChar c) { return c >= u'A' && c <= u'Z'; };
    const auto isOther = [](QChar c) { return c.unicode() > 0x7F; };
    if (std::any_of(key.cbegin(), key.cend(), isOther))
        return std::move(key).toLower();
    if (std::none_of(key.cbegin(), key.cend(), isUpper))
        return key;
    for (QChar& c : key) {
        if (isUpper(c))
            c = QChar(c.unicode() | 0x20);
    }
    return key;
}

QString withoutComment(const QString& text)
{
    const auto comment = text.indexOf(commentSign);
    return comment < 0 ? text : trimmed(QStringView(text).left(comment)).toString();
}

QString withCommentOf(const QString& old, const QString& text)
{
    const auto comment = old.indexOf(commentSign);
    if (comment < 0 || text.contains(commentSign))
        return text;
    return text + QLatin1Char('\t') + old.mid(comment);
}

bool isKeySelected(const QString& candidate, const QString& key, const QString& subkey)
{
    if (subkey.isEmpty() && !subkey.isNull())
        return false;
    return candidate.startsWith(key, Qt::CaseInsensitive) &&
           candidate.contains(subkey, Qt::CaseInsensitive);
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

QString decodeInfoText(QByteArray bytes)
{
    const QByteArray text = withLineFeeds(std::move(bytes)).trimmed();
    return QString::fromLatin1(text.constData(), text.size());
}

QString latin1Form(const QString& text)
{
    ushort bits = 0;
    for (const QChar c : text)
        bits |= c.unicode();
    if (bits <= 0xFF)
        return text;
    const QByteArray bytes = text.toLatin1();
    return QString::fromLatin1(bytes.constData(), bytes.size());
}

bool LineReader::next(QStringView* line)
{
    if (m_position >= m_text.size())
        return false;
    const qsizetype end = indexOf(m_text, lineFeed, m_position);
    const qsizetype following = end < 0 ? m_text.size() : end + 1;
    *line = m_text.mid(m_position, following - m_position);
    m_position = following;
    return true;
}

bool isHeaderLine(QStringView line)
{
    const auto* const word = std::find_if_not(line.begin(), line.end(), isWordDelimiter);
    return QStringView(word, line.end()).startsWith(PLKeyword::Text::BareMarker);
}

QStringView firstLine(QStringView text)
{
    QStringView line = text.left(0);
    LineReader(text).next(&line);
    return line;
}

BlockReader::BlockReader(QStringView text)
    : m_text(text)
    , m_lines(text)
{
    moveToHeader();
}

bool BlockReader::next(QStringView* block)
{
    if (!m_header)
        return false;
    const qsizetype start = *m_header;
    moveToHeader();
    *block = m_text.mid(start, m_header.value_or(m_text.size()) - start);
    return true;
}

void BlockReader::moveToHeader()
{
    QStringView line;
    do {
        m_header = m_lines.position();
        if (!m_lines.next(&line)) {
            m_header.reset();
            return;
        }
    } while (!isHeaderLine(line));
}

QStringList preambleOf(QStringView text)
{
    QStringList preamble;
    LineReader lines(text);
    for (QStringView line; lines.next(&line) && !isHeaderLine(line);)
        preamble.append(trimmed(line).toString());
    return preamble;
}

ColonCut cutAtColon(QStringView line)
{
    const qsizetype colon = indexOf(line, colonSign);
    if (colon < 0)
        return {};
    const QStringView before = line.left(colon);
    if (indexOf(before, commentSign) >= 0)
        return {ColonCut::Commented, colon, {}, {}};
    return {ColonCut::Pair, colon, trimmed(before), trimmed(line.mid(colon + 1))};
}

std::optional<QStringView> afterMarker(QStringView line)
{
    for (const QLatin1String marker : {PLKeyword::Text::Marker, PLKeyword::Text::BareMarker}) {
        const qsizetype position = indexOf(line, marker);
        if (position >= 0)
            return line.mid(position + marker.size());
    }
    return std::nullopt;
}

std::optional<QStringView> headerKey(QStringView header)
{
    const ColonCut cut = cutAtColon(header);
    const auto content = afterMarker(header);
    if (cut.kind != ColonCut::Pair || !content)
        return std::nullopt;
    const qsizetype start = header.size() - content->size();
    if (start > cut.colon)
        return std::nullopt;
    return trimmed(header.mid(start, cut.colon - start));
}

std::optional<QString> clickNumberOf(QStringView block)
{
    constexpr int longest = 31;
    const QStringView header = firstLine(block);
    const qsizetype colon = indexOf(header, colonSign);
    if (colon < 0 || !header.endsWith(lineFeed))
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
        while (lineStart > 0 && text[lineStart - 1] != lineFeed)
            --lineStart;
        if (text[lineStart] != commentSign)
            return found;
        const qsizetype lineEnd = indexOf(text, lineFeed, found);
        if (lineEnd < 0)
            break;
        from = lineEnd;
    }
    return text.size();
}

} // namespace ovparser::internal
