// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * HTML and SVG, written element by element.
 */
#ifndef OVINFO_MARKUP_H
#define OVINFO_MARKUP_H

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QXmlStreamWriter>

#include <initializer_list>

/** An attribute of an element. */
struct Attribute
{
    Attribute(const char* attribute, const char* text)
        : name(attribute)
        , value(QString::fromUtf8(text))
    {}
    Attribute(const char* attribute, QString text)
        : name(attribute)
        , value(std::move(text))
    {}

    const char* name;
    QString value;
};

using Attributes = std::initializer_list<Attribute>;

/**
 * Writes a document. Every text and value is escaped, and what could break a line, turn the
 * direction of reading or is no character at all is spelled out. Words that browsers would break
 * into lines for minutes are cut.
 */
class Markup
{
public:
    enum Language {
        Html,
        Svg, ///< a document of its own, with a declaration
    };

    Markup(QByteArray* bytes, Language language);

    void start(const char* name, Attributes attributes = {});
    void end();
    void text(const QString& text);

    /** An element that holds nothing but text. */
    void element(const char* name, Attributes attributes, const QString& content);
    void element(const char* name, const QString& content) { element(name, {}, content); }

    /** An element that can hold nothing, such as a shape. */
    void empty(const char* name, Attributes attributes = {});

    /** An element whose content is written as it is: a style sheet or script of our own. */
    void verbatim(const char* name, const QByteArray& content);

private:
    void breakLine(const char* name);
    void addAttributes(Attributes attributes);

    QXmlStreamWriter m_writer;
    Language m_language;
};

/** An element that ends with its scope. */
class Element
{
public:
    Element(Markup& markup, const char* name, Attributes attributes = {})
        : m_markup(markup)
    {
        m_markup.start(name, attributes);
    }
    Element(const Element&) = delete;
    Element& operator=(const Element&) = delete;
    ~Element() { m_markup.end(); }

private:
    Markup& m_markup;
};

#endif
