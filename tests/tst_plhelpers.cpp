#include "internal/InfoText.h"
#include "internal/VersionStamp.h"
#include "support/Support.h"

#include <QtCore/QRegularExpression>

class TestHelpers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void imageTypes();
    void statuses();
    void secondsSince1904_data();
    void secondsSince1904();
    void datesAndTimes_data();
    void datesAndTimes();
    void names();
    void sectionOfAText_data();
    void sectionOfAText();
    void headerKeys_data();
    void headerKeys();
    void versionStamp();
    void identity();
};

void TestHelpers::imageTypes()
{
    const char* const names[] = {
        "Photograph",    "Luminescent",   "Read Bias",   "Read Sigma",      "Background",
        "Bias",          "Reference",     "Structure",   "Fluorescent Bkg", "FL Reference",
        "Luminescent A", "Luminescent B", "X-Ray",       "Overlay",         "Saturation Map",
        "Height Map",    "Photo Mask",    "Luminescent", "Saturation Map",  "Blemish"};
    int value = 0;
    for (const char* const name : names)
        QCOMPARE(getImageTypeString(tag_eimagetype(value++)), QString::fromLatin1(name));
    for (const int outside : {-1, 20, 1000})
        QVERIFY(getImageTypeString(tag_eimagetype(outside)).isEmpty());
}

void TestHelpers::statuses()
{
    QCOMPARE(getStatusString(eSTATUS_BAD_FORMAT), "eSTATUS_BAD_FORMAT"_s);
    int named = 0;
    for (int value = -1; value < 200; ++value)
        named += getStatusString(tag_estatus(value)).isEmpty() ? 0 : 1;
    QCOMPARE(named, 23);
}

void TestHelpers::secondsSince1904_data()
{
    QTest::addColumn<double>("since1970");
    QTest::addColumn<QString>("since1904");
    QTest::newRow("epoch") << 0.0 << "2082844800"_s;
    QTest::newRow("now") << 1700000000.0 << "3782844800"_s;
    QTest::newRow("cut") << 1.9 << "2082844801"_s;
    QTest::newRow("rounded into the integer") << 1.9999999 << "2082844802"_s;
    QTest::newRow("start") << -2082844800.0 << "0"_s;
    QTest::newRow("sign stays") << -2082844800.5 << "-0"_s;
}

void TestHelpers::secondsSince1904()
{
    QFETCH(double, since1970);
    QTEST(getTimefrom1904(since1970), "since1904");
}

void TestHelpers::datesAndTimes_data()
{
    QTest::addColumn<QDateTime>("moment");
    QTest::addColumn<QString>("date");
    QTest::addColumn<QString>("time");
    QTest::newRow("one digit") << QDateTime({2024, 3, 5}, {9, 5, 0}) << "Tuesday, March 05, 2024"_s
                               << "09:05:00"_s;
    QTest::newRow("two digits") << QDateTime({2023, 12, 25}, {17, 30, 59})
                                << "Monday, December 25, 2023"_s
                                << "17:30:59"_s;
    QTest::newRow("midnight") << QDateTime({2023, 1, 1}, {0, 0, 0}) << "Sunday, January 01, 2023"_s
                              << "00:00:00"_s;
}

void TestHelpers::datesAndTimes()
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

void TestHelpers::names()
{
    QCOMPARE(camelCaseString("user  label set"_s), "User Label Set"_s);
    QCOMPARE(camelCaseString("  a  b "_s), "A B"_s);
    QCOMPARE(camelCaseString("x-ray dATA"_s), "X-ray DATA"_s);
    QVERIFY(camelCaseString("   "_s).isEmpty());
    QCOMPARE(updateLabelSetName("Mirrane Universal Mirrane"_s), "Orvane Universal Orvane"_s);
    QCOMPARE(updateLabelSetName("mirrane Universal"_s), "mirrane Universal"_s);
}

void TestHelpers::sectionOfAText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("section");
    QTest::newRow("first of two") << "x\n*** A:1\nk\n*** B:2"_s
                                  << "*** A:1\nk\n"_s;
    QTest::newRow("last") << "x *** A:1\nk"_s
                          << "*** A:1\nk"_s;
    QTest::newRow("no mark") << "***A:1"_s
                             << ""_s;
}

void TestHelpers::sectionOfAText()
{
    QFETCH(QString, text);
    QTEST(getSectionBuffer(text), "section");
}

void TestHelpers::headerKeys_data()
{
    QTest::addColumn<QString>("header");
    QTest::addColumn<QString>("key");
    QTest::newRow("usual") << "*** Camera:\tUnit"_s
                           << "Camera"_s;
    QTest::newRow("no blank") << "***Camera: Unit"_s
                              << "Camera"_s;
    QTest::newRow("colons in the name") << "*** A b : c : d"_s
                                        << "A b"_s;
    QTest::newRow("comment in the name") << "*** A: b # c"_s
                                         << "A"_s;
    QTest::newRow("empty key") << "*** : b"_s
                               << ""_s;
    QTest::newRow("four asterisks") << "**** A: b"_s
                                    << "A"_s;
    QTest::newRow("no colon") << "*** A"_s << QString();
    QTest::newRow("comment before the colon") << "*** A # b: c"_s << QString();
    QTest::newRow("mark with blank behind the colon") << "***A: b *** c"_s << QString();
}

void TestHelpers::headerKeys()
{
    QFETCH(QString, header);
    QFETCH(QString, key);
    const auto found = ovparser::internal::headerKey(header);
    QCOMPARE(found.has_value(), !key.isNull());
    QCOMPARE(found.value_or(QStringView()).toString(), key);
}

void TestHelpers::versionStamp()
{
    const QRegularExpression form("^4\\.8 \\((Jan|Feb|Mar|Apr|May|Jun|Jul|Aug|Sep|Oct|Nov|Dec) "
                                  "[1-9][0-9]? [0-9]{4}\\)$"_s);
    const QString stamp = ovparser::internal::versionStamp("4.8"_s);
    QVERIFY2(form.match(stamp).hasMatch(), qPrintable(stamp));
}

void TestHelpers::identity()
{
    CParserLibrary library;
    library = CParserLibrary();
    QCOMPARE(fnParserLibrary(), 42);
    QCOMPARE(nParserLibrary, 0);
}

QTEST_APPLESS_MAIN(TestHelpers)
#include "tst_plhelpers.moc"
