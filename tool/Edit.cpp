// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Edit.h"

#include "Entries.h"
#include "InfoScan.h"

#include <algorithm>

namespace {

namespace Text = PLKeyword::Text;

/** A text as the bytes of its file; nothing when the file cannot hold it. */
std::optional<QByteArray> encoded(const QString& text, bool utf8)
{
    const QByteArray bytes = utf8 ? text.toUtf8() : text.toLatin1();
    const bool kept = utf8 || QString::fromLatin1(bytes.constData(), bytes.size()) == text;
    return kept ? std::optional(bytes) : std::nullopt;
}

/** The file with a value replaced. The comment stays unless the new value brings its own. */
QByteArray withValue(QByteArray bytes, Span place, QByteArray value)
{
    const QByteArray old = bytes.mid(place.start, place.end - place.start);
    const int sign = int(old.indexOf('#'));
    if (sign >= 0 && !value.contains('#')) {
        // What parts a value from its comment goes and comes with the value.
        const Span both = {place.start, place.start + sign};
        place = value.isEmpty() ? both : trimmed(bytes, both);
        if (place.start == place.end && !value.isEmpty())
            value += '\t';
    }
    if (place.start == place.end && !value.isEmpty() && bytes[place.start - 1] == ':')
        value.prepend('\t');
    return bytes.replace(place.start, place.end - place.start, value);
}

/** How lines end in a file: as the first one does. */
QByteArray lineEndOf(const QByteArray& bytes, int start)
{
    const int lf = int(bytes.indexOf('\n', start));
    const int cr = int(bytes.indexOf('\r', start));
    if (cr < 0)
        return lf < 0 ? QByteArray(Text::LineEnd.data()) : QByteArray("\n");
    return lf == cr + 1 ? QByteArray("\r\n") : QByteArray(lf >= 0 && lf < cr ? "\n" : "\r");
}

/** Where the last of some lines ends that is not blank. */
int endOf(const QByteArray& bytes, const InfoLines& lines, int otherwise)
{
    const auto last = std::find_if(lines.rbegin(), lines.rend(), [&](const InfoLine& line) {
        return cutLine(bytes, line.span).kind != LineCut::Blank;
    });
    return last == lines.rend() ? otherwise : last->span.end;
}

/** The file with a line added at the end of a block. */
QByteArray withLine(QByteArray bytes, const InfoBlock& block, const QByteArray& line)
{
    const int end = endOf(bytes, block.lines, block.header.span.end);
    return bytes.insert(end, lineEndOf(bytes, block.header.span.start) + line);
}

/** The file with a section added at the end. */
QByteArray withSection(QByteArray bytes, int start, const QByteArray& key, const QByteArray& line)
{
    const int end = endOf(bytes, linesOf(bytes, {start, int(bytes.size())}, 1), start);
    const QByteArray lineEnd = lineEndOf(bytes, start);
    return bytes.insert(end, lineEnd + lineEnd + Text::Marker.data() + key + Text::KeyEnd.data() +
                                 lineEnd + line);
}

bool hasKey(const QByteArray& bytes, const InfoBlock& block, const InfoLine& line,
            const QString& key)
{
    const LineCut cut = cutLine(bytes, line.span);
    return cut.kind == LineCut::Pair &&
           decoded(block, textOf(bytes, cut.before)).toLower() == key.toLower();
}

/** The file without the lines of a key. */
QByteArray withoutKey(QByteArray bytes, const InfoBlock& block, const QString& key)
{
    for (auto line = block.lines.rbegin(); line != block.lines.rend(); ++line) {
        if (!hasKey(bytes, block, *line, key))
            continue;
        int end = line->span.end;
        if (bytes.mid(end, 2) == "\r\n")
            end += 2;
        else if (end < bytes.size())
            ++end;
        bytes.remove(line->span.start, end - line->span.start);
    }
    return bytes;
}

Edited unencoded()
{
    Edited result;
    result.problem = QStringLiteral("the value has characters that the file cannot hold");
    return result;
}

Edited missing(tag_estatus status, const QString& word)
{
    Edited result;
    result.status = status;
    result.word = word;
    return result;
}

Edited added(const Document& document, const Edit& edit)
{
    const bool noSection = !document.section(edit.section);
    const auto block = findBlock(document, edit.section);
    if (document.isIndex() || document.spectral() || (!block && !noSection)) {
        Edited result;
        result.problem = QStringLiteral("nothing can be added to a file of this kind");
        return result;
    }
    const bool utf8 = noSection ? document.kind() == FileKind::Sequence : block->utf8;
    const auto key = encoded(edit.section, utf8);
    const auto line = encoded(edit.key + Text::KeyEnd + edit.value, utf8);
    if (!key || !line)
        return unencoded();
    Edited result;
    result.bytes = noSection ? withSection(document.bytes(), document.textStart(), *key, *line)
                             : withLine(document.bytes(), *block, *line);
    return result;
}

Edited replaced(const Document& document, const Edit& edit)
{
    const auto place = findValue(document, edit.section, edit.key);
    if (!place)
        return missing(eSTATUS_KEY_NOT_FOUND, edit.key);
    const auto value = encoded(edit.value, place->utf8);
    if (!value)
        return unencoded();
    Edited result;
    result.bytes = withValue(document.bytes(), place->span, *value);
    return result;
}

Edited removed(const Document& document, const Edit& edit)
{
    Edited result;
    const auto block = findBlock(document, edit.section);
    if (block)
        result.bytes = withoutKey(document.bytes(), *block, edit.key);
    else
        result.problem = QStringLiteral("nothing can be taken out of a file of this kind");
    return result;
}

/** Whether the entry is a pair of the key. */
bool isOf(const Entry& entry, const QString& key)
{
    return entry.isPair() && entry.key.toLower() == key.toLower();
}

/** The entries that are to be read once the edit is made. */
QList<Entry> editedEntries(QList<Entry> entries, const Edit& edit)
{
    const auto has = [&](const Entry& entry) { return isOf(entry, edit.key); };
    if (edit.kind == Edit::Unset) {
        entries.erase(std::remove_if(entries.begin(), entries.end(), has), entries.end());
        return entries;
    }
    const CommentedText value = withoutComment(edit.value);
    if (std::none_of(entries.cbegin(), entries.cend(), has)) {
        int end = int(entries.size());
        while (end > 0 && !entries.at(end - 1).isPair() && entries.at(end - 1).comment.isEmpty())
            --end;
        entries.insert(end, {edit.key, value.text, value.comment});
    }
    for (Entry& entry : entries) {
        if (!has(entry))
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

/** Whether the section is what adding a section makes. */
bool isAdded(const CPLSection& section, const Edit& edit)
{
    return keyOf(section) == edit.section && nameOf(section).text.isEmpty() &&
           entriesOf(section) == editedEntries({}, edit);
}

} // namespace

Edited edited(const Document& document, const Edit& edit)
{
    const CPLSection* const section = document.section(edit.section);
    const bool adds = edit.kind == Edit::SetOrAdd && !edit.key.isEmpty();
    if (!section && !adds)
        return missing(eSTATUS_SECTION_NOT_FOUND, edit.section);
    const bool isThere = section && !edit.key.isEmpty() && section->isKeyPresent(edit.key);
    if (!isThere)
        return adds ? added(document, edit) : missing(eSTATUS_KEY_NOT_FOUND, edit.key);
    return edit.kind == Edit::Unset ? removed(document, edit) : replaced(document, edit);
}

bool isEditedOnly(const Document& before, const Document& after, const Edit& edit)
{
    // A key that comes or goes may make another kind of the file; a value must not.
    if (edit.kind == Edit::Set &&
        (before.kind() != after.kind() || before.title() != after.title()))
        return false;
    const QList<CPLSection*> old = before.sections();
    QList<CPLSection*> now = after.sections();
    const CPLSection* const changed = before.section(edit.section);
    if (!changed && (now.isEmpty() || !isAdded(*now.takeLast(), edit)))
        return false;
    if (before.clickNumber() != after.clickNumber() || before.preamble() != after.preamble() ||
        old.size() != now.size())
        return false;
    for (int i = 0; i < old.size(); ++i) {
        const CPLSection& section = *old.at(i);
        const QList<Entry> entries = entriesOf(section);
        const bool isChanged = &section == changed;
        if (!haveOneHead(section, *now.at(i)) ||
            entriesOf(*now.at(i)) != (isChanged ? editedEntries(entries, edit) : entries))
            return false;
    }
    return true;
}
