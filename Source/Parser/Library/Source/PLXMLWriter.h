// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * A streaming XML writer.
 */
#ifndef OVPARSER_PLXMLWRITER_H
#define OVPARSER_PLXMLWRITER_H

#include "PLExport.h"

#include <QtCore/QMap>
#include <QtCore/QString>

#include <memory>

QT_BEGIN_NAMESPACE
class QIODevice;
class QTextCodec;
class QTextEncoder;
QT_END_NAMESPACE

/**
 * The attributes of one tag: names and their values.
 *
 * They are written in ascending name order by UTF-16 value, whatever the order of insertion:
 * upper-case letters come before lower-case ones, '.' before letters and digits.
 */
class PARSERLIBRARY_EXPORT AttrMap : public QMap<QString, QString>
{
public:
    using QMap<QString, QString>::QMap;

    /** A map without attributes. */
    AttrMap();

    /** A copy, which shares nothing with the original. */
    AttrMap(const AttrMap& other);

    /** Becomes a copy of another; nothing is shared. */
    AttrMap& operator=(const AttrMap& other);
    virtual ~AttrMap();
};

/**
 * Writes tags, attributes, text, indentation and line breaks to a device, each call at once.
 *
 * It keeps no tree and checks no nesting. The device belongs to the caller, must be open for
 * writing and must outlive the writer; the writer neither closes nor deletes it. No operation
 * reports a failure: text that the device does not take is lost.
 */
class PARSERLIBRARY_EXPORT CPLXMLWriter
{
public:
    /**
     * A writer with an indent size of 4 that breaks no lines of its own accord.
     *
     * @param device  where to write; borrowed
     * @param codec   the encoding, named by an XML declaration that is written at once; null
     *                writes UTF-8 without a declaration. No byte-order mark is written.
     */
    CPLXMLWriter(QIODevice* device, QTextCodec* codec);

    CPLXMLWriter(const CPLXMLWriter&) = delete;
    CPLXMLWriter& operator=(const CPLXMLWriter&) = delete;

    /** Ends a line that has content, if lines are ended automatically, and flushes. */
    virtual ~CPLXMLWriter();

    /** Writes a text unchanged; indentation that is still due on the line is left out. */
    void writeRaw(const QString& xml);

    /** Writes a text with the five XML characters & > < " ' as entities; no indentation. */
    void writeString(const QString& text);

    /** Writes an opening tag; what follows is indented one step more. Names are not escaped. */
    void writeOpenTag(const QString& name, const AttrMap& attrs);

    /** Writes a closing tag, indented one step less. The name is not compared with any other. */
    void writeCloseTag(const QString& name);

    /** Writes an empty-element tag, "<name/>". */
    void writeAtomTag(const QString& name, const AttrMap& attrs);

    /** Writes opening tag, escaped text and closing tag on one line. */
    void writeTaggedString(const QString& name, const QString& text, const AttrMap& attrs);

    /** Ends the line with a line feed; everything written so far reaches the device. */
    void newLine();

    /** Sets the number of blanks of one indentation step; 0 or less indents no further. */
    void setIndentSize(int size);

    /** Sets whether every tag ends its line. */
    void setAutoNewLine(bool on);

private:
    PARSERLIBRARY_NO_EXPORT static QString protect(const QString& text);
    PARSERLIBRARY_NO_EXPORT static QString opening(const QString& tag, const AttrMap& attrs);
    template <typename Operation>
    void attempt(Operation operation);
    PARSERLIBRARY_NO_EXPORT void writePendingIndent();
    PARSERLIBRARY_NO_EXPORT void write(const QString& text);
    PARSERLIBRARY_NO_EXPORT void endTag();
    PARSERLIBRARY_NO_EXPORT void flush();

    QIODevice* output;
    std::unique_ptr<QTextEncoder> encoder;
    bool failed = false;
    bool utf32 = false;
    QString indentString;
    int indentSize = 4;
    bool autoNewLine = false;
    bool atLineStart = true;
};

#endif
