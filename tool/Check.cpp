// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Check.h"

#include "Damage.h"
#include "Document.h"
#include "Entries.h"
#include "Files.h"
#include "InfoScan.h"
#include "Json.h"
#include "KindCheck.h"
#include "internal/sections/Capabilities.h"

#include <QtCore/QHash>

#include <algorithm>

using namespace ovparser::internal;

namespace {

namespace Key = PLKeyword::Key;
namespace Section = PLKeyword::Section;
namespace Text = PLKeyword::Text;

/** What a header line without a key means. */
struct FaultText
{
    HeaderFault fault = HeaderFault::None;
    const char* code = "";
    const char* message = "";
};

constexpr FaultText textFaults[] = {
    {HeaderFault::NoColon, "header-without-colon", "a header without ':'"},
    {HeaderFault::CommentedColon, "header-commented", "a header with a '#' before its ':'"},
    {HeaderFault::ColonBeforeMark, "header-colon-before-mark",
     "a header whose ':' stands before its mark"},
    {HeaderFault::EmptyKey, "header-without-key", "a header without a section key"},
};

constexpr FaultText sequenceFaults[] = {
    {HeaderFault::NoColon, "mark-without-colon",
     "no ':' follows this mark; reading ends here, the rest of the file is not read"},
    {HeaderFault::CommentedColon, "header-commented",
     "a '#' stands before the ':' of the header; the section has no name"},
    {HeaderFault::EmptyKey, "header-without-key",
     "a header without a section key; the section is passed over"},
    {HeaderFault::TooFar, "colon-too-far",
     "the ':' of this mark stands far after the next mark; the section is passed over"},
    {HeaderFault::Spans, "colon-behind-next-mark",
     "the ':' of this mark stands after the next mark; the section key holds that mark"},
};

template <std::size_t N>
const FaultText* faultText(const FaultText (&rows)[N], HeaderFault fault)
{
    const auto* const row = std::find_if(std::begin(rows), std::end(rows),
                                         [&](const FaultText& r) { return r.fault == fault; });
    return row == std::end(rows) ? nullptr : row;
}

QString quoted(const QString& text)
{
    constexpr int longest = 60;
    const bool cut = text.size() > longest;
    return QLatin1Char('\'') + (cut ? text.left(longest) + QLatin1String("...") : text) +
           QLatin1Char('\'');
}

/** Where a key or section key stood first. */
using Places = QHash<QString, int>;

class Checker : public Findings
{
public:
    explicit Checker(const QByteArray& bytes)
        : m_bytes(bytes)
    {}

    void checkText(const Document& document, bool loads);
    void checkSequence(const Document& document);
    void checkIndex(const Document& document);
    void checkWrittenForm(const Document& document, const QByteArray& written);

private:
    void checkEncoding(const Document& document);
    bool checkHeader(const InfoBlock& block, bool catalogue);
    bool checkLoneNumber(int line);
    bool checkClickNumber(const InfoBlock& block);
    bool checkBlock(const InfoBlock& block, bool catalogue, Places* sections);
    void checkSkipped(const InfoBlock& block, int first);
    void checkChunk(const InfoBlock& block, Places* sections);
    void checkLines(const InfoBlock& block);
    void checkPair(const InfoBlock& block, const InfoLine& line, const LineCut& cut, Places* keys);
    void checkNumber(int line, const QString& key, const QString& value);
    void checkCharacters(const InfoBlock& block);
    void checkPieces(const InfoLine& line, const QString& name);

    const QByteArray& m_bytes;
    bool m_hasClickNumber = false;
    bool m_onlyAdded = false; ///< whether the pairs go into another document, and nothing else
};

bool hasText(const InfoLine& line)
{
    return trimmed(line.text).size() > 0;
}

/** The library reads an info text as Latin-1, whatever it looks like. */
void Checker::checkEncoding(const Document& document)
{
    const QLatin1String text = document.text();
    const auto isAscii = [](char c) { return c >= 0; };
    const auto* const other = std::find_if_not(text.begin(), text.end(), isAscii);
    if (document.isDicom() || other == text.end() || !isUtf8(text))
        return;
    note(lineAt(text, int(other - text.begin())), "looks-like-utf8",
         QStringLiteral("looks like UTF-8; the library reads each byte as one Latin-1 character"));
}

/** Whether the load goes on after the header. */
bool Checker::checkHeader(const InfoBlock& block, bool catalogue)
{
    const FaultText* const row = faultText(textFaults, block.fault);
    if (!row || (catalogue && block.fault == HeaderFault::EmptyKey))
        return true;
    const tag_estatus status =
        block.fault == HeaderFault::EmptyKey ? eSTATUS_EMPTY_SECTION_KEY : eSTATUS_BAD_FORMAT;
    problem(block.header.number, row->code,
            QLatin1String(row->message) +
                QStringLiteral("; the load stops here with %1, the rest of the file is not read")
                    .arg(getStatusString(status)));
    return false;
}

/** A section without a line gives no number; false when the load stops at it. */
bool Checker::checkLoneNumber(int line)
{
    const QString message =
        QStringLiteral("no line stands in section 'ClickNumber', so its number is not read");
    const QString end = QStringLiteral("; the load stops here with %1, the rest of the file is not "
                                       "read")
                            .arg(getStatusString(eSTATUS_EMPTY_SECTION_KEY));
    problem(line, "click-number-alone", m_hasClickNumber ? message : message + end);
    return m_hasClickNumber;
}

/** The click number that the library takes from a header line. */
QString clickNumberOf(QLatin1String header)
{
    CPLClickInfo info;
    QString number;
    info.loadTextBuffer(header + QLatin1String("\nk:\n"));
    info.getClickNumber(&number);
    return number;
}

/** The click number that a "ClickNumber" section gives; false when the load stops. */
bool Checker::checkClickNumber(const InfoBlock& block)
{
    const int line = block.header.number;
    if (std::none_of(block.lines.begin(), block.lines.end(), hasText))
        return checkLoneNumber(line);
    m_hasClickNumber = true;
    const QString number = cutAtColon(block.header.text).after;
    const QString read = clickNumberOf(block.header.text);
    if (number.isEmpty())
        problem(line, "click-number-missing",
                QStringLiteral("section 'ClickNumber' gives no number; the click number is 'X'"));
    else if (!read.startsWith(number.at(0)))
        problem(line, "click-number-prefixed",
                QStringLiteral("click number %1 does not begin with a letter; it is read as %2")
                    .arg(quoted(number), quoted(read)));
    else if (number.size() > read.size())
        problem(line, "click-number-cut",
                QStringLiteral("the click number is longer than %1 characters; it is read as %2")
                    .arg(read.size())
                    .arg(quoted(read)));
    return true;
}

/** Whether the load goes on after the block. */
bool Checker::checkBlock(const InfoBlock& block, bool catalogue, Places* sections)
{
    if (!checkHeader(block, catalogue))
        return false;
    const QString key = block.key.toLower();
    const bool clickNumber = key == QString(Section::ClickNumber).toLower();
    if (!catalogue && clickNumber && !checkClickNumber(block))
        return false;
    const auto first = sections->constFind(key);
    if (!catalogue && first != sections->constEnd()) {
        problem(block.header.number, "section-twice",
                QStringLiteral("section %1 again (first in line %2); it is skipped%3")
                    .arg(quoted(block.key))
                    .arg(*first)
                    .arg(QLatin1String(clickNumber ? ", but its click number counts" : "")));
        return true;
    }
    sections->insert(key, block.header.number);
    checkLines(block);
    return true;
}

void Checker::checkText(const Document& document, bool loads)
{
    checkEncoding(document);
    m_onlyAdded = document.kind() == FileKind::FilterWheel;
    std::vector<InfoBlock> blocks = blocksOf(document.text());
    if (document.startsWithoutHeader())
        checkLines(blocks.front());
    else if (blocks.size() == 1)
        problem(0, "no-section", QStringLiteral("no section; not a file that the library knows"));
    const bool catalogue = document.kind() == FileKind::BackgroundSummary;
    Places sections;
    bool goesOn = true;
    for (auto block = blocks.begin() + 1; goesOn && block != blocks.end(); ++block)
        goesOn = checkBlock(*block, catalogue, &sections);
    if (!loads && problems() == 0)
        problem(0, "not-loaded", document.problem());
}

/** A key that the library reads as a number, as it does those of stage positions. */
struct NumberKey
{
    QLatin1String key;
    bool isWhole = true;
};

constexpr NumberKey numberKeys[] = {
    {Key::EmptySequence},        {Key::ElectronicsTrayPartNumber}, {Key::LightsControlPolarity},
    {Key::StructuredLightDelay}, {Key::RotationStageMotorDriver},  {Key::Rdx2Angle, false},
    {Key::RodxAngle, false},
};

/** A key without a value is given no number, so nothing is wrong with it. */
void Checker::checkNumber(int line, const QString& key, const QString& value)
{
    const auto* const row =
        std::find_if(std::begin(numberKeys), std::end(numberKeys), [&](const NumberKey& r) {
            return key.compare(r.key, Qt::CaseInsensitive) == 0;
        });
    const bool isKnown = row != std::end(numberKeys);
    if (value.isEmpty() || (!isKnown && !isPositionKey(key)))
        return;
    const bool isWhole = isKnown && row->isWhole;
    bool isNumber = false;
    if (isWhole)
        value.toInt(&isNumber);
    else
        value.toFloat(&isNumber);
    if (!isNumber)
        problem(line, "number-expected",
                QStringLiteral("key %1 has the value %2, not %3; it is read as 0")
                    .arg(quoted(key), quoted(value),
                         QLatin1String(isWhole ? "a whole number" : "a number")));
}

void Checker::checkPair(const InfoBlock& block, const InfoLine& line, const LineCut& cut,
                        Places* keys)
{
    const QString key = decoded(block, cut.before);
    const auto first = keys->constFind(key.toLower());
    if (key.isEmpty())
        problem(line.number, "key-missing",
                QStringLiteral("no key before the ':'; the value cannot be read"));
    else if (first != keys->constEnd())
        problem(
            line.number, "key-twice",
            QStringLiteral("key %1 again (first in line %2); the last value counts%3")
                .arg(quoted(key))
                .arg(*first)
                .arg(QLatin1String(m_onlyAdded ? "" : ", and a save writes it in both places")));
    else if (key.contains(Text::CommentKey, Qt::CaseInsensitive))
        problem(line.number, "key-reserved",
                QStringLiteral("key %1 is one of comments; a save writes the value alone")
                    .arg(quoted(key)));
    if (first == keys->constEnd())
        keys->insert(key.toLower(), line.number);
    checkNumber(line.number, key, decoded(block, withoutComment(cut.after)));
}

void Checker::checkLines(const InfoBlock& block)
{
    const QLatin1String fate(m_onlyAdded
                                 ? "it is passed over"
                                 : "it is kept as a comment, and a save puts a '#' in front");
    Places keys;
    for (const InfoLine& line : block.lines) {
        const LineCut cut = cutAtColon(line.text);
        const QString text = decoded(block, trimmed(line.text));
        if (text.isEmpty() || text.startsWith(QLatin1Char('#')))
            continue;
        if (cut.kind == LineCut::Pair)
            checkPair(block, line, cut, &keys);
        else if (cut.kind == LineCut::NoColon)
            problem(line.number, "line-without-colon",
                    QStringLiteral("no ':' in %1; %2").arg(quoted(text), fate));
        else if (cut.kind == LineCut::Commented)
            problem(
                line.number, "key-commented",
                QStringLiteral("a '#' stands before the ':' of %1; %2").arg(quoted(text), fate));
    }
}

void Checker::checkCharacters(const InfoBlock& block)
{
    InfoLines lines = block.lines;
    if (!block.open)
        lines.insert(lines.begin(), block.header);
    for (const InfoLine& line : lines) {
        const QString text = decoded(block, trimmed(line.text));
        const auto* const other =
            std::find_if(text.begin(), text.end(), [](QChar c) { return c.unicode() > 255; });
        if (block.utf8 && other != text.end())
            problem(line.number, "character-not-written",
                    QStringLiteral("'%1' is not in Latin-1; a save writes '?'")
                        .arg(other->isHighSurrogate() ? text.mid(int(other - text.begin()), 2)
                                                      : QString(*other)));
    }
}

/** Sections that a sequence reads again although it holds one with the key. */
constexpr QLatin1String readAgain[] = {Section::Sequence, Section::ClickNumbers, Section::UserInput,
                                       Section::GraphControls};

/** The section that is skipped because its key stood in an earlier line. */
void Checker::checkSkipped(const InfoBlock& block, int first)
{
    const bool again =
        std::find(std::begin(readAgain), std::end(readAgain), block.key) != std::end(readAgain);
    problem(block.header.number, "section-twice",
            QStringLiteral("section %1 again (first in line %2); it is skipped%3")
                .arg(quoted(block.key))
                .arg(first)
                .arg(QLatin1String(again ? ", but what the sequence takes from it counts" : "")));
}

void Checker::checkChunk(const InfoBlock& block, Places* sections)
{
    const int line = block.header.number;
    if (block.inLine)
        problem(line, "mark-in-line",
                QStringLiteral("'*** ' inside a line; a section begins there"));
    if (const FaultText* const row = faultText(sequenceFaults, block.fault))
        problem(line, row->code, QLatin1String(row->message));
    if (block.fault == HeaderFault::NoColon || block.fault == HeaderFault::TooFar ||
        block.fault == HeaderFault::EmptyKey)
        return;
    if (sections->contains(block.key)) {
        checkSkipped(block, sections->value(block.key));
        return;
    }
    sections->insert(block.key, line);
    const QLatin1String name = cutAtColon(block.header.text).after;
    if (withoutComment(name) != name)
        note(line, "name-comment",
             QStringLiteral("a comment after the section name; a save drops it"));
    if (block.open)
        problem(line, "header-without-line-end",
                QStringLiteral("no line end follows the header; the section has no name, and the "
                               "header is read as a line of it"));
    checkLines(block);
    checkCharacters(block);
}

void Checker::checkSequence(const Document& document)
{
    const std::vector<InfoBlock> blocks = sequenceBlocksOf(document);
    const QLatin1String whole = document.text();
    const char* const start = blocks.empty() ? whole.end() : blocks.front().header.text.begin();
    const InfoLines lines = linesOf(QLatin1String(whole.begin(), start));
    const auto text = std::find_if(lines.begin(), lines.end(), hasText);
    if (text != lines.end())
        problem(text->number, "text-before-first-section",
                QStringLiteral("text before the first section; a save drops it"));
    Places sections;
    for (const InfoBlock& block : blocks)
        checkChunk(block, &sections);
    const CPLSection* const controls = document.section(Section::GraphControls);
    const CPLSection* const numbers = document.section(Section::ClickNumbers);
    int empty = 0;
    if (controls)
        controls->getValue(Key::EmptySequence, &empty);
    if (empty == 0 && (!numbers || numbers->count() == 0))
        problem(0, "no-click-numbers",
                QStringLiteral("lists no click numbers and is not marked as empty; the load gives "
                               "%1")
                    .arg(getStatusString(eSTATUS_NO_CLICK_NUMBERS)));
}

void Checker::checkPieces(const InfoLine& line, const QString& name)
{
    const QByteArray content(line.text.data(), int(line.text.size()));
    const int mark = int(content.indexOf(Text::BareMarker.data()));
    if (!content.left(mark).trimmed().isEmpty())
        problem(line.number, "text-before-mark",
                QStringLiteral("text before the mark; it is not read"));
    const QByteArray pairs = content.mid(mark + int(Text::BareMarker.size())).trimmed();
    bool named = false;
    for (const QByteArray& piece : pairs.split(';')) {
        const QString text = QString::fromLatin1(piece.constData(), piece.size());
        named = named || text.startsWith(name + QLatin1Char(':'), Qt::CaseInsensitive);
        if (!text.contains(QLatin1Char(':')) && !piece.trimmed().isEmpty())
            problem(line.number, "piece-without-colon",
                    QStringLiteral("no ':' in %1; it is dropped").arg(quoted(text)));
    }
    if (!named)
        problem(line.number, "reference-without-name",
                QStringLiteral("no key %1; the line is passed over").arg(quoted(name)));
}

bool hasMark(QLatin1String line)
{
    const QLatin1String mark = Text::BareMarker;
    return std::search(line.begin(), line.end(), mark.begin(), mark.end()) != line.end();
}

void Checker::checkIndex(const Document& document)
{
    const QLatin1String text = trimmed(document.text());
    for (const InfoLine& line : linesOf(QLatin1String(document.text().begin(), text.end()))) {
        if (line.text.end() <= text.begin())
            continue;
        if (!hasMark(line.text)) {
            problem(line.number, "line-without-mark",
                    QStringLiteral("no '***' in this line; reading ends here, the rest of the "
                                   "file is not read"));
            return;
        }
        checkPieces(line, document.referenceName());
    }
}

/** What a save would do to a file that is not in the form in which files are written. */
void Checker::checkWrittenForm(const Document& document, const QByteArray& written)
{
    if (written == m_bytes)
        return;
    const auto place =
        std::mismatch(m_bytes.cbegin(), m_bytes.cend(), written.cbegin(), written.cend());
    const int same = int(place.first - m_bytes.cbegin());
    const int lineEnds = int(m_bytes.count("\r\n"));
    const bool mixed = m_bytes.count('\n') != lineEnds || m_bytes.count('\r') != lineEnds;
    note(lineAt(document.text(), same - document.textStart()), "not-in-written-form",
         QStringLiteral("a save would lay the file out anew from here on%1")
             .arg(QLatin1String(mixed ? ", with CR LF line ends" : "")));
}

void checkSpectral(const QString& path, const Document& document, Checker* checker)
{
    CPLXMLReader reader;
    QString message;
    int line = 0;
    int column = 0;
    if (reader.createXMLDocumentFormFile(path, &message, &line, &column))
        checker->problem(0, "not-spectral", document.problem());
    else
        checker->problem(line, "malformed-xml",
                         QStringLiteral("column %1: %2").arg(column).arg(message));
}

/** Checks what the document is made of, in the way of its kind. */
std::vector<Finding> checkContent(const QString& path, const Document& document, bool loads)
{
    Checker checker(document.bytes());
    if (!loads && document.isDicom() && document.textStart() == 0) {
        checker.problem(0, "not-loaded", document.problem());
    } else if (document.kind() == FileKind::SpectralAnalysis) {
        if (!loads)
            checkSpectral(path, document, &checker);
    } else if (document.kind() == FileKind::Sequence) {
        checker.checkSequence(document);
    } else if (document.isIndex()) {
        checker.checkIndex(document);
    } else {
        checker.checkText(document, loads);
    }
    const auto written = loads ? document.writtenForm() : std::nullopt;
    if (written)
        checker.checkWrittenForm(document, *written);
    return checker.findings;
}

void add(const std::vector<Finding>& findings, CheckedFile* result)
{
    result->findings.insert(result->findings.end(), findings.begin(), findings.end());
}

QJsonObject findingJson(const Finding& finding)
{
    return object({{"line", finding.line > 0 ? QJsonValue(finding.line) : QJsonValue()},
                   {"severity", QLatin1String(finding.isProblem ? "problem" : "note")},
                   {"code", QLatin1String(finding.code)},
                   {"message", finding.message}});
}

} // namespace

int Findings::problems() const
{
    return int(std::count_if(findings.begin(), findings.end(),
                             [](const Finding& finding) { return finding.isProblem; }));
}

CheckedFile checkFile(const QString& path)
{
    CheckedFile result;
    Document document;
    const bool loads = document.load(path);
    if (!document.wasRead()) {
        result.failure = document.problem();
        return result;
    }
    result.kind = loads ? document.kindName() : QString();
    result.title = loads ? document.title() : QStringLiteral("cannot be loaded");
    add(checkContent(path, document, loads), &result);
    add(damageOf(document, loads), &result);
    if (loads)
        add(checkKind(path, document), &result);
    std::stable_sort(result.findings.begin(), result.findings.end(),
                     [](const Finding& a, const Finding& b) { return a.line < b.line; });
    return result;
}

QJsonObject fileJson(const QString& file, const CheckedFile& checked)
{
    return object({{"file", file},
                   {"kind", textOrNull(checked.kind)},
                   {"failure", textOrNull(checked.failure)},
                   {"problems", checked.problems()},
                   {"findings", arrayOf(checked.findings, findingJson)}});
}
