// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Commands.h"
#include "Document.h"
#include "Entries.h"
#include "Json.h"
#include "SpectralJson.h"
#include "SpectralText.h"
#include "Terminal.h"

namespace {

QString withComment(const QString& text, const QString& comment)
{
    if (comment.isEmpty())
        return text;
    return text.isEmpty() ? comment : text + QLatin1String("  ") + comment;
}

QString headingOf(const CPLSection& section)
{
    const CommentedText name = nameOf(section);
    const QString text = withComment(name.text, name.comment);
    const QString heading = QLatin1Char('[') + keyOf(section) + QLatin1Char(']');
    return text.isEmpty() ? heading : heading + QLatin1Char(' ') + text;
}

QString lineOf(const Entry& entry, int width)
{
    const QString value = withComment(entry.value, entry.comment);
    if (!entry.isPair())
        return value.isEmpty() ? value : QLatin1String("  ") + value;
    const QString line = QLatin1String("  ") + entry.key;
    return value.isEmpty() ? line : line.leftJustified(width + 4) + value;
}

void printLine(QString line)
{
    line.replace(QLatin1Char('\t'), QLatin1String("  "));
    print(printable(line) + QLatin1Char('\n'));
}

void printSection(const CPLSection& section)
{
    const QList<Entry> entries = entriesOf(section);
    int width = 0;
    for (const Entry& entry : entries)
        width = qMax(width, int(entry.key.size()));
    printLine(QString());
    printLine(headingOf(section));
    for (const Entry& entry : entries)
        printLine(lineOf(entry, width));
}

void printText(const Document& document)
{
    const QList<CPLSection*> sections = document.sections();
    printLine(document.title() + QLatin1String(", ") + counted(int(sections.size()), "section"));
    const QStringList preamble = document.preamble();
    for (const QString& line : preamble)
        printLine(line);
    for (const CPLSection* const section : sections)
        printSection(*section);
}

QJsonObject jsonOf(const QString& file, const Document& document)
{
    return withSchema("ovinfo-show/1",
                      {{"file", file},
                       {"kind", document.kindName()},
                       {"clickNumber", textOrNull(document.clickNumber())},
                       {"preamble", QJsonArray::fromStringList(document.preamble())},
                       {"sections", arrayOf(document.sections(), [](const CPLSection* section) {
                            return sectionJson(textOf(*section));
                        })}});
}

void printKeys(const Document& document)
{
    const QList<CPLSection*> sections = document.sections();
    for (const CPLSection* const section : sections) {
        const QString key = printable(keyOf(*section));
        print(key + QLatin1Char('\n'));
        QStringList names;
        section->getKeyList(&names);
        names.removeDuplicates();
        for (const QString& name : qAsConst(names))
            printExact(key + QLatin1Char('\t') + printable(name) + QLatin1Char('\n'));
    }
}

void printForPeople(const Document& document)
{
    if (document.spectral())
        print(spectralText(*document.spectral()));
    else
        printText(document);
}

ExitCode show(const QString& file, const Request& request)
{
    Document document;
    if (!document.load(file))
        return fail(file, document.problem());
    const auto json = [&] {
        return document.spectral() ? spectralJson(file, *document.spectral())
                                   : jsonOf(file, document);
    };
    if (request.has(Options::jsonl))
        printJsonLine(json());
    else if (request.has(Options::json))
        print(json());
    else if (request.has(Options::keys))
        printKeys(document);
    else
        printForPeople(document);
    return Success;
}

} // namespace

ExitCode showCommand(const Request& request)
{
    const bool headed = request.isForSeveral() && !request.has(Options::jsonl);
    if (headed && request.has(Options::json))
        return fail(WrongUsage, QLatin1String("--json takes one FILE; --jsonl takes several"));
    ExitCode result = Success;
    bool first = true;
    for (const QString& file : request.files) {
        if (headed)
            print(QLatin1String(first ? "" : "\n") + QLatin1String("==> ") + printable(file) +
                  QLatin1String(" <==\n"));
        first = false;
        if (show(file, request) != Success)
            result = BadFile;
    }
    return result;
}
