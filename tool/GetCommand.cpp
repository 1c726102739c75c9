// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Commands.h"
#include "Document.h"
#include "Entries.h"
#include "Json.h"
#include "Terminal.h"

namespace {

/** A value that was found, or what stands in for it. */
struct Answer
{
    QString section;
    QString key;
    QString value;
    QString comment;
};

/** The key as the section spells it. */
QString spellingOf(const CPLSection& section, const QString& key)
{
    const QList<Entry> entries = entriesOf(section);
    for (const Entry& entry : entries) {
        if (entry.isPair() && entry.key.compare(key, Qt::CaseInsensitive) == 0)
            return entry.key;
    }
    return key;
}

/** Reads a value; gives what is missing, or else eSTATUS_SUCCESS. */
tag_estatus find(const Document& document, Answer* answer)
{
    const CPLSection* const section = document.section(answer->section);
    if (!section)
        return eSTATUS_SECTION_NOT_FOUND;
    QString value;
    const tag_estatus status = section->getValue(answer->key, &value);
    if (status != eSTATUS_SUCCESS)
        return status;
    QString raw;
    section->getRawValue(answer->key, &raw);
    // The last value of a reference keeps the line end of its file.
    answer->value = value.remove(QLatin1Char('\n'));
    answer->comment = cutComment(raw.remove(QLatin1Char('\n'))).comment;
    answer->key = spellingOf(*section, answer->key);
    answer->section = keyOf(*section);
    return eSTATUS_SUCCESS;
}

void printAnswer(const QString& file, const Answer& answer, const Request& request)
{
    if (request.has(Options::json) || request.has(Options::jsonl)) {
        const QJsonObject json =
            withSchema("ovinfo-get/1", {{"file", file},
                                        {"section", answer.section},
                                        {"key", answer.key},
                                        {"value", answer.value},
                                        {"comment", textOrNull(answer.comment)}});
        return request.has(Options::json) ? print(json) : printJsonLine(json);
    }
    const bool terminal = showsOutput();
    const auto shown = [&](const QString& text) { return terminal ? printable(text) : text; };
    const QString name = request.isForSeveral() ? shown(file) + QLatin1Char('\t') : QString();
    printExact(name + shown(answer.value) + QLatin1Char('\n'));
}

ExitCode getFrom(const QString& file, const Request& request)
{
    Document document;
    if (!document.load(file))
        return fail(file, document.problem());
    Answer answer = {request.words.at(0), request.words.at(1), request.value(Options::otherwise),
                     QString()};
    const tag_estatus status = find(document, &answer);
    if (status != eSTATUS_SUCCESS && !request.has(Options::otherwise)) {
        const bool noSection = status == eSTATUS_SECTION_NOT_FOUND;
        return fail(file + QLatin1String(": ") + request.words.at(noSection ? 0 : 1), status);
    }
    printAnswer(file, answer, request);
    return Success;
}

} // namespace

ExitCode getCommand(const Request& request)
{
    if (request.isForSeveral() && request.has(Options::json))
        return fail(WrongUsage, QLatin1String("--json takes one FILE; --jsonl takes several"));
    ExitCode result = Success;
    for (const QString& file : request.files) {
        if (getFrom(file, request) != Success)
            result = BadFile;
    }
    return result;
}
