// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "support/Support.h"

#include <limits>
#include <locale>

class TestSection : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void keepsTheFirstSpellingOfAKey()
    {
        CPLSection section("Camera"_s, "Unit A"_s);
        QCOMPARE(section.addKeyValue("Exposure"_s, "1"_s), eSTATUS_SUCCESS);
        QCOMPARE(section.addKeyValue("EXPOSURE"_s, "2"_s), eSTATUS_SUCCESS);
        QCOMPARE(section.addKeyValue(QString(), "3"_s), eSTATUS_INVALID_ARGUMENT);
        QCOMPARE(section.count(), 1);
        QCOMPARE(support::keysOf(&section), "Exposure"_s);
        QCOMPARE(section["exposure"_s], "2"_s);
        QVERIFY(section.isKeyPresent("eXposure"_s));
        section.clearKeyValuePairs();
        QCOMPARE(section.count(), 0);
        QString text;
        section.saveSectionData(text);
        QCOMPARE(text, "*** Camera:\tUnit A\r\n\r\n"_s);
    }

    void findsKeysInAnyLetterCase_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("asked");
        QTest::addColumn<bool>("found");
        const QString longKey = "Field of View "_s.repeated(30);
        support::row("short", "Ab"_s, "aB"_s, true);
        support::row("other letter", "Ab"_s, "Ac"_s, false);
        support::row("eight letters", "ABCDefgh"_s, "abcdEFGH"_s, true);
        support::row("sign beside a letter", "key @[`{"_s, "KEY `{@["_s, false);
        support::row("only the end differs", "Luminescent Exposure (Seconds)"_s, "LUMINESCENT EXPOSURE (SECONDS]"_s,
                     false);
        support::row("long", longKey.trimmed(), longKey.trimmed().toUpper(), true);
        support::row("start of a long one", longKey.trimmed(), "Field of View"_s, false);
        support::row("Latin-1", u8"Größe in Ångström"_s, u8"GRÖßE IN ÅNGSTRÖM"_s, true);
        support::row("signs of Latin-1", u8"a×b"_s, u8"a÷b"_s, false);
        support::row("beyond Latin-1", u8"Σίγμα"_s, u8"ΣΊΓΜΑ"_s, true);
        support::row("asked with a Kelvin sign", "Key"_s, u8"\u212Aey"_s, true);
        support::row("written with a Kelvin sign", u8"\u212Aey"_s, "KEY"_s, true);
    }

    void findsKeysInAnyLetterCase()
    {
        QFETCH(QString, key);
        QFETCH(QString, asked);
        QFETCH(bool, found);
        CPLSection read;
        read.loadSectionData("First:1\n"_s + key + ": 2 # old\nLast:3"_s);
        CPLSection made;
        made.addKeyValue(key, "2 # old"_s);
        for (CPLSection* const section : {&read, &made}) {
            QCOMPARE(section->isKeyPresent(asked), found);
            QCOMPARE(section->setValue(asked, 5), found ? eSTATUS_SUCCESS : eSTATUS_KEY_NOT_FOUND);
            const int pairs = section->count();
            QCOMPARE(section->addKeyValue(asked, "6"_s), eSTATUS_SUCCESS);
            QCOMPARE(section->count(), found ? pairs : pairs + 1);
            QCOMPARE((*section)[key], found ? "6"_s : "2"_s);
            QVERIFY(support::keysOf(section).split(u'|').contains(key));
        }
    }

    void commentsShareTheKeysOfPairs()
    {
        CPLSection section;
        section.loadSectionData("# first\nCOMMENTLINE 0: pair\nplain\nKey: 1\ncommentline 0: last"_s);
        QCOMPARE(section.count(), 3);
        QString key;
        QCOMPARE(section.getKey(1, &key), eSTATUS_SUCCESS);
        QCOMPARE(key, "Key"_s);
        QCOMPARE(section["CommentLine 0"_s], "last"_s);
        QCOMPARE(section.setRawValue("CommentLine 1"_s, "# mine"_s), eSTATUS_SUCCESS);
        QCOMPARE(section.setRawValue("commentline 0"_s, "all"_s), eSTATUS_SUCCESS);
        const CPLSection copy = section;
        section.clearKeyValuePairs();
        QString text;
        copy.saveSectionData(text);
        QCOMPARE(text, "*** :\t\r\nall\r\nall\r\n# mine\r\nKey:\t1\r\nall\r\n\r\n"_s);
    }

    void readsValues_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<tag_estatus>("status");
        QTest::addColumn<QString>("value");
        QTest::addColumn<tag_estatus>("rawStatus");
        QTest::addColumn<QString>("raw");
        support::row("comment", "fov"_s, eSTATUS_SUCCESS, "10.0"_s, eSTATUS_SUCCESS, "10.0 # mm"_s);
        support::row("only a comment", "note"_s, eSTATUS_SUCCESS, ""_s, eSTATUS_SUCCESS, "# none"_s);
        support::row("spaces stay", "gain"_s, eSTATUS_SUCCESS, " high "_s, eSTATUS_SUCCESS, " high "_s);
        support::row("absent", "x"_s, eSTATUS_KEY_NOT_FOUND, "old"_s, eSTATUS_KEY_NOT_FOUND, "old"_s);
        support::row("empty key", ""_s, eSTATUS_NULL_ARGUMENT, "old"_s, eSTATUS_KEY_NOT_FOUND, "old"_s);
    }

    void readsValues()
    {
        QFETCH(QString, key);
        CPLSection section;
        section.addKeyValue("FOV"_s, "10.0 # mm"_s);
        section.addKeyValue("Note"_s, "# none"_s);
        section.addKeyValue("Gain"_s, " high "_s);
        QString value = "old"_s;
        QTEST(section.getValue(key, &value), "status");
        QTEST(value, "value");
        QCOMPARE(section[key].isNull(), value == "old"_s);
        QString raw = "old"_s;
        QTEST(section.getRawValue(key, &raw), "rawStatus");
        QTEST(raw, "raw");
    }

    void readsNumbers_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("integer");
        QTest::addColumn<int>("narrow");
        QTest::addColumn<double>("real");
        support::row("whole", "42"_s, 42, 42, 42.0);
        support::row("comment", "-7 # mm"_s, -7, -7, -7.0);
        support::row("real", "12.5"_s, 0, 0, 12.5);
        support::row("exponent", "1e-3"_s, 0, 0, 0.001);
        support::row("words", "abc"_s, 0, 0, 0.0);
        support::row("hexadecimal", "0x10"_s, 0, 0, 0.0);
        support::row("decimal comma", "1,5"_s, 0, 0, 0.0);
        support::row("too large for short", "70000"_s, 70000, 0, 70000.0);
        support::row("too large for double", "1e999"_s, 0, 0, 0.0);
    }

    void readsNumbers()
    {
        QFETCH(QString, text);
        QFETCH(double, real);
        CPLSection section;
        section.addKeyValue("n"_s, text);
        int integer = 99;
        short narrow = 99;
        long wide = 99;
        float single = 99;
        double dbl = 99;
        QCOMPARE(section.getValue("N"_s, &integer), eSTATUS_SUCCESS);
        QCOMPARE(section.getValue("N"_s, &narrow), eSTATUS_SUCCESS);
        QCOMPARE(section.getValue("N"_s, &wide), eSTATUS_SUCCESS);
        QCOMPARE(section.getValue("N"_s, &single), eSTATUS_SUCCESS);
        QCOMPARE(section.getValue("N"_s, &dbl), eSTATUS_SUCCESS);
        QTEST(integer, "integer");
        QTEST(int(narrow), "narrow");
        QCOMPARE(wide, text.contains(u'.') || text.contains(u'e') ? 0L : long(real));
        QCOMPARE(single, float(real));
        QCOMPARE(dbl, real);
        QCOMPARE(section.getValue("absent"_s, &integer), eSTATUS_KEY_NOT_FOUND);
        QTEST(integer, "integer");
    }

    void writesNumbers_data()
    {
        QTest::addColumn<double>("number");
        QTest::addColumn<QString>("text");
        support::row("half", 2.5, "2.500000"_s);
        support::row("tenth", -0.1, "-0.100000"_s);
        support::row("large", 123456789.0, "123456789.000000"_s);
        support::row("tie goes to even", 51589876614145.5703125, "51589876614145.570312"_s);
        support::row("negative zero", -0.0, "-0.000000"_s);
        support::row("below the last digit", 4e-7, "0.000000"_s);
    }

    void writesNumbers()
    {
        QFETCH(double, number);
        const std::locale before = std::locale::global(std::locale(std::locale::classic(), new support::DecimalComma));
        CPLSection section;
        section.addKeyValue("n"_s, ""_s);
        QCOMPARE(section.setValue("n"_s, number), eSTATUS_SUCCESS);
        QTEST(section["n"_s], "text");
        section.setValue("n"_s, 1.5F);
        QCOMPARE(section["n"_s], "1.500000"_s);
        section.setValue("n"_s, short(-3));
        QCOMPARE(section["n"_s], "-3"_s);
        section.setValue("n"_s, std::numeric_limits<int>::min());
        QCOMPARE(section["n"_s], "-2147483648"_s);
        section.setValue("n"_s, 7L);
        QCOMPARE(section["n"_s], "7"_s);
        QCOMPARE(section.setValue("absent"_s, number), eSTATUS_KEY_NOT_FOUND);
        std::locale::global(before);
    }

    void keepsComments_data()
    {
        QTest::addColumn<QString>("old");
        QTest::addColumn<QString>("given");
        QTest::addColumn<QString>("stored");
        support::row("kept", "10.0 # mm"_s, "12.5"_s, "12.5\t# mm"_s);
        support::row("replaced", "10.0 # mm"_s, "7 # s"_s, "7 # s"_s);
        support::row("none", "10.0"_s, "12.5"_s, "12.5"_s);
        support::row("two signs", "a # b # c"_s, "d"_s, "d\t# b # c"_s);
        support::row("emptied", "a#b"_s, ""_s, "\t#b"_s);
    }

    void keepsComments()
    {
        QFETCH(QString, old);
        QFETCH(QString, given);
        CPLSection section("k"_s, old);
        section.addKeyValue("v"_s, old);
        QCOMPARE(section.setValue("V"_s, given), eSTATUS_SUCCESS);
        QString stored;
        section.getRawValue("v"_s, &stored);
        QTEST(stored, "stored");
        section.setSectionName(given);
        section.getSectionName(&stored, true);
        QTEST(stored, "stored");
        section.getSectionName(&stored, false);
        QCOMPARE(stored, section["v"_s]);
        QCOMPARE(section.setRawValue("v"_s, given), eSTATUS_SUCCESS);
        section.getRawValue("v"_s, &stored);
        QCOMPARE(stored, given);
        QCOMPARE(section.setValue("absent"_s, given), eSTATUS_KEY_NOT_FOUND);
        QCOMPARE(section.setRawValue("absent"_s, given), eSTATUS_KEY_NOT_FOUND);
        QCOMPARE(section.count(), 1);
    }

    void countsPairsOnly()
    {
        CPLSection section;
        section.loadSectionData("A: 1\n# note\n\nB: 2 # two\nplain\n:nameless\n"_s);
        section.addKeyValue("C"_s, "3"_s);
        QCOMPARE(section.count(), 4);
        int count = 0;
        QCOMPARE(section.getKeyValuePairCount(&count), eSTATUS_SUCCESS);
        QCOMPARE(count, 4);
        QCOMPARE(support::keysOf(&section), "A|B||C"_s);
        QCOMPARE(section[1], "2"_s);
        QVERIFY(section[2].isNull());
        QVERIFY(!section["CommentLine 1"_s].isNull());
        QCOMPARE(section[3], "3"_s);
        QStringList list = {"stale"_s};
        section.getValueList(&list);
        QCOMPARE(list, (QStringList{"1"_s, "2"_s, QString(), "3"_s}));
        section.getRawValueList(&list);
        QCOMPARE(list, (QStringList{"1"_s, "2 # two"_s, "nameless"_s, "3"_s}));
        QString key = "old"_s;
        for (const int outside : {-1, 4}) {
            QVERIFY(section[outside].isNull());
            QCOMPARE(section.getKey(outside, &key), eSTATUS_FAILED);
            QCOMPARE(key, "old"_s);
        }
        QCOMPARE(section.getKey(3, &key), eSTATUS_SUCCESS);
        QCOMPARE(key, "C"_s);
    }

    void selectsKeys_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("subkey");
        QTest::addColumn<tag_estatus>("status");
        QTest::addColumn<QString>("keys");
        support::row("null subkey", "filter"_s, QString(), eSTATUS_SUCCESS, "old|Filter 1|Filter 2"_s);
        support::row("empty subkey", "filter"_s, ""_s, eSTATUS_SUCCESS, "old"_s);
        support::row("subkey", "FILTER"_s, "R 2"_s, eSTATUS_SUCCESS, "old|Filter 2"_s);
        support::row("not at the start", "ilter"_s, QString(), eSTATUS_SUCCESS, "old"_s);
        support::row("empty key", ""_s, QString(), eSTATUS_NULL_ARGUMENT, "old"_s);
    }

    void selectsKeys()
    {
        QFETCH(QString, key);
        QFETCH(QString, subkey);
        CPLSection section;
        section.loadSectionData("Filter 1: a\n# Filter 3\nLens: b\nFilter 2: c"_s);
        QStringList keys = {"old"_s};
        QTEST(section.getKeylistFromKeyAndSubkey(key, subkey, &keys), "status");
        QTEST(keys.join(u'|'), "keys");
    }

    void readsTheAngle()
    {
        CPLSection section;
        double angle = -1;
        QCOMPARE(section.getRDXAngle(&angle), eSTATUS_KEY_NOT_FOUND);
        QCOMPARE(angle, -1.0);
        section.addKeyValue("RoDX Angle"_s, "30"_s);
        QCOMPARE(section.getRDXAngle(&angle), eSTATUS_SUCCESS);
        QCOMPARE(angle, 30.0);
        section.addKeyValue("RDX-2 Angle"_s, "45.5 # deg"_s);
        QCOMPARE(section.getRDXAngle(&angle), eSTATUS_SUCCESS);
        QCOMPARE(angle, 45.5);
    }

    void guardsArguments()
    {
        CPLSection section("k"_s, "n"_s);
        section.addKeyValue("a"_s, "1"_s);
        QCOMPARE(section.getValue("a"_s, static_cast<QString*>(nullptr)), eSTATUS_NULL_ARGUMENT);
        QCOMPARE(section.getValue("a"_s, static_cast<short*>(nullptr)), eSTATUS_NULL_ARGUMENT);
        QCOMPARE(section.getValue("a"_s, static_cast<double*>(nullptr)), eSTATUS_NULL_ARGUMENT);
        QCOMPARE(section.getRawValue("a"_s, nullptr), eSTATUS_NULL_ARGUMENT);
        QCOMPARE(section.getKeyValuePairCount(nullptr), eSTATUS_NULL_ARGUMENT);
        QCOMPARE(section.getKey(0, nullptr), eSTATUS_NULL_ARGUMENT);
        QCOMPARE(section.getKeyList(nullptr), eSTATUS_NULL_ARGUMENT);
        QCOMPARE(section.getValueList(nullptr), eSTATUS_NULL_ARGUMENT);
        QCOMPARE(section.getRawValueList(nullptr), eSTATUS_NULL_ARGUMENT);
        QCOMPARE(section.getKeylistFromKeyAndSubkey("a"_s, QString(), nullptr), eSTATUS_NULL_ARGUMENT);
        QCOMPARE(section.getRDXAngle(nullptr), eSTATUS_NULL_ARGUMENT);
        QCOMPARE(section.getSectionName(nullptr, true), eSTATUS_FAILED);
        QCOMPARE(section.getSectionKey(nullptr), eSTATUS_FAILED);
        QCOMPARE(section.setSectionKey(QString()), eSTATUS_FAILED);
        QCOMPARE(section.setSectionKey(""_s), eSTATUS_SUCCESS);
    }

    void textForm_data()
    {
        QTest::addColumn<QString>("body");
        QTest::addColumn<QString>("written");
        support::row("all kinds of lines", "Binning: 4\nGain: High # set by user\njust a note\n\nTemp: -90"_s,
                     "Binning:\t4\r\nGain:\tHigh # set by user\r\n#just a note\r\n\r\nTemp:\t-90\r\n"_s);
        support::row("white space", " \n  Key \t: a : b \n"_s, "Key:\ta : b\r\n"_s);
        support::row("comments with ':'", "# a: b\nNote # see: manual"_s, "# a: b\r\n#Note # see: manual\r\n"_s);
        support::row("nameless pair", ": x\nA:"_s, ":\tx\r\nA:\t\r\n"_s);
        support::row("nothing", " \n "_s, ""_s);
        support::row("no-break space is text", "Gain:\u00a05\u00a0\u0085"_s, "Gain:\t\u00a05\u00a0\u0085\r\n"_s);
        support::row("real key like a comment's", "My CommentLine 1: kept"_s, "kept\r\n"_s);
    }

    void textForm()
    {
        QFETCH(QString, body);
        QFETCH(QString, written);
        CPLSection section("Camera"_s, "Unit A"_s);
        section.addKeyValue("stale"_s, "1"_s);
        section.loadSectionData(body);
        QString text;
        section.saveSectionData(text);
        QCOMPARE(text, "*** Camera:\tUnit A\r\n"_s + written + "\r\n"_s);
    }

    void repeatedKeys()
    {
        CPLSection section("k"_s, QString());
        section.loadSectionData("Gain: 1\nOther: x\nGAIN: 2"_s);
        QCOMPARE(section.count(), 3);
        QCOMPARE(section[0], "2"_s);
        QCOMPARE(section[2], "2"_s);
        QString text;
        section.saveSectionData(text);
        QCOMPARE(text, "*** k:\t\r\nGain:\t2\r\nOther:\tx\r\nGAIN:\t2\r\n\r\n"_s);
    }

    void keepsNoBorrowedCharacters()
    {
        QString characters = "k: v"_s;
        CPLSection section("a"_s, "n"_s);
        section.loadSectionData(QString::fromRawData(characters.constData(), int(characters.size())));
        characters.fill(u'x');
        QCOMPARE(section["k"_s], "v"_s);
    }

    void copiesShareNothing()
    {
        CPLSection source("k"_s, "n"_s);
        source.addKeyValue("a"_s, "1"_s);
        const CPLSection copy = source;
        CPLSection assigned;
        assigned = source;
        source.setValue("a"_s, "2"_s);
        source.setSectionKey("changed"_s);
        QCOMPARE(copy["a"_s], "1"_s);
        QCOMPARE(assigned["a"_s], "1"_s);
        QString key;
        copy.getSectionKey(&key);
        QCOMPARE(key, "k"_s);
    }
};

QTEST_APPLESS_MAIN(TestSection)
#include "tst_plsection.moc"
