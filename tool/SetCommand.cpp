#include "Commands.h"
#include "Document.h"
#include "Entries.h"
#include "Files.h"
#include "InfoScan.h"
#include "Terminal.h"

#include <QtCore/QTemporaryFile>

namespace {

/** What `set` is asked for. */
struct Change
{
    QString section;
    QString key;
    QString value;
};

/** A value as the bytes of its file; nothing when the file cannot hold it. */
std::optional<QByteArray> encoded(const QString& value, const ValuePlace& place)
{
    const QByteArray bytes = place.utf8 ? value.toUtf8() : value.toLatin1();
    const bool kept = place.utf8 || QString::fromLatin1(bytes.constData(), bytes.size()) == value;
    return kept ? std::optional(bytes) : std::nullopt;
}

/** The file with a value replaced. The comment stays unless the new value brings its own. */
QByteArray withValue(QByteArray bytes, Span place, QByteArray value)
{
    const QByteArray old = bytes.mid(place.start, place.end - place.start);
    const int sign = int(old.indexOf('#'));
    if (sign >= 0 && !value.contains('#')) {
        place = trimmed(bytes, {place.start, place.start + sign});
        if (place.start == place.end && !value.isEmpty())
            value += '\t';
    }
    if (place.start == place.end && bytes[place.start - 1] == ':')
        value.prepend('\t');
    return bytes.replace(place.start, place.end - place.start, value);
}

/** The entries that are to be read once the change is made. */
QList<Entry> changedEntries(const CPLSection& section, const Change& change)
{
    const CommentedText value = withoutComment(change.value);
    QList<Entry> entries = entriesOf(section);
    for (Entry& entry : entries) {
        if (!entry.isPair() || entry.key.toLower() != change.key.toLower())
            continue;
        entry.value = value.text;
        if (!value.comment.isEmpty())
            entry.comment = value.comment;
    }
    return entries;
}

bool haveOneHead(const CPLSection& a, const CPLSection& b)
{
    QString names[2];
    a.getSectionName(&names[0], true);
    b.getSectionName(&names[1], true);
    return keyOf(a) == keyOf(b) && names[0] == names[1];
}

/** Whether a document differs from an earlier one by a change, and by nothing else. */
bool isChangedOnly(const Document& before, const Document& after, const Change& change)
{
    const QList<CPLSection*> old = before.sections();
    const QList<CPLSection*> now = after.sections();
    if (before.kind() != after.kind() || before.title() != after.title() ||
        before.preamble() != after.preamble() || old.size() != now.size())
        return false;
    const CPLSection* const changed = before.section(change.section);
    for (int i = 0; i < old.size(); ++i) {
        const CPLSection& section = *old.at(i);
        const QList<Entry> expected =
            &section == changed ? changedEntries(section, change) : entriesOf(section);
        if (!haveOneHead(section, *now.at(i)) || expected != entriesOf(*now.at(i)))
            return false;
    }
    return true;
}

/** Reads bytes as the library will read them once they are in the file. */
bool loadBytes(const QByteArray& bytes, Document* document)
{
    QTemporaryFile file;
    return file.open() && file.write(bytes) == bytes.size() && file.flush() &&
           document->load(file.fileName());
}

ExitCode change(const QString& file, const Change& change)
{
    Document document;
    if (!document.load(file))
        return fail(file, document.problem());
    const CPLSection* const section = document.section(change.section);
    if (!section)
        return fail(file + QLatin1String(": ") + change.section, eSTATUS_SECTION_NOT_FOUND);
    const auto place = findValue(document, change.section, change.key);
    if (!place || change.key.isEmpty() || !section->isKeyPresent(change.key))
        return fail(file + QLatin1String(": ") + change.key, eSTATUS_KEY_NOT_FOUND);
    const auto value = encoded(change.value, *place);
    if (!value)
        return fail(file, QLatin1String("the value has characters that the file cannot hold"));
    const QByteArray bytes = withValue(document.bytes(), place->span, *value);
    Document changed;
    if (!loadBytes(bytes, &changed) || !isChangedOnly(document, changed, change))
        return fail(file, QLatin1String("would not read back with that value alone changed; not "
                                        "changed"));
    const QString problem = rewriteFile(file, document.bytes(), bytes);
    return problem.isEmpty() ? Success : fail(file, problem);
}

} // namespace

ExitCode setCommand(const Request& request)
{
    const QStringList& arguments = request.files;
    const QString value = trimmed(arguments.at(3));
    if (value.contains(QLatin1Char('\n')) || value.contains(QLatin1Char('\r')))
        return fail(WrongUsage, QLatin1String("a value is a single line"));
    return change(arguments.at(0), {arguments.at(1), arguments.at(2), value});
}
