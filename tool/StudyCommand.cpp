#include "Archive.h"
#include "Commands.h"
#include "Progress.h"
#include "StudyWriter.h"
#include "Terminal.h"

#include <algorithm>
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
        if (!found.problem.isEmpty())
            m_failures += {found.acquisition.path, found.problem};
        m_progress.clear();
        m_writer->add(found);
        m_progress.show(found.progress, m_acquisitions, int(m_failures.size()));
    }

    ExitCode finish()
    {
        m_progress.clear();
        m_writer->finish();
        for (const auto& failure : qAsConst(m_failures))
            fail(failure.first, failure.second);
        return m_failures.isEmpty() ? Success : BadFile;
    }

private:
    std::unique_ptr<StudyWriter> m_writer;
    Progress m_progress;
    int m_acquisitions = 0;
    QList<QPair<QString, QString>> m_failures;
};

ExitCode study(const QStringList& folders, bool recursive, int jobs,
               std::unique_ptr<StudyWriter> writer)
{
    Study study(std::move(writer));
    ArchiveReader reader(jobs, [&](const Found& found) { study.add(found); });
    ArchiveWalk walk(recursive, [&](Found found) {
        reader.add(std::move(found));
        return std::ferror(stdout) == 0; // nobody takes the output any more
    });
    const double span = 1.0 / double(folders.size());
    for (int i = 0; i < folders.size(); ++i) {
        if (!walk.walk(folders.at(i), span * i, span))
            break;
    }
    reader.finish();
    return study.finish();
}

std::unique_ptr<StudyWriter> writerFor(const Request& request)
{
    if (request.has(Options::csv))
        return std::make_unique<CsvWriter>();
    if (request.has(Options::jsonl))
        return std::make_unique<JsonLinesWriter>();
    if (request.has(Options::json))
        return std::make_unique<JsonWriter>();
    return std::make_unique<TableWriter>(request.has(Options::recursive) ||
                                         request.files.size() > 1);
}

} // namespace

ExitCode studyCommand(const Request& request)
{
    const int cores = std::max(1, int(std::thread::hardware_concurrency()));
    const int threads = request.has(Options::jobs) ? request.value(Options::jobs).toInt() : cores;
    if (threads < 1 || threads > 256)
        return fail(WrongUsage, QLatin1String("--jobs takes a number from 1 to 256"));
    return study(request.files, request.has(Options::recursive), threads, writerFor(request));
}
