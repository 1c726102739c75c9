// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "support/Support.h"

class TestOptPropInfo : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void menus_data()
    {
        support::textColumns({"text", "names"});
        support::textRow("gaps",
                         "*** Tissue Properties 2:\nMenuName: B\n*** Tissue Properties 1:\nMenuName: A\n"
                         "*** Tissue Properties 4:\nMenuName: D\n*** Source Model 2:\nMenuName: B\n",
                         "A|B:");
        support::textRow("no name", "*** Source Model 1:\nk: v\n*** SOURCE model 2:\nmenuname: B # b\n", ":B");
        support::textRow("malformed", "*** Source Model 1:\nMenuName: A\n*** no colon\n", ":");
    }

    void menus()
    {
        const auto namesIn = [](const CPLOptPropInfo& menus) {
            return menus.getTissuePropList().join(u'|') + u':' + menus.getSrcModelList().join(u'|');
        };
        CPLOptPropInfo menus;
        QCOMPARE(menus.readSettingFile(support::example("settings/OpticalProperties.txt")), eSTATUS_SUCCESS);
        QCOMPARE(namesIn(CPLOptPropInfo(menus)), "Mouse tissue|Muscle:Firefly|Bacterial"_s);
        QVERIFY(!menus[0]);
        QTemporaryDir folder;
        QFETCH(QString, text);
        support::writeFile(folder.filePath("Optical.txt"_s), text.toLatin1());
        QCOMPARE(menus.readSettingFile(folder.filePath("Optical.txt"_s)),
                 text.contains("no colon"_s) ? eSTATUS_BAD_FORMAT : eSTATUS_SUCCESS);
        QTEST(namesIn(menus), "names");
        QCOMPARE(menus.readSettingFile(folder.filePath("missing"_s)), eSTATUS_FILE_OPEN_FAILED);
        QCOMPARE(namesIn(menus), ":"_s);
    }
};

QTEST_GUILESS_MAIN(TestOptPropInfo)
#include "tst_ploptpropinfo.moc"
