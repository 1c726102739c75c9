// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "support/Support.h"

#include <limits>
#include <new>

namespace {

bool outOfMemory = false;

} // namespace

// The library asks for its objects with this form of new, so that a test can refuse them.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return outOfMemory ? nullptr : ::operator new(size);
}

namespace {

QString valuesOf(const CPLPreferenceKey& key)
{
    QString text;
    key.getSaveBuffer(&text);
    return text;
}

/** The save buffers of a list's keys, joined by '|'. */
QString valuesOf(const CPLPreferenceKeyList& list)
{
    QStringList texts;
    for (int i = 0; const CPLPreferenceKey* key = list[i]; ++i)
        texts += valuesOf(*key);
    return texts.join(u'|');
}

} // namespace

class TestPreferenceKeyList : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void saveBuffers()
    {
        CPLPreferenceKey key;
        for (const QString& text : {"Smith;Jones;"_s, "a;;b;"_s, "a;b"_s, "a"_s}) {
            key.loadData(text);
            QCOMPARE(valuesOf(key), text.left(text.lastIndexOf(u';') + 1));
            int count = -1;
            key.getCount(&count);
            QCOMPARE(count, text.count(u';'));
        }
    }

    void values()
    {
        CPLPreferenceKey key;
        QCOMPARE(key.addValue(""_s), eSTATUS_INVALID_VALUE);
        QCOMPARE(key.moveDown(0), eSTATUS_INVALID_VALUE);
        for (const char value : {'a', 'A', 'a', 'b', 'c', 'd'})
            QCOMPARE(key.addValue(QString(QLatin1Char(value))), eSTATUS_SUCCESS);
        QCOMPARE(key.deleteValue("a"_s), eSTATUS_SUCCESS);
        QCOMPARE(key.deleteValue("a"_s), eSTATUS_INVALID_VALUE);
        QCOMPARE(key.moveUp(2), eSTATUS_SUCCESS);
        QCOMPARE(key.moveDown(2), eSTATUS_SUCCESS);
        QCOMPARE(valuesOf(key), "A;c;d;b;"_s);
        QCOMPARE(key.moveUp(0), eSTATUS_INVALID_VALUE);
        QCOMPARE(key.moveDown(3), eSTATUS_INVALID_VALUE);
        QString value = "old"_s;
        for (const unsigned index : {4U, std::numeric_limits<unsigned>::max()}) {
            QCOMPARE(key.moveUp(index), eSTATUS_INVALID_VALUE);
            QCOMPARE(key.moveDown(index), eSTATUS_INVALID_VALUE);
            QCOMPARE(key.getValue(index, &value), eSTATUS_INVALID_VALUE);
            QCOMPARE(key.setValue("x"_s, index), eSTATUS_INVALID_VALUE);
            QVERIFY(key[index].isNull() && value == "old"_s);
        }
        QStringList* list = nullptr;
        QCOMPARE(key.getCompleteData(&list), eSTATUS_SUCCESS);
        list->append("e"_s);
        QCOMPARE(key.setValue(""_s, 0), eSTATUS_SUCCESS);
        QCOMPARE(valuesOf(key), ";c;d;b;e;"_s);
    }

    void ownsItsKeys() const
    {
        static QByteArray destroyed;

        struct Key : CPLPreferenceKey
        {
            explicit Key(char letter)
                : name(letter)
            {}

            ~Key() override { destroyed += name; }

            char name;
        };

        {
            CPLPreferenceKeyList list(2);
            auto* const first = new Key('a');
            QCOMPARE(list.setKey(0, first), eSTATUS_SUCCESS);
            QCOMPARE(list.setKey(0, first), eSTATUS_SUCCESS);
            QCOMPARE(list.setKey(1, new Key('b')), eSTATUS_SUCCESS);
            QCOMPARE(list.setKey(1, new Key('c')), eSTATUS_SUCCESS);
            QCOMPARE(list.setKey(1, first), eSTATUS_INVALID_VALUE);
            CPLPreferenceKey* key = nullptr;
            QCOMPARE(list.getKey(0, &key), eSTATUS_SUCCESS);
            QVERIFY(key == first && list[0] == first && list[1] != first);
            for (const int index : {-1, 2}) {
                QVERIFY(!list[index]);
                QCOMPARE(list.getKey(index, &key), eSTATUS_INVALID_VALUE);
                QCOMPARE(list.setKey(index, first), eSTATUS_INVALID_VALUE);
            }
        }
        QCOMPARE(destroyed, QByteArray("bca"));
    }

    void copies()
    {
        CPLPreferenceKeyList list(2);
        list[0]->addValue("a"_s);
        const CPLPreferenceKeyList copy(&list);
        CPLPreferenceKeyList assigned(0);
        QVERIFY(!assigned[0]);
        assigned = &list;
        list[0]->addValue("b"_s);
        QCOMPARE(valuesOf(copy), "a;|"_s);
        const CPLPreferenceKeyList& same = assigned;
        assigned = same;
        QCOMPARE(valuesOf(CPLPreferenceKeyList(assigned)), "a;|"_s);
        assigned = CPLPreferenceKeyList(-1);
        QVERIFY(!assigned[0]);
    }

    void loads_data()
    {
        support::textColumns({"text", "values"});
        support::textRow("nothing keeps the key", "User: S;J; \r\nGroup: \r\n", "S;J;|old;|old;");
        support::textRow("inside another line", "Power User: a;\nUser: b;\nGroup:c;", "a;|c;|old;");
        support::textRow("first place decides", "User:\nUser: b;\nGROUP: c;", "old;|old;|old;");
        support::textRow("without end", "User: a\nGroup: b;c", "|b;|old;");
        support::textRow("colon in a label", "A:B: c;", "old;|old;|B: c;");
    }

    void loads()
    {
        QFETCH(QString, text);
        CPLPreferenceKeyList list(3);
        for (int i = 0; i < 3; ++i)
            list[i]->addValue("old"_s);
        const QStringList labels = {"User"_s, "Group"_s, "A:B"_s, "beyond"_s};
        QCOMPARE(list.loadData(text, &labels), eSTATUS_SUCCESS);
        QTEST(valuesOf(list), "values");
    }

    void saving()
    {
        const QByteArray sample = support::readFile(support::example("settings/Labels.txt"));
        const QString text = QString::fromLatin1(sample).remove(u'\r');
        CPLLabelDataSet labels;
        labels.loadData(text);
        QStringList names;
        labels.getLabelData(&names);
        CPLPreferenceKeyList list(labels.getCount() + 1);
        list.loadData(text, &names);
        list[3]->addValue(QChar(0xE9) + QString(QChar(0x20AC)));
        labels.setLabelName("Mirrane Universal"_s);
        QTemporaryDir folder;
        QFile file(folder.filePath("Labels.txt"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(list.saveData(file, &labels), eSTATUS_SUCCESS);
        QCOMPARE(support::readFile(file.fileName()), sample.chopped(2) + ":\t\xE9?;\r\n\r\n");
        QFile disk(support::fullDisk());
        if (disk.fileName().isEmpty())
            return support::skipFullDisk();
        QVERIFY(disk.open(QIODevice::WriteOnly));
        QCOMPARE(list.saveData(disk, &labels), eSTATUS_FAILED);
    }

    void reportsMissingMemory()
    {
        QTest::ignoreMessage(QtCriticalMsg, "Unable To Allocate Memory for Operation ");
        outOfMemory = true;
        const CPLPreferenceKeyList empty(1);
        outOfMemory = false;
        QVERIFY(!empty[0]);
        QString text;
        const CPLLabelDataSet set("Mine"_s);
        CPLPreferenceKeyList(empty).saveData(&set, &text);
        QCOMPARE(text, "*** User Label Name Set:\tMine\r\n\r\n"_s);
    }
};

QTEST_GUILESS_MAIN(TestPreferenceKeyList)
#include "tst_plpreferencekeylist.moc"
