// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "KindCheck.h"

#include "Document.h"
#include "Entries.h"
#include "InfoScan.h"

#include <QtCore/QFileInfo>
#include <QtCore/QHash>
#include <QtCore/QSet>

#include <algorithm>
#include <iterator>

using namespace ovparser::internal;

namespace {

namespace Key = PLKeyword::Key;
namespace Section = PLKeyword::Section;

QString quoted(const QString& text)
{
    return QLatin1Char('\'') + text + QLatin1Char('\'');
}

class KindChecker : public Findings
{
public:
    KindChecker(const QString& path, const Document& document);

    void checkLabelSet();
    void checkSequence();
    void checkExtension();
    void checkInstrument();
    void checkAnalysis();
    void checkOptics();
    void checkSettings();
    void checkSummary();
    void checkSpectral();

private:
    [[nodiscard]] int lineOf(const QString& sectionKey) const;
    [[nodiscard]] QSet<QString> menuKeys() const;
    void checkMenuName(const CPLSection& section);
    void checkTime(const InfoLine& line);
    void checkMember(int line, const QString& clickNumber, QHash<QString, int>* members);

    const QString& m_path;
    const Document& m_document;
    std::vector<InfoBlock> m_blocks;
    QHash<QString, int> m_places; ///< the header lines of the sections, by key in lower case
};

KindChecker::KindChecker(const QString& path, const Document& document)
    : m_path(path)
    , m_document(document)
    , m_blocks(blocksOf(document.text()))
{
    for (auto block = m_blocks.rbegin(); block != m_blocks.rend(); ++block)
        m_places.insert(block->key.toLower(), block->header.number);
}

int KindChecker::lineOf(const QString& sectionKey) const
{
    return m_places.value(sectionKey.toLower());
}

void KindChecker::checkLabelSet()
{
    CPLLabelDataSet labels;
    const tag_estatus status = labels.loadData(latin1View(withLineFeeds(m_document.bytes())));
    if (status != eSTATUS_SUCCESS)
        problem(1, "label-set-header",
                QStringLiteral(
                    "the file does not begin with '*** User Label Name Set:', a TAB and a name; "
                    "the label set is not read, with %1")
                    .arg(getStatusString(status)));
}

/** The acquisitions that a sequence lists are folders beside it. */
void KindChecker::checkSequence()
{
    QHash<QString, int> members;
    for (const InfoBlock& block : sequenceBlocksOf(m_document)) {
        if (block.key != Section::ClickNumbers)
            continue;
        for (const InfoLine& line : block.lines) {
            const LineCut cut = cutAtColon(line.text);
            if (cut.kind == LineCut::Pair)
                checkMember(line.number, decoded(block, withoutComment(cut.after)), &members);
        }
    }
}

void KindChecker::checkMember(int line, const QString& clickNumber, QHash<QString, int>* members)
{
    const auto first = members->constFind(clickNumber);
    if (first != members->constEnd()) {
        problem(line, "member-twice",
                QStringLiteral("click number %1 again (first in line %2)")
                    .arg(quoted(clickNumber))
                    .arg(*first));
        return;
    }
    members->insert(clickNumber, line);
    const QString folder = QFileInfo(m_path).path() + QLatin1Char('/') + clickNumber;
    const bool isName = !clickNumber.isEmpty() && !clickNumber.contains(QLatin1Char('/')) &&
                        clickNumber != QLatin1String(".") && clickNumber != QLatin1String("..");
    if (!isName)
        problem(line, "member-missing",
                QStringLiteral("click number %1 is no name of a folder").arg(quoted(clickNumber)));
    else if (!QFileInfo::exists(folder + QLatin1Char('/') + PLKeyword::File::ClickInfo))
        problem(line, "member-missing",
                QStringLiteral("the acquisition of click number %1 is not there: no file %2")
                    .arg(quoted(clickNumber),
                         clickNumber + QLatin1Char('/') + PLKeyword::File::ClickInfo));
}

void KindChecker::checkExtension()
{
    const CPLSection* const head = m_document.section(Section::ExtensionInfo);
    for (const QLatin1String key :
         {Key::ExtensionName, Key::SystemConfiguration, Key::ConflictsWith}) {
        if (head && !head->isKeyPresent(key))
            problem(lineOf(Section::ExtensionInfo), "extension-incomplete",
                    QStringLiteral("no key %1 in section 'Extension Info'; instruments do without "
                                   "this extension")
                        .arg(quoted(key)));
    }
    if (!m_document.section(Section::CameraSystemInfo))
        problem(0, "extension-incomplete",
                QStringLiteral(
                    "no section 'Camera System Info'; instruments do without this extension"));
}

void KindChecker::checkInstrument()
{
    if (m_document.startsWithoutHeader())
        return;
    for (const InfoLine& line : m_blocks.front().lines) {
        if (cutAtColon(line.text).kind == LineCut::Pair)
            problem(line.number, "key-before-section",
                    QStringLiteral("a key before the first section; it is not read"));
    }
}

void KindChecker::checkAnalysis()
{
    const InfoLines& lines = m_blocks.front().lines;
    const auto text = std::find_if(lines.begin(), lines.end(), [](const InfoLine& line) {
        return trimmed(line.text).size() > 0;
    });
    if (text != lines.end())
        note(text->number, "preamble-dropped",
             QStringLiteral("lines before the first section; loading as an analysis drops them"));
}

/** The sections that menus are made of, in lower case: their numbers count up from 1. */
QSet<QString> KindChecker::menuKeys() const
{
    QSet<QString> keys;
    for (const QLatin1String stem : {Section::TissueProperties, Section::SourceModel}) {
        const QString lower = QString(stem).toLower();
        for (int n = 1; m_places.contains(lower + QString::number(n)); ++n)
            keys.insert(lower + QString::number(n));
    }
    return keys;
}

void KindChecker::checkOptics()
{
    const QSet<QString> keys = menuKeys();
    const QList<CPLSection*> sections = m_document.sections();
    for (const CPLSection* const section : sections) {
        const QString key = keyOf(*section);
        if (keys.contains(key.toLower()))
            checkMenuName(*section);
        else
            problem(lineOf(key), "menu-incomplete",
                    QStringLiteral("section %1 is in no menu; its number does not follow those of "
                                   "the others")
                        .arg(quoted(key)));
    }
}

void KindChecker::checkMenuName(const CPLSection& section)
{
    const QString key = keyOf(section);
    QString name;
    section.getRawValue(Key::MenuName, &name);
    if (name.trimmed().isEmpty())
        problem(
            lineOf(key), "menu-name-missing",
            QStringLiteral("section %1 gives no 'MenuName'; no menu shows it").arg(quoted(key)));
}

void KindChecker::checkSettings()
{
    const QList<CPLSection*> sections = m_document.sections();
    for (const CPLSection* const section : sections)
        checkMenuName(*section);
}

void KindChecker::checkSummary()
{
    for (auto block = m_blocks.begin() + 1; block != m_blocks.end(); ++block) {
        for (const InfoLine& line : block->lines)
            checkTime(line);
    }
}

void KindChecker::checkTime(const InfoLine& line)
{
    const LineCut cut = cutAtColon(line.text);
    if (cut.kind != LineCut::Pair ||
        QString(cut.before).compare(Key::Time, Qt::CaseInsensitive) != 0)
        return;
    const QStringList parts = QString(withoutComment(cut.after)).split(QLatin1Char(':'));
    const bool isShort = std::any_of(parts.begin(), parts.end(),
                                     [](const QString& part) { return part.size() == 1; });
    if (isShort)
        note(line.number, "time-completed",
             QStringLiteral("time '%1' is read with two digits a part, and a save writes them")
                 .arg(cut.after));
}

void KindChecker::checkSpectral()
{
    const SpectralFaults faults = m_document.spectral()->faults + elementFaults(m_path);
    for (const SpectralFault& fault : faults)
        problem(fault.line, fault.code, fault.message);
}

struct KindCheck
{
    FileKind kind = FileKind::InfoText;
    void (KindChecker::*check)() = nullptr;
};

constexpr KindCheck kindChecks[] = {
    {FileKind::Sequence, &KindChecker::checkSequence},
    {FileKind::LabelSet, &KindChecker::checkLabelSet},
    {FileKind::InstrumentExtension, &KindChecker::checkExtension},
    {FileKind::Instrument, &KindChecker::checkInstrument},
    {FileKind::AnalyzedAcquisition, &KindChecker::checkAnalysis},
    {FileKind::OpticalProperties, &KindChecker::checkOptics},
    {FileKind::Settings, &KindChecker::checkSettings},
    {FileKind::BackgroundSummary, &KindChecker::checkSummary},
    {FileKind::SpectralAnalysis, &KindChecker::checkSpectral},
};

} // namespace

std::vector<Finding> checkKind(const QString& path, const Document& document)
{
    const auto* const row =
        std::find_if(std::begin(kindChecks), std::end(kindChecks),
                     [&](const KindCheck& check) { return check.kind == document.kind(); });
    if (row == std::end(kindChecks))
        return {};
    KindChecker checker(path, document);
    (checker.*row->check)();
    return checker.findings;
}
