// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "support/Support.h"

class TestSequenceInfo : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void loadsTheSample()
    {
        const QString file = support::example("study/SEQ20240305/SequenceInfo.txt");
        CPLSequenceInfo sequence;
        QCOMPARE(sequence.loadFile(file), eSTATUS_SUCCESS);
        QCOMPARE(sequence.getNumDatasets(), 3);
        QCOMPARE(sequence.getDatasetName(), "Dose response, day 3"_s);
        QCOMPARE(sequence.getFileSectionCount(), 4);
        QCOMPARE(sequence.getSequenceInfoPath(), support::example("study/SEQ20240305/"));
        QCOMPARE(sequence.getDatasetPath(0), support::example("study/SEQ20240305/ABC20240305091502/ClickInfo.txt"));
        for (int i = 0; i < sequence.getNumDatasets(); ++i)
            QVERIFY(QFile::exists(sequence.getDatasetPath(i)));
        QVERIFY(sequence.getDatasetPath(-1).isEmpty() && sequence.getDatasetPath(3).isEmpty());
    }

    void loadStatus_data()
    {
        QTest::addColumn<QByteArray>("graph");
        QTest::addColumn<tag_estatus>("status");
        support::row("not marked", QByteArray(), eSTATUS_NO_CLICK_NUMBERS);
        support::row("marked", QByteArray("*** Graph Controls:\nEmpty Sequence: 1"), eSTATUS_EMPTY_SEQUENCE);
        support::row("zero", QByteArray("*** Graph Controls:\nEmpty Sequence: 0"), eSTATUS_NO_CLICK_NUMBERS);
        support::row("no number", QByteArray("*** Graph Controls:\nEmpty Sequence: yes"), eSTATUS_NO_CLICK_NUMBERS);
        support::row("other letter case", QByteArray("*** graph controls:\nEmpty Sequence: 1"),
                     eSTATUS_NO_CLICK_NUMBERS);
    }

    void loadStatus()
    {
        QFETCH(QByteArray, graph);
        CPLSequenceInfo sequence;
        QTEST(load(sequence, "*** Sequence: S\nk: v\n" + graph), "status");
        QCOMPARE(sequence.getDatasetName(), "S"_s);
        QCOMPARE(sequence.getNumDatasets(), 0);
    }

    void reading_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("keys");
        QTest::addColumn<QString>("clicks");
        QTest::addColumn<QString>("name");
        const QByteArray numbers = "*** ClickNumbers:\n# none\nfirst: A1 # x\nother: B2\n";
        support::row("text before and inside", "lead\n" + numbers + "k: *** Sequence: S\nx: y\n",
                     "ClickNumbers|Sequence"_s, "A1|B2|"_s, "S"_s);
        support::row("last of a key is interpreted", numbers + "*** Sequence: S # old\n\n*** ClickNumbers:\nn: C3\n",
                     "ClickNumbers|Sequence"_s, "C3"_s, "S"_s);
        support::row("comment before the colon", numbers + "*** Sequence # x: S\nk: v\n", "ClickNumbers|Sequence # x"_s,
                     "A1|B2"_s, ""_s);
        support::row("no line end", numbers + "*** Sequence: S", "ClickNumbers|Sequence"_s, "A1|B2"_s, ""_s);
        support::row("empty key", "*** : S\n" + numbers, "ClickNumbers"_s, "A1|B2"_s, ""_s);
        support::row("colon after the next mark", "*** A\n" + numbers, "A\n*** ClickNumbers|ClickNumbers"_s, "A1|B2"_s,
                     ""_s);
        const QByteArray far(150, 'b');
        support::row("colon far after the next mark", "*** A\n*** B\n" + far + "\n" + numbers,
                     "B\n"_s + QString::fromLatin1(far) + "\n*** ClickNumbers|ClickNumbers"_s, "A1|B2"_s, ""_s);
        support::row("no further colon", numbers + "*** Sequence\nk v\n", "ClickNumbers"_s, "A1|B2"_s, ""_s);
        support::row("CR line ends", QByteArray(numbers + "*** Sequence: S\n").replace('\n', '\r'),
                     "ClickNumbers|Sequence"_s, "A1|B2"_s, "S"_s);
        support::row("CR in a key", "*** A\rB: n\rk: v\r" + numbers, "A\rB|ClickNumbers"_s, "A1|B2"_s, ""_s);
        support::row("NUL", QByteArray("*** ClickNumbers:\na: A\0B\nc: D\n", 29), "ClickNumbers"_s,
                     "A"_s + QChar(0) + "B|D"_s, ""_s);
    }

    void reading()
    {
        QFETCH(QByteArray, text);
        CPLSequenceInfo sequence;
        QCOMPARE(load(sequence, text), eSTATUS_SUCCESS);
        QTEST(support::sectionsOf(sequence), "keys");
        QTEST(sequence.getClickNumberList().join(u'|'), "clicks");
        QTEST(sequence.getDatasetName(), "name");
    }

    void manyMarksBeforeOneColon()
    {
        CPLSequenceInfo sequence;
        QCOMPARE(load(sequence, "*** ClickNumbers:\na: A\n" + QByteArray("*** ").repeated(500000) + ":"),
                 eSTATUS_SUCCESS);
        QVERIFY(support::sectionsOf(sequence).size() < 10000);
    }

    void encodings_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        support::row("UTF-8", QByteArray("*** S\xC3\xA9:\tN\xC3\xA9\r\nk\xC3\xA9:\tv\r\n"));
        support::row("Latin-1", QByteArray("*** S\xE9:\tN\xE9\r\nk\xE9:\tv\r\n"));
    }

    void encodings()
    {
        QFETCH(QByteArray, bytes);
        CPLSequenceInfo sequence;
        QCOMPARE(load(sequence, bytes), eSTATUS_NO_CLICK_NUMBERS);
        const CPLSection* const section = sequence["S\u00e9"_s];
        QVERIFY(section);
        QCOMPARE((*section)["k\u00e9"_s], "v"_s);
        const QString file = m_folder.filePath("saved.txt"_s);
        QCOMPARE(sequence.saveFile(file), eSTATUS_SUCCESS);
        const QByteArray written = "*** S\xE9:\tN\xE9\r\nk\xE9:\tv\r\n\r\n\r\n\r\n";
        QCOMPARE(support::readFile(file), written);
        QCOMPARE(sequence.loadFile(file), eSTATUS_NO_CLICK_NUMBERS);
        QCOMPARE(sequence.saveFile(file), eSTATUS_SUCCESS);
        QCOMPARE(support::readFile(file), written);
    }

    void reloading()
    {
        CPLSequenceInfo sequence;
        QCOMPARE(load(sequence, "*** Sequence: S\n\n*** ClickNumbers:\na: A\n"), eSTATUS_SUCCESS);
        QCOMPARE(sequence.loadFile(QString()), eSTATUS_INVALID_ARGUMENT);
        QCOMPARE(support::sectionsOf(sequence), "Sequence|ClickNumbers"_s);
        // What a new file does not set stays.
        QCOMPARE(load(sequence, "*** Other: x\n"), eSTATUS_SUCCESS);
        QCOMPARE(support::sectionsOf(sequence), "Other"_s);
        QCOMPARE(sequence.getDatasetName(), "S"_s);
        QCOMPARE(sequence.getClickNumberList(), QStringList{"A"_s});
        QCOMPARE(sequence.loadFile(m_folder.filePath("absent"_s)), eSTATUS_FILE_NOT_FOUND);
        QCOMPARE(support::sectionsOf(sequence), ""_s);
        QCOMPARE(sequence.getFileSectionCount(), 0);
        QCOMPARE(sequence.loadFile(m_folder.path()), eSTATUS_FILE_READ_FAILED);
    }

    void clickNumbers()
    {
        CPLSequenceInfo sequence;
        sequence.setSequenceInfoPath("seq/"_s);
        sequence.addClickNumber("A"_s);
        sequence.addSection(new CPLSection("ClickNumbers"_s, ""_s));
        sequence.addClickNumber("B"_s);
        sequence.addClickNumber("A"_s);
        const CPLSection& section = *sequence["ClickNumbers"_s];
        QCOMPARE(support::keysOf(&section), "ClickNumber 2|ClickNumber 3"_s);
        QCOMPARE(sequence.getDatasetPath(1), "seq/B/ClickInfo.txt"_s);
        QVERIFY(!sequence.removeClickNumber("b"_s));
        QCOMPARE(support::keysOf(&section), "ClickNumber 2|ClickNumber 3"_s);
        QVERIFY(sequence.removeClickNumber("A"_s));
        QCOMPARE(sequence.getClickNumberList(), (QStringList{"B"_s, "A"_s}));
        QCOMPARE(support::keysOf(&section), "ClickNumber 1|ClickNumber 2"_s);
        QCOMPARE(section[0] + section[1], "BA"_s);
        QCOMPARE(sequence.getNumDatasets(), 2);
        sequence.clearSequenceList();
        QCOMPARE(sequence.getNumDatasets(), 0);
        QCOMPARE(section.count(), 0);
        QVERIFY(sequence.isSectionPresent("ClickNumbers"_s));
    }

    void sections()
    {
        CPLSequenceInfo sequence;
        CPLSection nameless;
        QCOMPARE(sequence.addSection(nullptr), eSTATUS_NULL_ARGUMENT);
        QCOMPARE(sequence.addSection(&nameless), eSTATUS_EMPTY_SECTION_KEY);
        sequence.addSection(new CPLSection("A"_s, ""_s));
        sequence.addSection(new CPLSection("a"_s, ""_s));
        CPLSection second("A"_s, ""_s);
        QCOMPARE(sequence.addSection(&second), eSTATUS_SUCCESS);
        QCOMPARE(support::sectionsOf(sequence), "A|a"_s);
        QVERIFY(!sequence[-1] && !sequence[2] && !sequence["b"_s]);
        QCOMPARE(sequence.removeSection("b"_s), eSTATUS_NULL_ARGUMENT);
        QCOMPARE(sequence.removeSection("A"_s), eSTATUS_SUCCESS);
        QCOMPARE(support::sectionsOf(sequence), "a"_s);
        sequence.addRestoreResult(""_s, "1"_s);
        sequence.addRestoreResult("k"_s, ""_s);
        QVERIFY(!sequence.isSectionPresent("Restore Results"_s));
        sequence.addRestoreResult("k"_s, "1"_s);
        sequence.addRestoreResult("K"_s, "2"_s);
        QCOMPARE(support::keysOf(sequence["Restore Results"_s]), "k"_s);
        QCOMPARE((*sequence["Restore Results"_s])["k"_s], "2"_s);
    }

    void newSequence()
    {
        CPLSequenceInfo sequence;
        sequence.setSeqDatasetName("Day 3"_s);
        QCOMPARE(sequence.addSequenceNumberSection("4.9"_s), eSTATUS_SUCCESS);
        QCOMPARE(sequence.addSeqUserSection(eIMAGE_OVERLAY, "ABC"_s), eSTATUS_SUCCESS);
        QCOMPARE(sequence.addSeqUserSection(eIMAGE_XRAY, "DEF"_s), eSTATUS_SUCCESS);
        QCOMPARE(support::sectionsOf(sequence), "Sequence|User Input|User Label Name Set"_s);
        const CPLSection& head = *sequence["Sequence"_s];
        QCOMPARE(support::keysOf(&head), "Orvane Version|Folder On Disk|ClickInfoType"_s);
        QVERIFY(head["Orvane Version"_s].startsWith("4.9 ("_s));
        QCOMPARE(head["ClickInfoType"_s], "SingleClickAnalysis"_s);
        const CPLSection& user = *sequence["User Input"_s];
        QCOMPARE(user["User ID"_s] + user["Display Type"_s], "ABCOverlay"_s);
        QCOMPARE(sequence["User Label Name Set"_s]->count(), 16);
        CPLSequenceInfo labels;
        QCOMPARE(labels.appendUserSpecificSections(true), eSTATUS_SUCCESS);
        QCOMPARE(support::sectionsOf(labels), "User Label Name Set|User Input"_s);
        QVERIFY(support::keysOf(labels["User Input"_s]).startsWith("User|Group|"_s));
    }

    void copiesAreDeep()
    {
        auto source = std::make_unique<CPLSequenceInfo>();
        QCOMPARE(load(*source, "*** ClickNumbers:\na: A\n"), eSTATUS_SUCCESS);
        CPLSequenceInfo copy(*source);
        CPLSequenceInfo assigned;
        assigned.addSection(new CPLSection("Old"_s, ""_s));
        assigned = *source;
        source->clearSequenceList();
        source.reset();
        for (const CPLSequenceInfo* const sequence : {&copy, &assigned}) {
            QCOMPARE(sequence->getDatasetPath(0), m_folder.filePath("A/ClickInfo.txt"_s));
            QCOMPARE(support::sectionsOf(*sequence), "ClickNumbers"_s);
            QCOMPARE((*sequence)["ClickNumbers"_s]->count(), 1);
        }
    }

    void unusualPaths()
    {
        CPLSequenceInfo sequence;
        QCOMPARE(sequence.loadFile("no folder"_s), eSTATUS_FILE_NOT_FOUND);
        QCOMPARE(sequence.getSequenceInfoPath(), ""_s);
        const QByteArray text = "*** ClickNumbers:\na: A\n";
        const QString accented = m_folder.filePath("S\u00e9quence.txt"_s);
        for (const QByteArray& name : {accented.toLatin1(), accented.toUtf8()}) {
            QFile::remove(accented);
            const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(name.constData(), "wb"),
                                                                       &std::fclose);
            QVERIFY(file);
            QCOMPARE(std::fwrite(text.constData(), 1, std::size_t(text.size()), file.get()), std::size_t(text.size()));
            std::fflush(file.get());
            QCOMPARE(sequence.loadFile(accented), eSTATUS_SUCCESS);
            std::remove(name.constData());
        }
    }

    void saving()
    {
        CPLSequenceInfo sequence;
        const QString file = m_folder.filePath("out.txt"_s);
        QCOMPARE(sequence.loadFile(support::example("study/SEQ20240305/SequenceInfo.txt")), eSTATUS_SUCCESS);
        QCOMPARE(sequence.saveFile(file), eSTATUS_SUCCESS);
        // A comment on a header line is not part of a sequence's section name.
        QCOMPARE(support::readFile(file),
                 support::readFile(support::example("study/SEQ20240305/SequenceInfo.txt")).replace("\t# pilot", ""));
    }

private:
    tag_estatus load(CPLSequenceInfo& sequence, const QByteArray& text)
    {
        const QString file = m_folder.filePath("SequenceInfo.txt"_s);
        support::writeFile(file, text);
        return sequence.loadFile(file);
    }

    QTemporaryDir m_folder;
};

QTEST_APPLESS_MAIN(TestSequenceInfo)
#include "tst_plsequenceinfo.moc"
