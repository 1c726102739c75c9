// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * The entries of a section, comments kept apart from values.
 */
#ifndef OVINFO_ENTRIES_H
#define OVINFO_ENTRIES_H

#include "PLSection.h"
#include "internal/text/InfoText.h"

#include <QtCore/QJsonObject>
#include <QtCore/QList>
#include <QtCore/QString>

using ovparser::internal::trimmed;

/** A text without its comment, and the comment from its '#' on; empty when there is none. */
struct CommentedText
{
    QString text;
    QString comment;
};

CommentedText cutComment(const QString& raw);

/** A pair, or a comment line: then the key is null and the value empty. */
struct Entry
{
    QString key;
    QString value;
    QString comment;

    [[nodiscard]] bool isPair() const { return !key.isNull(); }
};

inline bool operator==(const Entry& a, const Entry& b)
{
    return a.key == b.key && a.value == b.value && a.comment == b.comment;
}

/** The entries in order; blank lines are comments without text. */
QList<Entry> entriesOf(const CPLSection& section);

/** A section with its comments. */
struct SectionText
{
    QString key;
    CommentedText name;
    QList<Entry> entries;
};

SectionText textOf(const CPLSection& section);

/** The sections of a document in order. */
template <typename Document>
QList<SectionText> sectionsOf(const Document& document)
{
    QList<SectionText> sections;
    for (int i = 0; const CPLSection* const section = document[i]; ++i)
        sections.append(textOf(*section));
    return sections;
}

/** A section as programs get it. */
QJsonObject sectionJson(const SectionText& section);

/** The section's key and name, the name without its comment. */
QString keyOf(const CPLSection& section);
CommentedText nameOf(const CPLSection& section);

#endif
