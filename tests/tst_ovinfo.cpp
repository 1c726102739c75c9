#include "support/Support.h"

#include <QtCore/QDir>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>

#include <clocale>
#include <filesystem>

class TestOvinfo : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void answers_data()
    {
        QTest::addColumn<QStringList>("words");
        QTest::addColumn<int>("code");
        QTest::addColumn<QStringList>("output");
        QTest::addColumn<QString>("error");
        const QString study = support::example("study/SEQ20240305");
        const QString sequence = study + "/SequenceInfo.txt"_s;
        const QString click = study + "/ABC20240305091502/ClickInfo.txt"_s;
        const QStringList none;
        support::row("alternatives", QStringList{"study"_s, "--json"_s, "--csv"_s, study}, 2, none,
                     "only one of --json and --csv; see 'ovinfo study --help'"_s);
        support::row("no verb", none, 2, none, "no verb given"_s);
        support::row("unknown verb", QStringList{"shwo"_s}, 2, none, "no verb 'shwo'"_s);
        support::row("missing word", QStringList{"get"_s, click}, 2, none, "get takes FILE SECTION KEY"_s);
        support::row("unknown option", QStringList{"show"_s, "--colour"_s, click}, 2, none, "colour"_s);
        support::row("acquisition", QStringList{"show"_s, click}, 0,
                     QStringList{"Acquisition ABC20240305091502, 6 sections\n"_s,
                                 "\nStage heated to 37 \u00b0C, gain 12 \u00b5V\n"_s,
                                 "\n[luminescent image] luminescent.TIF  # raw counts\n"_s,
                                 "\n  Field of View        12.5  # cm\n"_s,
                                 "\n  # exposure chosen by the auto-exposure run\n"_s, "\n  Comment2\n"_s},
                     ""_s);
        support::row("sequence", QStringList{"show"_s, sequence}, 0,
                     QStringList{"Sequence Dose response, day 3, 4 sections\n"_s, "\n  Axis            log\n"_s}, ""_s);
        support::row("value", QStringList{"get"_s, click, "photographic IMAGE"_s, "field of view"_s}, 0,
                     QStringList{"12.5\n"_s}, ""_s);
        support::row("value of a sequence", QStringList{"get"_s, sequence, "clicknumbers"_s, "ClickNumber 2"_s}, 0,
                     QStringList{"ABC20240305092010\n"_s}, ""_s);
        support::row("no such section", QStringList{"get"_s, click, "x"_s, "y"_s}, 1, none,
                     "x: no such section (eSTATUS_SECTION_NOT_FOUND)"_s);
        support::row("no such key", QStringList{"get"_s, click, "User Input"_s, "y"_s}, 1, none,
                     "y: no such key (eSTATUS_KEY_NOT_FOUND)"_s);
        support::row("no such file", QStringList{"show"_s, "absent"_s}, 1, none,
                     "absent: cannot be opened (eSTATUS_FILE_OPEN_FAILED)"_s);
        support::row("no sections", QStringList{"show"_s, support::example("CMakeLists.txt")}, 1, none,
                     "not a file that the library knows"_s);
        support::row("unreadable, checked", QStringList{"check"_s, "--json"_s, "absent"_s}, 1,
                     QStringList{"\"failure\": \"cannot be opened (eSTATUS_FILE_OPEN_FAILED)\""_s}, "absent"_s);
        support::row("study", QStringList{"study"_s, study}, 0,
                     QStringList{"Sequence Dose response, day 3, 3 acquisitions\n"_s,
                                 "\nABC20240305092544  Tuesday, March 05, 2024  09:25:44  "
                                 "Luminescent, Photograph, Bias  7.5 sec   8        "
                                 "12.5\n"_s},
                     ""_s);
        const auto kind = [](const char* name, const char* heading, const char* line) {
            support::row(name, QStringList{"show"_s, support::example(name)}, 0,
                         QStringList{QLatin1String(heading), QLatin1String(line)}, ""_s);
        };
        kind("background/BkgSummary.txt", "Background summary, 2 sections\nBackground images, bench 2\n",
             "\n[Background Click2] BKG20240302070000\n");
        kind("background/SLindex.txt", "Structure references, 2 sections\n",
             "\n  Frequency            Coarse\n\n[Structure reference2] SL_B_20240301\n");
        kind("background/FLindex.txt", "Fluorescent references, 1 section\n", "520\n");
        kind("settings/OpticalProperties.txt", "Optical properties, 4 sections\n", "rat\n");
        kind("settings/Labels.txt", "Label set, 1 section\n", "\n  User        ABC;DEF;\n");
        kind("settings/Presets.txt", "Settings, 3 sections\n", "\n  Exposure  120\n");
        const QString references = support::example("background/SLindex.txt");
        support::row("value of a reference", QStringList{"get"_s, references, "structure reference1"_s, "Frequency"_s},
                     0, QStringList{"Coarse\n"_s}, ""_s);
        support::row("presets of a file", QStringList{"presets"_s, support::example("settings/Presets.txt")}, 0,
                     QStringList{"3 presets\n"_s, "\nDeep tissue # slow  Deep tissue.txt\nPreset1\n"_s}, ""_s);
        support::row("presets of a folder", QStringList{"presets"_s, support::example("settings/presets/")}, 0,
                     QStringList{"2 presets\n"_s, "\nDeep tissue   presets/Preset-Deep tissue.TXT\n"_s}, ""_s);
        const QString camera = support::example("instrument/CameraInfo.txt");
        support::row("camera", QStringList{"camera"_s, camera}, 0,
                     QStringList{"\nTessel HT                     yes\n"_s, "\nC         12.5\n"_s,
                                 "\nX-Ray        4      2       1\n"_s},
                     ""_s);
        support::row("camera as JSON", QStringList{"camera"_s, "--json"_s, camera}, 0,
                     QStringList{"\"tesselHt\": true"_s, "\"ccdPixels\": 1024"_s, "\"ovinfo-camera/1\""_s}, ""_s);
        support::row("camera of another file", QStringList{"camera"_s, click}, 1, none, "describes no instrument"_s);
        support::row("presets of another file", QStringList{"presets"_s, QStringLiteral(OVPARSER_OVINFO)}, 1, none,
                     ": "_s);
        support::row("no camera", QStringList{"camera"_s, "absent"_s}, 1, none, "absent: cannot be opened"_s);
        const QString spectral = support::example("spectral/Spectral.xml");
        support::row("spectral", QStringList{"spectral"_s, spectral}, 0,
                     QStringList{"Spectral analysis of SEQ20240305, 2 acquisitions\n"_s,
                                 "\nABC20240305092010  620nm  620nm   20          0.85          ROI 1  "_s,
                                 "\n1    1.75e+06    3200     4.2            0.3\n"_s,
                                 "\nPlot of ROI 1\nWavelength (nm)  Intensity\n560              10.5\n"_s,
                                 "\n0.2          0.21       20.25      0.01              0.02\n"_s,
                                 "\nA    B\n1.5  -0.25\n"_s},
                     ""_s);
        support::row("spectral as JSON", QStringList{"spectral"_s, "--json"_s, spectral}, 0,
                     QStringList{"\"clickNumber\": \"ABC20240305091502\""_s, "\"totalFlux\": 1750000"_s,
                                 "\"wavelength\": 620"_s, "\"b\": -0.25"_s},
                     ""_s);
        const QString spelled = m_folder.filePath("spelled.xml"_s);
        support::writeFile(spelled, QByteArray("<OV><OV.Plot.Results ROI.Label='Roi' Total.Plot.Values='0'/>"
                                               "<OV.Plot.Results ROI.Label='ROI' Total.Plot.Values='1'>"
                                               "<OV.Plot.Values Intensity='2'/></OV.Plot.Results></OV>")
                                        .replace("OV", "OV3.0.SpectralAnalysis"));
        support::row("label spelled twice", QStringList{"spectral"_s, spelled}, 0,
                     QStringList{"Plot of Roi\nWavelength (nm)  Intensity\n0                2\n"_s}, ""_s);
        support::row("no spectral file", QStringList{"spectral"_s, "absent"_s}, 1, none, "absent: cannot be opened"_s);
        support::row("no XML", QStringList{"spectral"_s, click}, 1, none, ": line 1, column 1: "_s);
        support::row("study of no sequence", QStringList{"study"_s, "absent"_s}, 1, none,
                     "absent/SequenceInfo.txt: not found, or cannot be opened (eSTATUS_FILE_NOT_FOUND)"_s);
    }

    void answers()
    {
        QFETCH(QStringList, words);
        QFETCH(QStringList, output);
        QFETCH(QString, error);
        const Answer answer = run(words);
        QTEST(answer.code, "code");
        for (const QString& part : output)
            QVERIFY2(answer.output.contains(part), qPrintable(part + "\nnot in\n"_s + answer.output));
        QCOMPARE(answer.output.isEmpty(), output.isEmpty());
        QVERIFY2(answer.error.contains(error), qPrintable(answer.error));
        QCOMPARE(int(answer.error.count(u'\n')), error.isEmpty() ? 0 : 1);
    }

    void setsOneValue_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QStringList>("change");
        QTest::addColumn<int>("code");
        QTest::addColumn<QByteArray>("written");
        const QByteArray info = "pre \xE9\r\n*** A:\tn # c\r\nk:\told\t# mm\r\n\r\n\r\n\r\n";
        const QByteArray sequence = "pre\r\n*** Sequence:\tS # \xC3\xA9\r\nk:\told\r\n\r\n\r\n\r\n";
        const QByteArray twice = "*** A: 1\nk: v\n*** a: 2\nk: w\n";
        support::row("comment stays", info, QStringList{"a"_s, "K"_s, "new"_s}, 0,
                     QByteArray(info).replace("old", "new"));
        support::row("Latin-1", info, QStringList{"A"_s, "k"_s, "\u00b5 # none"_s}, 0,
                     QByteArray(info).replace("old\t# mm", "\xB5 # none"));
        support::row("outside Latin-1", info, QStringList{"A"_s, "k"_s, "\u20ac"_s}, 1, info);
        support::row("two lines", info, QStringList{"A"_s, "k"_s, "a\nb"_s}, 2, info);
        support::row("absent key", info, QStringList{"A"_s, "x"_s, "1"_s}, 1, info);
        support::row("sequence", sequence, QStringList{"Sequence"_s, "k"_s, "\u20ac"_s}, 0,
                     QByteArray(sequence).replace("old", "\xE2\x82\xAC"));
        support::row("mark in a sequence", sequence, QStringList{"Sequence"_s, "k"_s, "*** x: y"_s}, 1, sequence);
        const auto change = [](const char* name, const QByteArray& bytes, const QString& section, const QString& key,
                               const char* old, const char* value) {
            support::row(name, bytes, QStringList{section, key, "new"_s}, 0, QByteArray(bytes).replace(old, value));
        };
        change("last value of a key", "*** A: 1\nk: v\nx: 1\nX: 2\n", "A"_s, "x"_s, "X: 2", "X: new");
        change("first section of a key", "*** A: 1\nk: v\n*** a: 2\nk: w\n", "A"_s, "k"_s, "v", "new");
        change("layout stays", "  x\r*** A :1\r k :  v  # c\r\r\r", "A"_s, "k"_s, "v", "new");
        change("no value yet", "*** A: 1\r\nk:\r\nx: 1", "A"_s, "k"_s, "k:", "k:\tnew");
        change("comment alone", "*** A: 1\nk: # c\n", "A"_s, "k"_s, "# c", "new\t# c");
        change("no header", "System Configuration: VEXA 50\nk: v\n", "Camera System Info"_s, "k"_s, "v\n", "new\n");
        change("reference", "*** Structure reference:A;k:1\r*** Structure reference:B;k:v;l:2\r",
               "Structure reference2"_s, "K"_s, "v", "new");
        change("background image", "*** Background Click: A\nk: 1\n*** Background Click: B\nk: v\n",
               "Background Click2"_s, "k"_s, "v", "new");
        change("DICOM", QByteArray(128, '\0') + "DICM\xFF*** ClickNumber: A\nk: v\n\n*** ClickNumber: A\nk: w\n",
               "ClickNumber"_s, "k"_s, "w", "new");
        const QByteArray latin1 = "*** Sequence: S\nk: \xE9\n\n*** ClickNumbers:\n1: A\n";
        support::row("Latin-1 section", latin1, QStringList{"Sequence"_s, "k"_s, "\u00e8"_s}, 0,
                     QByteArray(latin1).replace("\xE9", "\xE8"));
        support::row("other texts would change", QByteArray(latin1).replace("k: ", "x: \xC3\xA9\nk: "),
                     QStringList{"Sequence"_s, "k"_s, "e"_s}, 1, QByteArray(latin1).replace("k: ", "x: \xC3\xA9\nk: "));
        support::row("time reads back otherwise", QByteArray("*** Background Click: A\nTime: 1:2\n"),
                     QStringList{"Background Click1"_s, "Time"_s, "3:4"_s}, 1,
                     QByteArray("*** Background Click: A\nTime: 1:2\n"));
    }

    void setsOneValue()
    {
        QFETCH(QByteArray, file);
        QFETCH(QStringList, change);
        const QString path = m_folder.filePath("file.txt"_s);
        support::writeFile(path, file);
        const Answer answer = run(QStringList{"set"_s, path} + change);
        QTEST(answer.code, "code");
        QCOMPARE(answer.output, ""_s);
        QCOMPARE(answer.error.isEmpty(), answer.code == 0);
        QTEST(support::readFile(path), "written");
    }

    void checksAFile_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("findings");
        const auto row = [](const char* name, const QByteArray& file, const char* findings) {
            support::row(name, file, QString::fromLatin1(findings));
        };
        row("written form", "p\r\n*** A:\tn # c\r\nk:\tv\r\n# x: y\r\n\r\n\r\n\r\n", "");
        row("other layout", "p\r\n*** A: n\r\n", "2 not-in-written-form");
        row("lines", "*** A: n\rk: v\rnote\rn # s: m\r: e\rK: w\rcommentline 1: x",
            "1 not-in-written-form,3 line-without-colon,4 key-commented,5 key-missing,6 key-twice,7 key-reserved");
        row("section twice", "*** A:\t\r\nk:\t1\r\n\r\n*** a: 2\r\n", "4 section-twice,4 not-in-written-form");
        row("header without colon", "*** A: n\n*** b\n*** A: n\n", "2 header-without-colon");
        row("header commented", "*** A # b: n\n", "1 header-commented");
        row("colon before the mark", "***: *** n\n", "1 header-colon-before-mark");
        row("header without key", "*** A: n\n*** : n\n", "2 header-without-key");
        row("click number alone", "*** ClickNumber: A\n*** B:\n", "1 click-number-alone");
        row("no click number", "*** ClickNumber:\t\r\nk:\tv\r\n\r\n\r\n\r\n", "1 click-number-missing");
        row("click number prefixed", "*** ClickNumber:\t7\r\nk:\tv\r\n\r\n\r\n\r\n", "1 click-number-prefixed");
        row("byte order mark", "\xEF\xBB\xBF*** A: n\n*** B: n\n", "1 byte-order-mark,1 not-in-written-form");
        row("UTF-8", "*** A:\t\xC3\xA9\r\n\r\n\r\n\r\n", "1 looks-like-utf8");
        row("nothing", "", "0 no-section");
        row("sequence", "pre\n*** Sequence: S # c\nk: \xE2\x82\xAC\nx *** B: v\n*** ClickNumbers:\n1: A\n*** *** \n",
            "1 text-before-first-section,1 not-in-written-form,2 name-comment,3 character-not-written,"
            "4 line-without-colon,4 mark-in-line,7 mark-without-colon");
        row("no click numbers", "*** Sequence:\tS\r\n\r\n\r\n\r\n", "0 no-click-numbers");
        row("spanning key", "*** Sequence:\r\n\r\n*** ClickNumbers:\r\n1:\tA\r\n\r\n*** C *** D:\tx\r\n",
            "1 not-in-written-form,6 colon-behind-next-mark,6 header-without-line-end,6 line-without-colon,6 "
            "mark-in-line");
        row("index", "*** Structure reference:A;x\n*** y:z\nend\n",
            "1 piece-without-colon,2 reference-without-name,3 line-without-mark");
        row("DICOM without click info", QByteArray(128, '\0') + "DICM", "0 not-loaded");
        row("DICOM with a malformed header", QByteArray(128, '\0') + "DICM*** ClickNumber: A\nk: v\n*** b\n",
            "3 header-without-colon");
        row("label set with a blank", "*** User Label Name Set: Mouse\r\nUser:\r\n",
            "1 not-in-written-form,1 label-set-header");
        row("extension", "*** Extension Info:\t\r\nExtension name:\ta\r\n\r\n\r\n\r\n",
            "0 extension-incomplete,1 extension-incomplete,1 extension-incomplete");
        row("keys of an instrument", "n\r\nA: 1\r\n*** Camera System Info:\t\r\nB:\t1\r\n\r\n\r\n\r\n",
            "2 key-before-section");
        row("analysis", "n\r\n*** ClickNumber:\tA\r\nk:\tv\r\n\r\n*** Analysis User Input:\t\r\n\r\n\r\n\r\n",
            "1 preamble-dropped");
        row("time",
            "*** Background Click:\tA\r\nTime:\t01:02\r\n*** Background Click:\tB\r\ntime:\t01:2 # c\r\n"
            "*** Background Click:\tC\r\nTime:\t7:01\r\n",
            "4 time-completed,6 time-completed");
        row("long click number", "*** ClickNumber:\tA12345678901234567890123456789012\r\nk:\tv\r\n\r\n\r\n\r\n",
            "1 click-number-cut");
        row("far colon",
            "*** Sequence:\tS\r\n\r\n*** ClickNumbers:\t\r\n1:\tA\r\n\r\n*** a *** " + QByteArray(200, 'b') + ":\t\r\n",
            "6 colon-too-far,6 mark-in-line,6 not-in-written-form");
        row("text before a mark", "*** Structure reference:A\nx *** Structure reference:B\n", "2 text-before-mark");
        row("UTF-16",
            QByteArray("\xFF\xFE"
                       "A\0:\0 \0",
                       8),
            "0 no-section,1 utf16");
        row("menus",
            "*** Source Model 1:\t\r\nMenuName:\ta\r\n\r\n*** Source Model 3:\t\r\nMenuName:\tb\r\n\r\n\r\n\r\n",
            "4 menu-incomplete");
        row("settings", "*** A:\t\r\nMenuName:\ta\r\n\r\n*** B:\t\r\n\r\n\r\n\r\n", "4 menu-name-missing");
        row("settings with a blank name", "*** A:\t\r\nMenuName:\t\r\n\r\n\r\n\r\n", "1 menu-name-missing");
        row("filter wheel", "Emission Filter 1: a\nb\nEmission Filter 1: c\n", "2 line-without-colon,3 key-twice");
        row("no XML", "<a>\n</b>", "2 malformed-xml");
        row("other XML", "<a/>", "0 not-spectral");
        QByteArray utf16("\xFF\xFE");
        for (const char c : QByteArray("<OV3.0.SpectralAnalysis/>"))
            utf16 += QByteArray(1, c) + '\0';
        row("spectral in UTF-16", utf16, "");
        row("elements behind a comment",
            QByteArray("<OV>\n<OV.Attributes/>\n<!-- c -->\n<OV.ClickInfo Total.Clicks='0'/>\n</OV>")
                .replace("OV", "OV3.0.SpectralAnalysis"),
            "3 elements-not-read");
        row("other number of clicks",
            QByteArray("<OV>\n<OV.Attributes/>\n<OV.ClickInfo Total.Clicks='2'/>\n</OV>")
                .replace("OV", "OV3.0.SpectralAnalysis"),
            "3 clicks-differ");
        row("spectral",
            QByteArray(
                "<OV>\n<OV.Plot.Results Total.Plot.Values='2'>\n<OV.Plot.Values Intensity='1e3' Wave.Length='x'/>\n"
                "</OV.Plot.Results>\n<OV.Click.ROI.Properties ROI.Pixels='1.5' Xc=''/></OV>")
                .replace("OV", "OV3.0.SpectralAnalysis"),
            "2 total-differs,3 not-a-number,5 not-a-number,5 not-a-number");
    }

    void checksAFile()
    {
        QFETCH(QByteArray, file);
        const QString path = m_folder.filePath("file.txt"_s);
        support::writeFile(path, file);
        const Answer answer = run({"check"_s, "--json"_s, path});
        const QJsonObject checked = QJsonDocument::fromJson(answer.output.toUtf8())["files"_s][0].toObject();
        QStringList found;
        const QJsonArray findings = checked["findings"_s].toArray();
        for (const QJsonValue& finding : findings)
            found += QString::number(finding["line"_s].toInt()) + u' ' + finding["code"_s].toString();
        QTEST(found.join(u','), "findings");
        QCOMPARE(answer.code, checked["problems"_s].toInt() > 0 ? 1 : 0);
    }

    void comparesFiles()
    {
        const QString one = m_folder.filePath("one.txt"_s);
        const QString two = m_folder.filePath("two.txt"_s);
        support::writeFile(one, "*** A: n\r\nk: v\r\nx: 1\r\n\r\n# c\r\n*** B:\r\n");
        support::writeFile(two, "*** b:\n*** a:\tn\n# c\nX: 1\nK:\tv\n");
        QCOMPARE(run({"diff"_s, one, two}).code, 0);
        support::writeFile(two, "*** A: m\nk: v # c\nx: 1\n# c\n*** C:\ny: 2\n");
        const Answer answer = run({"diff"_s, one, two});
        QCOMPARE(answer.code, 1);
        QCOMPARE(answer.output, "[A]\n< n\n> m\n[A] k\n< v\n> v  # c\n[B]\n<\n[C]\n>\n[C] y\n> 2\n"_s);
        QCOMPARE(run({"diff"_s, one, m_folder.filePath("absent"_s)}).code, 2);
        support::writeFile(one, "*** A:\nk: v\nK: w\n: u\n");
        QCOMPARE(run({"diff"_s, one, one}).code, 0);
    }

    void makesClickInfo()
    {
        const QString image = m_folder.filePath("a.TIF"_s);
        support::writeFile(image, "");
        const QStringList words = {"new"_s,       "--user"_s,    "ABC"_s, "--type"_s,
                                   "structure"_s, "--binning"_s, "4"_s,   image};
        QCOMPARE(run(words).code, 0);
        const QString file = m_folder.filePath("ClickInfo.txt"_s);
        QCOMPARE(run({"get"_s, file, "structure image"_s, "Binning Factor"_s}).output, "4\n"_s);
        QCOMPARE(run({"check"_s, file}).code, 0);
        QCOMPARE(run(words).code, 1);
        QCOMPARE(run(words + QStringList{"--force"_s}).code, 0);
        QCOMPARE(run({"new"_s, "--user"_s, "1"_s, image}).code, 2);
        const QString scan = m_folder.filePath("scan.dcm"_s);
        support::writeFile(scan, QByteArray(128, '\0') + "DICM");
        const QStringList append = {"new"_s, "--user"_s, "ABC"_s, "--output"_s, scan, image};
        QCOMPARE(run(append).code, 0);
        QCOMPARE(run(append).code, 1);
        const QString bare = m_folder.filePath("bare.dcm"_s);
        const QStringList begin = {"new"_s, "--user"_s, "ABC"_s, "--output"_s, bare, image};
        QCOMPARE(run(begin).code, 0);
        QCOMPARE(run(begin).code, 1);
    }

    void goesOnPastABrokenAcquisition()
    {
        support::writeFile(m_folder.filePath("SequenceInfo.txt"_s),
                           "*** Sequence: S\n\n*** ClickNumbers:\na: A\nb: B\n");
        QVERIFY(QDir(m_folder.path()).mkdir("B"_s));
        support::writeFile(m_folder.filePath("B/ClickInfo.txt"_s), "*** x-ray image: x.TIF\nExposure Time Sec: 3\n");
        const Answer answer = run({"study"_s, m_folder.path()});
        QCOMPARE(answer.code, 1);
        QVERIFY2(answer.error.contains("A/ClickInfo.txt: cannot be opened (eSTATUS_FILE_OPEN_FAILED)"_s),
                 qPrintable(answer.error));
        QVERIFY2(answer.output.contains("2 acquisitions, 1 unreadable\n"_s), qPrintable(answer.output));
        QVERIFY2(answer.output.contains("X-Ray   3 sec"_s), qPrintable(answer.output));
    }

    void scansAnArchive()
    {
        const QString archive = m_folder.filePath("archive"_s);
        for (const char* const folder : {"seq/A", "seq/B/ClickInfo.txt", "seq/C", "lone"})
            QVERIFY(QDir().mkpath(archive + u'/' + QLatin1String(folder)));
        const QByteArray user = "\n*** User Input:\nUser ID: U\nGroup: 007\nExperiment: a, \"b\"\n";
        const QByteArray image = "\n*** luminescent image:\nAcquisition Date: Tuesday, March 05, 2024\n"
                                 "Luminescent Exposure (Seconds): 2\nLuminescent Exposure Units: min\n";
        support::writeFile(archive + "/seq/SequenceInfo.txt"_s, "*** Sequence: S\n*** ClickNumbers:\n1: B\n2: A\n");
        support::writeFile(archive + "/seq/A/ClickInfo.txt"_s, "*** ClickNumber: A1\nk: v\n" + user + image);
        support::writeFile(archive + "/seq/C/ClickInfo.txt"_s, user);
        support::writeFile(archive + "/lone/ClickInfo.txt"_s, image);
        QVERIFY(QFile::link(archive, archive + "/loop"_s));
        const QStringList study = {"study"_s, "--recursive"_s};
        const Answer answer = run(study + QStringList{"--jsonl"_s, archive});
        QCOMPARE(answer.code, 1);
        QCOMPARE(answer.error, "ovinfo: "_s + archive + "/seq/B/ClickInfo.txt: a folder, not a file\n"_s);
        const QStringList lines = answer.output.split(u'\n');
        QCOMPARE(int(lines.size()), 4);
        QStringList clickNumbers;
        for (const QString& line : lines)
            clickNumbers += QJsonDocument::fromJson(line.toUtf8())["clickNumber"_s].toString();
        QCOMPARE(clickNumbers, (QStringList{"lone"_s, "A1"_s, "C"_s, ""_s}));
        const QJsonObject record = QJsonDocument::fromJson(lines.at(1).toUtf8()).object();
        QCOMPARE(record["exposureSeconds"_s], QJsonValue(120));
        QCOMPARE(record["date"_s], QJsonValue("2024-03-05"_s));
        QCOMPARE(record["sequenceName"_s], QJsonValue("S"_s));
        QCOMPARE(record["labels"_s].toObject()["Group"_s], QJsonValue("007"_s));
        support::writeFile(m_folder.filePath("list"_s), archive.toUtf8() + '\n');
        const QStringList list = {"--from-file"_s, m_folder.filePath("list"_s)};
        QCOMPARE(run(study + list + QStringList{"--jsonl"_s, "--jobs"_s, "1"_s}).output, answer.output);
        const Answer csv = run(study + list + QStringList{"--csv"_s});
        QVERIFY2(csv.output.contains(",120,,,,,,,007,\"a, \"\"b\"\"\","_s), qPrintable(csv.output));
        QCOMPARE(int(csv.output.count("\r\n"_s)), 4);
        const Answer all = run(study + list + QStringList{"--json"_s});
        QCOMPARE(int(QJsonDocument::fromJson(all.output.toUtf8())["failures"_s].toArray().size()), 1);
        const std::string unspelled = (archive + "/lone/"_s).toStdString() + "\xFF";
        QVERIFY(std::filesystem::create_directory(unspelled));
        const QString error = run(study + QStringList{archive}).error;
        std::filesystem::remove(unspelled); // which Qt cannot
        QVERIFY2(error.contains("this locale cannot spell the name"_s), qPrintable(error));
    }

    // The program's help comes from the table of verbs; the documents and completions must agree.
    void isDescribedInFull()
    {
        const QString sources = QStringLiteral(OVPARSER_EXAMPLES "/../tool/");
        const QString manual = QString::fromUtf8(support::readFile(sources + "ovinfo.1"_s));
        const QString readMe = QString::fromUtf8(support::readFile(sources + "../README.md"_s)).simplified();
        const QString zsh = QString::fromUtf8(support::readFile(sources + "completions/_ovinfo"_s));
        const QString bash = "source "_s + sources + "completions/ovinfo.bash; "_s;
        const QString help = run({"--help"_s}).output;
        const QStringList verbs = namesIn(help, "\n  (\\w+) +\\w"_s);
        QCOMPARE(verbs, namesIn(manual, "\n\\.It Cm (\\w+)"_s));
        const QString bashVerbs = shell(bash + "COMP_WORDS=(ovinfo ''); COMP_CWORD=1; _ovinfo; echo ${COMPREPLY[*]}"_s);
        QCOMPARE(bashVerbs, verbs.join(u' ') + " -h --help --version\n"_s);
        for (const QString& verb : verbs) {
            const QString summary = namesIn(help, "\n  "_s + verb + " +(.*)\n"_s).join(u' ');
            QVERIFY2(zsh.contains(u'\'' + verb + u':' + summary + u'\''), qPrintable(verb));
            const QString verbHelp = run({verb, "--help"_s}).output;
            const QString usage = verbHelp.section("\n\n"_s, 0, 0).simplified().mid(7);
            QCOMPARE(synopsisOf(manual, verb), usage);
            const QString arguments = usage.section(QRegularExpression("[\\]a-z] (?=[A-Z])"_s), -1);
            const QString listed = "ovinfo "_s + verb + u' ' + arguments + u' ' + summary;
            QVERIFY2(readMe.contains(listed), qPrintable(listed));
            const QString bashOptions = shell(bash + "_ovinfo_options "_s + verb);
            const QStringList options = namesIn(verbHelp, "\n  (?:-h, )?--([\\w-]+)"_s);
            QCOMPARE(sorted(namesIn(bashOptions, "--([\\w-]+)"_s)), sorted(options));
            const QString zshOptions =
                shell("sed -n '/^"_s + verb + ")/,/;;$/p' "_s + sources + "completions/_ovinfo"_s);
            for (const QString& option : options)
                QVERIFY2(zshOptions.contains((option == "help"_s || option == "json"_s ? "$"_s : "--"_s) + option),
                         qPrintable(verb + u' ' + option));
        }
        QCOMPARE(shell(bash + "COMP_WORDS=(ovinfo new --type l); COMP_CWORD=3; _ovinfo; echo ${COMPREPLY[*]}"_s),
                 "luminescent\n"_s);
        QCOMPARE(shell("cd "_s + sources + "; "_s + bash +
                       "COMP_WORDS=(ovinfo show main); COMP_CWORD=2; _ovinfo "
                       "2>/dev/null; echo ${COMPREPLY[*]}"_s),
                 "main.cpp\n"_s);
    }

    void drawsASpectralAnalysis()
    {
        const QString spectral = support::example("spectral/Spectral.xml");
        const QString drawing = m_folder.filePath("out.svg"_s);
        QCOMPARE(run({"spectral"_s, "--svg"_s, drawing, spectral}).code, 0);
        CPLXMLReader reader;
        QVERIFY(reader.createXMLDocumentFormFile(drawing, nullptr, nullptr, nullptr));
        reader.setRootElement();
        QString text;
        reader.getTextDataofElement(reader.getRootElement(), text);
        for (const char* part :
             {"Wavelength (nm)", "560", "Intensity", "Attenuation", "ROI 1", "A x + B with A = 1.5, B = -0.25"})
            QVERIFY2(text.contains(QLatin1String(part)), part);
        QCOMPARE(support::readFile(drawing).count("<circle"), 6); // four values, two in legends
        if (!support::fullDisk().isEmpty())
            QCOMPARE(run({"spectral"_s, "--svg"_s, support::fullDisk(), spectral}).code, 1);
    }

private:
    struct Answer
    {
        int code = -1;
        QString output;
        QString error;
    };

    static Answer run(const QStringList& words)
    {
        QProcess process;
        process.start(QStringLiteral(OVPARSER_OVINFO), words);
        if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit)
            return {};
        return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError())};
    }

    static QStringList namesIn(const QString& text, const QString& pattern)
    {
        QStringList names;
        for (auto match = QRegularExpression(pattern).globalMatch(text); match.hasNext();)
            names += match.next().captured(1);
        names.removeDuplicates();
        return names;
    }

    /** The usage of a verb as the manual tells it, in the form of its help. */
    static QString synopsisOf(const QString& manual, const QString& verb)
    {
        const QString all = manual.section(".Sh SYNOPSIS"_s, 1).section(".Sh "_s, 0, 0);
        QString text = ".Cm "_s + verb + u'\n' + all.section("\n.Cm "_s + verb + u'\n', 1).section(".Nm\n"_s, 0, 0);
        text.replace("Fl Fl "_s, "--"_s).replace("Ar "_s, QString());
        text.replace(QRegularExpression("\\n\\.Op ([^\\n]*)"_s), "\n[\\1]"_s);
        text.replace(QRegularExpression("(^|\\n)\\.(Cm )?"_s), " "_s);
        return "ovinfo "_s + text.simplified();
    }

    static QStringList sorted(QStringList names)
    {
        names.sort();
        return names;
    }

    static QString shell(const QString& script)
    {
        QProcess process;
        process.start("bash"_s, {"-c"_s, script});
        return process.waitForFinished() ? QString::fromUtf8(process.readAllStandardOutput()) : "no bash"_s;
    }

    QTemporaryDir m_folder;
};

// Words are passed to the program in the locale's encoding.
int main(int argc, char* argv[])
{
    qputenv("LC_ALL", "C.UTF-8");
    // The program reads no settings of this machine.
    qputenv("XDG_DATA_DIRS", "/nonexistent");
    qputenv("XDG_CONFIG_DIRS", "/nonexistent");
    std::setlocale(LC_ALL, "C.UTF-8");
    const QCoreApplication application(argc, argv);
    TestOvinfo test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_ovinfo.moc"
