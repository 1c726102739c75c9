// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "support/Ovinfo.h"
#include "support/Support.h"

#include <QtCore/QDir>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>

#include <clocale>
#include <cstdlib>
#include <filesystem>

#include <fcntl.h>
#include <sys/file.h>

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
        support::row("missing word", QStringList{"get"_s, click}, 2, none, "get takes FILE... SECTION KEY"_s);
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
                     "absent: no such file (eSTATUS_FILE_OPEN_FAILED)"_s);
        support::row("no sections", QStringList{"show"_s, support::example("CMakeLists.txt")}, 1, none,
                     "not a file that the library knows"_s);
        support::row("unreadable, checked", QStringList{"check"_s, "--json"_s, "absent"_s}, 1,
                     QStringList{"\"failure\": \"no such file (eSTATUS_FILE_OPEN_FAILED)\""_s}, "absent"_s);
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
        support::row("no camera", QStringList{"camera"_s, "absent"_s}, 1, none, "absent: no such file"_s);
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
        support::row("no spectral file", QStringList{"spectral"_s, "absent"_s}, 1, none, "absent: no such file"_s);
        support::row("no XML", QStringList{"spectral"_s, click}, 1, none, ": line 1, column 1: "_s);
        support::row("study of no folder", QStringList{"study"_s, "absent"_s}, 1, none,
                     "absent: no such folder (eSTATUS_FILE_NOT_FOUND)"_s);
        support::row("study of a file", QStringList{"study"_s, click}, 1, none, "ClickInfo.txt: a file; name its "_s);
        support::row("study of no sequence", QStringList{"study"_s, support::example("settings")}, 1, none,
                     "settings: holds no SequenceInfo.txt; --recursive reads what lies below"_s);
        for (const char* const part : {"0/2", "3/2", "1", "1/2x"})
            support::row(part, QStringList{"study"_s, "--shard"_s, QLatin1String(part), study}, 2, none, "--shard"_s);
        support::row("spreadsheet without CSV", QStringList{"study"_s, "--spreadsheet"_s, study}, 2, none, "--csv"_s);
        support::row("no column", QStringList{"study"_s, "--column"_s, "x"_s, study}, 2, none, "SECTION/KEY"_s);
        support::row("shard of a check", QStringList{"check"_s, "--recursive"_s, "--shard"_s, "1/1"_s, study}, 0,
                     QStringList{"SequenceInfo.txt: Sequence Dose response, day 3, no problems"_s}, ""_s);
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

    void setSeesAnotherChange()
    {
        const QString path = m_folder.filePath("shared.txt"_s);
        for (const QByteArray& other : {QByteArray("*** A:\nk: other\n"), QByteArray("*** A:\nk: old\n")}) {
            support::writeFile(path, "*** A:\nk: old\n");
            QFile lock(path);
            QVERIFY(lock.open(QIODevice::ReadOnly) && ::flock(lock.handle(), LOCK_EX) == 0);
            QProcess set;
            set.start(QStringLiteral(OVPARSER_OVINFO), {"set"_s, path, "A"_s, "k"_s, "new"_s});
            const QByteArray waiting = "WRITE " + QByteArray::number(set.processId());
            QTRY_VERIFY(support::readFile("/proc/locks"_s).contains(waiting)); // it has read the file
            support::writeFile(path, other);
            lock.close();
            QVERIFY(set.waitForFinished());
            const bool same = other.contains("old");
            QCOMPARE(set.exitCode(), same ? 0 : 1);
            QCOMPARE(set.readAllStandardError().contains("has changed since it was read"), !same);
            QCOMPARE(support::readFile(path), same ? QByteArray("*** A:\nk: new\n") : other);
        }
    }

    void editsFiles_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QStringList>("words");
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QByteArray>("written");
        QTest::addColumn<QString>("output");
        const QByteArray info = "*** A: n\r\nk: v # c\r\nx: 1\r\nK: w\r\n\r\n*** B:\t\r\n\r\n\r\n\r\n";
        const QStringList set = {"set"_s};
        const QStringList add = {"set"_s, "--add"_s};
        const QStringList unset = {"unset"_s};
        const auto row = [](const char* name, const QStringList& options, const QStringList& words,
                            const QByteArray& file, const QByteArray& written, const char* output = "") {
            support::row(name, options, words, file, written, QString::fromUtf8(output));
        };
        row("add a key", add, {"a"_s, "new"_s, "1 # d"_s}, info,
            QByteArray(info).replace("w\r\n", "w\r\nnew:\t1 # d\r\n"));
        row("add to no lines", add, {"B"_s, "new"_s, "-1"_s}, info,
            QByteArray(info).replace("B:\t\r\n", "B:\t\r\nnew:\t-1\r\n"));
        row("add a section", add, {"C"_s, "k"_s, "\u00e9"_s}, info,
            QByteArray(info).replace("B:\t\r\n", "B:\t\r\n\r\n*** C:\t\r\nk:\t\xE9\r\n"));
        row("add what is there", add, {"A"_s, "x"_s, "2"_s}, info, QByteArray(info).replace("x: 1", "x: 2"));
        row("add without a line end", add, {"A"_s, "k"_s, "1"_s}, "*** A:", "*** A:\r\nk:\t1");
        row("add to a sequence", add, {"Sequence"_s, "k"_s, "\u20ac"_s}, "*** Sequence: S\n\n*** ClickNumbers:\n1: A\n",
            "*** Sequence: S\nk:\t\xE2\x82\xAC\n\n*** ClickNumbers:\n1: A\n");
        row("add no key", add, {"A"_s, "# k"_s, "1"_s}, info, info, "would not read back");
        row("add an empty key", add, {"A"_s, ""_s, "1"_s}, info, info, "no such key");
        row("add to an index", add, {"Structure reference1"_s, "k"_s, "1"_s}, "*** Structure reference:A\n",
            "*** Structure reference:A\n", "nothing can be added");
        row("unset", unset, {"a"_s, "k"_s}, info, "*** A: n\r\nx: 1\r\n\r\n*** B:\t\r\n\r\n\r\n\r\n");
        row("unset what is not there", unset, {"A"_s, "y"_s}, info, info, "y: no such key");
        row("empty", set, {"A"_s, "k"_s, ""_s}, "*** A:\nk:\tv\t# c\n", "*** A:\nk:\t# c\n");
        row("full again", set, {"A"_s, "k"_s, "v"_s}, "*** A:\nk:\t# c\n", "*** A:\nk:\tv\t# c\n");
        const char* const diff = "@@ -2,1 +2,1 @@\n-k: v\\x1b\n+k: w\n";
        row("dry run", {"set"_s, "--dry-run"_s}, {"A"_s, "k"_s, "w"_s}, "*** A:\nk: v\x1b\n", "*** A:\nk: v\x1b\n",
            diff);
        row("dry run of taking out", {"unset"_s, "--dry-run"_s}, {"A"_s, "x"_s}, info, info,
            "@@ -3,1 +2,0 @@\n-x: 1\n");
    }

    void editsFiles()
    {
        QFETCH(QStringList, options);
        QFETCH(QStringList, words);
        QFETCH(QByteArray, file);
        QFETCH(QString, output);
        const QString path = m_folder.filePath("file.txt"_s);
        const QString second = m_folder.filePath("second.txt"_s);
        const QString list = m_folder.filePath("list"_s);
        for (const QString& name : {path, second})
            support::writeFile(name, file);
        support::writeFile(list, second.toUtf8() + '\0');
        const Answer answer = run(options + QStringList{"--from-file0"_s, list, path} + words);
        QCOMPARE(answer.code, output.isEmpty() || output.startsWith(u'@') ? 0 : 1);
        const QString text = answer.output + answer.error;
        QVERIFY2(output.isEmpty() ? text.isEmpty() : text.count(output) == 2, qPrintable(text));
        QTEST(support::readFile(path), "written");
        QTEST(support::readFile(second), "written");
    }

    void answersForSeveralFiles()
    {
        const QString one = m_folder.filePath("one.txt"_s);
        const QString two = m_folder.filePath("two.txt"_s);
        const QString absent = m_folder.filePath("absent"_s);
        support::writeFile(one, "*** A: n\r\nk:\tv # c\r\n\r\n\r\n\r\n");
        support::writeFile(two, "*** A: n\nx\n");
        const Answer got = run({"get"_s, one, absent, two, "A"_s, "k"_s, "--default"_s, "-"_s});
        QCOMPARE(got.output, one + "\tv\n"_s + two + "\t-\n"_s);
        QCOMPARE(got.code, 1);
        QCOMPARE(run({"get"_s, "--json"_s, one, two, "A"_s, "k"_s}).code, 2);
        QCOMPARE(run({"show"_s, "--keys"_s, one}).output, "A\nA\tk\n"_s);
        const auto filesIn = [&](const QStringList& words) {
            QStringList files;
            const QStringList lines = run(words).output.trimmed().split(u'\n');
            for (const QString& line : lines)
                files += QJsonDocument::fromJson(line.toUtf8())["file"_s].toString();
            return files;
        };
        const QStringList both = {one, two};
        QCOMPARE(filesIn(QStringList{"show"_s, "--jsonl"_s} + both), both);
        QCOMPARE(filesIn(QStringList{"get"_s, "--jsonl"_s, "--default="_s} + both + QStringList{"A"_s, "k"_s}), both);
        QCOMPARE(filesIn(QStringList{"check"_s, "--jsonl"_s} + both), both);
        const Answer quiet = run(QStringList{"check"_s, "--quiet"_s} + both);
        QCOMPARE(quiet.output,
                 two + ":2: problem: no ':' in 'x'; it is kept as a comment, and a save puts a '#' in front "
                       "[line-without-colon]\n"_s);
        QCOMPARE(quiet.code, 1);
        const QString folder = m_folder.filePath("tree"_s);
        QVERIFY(QDir().mkpath(folder + "/a"_s));
        QVERIFY(QFile::link(folder, folder + "/a/loop"_s));
        const QByteArray scan = QByteArray(128, '\0') + "DICM";
        support::writeFile(folder + "/a/bare.dcm"_s, scan);
        support::writeFile(folder + "/a/scan.dcm"_s, scan + "*** ClickNumber: A\n");
        support::writeFile(folder + "/a/image.TIF"_s, "");
        support::writeFile(folder + "/ClickInfo.txt"_s, "");
        QCOMPARE(filesIn({"check"_s, "--jsonl"_s, "--recursive"_s, folder}),
                 (QStringList{folder + "/ClickInfo.txt"_s, folder + "/a/scan.dcm"_s}));
    }

    void stripsDicomFiles_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<int>("kept"); // from the start on; -1 when the file must not change
        const auto element = [](const char* head, const QByteArray& value) { return QByteArray(head, 8) + value; };
        const QByteArray text = "Notes\r\n*** ClickNumber:\tA\r\nk:\tv\r\n\r\n\r\n\r\n";
        const QByteArray start = QByteArray(128, '\0') + "DICM";
        const QByteArray scan = start + element("\2\0\x10\0UI\x14\0", QByteArray("1.2.840.10008.1.2.1\0", 20)) +
                                element("\x10\0\x10\0PN\4\0", "A^B ") +
                                element("\x40\0\x75\2SQ\0\0", "\xFF\xFF\xFF\xFF") +
                                element("\xFE\xFF\0\xE0\xFF\xFF\xFF\xFF", element("\x8\0\0\1SH\2\0", "ab")) +
                                element("\xFE\xFF\r\xE0\0\0\0\0", "") + element("\xFE\xFF\xDD\xE0\0\0\0\0", "") +
                                element("\xE0\x7F\x10\0OW\0\0", QByteArray("\6\0\0\0", 4) + "***A:b");
        const QByteArray implicit = start + element("\2\0\x10\0UI\x12\0", QByteArray("1.2.840.10008.1.2\0", 18)) +
                                    element("\xE0\x7F\x10\0\4\0\0\0", "****");
        const QByteArray deflated = start + element("\2\0\x10\0UI\x16\0", "1.2.840.10008.1.2.1.99");
        const auto row = [](const char* name, const QByteArray& file, int kept) { support::row(name, file, kept); };
        row("appended", scan + text, int(scan.size()));
        row("appended twice", scan + text + text, int(scan.size()));
        row("implicit", implicit + text, int(implicit.size()));
        row("nothing appended", scan, -1);
        row("other bytes", scan + "x" + '\0' + text, -1);
        row("no header", scan + "text", -1);
        row("cut image", scan.chopped(1), -1);
        row("deflated", deflated + text, -1);
        row("no DICOM file", text, -1);
    }

    void stripsDicomFiles()
    {
        QFETCH(QByteArray, file);
        QFETCH(int, kept);
        const QString path = m_folder.filePath("scan.dcm"_s);
        support::writeFile(path, file);
        const Answer answer = run({"strip"_s, path});
        QCOMPARE(answer.code, kept < 0 ? 1 : 0);
        QCOMPARE(answer.error.isEmpty(), kept >= 0);
        QCOMPARE(support::readFile(path), kept < 0 ? file : file.left(kept));
    }

    void checksAFile_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("findings");
        const auto row = [](const char* name, const QByteArray& file, const char* findings) {
            support::row(name, file, QString::fromLatin1(findings));
        };
        row("written form", "p\r\n*** A:\tn # c\r\nk:\tv\r\n# x: y\r\n\r\n\r\n\r\n", "");
        row("other layout", "p\r\n*** A: n\r\n", "2 not-in-written-form,2 end-missing");
        row("lines", "*** A: n\rk: v\rnote\rn # s: m\r: e\rK: w\rcommentline 1: x",
            "1 not-in-written-form,3 line-without-colon,4 key-commented,5 key-missing,6 key-twice,7 key-reserved,"
            "7 end-missing");
        row("section twice", "*** A:\t\r\nk:\t1\r\n\r\n*** a: 2\r\n",
            "4 section-twice,4 not-in-written-form,4 end-missing");
        row("header without colon", "*** A: n\n*** b\n*** A: n\n", "2 header-without-colon");
        row("header commented", "*** A # b: n\n", "1 header-commented");
        row("colon before the mark", "***: *** n\n", "1 header-colon-before-mark");
        row("header without key", "*** A: n\n*** : n\n", "2 header-without-key");
        row("click number alone", "*** ClickNumber: A\n*** B:\n", "1 click-number-alone");
        row("no click number", "*** ClickNumber:\t\r\nk:\tv\r\n\r\n\r\n\r\n", "1 click-number-missing");
        const QByteArray saved = "*** ClickNumber:\tA\r\nk:\tv\r\n\r\n*** B:\t\r\nk:\tv\r\n\r\n\r\n\r\n";
        row("NULs", QByteArray(saved).replace("k:\tv\r\n\r\n*** B", QByteArray(500, '\0')), "2 nul-bytes");
        row("control characters", QByteArray(saved).replace("A", "A\x1b").replace("k", "k\x92"),
            "1 control-character,2 control-character,5 control-character");
        row("bytes before the first header", "ok \xE9\r\n\x01\r\n\xFF" + saved, "2 unknown-bytes,3 unknown-bytes");
        row("cut append", (QByteArray(128, '\0') + "DICM" + saved).chopped(2), "7 end-missing");
        row("whole append", QByteArray(128, '\0') + "DICM" + saved, "");
        row("numbers", QByteArray(saved).replace("k:\tv", "RDX-2 angle:\t1.5\r\nShelf Position A FOV:\tx # c"),
            "3 number-expected,7 number-expected");
        const auto sequence = [&](const char* name, const char* members, const char* findings) {
            row(name,
                QByteArray("*** Sequence:\tS\r\n\r\n*** Graph Controls:\t\r\nEmpty Sequence:\t\r\n\r\n"
                           "*** ClickNumbers:\t\r\n") +
                    members + "\r\n\r\n\r\n",
                findings);
        };
        QVERIFY(QDir(m_folder.path()).mkpath("member"_s));
        support::writeFile(m_folder.filePath("member/ClickInfo.txt"_s), "");
        sequence("members", "1:\tmember\r\n2:\tabsent # c\r\n3:\tmember\r\n4:\t../x/member\r\n",
                 "8 member-missing,9 member-twice,10 member-missing");
        sequence("number of a sequence", "1:\tmember\r\n", "");
        row("click number prefixed", "*** ClickNumber:\t7\r\nk:\tv\r\n\r\n\r\n\r\n", "1 click-number-prefixed");
        row("byte order mark", "\xEF\xBB\xBF*** A: n\n*** B: n\n",
            "1 not-in-written-form,1 byte-order-mark,2 end-missing");
        row("UTF-8", "*** A:\t\xC3\xA9\r\n\r\n\r\n\r\n", "1 looks-like-utf8");
        row("nothing", "", "0 no-section");
        row("sequence", "pre\n*** Sequence: S # c\nk: \xE2\x82\xAC\nx *** B: v\n*** ClickNumbers:\n1: A\n*** *** \n",
            "1 text-before-first-section,1 not-in-written-form,2 name-comment,3 character-not-written,"
            "4 line-without-colon,4 mark-in-line,6 member-missing,7 mark-without-colon,7 end-missing");
        row("no click numbers", "*** Sequence:\tS\r\n\r\n\r\n\r\n", "0 no-click-numbers");
        row("spanning key", "*** Sequence:\r\n\r\n*** ClickNumbers:\r\n1:\tA\r\n\r\n*** C *** D:\tx\r\n",
            "1 not-in-written-form,4 member-missing,6 colon-behind-next-mark,6 header-without-line-end,6 "
            "line-without-colon,6 mark-in-line,6 end-missing");
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
            "4 member-missing,6 colon-too-far,6 mark-in-line,6 not-in-written-form,6 end-missing");
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
        row("elements after a comment",
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

    // What a file holds must not be obeyed by a terminal; programs get it exactly.
    void printsNoControlCharacters()
    {
        const QString file = m_folder.filePath("a\nb.txt"_s);
        support::writeFile(file, "p\x1b\n*** A\x1b: n\x1b\nk\x1b: v\x1b\x7f\x9b\n*** MenuName:\nMenuName: m\x1b\n");
        const QString other = m_folder.filePath("other.txt"_s);
        support::writeFile(other, "*** A\x1b: n\nk\x1b: w\n");
        const QStringList commands[] = {
            {"show"_s, file}, {"check"_s, file}, {"diff"_s, file, other}, {"presets"_s, file}, {"camera"_s, file}};
        for (const QStringList& command : commands) {
            const Answer answer = run(command);
            const QString text = answer.output + answer.error;
            for (const QChar c : text)
                QVERIFY2(c == u'\n' || (c >= u' ' && (c < u'\x7f' || c > u'\x9f')),
                         qPrintable(command.join(u' ') + text));
            QVERIFY2(command.first() == "camera"_s || text.contains("\\x1b"_s), qPrintable(text));
        }
        QCOMPARE(run({"spectral"_s, file}).error.count(u'\n'), 1);
        QCOMPARE(run({"get"_s, file, "A\x1b"_s, "k\x1b"_s}).output, "v\x1b\x7f\u009b\n"_s);
        const QString json = run({"get"_s, "--json"_s, file, "A\x1b"_s, "k\x1b"_s}).output;
        QVERIFY2(json.contains("\"v\\u001b\\u007f\\u009b\""_s), qPrintable(json));
        if (!support::fullDisk().isEmpty())
            QCOMPARE(shell(QStringLiteral(OVPARSER_OVINFO " diff '%1' '%1' --json > %2 2>&1; echo $?")
                               .arg(other, support::fullDisk())),
                     "2\n"_s);
    }

    // What programs get exactly, too, unless it is a terminal that gets it.
    void spellsControlCharactersOnATerminal()
    {
        const QString folder = m_folder.filePath("shown"_s);
        const QString file = folder + "/ClickInfo.txt"_s;
        QVERIFY(QDir().mkpath(folder));
        support::writeFile(file, "*** ClickNumber: A\nk: v\n*** User Input:\nGroup: a\x1b\x9b\n");
        QCOMPARE(onTerminal({"get"_s, file, "User Input"_s, "Group"_s}), "a\\x1b\\x9b\r\n"_s);
        const QString csv = onTerminal({"study"_s, "--recursive"_s, "--csv"_s, folder});
        QVERIFY2(csv.contains(",a\\x1b\\x9b,"_s), qPrintable(csv));
        QCOMPARE(csv.count(u'\r'), 2);
        QVERIFY(onTerminal({"show"_s, "--keys"_s, file}).contains("User Input\tGroup\r\n"_s));
    }

    void tellsWhatIsForbidden()
    {
        const QString folder = m_folder.filePath("closed"_s);
        const QString file = folder + "/file.xml"_s;
        const QString spectral = support::example("spectral/Spectral.xml");
        QVERIFY(QDir().mkpath(folder));
        support::writeFile(file, "*** A: n\nk: v\n");
        QVERIFY(QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner));
        // Nothing is forbidden to root.
        const QString user = shell("[ $(id -u) = 0 ] && echo setpriv --reuid=65534 --clear-groups"_s).trimmed();
        // A build that counts lines tells that it may not write its counts either.
        const auto error = [&](const QString& command) {
            return shell(user + u' ' + QStringLiteral(OVPARSER_OVINFO) + u' ' + command + " 2>&1"_s)
                .remove(QRegularExpression("profiling:[^\n]*\n"_s));
        };
        const QString denied = "ovinfo: "_s + file + ": permission denied"_s;
        const QString withStatus = denied + " (eSTATUS_FILE_OPEN_FAILED)\n"_s;
        for (const char* verb : {"show", "check", "camera", "spectral", "presets"})
            QCOMPARE(error(QLatin1String(verb) + u' ' + file), withStatus);
        QCOMPARE(error("set "_s + file + " A k w"_s), withStatus);
        QCOMPARE(error("new --user A --output "_s + file + u' ' + spectral), withStatus);
        QCOMPARE(error("spectral --svg "_s + file + u' ' + spectral), denied + u'\n');
        QVERIFY(QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
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
        QVERIFY2(answer.error.contains("A/ClickInfo.txt: no such file (eSTATUS_FILE_OPEN_FAILED)"_s),
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
        const QString help = run({"--help"_s}).output.replace(QRegularExpression("\n   +"_s), " "_s);
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
            const QStringList options = namesIn(verbHelp, "\n  (?:-\\w, )?--([\\w-]+)"_s);
            QCOMPARE(sorted(namesIn(bashOptions, "--([\\w-]+)"_s)), sorted(options));
            QString zshOptions = shell("sed -n '/^"_s + verb + ")/,/;;$/p' "_s + sources + "completions/_ovinfo"_s);
            zshOptions.replace("$lists"_s, "--from-file[ --from-file0["_s);
            for (const QString& option : options)
                QVERIFY2(zshOptions.contains(QRegularExpression("(--"_s + option + "\\[|\\$"_s + option + "\\b)"_s)),
                         qPrintable(verb + u' ' + option));
        }
        QCOMPARE(shell(bash + "COMP_WORDS=(ovinfo new --type l); COMP_CWORD=3; _ovinfo; echo ${COMPREPLY[*]}"_s),
                 "luminescent\n"_s);
        QCOMPARE(shell("cd "_s + sources + "; "_s + bash +
                       "COMP_WORDS=(ovinfo show main); COMP_CWORD=2; _ovinfo "
                       "2>/dev/null; echo ${COMPREPLY[*]}"_s),
                 "main.cpp\n"_s);
        const QString program = QFileInfo(QStringLiteral(OVPARSER_OVINFO)).path();
        const QString complete = "PATH="_s + program + ":$PATH; "_s + bash + "COMP_WORDS=(ovinfo get "_s +
                                 support::example("settings/Presets.txt") +
                                 " %1); COMP_CWORD=%2; _ovinfo 2>/dev/null; printf '%s|' \"${COMPREPLY[@]}\""_s;
        QCOMPARE(shell(complete.arg("preset"_s).arg(3)), "Preset 1|Preset 2|Preset 4|"_s);
        QCOMPARE(shell(complete.arg("'Preset 1' exp"_s).arg(4)), "Exposure|"_s);
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
    /** What a terminal is given, which makes CR LF of LF. */
    static QString onTerminal(const QStringList& words)
    {
        QFile terminal;
        const int handle = ::posix_openpt(O_RDWR | O_NOCTTY);
        if (handle < 0 || ::grantpt(handle) != 0 || ::unlockpt(handle) != 0 ||
            !terminal.open(handle, QIODevice::ReadOnly | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle))
            return {};
        QProcess process;
        process.setStandardOutputFile(QFile::decodeName(::ptsname(handle)));
        process.start(QStringLiteral(OVPARSER_OVINFO), words);
        process.waitForFinished();
        return QString::fromUtf8(terminal.read(4096));
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
