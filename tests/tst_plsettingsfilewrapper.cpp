// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "support/Support.h"

#include <QtCore/QDir>

namespace {

CPLSettingsFileWrapper wrapperWithTwins()
{
    CPLSettingsFileWrapper wrapper("Preset"_s);
    wrapper.loadTextBuffer("*** Preset 1: bright # a\nMenuName: Bright # 1\nFileName: a.txt # x\n"
                           "*** preset 2: dark\nMenuName: Hidden\n"
                           "*** Preset 3: BRIGHT\nMenuName:\n"
                           "*** My Preset 4: \nMenuName: BRIGHT # 1\n"_s);
    return wrapper;
}

} // namespace

class TestSettingsFileWrapper : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void loadsAndSaves()
    {
        QTemporaryDir folder;
        const QString sample = support::example("settings/Presets.txt");
        const QString other = folder.filePath("Presets.txt"_s);
        CPLSettingsFileWrapper wrapper("Preset"_s, "Preset"_s);
        QCOMPARE(wrapper.load(), eSTATUS_INVALID_ARGUMENT);
        QCOMPARE(wrapper.save(), eSTATUS_INVALID_ARGUMENT);
        QCOMPARE(wrapper.load(other), eSTATUS_FILE_OPEN_FAILED);
        QVERIFY(wrapper.getSettingsFileName().isNull());
        QCOMPARE(wrapper.load(sample), eSTATUS_SUCCESS);
        wrapper.setSettingsFileName(""_s);
        QCOMPARE(wrapper.load(), eSTATUS_SUCCESS);
        QCOMPARE(wrapper.getMenuNames().join(u'|'), "Bright field|Deep tissue # slow|Preset1"_s);
        QCOMPARE(wrapper.getNextAvailableSectionName(), "Preset 3"_s);
        QCOMPARE(wrapper.getNextAutoMenuName(), "Preset2"_s);
        QCOMPARE(wrapper.save(other), eSTATUS_SUCCESS);
        QCOMPARE(support::readFile(other), support::readFile(sample));
        QCOMPARE(wrapper.getSettingsFileName(), sample);
        wrapper.setLoadMode(eLOAD_FOLDER);
        QCOMPARE(wrapper.load(), eSTATUS_INVALID_ARGUMENT);
        wrapper.setFolderPath(sample);
        QCOMPARE(wrapper.load(), eSTATUS_FOLDER_NOT_FOUND);
    }

    void lookup_data()
    {
        QTest::addColumn<bool>("names");
        QTest::addColumn<int>("section");
        QTest::addColumn<bool>("unique");
        support::row("Bright # 1", false, 0, false);
        support::row("BRIGHT # 1", false, 3, false);
        support::row("bright # 1", false, -1, false);
        support::row("Hidden", false, -1, true);
        support::row("", false, 2, false);
        support::row("Bright", true, 2, false);
        support::row("BRIGHT # A", true, 0, false);
    }

    void lookup()
    {
        QFETCH(bool, names);
        QFETCH(int, section);
        const QString menuName = QLatin1String(QTest::currentDataTag());
        CPLSettingsFileWrapper wrapper = wrapperWithTwins();
        wrapper.setMenuNameTag(""_s);
        wrapper.setUseSectionNameForMenuName(names);
        QCOMPARE(wrapper.getSectionByMenuName(menuName), wrapper[section]);
        QTEST(wrapper.isUnique(menuName), "unique");
        QCOMPARE(wrapper.getMenuNames().join(u'|'), names ? "bright # a|BRIGHT"_s : "Bright # 1|BRIGHT # 1"_s);
        QCOMPARE(wrapper.getMenuNames("My"_s).size(), names ? 0 : 1);
        wrapper.setSectionNameTag(""_s);
        QCOMPARE(wrapper.getMenuNames().size(), 3);
    }

    void fileNames()
    {
        const QString name = "bright # 1"_s;
        CPLSettingsFileWrapper wrapper = wrapperWithTwins();
        QCOMPARE(wrapper.getFileNameForMenuName(name, "no such prefix"_s), "a.txt # x"_s);
        QCOMPARE(wrapper.setFileNameForMenuName(name, "b.txt"_s), eSTATUS_KEY_NOT_FOUND);
        QCOMPARE(wrapper.getFileNameForMenuName(name, ""_s), "b.txt\t# x"_s);
        QVERIFY(!wrapper[3]->isKeyPresent("FileName"_s));
        wrapper[3]->addKeyValue("FileName"_s, "c.txt"_s);
        QCOMPARE(wrapper.setFileNameForMenuName(name, "d.txt"_s), eSTATUS_SUCCESS);
        QCOMPARE((*wrapper[0])["FileName"_s] + (*wrapper[3])["FileName"_s], "d.txtd.txt"_s);
        QCOMPARE(wrapper.setFileNameForMenuName("Hidden"_s, "x"_s), eSTATUS_KEY_NOT_FOUND);
        wrapper.setSectionNameTag("None"_s);
        QCOMPARE(wrapper.setFileNameForMenuName(name, "x"_s), eSTATUS_EMPTY_SECTION_KEY);
    }

    void nextNumbers_data()
    {
        support::textColumns({"numbers", "section", "menu"});
        support::textRow("none", "", "1", "1");
        support::textRow("gap, unsorted", "4,2,1", "3", "3");
        support::textRow("no gap", "1,2", "3", "3");
        support::textRow("no 1", "2,3", "1", "1");
        support::textRow("repeated", "1,01,2", "2", "3");
        support::textRow("repeated before a gap", "1,01,3", "2", "4");
        support::textRow("from 0", "0,1,3", "1", "2");
        support::textRow("negative", "-5,1", "1", "-4");
        support::textRow("no number", "1, 2 ,3 old,x", "3", "3");
        support::textRow("largest", "1,01,2147483647", "2", "2147483648");
        support::textRow("smallest", "1,-2147483648", "1", "-2147483647");
    }

    void nextNumbers()
    {
        QFETCH(QString, numbers);
        CPLSettingsFileWrapper wrapper("Preset"_s, "P"_s);
        const QStringList list = numbers.split(u',');
        for (const QString& number : list) {
            auto* const added = new CPLSection("A Preset_"_s + number, "xP"_s + number + " # 9"_s);
            added->addKeyValue("MenuName"_s, "xP"_s + number);
            wrapper.addSection(added);
        }
        QTEST(wrapper.getNextAvailableSectionName().mid(7), "section");
        QTEST(wrapper.getNextAvailableSectionName("A Preset"_s).mid(9), "section");
        QTEST(wrapper.getNextAutoMenuName().mid(1), "menu");
        wrapper.setUseSectionNameForMenuName(true);
        QTEST(wrapper.getNextAutoMenuName("A"_s).mid(1), "menu");
        QCOMPARE(wrapper.getNextAutoMenuName("B"_s), "P1"_s);
    }

    void adding()
    {
        CPLSettingsFileWrapper wrapper("Preset"_s);
        QCOMPARE(wrapper.addSection("Preset"_s, "a"_s), eSTATUS_SUCCESS);
        QCOMPARE(wrapper.addSection("b"_s), eSTATUS_SUCCESS);
        wrapper.setUseSectionNameForMenuName(true);
        QCOMPARE(wrapper.addSection("Other"_s, "c"_s), eSTATUS_SUCCESS);
        QCOMPARE(wrapper.addSection("Preset"_s, "d"_s, "d.txt"_s), eSTATUS_SUCCESS);
        wrapper.addSection(new CPLSection("Preset 01"_s, QString()));
        QCOMPARE(wrapper.addSection("not taken"_s), eSTATUS_SUCCESS);
        QCOMPARE(wrapper.deleteSection("a"_s), eSTATUS_FAILED);
        QCOMPARE(wrapper.deleteSection(0), eSTATUS_FAILED);
        QCOMPARE(wrapper.getClickInfoData(),
                 QByteArray("*** Preset 1:\t\r\nMenuName:\ta\r\n\r\n*** Preset 2:\t\r\nMenuName:\tb\r\n"
                            "\r\n*** Other 1:\tc\r\n\r\n*** Preset 3:\t\r\nMenuName:\td\r\n"
                            "FileName:\td.txt\r\n\r\n*** Preset 01:\t\r\n\r\n\r\n\r\n"));
    }

    void copiesSections()
    {
        CPLSection first("ROI File 1"_s, "1"_s);
        CPLSection other("Regions"_s, "2"_s);
        CPLSection second("my roi file 2"_s, "3"_s);
        CPLSection keyless;
        const QList<CPLSection*> list = {&first, &other, &second, &second};
        CPLSettingsFileWrapper wrapper;
        QCOMPARE(wrapper.initFromROISections(list), eSTATUS_SUCCESS);
        QCOMPARE(support::sectionsOf(wrapper), "ROI File 1|my roi file 2"_s);
        QCOMPARE(wrapper.initFromSections(list), eSTATUS_SUCCESS);
        QVERIFY(wrapper[0] != &first);
        const CPLSettingsFileWrapper copy = wrapper;
        wrapper.clearData();
        QCOMPARE(support::sectionsOf(copy), "ROI File 1|my roi file 2|Regions"_s);
        QCOMPARE(wrapper.initFromSections({&other, &keyless, &first}), eSTATUS_EMPTY_SECTION_KEY);
        QCOMPARE(wrapper.initFromROISections({nullptr, &first}), eSTATUS_NULL_ARGUMENT);
        QCOMPARE(support::sectionsOf(wrapper), "Regions"_s);
    }

    void folders_data()
    {
        support::textColumns({"prefix", "names", "menuName", "file"});
        support::textRow("prefix", "Preset-", "A|B.x-y", "b.X-Y", "Sets/Preset-B.x-y.TXT");
        support::textRow("prefix without '-'", "Preset", "-A|-B.x-y", "-A", "");
        support::textRow("inside", "eset-", "", "A", "Sets/Preset-A.txt");
        support::textRow("letter case", "preset-", "", "A", "");
        support::textRow("no prefix", "", "Preset-A|Preset-B.x-y|notes|txt", "TXT", "Sets/txt");
        support::textRow("no extension", "t", "xt", "NOTES", "Sets/notes.txt");
    }

    void folders()
    {
        QTemporaryDir folder;
        QVERIFY(QDir(folder.path()).mkpath("Sets/Preset-Folder.txt"_s));
        for (const char* name : {"txt", "Preset-C.dat", "Preset-B.x-y.TXT", "notes.txt", "Preset-A.txt"})
            support::writeFile(folder.filePath("Sets/"_s + QLatin1String(name)), "x");
        QFETCH(QString, prefix);
        QFETCH(QString, menuName);
        CPLSettingsFileWrapper wrapper;
        wrapper.setLoadMode(eLOAD_FOLDER);
        QVERIFY(wrapper.getMenuNames(prefix).isEmpty());
        wrapper.setFolderPath(folder.filePath("Sets"_s));
        QCOMPARE(wrapper.load(), eSTATUS_SUCCESS);
        QTEST(wrapper.getMenuNames(prefix).join(u'|'), "names");
        QTEST(wrapper.getFileNameForMenuName(menuName, prefix), "file");
    }
};

QTEST_GUILESS_MAIN(TestSettingsFileWrapper)
#include "tst_plsettingsfilewrapper.moc"
