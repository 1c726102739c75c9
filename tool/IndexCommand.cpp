// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "ArchiveRequest.h"
#include "Commands.h"
#include "FailureList.h"
#include "Files.h"
#include "IndexMerge.h"
#include "IndexUpdate.h"
#include "Interrupt.h"
#include "Progress.h"

#include <QtCore/QLockFile>
#include <QtSql/QSqlDatabase>

namespace {

/** Counts what is indexed and remembers what cannot be read. */
class Indexing
{
public:
    explicit Indexing(const QString& path)
        : m_update(path)
    {}

    IndexUpdate& update() { return m_update; }

    void add(const Found& found)
    {
        ++m_files;
        m_failures.add(found);
        m_update.add(found);
        m_progress.show(found.progress, m_files, "file", m_failures.count());
    }

    ExitCode finish(const QString& path, const QString& list)
    {
        m_progress.clear();
        return m_update.finish() ? m_failures.tell(list) : fail(path, m_update.problem());
    }

private:
    IndexUpdate m_update;
    Progress m_progress;
    int m_files = 0;
    FailureList m_failures;
};

ExitCode indexArchive(const Request& request, const ArchiveRequest& archive, const QString& path)
{
    Indexing indexing(path);
    if (!indexing.update().open())
        return fail(path, indexing.update().problem());
    ArchiveReader reader(archive.jobs, archive.wanted,
                         [&](const Found& found) { indexing.add(found); });
    ArchiveWalk walk(archive.walk, [&](Found found) {
        indexing.update().look(&found);
        reader.add(std::move(found));
        return !Interrupt::isAsked() && !indexing.update().isFailed();
    });
    walk.walk(request.files);
    reader.finish();
    if (Interrupt::isAsked())
        return fail(path, QStringLiteral("interrupted; the index is as it was"));
    return indexing.finish(path, request.value(Options::failures));
}

} // namespace

ExitCode indexCommand(const Request& request)
{
    const Interrupt interrupt;
    auto archive = archiveRequestOf(request);
    if (!archive)
        return WrongUsage;
    archive->walk.recursive = true;
    archive->wanted.sections = true;
    const QString path = request.value(Options::indexFile);
    if (!QSqlDatabase::isDriverAvailable(QStringLiteral("QSQLITE")))
        return fail(BadFile, QStringLiteral("Qt's driver for SQLite (QSQLITE) is not installed"));
    const QString lockPath = path + QLatin1String(".lock");
    QLockFile lock(lockPath);
    lock.setStaleLockTime(0); // only a program that has ended leaves its lock to others
    if (!lock.tryLock()) {
        const char* const obstacle = obstacleOf(lockPath, Access::Write);
        return fail(path,
                    lock.error() == QLockFile::LockFailedError
                        ? QStringLiteral("another run is writing it")
                        : QLatin1String(obstacle ? obstacle : "no file can be made in its folder"));
    }
    return request.has(Options::merge) ? mergeIndexes(request.files, path)
                                       : indexArchive(request, *archive, path);
}
