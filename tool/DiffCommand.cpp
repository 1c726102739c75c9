// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Commands.h"
#include "Document.h"
#include "Entries.h"
#include "Json.h"
#include "SpectralJson.h"
#include "Terminal.h"

#include <QtCore/QHash>

namespace {

/** Something that can be compared: what is at a place of a document. */
struct Item
{
    QString section;
    QString key; ///< null for the section itself
    QString value;
};

/** A place at which two documents differ; the side that has nothing there has a null text. */
struct Difference
{
    QString section;
    QString key;
    QString left;
    QString right;
};

/**
 * Tells the places of items apart, without letter case: a section from a pair without a key, and
 * what stands in one place again and again.
 */
class PlaceCounter
{
public:
    QString placeOf(const Item& item)
    {
        const QString section = item.section.toLower();
        const QString place =
            item.key.isNull() ? section : section + QLatin1Char('\n') + item.key.toLower();
        return place + QLatin1Char('\n') + QString::number(m_counts[place]++);
    }

private:
    QHash<QString, int> m_counts;
};

QString orEmpty(const QString& text)
{
    return text.isNull() ? QStringLiteral("") : text;
}

QString joined(const CommentedText& text)
{
    const bool both = !text.text.isEmpty() && !text.comment.isEmpty();
    return text.text + (both ? QStringLiteral("  ") : QString()) + text.comment;
}

void addSection(const CPLSection& section, QList<Item>* items)
{
    const QString key = keyOf(section);
    items->append({key, QString(), joined(nameOf(section))});
    QStringList comments;
    const QList<Entry> entries = entriesOf(section);
    for (const Entry& entry : entries) {
        if (entry.isPair())
            items->append({key, orEmpty(entry.key), joined({entry.value, entry.comment})});
        else if (!entry.comment.isEmpty())
            comments += entry.comment;
    }
    if (!comments.isEmpty())
        items->append({key, QStringLiteral("#"), comments.join(QLatin1Char('\n'))});
}

/** The leaves of a JSON value, each with the way to it as its key. */
void addLeaves(const QJsonValue& value, const QString& section, const QString& way,
               QList<Item>* items)
{
    if (value.isObject()) {
        const QJsonObject members = value.toObject();
        for (auto member = members.begin(); member != members.end(); ++member)
            addLeaves(member.value(), section,
                      way.isEmpty() ? member.key() : way + QLatin1Char('.') + member.key(), items);
    } else if (value.isArray()) {
        const QJsonArray elements = value.toArray();
        for (int i = 0; i < elements.size(); ++i)
            addLeaves(elements.at(i), section, QStringLiteral("%1[%2]").arg(way).arg(i), items);
    } else {
        items->append({section, way, value.toVariant().toString()});
    }
}

QList<Item> itemsOf(const Document& document)
{
    QList<Item> items = {{QString(), QStringLiteral("kind"), document.kindName()}};
    if (document.spectral()) {
        QJsonObject members = spectralJson(QString(), *document.spectral());
        members.remove(QStringLiteral("file"));
        for (auto member = members.begin(); member != members.end(); ++member)
            addLeaves(member.value(), member.key(), QString(), &items);
        return items;
    }
    const QString preamble = document.preamble().join(QLatin1Char('\n'));
    if (!preamble.isEmpty())
        items.append({QString(), QStringLiteral("preamble"), preamble});
    const QList<CPLSection*> sections = document.sections();
    for (const CPLSection* const section : sections)
        addSection(*section, &items);
    return items;
}

QList<Difference> compare(const QList<Item>& left, const QList<Item>& right)
{
    QHash<QString, const Item*> rightItems;
    PlaceCounter rightPlaces;
    for (const Item& item : right)
        rightItems.insert(rightPlaces.placeOf(item), &item);
    QList<Difference> differences;
    PlaceCounter leftPlaces;
    for (const Item& item : left) {
        const Item* const other = rightItems.take(leftPlaces.placeOf(item));
        if (!other)
            differences.append({item.section, item.key, item.value, QString()});
        else if (other->value != item.value)
            differences.append({item.section, item.key, item.value, other->value});
    }
    rightPlaces = {};
    for (const Item& item : right) {
        if (rightItems.contains(rightPlaces.placeOf(item)))
            differences.append({item.section, item.key, QString(), item.value});
    }
    return differences;
}

QString side(const char* mark, const QString& value)
{
    if (value.isNull())
        return {};
    QString text;
    const QStringList lines = value.split(QLatin1Char('\n'));
    for (const QString& line : lines)
        text += QLatin1String(mark) + (line.isEmpty() ? line : QLatin1Char(' ') + line) +
                QLatin1Char('\n');
    return text;
}

QString textOf(const Difference& difference)
{
    QString place = difference.section.isEmpty()
                        ? QString()
                        : QLatin1Char('[') + difference.section + QLatin1Char(']');
    if (!difference.key.isNull())
        place += (place.isEmpty() ? QString() : QStringLiteral(" ")) + difference.key;
    return printable(place) + QLatin1Char('\n') + side("<", difference.left) +
           side(">", difference.right);
}

QJsonValue textOrAbsent(const QString& text)
{
    return text.isNull() ? QJsonValue() : QJsonValue(text);
}

QJsonObject differenceJson(const Difference& difference)
{
    return object({{"section", textOrNull(difference.section)},
                   {"key", textOrAbsent(difference.key)},
                   {"left", textOrAbsent(difference.left)},
                   {"right", textOrAbsent(difference.right)}});
}

} // namespace

ExitCode diffCommand(const Request& request)
{
    const QStringList& files = request.files;
    QList<Item> items[2];
    for (int i = 0; i < 2; ++i) {
        Document document;
        if (!document.load(files.at(i)))
            return fail(Trouble, files.at(i) + QLatin1String(": ") + document.problem());
        items[i] = itemsOf(document);
    }
    for (QList<Item>& list : items) {
        for (Item& item : list)
            item.value = orEmpty(item.value);
    }
    const QList<Difference> differences = compare(items[0], items[1]);
    if (request.has(Options::json)) {
        print(withSchema("ovinfo-diff/1", {{"left", files.at(0)},
                                           {"right", files.at(1)},
                                           {"same", differences.isEmpty()},
                                           {"differences", arrayOf(differences, differenceJson)}}));
    } else {
        for (const Difference& difference : differences)
            print(textOf(difference));
    }
    return differences.isEmpty() ? Success : Different;
}
