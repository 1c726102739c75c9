// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "ArchiveRequest.h"
#include "Commands.h"
#include "FailureList.h"
#include "Interrupt.h"
#include "Progress.h"
#include "StudyMerge.h"
#include "StudyWriter.h"
#include "Terminal.h"

#include <cstdio>
#include <memory>

namespace {

/** Prints what is read and remembers what is not. */
class Study
{
public:
    explicit Study(std::unique_ptr<StudyWriter> writer)
        : m_writer(std::move(writer))
    {}

    void add(const Found& found)
    {
        if (found.kind == Found::AcquisitionFile)
            ++m_acquisitions;
        m_failures.add(found);
        if (m_sharesTerminal)
            m_progress.clear();
        m_writer->add(found);
        m_progress.show(found.progress, m_acquisitions, "acquisition", m_failures.count());
    }

    /** @param list  a file for the failures; empty: they are told */
    ExitCode finish(const QString& list)
    {
        m_progress.clear();
        const QString problem = m_writer->finish();
        if (!problem.isEmpty())
            return fail(BadFile, problem);
        return m_failures.tell(list);
    }

private:
    std::unique_ptr<StudyWriter> m_writer;
    Progress m_progress;
    bool m_sharesTerminal = showsOutput(); ///< whether the records and the bar are shown together
    int m_acquisitions = 0;
    FailureList m_failures;
};

std::unique_ptr<StudyWriter> writerFor(const Request& request, const Wanted& wanted)
{
    if (request.has(Options::csv))
        return std::make_unique<CsvWriter>(wanted, request.has(Options::spreadsheet));
    if (request.has(Options::jsonl) || request.has(Options::merge))
        return std::make_unique<JsonLinesWriter>(wanted);
    if (request.has(Options::json))
        return std::make_unique<JsonWriter>(wanted);
    return std::make_unique<TableWriter>(wanted, request.has(Options::recursive) ||
                                                     request.files.size() > 1);
}

/** Options that do not go together; empty when all do. */
QString conflictIn(const Request& request)
{
    if (request.has(Options::spreadsheet) && !request.has(Options::csv))
        return QStringLiteral("--spreadsheet goes with --csv");
    if (request.has(Options::all) && !request.has(Options::json) && !request.has(Options::jsonl))
        return QStringLiteral("--all goes with --json or --jsonl");
    if (request.has(Options::merge) && request.has(Options::json))
        return QStringLiteral("--merge goes with --jsonl or --csv");
    return {};
}

} // namespace

ExitCode studyCommand(const Request& request)
{
    const QString conflict = conflictIn(request);
    if (!conflict.isEmpty())
        return fail(WrongUsage, conflict);
    const auto archive = archiveRequestOf(request);
    if (!archive)
        return WrongUsage;
    const Interrupt interrupt;
    auto writer = writerFor(request, archive->wanted);
    if (request.has(Options::merge))
        return mergeRecords(request.files, writer.get());
    Study study(std::move(writer));
    ArchiveReader reader(archive->jobs, archive->wanted,
                         [&](const Found& found) { study.add(found); });
    ArchiveWalk walk(archive->walk, [&](Found found) {
        reader.add(std::move(found));
        // Stops also when nobody takes the output any more.
        return !Interrupt::isAsked() && std::ferror(stdout) == 0;
    });
    walk.walk(request.files);
    reader.finish();
    return study.finish(request.value(Options::failures));
}
