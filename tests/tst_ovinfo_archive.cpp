// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "support/Ovinfo.h"
#include "support/Support.h"

#include <QtCore/QDir>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QProcess>

#include <clocale>

/** Archives: study with its options, shards and their merge, index and query. */
class TestOvinfoArchive : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    // Two sequences, an acquisition in none, one that is missing, and one that is not to be opened.
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_archive = m_folder->filePath("archive"_s);
        const QByteArray image = "*** luminescent image: a.TIF # raw\nField of View: 12.5 # cm\n# note\nEmpty:\n\n";
        const QByteArray user = "*** User Input:\nGroup: =1+1\nCage: 7\n\n";
        write("s1/SequenceInfo.txt", "*** Sequence: S\n*** ClickNumbers:\n1: B\n2: A\n3: ..\n4: missing\n");
        write("s1/A/ClickInfo.txt", "*** ClickNumber: A\nk: v\n\n" + user + image);
        write("s1/B/ClickInfo.txt", "*** ClickNumber: B\nk: v\n\n");
        write("s1/B/AnalyzedClickInfo.txt", "*** ClickNumber: B\nk: w\n\n");
        write("s1/B/scan.dcm", QByteArray(128, '\0') + "DICM\xFF*** ClickNumber: D\nk: v\n");
        write("s1/B/bare.dcm", QByteArray(128, '\0') + "DICM");
        write("s1/.hidden/x/ClickInfo.txt", image);
        write("s2/SequenceInfo.txt", "*** Sequence: T\n*** ClickNumbers:\n1: C\n");
        write("s2/C/ClickInfo.txt", "no header");
        write("ClickInfo.txt", "*** ClickNumber: outside\nk: v\n");
        QVERIFY(QFile::link(m_archive + "/s2"_s, m_archive + "/link"_s));
    }

    void tellsKindsColumnsAndSections()
    {
        const QStringList words = {"study"_s, "--recursive"_s, "--jsonl"_s,
                                   "--all"_s, "--column"_s,    "luminescent IMAGE/field of view"_s};
        const QList<QJsonObject> records = recordsOf(run(words + QStringList{m_archive}).output);
        QStringList told;
        for (const QJsonObject& record : records)
            told += record["kind"_s].toString() + u' ' + record["clickNumber"_s].toString();
        QCOMPARE(told.join(u','), "acquisition outside,acquisition B,analyzed B,dicom D,acquisition A,acquisition x"_s);
        QCOMPARE(records.at(4)["luminescent IMAGE/field of view"_s], QJsonValue("12.5"_s));
        QVERIFY(records.at(0)["luminescent IMAGE/field of view"_s].isNull());
        const QJsonObject section = records.at(4)["sections"_s][2].toObject();
        QCOMPARE(section["comment"_s], QJsonValue("# raw"_s));
        QCOMPARE(section["entries"_s][1]["comment"_s], QJsonValue("# note"_s));
    }

    void opensOnlyPlainClickNumbers()
    {
        const QString list = m_folder->filePath("failures"_s);
        const Answer answer = run({"study"_s, "--failures"_s, list, m_archive + "/s1"_s});
        QCOMPARE(answer.code, 1);
        QVERIFY2(!answer.output.contains("outside"_s), qPrintable(answer.output));
        QVERIFY2(answer.error.contains("2 failures"_s), qPrintable(answer.error));
        const QList<QJsonObject> failures = recordsOf(QString::fromUtf8(support::readFile(list)));
        QCOMPARE(int(failures.size()), 2);
        QCOMPARE(failures.at(0)["schema"_s], QJsonValue("ovinfo-failure/1"_s));
        QVERIFY(failures.at(0)["problem"_s].toString().contains("'..'"_s));
    }

    void makesCsvForSpreadsheets()
    {
        const QStringList words = {"study"_s, "--csv"_s, m_archive + "/s1"_s};
        const QString exact = run(words).output;
        QVERIFY2(exact.contains(",kind,Cage\r\n"_s) && exact.contains(",acquisition,7\r\n"_s), qPrintable(exact));
        QVERIFY(exact.startsWith("path"_s) && exact.contains(",=1+1,"_s));
        const QByteArray guarded = run(words + QStringList{"--spreadsheet"_s}).bytes;
        QVERIFY2(guarded.startsWith("\xEF\xBB\xBFpath,") && guarded.contains(",'=1+1,"), guarded.constData());
    }

    void followsNoLinkAndTellsRelativePaths()
    {
        QVERIFY(QDir(m_archive).rename("s1/A"_s, "elsewhere"_s));
        QVERIFY(QFile::link(m_archive + "/elsewhere"_s, m_archive + "/s1/A"_s));
        const Answer answer = run({"study"_s, "--recursive"_s, "--jsonl"_s, "--no-follow"_s, "--relative-to"_s,
                                   m_archive + "/s1"_s, m_archive});
        QVERIFY2(answer.error.contains("ovinfo: A/ClickInfo.txt: a link; not followed\n"_s), qPrintable(answer.error));
        QCOMPARE(recordsOf(answer.output).at(1)["path"_s], QJsonValue("../elsewhere/ClickInfo.txt"_s));
    }

    void shardsMakeUpTheWhole_data()
    {
        QTest::addColumn<QStringList>("folders");
        support::row("one folder", QStringList{"."_s});
        support::row("folders in no order", QStringList{"s2"_s, "absent"_s, "s1"_s});
        support::row("a folder and one above", QStringList{"s1/B"_s, "../archive"_s});
    }

    void shardsMakeUpTheWhole()
    {
        QFETCH(QStringList, folders);
        QVERIFY(QDir::setCurrent(m_archive));
        const QStringList study = QStringList{"study"_s, "--recursive"_s, "--jsonl"_s, "--failures"_s};
        const QStringList index = QStringList{"index"_s, "-o"_s};
        const QString place = m_folder->path() + u'/';
        QStringList records, failures, indexes;
        for (const QString& part : {"3"_s, "1"_s, "2"_s}) {
            const QStringList shard = folders + QStringList{"--shard"_s, part + "/3"_s};
            failures += place + "failures"_s + part;
            records += place + "records"_s + part;
            indexes += place + "index"_s + part;
            support::writeFile(records.last(), run(study + QStringList{failures.last()} + shard).output.toUtf8());
            run(index + QStringList{indexes.last()} + shard);
        }
        const Answer whole = run(study + QStringList{place + "failures"_s} + folders);
        QCOMPARE(run(QStringList{"study"_s, "--merge"_s} + records).output, whole.output);
        QCOMPARE(run(QStringList{"study"_s, "--merge"_s} + failures).output.toUtf8(),
                 support::readFile(place + "failures"_s));
        QCOMPARE(run(QStringList{"study"_s, "--merge"_s, "--csv"_s} + records).output,
                 run(QStringList{"study"_s, "--recursive"_s, "--csv"_s} + folders).output);
        run(index + QStringList{place + "whole"_s} + folders);
        QCOMPARE(run(index + QStringList{place + "merged"_s, "--merge"_s} + indexes).code, 0);
        QVERIFY(support::readFile(place + "whole"_s).startsWith("SQLite"));
        QVERIFY(support::readFile(place + "merged"_s) == support::readFile(place + "whole"_s));
    }

    void refusesPartsThatAreNone()
    {
        const QString part = m_folder->filePath("part"_s);
        support::writeFile(part, "{\"path\":\"a\"}\n{\"path\":\"b");
        const Answer answer = run({"study"_s, "--merge"_s, part});
        QCOMPARE(answer.code, 1);
        QVERIFY2(answer.error.contains("part: line 2 is no record"_s), qPrintable(answer.error));
        QCOMPARE(run({"index"_s, "--merge"_s, "-o"_s, m_folder->filePath("x"_s), part}).code, 1);
        QVERIFY(!QFile::exists(m_folder->filePath("x"_s)));
    }

    // After each change the index is what a new one would be.
    void bringsAnIndexUpToDate()
    {
        const auto check = [&](const char* change, int code = 1) {
            const QString kept = m_folder->filePath("kept"_s);
            const QString fresh = m_folder->filePath("fresh"_s);
            QFile::remove(fresh);
            QCOMPARE(run({"index"_s, "-o"_s, kept, m_archive}).code, code); // failures are told each time
            run({"index"_s, "-o"_s, fresh, m_archive});
            QVERIFY2(support::readFile(kept) == support::readFile(fresh), change);
        };
        check("new");
        check("unchanged");
        write("s1/A/ClickInfo.txt", "*** ClickNumber: A\nkey: longer value\n");
        check("a file");
        write("s1/SequenceInfo.txt", "*** Sequence: renamed\n*** ClickNumbers:\n1: B\n2: A\n");
        check("a sequence");
        write("s1/B/b.dcm", QByteArray(128, '\0') + "DICM\xFF*** ClickNumber: E\nk: v\n");
        check("one more file in a sequence");
        write("s1/A/ClickInfo.txt", "*** ClickNumber: A\nk: v\n");
        write("s2/C/c.dcm", QByteArray(128, '\0') + "DICM\xFF*** ClickNumber: F\nk: v\n");
        check("a file, and one more after it");
        write("s1/B/ClickInfo.txt", "*** ClickNumber: B\nkey: longer value\n");
        QVERIFY(QFile::remove(m_archive + "/s2/C/c.dcm"_s));
        check("a file, and the last one gone");
        write(".before/ClickInfo.txt", "*** ClickNumber: N\nk: v\n");
        check("a folder before all others");
        QVERIFY(QFile::remove(m_archive + "/s1/SequenceInfo.txt"_s));
        check("no sequence");
        QVERIFY(QDir(m_archive + "/s1"_s).removeRecursively());
        check("gone");
        write("s2/C/ClickInfo.txt", "*** ClickNumber: C\nk: v\n");
        check("put right", 0);
        const QStringList left = QDir(m_folder->path()).entryList(QDir::Files);
        QCOMPARE(left.join(u','), "fresh,kept"_s);
    }

    void leavesAloneWhatIsNoIndex_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        support::row("empty", QByteArray());
        support::row("text", QByteArray("notes"));
        support::row("damaged", QByteArray("SQLite format 3\0 and then nothing", 34));
    }

    void leavesAloneWhatIsNoIndex()
    {
        QFETCH(QByteArray, bytes);
        const QString path = m_folder->filePath("file"_s);
        support::writeFile(path, bytes);
        QCOMPARE(run({"index"_s, "-o"_s, path, m_archive}).code, 1);
        QCOMPARE(run({"query"_s, path, "a"_s, "b"_s}).code, 1);
        QTEST(support::readFile(path), "bytes");
    }

    void answersQueries()
    {
        const QString index = m_folder->filePath("index"_s);
        run({"index"_s, "-o"_s, index, "--relative-to"_s, m_archive, m_archive});
        const QStringList query = {"query"_s, "--csv"_s, index, "Luminescent Image"_s, "field of view"_s};
        const QString head = "clickNumber,kind,path,Luminescent Image/field of view"_s;
        const QString hidden = "x,acquisition,s1/.hidden/x/ClickInfo.txt,12.5\r\n"_s;
        const QString a = "A,acquisition,s1/A/ClickInfo.txt,12.5"_s;
        QCOMPARE(run(query).output, head + "\r\n"_s + a + "\r\n"_s + hidden);
        QCOMPARE(run(query + QStringList{"User Input"_s, "Cage"_s, "--where"_s, "user input/cage<8"_s}).output,
                 head + ",User Input/Cage\r\n"_s + a + ",7\r\n"_s);
        QCOMPARE(run(query + QStringList{"--where"_s, "User Input/Cage>7"_s}).output, head + "\r\n"_s);
        QCOMPARE(run(query + QStringList{"--where"_s, "User Input/Cage>x"_s}).code, 2);
        QCOMPARE(run(query + QStringList{"User Input"_s}).code, 2);
    }

private:
    static QList<QJsonObject> recordsOf(const QString& text)
    {
        QList<QJsonObject> records;
        const QStringList lines = text.split(u'\n');
        for (const QString& line : lines) {
            if (!line.isEmpty())
                records += QJsonDocument::fromJson(line.toUtf8()).object();
        }
        return records;
    }

    void write(const char* path, const QByteArray& bytes) const
    {
        const QString file = m_archive + u'/' + QLatin1String(path);
        QVERIFY(QDir().mkpath(QFileInfo(file).path()));
        support::writeFile(file, bytes);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_archive;
};

// Words are passed to the program in the locale's encoding.
int main(int argc, char* argv[])
{
    qputenv("LC_ALL", "C.UTF-8");
    std::setlocale(LC_ALL, "C.UTF-8");
    const QCoreApplication application(argc, argv);
    TestOvinfoArchive test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_ovinfo_archive.moc"
