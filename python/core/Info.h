// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * The documents that Python holds, and the handles of their sections.
 */
#ifndef OVPYTHON_INFO_H
#define OVPYTHON_INFO_H

#include "Convert.h"

#include "ParserLibrary.h"

#include <QtCore/QSet>

#include <memory>
#include <vector>

namespace ovpython {

/** A key and what it is assigned. */
using Assignments = std::vector<std::pair<QString, QString>>;

/**
 * An info text: the sections of an acquisition, of a catalogue and the like, or of a sequence.
 *
 * Python gets no pointer into it, so that nothing dangles when sections come and go.
 */
class Info : public std::enable_shared_from_this<Info>
{
public:
    explicit Info(std::unique_ptr<CPLClickInfo> info);
    explicit Info(std::unique_ptr<CPLSequenceInfo> sequence);
    Info(const Info& other);
    Info& operator=(const Info&) = delete;
    ~Info();

    /** Takes over everything that another document holds, which then holds what this one did. */
    void swap(Info& other);

    /** The sections of an acquisition; null for a sequence. */
    [[nodiscard]] CPLClickInfo* clickInfo() const { return m_clickInfo.get(); }
    [[nodiscard]] CPLSequenceInfo* sequence() const { return m_sequence.get(); } ///< or null

    /** The same; raises a TypeError when it is the other one. */
    [[nodiscard]] CPLClickInfo& asClickInfo() const;
    [[nodiscard]] CPLSequenceInfo& asSequence() const; ///< @copydoc asClickInfo()

    /** The section with this key, in any letter case; null when there is none. */
    [[nodiscard]] CPLSection* find(const QString& key) const;
    [[nodiscard]] CPLSection* at(int place) const; ///< The section at this place, or null.

    [[nodiscard]] int count() const;
    [[nodiscard]] QStringList keys() const; ///< of the sections, in order

    /** Adds a section, of which there is none with its key. */
    void add(std::unique_ptr<CPLSection> section);
    void remove(const QString& key); ///< Raises a KeyError when there is no such section.
    void clear();

    /** The bytes that are saved; raises a UnicodeEncodeError when they cannot hold the text. */
    [[nodiscard]] QByteArray bytes() const;

    /** Takes over what the name of a section tells of the document, after it may have changed. */
    void follow(const QString& key) const;

    /** The click numbers that a sequence lists. */
    [[nodiscard]] QStringList clickNumbers() const;

    /** The lines before the first section. */
    [[nodiscard]] QStringList preamble() const;
    void setPreamble(const QStringList& lines) const;

    /** Loads a text as a file with these bytes is loaded. */
    [[nodiscard]] tag_estatus loadBytes(const QByteArray& bytes);

    /** Whether the first header line stands for a file that has none, and is not saved. */
    bool hidesHeader = false;

private:
    std::unique_ptr<CPLClickInfo> m_clickInfo;
    std::unique_ptr<CPLSequenceInfo> m_sequence;
};

/** A section of a document: looked up by its key whenever it is used. */
struct Section
{
    std::shared_ptr<Info> info;
    QString key;

    /** The section; raises a KeyError when there is none any more. */
    [[nodiscard]] CPLSection& get() const;
};

/** The keys of a section, each once, in order. */
QStringList keysOf(const CPLSection& section);

/** The value of a key as it is stored, with its comment; raises a KeyError. */
QString rawValue(const CPLSection& section, const QString& key);

/** The value without its comment. */
QString value(const CPLSection& section, const QString& key);

/** Gives keys new values and adds those that are missing. Nothing changes when one is refused. */
void assign(CPLSection* section, const Assignments& values);

/** Removes the entries of keys, which are in lower case. */
void removeKeys(CPLSection* section, const QSet<QString>& lowerKeys);

/** Makes the pairs of a section these: others go, the order of those that stay is kept. */
void replacePairs(CPLSection* section, const Assignments& values);

/** Changes the name of a section, whose comment stays unless the new name brings its own. */
void rename(CPLSection* section, const QString& name);

/** The text of a section as it is written. */
QString textOf(const CPLSection& section);

/** A section that is made of such a text; its key is given, as it may differ. */
std::unique_ptr<CPLSection> sectionOf(const QString& key, const QString& text);

/** A copy under another key. */
std::unique_ptr<CPLSection> copyOf(const CPLSection& section, const QString& key);

/** Raises a ValueError unless a file can hold the text as the key of a section. */
void checkSectionKey(const QString& key);

/** Raises a ValueError unless a file can hold the text as a name or value. */
void checkText(const QString& text);

} // namespace ovpython

#endif
