// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * Documents share nothing: eight threads, each with documents of its own, under the thread
 * sanitizer where the build has it. A document that nobody changes may be read by all of them.
 */
#include "support/Support.h"

#include <QtCore/QDir>

#include <algorithm>
#include <thread>
#include <vector>

namespace {

constexpr int threadCount = 8;
constexpr int rounds = 20;

const QString study = support::example("study/SEQ20240305");

/** Loads, edits and saves a document of most kinds; gives what was written. */
QByteArray work(const QString& folder)
{
    CPLSequenceInfo sequence;
    sIASetupInfo setup;
    setup.acquisitionTime = 1709630102;
    sequence.loadFile(study + "/SequenceInfo.txt"_s);
    QByteArray written;
    for (int i = 0; i < sequence.getNumDatasets(); ++i) {
        CPLClickInfo info;
        info.loadClickInfo(sequence.getDatasetPath(i), true);
        info.setValue("User Input"_s, "Comment1"_s, i);
        QString value;
        info.obtainValueFromClickInfoFile(sequence.getDatasetPath(i), "User ID"_s, &value);
        info.addTiffImageSection(value, eIMAGE_FL_REFERENCE, &setup, false);
        info.saveClickInfo(folder + "/ClickInfo.txt"_s);
        written += support::readFile(folder + "/ClickInfo.txt"_s);
    }
    CPLBkgSummaryInfo summary;
    summary.load(support::example("background/BkgSummary.txt"));
    CPLCameraInfo camera;
    camera.load(support::example("instrument/CameraInfo.txt"));
    CPLSettingsFileWrapper settings("Preset"_s, "Preset"_s);
    settings.load(support::example("settings/Presets.txt"));
    CPLOptPropInfo optics;
    optics.readSettingFile(support::example("settings/OpticalProperties.txt"));
    for (const CPLClickInfo* const info : {static_cast<CPLClickInfo*>(&summary), static_cast<CPLClickInfo*>(&camera),
                                           static_cast<CPLClickInfo*>(&settings)})
        written += info->getClickInfoData();
    CPLSpectralWrapper spectrum;
    spectrum.loadXMLFile(support::example("spectral/Spectral.xml"));
    const QString points = QString::number(spectrum.getROIPlotResultsForROI("ROI 1"_s).size());
    spectrum.createSpectralXMLFile(folder + "/Spectral.xml"_s);
    spectrum.setOpenSpectralAnalysisPlotResults(optics.getSrcModelList().join(u'|') + points, 1);
    spectrum.setCloseSpectralAnalysisPlotResults();
    spectrum.setCloseSpectralAnalysis();
    return written + support::readFile(folder + "/Spectral.xml"_s);
}

} // namespace

class TestThreads : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void documentsOfTheirOwn()
    {
        const QTemporaryDir folder;
        for (int i = 0; i < threadCount; ++i)
            QVERIFY(QDir(folder.path()).mkdir(QString::number(i)));
        std::vector<QByteArray> results(threadCount);
        std::vector<std::thread> threads;
        threads.reserve(threadCount);
        for (int i = 0; i < threadCount; ++i) {
            threads.emplace_back([&result = results[std::size_t(i)], own = folder.filePath(QString::number(i))] {
                for (int round = 0; round < rounds; ++round)
                    result += work(own);
            });
        }
        for (std::thread& thread : threads)
            thread.join();
        const QByteArray expected = work(folder.path()).repeated(rounds);
        QVERIFY(expected.size() > rounds * 4000);
        QVERIFY(
            std::all_of(results.begin(), results.end(), [&](const QByteArray& result) { return result == expected; }));
    }

    void oneDocumentThatNobodyChanges()
    {
        constexpr int sectionCount = 400;
        QString text;
        for (int i = 0; i < sectionCount; ++i)
            text += "*** S%1:\nKey:%1\nAlso:%1 # c\nKey %1:%1\n"_s.arg(i);
        CPLClickInfo loaded;
        QCOMPARE(loaded.loadTextBuffer(text), eSTATUS_SUCCESS);
        const CPLClickInfo& document = loaded;
        std::vector<int> right(threadCount);
        std::vector<QByteArray> written(threadCount);
        std::vector<std::thread> threads;
        threads.reserve(threadCount);
        for (std::size_t thread = 0; thread < threadCount; ++thread) {
            threads.emplace_back([&document, &count = right[thread], &bytes = written[thread], thread] {
                if (thread == 0)
                    bytes = document.getClickInfoData();
                for (int i = 0; i < sectionCount; ++i) {
                    int value = -1;
                    QStringList keys;
                    const CPLSection* const section = document["s%1"_s.arg(i)];
                    section->getKeyList(&keys);
                    count += document.getValue("S%1"_s.arg(i), "ALSO"_s, &value) == eSTATUS_SUCCESS && value == i &&
                             keys == QStringList{"Key"_s, "Also"_s, "Key %1"_s.arg(i)};
                }
                if (thread != 0)
                    bytes = CPLClickInfo(document).getClickInfoData();
            });
        }
        for (std::thread& thread : threads)
            thread.join();
        QCOMPARE(right, std::vector<int>(threadCount, sectionCount));
        QCOMPARE(written, std::vector<QByteArray>(threadCount, document.getClickInfoData()));
    }
};

QTEST_GUILESS_MAIN(TestThreads)
#include "tst_threads.moc"
