// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * Makes the index of an archive, from the one that is there and what has changed since.
 */
#ifndef OVINFO_INDEXBUILD_H
#define OVINFO_INDEXBUILD_H

#include "IndexFile.h"

/**
 * Fills the tables of a new index in the order of a walk, so that equal archives give equal files.
 *
 * It is made in a second file, which takes the place of the index at the end. Nothing that happens
 * before that changes the index.
 */
class IndexBuild
{
public:
    /** @param path  the index; replaced by finish() */
    explicit IndexBuild(const QString& path);
    IndexBuild(const IndexBuild&) = delete;
    IndexBuild& operator=(const IndexBuild&) = delete;

    /** Removes the second file when the build was not finished. */
    ~IndexBuild();

    /** Makes the second file without a row; false when that fails. */
    bool start();

    /** Makes it of a copy of the index, which replace(), cut() and copy() change; false as above.
     */
    bool startFromOld();

    [[nodiscard]] bool isStarted() const { return m_file != nullptr; }

    /** Adds a file that was read, or cannot be read. @param row  id and sequence are set here */
    void add(FileRow row, const Found& found);

    /** Adds a file with its rows in another index. */
    void add(FileRow row, IndexFile* other);

    /** Adds the files from one row to another of the old index, together. */
    void copy(qint64 first, qint64 last);

    /** Puts a file that was read in the place of the row with its number. */
    void replace(FileRow row, const Found& found);

    /** Takes the rows from one on out again; others are then added after those that stay. */
    void cut(qint64 first);

    /** Puts the new index in place; false when something went wrong since start(). */
    bool finish();

    /** What went wrong first; empty when nothing did. */
    [[nodiscard]] QString problem() const;

private:
    bool open();
    [[nodiscard]] qint64 sequenceBefore(qint64 row);
    void addFile(FileRow row);
    void addRows(const Found& found);
    void deleteRows(const char* condition, qint64 row);
    void addEntries(const QList<SectionText>& sections);
    void addEntry(int place, const SectionText& section, const Entry& entry);
    void closeStatements(); ///< which must be gone before their connection
    bool takePlace();
    [[nodiscard]] QString secondFile() const { return m_path + QLatin1String(".part"); }
    [[nodiscard]] QString finishedFile() const { return m_path + QLatin1String(".new"); }

    QString m_path;
    std::unique_ptr<IndexFile> m_file;
    QSqlQuery m_insertFile;
    QSqlQuery m_insertAcquisition;
    QSqlQuery m_insertEntry;
    QSqlQuery m_sequenceBefore;
    qint64 m_count = 0;    ///< how many files were added
    qint64 m_sequence = 0; ///< the row of the sequence whose acquisitions are being added
    bool m_hasIndexes = false;
    QString m_problem;
};

#endif
