// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * What the tests share: text literals, whole files, readable statuses.
 */
#ifndef OVPARSER_TESTS_SUPPORT_H
#define OVPARSER_TESTS_SUPPORT_H

#include "ParserLibrary.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

#include <locale>
#include <memory>

inline QString operator""_s(const char* text, std::size_t size)
{
    return QString::fromUtf8(text, int(size));
}

Q_DECLARE_METATYPE(tag_estatus)

namespace QTest {

template <>
inline char* toString(const tag_estatus& status)
{
    return qstrdup(qPrintable(getStatusString(status)));
}

} // namespace QTest

namespace support {

inline QByteArray readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(unreadable)");
}

inline void writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

/** Adds columns of texts to the table of a test. */
inline void textColumns(std::initializer_list<const char*> names)
{
    for (const char* const name : names)
        QTest::addColumn<QString>(name);
}

/** Adds a row of texts to the table of a test. */
template <typename... Texts>
void textRow(const char* name, Texts... texts)
{
    (QTest::newRow(name) << ... << QString::fromLatin1(texts));
}

/** What numbers in files must not look like, whatever the program's locale. */
struct DecimalComma : std::numpunct<char>
{
    [[nodiscard]] char do_decimal_point() const override { return ','; }

    [[nodiscard]] std::string do_grouping() const override { return "\3"; }
};

/** A row of test data: its name and the values of the columns. */
template <typename... Values>
void row(const char* name, const Values&... values)
{
    QTestData& data = QTest::newRow(name);
    (data << ... << values);
}

/** A file in the examples that ship with the project. */
inline QString example(const char* name)
{
    return QStringLiteral(OVPARSER_EXAMPLES "/") + QLatin1String(name);
}

/** The keys of a section's pairs, joined by '|'. */
inline QString keysOf(const CPLSection* section)
{
    QStringList keys;
    if (section)
        section->getKeyList(&keys);
    return keys.join(QLatin1Char('|'));
}

/** The keys of a document's sections in order, joined by '|'. */
template <typename Document>
QString sectionsOf(const Document& document)
{
    QStringList keys;
    for (int i = 0; const CPLSection* section = document[i]; ++i) {
        QString key;
        section->getSectionKey(&key);
        keys += key;
    }
    return keys.join(QLatin1Char('|'));
}

/** A device that takes no byte, to see that a full disk is noticed; empty where there is none. */
inline QString fullDisk()
{
    const QString device = QStringLiteral("/dev/full");
    return QFile::exists(device) ? device : QString();
}

inline void skipFullDisk()
{
    QTest::qSkip("no device that takes no byte", __FILE__, __LINE__);
}

} // namespace support

#endif
