// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * The SQLite file that an archive is indexed in.
 */
#ifndef OVINFO_INDEXFILE_H
#define OVINFO_INDEXFILE_H

#include "Found.h"

#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtSql/QSqlDatabase>
#include <QtSql/QSqlQuery>

#include <memory>
#include <optional>

/** A row of the table "files". */
struct FileRow
{
    qint64 id = 0;
    QString path;
    QVariant size; ///< null when it was not read
    QVariant time; ///< of the last change, in milliseconds since 1970
    QString kind;
    QString status;
    qint64 sequence = 0; ///< the row of the sequence that lists it; 0 when there is none
};

/** A connection to a file of SQLite, closed when it is destroyed. */
class IndexFile
{
public:
    /**
     * Opens an index to read it. What is no index is not touched.
     *
     * @param problem  receives what is wrong; nothing is returned then
     */
    static std::unique_ptr<IndexFile> open(const QString& path, QString* problem);

    /** Makes a file with the tables of an index, and begins its only transaction. */
    static std::unique_ptr<IndexFile> create(const QString& path, QString* problem);

    /** The same with all that an index holds, which statements can then name "source". */
    static std::unique_ptr<IndexFile> createFrom(const QString& source, const QString& path,
                                                 QString* problem);

    IndexFile(const IndexFile&) = delete;
    IndexFile& operator=(const IndexFile&) = delete;
    ~IndexFile();

    /** Runs a statement without a result; false when it fails, and problem() says why. */
    bool run(const QString& statement);

    /** A statement that is run many times; its results are read forwards only. */
    [[nodiscard]] QSqlQuery prepared(const QString& statement) const;

    /** Runs a prepared statement with values; false when it fails, and problem() says why. */
    bool run(QSqlQuery* query, const QVariantList& values);

    /** What went wrong first; empty when nothing did. */
    [[nodiscard]] QString problem() const { return m_problem; }

    /** How many files it tells of. */
    [[nodiscard]] qint64 fileCount() const;

private:
    explicit IndexFile(const QString& path);
    static std::unique_ptr<IndexFile> make(const QString& path, const QStringList& statements,
                                           QString* problem);
    QString refusal();

    QString m_path;
    QSqlDatabase m_database;
    QString m_problem;
};

/** The statement that selects the columns of FileRow, without a condition. */
QString selectFiles();

/** The row that a query of selectFiles() is at. */
FileRow fileRowOf(const QSqlQuery& query);

/** A name in the quotation marks of SQL. */
QString sqlName(const QString& name);

/** As many question marks as there are values, with commas. */
QString placeholders(int count);

/** The columns of the table "entries", as SQL. */
inline constexpr QLatin1String entryColumns =
    PLKeyword::keyword("file, place, section, key, value, comment");

/** How many columns that are. */
inline constexpr int entryColumnCount = 6;

/** What the column "status" says of a file that was read. */
inline constexpr QLatin1String statusRead = PLKeyword::keyword("read");

/** The same of a DICOM file without click info. */
inline constexpr QLatin1String statusEmpty = PLKeyword::keyword("no click info");

#endif
