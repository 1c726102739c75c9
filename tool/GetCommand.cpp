#include "Commands.h"
#include "Document.h"
#include "Entries.h"
#include "Json.h"
#include "Terminal.h"

namespace {

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

QJsonObject jsonOf(const QString& file, const CPLSection& section, const QString& key)
{
    QString raw;
    section.getRawValue(key, &raw);
    const CommentedText value = withoutComment(raw.remove(QLatin1Char('\n')));
    return withSchema("ovinfo-get/1", {{"file", file},
                                       {"section", keyOf(section)},
                                       {"key", spellingOf(section, key)},
                                       {"value", value.text},
                                       {"comment", textOrNull(value.comment)}});
}

} // namespace

ExitCode getCommand(const Request& request)
{
    const QStringList& arguments = request.files;
    Document document;
    if (!document.load(arguments.at(0)))
        return fail(arguments.at(0), document.problem());
    const CPLSection* const section = document.section(arguments.at(1));
    if (!section)
        return fail(arguments.at(0) + QLatin1String(": ") + arguments.at(1),
                    eSTATUS_SECTION_NOT_FOUND);
    QString value;
    const tag_estatus found = section->getValue(arguments.at(2), &value);
    if (found != eSTATUS_SUCCESS)
        return fail(arguments.at(0) + QLatin1String(": ") + arguments.at(2), found);
    if (request.has(Options::json))
        print(jsonOf(arguments.at(0), *section, arguments.at(2)));
    else // The last value of a reference keeps the line end of its file.
        print(value.endsWith(QLatin1Char('\n')) ? value : value + QLatin1Char('\n'));
    return Success;
}
