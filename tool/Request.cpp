// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Request.h"

#include "Verb.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QFile>

#include <algorithm>
#include <cstdio>

namespace {

/** Adds the options of a verb, and the one for help, to a parser. */
void addOptions(const Verb& verb, QCommandLineParser* parser)
{
    parser->addOption(
        {{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Prints this help.")});
    for (const Option& option : verb.options) {
        QStringList names = {QLatin1String(option.name)};
        if (option.letter)
            names.prepend(QLatin1String(option.letter));
        parser->addOption({names, QLatin1String(option.description), QLatin1String(option.value)});
    }
    if (verb.optionsFirst)
        parser->setOptionsAfterPositionalArgumentsMode(
            QCommandLineParser::ParseAsPositionalArguments);
}

QString helpOf(const Verb& verb)
{
    const QStringList usage = {QStringLiteral("Usage: ovinfo"), QLatin1String(verb.name)};
    const QStringList description = QString::fromLatin1(verb.description).split(QLatin1Char(' '));
    return wrapped(usage + synopsis(verb), 7) + QLatin1Char('\n') + wrapped(description, 0) +
           QLatin1String("\nOptions:\n") + described(optionRows(verb));
}

ExitCode wrongUsage(const Verb& verb, const QString& problem)
{
    return fail(
        WrongUsage,
        QStringLiteral("%1; see 'ovinfo %2 --help'").arg(problem, QLatin1String(verb.name)));
}

/** The options of a role that excludes the others of it, when more than one is given. */
QString conflict(const Verb& verb, const Request& request, Option::Role role)
{
    QStringList given;
    for (const Option& option : verb.options) {
        if (option.role == role && request.has(option))
            given += QLatin1String("--") + QLatin1String(option.name);
    }
    return given.size() > 1 ? given.join(QLatin1String(" and ")) : QString();
}

/** A list of names, and what ends each of them. */
struct ListKind
{
    Option option;
    char end = '\n';
};

const ListKind listKinds[] = {{Options::fromFile, '\n'}, {Options::fromFile0, '\0'}};

/** Reads names from a list; nothing when it cannot be read. */
std::optional<QStringList> namesIn(const QString& list, char end)
{
    QFile file(list);
    const bool open = list == QLatin1String("-") ? file.open(stdin, QIODevice::ReadOnly)
                                                 : file.open(QIODevice::ReadOnly);
    if (!open)
        return std::nullopt;
    QStringList names;
    const QList<QByteArray> parts = file.readAll().split(end);
    for (QByteArray name : parts) {
        while (end == '\n' && name.endsWith('\r'))
            name.chop(1);
        if (!name.isEmpty())
            names += QFile::decodeName(name);
    }
    return names;
}

std::optional<ExitCode> addListed(Request* request)
{
    for (const ListKind& kind : listKinds) {
        if (!request->has(kind.option))
            continue;
        const QString list = request->value(kind.option);
        const auto names = namesIn(list, kind.end);
        if (!names)
            return fail(list, eSTATUS_FILE_OPEN_FAILED);
        request->files += *names;
        request->listed = true;
    }
    return std::nullopt;
}

bool hasList(const Request& request)
{
    return std::any_of(std::begin(listKinds), std::end(listKinds),
                       [&](const ListKind& kind) { return request.has(kind.option); });
}

/** Sorts the arguments into files and what follows them; false when their number is wrong. */
bool takeArguments(const Verb& verb, const QStringList& given, Request* request)
{
    const QStringList names = QString::fromLatin1(verb.arguments).split(QLatin1Char(' '));
    const int several = int(names.indexOf(QRegularExpression(QStringLiteral(".*\\.\\.\\."))));
    const auto words = several < 0 ? 0 : names.size() - 1 - several;
    const auto least = names.size() - (hasList(*request) ? 1 : 0);
    if (given.size() < least || (several < 0 && given.size() > names.size()))
        return false;
    request->files = given.mid(0, given.size() - words);
    request->words = given.mid(given.size() - words);
    return true;
}

} // namespace

bool Request::has(const Option& option) const
{
    return options.contains(QLatin1String(option.name));
}

QString Request::value(const Option& option) const
{
    return values(option).value(values(option).size() - 1);
}

QStringList Request::values(const Option& option) const
{
    return options.value(QLatin1String(option.name));
}

std::optional<ExitCode> parse(const Verb& verb, const QStringList& words, Request* request)
{
    QCommandLineParser parser;
    addOptions(verb, &parser);
    // The parser takes its first word for the name of a program.
    if (!parser.parse(QStringList(QLatin1String(verb.name)) + words))
        return wrongUsage(verb,
                          parser.errorText().remove(QRegularExpression(QStringLiteral("\\.$"))));
    if (parser.isSet(QStringLiteral("help"))) {
        print(helpOf(verb));
        return Success;
    }
    for (const Option& option : verb.options) {
        const QString name = QLatin1String(option.name);
        if (parser.isSet(name))
            request->options.insert(name, parser.values(name));
    }
    for (const Option::Role role : {Option::Form, Option::List}) {
        const QString options = conflict(verb, *request, role);
        if (!options.isEmpty())
            return wrongUsage(verb, QLatin1String("only one of ") + options);
    }
    if (!takeArguments(verb, parser.positionalArguments(), request))
        return wrongUsage(verb, QStringLiteral("%1 takes %2")
                                    .arg(QLatin1String(verb.name), QLatin1String(verb.arguments)));
    return addListed(request);
}
