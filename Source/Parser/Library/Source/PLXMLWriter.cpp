#include "PLXMLWriter.h"

#include "PLKeywords.h"

#include <QtCore/QIODevice>
#include <QtCore/QTextCodec>

namespace Xml = PLKeyword::Xml;

namespace {

/** The entity of a character; empty for a character that stands for itself. */
QLatin1String entityOf(QChar character)
{
    switch (character.unicode()) {
    case u'&':
        return PLKeyword::keyword("&amp;");
    case u'>':
        return PLKeyword::keyword("&gt;");
    case u'<':
        return PLKeyword::keyword("&lt;");
    case u'"':
        return PLKeyword::keyword("&quot;");
    case u'\'':
        return PLKeyword::keyword("&apos;");
    default:
        return {};
    }
}

} // namespace

AttrMap::AttrMap() = default;
AttrMap::AttrMap(const AttrMap& other) = default;
AttrMap& AttrMap::operator=(const AttrMap& other) = default;
AttrMap::~AttrMap() = default;

CPLXMLWriter::CPLXMLWriter(QIODevice* device, QTextCodec* codec)
    : stream(device)
{
    if (codec == nullptr) {
        stream.setCodec(Xml::Utf8);
        stream.setAutoDetectUnicode(true);
        return;
    }
    stream.setCodec(codec);
    write(Xml::DeclarationStart + protect(QString::fromLatin1(codec->name())) +
          Xml::DeclarationEnd + QLatin1Char('\n'));
}

CPLXMLWriter::~CPLXMLWriter()
{
    if (autoNewLine && !atLineStart)
        newLine();
}

void CPLXMLWriter::writeRaw(const QString& xml)
{
    write(xml);
    atLineStart = false;
}

void CPLXMLWriter::writeString(const QString& text)
{
    writeRaw(protect(text));
}

void CPLXMLWriter::writeOpenTag(const QString& name, const AttrMap& attrs)
{
    writePendingIndent();
    write(opening(name, attrs));
    indentString += QString(indentSize, QLatin1Char(' '));
    endTag();
}

void CPLXMLWriter::writeCloseTag(const QString& name)
{
    indentString.remove(0, indentSize);
    writePendingIndent();
    write(opening(QLatin1Char('/') + name, {}));
    endTag();
}

void CPLXMLWriter::writeAtomTag(const QString& name, const AttrMap& attrs)
{
    QString tag = opening(name, attrs);
    tag.insert(tag.size() - 1, QLatin1Char('/'));
    writePendingIndent();
    write(tag);
    endTag();
}

void CPLXMLWriter::writeTaggedString(const QString& name, const QString& text, const AttrMap& attrs)
{
    writePendingIndent();
    write(opening(name, attrs));
    writeString(text);
    write(opening(QLatin1Char('/') + name, {}));
    endTag();
}

void CPLXMLWriter::newLine()
{
    write(QString(QLatin1Char('\n')));
    stream.flush();
    atLineStart = true;
}

void CPLXMLWriter::setIndentSize(int size)
{
    indentSize = size;
}

void CPLXMLWriter::setAutoNewLine(bool on)
{
    autoNewLine = on;
}

QString CPLXMLWriter::protect(const QString& text)
{
    QString result;
    result.reserve(text.size());
    for (const QChar character : text) {
        const QLatin1String entity = entityOf(character);
        if (entity.isEmpty())
            result += character;
        else
            result += entity;
    }
    return result;
}

QString CPLXMLWriter::opening(const QString& tag, const AttrMap& attrs)
{
    QString result = QLatin1Char('<') + tag;
    for (auto attr = attrs.cbegin(); attr != attrs.cend(); ++attr)
        result += QLatin1Char(' ') + attr.key() + QLatin1String("=\"") + protect(attr.value()) +
                  QLatin1Char('"');
    return result + QLatin1Char('>');
}

void CPLXMLWriter::writePendingIndent()
{
    if (atLineStart)
        write(indentString);
    atLineStart = false;
}

// A stream warns about a closed device and hoards the text that a failed one did not take.
void CPLXMLWriter::write(const QString& text)
{
    const QIODevice* device = stream.device();
    if (device != nullptr && device->isWritable() && stream.status() == QTextStream::Ok)
        stream << text;
}

void CPLXMLWriter::endTag()
{
    if (autoNewLine)
        newLine();
}
