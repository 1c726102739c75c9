// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "support/Support.h"

#include <QtCore/QDir>
#include <QtCore/QRegularExpression>

#include <ctime>
#include <limits>

/** How a row of image sections changes the setup. */
using SetupChange = void (*)(sIASetupInfo&);
Q_DECLARE_METATYPE(SetupChange)

namespace {

QString loaded(const QByteArray& text, tag_estatus* status)
{
    CPLClickInfo info;
    *status = info.loadTextBuffer(QString::fromUtf8(text));
    return support::sectionsOf(info);
}

/** A document in which a new section takes the place of an old one. */
class Replacing : public CPLClickInfo
{
public:
    tag_estatus addSection(CPLSection* section) override
    {
        QString key;
        section->getSectionKey(&key);
        removeSection(key);
        return CPLClickInfo::addSection(section);
    }
};

/** A setup whose every written field differs from its default. */
sIASetupInfo fullSetup()
{
    sIASetupInfo setup;
    setup.acquisitionTime = 1709630102; // 5 March 2024, 09:15:02 UTC
    setup.excitationFilter = "X2"_s;
    setup.emissionFilter = "E5"_s;
    setup.fluorescenceLevelText = "Low"_s;
    setup.luminescentFNumber = "1.2"_s;
    setup.photographFNumber = "5.6"_s;
    setup.xrayFNumber = "4"_s;
    setup.xrayTubeFilter = "in"_s;
    setup.luminescentExposureUnits = "min"_s;
    setup.structureFrequencyText = "Fine"_s;
    setup.subjectSize = 2.5;
    setup.demandTemperature = "-90"_s;
    setup.measuredTemperature = "-89.8"_s;
    setup.luminescentBinning = 8;
    setup.photographBinning = 4;
    setup.structureBinning = 2;
    setup.xrayBinning = 16;
    setup.rawBinning = 4;
    setup.blemishBinning = 32;
    setup.filterPosition = 3;
    setup.readBiasLevel = 0.1F;
    setup.stageDistance = 1234567.0F;
    setup.structureFrequency = 0.25F;
    setup.luminescentExposure = 60;
    setup.photographExposure = 0.00001;
    setup.fluorescenceLevel = 0.0001;
    setup.fieldOfView = 12.5;
    setup.xrayTubeVoltage = 40;
    setup.xrayTubePlateCurrent = 0.1;
    setup.xrayExposure = 7.5;
    setup.xrayReadBiasLevel = 1.25F;
    setup.imagingAngle = 30;
    setup.heightReference = "h"_s;
    setup.heightReferencePixelX = "x"_s;
    setup.heightReferencePixelY = "y"_s;
    setup.flGridName = "G"_s;
    setup.flXMotorPosition = 5;
    setup.flYMotorPosition = 6;
    setup.flXSpot = 1.5F;
    setup.flYSpot = -2;
    setup.flGridPositionX = 7;
    setup.flGridPositionY = 8;
    setup.flXSpotText = "xs"_s;
    setup.flYSpotText = "ys"_s;
    setup.flXMotorPositionText = "xm"_s;
    setup.flYMotorPositionText = "ym"_s;
    return setup;
}

/** The pairs of a section as "key=value" after the five common keys, joined by '|'. */
QString ownKeys(const CPLSection* section)
{
    QStringList keys;
    QStringList values;
    if (!section)
        return "(no section)"_s;
    section->getKeyList(&keys);
    section->getRawValueList(&values);
    QStringList pairs;
    for (int i = 5; i < keys.size(); ++i)
        pairs += keys.at(i) + u'=' + values.at(i);
    return pairs.join(u'|');
}

} // namespace

class TestClickInfo : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void aSectionIsHeldOnce()
    {
        CPLClickInfo info;
        CPLClickInfo other;
        CPLSequenceInfo sequence;
        auto* const section = new CPLSection("Camera"_s, "Unit A"_s);
        QCOMPARE(info.addSection(section), eSTATUS_SUCCESS);
        QCOMPARE(info.addSection(section), eSTATUS_SUCCESS);
        QCOMPARE(section->setSectionKey("Renamed"_s), eSTATUS_SUCCESS);
        QCOMPARE(info.addSection(section), eSTATUS_INVALID_ARGUMENT);
        QCOMPARE(other.addSection(section), eSTATUS_INVALID_ARGUMENT);
        QCOMPARE(sequence.addSection(section), eSTATUS_INVALID_ARGUMENT);
        const CPLClickInfo copy(info);
        QCOMPARE(other.addSection(copy["Camera"_s]), eSTATUS_INVALID_ARGUMENT);
        QVERIFY(!other[0]);
        QVERIFY(!sequence[0]);
        auto* const free = new CPLSection(*section);
        QCOMPARE(other.addSection(free), eSTATUS_SUCCESS);
        QCOMPARE(other[0], free);
    }

    void byteOrderMarkIsPassedOver()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath("ClickInfo.txt"_s);
        const QByteArray text = "*** A:\tfirst\r\nKey:\t1\r\n\r\n*** B:\t\r\n\r\n\r\n\r\n";
        support::writeFile(path, "\xEF\xBB\xBF" + text);
        CPLClickInfo info;
        QCOMPARE(info.loadClickInfo(path, false), eSTATUS_SUCCESS);
        QCOMPARE(info.getFileSectionCount(), 2);
        QCOMPARE(info.getClickInfoData(), text);
    }

    void initTestCase()
    {
        qputenv("TZ", "UTC");
        tzset();
        QVERIFY(m_folder.isValid());
    }

    void sectionsBelongToTheDocument()
    {
        CPLClickInfo info;
        QCOMPARE(info.addSection(nullptr), eSTATUS_NULL_ARGUMENT);
        CPLSection nameless;
        QCOMPARE(info.addSection(&nameless), eSTATUS_EMPTY_SECTION_KEY);
        auto* const camera = new CPLSection("Camera"_s, ""_s);
        QCOMPARE(info.addSection(camera), eSTATUS_SUCCESS);
        CPLSection second("CAMERA"_s, ""_s);
        QCOMPARE(info.addSection(&second), eSTATUS_SUCCESS);
        int count = 0;
        QCOMPARE(info.getSectionCount(&count), eSTATUS_SUCCESS);
        QCOMPARE(count, 1);
        QCOMPARE(info["cAMERA"_s], camera);
        QCOMPARE(info[0], camera);
        QVERIFY(!info[1] && !info[-1] && !info["lens"_s]);
        QVERIFY(info.isSectionPresent("camera"_s));
        QCOMPARE(info.removeSection("lens"_s), eSTATUS_SUCCESS);
        QCOMPARE(info.removeSection("CAMERA"_s), eSTATUS_SUCCESS);
        QVERIFY(!info.isSectionPresent("Camera"_s) && !info[0]);
        QCOMPARE(info.getClickInfoData(), QByteArray("\r\n\r\n"));
        QCOMPARE(info.getSectionCount(nullptr), eSTATUS_NULL_ARGUMENT);
    }

    void valuesBySectionAndKey()
    {
        CPLClickInfo info;
        info.loadTextBuffer("*** Camera: A\nGain: 2.5 # auto\nBinning: 4"_s);
        QString text;
        QCOMPARE(info.getValue("camera"_s, "GAIN"_s, &text), eSTATUS_SUCCESS);
        QCOMPARE(text, "2.5"_s);
        double real = 0;
        int integer = 0;
        QCOMPARE(info.getValue("Camera"_s, "Gain"_s, &real), eSTATUS_SUCCESS);
        QCOMPARE(real, 2.5);
        QCOMPARE(info.getValue("Camera"_s, "Binning"_s, &integer), eSTATUS_SUCCESS);
        QCOMPARE(integer, 4);
        QCOMPARE(info.getValue("Lens"_s, "Gain"_s, &real), eSTATUS_SECTION_NOT_FOUND);
        QCOMPARE(info.getValue("Camera"_s, "Zoom"_s, &real), eSTATUS_KEY_NOT_FOUND);
        QCOMPARE(info.setValue("Camera"_s, "Gain"_s, 3.0), eSTATUS_SUCCESS);
        QCOMPARE(info.setValue("Camera"_s, "Binning"_s, 7L), eSTATUS_SUCCESS);
        QCOMPARE(info.setValue("Camera"_s, "Zoom"_s, 1), eSTATUS_KEY_NOT_FOUND);
        QCOMPARE(info.setValue("Lens"_s, "Zoom"_s, "x"_s), eSTATUS_SECTION_NOT_FOUND);
        QCOMPARE(info.getClickInfoData(),
                 QByteArray("*** Camera:\tA\r\nGain:\t3.000000\t# auto\r\nBinning:\t7\r\n\r\n\r\n\r\n"));
    }

    void loadsText_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<tag_estatus>("status");
        QTest::addColumn<QString>("sections");
        support::row("no header", QByteArray("just: text"), eSTATUS_SUCCESS, ""_s);
        support::row("two", QByteArray("lead\n*** A: 1\n k: v\n \t***B: 2\n"), eSTATUS_SUCCESS, "A|B"_s);
        support::row("first of a key wins", QByteArray("*** A: 1\n*** a: 2\n*** B: 3"), eSTATUS_SUCCESS, "A|B"_s);
        support::row("no colon", QByteArray("*** A: 1\n*** B\nk: v\n*** C: 2"), eSTATUS_BAD_FORMAT, "A"_s);
        support::row("comment sign", QByteArray("*** A # x: 1"), eSTATUS_BAD_FORMAT, ""_s);
        support::row("asterisks inside a line", QByteArray("*** A: 1\nk: *** B: 2"), eSTATUS_SUCCESS, "A"_s);
        support::row("empty key", QByteArray("*** A: 1\n*** : 2"), eSTATUS_EMPTY_SECTION_KEY, "A"_s);
        support::row("click number without body", QByteArray("*** A: 1\n*** ClickNumber: X1"),
                     eSTATUS_EMPTY_SECTION_KEY, "A"_s);
        support::row("outside Latin-1", QByteArray("*** A\xE2\x82\xAC: 1"), eSTATUS_SUCCESS, "A?"_s);
    }

    void loadsText()
    {
        QFETCH(QByteArray, text);
        tag_estatus status = eSTATUS_FAILED;
        const QString sections = loaded(text, &status);
        QTEST(status, "status");
        QTEST(sections, "sections");
    }

    void clickNumbers_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("number");
        const QString longName = QString(40, u'a');
        support::row("letter", "*** ClickNumber: ABC1\nk: v"_s, "ABC1"_s);
        support::row("digit", "*** clicknumber:\t2019ABC \nk: v"_s, "X2019ABC"_s);
        support::row("other letter", "*** ClickNumber: \u00c4B\nk: v"_s, "X\u00c4B"_s);
        support::row("no name", "*** ClickNumber:\nk: v"_s, "X"_s);
        support::row("cut", "*** ClickNumber: "_s + longName + "\nk: v"_s, longName.left(31));
        support::row("no body", "*** ClickNumber: ABC1"_s, "old"_s);
        support::row("second block", "*** ClickNumber: A\nk: v\n*** ClickNumber: B\nk: v"_s, "B"_s);
    }

    void clickNumbers()
    {
        QFETCH(QString, text);
        CPLClickInfo info;
        QCOMPARE(info.setClickNumber("old"_s), eSTATUS_SUCCESS);
        QCOMPARE(info.setClickNumber(""_s), eSTATUS_INVALID_VALUE);
        QCOMPARE(info.loadTextBuffer(text), eSTATUS_SUCCESS);
        QString number;
        QCOMPARE(info.getClickNumber(&number), eSTATUS_SUCCESS);
        QTEST(number, "number");
        QVERIFY(info.isSectionPresent("ClickNumber"_s));
        QCOMPARE(info.getClickNumber(nullptr), eSTATUS_NULL_ARGUMENT);
    }

    void savesWhatItLoaded_data()
    {
        QTest::addColumn<QString>("file");
        QDir study(support::example("study/SEQ20240305"));
        for (const QString& click : study.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            const QDir folder(study.filePath(click));
            for (const QString& file : folder.entryList(QDir::Files))
                support::row(qPrintable(click + u'/' + file), folder.filePath(file));
        }
    }

    void savesWhatItLoaded()
    {
        QVERIFY(QFile::exists(support::example("study/SEQ20240305/ABC20240305091502/AnalyzedClickInfo.txt")));
        QFETCH(QString, file);
        CPLClickInfo info;
        QCOMPARE(info.loadClickInfo(file, false), eSTATUS_SUCCESS);
        int count = 0;
        info.getSectionCount(&count);
        QCOMPARE(info.getFileSectionCount(), count);
        QVERIFY(count >= 6);
        const QString copy = m_folder.filePath("copy.txt"_s);
        QCOMPARE(info.saveClickInfo(copy), eSTATUS_SUCCESS);
        QCOMPARE(support::readFile(copy), support::readFile(file));
        QCOMPARE(info.getClickInfoData(), support::readFile(file));
    }

    void keepsEveryByte()
    {
        QByteArray value;
        for (int byte = 0; byte < 256; ++byte) {
            const char c = char(byte);
            if (!strchr("\t\n\v\f\r ", c) || c == '\0')
                value += c;
        }
        const QByteArray text =
            "pre" + value + "\r\n*** A:\t" + value.mid(0, 27) + "\r\nk:\t" + value + "\r\n\r\n\r\n\r\n";
        const QString file = m_folder.filePath("bytes.txt"_s);
        support::writeFile(file, text);
        CPLClickInfo info;
        QCOMPARE(info.loadClickInfo(file, false), eSTATUS_SUCCESS);
        QCOMPARE(info.getClickInfoData(), text);
    }

    void lineEnds_data()
    {
        QTest::addColumn<QByteArray>("end");
        support::row("CR LF", QByteArray("\r\n"));
        support::row("LF", QByteArray("\n"));
        support::row("CR", QByteArray("\r"));
    }

    void lineEnds()
    {
        QFETCH(QByteArray, end);
        const QByteArray lines[] = {"", "  first ", "", "*** A:\tb", "k: v", "", "note", "*** B:", ""};
        QByteArray text;
        for (const QByteArray& line : lines)
            text += line + end;
        const QString file = m_folder.filePath("ends.txt"_s);
        support::writeFile(file, text);
        CPLClickInfo info;
        QCOMPARE(info.loadClickInfo(file, false), eSTATUS_SUCCESS);
        QCOMPARE(info.getFileSectionCount(), 2);
        QCOMPARE(info.getClickInfoData(), QByteArray("first\r\n\r\n*** A:\tb\r\nk:\tv\r\n\r\n#note\r\n"
                                                     "\r\n*** B:\t\r\n\r\n\r\n\r\n"));
    }

    void bodiesAreWrittenAlike_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QByteArray>("written");
        const auto row = [](const char* name, const QByteArray& body, const QByteArray& written) {
            QTest::newRow(name) << body << written;
        };
        const QByteArray plain = "k:\tv\r\n# note\r\n\r\nno value:\t\r\nlast:\t1 # two: 3\r\n";
        row("as it is written", plain, plain);
        row("LF", QByteArray(plain).replace("\r\n", "\n"), plain);
        row("one LF", "a:\t1\nb:\t2\r\n", "a:\t1\r\nb:\t2\r\n");
        row("no entries", "\r\n", "");
        row("empty last value", "a:\t1\r\nb:\t\r\n", "a:\t1\r\nb:\t\r\n");
        row("empty key", ":\t1\r\nb:\t2\r\n", ":\t1\r\nb:\t2\r\n");
        row("no TAB", "a:1\r\nb: 2\r\n", "a:\t1\r\nb:\t2\r\n");
        row("TAB before ':'", "a\t:1\r\nb:\t2\r\n", "a:\t1\r\nb:\t2\r\n");
        row("blanks", " a:\t1\r\nb:\t2 \r\nc:\t\t3\r\n", "a:\t1\r\nb:\t2\r\nc:\t3\r\n");
        row("blank in front of a comment", "a:\t1\r\n # b\r\n", "a:\t1\r\n# b\r\n");
        row("no ':'", "a:\t1\r\nb\r\n", "a:\t1\r\n#b\r\n");
        row("'#' in a key", "a#b:\t1\r\n", "#a#b:\t1\r\n");
        row("key twice", "a:\t1\r\nb:\t2\r\na:\t3\r\n", "a:\t3\r\nb:\t2\r\na:\t3\r\n");
        row("in another case", "\xC9 a:\t1\r\n\xE9 A:\t2\r\n", "\xC9 a:\t2\r\n\xE9 A:\t2\r\n");
        row("key of a comment", "xCOMMENTline y:\t1\r\n", "1\r\n");
    }

    // Whether or not somebody has looked into them.
    void bodiesAreWrittenAlike()
    {
        QFETCH(QByteArray, body);
        QFETCH(QByteArray, written);
        const QString file = m_folder.filePath("body.txt"_s);
        support::writeFile(file, "*** A:\tb\r\n" + body + "\r\n*** B:\t\r\n\r\n\r\n\r\n");
        CPLClickInfo info;
        QCOMPARE(info.loadClickInfo(file, false), eSTATUS_SUCCESS);
        const QByteArray text = "*** A:\tb\r\n" + written + "\r\n*** B:\t\r\n\r\n\r\n\r\n";
        QCOMPARE(info.getClickInfoData(), text);
        static_cast<void>(info[0]->count());
        QCOMPARE(info.getClickInfoData(), text);
    }

    void loadersReplaceTheDocument()
    {
        const QString file = support::example("study/SEQ20240305/ABC20240305091502/ClickInfo.txt");
        CPLClickInfo info;
        info.loadTextBuffer("*** Old: 1"_s);
        for (int i = 0; i < 2; ++i) {
            QCOMPARE(info.loadClickInfo(file, false), eSTATUS_SUCCESS);
            QCOMPARE(info.getClickInfoData(), support::readFile(file));
        }
        QCOMPARE(info.loadClickInfoDcm("*** A: 1\nk: v trailing", 13), eSTATUS_SUCCESS);
        QCOMPARE(support::sectionsOf(info), "A|User Label Name Set|User Input"_s);
        QCOMPARE(info.getFileSectionCount(), 1);
        QCOMPARE((*info["A"_s])["k"_s], "v"_s);
        QCOMPARE(info.loadAnalyzedClickInfo(file), eSTATUS_SUCCESS);
        QCOMPARE(info.getFileSectionCount(), 0);
        QVERIFY(!info.isSectionPresent("A"_s));
        QVERIFY(info.getClickInfoData().startsWith("*** ClickNumber"));
    }

    void loadersReportFailures()
    {
        CPLClickInfo info;
        info.loadTextBuffer("*** Kept: 1"_s);
        for (const QString& path : {m_folder.filePath("absent"_s), m_folder.path()}) {
            QCOMPARE(info.loadClickInfo(path, true), eSTATUS_FILE_OPEN_FAILED);
            QCOMPARE(info.loadAnalyzedClickInfo(path), eSTATUS_FILE_OPEN_FAILED);
            QCOMPARE(support::sectionsOf(info), "Kept"_s);
        }
        const QString file = m_folder.filePath("broken.txt"_s);
        support::writeFile(file, "*** A: 1\n*** broken\n*** C: 1\n");
        QCOMPARE(info.loadAnalyzedClickInfo(file), eSTATUS_BAD_FORMAT);
        QCOMPARE(info.loadClickInfo(file, true), eSTATUS_BAD_FORMAT);
        QCOMPARE(support::sectionsOf(info), "A"_s);
        QCOMPARE(info.getFileSectionCount(), 0);
        QCOMPARE(info.loadClickInfoDcm(nullptr, 0), eSTATUS_NULL_ARGUMENT);
        QCOMPARE(info.saveClickInfo(m_folder.filePath("absent/file"_s)), eSTATUS_FILE_OPEN_FAILED);
    }

    void dicomFiles()
    {
        const QString file = m_folder.filePath("image.dcm"_s);
        support::writeFile(file, "DICM");
        CPLClickInfo info;
        info.loadTextBuffer("*** A: 1"_s);
        QCOMPARE(info.saveClickInfo(file), eSTATUS_SUCCESS);
        QCOMPARE(info.saveClickInfo(file), eSTATUS_SUCCESS);
        const QByteArray text = info.getClickInfoData();
        QCOMPARE(support::readFile(file), "DICM" + text + text);
        const QString upper = m_folder.filePath("image.DCM"_s);
        support::writeFile(upper, "DICM");
        QCOMPARE(info.saveClickInfo(upper), eSTATUS_SUCCESS);
        QCOMPARE(support::readFile(upper), text);
    }

    void copiesAreDeep()
    {
        auto source = std::make_unique<CPLClickInfo>();
        source->loadTextBuffer("*** ClickNumber: A1\nk: v\n*** B: 1"_s);
        CPLClickInfo copy(*source);
        CPLClickInfo assigned;
        assigned.loadTextBuffer("*** Old: 1"_s);
        assigned = *source;
        const QByteArray text = source->getClickInfoData();
        source->setValue("ClickNumber"_s, "k"_s, "changed"_s);
        QVERIFY((*source)["B"_s] != copy["B"_s]);
        source.reset();
        QCOMPARE(copy.getClickInfoData(), text);
        QCOMPARE(assigned.getClickInfoData(), text);
        const CPLClickInfo& self = assigned;
        assigned = self;
        QCOMPARE(assigned.getClickInfoData(), text);
    }

    void singleSections_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<tag_estatus>("status");
        QTest::addColumn<QString>("section");
        QTest::addColumn<QString>("key");
        support::row("commented header", "*** A :1\n#*** B:2\n*** C:3"_s, eSTATUS_SUCCESS, "*** A :1\n#*** B:2\n"_s,
                     "A"_s);
        support::row("mark inside a line", "*** A:1 *** B:2"_s, eSTATUS_SUCCESS, "*** A:1 "_s, "A"_s);
        support::row("comment to the end", "*** A:1\n# *** B *** C"_s, eSTATUS_SUCCESS, "*** A:1\n# *** B *** C"_s,
                     "A"_s);
        support::row("not at the start", " *** A:1"_s, eSTATUS_BAD_FORMAT, "old"_s, "old"_s);
        support::row("no blank", "***A:1"_s, eSTATUS_BAD_FORMAT, "old"_s, "old"_s);
        support::row("colon on the next line", "*** A\nk:1"_s, eSTATUS_BAD_FORMAT, "old"_s, "old"_s);
        support::row("comment sign", "*** A#:1"_s, eSTATUS_BAD_FORMAT, "old"_s, "old"_s);
        support::row("empty", ""_s, eSTATUS_NULL_ARGUMENT, "old"_s, "old"_s);
    }

    void singleSections()
    {
        QFETCH(QString, text);
        QFETCH(tag_estatus, status);
        QString section = "old"_s;
        QString key = "old"_s;
        int length = -1;
        QCOMPARE(CPLClickInfo::copySectionBuffer(text, section, length, &key), status);
        QTEST(section, "section");
        QTEST(key, "key");
        QCOMPARE(length, status == eSTATUS_SUCCESS ? int(section.size()) : 0);
        QCOMPARE(CPLClickInfo::copySectionBuffer(text, section, length, nullptr), status);
    }

    void parsesOneSection()
    {
        QString buffer = "*** Other: Name # c\nk: v"_s;
        const QString before = buffer;
        QString key = "Mine"_s;
        CPLSection* section = nullptr;
        QCOMPARE(CPLClickInfo::parseSectionFromBuffer(buffer, key, &section, true), eSTATUS_SUCCESS);
        const std::unique_ptr<CPLSection> owner(section);
        QString text;
        owner->saveSectionData(text);
        QCOMPARE(text, "*** Mine:\tName # c\r\nk:\tv\r\n\r\n"_s);
        QCOMPARE(buffer, before);
        QString nothing;
        QCOMPARE(CPLClickInfo::parseSectionFromBuffer(nothing, key, &section, true), eSTATUS_SUCCESS);
        QVERIFY(!section);
        QString broken = "no colon\nk: v"_s;
        QCOMPARE(CPLClickInfo::parseSectionFromBuffer(broken, key, &section, true), eSTATUS_BAD_FORMAT);
        QCOMPARE(CPLClickInfo::parseSectionFromBuffer(buffer, nothing, &section, true), eSTATUS_FAILED);
        QVERIFY(!section);
        QCOMPARE(CPLClickInfo::parseSectionFromBuffer(buffer, key, nullptr, true), eSTATUS_NULL_ARGUMENT);
    }

    void findsOneValue_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("inFile");
        QTest::addColumn<QString>("inText");
        const QByteArray filler(190, 'a');
        support::row("letter case", QByteArray("Exposure:\t60 # s\r\n"), "exposure"_s, "60 # s"_s, "60 # s"_s);
        support::row("last line", QByteArray("a: 1\nb: \xE9"), "b"_s, "\u00e9"_s, "\u00e9"_s);
        support::row("inside a longer key", QByteArray("Raw Binning: 2\nBinning: 4"), "Binning"_s, "2"_s, "2"_s);
        support::row("header line", QByteArray("*** ClickNumber:\tA1\n"), "ClickNumber"_s, "A1"_s, "A1"_s);
        support::row("comment line", QByteArray("\n  # b: 1\n"), "b"_s, QString(), QString());
        support::row("no value", QByteArray("b:\n"), "b"_s, ""_s, ""_s);
        support::row("CR only", QByteArray("a: 1\rb: 2"), "b"_s, "2"_s, "2"_s);
        support::row("after 200 characters", filler + "key: " + filler, "key"_s, QString(54, u'a'), QString(5, u'a'));
        support::row("cut in the key", filler.repeated(2).left(247) + "key: 1", "key"_s, QString(), "1"_s);
    }

    void findsOneValue()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, key);
        QFETCH(QString, inFile);
        QFETCH(QString, inText);
        const QString file = m_folder.filePath("value.txt"_s);
        support::writeFile(file, text);
        const CPLClickInfo info;
        QString value = "old"_s;
        QCOMPARE(info.obtainValueFromClickInfoFile(file, key, &value),
                 inFile.isNull() ? eSTATUS_KEY_NOT_FOUND : eSTATUS_SUCCESS);
        QCOMPARE(value, inFile);
        QCOMPARE(value.isNull(), inFile.isNull());
        QCOMPARE(info.obtainValueFromClickInfoFile(text.data(), key, &value),
                 inText.isNull() ? eSTATUS_KEY_NOT_FOUND : eSTATUS_SUCCESS);
        QCOMPARE(value, inText);
        QCOMPARE(info.obtainValueFromClickInfoFile(m_folder.filePath("absent"_s), key, &value),
                 eSTATUS_FILE_OPEN_FAILED);
        QCOMPARE(info.obtainValueFromClickInfoFile(file, key, nullptr), eSTATUS_NULL_ARGUMENT);
        char* const noText = nullptr;
        QCOMPARE(info.obtainValueFromClickInfoFile(noText, key, &value), eSTATUS_NULL_ARGUMENT);
    }

    void labelSets_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("userFields");
        QTest::addColumn<QString>("userInput");
        const QString universal = "User|Group|Experiment|Comment1|Comment2|Time Point|Animal Number|"
                                  "Animal Strain|Animal Model|Sex|View|Cell Line|Reporter|Treatment|"
                                  "Luc Injection Time|IACUC Number|Displayed Key Choices"_s;
        const QString firstFive = " = User;Group;Experiment;Comment1;Comment2;"_s;
        support::row("none", ""_s, false, universal + firstFive);
        support::row("user fields", ""_s, true, "User ID|Display Type|"_s + universal + firstFive);
        support::row("former name", "*** User Label Name Set: MIRRANE universal # c\nA: 1"_s, true,
                     "User ID|Display Type|A|Displayed Key Choices = A;"_s);
        support::row("own set", "*** User Label Name Set: Mine\nA:\nB:\nC:"_s, false,
                     "Displayed Key Choices = A;B;C;"_s);
        support::row("own large set", "*** User Label Name Set: Mine\nA:\nB:\nC:\nD:\nE:\nF:\nG:"_s, false,
                     "Displayed Key Choices = A;B;C;D;E;"_s);
        support::row("user input held", "*** User Input:\nX: 1"_s, true, "X = "_s);
    }

    void labelSets()
    {
        QFETCH(QString, text);
        QFETCH(bool, userFields);
        CPLClickInfo info;
        QCOMPARE(info.loadTextBuffer(text), eSTATUS_SUCCESS);
        QCOMPARE(info.appendUserSpecificSections(userFields), eSTATUS_SUCCESS);
        QVERIFY(info.isSectionPresent("User Label Name Set"_s));
        const CPLSection& userInput = *info["User Input"_s];
        QTEST(support::keysOf(&userInput) + " = "_s + userInput["Displayed Key Choices"_s], "userInput");
        const QByteArray data = info.getClickInfoData();
        QCOMPARE(info.appendUserSpecificSections(userFields), eSTATUS_SUCCESS);
        QCOMPARE(info.getClickInfoData(), data);
    }

    void analysisInput()
    {
        CPLClickInfo info;
        QCOMPARE(info.appendAnalysisUserInputSection(), eSTATUS_SUCCESS);
        QCOMPARE(info.appendAnalysisUserInputSection(), eSTATUS_SUCCESS);
        QCOMPARE(info.getClickInfoData(), QByteArray("*** Analysis User Input:\t\r\nComment2:\t\r\n\r\n\r\n\r\n"));
    }

    void replacedSections()
    {
        Replacing info;
        QCOMPARE(info.addTiffUserSection(eIMAGE_PHOTOGRAPH, "first"_s), eSTATUS_SUCCESS);
        QCOMPARE(info.addTiffUserSection(eIMAGE_PHOTOGRAPH, "second"_s), eSTATUS_SUCCESS);
        QCOMPARE((*info["User Input"_s])["User ID"_s], "second"_s);
    }

    void bareImages()
    {
        CPLClickInfo info;
        QCOMPARE(info.loadClickInfo("a/b/struct.TIF"_s, "ABC"_s, eIMAGE_STRUCTURE, 4), eSTATUS_SUCCESS);
        QString number;
        info.getClickNumber(&number);
        const QRegularExpression form("^ABC20[0-9]{2}[01][0-9][0-3][0-9][0-2][0-9][0-5][0-9]{3}$"_s);
        QVERIFY2(form.match(number).hasMatch(), qPrintable(number));
        QCOMPARE(support::sectionsOf(info), "ClickNumber|User Input|User Label Name Set|structure image"_s);
        QVERIFY((*info["ClickNumber"_s])["Orvane Version"_s].startsWith("4.8.4 ("_s));
        QCOMPARE((*info["User Input"_s])["User ID"_s], "ABC"_s);
        // The binning of a structure image is not among those that an import sets.
        QCOMPARE(ownKeys(info["structure image"_s]), "Binning Factor=1"_s);
        CPLClickInfo photograph;
        QCOMPARE(photograph.loadClickInfo("p.TIF"_s, ""_s, eIMAGE_PHOTOGRAPH, 4), eSTATUS_SUCCESS);
        QCOMPARE(ownKeys(photograph["photographic image"_s]), "Binning Factor=4"_s);
        CPLClickInfo xray;
        QCOMPARE(xray.loadClickInfo("x.TIF"_s, "A"_s, eIMAGE_XRAY, 4), eSTATUS_UNSUPPORTED_IMAGE_TYPE);
        QCOMPARE(support::sectionsOf(xray), "ClickNumber"_s);
    }

    void imageSections_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<bool>("settings");
        QTest::addColumn<SetupChange>("change");
        QTest::addColumn<QString>("keys");
        const SetupChange none = [](sIASetupInfo&) {};
        const SetupChange mirror = [](sIASetupInfo& s) { s.sideViewMirrorEnabled = true; };
        const SetupChange mode1 = [](sIASetupInfo& s) { s.imagingMode = 1; };
        const SetupChange mode2 = [](sIASetupInfo& s) { s.imagingMode = 2; };
        const SetupChange grid = [](sIASetupInfo& s) {
            s.imagingMode = 1;
            s.fluorescent = true;
            s.flGridEnabled = true;
            s.emGain = 50;
        };
        const SetupChange twoSpots = [](sIASetupInfo& s) {
            s.imagingMode = 1;
            s.fluorescent = true;
            s.flGridEnabled = true;
            s.flGridPoints = {{3, 4}, {5, 6}};
            s.luminescentBinning = 4;
            s.rawBinning = 8;
        };
        const SetupChange noRawBinning = [](sIASetupInfo& s) {
            s.imagingMode = 1;
            s.fluorescent = true;
            s.flGridEnabled = true;
            s.rawBinning = 0;
        };
        const QString optics = "Image Units=counts|f Number=5.6|Field of View=12.5|Filter Position=1|"
                               "Emission filter=Open|Exposure Time Sec=1e-05|Object radius=1.25|"
                               "Subject size=2.5|"_s;
        const QString error = "Error Wave=No Error"_s;
        support::row("photograph", int(eIMAGE_PHOTOGRAPH), true, mode1, "Binning Factor=4|"_s + optics + error);
        support::row("photograph, mirror", int(eIMAGE_PHOTOGRAPH), false, mirror,
                     "Side View Mirror Enabled=Yes|Binning Factor=4"_s);
        support::row("structure", int(eIMAGE_STRUCTURE), true, mirror,
                     "Binning Factor=2|"_s + optics + "Structure frequency=Fine|"_s + error);
        support::row("structure, mode 1", int(eIMAGE_STRUCTURE), true, mode1,
                     "Binning Factor=2|"_s + optics +
                         "Height Reference=h|Height Reference Pixel X=x|Height Reference Pixel Y=y|"
                         "Structure frequency=Fine|"_s +
                         error);
        support::row("structure, mode 2", int(eIMAGE_STRUCTURE), true, mode2,
                     "Imaging Angle=30|Binning Factor=2|"_s + optics +
                         "MV stage distance=1.23457e+06|Structured Light Little L=1.23457e+06|"
                         "Structure frequency=0.25|"_s +
                         error);
        const QString light = "Image Units=counts|Binning Factor=8|"_s;
        const QString settings =
            "Field of View=12.5|Read Bias Level=0.1|Emission filter=E5|Filter Position=3|Excitation filter=X2|Subject size=2.5|"_s;
        const QString exposure = "Luminescent Exposure (Seconds)=60|Luminescent Exposure Units=min|"_s;
        const QString fluorescence = "Image Subtype=fluorescent|Fluorescence level=0.0001|"
                                     "Fluorescence level string=Low|"_s;
        const QString temperatures = "Demand Temperature=-90|Measured Temperature=-89.8"_s;
        const QString raw = "Cosmic=0|Background Corrected=0|Flat Field Corrected=0"_s;
        support::row("luminescent", int(eIMAGE_LUMINESCENT), true, none,
                     light + exposure + "f Number=1.2|"_s + settings + temperatures + u'|' + error + u'|' + raw);
        support::row("luminescent without settings", int(eIMAGE_LUMINESCENT), false, mirror,
                     light + "Side View Mirror Enabled=Yes|"_s + raw);
        support::row("luminescent corrected", int(eIMAGE_LUMINESCENT_CORRECTED), false, mode2,
                     "Imaging Angle=30|"_s + light + "Cosmic=1|Background Corrected=1|Flat Field Corrected=1"_s);
        support::row("reference on a grid", int(eIMAGE_FL_REFERENCE), true, grid,
                     light + exposure + "EM Gain=50|f Number=1.2|"_s + settings + fluorescence +
                         "FL Grid Name=G|FL Grid Position=7, 8|FL X motor position=5|FL Y motor position=6|"
                         "FL x-spot=1.5000|FL y-spot=-2.0000|Minimal Counts For Normalization=400|"
                         "Raw Binning=4|"_s +
                         temperatures + u'|' + error + u'|' + raw);
        support::row("reference on two spots", int(eIMAGE_FL_REFERENCE), true, twoSpots,
                     "Image Units=counts|Binning Factor=4|"_s + exposure + "f Number=1.2|"_s + settings + fluorescence +
                         "FL Grid Name=G|FL Grid Position=3, 4;5, 6;|FL X motor position=xm|"
                         "FL Y motor position=ym|FL x-spot=xs|FL y-spot=ys|"
                         "Minimal Counts For Normalization=0|Raw Binning=8|"_s +
                         temperatures + u'|' + error + u'|' + raw);
        support::row("luminescent on a grid, no raw binning", int(eIMAGE_LUMINESCENT), true, noRawBinning,
                     light + exposure + "f Number=1.2|"_s + settings + fluorescence +
                         "FL Grid Name=G|FL Grid Position=7, 8|FL X motor position=5|FL Y motor position=6|"
                         "FL x-spot=1.5000|FL y-spot=-2.0000|"_s +
                         temperatures + u'|' + error + u'|' + raw);
        support::row("read bias only", int(eIMAGE_BIAS), true, none,
                     "Binning Factor=8|Read Bias Level=0.1|"_s + temperatures +
                         "|Data Multiplier=1|Background Exposure (Seconds)=0.0"_s);
        support::row("read bias only without settings", int(eIMAGE_BIAS), false, none, "Binning Factor=8"_s);
        support::row("fluorescent background", int(eIMAGE_FLUORESCENT_BKG), false, none,
                     "Binning Factor=8|f Number=1.2|Field of View=12.5|Read Bias Level=0.1|"
                     "Fluorescence level=0.0001|Fluorescence level string=Low|"_s +
                         temperatures + "|Data Multiplier=1|Background Exposure (Seconds)=60"_s);
        support::row("read bias", int(eIMAGE_READ_BIAS), true, none, ""_s);
        support::row("dark charge, mode 2", int(eIMAGE_BACKGROUND), true, mode2, "Imaging Angle=30"_s);
        const SetupChange large = [](sIASetupInfo& s) { s.xrayImagingMode = 1; };
        const SetupChange high = [](sIASetupInfo& s) { s.xrayImagingMode = 2; };
        const QString tube =
            "Binning Factor=16|f Number=4|Field of View=12.5|Read Bias Level=1.25|X-ray tube voltage=40|"
            "X-ray tube plate current=0.1|X-ray tube filter=in|Exposure Time Sec=7.5|"_s;
        support::row("X-ray, large", int(eIMAGE_XRAY), true, large, tube + "Imaging Mode=Large Animal"_s);
        support::row("X-ray, high", int(eIMAGE_XRAY), true, high, tube + "Imaging Mode=High Resolution"_s);
        support::row("X-ray", int(eIMAGE_XRAY), false, mirror,
                     tube + "Side View Mirror Enabled=Yes|Imaging Mode=Mouse"_s);
        support::row("blemish", int(eIMAGE_BLEMISH), false, mode2,
                     "Imaging Angle=30|Binning Factor=32|"_s + temperatures);
    }

    void imageSections()
    {
        QFETCH(int, type);
        QFETCH(bool, settings);
        QFETCH(SetupChange, change);
        sIASetupInfo setup = fullSetup();
        change(setup);
        CPLClickInfo info;
        const auto imageType = tag_eimagetype(type);
        QCOMPARE(info.addTiffImageSection("i.TIF"_s, imageType, &setup, settings), eSTATUS_SUCCESS);
        const CPLSection& section = *info[0];
        QString name;
        section.getSectionName(&name, true);
        QCOMPARE(name, "i.TIF"_s);
        QTEST(ownKeys(&section), "keys");
        const bool blemish = imageType == eIMAGE_BLEMISH;
        QCOMPARE(section["Acquisition Date"_s], blemish ? "13/12/2022"_s : "Tuesday, March 05, 2024"_s);
        QCOMPARE(section["Acquisition Time"_s], blemish ? "12:40"_s : "09:15:02"_s);
        QCOMPARE(section["Acquisition Seconds"_s], blemish ? "23"_s : "3792474902"_s);
        QCOMPARE(section["Pixel Width"_s] + section["Pixel Height"_s], "11"_s);
        QCOMPARE(info.addTiffImageSection("j.TIF"_s, imageType, &setup, settings), eSTATUS_SECTION_EXISTS);
    }

    void acquisitionTimes_data()
    {
        QTest::addColumn<QByteArray>("zone");
        QTest::addColumn<qint64>("seconds");
        QTest::addColumn<QString>("written");
        constexpr auto utmost = std::numeric_limits<qint64>::max();
        support::row("a zone that the process has set", QByteArray("XYZ-9"), qint64(1709630102),
                     "Tuesday, March 05, 2024|18:15:02"_s);
        support::row("another one", QByteArray("ABC9"), qint64(1709630102), "Tuesday, March 05, 2024|00:15:02"_s);
        support::row("before 1970", QByteArray("UTC"), qint64(-1), "Wednesday, December 31, 1969|23:59:59"_s);
        support::row("the last year", QByteArray("UTC"), qint64(67768036191676799),
                     "Wednesday, December 31, 2147485547|23:59:59"_s);
        support::row("beyond it", QByteArray("UTC"), qint64(67768036191676800), "|"_s);
        support::row("the last second", QByteArray("UTC"), utmost, "|"_s);
        support::row("the first second", QByteArray("UTC"), -utmost - 1, "|"_s);
    }

    void acquisitionTimes()
    {
        QFETCH(QByteArray, zone);
        QFETCH(qint64, seconds);
        qputenv("TZ", zone);
        sIASetupInfo setup;
        setup.acquisitionTime = seconds;
        CPLClickInfo info;
        QCOMPARE(info.addTiffImageSection("i.TIF"_s, eIMAGE_XRAY, &setup, false), eSTATUS_SUCCESS);
        qputenv("TZ", "UTC");
        QTEST((*info[0])["Acquisition Date"_s] + u'|' + (*info[0])["Acquisition Time"_s], "written");
    }

    void imageSectionOrder()
    {
        const sIASetupInfo setup;
        CPLClickInfo info;
        QCOMPARE(info.addTiffImageSection("a"_s, eIMAGE_READ_SIGMA, &setup, true), eSTATUS_SUCCESS);
        QCOMPARE(info.addTiffImageSection("b"_s, eIMAGE_BIAS, &setup, true), eSTATUS_SUCCESS);
        QCOMPARE(info.addTiffImageSection("c"_s, eIMAGE_BACKGROUND, &setup, true), eSTATUS_SUCCESS);
        QCOMPARE(info.addTiffImageSection("d"_s, eIMAGE_LUMINESCENT, &setup, false), eSTATUS_SUCCESS);
        QCOMPARE(info.addTiffImageSection("e"_s, eIMAGE_READ_BIAS, &setup, true), eSTATUS_SUCCESS);
        for (const tag_eimagetype type : {eIMAGE_FL_REFERENCE, eIMAGE_FLUORESCENT_BKG, eIMAGE_STRUCTURE,
                                          eIMAGE_PHOTOGRAPH, eIMAGE_XRAY, eIMAGE_BLEMISH})
            QCOMPARE(info.addTiffImageSection("f"_s, type, &setup, false), eSTATUS_SUCCESS);
        QCOMPARE(support::sectionsOf(info),
                 "readsigma image|readbiasonly image|readbias image|darkcharge image|luminescent image|"
                 "saved luminescent corrected image|fluorescent reference image|fluorescent bkg image|structure "
                 "image|photographic image|x-ray image|"
                 "Blemish Image"_s);
        QString name;
        info["saved luminescent corrected image"_s]->getSectionName(&name, true);
        QCOMPARE(name, "luminescentFloatCorrected.TIF"_s);
        const QByteArray before = info.getClickInfoData();
        for (const tag_eimagetype type : {eIMAGE_REFERENCE, eIMAGE_OVERLAY, tag_eimagetype(99)})
            QCOMPARE(info.addTiffImageSection("g"_s, type, &setup, true), eSTATUS_UNSUPPORTED_IMAGE_TYPE);
        QCOMPARE(info.addTiffImageSection("g"_s, eIMAGE_LUMINESCENT_A, nullptr, true), eSTATUS_NULL_ARGUMENT);
        QCOMPARE(info.getClickInfoData(), before);
    }

    void newAcquisition()
    {
        CPLClickInfo info;
        info.setClickNumber("ABC1"_s);
        QCOMPARE(info.addTiffClickNumberSection(true, true, "4.9"_s), eSTATUS_SUCCESS);
        QCOMPARE(info.addTiffClickNumberSection(false, false, "5.0"_s), eSTATUS_SUCCESS);
        QCOMPARE(info.addTiffUserSection(eIMAGE_XRAY, "ABC"_s), eSTATUS_UNSUPPORTED_IMAGE_TYPE);
        QCOMPARE(info.addTiffUserSection(eIMAGE_LUMINESCENT, "ABC"_s), eSTATUS_SUCCESS);
        QCOMPARE(info.addTiffUserSection(eIMAGE_STRUCTURE, "DEF"_s), eSTATUS_SUCCESS);
        const CPLSection& click = *info["ClickNumber"_s];
        QCOMPARE(support::keysOf(&click), "ClickInfoType|Orvane Version|Modified Since Saved|Sequence ID"_s);
        QVERIFY(click["Orvane Version"_s].startsWith("4.9 ("_s));
        QCOMPARE(click["Sequence ID"_s], "ABC1"_s);
        const QPair<tag_eimagetype, QString> displays[] = {{eIMAGE_PHOTOGRAPH, "photographic"_s},
                                                           {eIMAGE_LUMINESCENT, "luminescent"_s},
                                                           {eIMAGE_STRUCTURE, "structure"_s}};
        for (const auto& display : displays) {
            CPLClickInfo other;
            QCOMPARE(other.addTiffUserSection(display.first, "ABC"_s), eSTATUS_SUCCESS);
            QCOMPARE((*other["User Input"_s])["User ID"_s] + (*other["User Input"_s])["Display Type"_s],
                     "ABC"_s + display.second);
        }
        const sIASetupInfo setup;
        QCOMPARE(info.addImageSection("/data/x/photo.TIF"_s, "XYZ"_s, eIMAGE_PHOTOGRAPH, &setup, true),
                 eSTATUS_SUCCESS);
        QCOMPARE((*info["User Input"_s])["User ID"_s], "XYZ"_s);
        QString name;
        info["photographic image"_s]->getSectionName(&name, true);
        QCOMPARE(name, "photo.TIF"_s);
    }

private:
    QTemporaryDir m_folder;
};

QTEST_APPLESS_MAIN(TestClickInfo)
#include "tst_plclickinfo.moc"
