// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "IndexUpdate.h"

#include "Files.h"

#include <QtCore/QFileInfo>

namespace {

bool isListed(const Found& found)
{
    return found.kind != Found::SequenceFile && found.acquisition.sequence;
}

FileRow rowFor(const Found& found, qint64 id)
{
    FileRow row;
    row.id = id;
    row.path = found.acquisition.path;
    row.kind = kindName(found.kind);
    row.status =
        found.problem.isEmpty() ? QString(found.empty ? statusEmpty : statusRead) : found.problem;
    if (found.problem.isEmpty()) {
        row.size = found.size;
        row.time = found.time;
    }
    row.sequence = isListed(found) ? 1 : 0;
    return row;
}

/** Whether a row is one of a file, be it as it was or not. */
bool isOf(const FileRow& row, const Found& found)
{
    return row.id > 0 && row.path == found.acquisition.path && row.kind == kindName(found.kind);
}

/** Whether a row tells of its file as it is now. */
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
    m_old->run(QStringLiteral("BEGIN")); // locks it once, and not for each statement
    m_oldCount = m_old->fileCount();
    m_inPlace = true;
    m_rows = m_old->prepared(selectFiles() + QLatin1String(" WHERE id >= ? ORDER BY id"));
    m_rowById = m_old->prepared(selectFiles() + QLatin1String(" WHERE id = ?"));
    m_idByPath = m_old->prepared(
        QStringLiteral("SELECT id FROM files WHERE path = ? AND kind = ? ORDER BY id"));
    expectFrom(1);
    return true;
}

void IndexUpdate::expectFrom(qint64 row)
{
    m_old->run(&m_rows, {row});
    expectNext();
}

void IndexUpdate::expectNext()
{
    m_expected = m_rows.next() ? fileRowOf(m_rows) : FileRow();
}

/** Goes to the row of a file where the walk and the index do not agree. */
void IndexUpdate::seek(const Found& found)
{
    const bool isThere =
        m_old->run(&m_idByPath, {found.acquisition.path, QString(kindName(found.kind))}) &&
        m_idByPath.next();
    if (isThere)
        expectFrom(m_idByPath.value(0).toLongLong());
    m_idByPath.finish();
}

/** The row of a file as it is now; of its sequence the same must be true. */
qint64 IndexUpdate::findRow(const Found& found)
{
    if (!isOf(m_expected, found))
        seek(found);
    if (!isOf(m_expected, found))
        return 0;
    const FileRow row = m_expected;
    expectNext();
    const bool needsSequence = isListed(found);
    const bool isInSequence = row.sequence == (needsSequence ? m_knownSequence : 0);
    return isInSequence && (!needsSequence || m_knownSequence > 0) && isSame(row, found) ? row.id
                                                                                         : 0;
}

void IndexUpdate::look(Found* found)
{
    if (found->toRead) {
        const FileStamp stamp = stampOf(found->file);
        found->size = stamp.size;
        found->time = stamp.time;
    }
    if (m_old)
        found->known = findRow(*found);
    if (found->kind == Found::SequenceFile)
        m_knownSequence = found->known;
    found->toRead = found->toRead && found->known == 0;
}

/** The row of the old index in the place of the one that is made. */
FileRow IndexUpdate::oldRow()
{
    const bool isThere = m_old->run(&m_rowById, {m_seen}) && m_rowById.next();
    FileRow row = isThere ? fileRowOf(m_rowById) : FileRow();
    m_rowById.finish();
    return row;
}

/** Whether a row is made over the one that has its place; otherwise the places move from here on.
 */
bool IndexUpdate::putInPlace(const Found& found)
{
    if (found.known == m_seen)
        return true;
    const FileRow old = oldRow();
    const FileRow row = rowFor(found, m_seen);
    if (found.known > 0 || !isOf(old, found))
        return false;
    const bool isAsBefore = !found.problem.isEmpty() && old.status == row.status &&
                            (old.sequence > 0) == (row.sequence > 0);
    if (!isAsBefore && startWriting())
        m_build.replace(row, found);
    return true;
}

bool IndexUpdate::startWriting()
{
    return m_build.isStarted() || m_build.startFromOld();
}

/** Lets the places move from the row that is made on. */
void IndexUpdate::leavePlaces()
{
    m_inPlace = false;
    if (startWriting())
        m_build.cut(m_seen);
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
    if (m_inPlace && putInPlace(found))
        return;
    if (m_inPlace)
        leavePlaces();
    if (!m_build.isStarted())
        return;
    const bool goesOn = found.known > 0 && m_firstKnown > 0 && found.known == m_lastKnown + 1;
    if (!goesOn)
        flush();
    if (found.known == 0) {
        m_build.add(rowFor(found, m_seen), found);
        return;
    }
    if (!goesOn)
        m_firstKnown = found.known;
    m_lastKnown = found.known;
}

bool IndexUpdate::finish()
{
    ++m_seen;
    if (m_inPlace && m_seen <= m_oldCount)
        leavePlaces();
    if (m_old && !m_build.isStarted())
        return !isFailed();
    flush();
    m_rows = QSqlQuery();
    m_rowById = QSqlQuery();
    m_idByPath = QSqlQuery();
    m_old.reset();
    return !isFailed() && m_build.finish();
}
