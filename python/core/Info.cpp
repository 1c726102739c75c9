// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Info.h"

#include "Document.h"
#include "internal/text/InfoText.h"

#include <QtCore/QSet>

#include <algorithm>

using namespace ovparser::internal;

namespace ovpython {

namespace {

/** Reaches what a document keeps for the classes that derive from it. */
struct Opened : CPLClickInfo
{
    static QStringList& preamble(CPLClickInfo& info) { return info.*(&Opened::preambleLines); }

    static tag_estatus load(CPLClickInfo& info, const QString& text)
    {
        return (info.*(&Opened::loadClickInfoText))(text);
    }
};

bool sameKey(const QString& a, const QString& b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

QString keyIn(const CPLSection& section)
{
    QString key;
    section.getSectionKey(&key);
    return key;
}

bool isLatin1(const QString& text)
{
    return std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c.unicode() <= 0xFF; });
}

/** Raises a UnicodeEncodeError for a text that Latin-1 cannot hold. */
void checkLatin1(const QString& text)
{
    if (isLatin1(text))
        return;
    static_cast<void>(toPython(text).attr("encode")("latin-1"));
    raiseValueError(QStringLiteral("the text is not Latin-1")); // not reached: encode() raises
}

bool hasLineEnd(const QString& text)
{
    return text.contains(QLatin1Char('\n')) || text.contains(QLatin1Char('\r'));
}

/** Raises a ValueError unless a text before a ':' is read back as it is. */
void checkBeforeColon(const QString& text, const char* what)
{
    const QString quoted = QLatin1Char('\'') + text + QLatin1Char('\'');
    if (text.isEmpty() || trimmed(text) != text)
        raiseValueError(QStringLiteral("%1 is no %2: it is empty or has white space at an end")
                            .arg(quoted, QLatin1String(what)));
    if (hasLineEnd(text) || text.contains(QLatin1Char(':')) || text.contains(QLatin1Char('#')))
        raiseValueError(QStringLiteral("%1 is no %2: it holds a line end, ':' or '#'")
                            .arg(quoted, QLatin1String(what)));
    checkLatin1(text);
}

void checkKey(const QString& key)
{
    checkBeforeColon(key, "key");
    if (key.startsWith(PLKeyword::Text::BareMarker))
        raiseValueError(QStringLiteral("a key cannot begin as a header line does"));
}

/** The entries of a section as they are written, each without its line end. */
QStringList linesOf(const CPLSection& section)
{
    QStringList lines = textOf(section).split(PLKeyword::Text::LineEnd);
    return lines.mid(1, lines.size() - 3); // between the header line and the empty line after it
}

/** The key of such a line in lower case; null for a comment. */
QString lowerKeyOf(const QString& line)
{
    const auto colon = line.indexOf(PLKeyword::Text::KeyEnd);
    return colon < 0 || line.startsWith(QLatin1Char('#')) ? QString() : line.left(colon).toLower();
}

} // namespace

Info::Info(std::unique_ptr<CPLClickInfo> info)
    : m_clickInfo(std::move(info))
{}

Info::Info(std::unique_ptr<CPLSequenceInfo> sequence)
    : m_sequence(std::move(sequence))
{}

Info::Info(const Info& other)
    : std::enable_shared_from_this<Info>(other)
    , hidesHeader(other.hidesHeader)
    , m_clickInfo(other.m_clickInfo ? std::make_unique<CPLClickInfo>(*other.m_clickInfo) : nullptr)
    , m_sequence(other.m_sequence ? std::make_unique<CPLSequenceInfo>(*other.m_sequence) : nullptr)
{}

Info::~Info() = default;

void Info::swap(Info& other)
{
    std::swap(hidesHeader, other.hidesHeader);
    m_clickInfo.swap(other.m_clickInfo);
    m_sequence.swap(other.m_sequence);
}

CPLClickInfo& Info::asClickInfo() const
{
    if (!m_clickInfo)
        throw py::type_error("a sequence has no such thing");
    return *m_clickInfo;
}

CPLSequenceInfo& Info::asSequence() const
{
    if (!m_sequence)
        throw py::type_error("only a sequence has such a thing");
    return *m_sequence;
}

CPLSection* Info::at(int place) const
{
    return m_clickInfo ? (*m_clickInfo)[place] : (*m_sequence)[place];
}

// The keys of a sequence are matched with their letter case; here it is ignored everywhere.
CPLSection* Info::find(const QString& key) const
{
    if (m_clickInfo)
        return (*m_clickInfo)[key];
    if (CPLSection* const section = (*m_sequence)[key])
        return section;
    for (int i = 0; CPLSection* const section = at(i); ++i) {
        if (sameKey(keyIn(*section), key))
            return section;
    }
    return nullptr;
}

int Info::count() const
{
    int count = 0;
    if (m_clickInfo)
        m_clickInfo->getSectionCount(&count);
    else
        while (at(count))
            ++count;
    return count;
}

QStringList Info::keys() const
{
    QStringList keys;
    for (int i = 0; const CPLSection* const section = at(i); ++i)
        keys += keyIn(*section);
    return keys;
}

void Info::add(std::unique_ptr<CPLSection> section)
{
    const tag_estatus status = m_clickInfo ? m_clickInfo->addSection(section.get())
                                           : m_sequence->addSection(section.get());
    check(status);
    section.release(); // NOLINT(bugprone-unused-return-value): the document owns it now
}

void Info::remove(const QString& key)
{
    const CPLSection* const section = find(key);
    if (!section)
        raiseKeyError(key);
    const QString spelled = keyIn(*section);
    check(m_clickInfo ? m_clickInfo->removeSection(key) : m_sequence->removeSection(spelled));
}

void Info::clear()
{
    if (m_clickInfo)
        m_clickInfo->clearData();
    else
        *m_sequence = CPLSequenceInfo();
    hidesHeader = false;
}

QByteArray Info::bytes() const
{
    for (int i = 0; const CPLSection* const section = m_sequence ? at(i) : nullptr; ++i)
        checkLatin1(textOf(*section));
    QByteArray bytes = m_clickInfo ? m_clickInfo->getClickInfoData() : writtenForm(*m_sequence);
    if (!hidesHeader || !bytes.startsWith(PLKeyword::Text::BareMarker.data()))
        return bytes;
    const QLatin1String end = PLKeyword::Text::LineEnd;
    return bytes.mid(bytes.indexOf(end.data()) + int(end.size()));
}

void Info::follow(const QString& key) const
{
    const CPLSection* const section = find(key);
    if (!section)
        return;
    if (m_clickInfo && sameKey(key, PLKeyword::Section::ClickNumber))
        m_clickInfo->loadClickNumber(ovpython::textOf(*section));
    QString name;
    section->getSectionName(&name, false);
    if (m_sequence && sameKey(key, PLKeyword::Section::Sequence))
        m_sequence->setSeqDatasetName(name);
}

// What the section lists counts: it is what a file holds.
QStringList Info::clickNumbers() const
{
    QStringList numbers;
    if (const CPLSection* const section = find(PLKeyword::Section::ClickNumbers))
        section->getValueList(&numbers);
    return numbers;
}

QStringList Info::preamble() const
{
    return m_clickInfo ? Opened::preamble(*m_clickInfo) : QStringList();
}

void Info::setPreamble(const QStringList& lines) const
{
    Opened::preamble(asClickInfo()) = lines;
}

tag_estatus Info::loadBytes(const QByteArray& bytes)
{
    return Opened::load(*m_clickInfo, decodeInfoText(bytes));
}

CPLSection& Section::get() const
{
    CPLSection* const section = info->find(key);
    if (!section)
        raiseKeyError(key);
    return *section;
}

QStringList keysOf(const CPLSection& section)
{
    QStringList keys;
    section.getKeyList(&keys);
    QStringList once;
    QSet<QString> seen;
    for (const QString& key : qAsConst(keys)) {
        const QString folded = key.toLower();
        if (seen.contains(folded))
            continue;
        seen.insert(folded);
        once += key;
    }
    return once;
}

QString rawValue(const CPLSection& section, const QString& key)
{
    QString text;
    if (section.getRawValue(key, &text) != eSTATUS_SUCCESS)
        raiseKeyError(key);
    return text;
}

QString value(const CPLSection& section, const QString& key)
{
    QString text;
    if (section.getValue(key, &text) == eSTATUS_SUCCESS)
        return text;
    return withoutComment(rawValue(section, key)); // also of an empty key, which a file may have
}

namespace {

/** Changes a value, which then is as it would be read. An equal one stays as it is spelled. */
void assignOne(CPLSection* section, const QString& key, const QString& text)
{
    QString raw;
    if (section->getRawValue(key, &raw) != eSTATUS_SUCCESS) {
        check(section->addKeyValue(key, text));
        return;
    }
    if (withoutComment(raw) == text)
        return;
    check(section->setValue(key, text));
    section->getRawValue(key, &raw);
    check(section->setRawValue(key, trimmed(raw)));
}

} // namespace

void assign(CPLSection* section, const Assignments& values)
{
    for (const auto& [key, text] : values) {
        checkText(text);
        if (!section->isKeyPresent(key))
            checkKey(key);
    }
    for (const auto& [key, text] : values)
        assignOne(section, key, trimmed(text));
}

// The library removes no single entry: the others are read anew, and get their stored values back,
// which a file might spell differently.
void removeKeys(CPLSection* section, const QSet<QString>& lowerKeys)
{
    QStringList keys;
    QStringList values;
    section->getKeyList(&keys);
    section->getRawValueList(&values);
    QStringList lines = linesOf(*section);
    lines.erase(
        std::remove_if(lines.begin(), lines.end(),
                       [&](const QString& line) { return lowerKeys.contains(lowerKeyOf(line)); }),
        lines.end());
    section->loadSectionData(lines.join(QLatin1Char('\n')) + QLatin1Char('\n'));
    for (int i = 0; i < keys.size(); ++i) {
        if (!lowerKeys.contains(keys.at(i).toLower()))
            section->setRawValue(keys.at(i), values.at(i));
    }
}

void replacePairs(CPLSection* section, const Assignments& values)
{
    CPLSection changed = *section;
    QSet<QString> others;
    const QStringList keys = keysOf(changed);
    for (const QString& key : keys)
        others.insert(key.toLower());
    for (const auto& pair : values)
        others.remove(pair.first.toLower());
    if (!others.isEmpty())
        removeKeys(&changed, others);
    assign(&changed, values);
    *section = changed;
}

void rename(CPLSection* section, const QString& name)
{
    checkText(name);
    QString raw;
    check(section->setSectionName(trimmed(name)));
    section->getSectionName(&raw, true);
    check(section->setSectionName(trimmed(raw)));
}

QString textOf(const CPLSection& section)
{
    QString text;
    section.saveSectionData(text);
    return text;
}

std::unique_ptr<CPLSection> sectionOf(const QString& key, const QString& text)
{
    CPLSection* section = nullptr;
    QString lines = text;
    lines.remove(QLatin1Char('\r'));
    check(CPLClickInfo::parseSectionFromBuffer(lines, key, &section, true));
    return std::unique_ptr<CPLSection>(section);
}

std::unique_ptr<CPLSection> copyOf(const CPLSection& section, const QString& key)
{
    auto copy = std::make_unique<CPLSection>(section);
    copy->setSectionKey(key);
    return copy;
}

void checkSectionKey(const QString& key)
{
    checkBeforeColon(key, "key of a section");
}

void checkText(const QString& text)
{
    if (hasLineEnd(text))
        raiseValueError(QStringLiteral("a name or value cannot hold a line end"));
    checkLatin1(text);
}

} // namespace ovpython
