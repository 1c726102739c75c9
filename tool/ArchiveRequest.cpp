// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "ArchiveRequest.h"

#include <QtCore/QFileInfo>

#include <algorithm>

namespace {

std::optional<int> jobsOf(const Request& request)
{
    if (!request.has(Options::jobs))
        return std::max(1, int(std::thread::hardware_concurrency()));
    const int jobs = request.value(Options::jobs).toInt();
    if (jobs >= 1 && jobs <= 256)
        return jobs;
    fail(WrongUsage, QStringLiteral("--jobs takes a number from 1 to 256"));
    return std::nullopt;
}

std::optional<QList<Column>> columnsOf(const Request& request)
{
    QStringList names = request.values(Options::column);
    names.removeDuplicates();
    QList<Column> columns;
    for (const QString& name : qAsConst(names)) {
        const auto column = columnOf(name);
        if (!column) {
            fail(WrongUsage, QStringLiteral("--column takes SECTION/KEY, not '%1'").arg(name));
            return std::nullopt;
        }
        columns += *column;
    }
    return columns;
}

} // namespace

std::optional<Shard> shardOf(const Request& request)
{
    if (!request.has(Options::shard))
        return Shard();
    const auto shard = shardOf(request.value(Options::shard));
    if (!shard)
        fail(WrongUsage, QStringLiteral("--shard takes K/N, a number from 1 to N and N itself"));
    return shard;
}

std::optional<ArchiveRequest> archiveRequestOf(const Request& request)
{
    const auto shard = shardOf(request);
    const auto jobs = jobsOf(request);
    const auto columns = columnsOf(request);
    if (!shard || !jobs || !columns)
        return std::nullopt;
    ArchiveRequest archive;
    archive.jobs = *jobs;
    archive.wanted = {*columns, request.has(Options::all)};
    archive.walk = {request.has(Options::recursive), !request.has(Options::noFollow), *shard,
                    QString(), false};
    if (request.has(Options::relativeTo))
        archive.walk.relativeTo = QFileInfo(request.value(Options::relativeTo)).absoluteFilePath();
    return archive;
}
