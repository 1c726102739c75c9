#include "Archive.h"
#include "Commands.h"
#include "Progress.h"
#include "StudyWriter.h"
#include "Terminal.h"

#include <QtCore/QFile>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <optional>

namespace {

/** Reads names of folders, one a line; "-" stands for the standard input. */
std::optional<QStringList> foldersIn(const QString& list)
{
    QFile file(list);
    const bool open = list == QLatin1String("-") ? file.open(stdin, QIODevice::ReadOnly)
                                                 : file.open(QIODevice::ReadOnly);
    if (!open)
        return std::nullopt;
    QStringList folders;
    for (QByteArray line = file.readLine(); !line.isEmpty(); line = file.readLine()) {
        while (line.endsWith('\n') || line.endsWith('\r'))
            line.chop(1);
        if (!line.isEmpty())
            folders += QFile::decodeName(line);
    }
    return folders;
}

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

} // namespace

int studyCommand(const QStringList& words)
{
    QCommandLineParser parser;
    const QCommandLineOption json = jsonOption();
    const QCommandLineOption csv = flag("csv", "Prints comma-separated values (RFC 4180).");
    const QCommandLineOption lines = flag("jsonl", "Prints one JSON object per line.");
    const QCommandLineOption recursive =
        flag("recursive", "Reads every sequence and acquisition below the folders.");
    const QCommandLineOption jobs =
        option("jobs", "N", "Reads with N threads; as many as there are cores if not given.");
    const QCommandLineOption list =
        option("from-file", "LIST",
               "Reads the names of folders from a file, one a line; - is standard "
               "input.");
    parser.addOptions({json, csv, lines, recursive, jobs, list});
    parser.setApplicationDescription(QLatin1String(
        "Prints sequence folders: each sequence and a table of its acquisitions. Exposure, "
        "binning and field of view are those of the main image. What cannot be read is told at "
        "the end."));
    if (const auto done =
            parse(parser, QLatin1String("study"), QLatin1String("[FOLDER...]"), words))
        return *done;
    QStringList folders = parser.positionalArguments();
    if (parser.isSet(list)) {
        const auto more = foldersIn(parser.value(list));
        if (!more)
            return fail(parser.value(list), eSTATUS_FILE_OPEN_FAILED);
        folders += *more;
    } else if (folders.isEmpty()) {
        return fail(WrongUsage, QLatin1String("study takes [FOLDER...] or --from-file; see 'ovinfo "
                                              "study --help'"));
    }
    const int cores = std::max(1, int(std::thread::hardware_concurrency()));
    const int threads = parser.isSet(jobs) ? parser.value(jobs).toInt() : cores;
    if (threads < 1 || threads > 256)
        return fail(WrongUsage, QLatin1String("--jobs takes a number from 1 to 256"));
    if (int(parser.isSet(json)) + int(parser.isSet(csv)) + int(parser.isSet(lines)) > 1)
        return fail(WrongUsage, QLatin1String("only one of --json, --jsonl and --csv"));
    std::unique_ptr<StudyWriter> writer;
    if (parser.isSet(csv))
        writer = std::make_unique<CsvWriter>();
    else if (parser.isSet(lines))
        writer = std::make_unique<JsonLinesWriter>();
    else if (parser.isSet(json))
        writer = std::make_unique<JsonWriter>();
    else
        writer = std::make_unique<TableWriter>(parser.isSet(recursive) || folders.size() > 1);
    return study(folders, parser.isSet(recursive), threads, std::move(writer));
}
