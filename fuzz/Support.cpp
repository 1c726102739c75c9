// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Support.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace fuzz {

namespace {

template <typename Number>
void checkNumber(const CPLSection& section, const QString& key, Number expected, bool converted)
{
    auto number = Number(1);
    require(section.getValue(key, &number) == eSTATUS_SUCCESS, "a pair reads as a number");
    require(sameNumber(double(number), double(converted ? expected : Number(0))),
            "a number is what its text says");
}

void checkNumbers(const CPLSection& section, const QString& key, const QString& text)
{
    bool converted = false;
    const double real = text.toDouble(&converted);
    checkNumber(section, key, real, converted);
    const float single = text.toFloat(&converted);
    checkNumber(section, key, single, converted);
    const int integer = text.toInt(&converted);
    checkNumber(section, key, integer, converted);
    const short small = text.toShort(&converted);
    checkNumber(section, key, small, converted);
    long wide = 1;
    require(section.getValue(key, &wide) == eSTATUS_SUCCESS && wide == text.toLong(),
            "a long number is what its text says");
}

void checkPair(const CPLSection& section, int ordinal, const QString& key, const QString& raw)
{
    QString text;
    require(section.getKey(ordinal, &text) == eSTATUS_SUCCESS && text == key, "keys agree");
    require(section.isKeyPresent(key), "a listed key is present");
    require(section.getRawValue(key, &text) == eSTATUS_SUCCESS && text == raw, "raw values agree");
    if (key.isEmpty()) {
        require(section.getValue(key, &text) == eSTATUS_NULL_ARGUMENT, "an empty key has no value");
        return;
    }
    require(section.getValue(key, &text) == eSTATUS_SUCCESS, "a pair has a value");
    require(section[key] == text && section[ordinal] == text, "values agree");
    const auto comment = raw.indexOf(u'#');
    require(comment < 0 ? text == raw : text.trimmed() == raw.left(comment).trimmed(),
            "a value is its text without the comment");
    checkNumbers(section, key, text);
}

void checkCopy(const CPLSection& section)
{
    QString saved;
    QString again;
    section.saveSectionData(saved);
    CPLSection copy(section);
    copy.saveSectionData(again);
    require(again == saved, "a copy saves alike");
    copy.addKeyValue("added to the copy"_s, QString());
    copy.clearKeyValuePairs();
    section.saveSectionData(again);
    require(copy.count() == 0 && again == saved, "a copy shares nothing");
}

} // namespace

void require(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "\nDoes not hold: %s\n", what);
    std::abort();
}

bool succeeded(tag_estatus status, std::initializer_list<tag_estatus> failures)
{
    if (status == eSTATUS_SUCCESS)
        return true;
    for (const tag_estatus failure : failures) {
        if (failure == status)
            return false;
    }
    require(false, qPrintable("the status is documented, not "_s + getStatusString(status)));
    return false;
}

bool sameNumber(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

Input::Input(const std::uint8_t* data, std::size_t size)
{
    QByteArray* part = &file;
    const QByteArray bytes(reinterpret_cast<const char*>(data), int(size));
    QList<QByteArray> lines = bytes.split('\n');
    const QByteArray last = lines.takeLast();
    for (const QByteArray& line : std::as_const(lines)) {
        if (line.startsWith("==== "))
            part = &parts[line.mid(5).trimmed()];
        else
            *part += line + '\n';
    }
    *part += last;
}

QStringList Input::lines(const char* part) const
{
    const QString text = latin1(parts.value(part));
    return text.isEmpty() ? QStringList() : text.split(u'\n');
}

QString temporaryPath(const QString& name)
{
    static const QTemporaryDir folder;
    return folder.filePath(name);
}

QString temporaryFile(const QString& name, const QByteArray& bytes)
{
    QFile file(temporaryPath(name));
    require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(),
            "the temporary folder can be written");
    return file.fileName();
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    require(file.open(QIODevice::ReadOnly), "a written file can be read");
    return file.readAll();
}

void checkSection(const CPLSection& section)
{
    QStringList keys;
    QStringList values;
    QStringList raw;
    int count = -1;
    section.getKeyList(&keys);
    section.getValueList(&values);
    section.getRawValueList(&raw);
    section.getKeyValuePairCount(&count);
    require(count == section.count() && count == keys.size() && count == values.size() &&
                count == raw.size(),
            "counts and lists agree");
    for (int i = 0; i < count; ++i) {
        checkPair(section, i, keys.at(i), raw.at(i));
        require(section[i] == values.at(i), "the list holds the values");
    }
    QString key;
    require(section.getKey(-1, &key) == eSTATUS_FAILED &&
                section.getKey(count, &key) == eSTATUS_FAILED && section[count].isNull(),
            "no pair beyond the ends");
    QStringList selected;
    if (count > 0 && !keys.first().isEmpty()) {
        section.getKeylistFromKeyAndSubkey(keys.first(), QString(), &selected);
        require(selected.contains(keys.first()), "a key begins with itself");
    }
    checkCopy(section);
}

bool holdsCommentKey(const CPLSection& section)
{
    QStringList keys;
    section.getKeyList(&keys);
    return std::any_of(keys.cbegin(), keys.cend(), [](const QString& key) {
        return key.contains(PLKeyword::Text::CommentKey, Qt::CaseInsensitive);
    });
}

bool isReadBack(const CPLClickInfo& document, const QByteArray& saved)
{
    int sections = 0;
    for (; const CPLSection* const section = document[sections]; ++sections) {
        if (holdsCommentKey(*section))
            return false;
    }
    return int(saved.startsWith("***")) + saved.count("\n***") == sections;
}

void checkRoundTrip(const QByteArray& bytes)
{
    CPLClickInfo first;
    const tag_estatus status = first.loadClickInfo(temporaryFile("First.txt"_s, bytes), false);
    const bool loaded = succeeded(status, {eSTATUS_BAD_FORMAT, eSTATUS_EMPTY_SECTION_KEY});
    const QByteArray saved = first.getClickInfoData();
    // Of a preamble alone, the empty lines before a malformed header are trimmed away.
    if (!isReadBack(first, saved) || (!loaded && first[0] == nullptr))
        return;
    CPLClickInfo second;
    require(second.loadClickInfo(temporaryFile("Saved.txt"_s, saved), false) == eSTATUS_SUCCESS,
            "a saved document loads");
    require(second.getClickInfoData() == saved, "a saved document saves alike");
}

} // namespace fuzz
