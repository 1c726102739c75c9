// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "support/Support.h"

class TestLabelDataSet : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void headers_data()
    {
        support::textColumns({"header", "read"});
        support::textRow("plain", "*** User Label Name Set:\tOrvane Universal", "Orvane Universal");
        support::textRow("letter case", "*** user LABEL name set:\t a:b\tc \r", " a:b\tc \r");
        support::textRow("comment", "*** User Label Name Set:\tMine # of 2024", "Mine ");
        support::textRow("early comment", "*** User Label Name Set:\tM#x", "M");
        support::textRow("empty", "", "eSTATUS_BAD_LABEL_FORMAT");
        support::textRow("bare mark", "***User Label Name Set:\tM", "eSTATUS_BAD_LABEL_FORMAT");
        support::textRow("no colon", "*** User Label Name Set\tMine", "eSTATUS_BAD_LABEL_FORMAT");
        support::textRow("comment first", "*** User#:\tMine", "eSTATUS_BAD_LABEL_FORMAT");
        support::textRow("no name", "*** User Label Name Set:\t# x", "eSTATUS_BAD_LABEL_FORMAT");
        support::textRow("other section", "*** ClickNumber: Mine", "eSTATUS_SECTION_NOT_FOUND");
        support::textRow("blank", "*** User Label Name Set :\tM", "eSTATUS_SECTION_NOT_FOUND");
        support::textRow("blank and TAB", "*** User Label Name Set: \tM", "eSTATUS_BAD_LABEL_FORMAT");
        support::textRow("no TAB", "*** User Label Name Set: Mine", "eSTATUS_BAD_LABEL_FORMAT");
    }

    void headers()
    {
        QFETCH(QString, header);
        CPLLabelDataSet labels("old"_s);
        const tag_estatus status = labels.loadLabelName(header);
        QString name;
        labels.getLabelName(&name);
        QTEST(status == eSTATUS_SUCCESS ? name : getStatusString(status), "read");
        QVERIFY(status == eSTATUS_SUCCESS || name == "old"_s);
        CPLLabelDataSet loaded;
        QCOMPARE(loaded.loadData(header + "\nUser:\tx;"_s), status);
        QCOMPARE(loaded.getCount(), status == eSTATUS_SUCCESS ? 1 : 0);
    }

    void labels_data()
    {
        support::textColumns({"lines", "labels"});
        support::textRow("lines", "\n User :\tSmith;\nnote\n\n: x\nGroup:a:b\r\nnote", "| User |Group");
        support::textRow("last line without LF", "\nUser:\n Project \t:", "|User|Project");
        support::textRow("empty last label", "\n :", "|");
        support::textRow("header only", "", "");
    }

    void labels()
    {
        QFETCH(QString, lines);
        CPLLabelDataSet labels;
        QCOMPARE(labels.loadData("*** User Label Name Set:\tMine"_s + lines), eSTATUS_SUCCESS);
        QCOMPARE(labels.setLabelName(""_s), eSTATUS_INVALID_VALUE);
        QStringList fresh;
        labels.getLabelData(&fresh);
        QTEST((QStringList(""_s) + fresh).join(u'|'), "labels");
        QCOMPARE(labels.loadData("*** ClickNumber: A"_s + lines), eSTATUS_SUCCESS);
        QCOMPARE(labels.getCount(), 2 * fresh.size());
        for (int i = 0; i < fresh.size(); ++i)
            QCOMPARE(labels[int(fresh.size()) + i], fresh.at(i));
        QVERIFY(labels[-1].isNull() && labels[labels.getCount()].isNull());
    }
};

QTEST_GUILESS_MAIN(TestLabelDataSet)
#include "tst_pllabeldataset.moc"
