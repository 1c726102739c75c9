// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Markup.h"

#include <QtCore/QRegularExpression>

#include <algorithm>
#include <cstring>

namespace {

/** Elements of a page that begin a line of their own, so that pages can be compared. */
constexpr const char* lineElements[] = {
    "body",   "caption", "dd",   "div",  "dl",      "dt",    "footer", "h1",   "h2",
    "h3",     "head",    "html", "li",   "main",    "meta",  "nav",    "ol",   "p",
    "script", "section", "svg",  "line", "polygon", "style", "symbol", "text", "table",
    "tbody",  "thead",   "tr",   "ul",   "header",  "title",
};

struct Range
{
    ushort first = 0;
    ushort last = 0;
};

/** Characters that are spelled out: controls but the line feed, those that turn the direction of
    reading or break lines, those that nobody sees, and what is no character. */
constexpr Range spelledOut[] = {
    {0x0000, 0x0009}, {0x000B, 0x001F}, {0x007F, 0x009F}, {0x00AD, 0x00AD},
    {0x061C, 0x061C}, {0x200B, 0x200F}, {0x2028, 0x202E}, {0x2060, 0x206F},
    {0xFDD0, 0xFDEF}, {0xFEFF, 0xFEFF}, {0xFFFE, 0xFFFF},
};

bool isSpelledOut(QChar c)
{
    return std::any_of(std::begin(spelledOut), std::end(spelledOut), [&](const Range& range) {
        return c.unicode() >= range.first && c.unicode() <= range.last;
    });
}

/** Whether a text has half a pair of surrogates at a place. */
bool isLoneSurrogate(const QString& text, int place)
{
    const QChar c = text.at(place);
    if (c.isHighSurrogate())
        return place + 1 == text.size() || !text.at(place + 1).isLowSurrogate();
    return c.isLowSurrogate() && (place == 0 || !text.at(place - 1).isHighSurrogate());
}

QString spelled(QChar c)
{
    const bool isShort = c.unicode() < 0x100;
    const QString code = QString::number(c.unicode(), 16);
    return QLatin1String(isShort ? "\\x" : "\\u") +
           code.rightJustified(isShort ? 2 : 4, QLatin1Char('0'));
}

/** A text without the rest of words that no browser could break into lines in time. */
QString withoutEndlessWords(QString text)
{
    static const QRegularExpression endless(QStringLiteral("(\\S{200})\\S{100,}"));
    constexpr int mostOfWord = 300;
    return text.size() < mostOfWord ? text : text.replace(endless, QStringLiteral("\\1\u2026"));
}

/** A text that shows what it holds. */
QString shown(const QString& whole)
{
    QString text = withoutEndlessWords(whole);
    const auto isPlain = [](QChar c) { return c.unicode() >= 0x20 && c.unicode() < 0x7F; };
    if (std::all_of(text.cbegin(), text.cend(), isPlain))
        return text;
    QString result;
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        result += isSpelledOut(c) || isLoneSurrogate(text, i) ? spelled(c) : QString(c);
    }
    return result;
}

} // namespace

Markup::Markup(QByteArray* bytes, Language language)
    : m_writer(bytes)
    , m_language(language)
{
    if (language == Html) {
        m_writer.writeDTD(QStringLiteral("<!DOCTYPE html>"));
        return;
    }
    m_writer.setAutoFormatting(true);
    m_writer.setAutoFormattingIndent(2);
    m_writer.writeStartDocument();
}

void Markup::breakLine(const char* name)
{
    const bool isAlone =
        std::any_of(std::begin(lineElements), std::end(lineElements),
                    [&](const char* element) { return std::strcmp(name, element) == 0; });
    if (m_language == Html && isAlone)
        m_writer.writeCharacters(QStringLiteral("\n"));
}

void Markup::addAttributes(Attributes attributes)
{
    for (const Attribute& attribute : attributes)
        m_writer.writeAttribute(QLatin1String(attribute.name), shown(attribute.value));
}

void Markup::start(const char* name, Attributes attributes)
{
    breakLine(name);
    m_writer.writeStartElement(QLatin1String(name));
    addAttributes(attributes);
}

// An element of HTML that is written as <name/> is one that never ends.
void Markup::end()
{
    if (m_language == Html)
        m_writer.writeCharacters(QString());
    m_writer.writeEndElement();
}

void Markup::text(const QString& text)
{
    m_writer.writeCharacters(shown(text));
}

void Markup::element(const char* name, Attributes attributes, const QString& content)
{
    start(name, attributes);
    text(content);
    end();
}

void Markup::empty(const char* name, Attributes attributes)
{
    breakLine(name);
    m_writer.writeEmptyElement(QLatin1String(name));
    addAttributes(attributes);
}

void Markup::verbatim(const char* name, const QByteArray& content)
{
    start(name);
    m_writer.writeCharacters(QString()); // ends the tag
    m_writer.device()->write(content);
    m_writer.writeEndElement();
}
