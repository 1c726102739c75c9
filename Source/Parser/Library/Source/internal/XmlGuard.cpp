// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "XmlGuard.h"

#include "PLKeywords.h"
#include "QtVersion.h"
#include "TextFile.h"

#include <QtCore/QHash>
#include <QtCore/QIODevice>
#include <QtCore/QRegularExpression>

#include <QTextCodec>

#include <algorithm>
#include <cctype>

namespace ovparser::internal {

namespace {

bool isQuote(QChar character)
{
    return character == QLatin1Char('"') || character == QLatin1Char('\'');
}

/** How a file begins, and the encoding that this betrays; longer beginnings come first. */
struct Signature
{
    const char* bytes;
    int size;
    const char* encoding;
};

constexpr Signature signatures[] = {
    {"\x00\x00\xFE\xFF", 4, "UTF-32"}, {"\xFF\xFE\x00\x00", 4, "UTF-32"},
    {"\x00\x00\x00<", 4, "UTF-32BE"},  {"<\x00\x00\x00", 4, "UTF-32LE"},
    {"\xEF\xBB\xBF", 3, "UTF-8"},      {"\xFE\xFF", 2, "UTF-16"},
    {"\xFF\xFE", 2, "UTF-16"},         {"\x00<", 2, "UTF-16BE"},
    {"<\x00", 2, "UTF-16LE"},
};

/** The encoding that an XML declaration names; empty when there is none. */
QByteArray declaredEncoding(const QByteArray& bytes)
{
    constexpr Size longestDeclaration = 1024;
    static const QRegularExpression declaration(
        QStringLiteral("^<\\?xml[^>]*?\\sencoding\\s*=\\s*[\"']([A-Za-z0-9._:-]+)[\"']"));
    const Size size = std::min(bytes.size(), longestDeclaration);
    return declaration.match(QString::fromLatin1(bytes.constData(), size)).captured(1).toLatin1();
}

QByteArray encodingOf(const QByteArray& bytes)
{
    for (const Signature& signature : signatures) {
        if (bytes.startsWith(QByteArray::fromRawData(signature.bytes, signature.size)))
            return signature.encoding;
    }
    return declaredEncoding(bytes);
}

/**
 * The text of an XML file, decoded by its byte-order mark, its declaration, or as UTF-8. The DOM
 * could decode the bytes itself, but then nobody would know what text it sees.
 */
QString decode(const QByteArray& bytes)
{
    const QTextCodec* codec = QTextCodec::codecForName(encodingOf(bytes));
    if (codec == nullptr)
        codec = QTextCodec::codecForName(PLKeyword::Xml::Utf8);
    return codec->toUnicode(bytes);
}

/** The references that need no declaration. */
constexpr QLatin1String predefined[] = {
    PLKeyword::keyword("amp"),  PLKeyword::keyword("lt"),   PLKeyword::keyword("gt"),
    PLKeyword::keyword("quot"), PLKeyword::keyword("apos"),
};

bool isPredefined(QStringView name)
{
    return std::any_of(std::begin(predefined), std::end(predefined),
                       [&](QLatin1String each) { return name == each; });
}

/**
 * The name of the reference whose '&' is the first character of a text; null when no ';' ends it.
 * It is looked for no further than the next '&', so that many of them take no quadratic time.
 */
QStringView nameIn(QStringView text)
{
    const auto* const end = std::find_if(text.begin() + 1, text.end(), [](QChar c) {
        return c == QLatin1Char(';') || c == QLatin1Char('&');
    });
    if (end == text.end() || *end == QLatin1Char('&'))
        return {};
    return text.mid(1, end - text.begin() - 1);
}

bool isNumber(QStringView name)
{
    return name.startsWith(QLatin1Char('#'));
}

/** The character that a reference by number stands for: "#65", "#x41"; 0 when there is none. */
char32_t characterOf(QStringView name)
{
    const bool hexadecimal = name.startsWith(PLKeyword::keyword("#x"));
    const QStringView digits = name.mid(hexadecimal ? 2 : 1);
    const auto isDigit = [](QChar c) { return std::isxdigit(uchar(c.toLatin1())) != 0; };
    if (!std::all_of(digits.begin(), digits.end(), isDigit))
        return 0;
    const uint code = digits.toString().toUInt(nullptr, hexadecimal ? 16 : 10);
    return code <= QChar::LastValidCodePoint ? code : 0;
}

XmlHazard hazardAt(const QString& text, Size position, const char* message)
{
    const QStringView before = QStringView(text).left(position);
    const auto lineFeeds = std::count(before.begin(), before.end(), QLatin1Char('\n'));
    const Size lineStart =
        position == 0 ? 0 : text.lastIndexOf(QLatin1Char('\n'), position - 1) + 1;
    return {QLatin1String(message), int(lineFeeds) + 1, int(position - lineStart) + 1};
}

/**
 * Walks over the markup of a text as the parser will. Where the text is malformed the parser stops,
 * so what the walk makes of the rest does not matter.
 */
class MarkupWalk
{
public:
    explicit MarkupWalk(const QString& text)
        : m_text(text)
        , m_size(text.size())
        , m_largestExpansion(
              std::clamp(xmlExpansionFactor * qint64(m_size), minXmlExpansion, qint64(maxXmlBytes)))
    {}

    std::optional<XmlHazard> run()
    {
        while (m_hazard == nullptr && m_position < m_size) {
            passText();
            if (m_hazard == nullptr && m_position < m_size)
                passMarkup();
            if (m_hazard == nullptr && m_nodes > maxXmlNodes)
                m_hazard = "the document has too many nodes";
        }
        if (m_hazard == nullptr)
            checkDefaults();
        if (m_hazard != nullptr)
            return hazardAt(m_text, std::min(m_position, m_size), m_hazard);
        return std::nullopt;
    }

    /** The text, with the references resolved that the parser would cut to 16 bits. */
    [[nodiscard]] QString resolved() const
    {
        return m_resolvedEnd == 0 ? m_text : m_resolved + m_text.mid(m_resolvedEnd);
    }

private:
    [[nodiscard]] QStringView view(Size first, Size last) const
    {
        return QStringView(m_text).mid(first, last - first);
    }

    [[nodiscard]] bool at(QLatin1String mark) const
    {
        return view(m_position, m_size).startsWith(mark);
    }

    [[nodiscard]] Size find(QChar character, Size from) const
    {
        const Size found = m_text.indexOf(character, from);
        return found < 0 ? m_size : found;
    }

    void movePast(QLatin1String mark)
    {
        const Size found = m_text.indexOf(mark, m_position);
        m_position = found < 0 ? m_size : found + mark.size();
    }

    /** Passes a quoted text that begins at the position and gives what stands in the quotes. */
    QStringView passQuoted()
    {
        const Size first = m_position + 1;
        const Size last = find(m_text.at(m_position), first);
        m_position = std::min(last + 1, m_size);
        return view(first, last);
    }

    void passText();
    void passMarkup();
    bool passUnparsed();
    void passTag();
    void passDocumentType();
    void passDeclaration();
    void passCharacter();
    void passDefault();
    void passEntity();
    void passReferences(QStringView part, bool isUsed = true);
    void resolve(QStringView name);
    void expand(QStringView name, int depth);
    void expandValue(QStringView value, int depth);
    void checkDefaults();

    const QString& m_text;
    Size m_size;
    qint64 m_largestExpansion;
    Size m_position = 0;
    Size m_reference = -1;
    int m_depth = 0;
    int m_groups = 0;
    int m_entityCount = 0;
    bool m_inAttributes = false;
    bool m_hasParameter = false;
    qint64 m_nodes = 0;
    qint64 m_tags = 0;
    qint64 m_defaults = 0;
    qint64 m_defaultSize = 0;
    qint64 m_expansion = 0;
    QHash<QString, QStringView> m_entities;
    QString m_resolved;
    Size m_resolvedEnd = 0;
    const char* m_hazard = nullptr;
};

void MarkupWalk::passText()
{
    const Size first = m_position;
    m_position = find(QLatin1Char('<'), first);
    const QStringView text = view(first, m_position);
    m_nodes += text.trimmed().isEmpty() ? 0 : 1;
    passReferences(text);
}

void MarkupWalk::passMarkup()
{
    if (passUnparsed())
        return;
    if (at(PLKeyword::keyword("<!")))
        passDocumentType();
    else if (at(PLKeyword::keyword("</")))
        --m_depth;
    else
        passTag();
    if (m_hazard == nullptr)
        movePast(PLKeyword::keyword(">"));
}

bool MarkupWalk::passUnparsed()
{
    struct Span
    {
        QLatin1String start;
        QLatin1String end;
    };
    static constexpr Span spans[] = {
        {PLKeyword::keyword("<!--"), PLKeyword::keyword("-->")},
        {PLKeyword::keyword("<?"), PLKeyword::keyword("?>")},
        {PLKeyword::keyword("<![CDATA["), PLKeyword::keyword("]]>")},
    };
    const auto* const span = std::find_if(std::begin(spans), std::end(spans),
                                          [&](const Span& each) { return at(each.start); });
    if (span == std::end(spans))
        return false;
    ++m_nodes;
    m_position += span->start.size();
    movePast(span->end);
    return true;
}

void MarkupWalk::passTag()
{
    ++m_tags;
    int attributes = 0;
    while (m_hazard == nullptr && m_position < m_size &&
           m_text.at(m_position) != QLatin1Char('>')) {
        if (!isQuote(m_text.at(m_position))) {
            ++m_position;
            continue;
        }
        passReferences(passQuoted());
        if (++attributes > maxXmlAttributes)
            m_hazard = "an element has too many attributes";
    }
    m_nodes += 1 + 2 * qint64(attributes);
    if (m_hazard == nullptr && m_depth == maxXmlNesting)
        m_hazard = "elements are nested too deeply";
    if (m_text.at(m_position - 1) != QLatin1Char('/'))
        ++m_depth;
}

void MarkupWalk::passDocumentType()
{
    bool inSubset = false;
    ++m_position;
    while (m_position < m_size && m_hazard == nullptr) {
        const QChar character = m_text.at(m_position);
        if (character == QLatin1Char('>') && !inSubset)
            break;
        if (character == QLatin1Char('[') || character == QLatin1Char(']'))
            inSubset = character == QLatin1Char('[');
        passDeclaration();
    }
}

/** Passes a declaration of an entity, a quoted text, a comment, or one character of the rest. */
void MarkupWalk::passDeclaration()
{
    if (at(PLKeyword::keyword("<!ENTITY")))
        passEntity();
    else if (isQuote(m_text.at(m_position)))
        passDefault();
    else if (!passUnparsed())
        passCharacter();
}

void MarkupWalk::passCharacter()
{
    const QChar character = m_text.at(m_position);
    if (character == QLatin1Char('<') || character == QLatin1Char('>'))
        m_inAttributes = at(PLKeyword::keyword("<!ATTLIST"));
    if (character == QLatin1Char('(') && ++m_groups > maxXmlNesting)
        m_hazard = "content models are nested too deeply";
    if (character == QLatin1Char(')'))
        --m_groups;
    if (character == QLatin1Char('%') && m_hasParameter)
        m_hazard = "a parameter entity is used beside an internal one";
    ++m_position;
}

/** Passes a quoted text of a document type: the default of an attribute, or an address. */
void MarkupWalk::passDefault()
{
    const qint64 before = m_expansion;
    const QStringView value = passQuoted();
    if (m_inAttributes)
        passReferences(value);
    m_defaultSize += value.size() + 1 + m_expansion - before;
    ++m_nodes;
    if (++m_defaults > maxXmlAttributes)
        m_hazard = "too many defaults are declared";
}

/**
 * Passes a declaration up to its value, and the value unless it is the address of a file. The first
 * declaration of a name counts.
 */
void MarkupWalk::passEntity()
{
    static const QRegularExpression internal(
        QStringLiteral("^<!ENTITY\\s+(%?)\\s*([^%\\s]+)\\s*$"));
    if (++m_entityCount > maxXmlEntities)
        m_hazard = "too many entities are declared";
    const Size first = m_position;
    while (m_position < m_size && !isQuote(m_text.at(m_position)) &&
           m_text.at(m_position) != QLatin1Char('>'))
        ++m_position;
    const auto match = internal.match(m_text.mid(first, m_position - first));
    if (m_position == m_size || !isQuote(m_text.at(m_position)) || !match.hasMatch())
        return;
    const QStringView value = passQuoted();
    passReferences(value, false);
    if (m_hasParameter && std::find(value.begin(), value.end(), QLatin1Char('%')) != value.end())
        m_hazard = "a parameter entity is used beside an internal one";
    if (!match.captured(1).isEmpty())
        m_hasParameter = true;
    else if (!m_entities.contains(match.captured(2)))
        m_entities.insert(match.captured(2), value);
}

/** Resolves and, unless the part is the value of an entity, expands the references in a part. */
void MarkupWalk::passReferences(QStringView part, bool isUsed)
{
    const auto first = Size(part.data() - m_text.constData());
    const auto last = Size(first + part.size());
    if (m_reference < first)
        m_reference = find(QLatin1Char('&'), first);
    for (; m_reference < last; m_reference = find(QLatin1Char('&'), m_reference + 1)) {
        const QStringView name = nameIn(view(m_reference, last));
        if (isNumber(name))
            resolve(name);
        else if (isUsed)
            expand(name, 0);
        if (m_hazard != nullptr) {
            m_position = m_reference;
            return;
        }
    }
}

/** Resolves a reference, at the place of the last one found, to a character above U+FFFF. */
void MarkupWalk::resolve(QStringView name)
{
    const char32_t character = characterOf(name);
    if (!QChar::requiresSurrogates(character))
        return;
    m_resolved.append(m_text.constData() + m_resolvedEnd, m_reference - m_resolvedEnd);
    m_resolved += QString::fromUcs4(&character, 1);
    m_resolvedEnd = m_reference + Size(name.size()) + 2;
}

/** Counts what a reference in a text that is used expands to. */
void MarkupWalk::expand(QStringView name, int depth)
{
    if (isNumber(name) || isPredefined(name))
        return;
    const auto found = m_entities.constFind(name.toString());
    if (found == m_entities.cend()) {
        m_nodes += 2; // the parser ends a text, and adds a node for what it leaves out
        return;
    }
    m_expansion += found->size() + 1;
    if (depth == m_entities.size())
        m_hazard = "an entity refers to itself";
    else if (m_expansion > m_largestExpansion)
        m_hazard = "entities expand to too much text";
    else
        expandValue(*found, depth);
}

/**
 * Counts what the references in the value of an entity that is used expand to.
 *
 * The parser puts characters that are referred to by number into the value when it is declared, and
 * parses the value where it is used. So '<' opens an element there, and '&' a reference, which may
 * be to a character in its turn.
 */
void MarkupWalk::expandValue(QStringView value, int depth)
{
    bool isText = std::find(value.begin(), value.end(), QLatin1Char('<')) == value.end();
    const QChar* at = value.begin();
    while (isText && m_hazard == nullptr &&
           (at = std::find(at, value.end(), QLatin1Char('&'))) != value.end()) {
        QStringView name = nameIn({at, value.end()});
        at += name.size() + 1;
        if (isNumber(name)) {
            const char32_t character = characterOf(name);
            isText = character != 0 && character != U'<';
            if (character == U'&')
                name = nameIn({at, value.end()}); // its ';' stands where the '&' will stand
        }
        isText = isText && !name.isNull();
        expand(name, depth + 1);
    }
    if (!isText && m_hazard == nullptr)
        m_hazard = "an entity that is used holds markup";
}

/** Looks at what the defaults add up to that the parser gives to every element. */
void MarkupWalk::checkDefaults()
{
    if (strictXml && (m_expansion + m_defaultSize * m_tags > m_largestExpansion ||
                      m_nodes + 2 * m_defaults * m_tags > maxXmlNodes))
        m_hazard = "defaults expand to too much text";
}

} // namespace

std::optional<XmlHazard> readXml(QIODevice& device, QString* text)
{
    const QByteArray bytes = readBounded(device, maxXmlBytes);
    if (bytes.size() > maxXmlBytes)
        return XmlHazard{QLatin1String("the file is too large"), 1, 1};
    const QString decoded = decode(bytes);
    MarkupWalk walk(decoded);
    std::optional<XmlHazard> hazard = walk.run();
    *text = walk.resolved();
    return hazard;
}

} // namespace ovparser::internal
