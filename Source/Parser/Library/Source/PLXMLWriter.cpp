// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "PLXMLWriter.h"

#include "PLKeywords.h"
#include "internal/text/Guard.h"

#include <QtCore/QFileDevice>

#include <QTextCodec>

#include <algorithm>

using namespace ovparser::internal;

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

bool isUtf32(const QTextCodec& codec)
{
    constexpr int first = 1017; // numbers in the IANA registry: UTF-32, UTF-32BE, UTF-32LE
    constexpr int last = 1019;
    return codec.mibEnum() >= first && codec.mibEnum() <= last;
}

} // namespace

AttrMap::AttrMap() = default;
AttrMap::AttrMap(const AttrMap& other) = default;
AttrMap& AttrMap::operator=(const AttrMap& other) = default;
AttrMap::~AttrMap() = default;

template <typename Operation>
void CPLXMLWriter::attempt(Operation operation)
{
    failed = guarded(operation) != eSTATUS_SUCCESS || failed;
}

CPLXMLWriter::CPLXMLWriter(QIODevice* device, QTextCodec* codec)
    : output(device)
{
    attempt([&] {
        const QTextCodec* used = codec != nullptr ? codec : QTextCodec::codecForName(Xml::Utf8);
        encoder.reset(used->makeEncoder(QTextCodec::IgnoreHeader));
        utf32 = isUtf32(*used);
        if (codec != nullptr)
            write(Xml::DeclarationStart + protect(QString::fromLatin1(codec->name())) +
                  Xml::DeclarationEnd + QLatin1Char('\n'));
    });
}

CPLXMLWriter::~CPLXMLWriter()
{
    if (autoNewLine && !atLineStart)
        newLine();
    else
        flush();
}

void CPLXMLWriter::writeRaw(const QString& xml)
{
    attempt([&] {
        write(xml);
        atLineStart = false;
    });
}

void CPLXMLWriter::writeString(const QString& text)
{
    attempt([&] { writeRaw(protect(text)); });
}

void CPLXMLWriter::writeOpenTag(const QString& name, const AttrMap& attrs)
{
    attempt([&] {
        writePendingIndent();
        write(opening(name, attrs));
        indentString += QString(indentSize, QLatin1Char(' '));
        endTag();
    });
}

void CPLXMLWriter::writeCloseTag(const QString& name)
{
    attempt([&] {
        indentString.remove(0, indentSize);
        writePendingIndent();
        write(opening(QLatin1Char('/') + name, {}));
        endTag();
    });
}

void CPLXMLWriter::writeAtomTag(const QString& name, const AttrMap& attrs)
{
    attempt([&] {
        QString tag = opening(name, attrs);
        tag.insert(tag.size() - 1, QLatin1Char('/'));
        writePendingIndent();
        write(tag);
        endTag();
    });
}

void CPLXMLWriter::writeTaggedString(const QString& name, const QString& text, const AttrMap& attrs)
{
    attempt([&] {
        writePendingIndent();
        write(opening(name, attrs));
        writeString(text);
        write(opening(QLatin1Char('/') + name, {}));
        endTag();
    });
}

void CPLXMLWriter::newLine()
{
    attempt([&] {
        write(QString(QLatin1Char('\n')));
        flush();
        atLineStart = true;
    });
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
    if (std::all_of(text.cbegin(), text.cend(), [](QChar c) { return entityOf(c).isEmpty(); }))
        return text;
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
    for (auto attr = attrs.cbegin(); attr != attrs.cend(); ++attr) {
        result += QLatin1Char(' ');
        result += attr.key();
        result += QLatin1String("=\"");
        result += protect(attr.value());
        result += QLatin1Char('"');
    }
    result += QLatin1Char('>');
    return result;
}

void CPLXMLWriter::writePendingIndent()
{
    if (atLineStart)
        write(indentString);
    atLineStart = false;
}

// A device that is not open warns when it is written to. After a text was lost, also for a lack of
// memory, nothing more is written.
void CPLXMLWriter::write(const QString& text)
{
    if (output == nullptr || !output->isWritable() || failed)
        return;
    QByteArray bytes = encoder->fromUnicode(text);
    if (utf32) // Qt makes room for both halves of a surrogate pair, but fills one
        bytes.truncate(text.toUcs4().size() * int(sizeof(char32_t)));
    failed = output->write(bytes) != bytes.size();
}

void CPLXMLWriter::flush()
{
    auto* const file = qobject_cast<QFileDevice*>(output);
    if (file != nullptr && file->isWritable() && !file->flush())
        failed = true;
}

void CPLXMLWriter::endTag()
{
    if (autoNewLine)
        newLine();
}
