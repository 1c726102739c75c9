// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "support/Ovinfo.h"
#include "support/Support.h"

#include "Markup.h"
#include "StudyReport.h"

#include <QtCore/QDir>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QXmlStreamReader>

/** Reports: what they find, the page, where the records come from. */
class TestOvinfoReport : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    // A line is "group animal date time image exposure injection time-point"; "-" stands for nothing.
    void finds_data()
    {
        support::textColumns({"lines", "found"});
        const char* const weekly =
            "G 1 01 09:00 P 1 - -|G 1 08 09:00 P 1 - -|G 2 01 09:00 P 1 - -|G 2 08 09:00 P 1 - -|"
            "G 3 01 09:00 P 1 - -";
        support::textRow("nothing", "G 1 01 09:00 P 1 - -|G 1 08 09:00 P 1 - -", "");
        support::textRow("a missed day", weekly, "gap G/3 day 7 at 7, 2 others");
        support::textRow("a day of one alone is its delay", QByteArray(weekly) + "|G 3 09 09:00 P 1 - -",
                         "gap G/3 day 7 at 7, 2 others");
        support::textRow("fewer than half have it", QByteArray(weekly) + "|G 4 01 09:00 P 1 - -|G 5 01 09:00 P 1 - -",
                         "");
        support::textRow("two animals: one has it", "G 1 01 09:00 P 1 - -|G 1 08 09:00 P 1 - -|G 2 01 09:00 P 1 - -",
                         "gap G/2 day 7 at 7, 1 others");
        support::textRow("another group is none of its own",
                         "G 1 01 09:00 P 1 - -|G 1 08 09:00 P 1 - -|H 2 01 09:00 P 1 - -", "");
        support::textRow("the first one by label",
                         "G 1 01 09:00 P 1 - d0|G 1 08 09:00 P 1 - d7|G 1 15 09:00 P 1 - d14|"
                         "G 2 08 09:00 P 1 - D_7|G 2 15 09:00 P 1 - d14",
                         "gap G/2 d0 at -7, 1 others|label Time Point: D 7, d7");
        support::textRow("no date", "G 1 - - P 1 - -|G 2 01 09:00 P 1 - -", "gap G/1 day 0 at 0, 1 others");
        support::textRow("another exposure", "G 1 01 09:00 L 60 - -|G 2 01 09:00 L 60 - -|G 3 01 09:00 L 30 - -",
                         "G/3 exposure 30 s, commonest 60 s (2 of 3)");
        support::textRow("another kind of image", "G 1 01 09:00 L 60 - -|G 2 01 09:00 L 60 - -|G 3 01 09:00 P 1 - -",
                         "");
        support::textRow("another group", "G 1 01 09:00 L 60 - -|G 2 01 09:00 L 60 - -|H 3 01 09:00 L 1 - -", "");
        support::textRow("none that is commonest", "G 1 01 09:00 L 60 - -|G 2 01 09:00 L 30 - -",
                         "mixed exposure: 30 s, 60 s");
        support::textRow("seconds of an interval",
                         "G 1 01 09:10:02 L 1 09:00 -|G 2 01 09:20:59 L 1 09:10 -|G 3 01 09:29:30 L 1 09:20 -", "");
        support::textRow("a minute of an interval",
                         "G 1 01 09:10:02 L 1 09:00 -|G 2 01 09:20:10 L 1 09:10 -|G 3 01 09:31:10 L 1 09:20 -",
                         "G/3 time since injection 11 min, commonest 10 min (2 of 3)");
        support::textRow("intervals of which none is commonest",
                         "G 1 01 09:10 L 1 09:00 -|G 2 01 09:10 L 1 09:00 -|G 3 01 09:20 L 1 09:00 -|"
                         "G 4 01 09:20 L 1 09:00 -",
                         "mixed time since injection: 10 min, 20 min");
        support::textRow("an injection time that was rounded up",
                         "G 1 01 09:00:50 L 1 09:01 -|G 2 01 09:10:10 L 1 09:10 -|G 3 01 09:20 L 1 09:20 -", "");
        support::textRow("a time point without a date",
                         "G 1 01 09:00 P 1 - d0|G 1 08 09:00 P 1 - d7|G 2 01 09:00 P 1 - d0|G 2 - - P 1 - d7", "");
        support::textRow("over midnight, spelled otherwise, and none",
                         "G 1 01 00:05 L 1 23:55 -|G 2 01 21:20 L 1 9:10pm -|G 3 01 21:20 L 1 soon -", "");
        support::textRow("a group spelled twice",
                         "Old_mice 1 01 09:00 P 1 - -|old_mice 1 08 09:00 P 1 - -|Old_mice 2 01 09:00 P 1 - -",
                         "gap Old mice/2 day 7 at 7, 1 others|label Group: Old mice, old mice");
        support::textRow("animals that zeros tell apart",
                         "G 7 01 09:00 P 1 - -|G 007 08 09:00 P 1 - -|G 007 01 09:00 P 1 - -",
                         "gap G/7 day 7 at 7, 1 others");
        support::textRow("animals that white space tells apart", "G 1_1 01 09:00 P 1 - -|G 11 01 09:00 P 1 - -",
                         "label Animal Number: 1 1, 11");
    }

    void finds()
    {
        QFETCH(QString, lines);
        QFETCH(QString, found);
        StudyRecords records;
        for (const QString& line : lines.split(u'|'))
            records.add(recordOf(line));
        QCOMPARE(told(reportOf(records, {"Group"_s, "Animal Number"_s})), found);
    }

    // A DICOM file beside a click info is no acquisition of its own; findings that are notes are no problems.
    void takesRecordsOfEveryKind()
    {
        StudyRecords records;
        for (
            const char* const line :
            {R"({"kind":"dicom","path":"a/first.dcm","clickNumber":"A"})",
             R"({"kind":"acquisition","path":"a/ClickInfo.txt","clickNumber":"A","sequencePath":"s","ClickNumber/Orvane Version":"4"})",
             R"({"kind":"acquisition","path":"a/ClickInfo.txt","clickNumber":"A","sequencePath":"s"})",
             R"({"kind":"analyzed","path":"a/AnalyzedClickInfo.txt","clickNumber":"A"})",
             R"({"kind":"dicom","path":"a/a.dcm","clickNumber":"A"})",
             R"({"kind":"dicom","path":"b/b.dcm","clickNumber":"B"})", R"({"kind":"sequence","path":"s"})",
             R"({"kind":"acquisition","path":"c","problem":"gone"})", R"({"file":"c","failure":"gone","findings":[]})",
             R"({"file":"d","findings":[{"line":3,"severity":"problem","message":"p"},{"severity":"note","message":"n"}]})",
             R"({"kind":"acquisition","path":"e","clickNumber":"E",
                  "sections":[{"key":"ClickNumber","entries":[{"key":"Orvane Version","value":"5"}]}]})"})
            records.add(QJsonDocument::fromJson(line).object());
        const StudyReport report = reportOf(records, {});
        QCOMPARE(int(report.acquisitions.size()), 3);
        QCOMPARE(report.versions, QStringList({"4"_s, "5"_s}));
        QCOMPARE(report.sequences, QStringList("s"_s));
        QCOMPARE(report.problems.keys(), QStringList({"c"_s, "d"_s}));
        QCOMPARE(int(report.problems["c"_s].size() + report.problems["d"_s].size()), 2);
    }

    void spellsWhatWouldMislead()
    {
        QByteArray bytes;
        {
            Markup page(&bytes, Markup::Html);
            const QString text = QChar(0xD800) + "\x01<b>\x7F\xE2\x80\xAE&\xEF\xBF\xBF\xF0\x9F\x90\xAD"_s;
            page.element("p", {{"title", "\"\n"}}, text);
            page.empty("br");
            page.element("td", {}, QString());
            page.element("b", QString(1000, u'A')); // a word that browsers break too slowly
        }
        const QByteArray word = "<b>" + QByteArray(200, 'A') + "\xE2\x80\xA6</b>";
        QVERIFY(bytes.endsWith(word));
        bytes.chop(word.size());
        bytes.replace("&#xA;", "&#10;");
        QCOMPARE(bytes,
                 QByteArray("<!DOCTYPE html>\n<p title=\"&quot;&#10;\">\\ud800\\x01&lt;b&gt;\\x7f\\u202e&amp;\\uffff"
                            "\xF0\x9F\x90\xAD</p><br/><td></td>"));
    }

    // Members of a record may follow a line, as in finds_data().
    void shows_data()
    {
        support::textColumns({"lines", "words", "part"});
        const char* const line = "G 1 01 09:00 L 60 - -";
        const QByteArray two = QByteArray(line) + "|G 1 02 09:00 L 60 - - ";
        QByteArray seven, many, values;
        for (int i = 0; i < 201; ++i) {
            const QByteArray number = QByteArray::number(i);
            many += (i > 0 ? "|G " : "G ") + number + " 01 09:00 L 60 - -";
            seven += i < 7 ? (i > 0 ? "|" : "") + QByteArray("G 1 01 09:00 L ") + number + " - -" : "";
            values += (i > 0 ? "|" : "") + QByteArray(line) + " binning=" + number;
        }
        support::textRow("nothing", "", "", "There are no acquisitions.");
        support::textRow("nothing to look at", "", "", "Nothing needs a look.");
        support::textRow("one", line, "", "<dd>2024-03-01</dd>");
        support::textRow("colours of exposures", line, "", "<span class=\"swatch c0\"></span>exposure 60 s</li>");
        support::textRow("colours of filters", two + "emissionFilter=560nm|G 1 02 09:00 L 60 - - emissionFilter=Open",
                         "", "<span class=\"swatch c1\"></span>emission filter Open</li>");
        support::textRow("more values than colours", seven, "",
                         "<span class=\"swatch other\"></span>other exposure</li>");
        support::textRow("a shape for any image", two + "mainImage=blemish", "", "Any other image, or none</li>");
        support::textRow("no date", "G 1 - 09:00 L 60 - -", "", "<span class=\"d1\">no date</span>");
        support::textRow("a day before the first",
                         "G 1 01 09:00 P 1 - d0|G 1 08 09:00 P 1 - d7|G 1 15 09:00 P 1 - d14|G 2 08 09:00 P 1 - d7|G 2 "
                         "15 09:00 P 1 - d14",
                         "", "<span class=\"d1\">\\u22127</span>");
        support::textRow("days too close for a narrow screen", two + "|G 1 30 09:00 L 60 - -", "",
                         "aria-label=\"Table of the timeline\"");
        support::textRow("another group", two, "--group-by|View", "<span class=\"name\">(no View)</span>");
        support::textRow("another subject", "G 1 01 09:00 L 60 - left", "--subject|time point",
                         "<th scope=\"row\">left</th>");
        support::textRow("a title", line, "--title|<i>", "<h1>&lt;i&gt;</h1>");
        support::textRow("more values than are listed", many, "", "and 1 more values</li>");
        support::textRow("a label that is partly empty", two + "|G - 01 09:00 L 60 - -", "",
                         "1 label not filled in everywhere</a>");
        support::textRow("plurals",
                         "G 1 01 09:00 L 60 - -|G 1 01 09:00 L 60 - -|G 1 01 09:00 L 60 - -|G 1 01 09:00 L 60 - -|"
                         "G 1 02 09:00 L 9 - -|G 2 01 09:00 L 60 - -|G 2 02 09:00 L 8 - -",
                         "", "2 deviating acquisitions</a>");
        support::textRow("many values without a commonest", values, "", "7 (1) and 193 more</li>");
    }

    void shows()
    {
        QFETCH(QString, lines);
        QFETCH(QString, words);
        QFETCH(QString, part);
        QByteArray records;
        for (const QString& line : lines.isEmpty() ? QStringList() : lines.split(u'|'))
            records += QJsonDocument(recordOf(line)).toJson(QJsonDocument::Compact) + '\n';
        const QString file = m_folder->filePath("records"_s);
        support::writeFile(file, records);
        const QStringList options = words.isEmpty() ? QStringList() : words.split(u'|');
        const QByteArray page = report(options + QStringList{"--from-jsonl"_s, file}, 0);
        part.replace("\\u2212"_s, QChar(0x2212));
        QVERIFY2(page.contains(part.toUtf8()), bodyOf(m_folder->filePath("page.html"_s)));
    }

    // To renew it: OVPARSER_GOLDEN=1 tst_ovinfo_report isTheGoldenPage, and a look at what changed.
    void isTheGoldenPage()
    {
        const QString page = m_folder->filePath("page.html"_s);
        const QString examples = QStringLiteral(OVPARSER_EXAMPLES);
        const QString golden = examples + "/../tests/golden/longitudinal.html"_s;
        const Answer answer =
            run({"report"_s, "--relative-to"_s, examples, "-o"_s, page, examples + "/longitudinal"_s});
        QCOMPARE(answer.error, QString());
        QCOMPARE(answer.code, 0);
        const QByteArray body = bodyOf(page);
        if (qEnvironmentVariableIsSet("OVPARSER_GOLDEN"))
            support::writeFile(golden, body);
        const QList<QByteArray> expected = support::readFile(golden).split('\n');
        const QList<QByteArray> found = body.split('\n');
        for (int i = 0; i < found.size(); ++i)
            QCOMPARE(found.at(i), expected.value(i));
        QCOMPARE(found.size(), expected.size());
    }

    // Whatever is in the files, the page has the elements of every page, and its one script.
    void isHarmless()
    {
        const QByteArray hostile =
            "</title><script>alert(1)</script><img src=x onerror=alert(1)>\" autofocus onfocus='x' "
            "--> ]]> =cmd|' /C calc'!A0 javascript:x &lt; \x01\x1B[2J\x7F\x85 %1 %2 \xF0\x9F";
        QByteArray user, image;
        for (const char* const key : {"Group", "Animal Number", "Time Point", "Luc Injection Time", "<b>", "Comment1"})
            user += QByteArray(key) + ": " + hostile + "\n";
        for (const char* const key :
             {"Acquisition Date", "Acquisition Time", "Binning Factor", "f Number", "Field of View", "Emission filter",
              "Excitation filter", "Luminescent Exposure (Seconds)"})
            image += QByteArray(key) + ": " + hostile + "\n";
        QByteArray spectral = support::readFile(support::example("spectral/Spectral.xml"));
        spectral.replace("\"ROI 1\"", "\"&lt;script&gt;x&lt;/script&gt;&#x85;\"");
        const QString study = m_folder->filePath("<img src=x onerror=alert(1)>"_s);
        for (const char* const number : {"A", "B", "C", "D"}) {
            const QString folder = study + u'/' + QLatin1String(number);
            QVERIFY(QDir().mkpath(folder));
            const QByteArray odd = *number == 'C' ? "Emission filter: " + hostile + "2\n" : QByteArray();
            const QByteArray broken = *number == 'D' ? "\n*** <b\n" : "";
            support::writeFile(folder + "/ClickInfo.txt"_s, "*** ClickNumber: " + hostile + number +
                                                                "\nOrvane Version: " + hostile +
                                                                "\n\n*** User Input:\n" + user +
                                                                "\n*** luminescent image:\n" + image + odd + broken);
            support::writeFile(folder + "/Spectral.xml"_s, spectral);
        }
        const QString page = m_folder->filePath("page.html"_s);
        run({"report"_s, "--title"_s, QString::fromLatin1(hostile), "-o"_s, page, study});
        const QByteArray bytes = support::readFile(page);
        for (const char c : bytes)
            QVERIFY2(c == '\n' || uchar(c) >= 0x20, QByteArray::number(c));
        int scripts = 0;
        QXmlStreamReader reader(bytes);
        while (!reader.atEnd()) {
            reader.readNext();
            scripts += reader.isStartElement() && reader.name() == QLatin1String("script") ? 1 : 0;
            QVERIFY2(reader.name() != QLatin1String("img") && reader.name() != QLatin1String("b"),
                     "an element of theirs");
            for (const QXmlStreamAttribute& attribute : reader.attributes()) {
                QVERIFY2(!attribute.name().startsWith(QLatin1String("on")), "a handler of theirs");
                QVERIFY2(attribute.name() != QLatin1String("href") || attribute.value().startsWith(u'#'),
                         "a link of theirs");
            }
        }
        QVERIFY2(!reader.hasError(), qPrintable(reader.errorString()));
        QCOMPARE(scripts, 1);
        QCOMPARE(bytes.count("<a class=\"mark"), 3);
        QVERIFY(bytes.contains("<tr id=\"v") && bytes.contains("/D/ClickInfo.txt</td>"));
        QVERIFY(bytes.contains("default-src 'none'"));
    }

    // Parts in any order, with what 'check' found in them, say what the folder says; so does an index.
    void isTheSameFromRecords()
    {
        const QString study = m_folder->filePath("study"_s);
        copyStudy(study);
        QFile::remove(study + "/CameraInfo.txt"_s); // of which there are no records
        QFile::remove(study + "/SEQ20240304/ABC20240304070000/ClickInfo.txt"_s);
        support::writeFile(study + "/SEQ20240311/ABC20240311070011/ClickInfo.txt"_s, "no header");
        QStringList parts;
        for (const QString& part : {"2"_s, "1"_s}) {
            const QString place = m_folder->filePath(part);
            const QStringList shard = {"--shard"_s, part + "/2"_s, study};
            const QStringList words = {
                "study"_s,      "--recursive"_s,      "--jsonl"_s, "--column"_s, "ClickNumber/Orvane Version"_s,
                "--failures"_s, place + ".failures"_s};
            support::writeFile(place + ".study"_s, run(words + shard).bytes);
            support::writeFile(place + ".check"_s,
                               run(QStringList{"check"_s, "--recursive"_s, "--jsonl"_s} + shard).bytes);
            parts << place + ".study"_s << place + ".failures"_s << place + ".check"_s;
        }
        const QString index = m_folder->filePath("index"_s);
        run({"index"_s, "-o"_s, index, study});
        const QByteArray whole = withoutSpectra(report({study}, 1));
        QVERIFY2(whole.contains("SEQ20240304/ABC20240304070000/ClickInfo.txt") && whole.contains("header"), whole);
        QCOMPARE(withoutSpectra(report(QStringList{"--from-jsonl"_s} + parts, 0)), whole);
        const QByteArray indexed = withoutSpectra(report({"--from-index"_s, index}, 0));
        QCOMPARE(between(indexed, "timeline", "problems"), between(whole, "timeline", "problems"));
        QVERIFY(indexed.contains("were not checked"));
    }

    void leavesOtherFilesAlone_data()
    {
        QTest::addColumn<QStringList>("words");
        QTest::addColumn<QString>("error");
        const QString study = support::example("longitudinal");
        const QString sequence = study + "/SEQ20240304/SequenceInfo.txt"_s;
        support::row("a file of the study", QStringList{study, "-o"_s, sequence},
                     sequence + ": no report; left alone"_s);
        support::row("a folder", QStringList{study, "-o"_s, study}, study + ": a folder, not a file"_s);
        support::row("no such folder", QStringList{study, "-o"_s, "/no/such"_s}, "/no/such: no such folder"_s);
        support::row("no output", QStringList{study}, "report needs --output FILE"_s);
        support::row("no records", QStringList{"--from-jsonl"_s, sequence, "-o"_s, "%1"_s},
                     sequence + ": line 1 is no record"_s);
        support::row("no index", QStringList{"--from-index"_s, sequence, "-o"_s, "%1"_s},
                     sequence + ": no index; left alone"_s);
        support::row("threads for records", QStringList{"--from-jsonl"_s, sequence, "--jobs"_s, "2"_s, "-o"_s, "%1"_s},
                     "--jobs goes with folders"_s);
        support::row("records and an index", QStringList{"--from-jsonl"_s, "--from-index"_s, sequence, "-o"_s, "%1"_s},
                     "only one of --from-jsonl and --from-index; see 'ovinfo report --help'"_s);
    }

    void leavesOtherFilesAlone()
    {
        QFETCH(QStringList, words);
        QFETCH(QString, error);
        words.replaceInStrings("%1"_s, m_folder->filePath("page"_s));
        const QByteArray before = support::readFile(support::example("longitudinal/SEQ20240304/SequenceInfo.txt"));
        const Answer answer = run(QStringList{"report"_s} + words);
        QVERIFY(answer.code != 0);
        QCOMPARE(answer.error, "ovinfo: "_s + error + u'\n');
        QCOMPARE(support::readFile(support::example("longitudinal/SEQ20240304/SequenceInfo.txt")), before);
    }

    // The groups of very many acquisitions have pages of their own, which lead back.
    void dividesALargeStudy()
    {
        QByteArray lines;
        for (int i = 0; i < 10001; ++i)
            lines += QJsonDocument(recordOf("%1 %2 01 09:00 L 60 - -"_s.arg(i % 2 ? "G"_s : "H"_s).arg(i)))
                         .toJson(QJsonDocument::Compact) +
                     '\n';
        support::writeFile(m_folder->filePath("lines"_s), lines);
        const QByteArray whole = report({"--from-jsonl"_s, m_folder->filePath("lines"_s)}, 0);
        QVERIFY(whole.contains("<a href=\"./page-1.html\">G</a>: 5000 animals") && !whole.contains("class=\"lane\""));
        const QByteArray part = support::readFile(m_folder->filePath("page-2.html"_s));
        QCOMPARE(part.count("<a class=\"mark"), 5001);
        QVERIFY(part.contains("<a href=\"./page.html\">") && part.contains("<h1>Study report: H</h1>"));
    }

private:
    /** The record of a line of finds_data() or shows_data(). */
    static QJsonObject recordOf(const QString& line)
    {
        static int number = 0;
        QStringList words = line.split(u' ');
        for (QString& word : words)
            word = word == "-"_s ? QString() : word.replace(u'_', u' ');
        const QJsonObject labels = {{"Group"_s, words[0]},
                                    {"Animal Number"_s, words[1]},
                                    {"Luc Injection Time"_s, words[6]},
                                    {"Time Point"_s, words[7]}};
        QJsonObject record = {{"kind"_s, "acquisition"_s},
                              {"path"_s, "%1/ClickInfo.txt"_s.arg(++number)},
                              {"clickNumber"_s, QString::number(number)},
                              {"date"_s, words[2].isEmpty() ? QString() : "2024-03-"_s + words[2]},
                              {"time"_s, words[3].size() == 5 ? words[3] + ":00"_s : words[3]},
                              {"mainImage"_s, words[4] == "L"_s ? "luminescent"_s : "photograph"_s},
                              {"exposureSeconds"_s, words[5].toDouble()},
                              {"labels"_s, labels}};
        for (const QString& member : words.mid(8))
            record[member.section(u'=', 0, 0)] = member.section(u'=', 1);
        return record;
    }

    /** What a report finds, as a test states it. */
    static QString told(const StudyReport& report)
    {
        QStringList lines;
        for (const ReportedGroup& group : report.groups) {
            for (const ReportedSubject& subject : group.subjects) {
                for (const Gap& gap : subject.gaps)
                    lines += "gap %1/%2 %3 at %4, %5 others"_s.arg(group.name, subject.name, gap.name)
                                 .arg(gap.day)
                                 .arg(gap.others);
            }
        }
        for (const Deviation& row : report.deviations) {
            const ReportedAcquisition& acquisition = report.acquisitions.at(row.acquisition);
            const ReportedGroup& group = report.groupOf(acquisition);
            lines += "%1/%2 %3 %4, commonest %5 (%6 of %7)"_s
                         .arg(group.name, group.subjects.at(acquisition.subject).name, settingName(row.setting),
                              acquisition.settings.at(row.setting), row.common)
                         .arg(row.commonCount)
                         .arg(row.outOf);
        }
        for (const MixedSetting& mixed : report.mixed)
            lines += "mixed %1: %2"_s.arg(settingName(mixed.setting), QStringList(mixed.values.keys()).join(", "_s));
        for (const ReportedLabel& label : report.labels) {
            for (const Counts& spellings : label.values) {
                if (spellings.size() > 1)
                    lines += "label %1: %2"_s.arg(label.name, QStringList(spellings.keys()).join(", "_s));
            }
        }
        return lines.join(u'|');
    }

    /** The page of a report. */
    QByteArray report(const QStringList& words, int code)
    {
        const QString page = m_folder->filePath("page.html"_s);
        QFile::remove(page);
        const Answer answer = run(QStringList{"report"_s, "-o"_s, page} + words);
        return answer.code == code ? support::readFile(page)
                                   : "code " + QByteArray::number(answer.code) + answer.error.toUtf8();
    }

    /** A page without style and script, and spelled as either Qt does. */
    static QByteArray bodyOf(const QString& page)
    {
        QByteArray body = support::readFile(page);
        body = body.mid(body.indexOf("<body>"));
        return body.left(body.indexOf("<script>")).replace("&#xA;", "&#10;");
    }

    /** A page from one section to another. */
    static QByteArray between(const QByteArray& page, const char* first, const char* last)
    {
        const auto start = page.indexOf(QByteArray("<section id=\"") + first);
        return page.mid(start, page.indexOf(QByteArray("<section id=\"") + last) - start);
    }

    static QByteArray withoutSpectra(QByteArray page)
    {
        return page.replace(between(page, "spectral", "problems"), QByteArray());
    }

    static void copyStudy(const QString& target)
    {
        const QDir source(support::example("longitudinal"));
        QDirIterator files(source.path(), QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString path = source.relativeFilePath(files.next());
            QVERIFY(QDir().mkpath(QFileInfo(target + u'/' + path).path()));
            QVERIFY(QFile::copy(source.filePath(path), target + u'/' + path));
        }
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(TestOvinfoReport)
#include "tst_ovinfo_report.moc"
