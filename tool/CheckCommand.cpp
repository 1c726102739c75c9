// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "ArchiveRequest.h"
#include "Check.h"
#include "Commands.h"
#include "Document.h"
#include "Files.h"
#include "Json.h"
#include "Terminal.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QSet>

#include <algorithm>

namespace {

QString lineOf(const QString& file, const Finding& finding)
{
    const QString place =
        finding.line > 0 ? file + QLatin1Char(':') + QString::number(finding.line) : file;
    const QLatin1String kind(finding.isProblem ? "problem" : "note");
    return QStringLiteral("%1: %2: %3 [%4]\n")
        .arg(printable(place), kind, printable(finding.message), QLatin1String(finding.code));
}

void printText(const QString& file, const CheckedFile& checked)
{
    for (const Finding& finding : checked.findings)
        print(lineOf(file, finding));
    const QString verdict = checked.problems() == 0 ? QStringLiteral("no problems")
                                                    : counted(checked.problems(), "problem");
    print(QStringLiteral("%1: %2, %3\n").arg(printable(file), printable(checked.title), verdict));
}

void printProblems(const QString& file, const CheckedFile& checked)
{
    for (const Finding& finding : checked.findings) {
        if (finding.isProblem)
            print(lineOf(file, finding));
    }
}

/** The names of data files; DICOM files are of them as far as they hold click info. */
constexpr QLatin1String dataFiles[] = {
    PLKeyword::File::ClickInfo,      PLKeyword::File::AnalyzedClickInfo,
    PLKeyword::File::SequenceInfo,   PLKeyword::File::BkgSummary,
    PLKeyword::File::StructureIndex, PLKeyword::File::FluorescentIndex,
    PLKeyword::File::CameraInfo,
};

bool isDataFile(const QFileInfo& file)
{
    if (file.fileName().endsWith(PLKeyword::File::DicomSuffix)) {
        Document document;
        return document.load(file.filePath()) || document.textStart() > 0;
    }
    return std::find(std::begin(dataFiles), std::end(dataFiles), file.fileName()) !=
           std::end(dataFiles);
}

/** Checks files one by one and prints what it finds. */
class CheckRun
{
public:
    CheckRun(const Request& request, Shard shard)
        : m_request(request)
        , m_shard(shard)
    {}

    void check(const QString& path);

    /** Checks the data files in and below a folder, or a file, as far as they are in the shard. */
    void checkAll(const QString& path);
    ExitCode finish();

private:
    void print(const QString& path, const CheckedFile& checked);
    void checkBelow(const QString& folder, const QString& sequence);

    const Request& m_request;
    Shard m_shard;
    QString m_top; ///< the folder that is given
    ExitCode m_result = Success;
    QJsonArray m_files;      ///< for one object
    QSet<QString> m_visited; ///< folders, so that no link leads in a circle
};

void CheckRun::check(const QString& path)
{
    const CheckedFile checked = checkFile(path);
    if (checked.problems() > 0)
        m_result = BadFile;
    if (!checked.failure.isEmpty())
        m_result = fail(path, checked.failure);
    print(path, checked);
}

void CheckRun::print(const QString& path, const CheckedFile& checked)
{
    if (m_request.has(Options::json))
        m_files += fileJson(path, checked);
    else if (m_request.has(Options::jsonl))
        printJsonLine(withSchema("ovinfo-checked-file/1", fileJson(path, checked)));
    else if (m_request.has(Options::quiet))
        printProblems(path, checked);
    else if (checked.failure.isEmpty())
        printText(path, checked);
}

void CheckRun::checkAll(const QString& path)
{
    m_top = path;
    if (QFileInfo(path).isDir())
        checkBelow(path, QString());
    else if (m_shard.holds(QString()))
        check(path);
}

/** @param sequence  the folder above when it is that of a sequence, else empty */
void CheckRun::checkBelow(const QString& folder, const QString& sequence)
{
    const QDir directory(folder);
    const bool isSequence = directory.exists(PLKeyword::File::SequenceInfo);
    const bool holds =
        m_shard.holds(below(m_top, isSequence || sequence.isEmpty() ? folder : sequence));
    if (!directory.isReadable()) {
        if (holds)
            m_result = fail(folder, explained(eSTATUS_FILE_OPEN_FAILED, folder));
        return;
    }
    const QString place = directory.canonicalPath();
    if (m_visited.contains(place))
        return;
    m_visited.insert(place);
    const QFileInfoList children =
        directory.entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    for (const QFileInfo& child : children) {
        if (child.isDir())
            checkBelow(child.filePath(), isSequence ? folder : QString());
        else if (holds && isDataFile(child))
            check(child.filePath());
    }
}

ExitCode CheckRun::finish()
{
    if (m_request.has(Options::json))
        ::print(withSchema("ovinfo-check/1", {{"files", m_files}}));
    return m_result;
}

} // namespace

ExitCode checkCommand(const Request& request)
{
    const auto shard = shardOf(request);
    if (!shard)
        return WrongUsage;
    CheckRun run(request, *shard);
    for (const QString& path : request.files) {
        if (request.has(Options::below))
            run.checkAll(path);
        else
            run.check(path);
    }
    return run.finish();
}
