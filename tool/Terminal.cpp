#include "Terminal.h"

#include "Files.h"

#include <QtCore/QJsonDocument>

#include <cstdio>

void print(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, std::size_t(bytes.size()), stdout);
}

ExitCode fail(ExitCode code, const QString& message)
{
    const QByteArray bytes = ("ovinfo: " + message.toUtf8() + '\n');
    std::fwrite(bytes.constData(), 1, std::size_t(bytes.size()), stderr);
    return code;
}

ExitCode fail(const QString& file, const QString& problem)
{
    return fail(BadFile, file + QLatin1String(": ") + problem);
}

ExitCode fail(const QString& file, tag_estatus status)
{
    return fail(file, explained(status));
}

std::optional<ExitCode> parse(QCommandLineParser& parser, const QString& verb,
                              const QString& arguments, const QStringList& words)
{
    parser.addPositionalArgument(verb, QString(), verb);
    const QStringList names = arguments.split(QLatin1Char(' '));
    for (const QString& name : names)
        parser.addPositionalArgument(name, QString());
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Prints this help."));
    parser.addOption(help);
    const QString usage = QLatin1String("; see 'ovinfo ") + verb + QLatin1String(" --help'");
    // The parser takes its first word for the name of a program.
    if (!parser.parse(QStringList(verb) + words))
        return fail(WrongUsage,
                    parser.errorText().remove(QRegularExpression(QStringLiteral("\\.$"))) + usage);
    if (parser.isSet(help)) {
        // Qt's own usage line names the program's path, and options in front of the verb.
        const QString text = parser.helpText().section(QLatin1String("\nArguments:"), 0, 0);
        print(QStringLiteral("Usage: ovinfo %1 [options] %2\n").arg(verb, arguments) +
              text.section(QLatin1Char('\n'), 1));
        return Success;
    }
    const auto given = parser.positionalArguments().size();
    const bool optional = arguments.endsWith(QLatin1Char(']'));
    const bool several = optional || arguments.endsWith(QLatin1String("..."));
    if (given < names.size() - (optional ? 1 : 0) || (given > names.size() && !several))
        return fail(WrongUsage, verb + QLatin1String(" takes ") + arguments + usage);
    return std::nullopt;
}

QCommandLineOption flag(const char* name, const char* description)
{
    return {QLatin1String(name), QLatin1String(description)};
}

QCommandLineOption option(const char* name, const char* value, const char* description)
{
    return {QLatin1String(name), QLatin1String(description), QLatin1String(value)};
}

QCommandLineOption jsonOption()
{
    return flag("json", "Prints JSON instead of text.");
}

void print(const QJsonObject& object)
{
    print(QString::fromUtf8(QJsonDocument(object).toJson()));
}

QString columns(const QList<QStringList>& rows)
{
    QList<int> widths;
    for (const QStringList& row : rows) {
        for (int i = 0; i < row.size(); ++i) {
            if (i == widths.size())
                widths.append(0);
            widths[i] = qMax(widths.at(i), int(row.at(i).size()));
        }
    }
    QString text;
    for (const QStringList& row : rows) {
        QString line;
        for (int i = 0; i < row.size(); ++i)
            line += row.at(i).leftJustified(widths.at(i) + 2);
        while (line.endsWith(QLatin1Char(' ')))
            line.chop(1);
        text += line + QLatin1Char('\n');
    }
    return text;
}

QString counted(int count, const char* thing)
{
    const QString text = QString::number(count) + QLatin1Char(' ') + QLatin1String(thing);
    return count == 1 ? text : text + QLatin1Char('s');
}
