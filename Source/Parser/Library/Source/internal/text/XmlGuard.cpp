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

/** The encoding of an XML file without a byte-order mark; empty when nothing tells it. */
QByteArray encodingOf(const QByteArray& bytes)
{
    // How '<', with which a file begins, is spelled; longer spellings come first.
    static const QByteArray beginnings[][2] = {
        {QByteArrayLiteral("\0\0\0<"), "UTF-32BE"},
        {QByteArrayLiteral("<\0\0\0"), "UTF-32LE"},
        {QByteArrayLiteral("\0<"), "UTF-16BE"},
        {QByteArrayLiteral("<\0"), "UTF-16LE"},
    };
    static const QRegularExpression declaration(
        QStringLiteral("^<\\?xml[^>]*?\\sencoding\\s*=\\s*[\"']([A-Za-z0-9._:-]+)[\"']"));
    constexpr Size longestDeclaration = 1024;
    for (const auto& [beginning, encoding] : beginnings) {
        if (bytes.startsWith(beginning))
            return encoding;
    }
    const Size size = std::min(bytes.size(), longestDeclaration);
    return declaration.match(QString::fromLatin1(bytes.constData(), size)).captured(1).toLatin1();
}

/**
 * The text of an XML file, which is UTF-8 unless it tells otherwise. The DOM could decode the bytes
 * itself, but then nobody would know what text it sees.
 */
QString decode(const QByteArray& bytes)
{
    const QTextCodec* codec = QTextCodec::codecForUtfText(bytes, nullptr);
    if (codec == nullptr)
        codec = QTextCodec::codecForName(encodingOf(bytes));
    if (codec == nullptr)
        codec = QTextCodec::codecForName(PLKeyword::Xml::Utf8);
    return codec->toUnicode(bytes);
}

bool isQuote(QChar character)
{
    return character == QLatin1Char('"') || character == QLatin1Char('\'');
}

bool contains(QStringView text, char character)
{
    return std::find(text.begin(), text.end(), QLatin1Char(character)) != text.end();
}

/** What follows the first '&' of a text; null when it has none. */
QStringView afterAmpersand(QStringView text)
{
    const QChar* const found = std::find(text.begin(), text.end(), QLatin1Char('&'));
    return found == text.end() ? QStringView() : QStringView(found + 1, text.end());
}

struct Reference
{
    QStringView name;       ///< null when no ';' ends it
    char32_t character = 0; ///< that of a number, such as "#65" or "#x41"; 0 when there is none
};

bool isNumber(QStringView name)
{
    return name.startsWith(QLatin1Char('#'));
}

/**
 * The reference whose '&' stands before a text. Its end is looked for no further than the next '&',
 * so that many of them take no quadratic time.
 */
Reference referenceAt(QStringView text)
{
    const auto isEnd = [](QChar c) { return c == QLatin1Char(';') || c == QLatin1Char('&'); };
    const auto isDigit = [](QChar c) { return std::isxdigit(uchar(c.toLatin1())) != 0; };
    const QChar* const end = std::find_if(text.begin(), text.end(), isEnd);
    if (end == text.end() || *end == QLatin1Char('&'))
        return {};
    const QStringView name(text.begin(), end);
    const bool isHexadecimal = name.startsWith(PLKeyword::keyword("#x"));
    const QStringView digits = name.mid(isHexadecimal ? 2 : 1);
    if (!isNumber(name) || !std::all_of(digits.begin(), digits.end(), isDigit))
        return {name};
    const uint code = digits.toString().toUInt(nullptr, isHexadecimal ? 16 : 10);
    return {name, code <= QChar::LastValidCodePoint ? code : 0};
}

/**
 * The same in the value of an entity. The parser puts characters that are referred to by number
 * into the value when it is declared, and parses the value where it is used. So '&' begins another
 * reference there, and '<' an element: its name is null, as of all that is no text.
 */
Reference referenceInValue(QStringView text)
{
    const Reference reference = referenceAt(text);
    if (reference.character == U'&') // its ';' stands where the '&' will stand
        return referenceAt({reference.name.end() + 1, text.end()});
    const bool isText = reference.character != 0 && reference.character != U'<';
    return isText || !isNumber(reference.name) ? reference : Reference();
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
        , m_unresolved(text.constData())
        , m_largestExpansion(
              std::clamp(xmlExpansionFactor * qint64(m_size), minXmlExpansion, qint64(maxXmlBytes)))
    {}

    std::optional<XmlHazard> run()
    {
        while (m_position < m_size) {
            passText();
            if (m_position < m_size)
                passMarkup();
            if (m_nodes > maxXmlNodes)
                refuse("the document has too many nodes");
        }
        // The parser gives the defaults to every element.
        if (strictXml && (m_expansion + m_defaultSize * m_tags > m_largestExpansion ||
                          m_nodes + 2 * m_defaults * m_tags > maxXmlNodes))
            refuse("defaults expand to too much text");
        return m_hazard;
    }

    /** The text, with the references resolved that the parser would cut to 16 bits. */
    [[nodiscard]] QString resolved() const
    {
        return m_resolved + m_text.mid(Size(m_unresolved - m_text.constData()));
    }

private:
    [[nodiscard]] QChar current() const { return m_text.at(m_position); }

    [[nodiscard]] bool at(QLatin1String mark) const
    {
        return QStringView(m_text).mid(m_position).startsWith(mark);
    }

    /** Keeps what is wrong at the position, unless something was before, and ends the walk. */
    void refuse(const char* message)
    {
        const QStringView before = QStringView(m_text).left(m_position);
        m_position = m_size;
        if (m_hazard)
            return;
        const QLatin1Char lineEnd('\n');
        const auto line = std::count(before.begin(), before.end(), lineEnd);
        const auto column = std::find(before.rbegin(), before.rend(), lineEnd) - before.rbegin();
        m_hazard = XmlHazard{QLatin1String(message), int(line) + 1, int(column) + 1};
    }

    void movePast(QLatin1String mark)
    {
        const Size found = m_text.indexOf(mark, m_position);
        m_position = found < 0 ? m_size : found + mark.size();
    }

    /** Goes to the next quote of a tag or declaration; false where it ends before. */
    bool findQuote()
    {
        while (m_position < m_size && current() != QLatin1Char('>') && !isQuote(current()))
            ++m_position;
        return m_position < m_size && isQuote(current());
    }

    /** Passes a quoted text that begins at the position and gives what stands in the quotes. */
    QStringView passQuoted()
    {
        const Size first = m_position + 1;
        const Size found = m_text.indexOf(current(), first);
        const Size last = found < 0 ? m_size : found;
        m_position = std::min(last + 1, m_size);
        return QStringView(m_text).mid(first, last - first);
    }

    void passText()
    {
        const Size first = m_position;
        const Size found = m_text.indexOf(QLatin1Char('<'), first);
        m_position = found < 0 ? m_size : found;
        const QStringView text = QStringView(m_text).mid(first, m_position - first);
        m_nodes += text.trimmed().isEmpty() ? 0 : 1;
        passReferences(text);
    }

    void passMarkup()
    {
        if (passUnparsed())
            return;
        if (at(PLKeyword::keyword("<!")))
            passDocumentType();
        else if (at(PLKeyword::keyword("</")))
            --m_depth;
        else
            passTag();
        movePast(PLKeyword::keyword(">"));
    }

    bool passUnparsed()
    {
        static constexpr QLatin1String spans[][2] = {
            {PLKeyword::keyword("<!--"), PLKeyword::keyword("-->")},
            {PLKeyword::keyword("<?"), PLKeyword::keyword("?>")},
            {PLKeyword::keyword("<![CDATA["), PLKeyword::keyword("]]>")},
        };
        const auto* const span = std::find_if(std::begin(spans), std::end(spans),
                                              [&](const auto& each) { return at(each[0]); });
        if (span == std::end(spans))
            return false;
        ++m_nodes;
        m_position += (*span)[0].size();
        movePast((*span)[1]);
        return true;
    }

    void passTag()
    {
        int attributes = 0;
        while (findQuote()) {
            passReferences(passQuoted());
            if (++attributes > maxXmlAttributes)
                refuse("an element has too many attributes");
        }
        ++m_tags;
        m_nodes += 1 + 2 * qint64(attributes);
        const bool isEmpty = m_text.at(m_position - 1) == QLatin1Char('/');
        if (m_depth == maxXmlNesting)
            refuse("elements are nested too deeply");
        m_depth += isEmpty ? 0 : 1;
    }

    void passDocumentType()
    {
        m_inSubset = false;
        ++m_position;
        while (m_position < m_size && (m_inSubset || current() != QLatin1Char('>'))) {
            if (at(PLKeyword::keyword("<!ENTITY")))
                passEntity();
            else if (isQuote(current()))
                passDefault();
            else if (!passUnparsed())
                passCharacter();
        }
    }

    /** Passes a character of a document type that begins no quoted text, entity or comment. */
    void passCharacter()
    {
        const char character = current().toLatin1();
        if (character == '[' || character == ']')
            m_inSubset = character == '[';
        if (character == '<' || character == '>')
            m_inAttributes = at(PLKeyword::keyword("<!ATTLIST"));
        if (character == '(' || character == ')')
            m_groups += character == '(' ? 1 : -1;
        ++m_position;
        if (m_groups > maxXmlNesting)
            refuse("content models are nested too deeply");
        if (character == '%' && m_hasParameter)
            refuse("a parameter entity is used beside an internal one");
    }

    /** Passes a quoted text of a document type: the default of an attribute, or an address. */
    void passDefault()
    {
        const qint64 before = m_expansion;
        const QStringView value = passQuoted();
        if (m_inAttributes)
            passReferences(value);
        m_defaultSize += value.size() + 1 + m_expansion - before;
        ++m_nodes;
        if (++m_defaults > maxXmlAttributes)
            refuse("too many defaults are declared");
    }

    /**
     * Passes a declaration up to its value, and the value unless it is the address of a file. The
     * first declaration of a name counts.
     */
    void passEntity()
    {
        static const QRegularExpression internal(
            QStringLiteral("^<!ENTITY\\s+(%?)\\s*([^%\\s]+)\\s*$"));
        if (++m_entityCount > maxXmlEntities)
            return refuse("too many entities are declared");
        const Size first = m_position;
        const bool hasValue = findQuote();
        const auto match = internal.match(m_text.mid(first, m_position - first));
        if (!hasValue || !match.hasMatch())
            return;
        const QStringView value = passQuoted();
        for (auto rest = afterAmpersand(value); !rest.isNull(); rest = afterAmpersand(rest))
            resolve(rest.data() - 1, referenceInValue(rest));
        if (m_hasParameter && contains(value, '%'))
            refuse("a parameter entity is used beside an internal one");
        if (!match.captured(1).isEmpty())
            m_hasParameter = true;
        else if (!m_entities.contains(match.captured(2)))
            m_entities.insert(match.captured(2), value);
    }

    /** Resolves the references in a text that is used, and counts what they expand to. */
    void passReferences(QStringView part)
    {
        for (auto rest = afterAmpersand(part); !rest.isNull(); rest = afterAmpersand(rest)) {
            const Reference reference = referenceAt(rest);
            resolve(rest.data() - 1, reference);
            if (const char* const hazard = expand(reference.name, 0)) {
                m_position = Size(rest.data() - 1 - m_text.constData());
                return refuse(hazard);
            }
        }
    }

    /** Puts a character above U+FFFF in the place of a reference to it, from its '&' to its ';'. */
    void resolve(const QChar* start, const Reference& reference)
    {
        if (!QChar::requiresSurrogates(reference.character))
            return;
        m_resolved.append(m_unresolved, Size(start - m_unresolved));
        m_resolved += QString::fromUcs4(&reference.character, 1);
        m_unresolved = reference.name.end() + 1;
    }

    /** Counts what an entity that is used expands to; gives what is wrong with it. */
    const char* expand(QStringView name, int depth)
    {
        if (isNumber(name))
            return nullptr;
        const auto value = m_entities.constFind(name.toString());
        if (value == m_entities.cend()) {
            m_nodes += 2; // the parser ends a text, and adds a node for what it leaves out
            return nullptr;
        }
        if (value->isNull())
            return nullptr; // predefined
        m_expansion += value->size() + 1;
        if (depth == m_entities.size())
            return "an entity refers to itself";
        if (m_expansion > m_largestExpansion)
            return "entities expand to too much text";
        const char* const markup = "an entity that is used holds markup";
        const char* hazard = contains(*value, '<') ? markup : nullptr;
        for (auto rest = afterAmpersand(*value); hazard == nullptr && !rest.isNull();
             rest = afterAmpersand(rest)) {
            const QStringView inner = referenceInValue(rest).name;
            hazard = inner.isNull() ? markup : expand(inner, depth + 1);
        }
        return hazard;
    }

    const QString& m_text;
    Size m_size;
    const QChar* m_unresolved; ///< the rest of the text, which is not copied yet
    qint64 m_largestExpansion;
    Size m_position = 0;
    int m_depth = 0;
    int m_groups = 0;
    int m_entityCount = 0;
    bool m_inSubset = false;
    bool m_inAttributes = false;
    bool m_hasParameter = false;
    qint64 m_nodes = 0;
    qint64 m_tags = 0;
    qint64 m_defaults = 0;
    qint64 m_defaultSize = 0;
    qint64 m_expansion = 0;
    QHash<QString, QStringView> m_entities = {{PLKeyword::keyword("amp"), {}},
                                              {PLKeyword::keyword("lt"), {}},
                                              {PLKeyword::keyword("gt"), {}},
                                              {PLKeyword::keyword("quot"), {}},
                                              {PLKeyword::keyword("apos"), {}}};
    QString m_resolved;
    std::optional<XmlHazard> m_hazard;
};

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
