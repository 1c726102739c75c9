// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "internal/text/InfoText.h"
#include "internal/text/VersionStamp.h"
#include "support/Support.h"

#include <QtCore/QRegularExpression>

class TestHelpers : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void imageTypes()
    {
        const char* const names[] = {"Photograph",      "Luminescent",  "Read Bias",      "Read Sigma",
                                     "Background",      "Bias",         "Reference",      "Structure",
                                     "Fluorescent Bkg", "FL Reference", "Luminescent A",  "Luminescent B",
                                     "X-Ray",           "Overlay",      "Saturation Map", "Height Map",
                                     "Photo Mask",      "Luminescent",  "Saturation Map", "Blemish"};
        int value = 0;
        for (const char* const name : names)
            QCOMPARE(getImageTypeString(tag_eimagetype(value++)), QString::fromLatin1(name));
        for (const int outside : {-1, 20, 1000})
            QVERIFY(getImageTypeString(tag_eimagetype(outside)).isEmpty());
    }

    void statuses()
    {
        const QStringList table =
            ("0 SUCCESS 2 EXTENSION_LOAD_FAILED 4 NO_CLICK_NUMBERS 5 BAD_FORMAT 10 FILE_READ_FAILED 11 "
             "FILE_OPEN_FAILED 12 FILE_NOT_FOUND 16 NULL_ARGUMENT 19 INVALID_ARGUMENT 20 BAD_LABEL_FORMAT 24 "
             "KEY_NOT_FOUND 28 SYSTEM_MISMATCH 30 EXTENSION_CONFLICT 31 FAILED 33 EMPTY_SECTION_KEY 34 "
             "OUT_OF_MEMORY 38 SECTION_EXISTS 47 EXTENSION_KEY_MISSING 48 INVALID_VALUE 49 SECTION_NOT_FOUND "
             "61 UNSUPPORTED_IMAGE_TYPE 62 FOLDER_NOT_FOUND 88 EMPTY_SEQUENCE"_s)
                .split(u' ');
        QMap<int, QString> names;
        for (int i = 0; i < table.size(); i += 2)
            names.insert(table.at(i).toInt(), table.at(i + 1));
        for (int value = -1; value < 200; ++value) {
            const QString name = names.contains(value) ? "eSTATUS_"_s + names.value(value) : QString();
            QCOMPARE(getStatusString(tag_estatus(value)), name);
        }
    }

    void secondsSince1904_data()
    {
        QTest::addColumn<double>("since1970");
        QTest::addColumn<QString>("since1904");
        support::row("epoch", 0.0, "2082844800"_s);
        support::row("now", 1700000000.0, "3782844800"_s);
        support::row("cut", 1.9, "2082844801"_s);
        support::row("rounded into the integer", 1.9999999, "2082844802"_s);
        support::row("start", -2082844800.0, "0"_s);
        support::row("sign stays", -2082844800.5, "-0"_s);
    }

    void secondsSince1904()
    {
        QFETCH(double, since1970);
        QTEST(getTimefrom1904(since1970), "since1904");
    }

    void datesAndTimes_data()
    {
        QTest::addColumn<QDateTime>("moment");
        QTest::addColumn<QString>("date");
        QTest::addColumn<QString>("time");
        support::row("one digit", QDateTime({2024, 3, 5}, {9, 5, 0}), "Tuesday, March 05, 2024"_s, "09:05:00"_s);
        support::row("two digits", QDateTime({2023, 12, 25}, {17, 30, 59}), "Monday, December 25, 2023"_s,
                     "17:30:59"_s);
        support::row("midnight", QDateTime({2023, 1, 1}, {0, 0, 0}), "Sunday, January 01, 2023"_s, "00:00:00"_s);
    }

    void datesAndTimes()
    {
        QFETCH(QDateTime, moment);
        struct tm time = {};
        time.tm_mday = moment.date().day();
        time.tm_mon = moment.date().month() - 1;
        time.tm_year = moment.date().year() - 1900;
        time.tm_wday = moment.date().dayOfWeek() % 7;
        time.tm_hour = moment.time().hour();
        time.tm_min = moment.time().minute();
        time.tm_sec = moment.time().second();
        QTEST(getDateOVSFormat(&time), "date");
        QTEST(getTimeOVSFormat(&time), "time");
        time.tm_mon = 12;
        QVERIFY(!getDateOVSFormat(&time).isEmpty());
        QVERIFY(getDateOVSFormat(nullptr).isEmpty() && getTimeOVSFormat(nullptr).isEmpty());
    }

    void names()
    {
        QCOMPARE(camelCaseString("user  label set"_s), "User Label Set"_s);
        QCOMPARE(camelCaseString("  a  b "_s), "A B"_s);
        QCOMPARE(camelCaseString("x-ray dATA"_s), "X-ray DATA"_s);
        QVERIFY(camelCaseString("   "_s).isEmpty());
        QCOMPARE(updateLabelSetName("Mirrane Universal Mirrane"_s), "Orvane Universal Orvane"_s);
        QCOMPARE(updateLabelSetName("mirrane Universal"_s), "mirrane Universal"_s);
    }

    void sectionOfAText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("section");
        support::row("first of two", "x\n*** A:1\nk\n*** B:2"_s, "*** A:1\nk\n"_s);
        support::row("last", "x *** A:1\nk"_s, "*** A:1\nk"_s);
        support::row("no mark", "***A:1"_s, ""_s);
    }

    void sectionOfAText()
    {
        QFETCH(QString, text);
        QTEST(getSectionBuffer(text), "section");
    }

    void headerKeys_data()
    {
        QTest::addColumn<QString>("header");
        QTest::addColumn<QString>("key");
        support::row("usual", "*** Camera:\tUnit"_s, "Camera"_s);
        support::row("no blank", "***Camera: Unit"_s, "Camera"_s);
        support::row("colons in the name", "*** A b : c : d"_s, "A b"_s);
        support::row("comment in the name", "*** A: b # c"_s, "A"_s);
        support::row("empty key", "*** : b"_s, ""_s);
        support::row("four asterisks", "**** A: b"_s, "A"_s);
        support::row("no colon", "*** A"_s, QString());
        support::row("comment before the colon", "*** A # b: c"_s, QString());
        support::row("mark with blank after the colon", "***A: b *** c"_s, QString());
    }

    void headerKeys()
    {
        QFETCH(QString, header);
        QFETCH(QString, key);
        const QByteArray line = header.toLatin1();
        const auto found = ovparser::internal::headerKey(ovparser::internal::latin1View(line));
        QCOMPARE(found.has_value(), !key.isNull());
        QCOMPARE(QString(found.value_or(QLatin1String())), key);
    }

    void binnings_data()
    {
        QTest::addColumn<QString>("camera");
        QTest::addColumn<QString>("system");
        QTest::addColumn<QString>("info");
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("whole");
        QTest::addColumn<QString>("contained");

        struct Camera
        {
            const char* model;
            const char* wholePhotograph;
            const char* wholeOther;
            const char* photograph;
            const char* other;
        };

        const Camera cameras[] = {
            {"Site", "-1 2 1", "8 4 2", "2 2 1", "8 4 2"},
            {"andor", "-1 2 1", "8 4 2", "2 2 1", "8 4 2"},
            {"DW434", "-1 2 1", "8 4 2", "2 2 1", "8 4 2"},
            {"ds934r", "-1 2 1", "8 4 2", "2 2 1", "8 4 2"},
            {"EEV", "-1 4 2", "16 8 4", "4 4 2", "16 8 4"},
            {"dz436", "-1 4 2", "16 8 4", "4 4 2", "16 8 4"},
            {"dz930", "-1 4 2", "16 8 4", "4 4 2", "16 8 4"},
            {"dz936R", "-1 4 2", "16 8 4", "4 4 2", "16 8 4"},
            {"", "-1 2 1", "10 5 2", "2 2 1", "10 5 2"},
            {"du88", "-1 2 1", "10 5 2", "2 2 1", "10 5 2"},
            {"Andor iKon DW434", "-1 2 1", "10 5 2", "2 2 1", "8 4 2"},
            {"e2v-eev CCD", "-1 2 1", "10 5 2", "4 4 2", "16 8 4"},
            {"andor-eev", "-1 2 1", "10 5 2", "2 2 1", "8 4 2"},
        };
        for (const Camera& camera : cameras) {
            const QString model = QString::fromLatin1(camera.model);
            const auto row = [&](int type, const char* whole, const char* contained) {
                QTest::addRow("%s, type %d", camera.model, type)
                    << model << "VEXA 50"_s
                    << ""_s << type << QString::fromLatin1(whole) << QString::fromLatin1(contained);
            };
            row(eIMAGE_PHOTOGRAPH, camera.wholePhotograph, camera.photograph);
            row(eIMAGE_STRUCTURE, camera.wholePhotograph, camera.photograph);
            row(eIMAGE_XRAY, "-1 2 1", "4 2 1");
            row(eIMAGE_LUMINESCENT, camera.wholeOther, camera.other);
        }
        const QString sophia = "a SOPHIA b"_s;
        for (const QString& system : {"vexa 50"_s, "VEXA 200 x"_s}) {
            QTest::addRow("Sophia photograph, %s", qPrintable(system))
                << "site"_s << system << sophia << int(eIMAGE_PHOTOGRAPH) << "-1 4 2"_s
                << "4 4 2"_s;
            QTest::addRow("Sophia luminescent, %s", qPrintable(system))
                << "site"_s << system << sophia << int(eIMAGE_LUMINESCENT) << "16 8 4"_s
                << "16 8 4"_s;
        }
        support::row("Sophia X-ray", "site"_s, "x"_s, sophia, int(eIMAGE_XRAY), "-1 2 1"_s, "4 2 1"_s);
        support::row("Sophia elsewhere", "site"_s, "VEXA 100"_s, sophia, int(eIMAGE_PHOTOGRAPH), "-1 2 1"_s, "2 2 1"_s);
    }

    void binnings()
    {
        QFETCH(QString, camera);
        QFETCH(QString, system);
        QFETCH(QString, info);
        QFETCH(int, type);
        const auto text = [](auto large, auto medium, auto small) {
            return QStringLiteral("%1 %2 %3").arg(large).arg(medium).arg(small);
        };
        int large = 0;
        int medium = 0;
        int small = 0;
        getCCDBinningsForImageType(camera, system, info, getImageTypeString(tag_eimagetype(type)).toUpper(), large,
                                   medium, small);
        QTEST(text(large, medium, small), "whole");
        float largest = 0;
        float middle = 0;
        float smallest = 0;
        getCCDBinningsForImageType(camera, system, info, tag_eimagetype(type), largest, middle, smallest);
        QTEST(text(largest, middle, smallest), "contained");
    }

    void binningCodes_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<int>("style");
        QTest::addColumn<QStringList>("labels");
        const QString other = "luminescent"_s;
        support::row("style 0", other, 0, QStringList{"HR"_s, "M"_s, "HS"_s});
        for (const int style : {1, 2})
            QTest::addRow("style %d", style)
                << other << style << QStringList{"Small (Hi Res)"_s, "Med."_s, "Large (Hi Sens)"_s};
        support::row("style 3", other, 3,
                     QStringList{"Small (Hi Resolution)"_s, "Medium"_s, "Large (Hi Sensitivity)"_s});
        support::row("no style", other, 4, QStringList{""_s, ""_s, ""_s});
        support::row("negative style", other, -1, QStringList{""_s, ""_s, ""_s});
        support::row("photograph", "photograph"_s, 0, QStringList{"M"_s, ""_s, ""_s});
    }

    void binningCodes()
    {
        QFETCH(QString, type);
        QFETCH(int, style);
        QStringList labels;
        for (const float binning : {2.0F, 4.0F, 8.0F})
            labels += getValueToCCDBinningCode(binning, "site"_s, ""_s, ""_s, type, style);
        QTEST(labels, "labels");
        QVERIFY(getValueToCCDBinningCode(3.0F, "site"_s, ""_s, ""_s, type, style).isEmpty());
    }

    void pixels_data()
    {
        QTest::addColumn<QString>("camera");
        QTest::addColumn<QString>("system");
        QTest::addColumn<QString>("info");
        QTest::addColumn<double>("pixels");
        support::row("A", "x DZ930"_s, ""_s, ""_s, 2048.0);
        support::row("A, newer", "dz936r"_s, ""_s, ""_s, 2048.0);
        support::row("B", "ds934r andor"_s, ""_s, ""_s, 1024.0);
        support::row("C", "e2v eev47"_s, ""_s, ""_s, 1920.0);
        support::row("C, model code", "andor dz436"_s, ""_s, ""_s, 1920.0);
        support::row("D", "andor eev"_s, ""_s, ""_s, 1024.0);
        support::row("D by DU88", "iXon DU888"_s, ""_s, ""_s, 1024.0);
        support::row("none", ""_s, "VEXA 50"_s, "x"_s, 1300.0);
        support::row("Sophia 200", "dz930"_s, "VEXA 200"_s, "Sophia"_s, 1920.0);
        support::row("Sophia 50", "site"_s, "VEXA 50"_s, "Sophia"_s, 2048.0);
        support::row("Sophia both", "site"_s, "VEXA 50 VEXA 200"_s, "Sophia"_s, 2048.0);
        support::row("Sophia other", "site"_s, "VEXA 100"_s, "Sophia"_s, 1024.0);
    }

    void pixels()
    {
        QFETCH(QString, camera);
        QFETCH(QString, system);
        QFETCH(QString, info);
        QTEST(getCCDPixels(camera, system, info), "pixels");
    }

    void fieldsOfView_data()
    {
        QTest::addColumn<double>("fieldOfView");
        QTest::addColumn<QByteArray>("name");
        support::row("first of two", 5.0, QByteArray("A"));
        support::row("within the tolerance", 12.500005, QByteArray("b"));
        support::row("outside the tolerance", 12.50002, QByteArray());
        support::row("float rounding", 7.1, QByteArray("_"));
        support::row("no name in the key", 1.0, QByteArray());
        support::row("no number", 0.0, QByteArray("E"));
        support::row("not Latin", 9.0, QByteArray("\xE9"));
    }

    void fieldsOfView()
    {
        QFETCH(double, fieldOfView);
        QFETCH(QByteArray, name);
        CPLClickInfo info;
        QByteArray found = "old";
        QVERIFY(!getFOVName(&info, 5.0, found) && !getFOVName(nullptr, 5.0, found));
        QVERIFY(!hasCCDMapData(info));
        info.loadTextBuffer("*** Camera System Info:\nShelf Position FOV: 1\nShelf Position A fov: 5.0\n"
                            "SHELF position b FOV: 12.5 # cm\nShelf Position C FOV: 5\n"
                            "Shelf Position D: 1\nx Shelf Position D FOV: 1\nShelf Position E FOV: wide\n"
                            "Shelf Position _ FOV: 7.1\nShelf Position \u00e9 FOV: 9\nCCDmap:"_s);
        QVERIFY(hasCCDMapData(info));
        QCOMPARE(getFOVName(&info, fieldOfView, found), !name.isNull());
        QCOMPARE(found, name.isNull() ? QByteArray("old") : name);
    }

    void paths()
    {
        const QString base = getOVPath(OV_PATH_BASE, false, nullptr);
        QVERIFY2(base.endsWith("/Ostrel/Orvane/"_s), qPrintable(base));
        const char* const names[] = {"database",        "organs", "FLReference", "SLReference", "Background",
                                     "Auto Background", nullptr,  "emfilters",   "Usage",       "AOICorrDB"};
        int tag = OV_PATH_DATABASE;
        for (const char* const name : names) {
            const QString path = name ? base + QString::fromLatin1(name) : QString();
            QCOMPARE(getOVPath(OV_PATH_TAGS(tag), false, nullptr), path);
            QCOMPARE(getOVPath(OV_PATH_TAGS(tag), true, nullptr), path + u'/');
            ++tag;
        }
        QCOMPARE(getOVPath(OV_PATH_BASE, true, nullptr), base);
        QCOMPARE(getOVPath(OV_PATH_APPLICATION, false, nullptr), QCoreApplication::applicationDirPath());
        QCOMPARE(getOVPath(OV_PATH_TAGS(12), true, nullptr), "/"_s);
    }

    void versionStamp()
    {
        const QRegularExpression form("^4\\.8 \\((Jan|Feb|Mar|Apr|May|Jun|Jul|Aug|Sep|Oct|Nov|Dec) "
                                      "[1-9][0-9]? [0-9]{4}\\)$"_s);
        const QString stamp = ovparser::internal::versionStamp("4.8"_s);
        QVERIFY2(form.match(stamp).hasMatch(), qPrintable(stamp));
    }

    void identity()
    {
        CParserLibrary library;
        library = CParserLibrary();
        QCOMPARE(fnParserLibrary(), 42);
        QCOMPARE(nParserLibrary, 0);
    }
};

QTEST_GUILESS_MAIN(TestHelpers)
#include "tst_plhelpers.moc"
