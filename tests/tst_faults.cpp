// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * What happens when memory runs out: every operation runs again and again, and each time the next
 * of its allocations fails, until none does.
 */
#include "support/Support.h"

#include <QtCore/QSettings>

#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <type_traits>

namespace {

enum class Failing {
    Once,   ///< the chosen allocation only
    Onward, ///< the chosen allocation and all after it
};

struct Allocator
{
    bool armed = false;
    Failing failing = Failing::Once;
    long untilFailure = 0;
    long live = 0; ///< blocks that are in use
    bool failed = false;

    bool refuses()
    {
        if (!armed || untilFailure-- > 0 || (failed && failing == Failing::Once))
            return false;
        failed = true;
        return true;
    }

    void* counted(void* block)
    {
        live += block ? 1 : 0;
        return block;
    }
};

Allocator allocator;

} // namespace

// In place of the C library's own, for Qt's containers and, below operator new, for all else.
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void __libc_free(void* block);

void* malloc(std::size_t size) noexcept
{
    if (!allocator.refuses())
        return allocator.counted(__libc_malloc(size));
    errno = ENOMEM;
    return nullptr;
}

void* calloc(std::size_t count, std::size_t size) noexcept
{
    if (!allocator.refuses())
        return allocator.counted(__libc_calloc(count, size));
    errno = ENOMEM;
    return nullptr;
}

void* realloc(void* block, std::size_t size) noexcept
{
    if (allocator.refuses()) {
        errno = ENOMEM;
        return nullptr;
    }
    void* const moved = __libc_realloc(block, size);
    return block ? moved : allocator.counted(moved);
}

void free(void* block) noexcept
{
    allocator.live -= block ? 1 : 0;
    __libc_free(block);
}

} // extern "C"
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)

using Trial = std::function<void(Failing)>;
Q_DECLARE_METATYPE(Trial)
Q_DECLARE_METATYPE(Failing)

namespace {

/** What an operation works on, besides memory. */
enum class On {
    Memory,
    Files, ///< one is not opened, or not found, when the memory for its handle is missing
};

bool isCleanFailure(tag_estatus status, On on)
{
    const bool ofFile = status == eSTATUS_FILE_OPEN_FAILED || status == eSTATUS_FILE_NOT_FOUND ||
                        status == eSTATUS_FILE_READ_FAILED || status == eSTATUS_FAILED;
    return status == eSTATUS_OUT_OF_MEMORY || (on == On::Files && ofFile);
}

/** Runs an operation while an allocation fails; an exception is a status that no test takes. */
template <typename Document, typename Operation>
tag_estatus runFailing(Document& document, Operation operation, long allocation, Failing failing)
{
    tag_estatus status = eSTATUS_BAD_FORMAT;
    allocator.failed = false;
    allocator.failing = failing;
    allocator.untilFailure = allocation;
    allocator.armed = true;
    try {
        status = operation(document);
    } catch (...) {
        status = eSTATUS_INVALID_ARGUMENT;
    }
    allocator.armed = false;
    return status;
}

void failUnless(bool holds, const char* what, long allocation, tag_estatus status)
{
    if (!holds)
        QTest::qFail(
            qPrintable(
                "%1 at allocation %2: %3"_s.arg(QLatin1String(what)).arg(allocation).arg(getStatusString(status))),
            __FILE__, __LINE__);
}

/** Where Qt itself loses memory when it gets no more: its list of a folder and its regular expressions. */
template <typename Document>
constexpr bool leaksInQt = std::is_base_of_v<CPLCameraInfo, Document>;

/**
 * One try: the operation succeeds in full, or fails with a status and then succeeds.
 *
 * @return whether an allocation failed
 */
template <typename Document, typename Operation, typename State>
bool tryWithout(long allocation, Failing failing, Operation operation, State state, const QString& expected, On on)
{
    tzset(); // the C library keeps a name for itself
    const long before = allocator.live;
    {
        Document document;
        const tag_estatus status = runFailing(document, operation, allocation, failing);
        if (status == eSTATUS_SUCCESS) {
            failUnless(state(document) == expected, "incomplete", allocation, status);
        } else {
            failUnless(allocator.failed && isCleanFailure(status, on), "no clean failure", allocation, status);
            const tag_estatus again = operation(document);
            failUnless(again == eSTATUS_SUCCESS && state(document) == expected, "fails again", allocation, again);
        }
    }
    tzset();
    failUnless(leaksInQt<Document> || allocator.live == before, "a leak", allocation, eSTATUS_SUCCESS);
    return allocator.failed;
}

/** Adds the trials of an operation; `state` is what a success must leave behind. */
template <typename Document, typename Operation, typename State>
void add(const char* name, Operation operation, State state, On on = On::Memory)
{
    const Trial trial = [=](Failing failing) {
        QString expected;
        {
            Document document;
            QCOMPARE(operation(document), eSTATUS_SUCCESS);
            expected = state(document);
            QVERIFY(!expected.isEmpty());
        }
        long allocation = 0;
        while (tryWithout<Document>(allocation, failing, operation, state, expected, on) && !QTest::currentTestFailed())
            ++allocation;
        qInfo("%ld allocations", allocation);
        QVERIFY(allocation > 0 || QTest::currentTestFailed());
    };
    QTest::addRow("%s", name) << trial << Failing::Once;
    QTest::addRow("%s, and all after it", name) << trial << Failing::Onward;
}

const QTemporaryDir folder;
const QString saved = folder.filePath("saved"_s);
const QString study = support::example("study/SEQ20240305");
const QString clickInfo = study + "/ABC20240305091502/ClickInfo.txt"_s;
const QString analyzed = study + "/ABC20240305091502/AnalyzedClickInfo.txt"_s;
const QString summary = support::example("background/BkgSummary.txt");
const QString sequenceInfo = study + "/SequenceInfo.txt"_s;
const QString structureIndex = support::example("background/SLindex.txt");
const QString filterIndex = support::example("background/FLindex.txt");
const QString optics = support::example("settings/OpticalProperties.txt");
const QString instrument = folder.filePath("CameraInfo.txt"_s);
const QString sectionLines = "Title:\tone # two\nAngle: 90\n# note\nF-Stop: 2\n"_s;
const QString angleKey = "Angle"_s;
const QString clickBlock = "*** ClickNumber:\tABC12345678901234567\nUser: a\n"_s;
const QString fKey = "F"_s;
const QString stopKey = "Stop"_s;
const sIASetupInfo setup;
const QString presets = support::example("settings/Presets.txt");

/** A document together with the last answer that it gave. */
template <typename Document>
struct Asked : Document
{
    using Document::Document;
    QString answer;

    /** The status of a query: an empty answer is what is left when memory runs out. */
    tag_estatus keep(QString text)
    {
        answer = std::move(text);
        return answer.isEmpty() ? eSTATUS_OUT_OF_MEMORY : eSTATUS_SUCCESS;
    }

    tag_estatus keep(const QStringList& texts)
    {
        allocator.armed = false;
        return keep(texts.join(u'|'));
    }
};

/** A constructor has no status: a copy that lacks memory throws. */
template <typename Document>
tag_estatus copied(Document& document)
{
    try {
        const Document copy(document);
        document = copy;
        return eSTATUS_SUCCESS;
    } catch (const std::bad_alloc&) {
        return eSTATUS_OUT_OF_MEMORY;
    }
}

using Info = Asked<CPLClickInfo>;

struct LoadedInfo : Info
{
    LoadedInfo() { loadClickInfo(clickInfo, true); }
};

struct LoadedSection : Asked<CPLSection>
{
    LoadedSection()
    {
        loadSectionData(sectionLines);
        static_cast<void>(count());
    }
};

struct LoadedSequence : Asked<CPLSequenceInfo>
{
    LoadedSequence() { loadFile(sequenceInfo); }
};

/** It shares its lists with a copy, so that a change of one takes memory. */
struct SharedSequence : LoadedSequence
{
    const CPLSequenceInfo copy{*this};
};

struct LoadedPresets : Asked<CPLSettingsFileWrapper>
{
    LoadedPresets()
        : Asked<CPLSettingsFileWrapper>("Preset"_s, "Preset"_s)
    {
        load(presets);
        setFolderPath(support::example("settings/presets"));
    }
};

/** An instrument that asks for no choice of the operator. */
struct PlainCamera : CPLCameraInfo
{
    PlainCamera()
    {
        const QString file = folder.filePath("PlainCameraInfo.txt"_s);
        support::writeFile(file, "*** Camera System Info:\nSystem Configuration: VEXA 200\nZEVR-24: yes\n"
                                 "Motor Steps for x-ray2 stage position c: 1\nShelf Position B FOV: 12.5\n");
        loadCameraInfo(file);
    }
};

struct LabelledKeys : Asked<CPLPreferenceKeyList>
{
    LabelledKeys()
        : Asked<CPLPreferenceKeyList>(4)
    {
        labels.loadData(text);
        labels.getLabelData(&names);
    }

    const QString text = QString::fromLatin1(support::readFile(support::example("settings/Labels.txt"))).remove(u'\r');
    CPLLabelDataSet labels;
    QStringList names;
};

struct LoadedSpectrum : Asked<CPLSpectralWrapper>
{
    LoadedSpectrum() { loadXMLFile(support::example("spectral/Spectral.xml")); }
};

/** An open file to save in. */
class Output
{
public:
    Output() { m_file.open(QIODevice::WriteOnly | QIODevice::Unbuffered); }

    QFile& emptied()
    {
        m_file.seek(0);
        m_file.resize(0);
        return m_file;
    }

private:
    QFile m_file{saved};
};

QString savedText()
{
    return QString::fromLatin1(support::readFile(saved));
}

/** The spectral file that was written, without the time of writing. */
QString savedSpectrum()
{
    QString text = savedText();
    return text.remove(QRegularExpression("Date.Time=\"[^\"]*\""_s));
}

QString textOf(const CPLClickInfo& info)
{
    return QString::fromLatin1(info.getClickInfoData()) + QString::number(info.getFileSectionCount());
}

QString sectionText(const CPLSection& section)
{
    QString text;
    section.saveSectionData(text);
    return text;
}

QString sequenceText(const CPLSequenceInfo& sequence)
{
    QStringList texts = sequence.getClickNumberList();
    for (int i = 0; const CPLSection* section = sequence[i]; ++i)
        texts += sectionText(*section);
    return texts.join(u'|') + sequence.getDatasetName() + QString::number(sequence.getFileSectionCount());
}

QString keysText(const CPLPreferenceKeyList& list)
{
    QStringList texts;
    for (int i = 0; const CPLPreferenceKey* key = list[i]; ++i) {
        texts += QString();
        key->getSaveBuffer(&texts.last());
    }
    return texts.join(u'|');
}

tag_estatus writeXml(Output& output)
{
    static const AttrMap attributes = {{QStringLiteral("a"), QStringLiteral("1 & 2")}};
    {
        CPLXMLWriter writer(&output.emptied(), nullptr);
        writer.setAutoNewLine(true);
        writer.writeOpenTag(QStringLiteral("root"), attributes);
        writer.writeTaggedString(QStringLiteral("text"), QStringLiteral("<\u03b1>"), attributes);
        writer.writeAtomTag(QStringLiteral("atom"), attributes);
        writer.writeCloseTag(QStringLiteral("root"));
    }
    // There is no status; what cannot be written is left out.
    allocator.armed = false;
    return savedText().contains(QStringLiteral("<text a=\"1 &amp; 2\">&lt;")) &&
                   savedText().endsWith(QStringLiteral("</root>\n"))
               ? eSTATUS_SUCCESS
               : eSTATUS_FAILED;
}

tag_estatus writeSpectrum(CPLSpectralWrapper& file)
{
    if (!file.createSpectralXMLFile(saved))
        return eSTATUS_FAILED;
    file.setSpectralAttributes(QStringLiteral("SEQ"), 1, QStringLiteral("luminescent"), QStringLiteral("Muscle"),
                               QStringLiteral("Firefly"), 1.4F);
    file.setOpenClickInfo(1);
    file.setClickNumberInfo(QStringLiteral("ABC"), QStringLiteral("560"));
    file.setCloseClickNumberInfo();
    file.setCloseClickInfo();
    file.setSpectralAnalysisResults(QStringLiteral("1"), 1.75e6, 3200, QStringLiteral("p/s"), 4.2, 0.3,
                                    QStringLiteral("mm"));
    file.setLinearFitResults(1.5, -0.25);
    file.setCloseSpectralAnalysis();
    // There is no status; the file ends early when something is missing.
    allocator.armed = false;
    return savedText().trimmed().endsWith(QStringLiteral("</OV3.0.SpectralAnalysis>")) ? eSTATUS_SUCCESS
                                                                                       : eSTATUS_FAILED;
}

} // namespace

class TestFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void initTestCase()
    {
        QVERIFY(folder.isValid());
        // Without extensions: Qt's list of a folder is empty, not a failure, when memory runs out.
        QVERIFY(QFile::copy(support::example("instrument/CameraInfo.txt"), instrument));
        qputenv("XDG_DATA_HOME", folder.path().toLocal8Bit());
        qputenv("XDG_DATA_DIRS", folder.path().toLocal8Bit());
        QSettings::setPath(QSettings::NativeFormat, QSettings::SystemScope, folder.path());
    }

    void memoryRunsOut_data()
    {
        QTest::addColumn<Trial>("trial");
        QTest::addColumn<Failing>("failing");
        addClickInfoRows();
        addSectionRows();
        addSequenceRows();
        addOtherInfoRows();
        addPreferenceRows();
        addSpectralRows();
    }

    void memoryRunsOut()
    {
        QFETCH(Trial, trial);
        QFETCH(Failing, failing);
        trial(failing);
    }

private:
    static void addClickInfoRows()
    {
        const auto answer = [](const Info& info) { return info.answer; };
        const auto load = [](Info& info) { return info.loadClickInfo(clickInfo, true); };
        const auto keys = [](const Info& info) { return support::sectionsOf(info); };
        static QByteArray bytes = support::readFile(clickInfo);
        add<Info>("load", load, textOf, On::Files);
        add<LoadedInfo>("load over", load, textOf, On::Files);
        add<Info>(
            "analysis", [](Info& info) { return info.loadAnalyzedClickInfo(analyzed); }, textOf, On::Files);
        add<Info>(
            "DICOM", [](Info& info) { return info.loadClickInfoDcm(bytes, int(bytes.size())); }, textOf);
        const auto loadBare = [](Info& info) {
            return info.loadClickInfo(QStringLiteral("p.TIF"), QStringLiteral("A"), eIMAGE_PHOTOGRAPH, 4);
        };
        add<Info>("bare image", loadBare, keys);
        const auto findValue = [](Info& info) {
            return info.obtainValueFromClickInfoFile(clickInfo, QStringLiteral("User ID"), &info.answer);
        };
        add<Info>("one value", findValue, answer, On::Files);
        const auto findInText = [](Info& info) {
            return info.obtainValueFromClickInfoFile(bytes.data(), QStringLiteral("User ID"), &info.answer);
        };
        add<Info>("one value of a text", findInText, answer);
        const auto save = [](Info& info) { return info.saveClickInfo(saved); };
        add<LoadedInfo>(
            "save", save, [](const Info&) { return savedText(); }, On::Files);
        const auto text = [](Info& info) {
            const QByteArray data = info.getClickInfoData();
            allocator.armed = false;
            return info.keep(QString::fromLatin1(data));
        };
        add<LoadedInfo>("text form", text, answer);
        const auto setAndGet = [](Info& info) {
            tag_estatus status = info.setValue(QStringLiteral("User Input"), QStringLiteral("User ID"), 2.5);
            if (status == eSTATUS_SUCCESS)
                status = info.getValue(QStringLiteral("User Input"), QStringLiteral("User ID"), &info.answer);
            return status;
        };
        add<LoadedInfo>("set and get", setAndGet, answer);
        add<LoadedInfo>(
            "remove", [](Info& info) { return info.removeSection(QStringLiteral("User Input")); }, textOf);
        add<Info>("image section", addImage(eIMAGE_PHOTOGRAPH), textOf);
        add<Info>("image section with a companion", addImage(eIMAGE_LUMINESCENT), textOf);
        add<Info>(
            "click section", [](Info& info) { return info.addTiffClickNumberSection(true, true, QStringLiteral("4")); },
            keys);
        add<Info>(
            "user section", [](Info& info) { return info.addTiffUserSection(eIMAGE_STRUCTURE, QStringLiteral("A")); },
            textOf);
        add<Info>(
            "user sections", [](Info& info) { return info.appendUserSpecificSections(true); }, textOf);
        add<Info>(
            "analysis input", [](Info& info) { return info.appendAnalysisUserInputSection(); }, textOf);
        const auto setNumber = [](Info& info) {
            info.loadClickNumber(clickBlock);
            return info.getClickNumber(&info.answer) == eSTATUS_SUCCESS && info.answer.endsWith(u'7')
                       ? eSTATUS_SUCCESS
                       : eSTATUS_OUT_OF_MEMORY;
        };
        add<Info>("click number", setNumber, answer);
        const auto parse = [](Info& info) {
            CPLSection* section = nullptr;
            const tag_estatus status = CPLClickInfo::parseSectionFromBuffer(clickBlock, angleKey, &section, false);
            const std::unique_ptr<CPLSection> owned(section);
            allocator.armed = false;
            info.answer = owned ? sectionText(*owned) : QString();
            return status;
        };
        add<Info>("section of a text", parse, answer);
        const auto cut = [](Info& info) {
            int length = 0;
            return CPLClickInfo::copySectionBuffer(clickBlock, info.answer, length, nullptr);
        };
        add<Info>("text of a section", cut, answer);
        add<LoadedInfo>("copy", copied<LoadedInfo>, textOf);
    }

    static void addSectionRows()
    {
        using Section = Asked<CPLSection>;
        const auto list = [](Section& section) {
            section.loadSectionData(sectionLines);
            QStringList keys;
            const tag_estatus status = section.getKeylistFromKeyAndSubkey(fKey, stopKey, &keys);
            return status == eSTATUS_SUCCESS ? section.keep(keys) : status;
        };
        add<Section>("first use", list, [](const Section& section) { return section.answer; });
        const auto set = [](LoadedSection& section) { return section.setValue(angleKey, 2.5); };
        add<LoadedSection>("number", set, sectionText);
        const auto append = [](LoadedSection& section) { return section.addKeyValue(fKey, angleKey); };
        add<LoadedSection>("new pair", append, sectionText);
        add<LoadedSection>("copy of a section", copied<LoadedSection>, sectionText);
    }

    static void addSequenceRows()
    {
        using Sequence = Asked<CPLSequenceInfo>;
        const auto load = [](Sequence& sequence) { return sequence.loadFile(sequenceInfo); };
        add<Sequence>("sequence", load, sequenceText, On::Files);
        add<LoadedSequence>("sequence again", load, sequenceText, On::Files);
        const auto save = [](Sequence& sequence) { return sequence.saveFile(saved); };
        add<LoadedSequence>(
            "save a sequence", save, [](const Sequence&) { return savedText(); }, On::Files);
        const auto addUser = [](Sequence& sequence) {
            return sequence.addSeqUserSection(eIMAGE_OVERLAY, QStringLiteral("A"));
        };
        add<Sequence>("sequence user", addUser, sequenceText);
        const auto append = [](Sequence& sequence) { return sequence.appendUserSpecificSections(true); };
        add<Sequence>("sequence user sections", append, sequenceText);
        addSequenceEdits();
        add<LoadedSequence>("copy of a sequence", copied<LoadedSequence>, sequenceText);
    }

    static void addSequenceEdits()
    {
        static const QString number = "ABC20240305092010"_s;
        static const QString userInput = "User Input"_s;
        static const QString results = "Restore Results"_s;
        const auto done = [](bool success) { return success ? eSTATUS_SUCCESS : eSTATUS_OUT_OF_MEMORY; };
        const auto append = [done](LoadedSequence& sequence) {
            sequence.addClickNumber(fKey);
            return done(sequence.getNumDatasets() == 4);
        };
        add<LoadedSequence>("add a click number", append, sequenceText);
        const auto remove = [done](LoadedSequence& sequence) { return done(sequence.removeClickNumber(number)); };
        add<LoadedSequence>("remove a click number", remove, sequenceText);
        const auto removeSection = [](SharedSequence& sequence) { return sequence.removeSection(userInput); };
        add<SharedSequence>("remove a section", removeSection, sequenceText);
        const auto addVersion = [done](Asked<CPLSequenceInfo>& sequence) {
            sequence.addSequenceNumberSection(fKey);
            allocator.armed = false;
            return done(sequence.isSectionPresent(PLKeyword::Section::Sequence));
        };
        add<Asked<CPLSequenceInfo>>("version of a sequence", addVersion, sequenceText);
        const auto restore = [done](LoadedSequence& sequence) {
            sequence.addRestoreResult(fKey, stopKey);
            allocator.armed = false;
            const CPLSection* const section = sequence[results];
            return section && section->count() == 0 ? eSTATUS_BAD_FORMAT : done(section && section->isKeyPresent(fKey));
        };
        add<LoadedSequence>("restore result", restore, sequenceText);
    }

    static void addOtherInfoRows()
    {
        using Summary = CPLBkgSummaryInfo;
        add<Summary>(
            "summary", [](Summary& info) { return info.load(summary); }, textOf, On::Files);
        const auto loadStructure = [](Summary& info) { return info.SLload(structureIndex); };
        add<Summary>("structure index", loadStructure, textOf, On::Files);
        const auto loadFilters = [](Summary& info) { return info.FLload(filterIndex); };
        add<Summary>("fluorescence index", loadFilters, textOf, On::Files);

        const auto answer = [](const LoadedPresets& settings) { return settings.answer; };
        add<LoadedPresets>(
            "settings", [](LoadedPresets& settings) { return settings.load(presets); }, textOf, On::Files);
        const auto menu = [](LoadedPresets& settings) { return settings.keep(settings.getMenuNames()); };
        add<LoadedPresets>("menu", menu, answer);
        const auto next = [](LoadedPresets& settings) { return settings.keep(settings.getNextAutoMenuName()); };
        add<LoadedPresets>("next name", next, answer);
        const auto addPreset = [](LoadedPresets& settings) {
            return settings.addSection(QStringLiteral("Preset"), QStringLiteral("Mine"));
        };
        add<LoadedPresets>("new preset", addPreset, textOf);
        static const QString menuName = LoadedPresets().getMenuNames().value(0);
        const auto fileOf = [](LoadedPresets& settings) {
            return settings.keep(settings.getFileNameForMenuName(menuName, fKey));
        };
        add<LoadedPresets>("file of a preset", fileOf, answer);
        const auto setFile = [](LoadedPresets& settings) { return settings.setFileNameForMenuName(menuName, fKey); };
        add<LoadedPresets>("new file of a preset", setFile, textOf);
        const auto copySections = [](Asked<CPLSettingsFileWrapper>& settings) {
            static const LoadedPresets source;
            static const QList<CPLSection*> sections = {source[0], source[1]};
            settings.clearData();
            return settings.initFromSections(sections);
        };
        add<Asked<CPLSettingsFileWrapper>>("sections of presets", copySections, textOf);

        using Optics = CPLOptPropInfo;
        const auto read = [](Optics& info) { return info.readSettingFile(optics); };
        const auto names = [](const Optics& info) { return info.getTissuePropList().join(u'|'); };
        add<Optics>("optical properties", read, names, On::Files);

        using Camera = CPLCameraInfo;
        const auto load = [](Camera& camera) { return camera.load(instrument); };
        add<Camera>("instrument", load, textOf, On::Files);
        const auto done = [](bool success) { return success ? eSTATUS_SUCCESS : eSTATUS_OUT_OF_MEMORY; };
        const auto always = [](const PlainCamera&) { return "answered"_s; };
        const auto widens = [done](PlainCamera& camera) { return done(camera.isZEVR24Available()); };
        add<PlainCamera>("wide-field lens", widens, always);
        const auto carries = [done](PlainCamera& camera) { return done(camera.isLargeAnimalCapable()); };
        add<PlainCamera>("large animals", carries, always);
        const auto nameView = [done](PlainCamera& camera) {
            QByteArray name;
            return done(getFOVName(&camera, 12.5, name));
        };
        add<PlainCamera>("field of view", nameView, always);
    }

    static void addPreferenceRows()
    {
        const auto loadLabels = [](LabelledKeys& keys) { return keys.labels.loadData(keys.text); };
        add<LabelledKeys>("labels", loadLabels, [](const LabelledKeys& keys) { return keys.labels[0]; });
        const auto load = [](LabelledKeys& keys) { return keys.loadData(keys.text, &keys.names); };
        add<LabelledKeys>("preferences", load, keysText);
        const auto save = [](LabelledKeys& keys) { return keys.saveData(&keys.labels, &keys.answer); };
        add<LabelledKeys>("save preferences", save, [](const LabelledKeys& keys) { return keys.answer; });

        struct KeysAndOutput : LabelledKeys, Output
        {};

        const auto saveFile = [](KeysAndOutput& keys) { return keys.saveData(keys.emptied(), &keys.labels); };
        add<KeysAndOutput>(
            "preferences file", saveFile, [](const KeysAndOutput&) { return savedText(); }, On::Files);
    }

    static void addSpectralRows()
    {
        add<Output>(
            "write XML", writeXml, [](const Output&) { return savedText(); }, On::Files);
        using Spectrum = CPLSpectralWrapper;
        add<Spectrum>(
            "write a spectrum", writeSpectrum, [](const Spectrum&) { return savedSpectrum(); }, On::Files);
        const auto answer = [](const LoadedSpectrum& file) { return file.answer; };
        const auto results = [](LoadedSpectrum& file) {
            const QList<_tagSROISpectralResults> list = file.getROISpectralResults();
            allocator.armed = false;
            QStringList depths;
            for (const _tagSROISpectralResults& region : list)
                depths += QString::number(region.averageDepth);
            return file.keep(depths);
        };
        add<LoadedSpectrum>("results", results, answer);
        const auto plot = [](LoadedSpectrum& file) {
            const QList<SPlotResults> list = file.getROIPlotResultsForROI(QStringLiteral("ROI 1"));
            allocator.armed = false;
            QStringList intensities;
            for (const SPlotResults& point : list)
                intensities += QString::number(point.intensity);
            return file.keep(intensities);
        };
        add<LoadedSpectrum>("plot", plot, answer);
    }

    static std::function<tag_estatus(Info&)> addImage(tag_eimagetype type)
    {
        return [type](Info& info) { return info.addTiffImageSection(QStringLiteral("i.TIF"), type, &setup, false); };
    }
};

QTEST_GUILESS_MAIN(TestFaults)
#include "tst_faults.moc"
