#include "Check.h"
#include "Commands.h"
#include "Json.h"
#include "Terminal.h"

#include <algorithm>

namespace {

QString lineOf(const QString& file, const Finding& finding)
{
    const QString place =
        finding.line > 0 ? file + QLatin1Char(':') + QString::number(finding.line) : file;
    const QLatin1String kind(finding.isProblem ? "problem" : "note");
    return QStringLiteral("%1: %2: %3 [%4]\n")
        .arg(place, kind, finding.message, QLatin1String(finding.code));
}

void printText(const QString& file, const CheckedFile& checked)
{
    for (const Finding& finding : checked.findings)
        print(lineOf(file, finding));
    const QString verdict = checked.problems() == 0 ? QStringLiteral("no problems")
                                                    : counted(checked.problems(), "problem");
    print(QStringLiteral("%1: %2, %3\n").arg(file, checked.title, verdict));
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

} // namespace

ExitCode checkCommand(const Request& request)
{
    ExitCode result = Success;
    QJsonArray files;
    for (const QString& path : request.files) {
        const CheckedFile checked = checkFile(path);
        if (checked.problems() > 0)
            result = BadFile;
        if (!checked.failure.isEmpty())
            result = fail(path, checked.failure);
        else if (!request.has(Options::json))
            printText(path, checked);
        if (request.has(Options::json))
            files += fileJson(path, checked);
    }
    if (request.has(Options::json))
        print(withSchema("ovinfo-check/1", {{"files", files}}));
    return result;
}
