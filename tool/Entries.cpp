// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Entries.h"

#include "Json.h"

#include "PLKeywords.h"
#include "internal/text/InfoText.h"

namespace {

QJsonObject entryJson(const Entry& entry)
{
    if (!entry.isPair())
        return object({{"comment", entry.comment}});
    return object(
        {{"key", entry.key}, {"value", entry.value}, {"comment", textOrNull(entry.comment)}});
}

} // namespace

CommentedText cutComment(const QString& raw)
{
    const auto sign = raw.indexOf(QLatin1Char('#'));
    if (sign < 0)
        return {raw, QString()};
    return {trimmed(raw.left(sign)), raw.mid(sign)};
}

QString keyOf(const CPLSection& section)
{
    QString key;
    section.getSectionKey(&key);
    return key;
}

// The last value of a reference keeps the line end of its file, and so does a name made of it.
CommentedText nameOf(const CPLSection& section)
{
    QString name;
    section.getSectionName(&name, true);
    return cutComment(name.remove(QLatin1Char('\n')));
}

QList<Entry> entriesOf(const CPLSection& section)
{
    QString text;
    section.saveSectionData(text);
    QStringList lines = text.split(PLKeyword::Text::LineEnd);
    lines.replaceInStrings(QStringLiteral("\n"), QString());
    // The header line comes first; the empty line after a section leaves two empty parts.
    lines = lines.mid(1, lines.size() - 3);
    QList<Entry> entries;
    for (const QString& line : qAsConst(lines)) {
        const auto colon = line.indexOf(PLKeyword::Text::KeyEnd);
        if (colon < 0 || line.startsWith(QLatin1Char('#'))) {
            entries.append({QString(), QString(), line});
            continue;
        }
        const CommentedText value = cutComment(line.mid(colon + PLKeyword::Text::KeyEnd.size()));
        entries.append({line.left(colon), value.text, value.comment});
    }
    return entries;
}

SectionText textOf(const CPLSection& section)
{
    return {keyOf(section), nameOf(section), entriesOf(section)};
}

QJsonObject sectionJson(const SectionText& section)
{
    return object({{"key", section.key},
                   {"name", section.name.text},
                   {"comment", textOrNull(section.name.comment)},
                   {"entries", arrayOf(section.entries, entryJson)}});
}
