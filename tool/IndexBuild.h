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

    /** Takes the rows of another index over with copy(). To be called before start(). */
    void setSource(const QString& path) { m_source = path; }

    /** Makes the second file; false when that fails. */
    bool start();

    [[nodiscard]] bool isStarted() const { return m_file != nullptr; }

    /** Adds a file that was read, or cannot be read. @param row  id and sequence are set here */
    void add(FileRow row, const Found& found);

    /** Adds a file with its rows in another index. */
    void add(FileRow row, IndexFile* other);

    /** Adds the files from one row to another of the source, together. */
    void copy(qint64 first, qint64 last);

    /** How many files were added. */
    [[nodiscard]] qint64 count() const { return m_count; }

    /** Puts the new index in place; false when something went wrong since start(). */
    bool finish();

    /** What went wrong first; empty when nothing did. */
    [[nodiscard]] QString problem() const;

private:
    void addFile(FileRow row);
    void addEntries(const QList<SectionText>& sections);
    void addEntry(int place, const SectionText& section, const Entry& entry);
    void closeStatements(); ///< which must be gone before their connection
    bool replace();
    [[nodiscard]] QString secondFile() const { return m_path + QLatin1String(".part"); }
    [[nodiscard]] QString finishedFile() const { return m_path + QLatin1String(".new"); }

    QString m_path;
    QString m_source;
    std::unique_ptr<IndexFile> m_file;
    QSqlQuery m_insertFile;
    QSqlQuery m_insertAcquisition;
    QSqlQuery m_insertEntry;
    qint64 m_count = 0;
    qint64 m_sequence = 0; ///< the row of the sequence whose acquisitions are being added
    QString m_problem;
};

#endif
