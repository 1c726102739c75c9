// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Commands.h"
#include "Files.h"
#include "Interrupt.h"
#include "ReportPage.h"
#include "ReportSource.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

namespace {

/** The value of an option, or what counts when it is not given. */
QString valueOr(const Request& request, const Option& option, const QString& otherwise)
{
    return request.has(option) ? request.value(option) : otherwise;
}

/** Options that ask for a walk through folders. */
const Option folderOptions[] = {Options::jobs, Options::noFollow, Options::relativeTo};

/** Options that do not go together; empty when all do. */
QString conflictIn(const Request& request)
{
    if (!request.has(Options::fromJsonl) && !request.has(Options::fromIndex))
        return {};
    for (const Option& option : folderOptions) {
        if (request.has(option))
            return QStringLiteral("--%1 goes with folders").arg(QLatin1String(option.name));
    }
    return {};
}

/** What keeps a page from being written; a file that is no report is left alone. */
QString obstacleTo(const QString& path)
{
    if (const char* const obstacle = obstacleOf(path, Access::Write))
        return QLatin1String(obstacle);
    if (!QFileInfo(path).isFile() || QFileInfo(path).size() == 0)
        return QFileInfo(path).isDir() ? otherThanFile(path) : QString();
    QString problem;
    const auto bytes = readFile(path, &problem);
    if (!bytes)
        return problem;
    return isReportPage(*bytes) ? QString() : QStringLiteral("no report; left alone");
}

ExitCode save(const QString& folder, const QList<ReportPage>& pages)
{
    for (const ReportPage& page : pages) {
        const QString path = QDir(folder).filePath(page.name);
        const QString obstacle = obstacleTo(path);
        if (!obstacle.isEmpty())
            return fail(path, obstacle);
    }
    for (const ReportPage& page : pages) {
        const QString path = QDir(folder).filePath(page.name);
        if (!saveFile(path, page.bytes))
            return fail(path, QStringLiteral("cannot be written"));
    }
    return Success;
}

ExitCode readAll(const Request& request, const ArchiveRequest& archive, StudyRecords* records)
{
    if (request.has(Options::fromJsonl))
        return readJsonLines(request.files, records);
    if (request.has(Options::fromIndex))
        return readIndexes(request.files, records);
    return readFolders(request.files, archive, records);
}

} // namespace

ExitCode reportCommand(const Request& request)
{
    const QString conflict = conflictIn(request);
    if (!conflict.isEmpty())
        return fail(WrongUsage, conflict);
    const auto archive = archiveRequestOf(request);
    if (!archive)
        return WrongUsage;
    const QString output = request.value(Options::reportFile);
    if (output.isEmpty())
        return fail(WrongUsage, QStringLiteral("report needs --output FILE"));
    const QString obstacle = obstacleTo(output);
    if (!obstacle.isEmpty())
        return fail(output, obstacle);
    const Interrupt interrupt;
    StudyRecords records;
    const ExitCode read = readAll(request, *archive, &records);
    if (Interrupt::isAsked())
        return fail(output, QStringLiteral("interrupted; not written"));
    const ReportLabels labels = {valueOr(request, Options::groupBy, PLKeyword::Key::Group),
                                 valueOr(request, Options::subject, PLKeyword::Key::AnimalNumber)};
    const QString title = valueOr(request, Options::title, QStringLiteral("Study report"));
    const QFileInfo file(output);
    const ExitCode saved =
        save(file.path(), reportPages(reportOf(records, labels), labels, title, file.fileName()));
    return saved == Success ? read : saved;
}
