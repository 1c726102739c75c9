#include "XmlGuard.h"

#include "PLKeywords.h"
#include "QtVersion.h"
#include "TextFile.h"

#include <QtCore/QIODevice>
#include <QtCore/QRegularExpression>

#include <QTextCodec>

#include <algorithm>

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

/** The references that need no declaration. */
constexpr QLatin1String predefined[] = {
    PLKeyword::keyword("&amp;"),  PLKeyword::keyword("&lt;"),   PLKeyword::keyword("&gt;"),
    PLKeyword::keyword("&quot;"), PLKeyword::keyword("&apos;"),
};

bool beginsPredefined(QStringView text)
{
    return std::any_of(std::begin(predefined), std::end(predefined),
                       [&](QLatin1String reference) { return text.startsWith(reference); });
}

/** Whether a text begins with a reference to a character. */
bool beginsCharacter(QStringView text)
{
    return text.startsWith(PLKeyword::keyword("&#"));
}

/**
 * Whether the reference to a character with which a text begins is plain in the value of an entity.
 *
 * The parser puts the character into the value, cut to 16 bits, and parses the value where the
 * entity is used. So '<' opens an element there, and '&' a reference, which is plain only when it
 * is one to a character in its turn.
 */
bool isPlainCharacter(QStringView text)
{
    constexpr int longestNumber = 16;
    constexpr uint largest = 0xFFFF;
    const bool hexadecimal = text.startsWith(PLKeyword::keyword("&#x"));
    const QStringView rest = text.mid(hexadecimal ? 3 : 2);
    const QStringView window = rest.left(longestNumber);
    const auto size = std::find(window.begin(), window.end(), QLatin1Char(';')) - window.begin();
    const uint code = window.left(size).toString().toUInt(nullptr, hexadecimal ? 16 : 10);
    if (size == window.size() || code == 0 || code > largest || code == '<')
        return false;
    return code != '&' || rest.mid(size).startsWith(PLKeyword::keyword(";#"));
}

/**
 * Whether the value of an entity is text only: no markup, and no reference but to predefined
 * entities, which the parser keeps as text, and to plain characters.
 */
bool isPlain(QStringView value)
{
    for (int i = 0; i < value.size(); ++i) {
        const QChar character = value.at(i);
        if (character == QLatin1Char('<') || character == QLatin1Char('%'))
            return false;
        const QStringView rest = value.mid(i);
        if (character == QLatin1Char('&') && !beginsPredefined(rest) &&
            !(beginsCharacter(rest) && isPlainCharacter(rest)))
            return false;
    }
    return true;
}

/** Whether the value of an entity, declared so far, is the address of another file. */
bool isExternal(const QString& declaration)
{
    static const QRegularExpression external(
        QStringLiteral("^<!ENTITY\\s+(%\\s+)?[^%\\s]\\S*\\s+(SYSTEM|PUBLIC)\\s*$"));
    return external.match(declaration).hasMatch();
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
    {}

    std::optional<XmlHazard> run()
    {
        while (m_hazard == nullptr && moveTo(QLatin1Char('<')))
            passMarkup();
        if (m_hazard == nullptr)
            checkExpansion();
        if (m_hazard != nullptr)
            return hazardAt(m_text, std::min(m_position, m_size), m_hazard);
        return std::nullopt;
    }

private:
    [[nodiscard]] bool at(QLatin1String mark) const
    {
        return QStringView(m_text).mid(m_position).startsWith(mark);
    }

    bool moveTo(QChar character)
    {
        const Size found = m_text.indexOf(character, m_position);
        m_position = found < 0 ? m_size : found;
        return found >= 0;
    }

    void movePast(QLatin1String mark)
    {
        const Size found = m_text.indexOf(mark, m_position);
        m_position = found < 0 ? m_size : found + mark.size();
    }

    /** Passes a quoted text that begins at the position and gives what stands in the quotes. */
    QStringView passQuoted()
    {
        const QChar quote = m_text.at(m_position);
        const Size first = ++m_position;
        moveTo(quote);
        const QStringView quoted = QStringView(m_text).mid(first, m_position - first);
        m_position = std::min(m_position + 1, m_size);
        return quoted;
    }

    void passMarkup();
    bool passUnparsed();
    void passTag();
    void passDocumentType();
    void passDeclaration();
    void passCharacter();
    void passDefault();
    void passEntity();
    void addEntity(QStringView value);
    void checkExpansion();

    const QString& m_text;
    Size m_size;
    Size m_position = 0;
    int m_depth = 0;
    int m_groups = 0;
    int m_entities = 0;
    int m_tags = 0;
    int m_defaults = 0;
    qint64 m_defaultSize = 0;
    int m_longestEntity = 0;
    const char* m_hazard = nullptr;
};

void MarkupWalk::passMarkup()
{
    if (passUnparsed())
        return;
    if (at(PLKeyword::keyword("<!"))) {
        passDocumentType();
    } else if (at(PLKeyword::keyword("</"))) {
        --m_depth;
        movePast(PLKeyword::keyword(">"));
    } else {
        passTag();
    }
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
    m_position += span->start.size();
    movePast(span->end);
    return true;
}

void MarkupWalk::passTag()
{
    ++m_tags;
    int attributes = 0;
    while (m_position < m_size && m_text.at(m_position) != QLatin1Char('>')) {
        if (!isQuote(m_text.at(m_position))) {
            ++m_position;
            continue;
        }
        passQuoted();
        if (++attributes > maxXmlAttributes)
            m_hazard = "an element has too many attributes";
    }
    if (m_depth == maxXmlNesting)
        m_hazard = "elements are nested too deeply";
    if (m_text.at(m_position - 1) != QLatin1Char('/'))
        ++m_depth;
}

void MarkupWalk::passDocumentType()
{
    bool inSubset = false;
    moveTo(QLatin1Char('!'));
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
    if (character == QLatin1Char('(') && ++m_groups > maxXmlNesting)
        m_hazard = "content models are nested too deeply";
    if (character == QLatin1Char(')'))
        --m_groups;
    ++m_position;
}

/** Passes a quoted text of a document type, which may be the default of an attribute. */
void MarkupWalk::passDefault()
{
    m_defaultSize += passQuoted().size() + 1;
    if (++m_defaults > maxXmlAttributes)
        m_hazard = "too many defaults are declared";
}

/** Passes a declaration up to its value, and the value unless it is the address of a file. */
void MarkupWalk::passEntity()
{
    if (++m_entities > maxXmlEntities)
        m_hazard = "too many entities are declared";
    const Size first = m_position;
    while (m_position < m_size && !isQuote(m_text.at(m_position)) &&
           m_text.at(m_position) != QLatin1Char('>'))
        ++m_position;
    const QString declaration = m_text.mid(first, m_position - first);
    if (m_position == m_size || !isQuote(m_text.at(m_position)) || isExternal(declaration))
        return;
    if (declaration.contains(QLatin1Char('%')))
        m_hazard = "internal parameter entities are not supported";
    else
        addEntity(passQuoted());
}

void MarkupWalk::addEntity(QStringView value)
{
    if (!isPlain(value))
        m_hazard = "an entity holds markup or refers to another entity";
    m_longestEntity = std::max(m_longestEntity, int(value.size()));
}

void MarkupWalk::checkExpansion()
{
    qint64 expansion = strictXml ? m_defaultSize * m_tags : 0;
    if (expansion > maxXmlExpansion)
        m_hazard = "defaults expand to too much text";
    for (m_position = 0; moveTo(QLatin1Char('&')); ++m_position) {
        const QStringView rest = QStringView(m_text).mid(m_position);
        if (beginsCharacter(rest) || beginsPredefined(rest))
            continue;
        expansion += m_longestEntity;
        if (expansion > maxXmlExpansion) {
            m_hazard = "entities expand to too much text";
            return;
        }
    }
}

} // namespace

// The DOM could decode the bytes itself, but then nobody would know what text it sees.
QString decodeXml(const QByteArray& bytes)
{
    const QTextCodec* codec = QTextCodec::codecForName(encodingOf(bytes));
    if (codec == nullptr)
        codec = QTextCodec::codecForName(PLKeyword::Xml::Utf8);
    return codec->toUnicode(bytes);
}

std::optional<XmlHazard> findXmlHazard(const QString& text)
{
    return MarkupWalk(text).run();
}

std::optional<XmlHazard> readXml(QIODevice& device, QString* text)
{
    const QByteArray bytes = readBounded(device, maxXmlBytes);
    if (bytes.size() > maxXmlBytes)
        return XmlHazard{QLatin1String("the file is too large"), 1, 1};
    *text = decodeXml(bytes);
    return findXmlHazard(*text);
}

} // namespace ovparser::internal
