// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * What the fuzz targets share: inputs in parts, files of their own, and what holds for documents.
 */
#ifndef OVPARSER_FUZZ_SUPPORT_H
#define OVPARSER_FUZZ_SUPPORT_H

#include "ParserLibrary.h"

#include <QtCore/QByteArray>
#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <cstddef>
#include <cstdint>
#include <initializer_list>

/** What a target does with one input; it ends the program when something does not hold. */
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

inline QString operator""_s(const char* text, std::size_t size)
{
    return QString::fromLatin1(text, int(size));
}

namespace fuzz {

/** Ends the program with a message unless something holds that always must. */
void require(bool holds, const char* what);

/** Whether a status is success; any other must be one of those that the operation documents. */
bool succeeded(tag_estatus status, std::initializer_list<tag_estatus> failures);

/** Whether two numbers are equal; not-a-number equals itself. */
bool sameNumber(double a, double b);

/** Bytes as Latin-1 text; Qt by itself would stop at a NUL. */
inline QString latin1(const QByteArray& bytes)
{
    return QString::fromLatin1(bytes.constData(), bytes.size());
}

/** An input: a file, then parts that each begin with a line "==== NAME". */
struct Input
{
    Input(const std::uint8_t* data, std::size_t size);

    /** The lines of a part as Latin-1 text; none when the input lacks the part. */
    [[nodiscard]] QStringList lines(const char* part) const;

    QByteArray file;
    QMap<QByteArray, QByteArray> parts;
};

/** A path in the temporary folder of this process; the folder is removed at the end. */
QString temporaryPath(const QString& name);

/** Writes a file into the temporary folder and gives its path. */
QString temporaryFile(const QString& name, const QByteArray& bytes);

/** The bytes of a file. */
QByteArray contentOf(const QString& path);

/** Checks that the getters of a section agree with each other. */
void checkSection(const CPLSection& section);

/** Whether a section holds a pair that looks like a comment and so is written without its key. */
bool holdsCommentKey(const CPLSection& section);

/**
 * Whether a document is read back as it is saved. A line that begins with asterisks after a
 * vertical tab, which is trimmed away but does not delimit words, becomes a header line.
 */
bool isReadBack(const CPLClickInfo& document, const QByteArray& saved);

/**
 * Checks that a click-info text loads with a documented status, and that what is then saved loads
 * and saves to the same bytes.
 */
void checkRoundTrip(const QByteArray& bytes);

/** Checks that the lookups of a document agree, and its sections. Gives their number. */
template <typename Document>
int checkSections(const Document& document)
{
    int count = 0;
    while (const CPLSection* const section = document[count]) {
        QString key;
        section->getSectionKey(&key);
        require(document.isSectionPresent(key), "a section is present under its key");
        require(document[key] == section, "a section is found by its key");
        checkSection(*section);
        ++count;
    }
    require(document[-1] == nullptr && document[count + 1] == nullptr,
            "no section beyond the ends");
    return count;
}

} // namespace fuzz

#endif
