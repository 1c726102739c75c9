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

int checkCommand(const QStringList& words)
{
    QCommandLineParser parser;
    const QCommandLineOption json = jsonOption();
    parser.addOption(json);
    parser.setApplicationDescription(QLatin1String(
        "Tells what is wrong with files, line by line, and what the library makes of it. The exit "
        "code is 1 when there is a problem; a note tells what a save would change."));
    if (const auto done = parse(parser, QLatin1String("check"), QLatin1String("FILE..."), words))
        return *done;
    ExitCode result = Success;
    QJsonArray files;
    const QStringList paths = parser.positionalArguments();
    for (const QString& path : paths) {
        const CheckedFile checked = checkFile(path);
        if (checked.problems() > 0)
            result = BadFile;
        if (!checked.failure.isEmpty())
            result = fail(path, checked.failure);
        else if (!parser.isSet(json))
            printText(path, checked);
        if (parser.isSet(json))
            files += fileJson(path, checked);
    }
    if (parser.isSet(json))
        print(withSchema("ovinfo-check/1", {{"files", files}}));
    return result;
}
