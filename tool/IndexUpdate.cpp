// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "IndexUpdate.h"

#include <QtCore/QDateTime>
#include <QtCore/QFileInfo>

namespace {

FileRow rowFor(const Found& found)
{
    FileRow row;
    row.path = found.acquisition.path;
    row.kind = kindName(found.kind);
    row.status =
        found.problem.isEmpty() ? QString(found.empty ? statusEmpty : statusRead) : found.problem;
    if (found.problem.isEmpty()) {
        row.size = found.size;
        row.time = found.time;
    }
    const bool isListed = found.kind != Found::SequenceFile && found.acquisition.sequence;
    row.sequence = isListed ? 1 : 0;
    return row;
}

/** Whether a row tells of a file as it is now. */
bool isSame(const FileRow& row, const Found& found)
{
    if (!found.problem.isEmpty())
        return row.status == found.problem;
    return (row.status == statusRead || row.status == statusEmpty) &&
           row.size.toLongLong() == found.size && row.time.toLongLong() == found.time;
}

} // namespace

IndexUpdate::IndexUpdate(const QString& path)
    : m_path(path)
    , m_build(path)
{}

bool IndexUpdate::open()
{
    const QFileInfo info(m_path);
    if (!info.exists() && !info.isSymLink())
        return m_build.start();
    m_old = IndexFile::open(m_path, &m_problem);
    if (!m_old)
        return false;
    m_build.setSource(m_path);
    m_oldCount = m_old->fileCount();
    m_rowById = m_old->prepared(selectFiles() + QLatin1String(" WHERE id = ?"));
    m_rowByPath = m_old->prepared(selectFiles() + QLatin1String(" WHERE path = ? ORDER BY id"));
    return true;
}

/** Whether a query gives a row of the file as it is now; of its sequence the same must be true. */
bool IndexUpdate::isRow(QSqlQuery* query, const QVariant& wanted, const Found& found, FileRow* row)
{
    const bool isListed = found.kind != Found::SequenceFile && found.acquisition.sequence;
    const qint64 sequence = isListed ? m_knownSequence : 0;
    if ((isListed && sequence == 0) || !m_old->run(query, {wanted}))
        return false;
    bool isFound = false;
    while (!isFound && query->next()) {
        *row = fileRowOf(*query);
        isFound = row->path == found.acquisition.path && row->kind == kindName(found.kind) &&
                  row->sequence == sequence && isSame(*row, found);
    }
    query->finish();
    return isFound;
}

qint64 IndexUpdate::findRow(const Found& found)
{
    FileRow row;
    const bool isFound = isRow(&m_rowById, m_next, found, &row) ||
                         isRow(&m_rowByPath, found.acquisition.path, found, &row);
    return isFound ? row.id : 0;
}

void IndexUpdate::look(Found* found)
{
    if (found->toRead) {
        const QFileInfo info(found->file);
        found->size = info.size();
        found->time = info.lastModified().toMSecsSinceEpoch();
    }
    if (m_old)
        found->known = findRow(*found);
    if (found->kind == Found::SequenceFile)
        m_knownSequence = found->known;
    if (found->known == 0)
        return;
    found->toRead = false;
    m_next = found->known + 1;
}

/** Whether the old index has the same row in the same place. */
bool IndexUpdate::isAsBefore(const Found& found)
{
    if (found.known > 0)
        return found.known == m_seen;
    FileRow row;
    if (found.problem.isEmpty() || !m_old->run(&m_rowById, {m_seen}) || !m_rowById.next())
        return false;
    row = fileRowOf(m_rowById);
    m_rowById.finish();
    const FileRow wanted = rowFor(found);
    return row.path == wanted.path && row.kind == wanted.kind && row.status == wanted.status &&
           (row.sequence > 0) == (wanted.sequence > 0);
}

void IndexUpdate::startWriting()
{
    if (m_build.start() && m_seen > 1)
        m_build.copy(1, m_seen - 1);
}

void IndexUpdate::flush()
{
    if (m_firstKnown > 0)
        m_build.copy(m_firstKnown, m_lastKnown);
    m_firstKnown = 0;
}

void IndexUpdate::add(const Found& found)
{
    ++m_seen;
    if (!m_build.isStarted()) {
        if (isAsBefore(found))
            return;
        startWriting();
    }
    if (!m_build.isStarted())
        return;
    const bool goesOn = found.known > 0 && m_firstKnown > 0 && found.known == m_lastKnown + 1;
    if (!goesOn)
        flush();
    if (found.known == 0) {
        m_build.add(rowFor(found), found);
        return;
    }
    if (!goesOn)
        m_firstKnown = found.known;
    m_lastKnown = found.known;
}

bool IndexUpdate::finish()
{
    if (!m_build.isStarted() && m_seen == m_oldCount)
        return true;
    if (!m_build.isStarted()) {
        ++m_seen;
        startWriting();
    }
    flush();
    m_rowById = QSqlQuery();
    m_rowByPath = QSqlQuery();
    m_old.reset();
    return !isFailed() && m_build.finish();
}
