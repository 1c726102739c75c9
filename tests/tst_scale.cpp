// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * How time grows: eight times the input must not take the 64 times that squared work would, and
 * files of an extreme form load within a bound. Processor time counts, so that other programs do
 * not.
 */
#include "support/Heap.h"
#include "support/Support.h"

#include <QtCore/QBuffer>

#include <algorithm>
#include <ctime>
#include <functional>
#include <limits>

namespace {

using Work = std::function<void()>;

/** Prepares an input of a size and gives the work on it, which is what is timed. */
using Workload = std::function<Work(int size)>;

constexpr int sizes[] = {1, 2, 4, 8};

const QTemporaryDir folder;

QString saved(const QByteArray& text)
{
    const QString path = folder.filePath("input"_s);
    support::writeFile(path, text);
    return path;
}

double secondsOf(const Work& work)
{
    const std::clock_t start = std::clock();
    work();
    return double(std::clock() - start) / CLOCKS_PER_SEC;
}

/** How many times as long the greatest size takes as the least. */
double growthOf(const Workload& workload, int unit)
{
    double times[std::size(sizes)] = {};
    for (std::size_t i = 0; i < std::size(sizes); ++i) {
        const Work work = workload(unit * sizes[i]);
        times[i] = std::numeric_limits<double>::max();
        for (int run = 0; run < 3; ++run)
            times[i] = std::min(times[i], secondsOf(work));
    }
    const double growth = times[std::size(sizes) - 1] / times[0];
    qInfo("%.1f times as long, from %.1f ms", growth, times[0] * 1000);
    return growth;
}

QByteArray numbered(const char* form, int count)
{
    QByteArray text;
    for (int i = 1; i <= count; ++i)
        text += QByteArray(form).replace('%', QByteArray::number(i));
    return text;
}

QByteArray manySections(int count)
{
    return "preamble\r\n" + numbered("*** Preset %:\tname\r\nMenuName:\tmenu %\r\n\r\n", count);
}

/** Work on a document that is made anew each time. */
template <typename Document, typename Operation>
Workload onFresh(QByteArray (*textOf)(int), Operation operation)
{
    return [=](int size) -> Work {
        const QByteArray text = textOf(size);
        return [operation, text, path = saved(text)] {
            Document document;
            operation(document, path, text);
        };
    };
}

/** Work on one document that holds sections. */
template <typename Document, typename Operation>
Workload onLoaded(Operation operation)
{
    return [=](int size) -> Work {
        const auto document = std::make_shared<Document>();
        document->loadTextBuffer(QString::fromLatin1(manySections(size)));
        return [document, operation, size] { operation(*document, size); };
    };
}

template <typename Document, typename Operation>
Workload repeated(Operation operation)
{
    return [=](int size) -> Work {
        return [operation, size] {
            Document document;
            for (int i = 0; i < size; ++i)
                operation(document, i);
        };
    };
}

} // namespace

Q_DECLARE_METATYPE(Workload)

class TestScale : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void initTestCase() { support::keepFreedMemory(); }

    void growth_data()
    {
        QTest::addColumn<int>("unit");
        QTest::addColumn<Workload>("workload");
        addLoaders();
        addSavers();
        addListOperations();
    }

    void growth()
    {
        QFETCH(int, unit);
        QFETCH(Workload, workload);
        // Triple per doubling leaves room for caches. Squared work is seen each time, a busy machine once.
        double growth = 64;
        for (int attempt = 0; attempt < 3 && growth >= 27; ++attempt)
            growth = growthOf(workload, unit);
        QVERIFY(growth < 27);
    }

    void extremes_data()
    {
        QTest::addColumn<Workload>("workload");
        const auto load = [](CPLClickInfo& info, const QString& path, const QByteArray&) {
            QCOMPARE(info.loadClickInfo(path, true), eSTATUS_SUCCESS);
            QVERIFY(info.getClickInfoData().size() > 1000000);
        };
        const auto loadAndLook = [load](CPLClickInfo& info, const QString& path, const QByteArray& text) {
            load(info, path, text);
            QVERIFY(info[0]->count() > 0);
        };
        add("100,000 sections", onFresh<CPLClickInfo>([](int) { return manySections(100000); }, load));
        const auto longLine = [](int) { return "*** A: a\nkey: " + QByteArray(50 << 20, 'x') + '\n'; };
        add("a line of 50 MB", onFresh<CPLClickInfo>(longLine, loadAndLook));
        const auto repeatedKeys = [](int) { return "*** A: a\n" + QByteArray("key: value\n").repeated(1000000); };
        add("a million times one key", onFresh<CPLClickInfo>(repeatedKeys, loadAndLook));
        const auto pairs = [](int) { return "***Structure reference: A;" + numbered("k%:v;", 1000000) + '\n'; };
        const auto loadIndex = [](CPLBkgSummaryInfo& index, const QString& path, const QByteArray&) {
            QCOMPARE(index.SLload(path), eSTATUS_SUCCESS);
            QCOMPARE(index[0]->count(), 1000001);
        };
        add("a million pairs of an index", onFresh<CPLBkgSummaryInfo>(pairs, loadIndex));
    }

    void extremes()
    {
        QFETCH(Workload, workload);
        const double seconds = secondsOf(workload(0));
        qInfo("%.2f s", seconds);
        QVERIFY(seconds < 20);
    }

private:
    static void add(const char* name, const Workload& workload) { support::row(name, workload); }

    static void add(const char* name, int unit, const Workload& workload) { support::row(name, unit, workload); }

    static void addLoaders()
    {
        using Path = const QString&;
        using Bytes = const QByteArray&;
        const auto click = [](CPLClickInfo& info, Path path, Bytes) { info.loadClickInfo(path, true); };
        add("load", 2000, onFresh<CPLClickInfo>(manySections, click));
        const auto analyzed = [](CPLClickInfo& info, Path path, Bytes) { info.loadAnalyzedClickInfo(path); };
        add("analysis", 2000, onFresh<CPLClickInfo>(manySections, analyzed));
        const auto value = [](CPLClickInfo& info, Path path, Bytes) {
            QString text;
            info.obtainValueFromClickInfoFile(path, "absent"_s, &text);
        };
        add("one value", 5000, onFresh<CPLClickInfo>(manySections, value));
        const auto marks = [](int count) {
            return "*** ClickNumbers:\na: A\n" + numbered("*** S%:\tn\nk%: v\n", count);
        };
        const auto sequence = [](CPLSequenceInfo& info, Path path, Bytes) { info.loadFile(path); };
        add("sequence", 2000, onFresh<CPLSequenceInfo>(marks, sequence));
        const auto bareMarks = [](int count) { return QByteArray("*** ").repeated(count) + ':'; };
        add("sequence of marks", 50000, onFresh<CPLSequenceInfo>(bareMarks, sequence));
        const auto summary = [](CPLBkgSummaryInfo& info, Path path, Bytes) { info.load(path); };
        add("summary", 2000, onFresh<CPLBkgSummaryInfo>(manySections, summary));
        const auto references = [](int count) { return numbered("***Structure reference: A%;k:v;\n", count); };
        const auto index = [](CPLBkgSummaryInfo& info, Path path, Bytes) { info.SLload(path); };
        add("index", 2000, onFresh<CPLBkgSummaryInfo>(references, index));
        const auto pairs = [](int count) { return "***Structure reference: A;" + numbered("k%:v;", count) + '\n'; };
        add("index pairs", 5000, onFresh<CPLBkgSummaryInfo>(pairs, index));
        const auto filters = [](int count) { return numbered("***Fluorescent reference: A%;k:v;\n", count); };
        const auto filterIndex = [](CPLBkgSummaryInfo& info, Path path, Bytes) { info.FLload(path); };
        add("filter index", 2000, onFresh<CPLBkgSummaryInfo>(filters, filterIndex));
        const auto dicom = [](CPLClickInfo& info, Path, Bytes text) {
            info.loadClickInfoDcm(text.constData(), int(text.size()));
        };
        add("DICOM text", 2000, onFresh<CPLClickInfo>(manySections, dicom));
        const auto again = [](int count) { return "*** A: a\n" + QByteArray("key: value\n").repeated(count); };
        const auto saveAgain = [](CPLClickInfo& info, Path path, Bytes) {
            info.loadClickInfo(path, false);
            QVERIFY(info[0]->count() > 0);
            info.saveClickInfo(folder.filePath("output"_s));
        };
        add("one key again and again", 5000, onFresh<CPLClickInfo>(again, saveAgain));
        const auto settings = [](CPLSettingsFileWrapper& info, Path path, Bytes) { info.load(path); };
        add("settings", 2000, onFresh<CPLSettingsFileWrapper>(manySections, settings));
        const auto menus = [](int count) { return numbered("*** Source Model %:\nMenuName: M%\n", count); };
        const auto optics = [](CPLOptPropInfo& info, Path path, Bytes) { info.readSettingFile(path); };
        add("optical properties", 1000, onFresh<CPLOptPropInfo>(menus, optics));
        const auto keys = [](int count) { return "*** Camera System Info:\n" + numbered("Key %: v\n", count); };
        const auto camera = [](CPLCameraInfo& info, Path path, Bytes) { info.load(path); };
        add("instrument", 5000, onFresh<CPLCameraInfo>(keys, camera));
        const auto labels = [](int count) { return "*** User Label Name Set:\tM\n" + numbered("L%:\ta;\n", count); };
        const auto label = [](CPLLabelDataSet& set, Path, Bytes text) { set.loadData(QString::fromLatin1(text)); };
        add("labels", 5000, onFresh<CPLLabelDataSet>(labels, label));
        const auto list = [](CPLPreferenceKey& key, Path, Bytes text) { key.loadData(QString::fromLatin1(text)); };
        add("preferences", 5000, onFresh<CPLPreferenceKey>([](int count) { return numbered("v%;", count); }, list));
        const auto elements = [](int count) { return "<a>" + numbered("<b c='%'>t</b>", count) + "</a>"; };
        const auto xml = [](CPLXMLReader& reader, Path path, Bytes) {
            QVERIFY(reader.createXMLDocumentFormFile(path, nullptr, nullptr, nullptr));
        };
        add("XML", 5000, onFresh<CPLXMLReader>(elements, xml));
        add("XML, one text", 100000,
            onFresh<CPLXMLReader>([](int count) { return "<a>" + QByteArray("text &amp;").repeated(count) + "</a>"; },
                                  xml));
    }

    static void addSavers()
    {
        add("save", 2000, onLoaded<CPLClickInfo>([](const CPLClickInfo& info, int) {
                info.saveClickInfo(folder.filePath("output"_s));
            }));
        add("copy", 2000, onLoaded<CPLClickInfo>([](const CPLClickInfo& info, int) { const CPLClickInfo copy(info); }));
        add("write XML", 1000, [](int size) -> Work {
            return [size] {
                QBuffer buffer;
                buffer.open(QIODevice::WriteOnly);
                CPLXMLWriter writer(&buffer, nullptr);
                for (int i = 0; i < size; ++i)
                    writer.writeTaggedString("a"_s, "text & more"_s, AttrMap());
            };
        });
    }

    static void addListOperations()
    {
        using Info = CPLClickInfo;
        const auto everySection = [](Info& info, int size) {
            for (int i = 0; i < size; ++i)
                QVERIFY(info[i] && info["preset %1"_s.arg(i + 1)]);
        };
        add("sections", 2000, onLoaded<Info>(everySection));
        add("clear", 2000, onLoaded<Info>([](Info& info, int) {
                Info copy(info);
                copy.clearData();
            }));
        add("sections away", 2000, onLoaded<Info>([](Info& info, int size) {
                Info copy(info);
                for (int i = size; i > 0; --i)
                    QCOMPARE(copy.removeSection("preset %1"_s.arg(i)), eSTATUS_SUCCESS);
            }));
        add("new sections", 2000,
            repeated<Info>([](Info& info, int i) { info.addSection(new CPLSection("S%1"_s.arg(i), ""_s)); }));
        add("new pairs", 2000, repeated<CPLSection>([](CPLSection& section, int i) {
                section.addKeyValue("k%1"_s.arg(i), "v"_s);
                QVERIFY(section.isKeyPresent("K%1"_s.arg(i)) && section[i] == "v"_s);
            }));
        add("sequence sections", 2000, [](int size) -> Work {
            return [size] {
                CPLSequenceInfo sequence;
                for (int i = 0; i < size; ++i)
                    sequence.addSection(new CPLSection("S%1"_s.arg(i), ""_s));
                for (int i = size; i-- > 0;)
                    QCOMPARE(sequence.removeSection("S%1"_s.arg(i)), eSTATUS_SUCCESS);
            };
        });
        add("dataset numbers", 2000, repeated<CPLSequenceInfo>([](CPLSequenceInfo& sequence, int i) {
                sequence.addClickNumber("A%1"_s.arg(i));
                QVERIFY(!sequence.getDatasetPath(i).isEmpty());
            }));
        add("values", 5000,
            repeated<CPLPreferenceKey>([](CPLPreferenceKey& key, int i) { key.addValue("v%1"_s.arg(i)); }));
        using Settings = CPLSettingsFileWrapper;
        add("menu", 2000, onLoaded<Settings>([](Settings& settings, int size) {
                QCOMPARE(int(settings.getMenuNames().size()), size);
                QCOMPARE(settings.getNextAvailableSectionName("Preset"_s), "Preset %1"_s.arg(size + 1));
                QVERIFY(settings.isUnique("absent"_s));
            }));
        add("plot", 5000, [](int size) -> Work {
            QByteArray text = "<OV:><OV:.Plot.Results ROI.Label='A' Total.Plot.Values='%1'>" +
                              QByteArray("<OV:.Plot.Values Intensity='2.5'/>").repeated(size) +
                              "</OV:.Plot.Results></OV:>";
            text.replace("OV:", "OV3.0.SpectralAnalysis").replace("%1", QByteArray::number(size));
            const auto file = std::make_shared<CPLSpectralWrapper>();
            [&] { QVERIFY(file->loadXMLFile(saved(text))); }();
            return [file, size] { QCOMPARE(int(file->getROIPlotResultsForROI("a"_s).size()), size); };
        });
    }
};

QTEST_GUILESS_MAIN(TestScale)
#include "tst_scale.moc"
