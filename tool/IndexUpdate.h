// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * Brings an index up to date.
 */
#ifndef OVINFO_INDEXUPDATE_H
#define OVINFO_INDEXUPDATE_H

#include "IndexBuild.h"

/**
 * Compares what a walk finds with the index that is there. As long as both agree nothing is
 * written; a file that has changed neither in size nor in time is not read.
 */
class IndexUpdate
{
public:
    explicit IndexUpdate(const QString& path);

    /** Opens the index that is there, if any; false when there is something else. */
    bool open();

    /** Decides whether a file is to be read. To be called in the order of the walk. */
    void look(Found* found);

    /** Takes what look() has seen, after it was read if it had to be, in the same order. */
    void add(const Found& found);

    /** Whether a failure makes it useless to go on. */
    [[nodiscard]] bool isFailed() const { return !problem().isEmpty(); }

    /** Puts the new index in place of the old one if anything has changed. */
    bool finish();

    [[nodiscard]] QString problem() const
    {
        return m_problem.isEmpty() ? m_build.problem() : m_problem;
    }

private:
    void expectFrom(qint64 row);
    void expectNext();
    void seek(const Found& found);
    qint64 findRow(const Found& found);
    FileRow oldRow();
    bool putInPlace(const Found& found);
    bool startWriting();
    void leavePlaces();
    void flush();

    QString m_path;
    std::unique_ptr<IndexFile> m_old; ///< null when there is none
    QSqlQuery m_rows;                 ///< what look() expects, row by row
    QSqlQuery m_rowById;
    QSqlQuery m_idByPath;
    FileRow m_expected; ///< without a number after the last one
    IndexBuild m_build;
    QString m_problem;
    bool m_inPlace = false; ///< whether every row has the place yet that it had before
    qint64 m_oldCount = 0;
    qint64 m_seen = 0;          ///< how many files were added
    qint64 m_knownSequence = 0; ///< the old row of the sequence that look() is at; 0: not known
    qint64 m_firstKnown = 0;    ///< known rows that are still to be copied, from this one
    qint64 m_lastKnown = 0;     ///< to this one
};

#endif
