// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Damage.h"

#include "Document.h"
#include "InfoScan.h"

#include <algorithm>

using namespace ovparser::internal;

namespace {

namespace Text = PLKeyword::Text;

/** A control character that no text holds; white space is none. */
bool isUnknown(char c)
{
    return (c >= 0 && c < '\t') || (c > '\r' && c < ' ') || c == '\x7F';
}

/** Whether a key or name must not hold the character. */
bool isControl(QChar c)
{
    return (c.unicode() < 0x20 && c != u'\t') || c.unicode() == 0x7F;
}

/** Whether a character is of those that other encodings than Latin-1 use for letters and signs. */
bool isSecondControl(QChar c)
{
    return c.unicode() >= 0x80 && c.unicode() < 0xA0;
}

/** What a line names: a key, or the key and name of a section. */
QString namesIn(QLatin1String line)
{
    const LineCut cut = cutAtColon(line);
    if (cut.kind != LineCut::Pair)
        return {};
    QByteArray names(cut.before.data(), int(cut.before.size()));
    if (names.startsWith(Text::BareMarker.data()))
        appendText(names, withoutComment(cut.after));
    return isUtf8(latin1View(names)) ? QString::fromUtf8(names) : QString::fromLatin1(names);
}

class DamageSearch : public Findings
{
public:
    explicit DamageSearch(const Document& document)
        : m_document(document)
        , m_sections(document.startsWithoutHeader() ? document.text().begin()
                                                    : beforeHeaders(document.text()).end())
    {}

    void checkLine(const InfoLine& line);
    void checkEnd(int lastLine);

private:
    bool checkNuls(const InfoLine& line);
    void checkNames(const InfoLine& line);
    void checkPreamble(const InfoLine& line);

    const Document& m_document;
    const char* m_sections; ///< where they begin
};

void DamageSearch::checkLine(const InfoLine& line)
{
    if (checkNuls(line))
        return;
    if (line.text.begin() < m_sections)
        checkPreamble(line);
    else
        checkNames(line);
}

/** Whether there are any. */
bool DamageSearch::checkNuls(const InfoLine& line)
{
    const auto nuls = std::count(line.text.begin(), line.text.end(), '\0');
    if (nuls > 0)
        problem(line.number, "nul-bytes",
                QStringLiteral("%1 NUL bytes in this line; the text that stood there "
                               "is lost")
                    .arg(nuls));
    return nuls > 0;
}

void DamageSearch::checkNames(const InfoLine& line)
{
    const QString names = namesIn(line.text);
    const bool control = std::any_of(names.cbegin(), names.cend(), isControl);
    if (control || std::any_of(names.cbegin(), names.cend(), isSecondControl))
        findings.push_back({line.number, control, "control-character",
                            QStringLiteral("a control character in '%1'").arg(names)});
}

/** A header is not seen when bytes that are no text stand before its mark. */
void DamageSearch::checkPreamble(const InfoLine& line)
{
    const QByteArray text(line.text.data(), int(line.text.size()));
    const QByteArray beforeMark = text.mid(0, text.indexOf(Text::BareMarker.data()));
    const bool hidesHeader =
        beforeMark.size() < text.size() &&
        std::any_of(beforeMark.cbegin(), beforeMark.cend(), [](char c) { return c < 0; });
    if (hidesHeader || std::any_of(text.cbegin(), text.cend(), isUnknown))
        problem(line.number, "unknown-bytes",
                QStringLiteral("bytes before the first section that are no text%1")
                    .arg(QLatin1String(hidesHeader ? "; the header after them is not seen" : "")));
}

/** A save ends with empty lines, so a text without them was cut, or is by another hand. */
void DamageSearch::checkEnd(int lastLine)
{
    constexpr int lineEnds = 4; // of the last line, of its section, and two of the document
    QByteArray tail = m_document.bytes().right(2 * lineEnds).replace("\r\n", "\n");
    const char end = tail.contains('\n') ? '\n' : '\r';
    int found = 0;
    for (; tail.endsWith(end); tail.chop(1))
        ++found;
    if (found >= lineEnds)
        return;
    const bool appended = m_document.isDicom();
    findings.push_back(
        {lastLine, appended, "end-missing",
         appended ? QStringLiteral("the text ends without the empty lines of a save; it was cut, "
                                   "and sections may be missing")
                  : QStringLiteral("the text ends without the empty lines of a save; it may have "
                                   "been cut")});
}

/** Whether the library saves the file as it saves a document, with an end. */
bool hasEnd(const Document& document)
{
    return !document.isIndex() && !document.startsWithoutHeader() &&
           document.kind() != FileKind::BackgroundSummary &&
           document.kind() != FileKind::LabelSet && !document.sections().isEmpty();
}

} // namespace

std::vector<Finding> damageOf(const Document& document, bool loads)
{
    const QByteArray& bytes = document.bytes();
    if (document.kind() == FileKind::SpectralAnalysis ||
        (document.isDicom() && document.textStart() == 0))
        return {};
    if (bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF"))
        return {{1, true, "utf16",
                 QStringLiteral("UTF-16 text; the library reads one byte as one character and "
                                "finds no section")}};
    DamageSearch search(document);
    if (!document.isDicom() && document.textStart() > 0)
        search.findings.push_back(
            {1, false, "byte-order-mark",
             QStringLiteral("a byte order mark; it is passed over, and a save leaves it out")});
    const InfoLines lines = linesOf(document.text());
    for (const InfoLine& line : lines)
        search.checkLine(line);
    if (loads && hasEnd(document))
        search.checkEnd(lines.empty() ? 1 : lines.back().number);
    return search.findings;
}
