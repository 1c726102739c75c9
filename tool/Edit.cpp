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
QByteArray withValue(const Document& document, QLatin1String old, QByteArray value)
{
    const char* const sign = std::find(old.begin(), old.end(), '#');
    if (sign != old.end() && !value.contains('#')) {
        // What parts a value from its comment goes and comes with the value.
        const QLatin1String both(old.begin(), sign);
        old = value.isEmpty() ? both : trimmed(both);
        if (old.size() == 0 && !value.isEmpty())
            value += '\t';
    }
    QByteArray bytes = document.bytes();
    const int place = document.placeOf(old.begin());
    if (old.size() == 0 && !value.isEmpty() && bytes[place - 1] == ':')
        value.prepend('\t');
    return bytes.replace(place, int(old.size()), value);
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
int endOf(const Document& document, const InfoLines& lines, const char* otherwise)
{
    const auto last = std::find_if(lines.rbegin(), lines.rend(), [](const InfoLine& line) {
        return trimmed(line.text).size() > 0;
    });
    return document.placeOf(last == lines.rend() ? otherwise : last->text.end());
}

/** The file with a line added at the end of a block. */
QByteArray withLine(const Document& document, const InfoBlock& block, const QByteArray& line)
{
    QByteArray bytes = document.bytes();
    const QByteArray lineEnd = lineEndOf(bytes, document.placeOf(block.header.text.begin()));
    return bytes.insert(endOf(document, block.lines, block.header.text.end()), lineEnd + line);
}

/** The file with a section added at the end. */
QByteArray withSection(const Document& document, const QByteArray& key, const QByteArray& line)
{
    QByteArray bytes = document.bytes();
    const QLatin1String text = document.text();
    const QByteArray lineEnd = lineEndOf(bytes, document.textStart());
    return bytes.insert(endOf(document, linesOf(text), text.begin()),
                        lineEnd + lineEnd + Text::Marker.data() + key + Text::KeyEnd.data() +
                            lineEnd + line);
}

bool hasKey(const InfoBlock& block, const InfoLine& line, const QString& key)
{
    const LineCut cut = cutAtColon(line.text);
    return cut.kind == LineCut::Pair && decoded(block, cut.before).toLower() == key.toLower();
}

/** The file without the lines of a key. */
QByteArray withoutKey(const Document& document, const InfoBlock& block, const QString& key)
{
    QByteArray bytes = document.bytes();
    for (auto line = block.lines.rbegin(); line != block.lines.rend(); ++line) {
        if (!hasKey(block, *line, key))
            continue;
        const int start = document.placeOf(line->text.begin());
        const int end = start + int(line->text.size());
        const int lineEnd = bytes.mid(end, 2) == "\r\n" ? 2 : 1; // the last line may have none
        bytes.remove(start, end + lineEnd - start);
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
    result.bytes =
        noSection ? withSection(document, *key, *line) : withLine(document, *block, *line);
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
    result.bytes = withValue(document, place->text, *value);
    return result;
}

Edited removed(const Document& document, const Edit& edit)
{
    Edited result;
    const auto block = findBlock(document, edit.section);
    if (block)
        result.bytes = withoutKey(document, *block, edit.key);
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
    const CommentedText value = cutComment(edit.value);
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
