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

QJsonObject findingJson(const Finding& finding)
{
    return object({{"line", finding.line > 0 ? QJsonValue(finding.line) : QJsonValue()},
                   {"severity", QLatin1String(finding.isProblem ? "problem" : "note")},
                   {"code", QLatin1String(finding.code)},
                   {"message", finding.message}});
}

QJsonObject fileJson(const QString& file, const CheckedFile& checked)
{
    return object({{"file", file},
                   {"kind", textOrNull(checked.kind)},
                   {"failure", textOrNull(checked.failure)},
                   {"problems", checked.problems()},
                   {"findings", arrayOf(checked.findings, findingJson)}});
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
    explicit CheckRun(const Request& request)
        : m_request(request)
    {}

    void check(const QString& path);
    void checkBelow(const QString& folder);
    ExitCode finish();

private:
    void print(const QString& path, const CheckedFile& checked);

    const Request& m_request;
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

void CheckRun::checkBelow(const QString& folder)
{
    if (!QFileInfo(folder).isDir()) {
        check(folder);
        return;
    }
    const QDir directory(folder);
    if (!directory.isReadable()) {
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
            checkBelow(child.filePath());
        else if (isDataFile(child))
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
    CheckRun run(request);
    for (const QString& path : request.files) {
        if (request.has(Options::below))
            run.checkBelow(path);
        else
            run.check(path);
    }
    return run.finish();
}
