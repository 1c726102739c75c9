// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "support/Support.h"

namespace {

/** The names of the sections, joined by '|'. */
QString namesOf(const CPLBkgSummaryInfo& summary)
{
    QList<CPLSection*> sections;
    summary.getSectionList(sections);
    QStringList names;
    for (const CPLSection* const section : qAsConst(sections)) {
        QString name;
        section->getSectionName(&name, true);
        names += name;
    }
    return names.join(u'|');
}

} // namespace

class TestBkgSummaryInfo : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void reading_data()
    {
        support::textColumns({"text", "status", "names", "clickNumber"});
        support::textRow("any key", "*** Background Click: A\n*** Background Click: B\nk\n*** Other: C # c",
                         "eSTATUS_SUCCESS", "A|B|C # c", "B");
        support::textRow("word in a key", "pre\n***my background CLICK7: 1: x\r\r\nk", "eSTATUS_SUCCESS", "1: x",
                         "X1: x");
        support::textRow("key twice", "*** Other: A\n*** Other: B", "eSTATUS_SUCCESS", "A|B", "");
        support::textRow("no click number", "*** Other: A\n*** Background Click: B", "eSTATUS_EMPTY_SECTION_KEY", "A",
                         "");
        support::textRow("comment", "*** Background Click: A\n*** Background Click # x: B\n*** O: C",
                         "eSTATUS_BAD_FORMAT", "A", "A");
        support::textRow("no colon", "*** Other: A\n*** Other\nk: v", "eSTATUS_BAD_FORMAT", "A", "");
    }

    void reading()
    {
        QFETCH(QString, text);
        const tag_estatus status = CPLBkgSummaryInfo().loadTextBuffer(text);
        QTEST(getStatusString(status), "status");
        CPLBkgSummaryInfo summary;
        QCOMPARE(summary.load(file(text)), eSTATUS_SUCCESS);
        QTEST(namesOf(summary), "names");
        QString number;
        summary.getClickNumber(&number);
        QTEST(number, "clickNumber");
        const int count = int(namesOf(summary).count(u'|')) + 1;
        QCOMPARE(summary.getSection("BACKGROUND CLICK%1"_s.arg(count)), summary[count - 1]);
        QCOMPARE(summary.getFileSectionCount(), status == eSTATUS_SUCCESS ? count : 0);
    }

    void normalisesTime()
    {
        const QStringList times = {"7:3:9"_s,  "07:03:09"_s, "5"_s,        "05"_s,
                                   ":1:: 3"_s, ":01:: 3"_s,  "7:3  # x"_s, "07:03\t# x"_s};
        for (int i = 0; i < times.size(); i += 2) {
            CPLBkgSummaryInfo summary;
            summary.loadTextBuffer("*** Other: A\ntime: "_s + times.at(i));
            QString stored;
            summary[0]->getRawValue("Time"_s, &stored);
            QCOMPARE(stored, times.at(i + 1));
            // A section that is held already stays as it is.
            summary[0]->setValue("Time"_s, "8:4"_s);
            QCOMPARE(summary.loadTextBuffer("*** Other: A\ntime: "_s + times.at(i)), eSTATUS_SUCCESS);
            QCOMPARE((*summary[0])["Time"_s], "8:4"_s);
        }
    }

    void indexes_data()
    {
        support::textColumns({"text", "keys", "names", "pairs"});
        support::textRow("nothing is trimmed", "lead***structure REFERENCE: A # x; k :v: w ;;no pair;:none;K: ;\r\n",
                         "Structure reference1", "A", "structure REFERENCE| k |K= A # x|v: w | ");
        support::textRow("only references are numbered",
                         "***k: v; Structure reference: no\n*** Structure reference:B\n***\n"
                         "*** Structure reference:C",
                         "Structure reference1|Structure reference2", "B\n|C", "Structure reference=B\n");
        support::textRow("a line without the mark ends it", "*** Structure reference:A;\n\n*** Structure reference:B;",
                         "Structure reference1", "A", "Structure reference=A");
        support::textRow("other kind", "*** Fluorescent reference:A", "", "", "=");
    }

    void indexes()
    {
        QFETCH(QString, text);
        CPLBkgSummaryInfo index;
        QCOMPARE(index.SLload(file(text)), eSTATUS_SUCCESS);
        QTEST(support::sectionsOf(index), "keys");
        QTEST(namesOf(index), "names");
        QStringList values;
        if (index[0])
            index[0]->getRawValueList(&values);
        QTEST(support::keysOf(index[0]) + u'=' + values.join(u'|'), "pairs");
    }

    void loadsAnew()
    {
        const QString sample = support::example("background/BkgSummary.txt");
        const QString saved = m_folder.filePath("Saved.txt"_s);
        CPLBkgSummaryInfo summary;
        for (int i = 0; i < 2; ++i)
            QCOMPARE(summary.load(sample), eSTATUS_SUCCESS);
        QCOMPARE(summary.load(saved), eSTATUS_FILE_OPEN_FAILED);
        QCOMPARE(summary.SLload(saved), eSTATUS_FILE_OPEN_FAILED);
        QCOMPARE(summary.getFileSectionCount(), 2);
        QCOMPARE(summary.save(saved), eSTATUS_SUCCESS);
        QByteArray expected = support::readFile(sample).replace("\t7:1:2", "\t07:01:02");
        expected.insert(expected.indexOf("Click:") + 5, '1');
        expected.insert(expected.indexOf("Click:") + 5, '2');
        QCOMPARE(support::readFile(saved), expected);
        QCOMPARE(summary.SLload(support::example("background/SLindex.txt")), eSTATUS_SUCCESS);
        QCOMPARE(namesOf(summary), "SL_A_20240301|SL_B_20240301"_s);
        QCOMPARE(summary.FLload(support::example("background/FLindex.txt")), eSTATUS_SUCCESS);
        QCOMPARE(support::sectionsOf(summary), "Fluorescent reference1"_s);
        QCOMPARE(summary.getFileSectionCount(), 0);
    }

    void sections()
    {
        CPLBkgSummaryInfo summary;
        for (const QString& text : {""_s, "x\nk: v"_s, "x#: A"_s}) {
            QString block = text;
            QCOMPARE(summary.loadSectionData(block, "K"_s), eSTATUS_BAD_FORMAT);
        }
        summary.load(support::example("background/BkgSummary.txt"));
        const CPLBkgSummaryInfo copy(summary);
        QCOMPARE(summary.removeSection("background click1"_s), eSTATUS_SUCCESS);
        CPLSection stranger;
        QList<CPLSection*> list = {&stranger};
        summary.getSectionList(list);
        QCOMPARE(list, QList<CPLSection*>{summary.getSection("Background Click2"_s)});
        QCOMPARE(namesOf(copy), "BKG20240301070102|BKG20240302070000"_s);
        QCOMPARE(summary.save(m_folder.path()), eSTATUS_SUCCESS);
    }

private:
    QString file(const QString& text) const
    {
        QString path = m_folder.filePath("Catalogue.txt"_s);
        support::writeFile(path, text.toLatin1());
        return path;
    }

    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(TestBkgSummaryInfo)
#include "tst_plbkgsummaryinfo.moc"
