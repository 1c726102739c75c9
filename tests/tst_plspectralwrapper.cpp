// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "support/Support.h"

#include <algorithm>
#include <limits>
#include <locale>

namespace {

const QString sample = support::example("spectral/Spectral.xml");
const QString roi1 = "1"_s;
const QString roiName = "ROI 1"_s;

QByteArray withoutDate(QByteArray bytes)
{
    const auto first = bytes.indexOf(" Date.Time=");
    return bytes.remove(first, bytes.indexOf(" Index.of.Refraction=") - first);
}

_tagsROIProperties circle()
{
    _tagsROIProperties roi;
    roi.roiLabel = roiName;
    roi.roiShape = "Circle"_s;
    roi.xc = 6.25;
    roi.yc = 5.5;
    roi.width = roi.height = 1.2;
    roi.cmPerPixel = 0.0125;
    roi.roiPixels = 7238;
    roi.area = 1.130973;
    roi.lockPosition = roi.lockSize = "No"_s;
    roi.roiType = "Measurement"_s;
    roi.fractionalPeak = 0.5;
    roi.bkgAssociation = "None"_s;
    return roi;
}

void writeClick(CPLSpectralWrapper& file, const char* number, int wavelength)
{
    const QString label = QString::number(wavelength);
    file.setClickNumberInfo(QLatin1String(number), label);
    file.setClickNumberFilterProperties(wavelength, 20.0F, 0.85F);
    file.setClickNumberROIProperties(roi1, circle(), false);
    file.setROIMeasurementsProperties(label, 1.75e6, 12345.67);
    file.setCloseClickNumberInfo();
}

/** Writes what the sample file holds. */
void writeSample(CPLSpectralWrapper& file)
{
    file.setSpectralAttributes("SEQ20240305"_s, 2, "luminescent"_s, "Muscle"_s, "Firefly"_s, 1.4F);
    file.setOpenClickInfo(2);
    writeClick(file, "ABC20240305091502", 560);
    writeClick(file, "ABC20240305092010", 620);
    file.setCloseClickInfo();
    file.setSpectralAnalysisResults(roi1, 1.75e6, 3200, "p/s"_s, 4.2, 0.3, "mm"_s);
    file.setOpenSpectralAnalysisPlotResults(roiName, 2);
    file.setSpectralAnalysisPlotResults(10.5, 560);
    file.setSpectralAnalysisPlotResults(20.25, 620);
    file.setCloseSpectralAnalysisPlotResults();
    file.setOpenSpectralAnalysisFitResults(roiName, 2);
    file.setSpectralAnalysisFitResults(10.5, 0.5, 0.48, 0.01, 0.02);
    file.setSpectralAnalysisFitResults(20.25, 0.2, 0.21, 0.01, 0.02);
    file.setCloseSpectralAnalysisFitResults();
    file.setLinearFitResults(1.5, -0.25);
    file.setCloseSpectralAnalysis();
}

} // namespace

class TestSpectralWrapper : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void writesTheSample()
    {
        {
            CPLSpectralWrapper file;
            QVERIFY(file.createSpectralXMLFile(path()));
            writeSample(file);
            QVERIFY(support::readFile(path()).endsWith("</OV3.0.SpectralAnalysis>\n"));
        }
        QVERIFY(CPLSpectralWrapper().setDateAndTime().contains(
            ", "_s + QLocale::system().toString(QDate::currentDate(), QLocale::ShortFormat)));
        QCOMPARE(withoutDate(support::readFile(path())), withoutDate(support::readFile(sample)));
    }

    void numbersAndContour()
    {
        const std::locale before = std::locale::global(std::locale(std::locale(), new support::DecimalComma));
        CPLSpectralWrapper file;
        QVERIFY(file.createSpectralXMLFile(path()));
        file.setSpectralAnalysisPlotResults(1234567, 0.00001234);
        file.setSpectralAnalysisPlotResults(-0.0, 0.5000005);
        file.setClickNumberFilterProperties(-5, 1e-5F, 1e6F);
        _tagsROIProperties roi = circle();
        roi.roiLabel = "<&>"_s;
        roi.contourDirections = "NSWE"_s;
        roi.contourPeakX = 123456.5;
        roi.contourYDelta = -2;
        file.setClickNumberROIProperties(roi1, roi, true);
        const double nan = std::numeric_limits<double>::quiet_NaN();
        file.setLinearFitResults(nan, -nan);
        std::locale::global(before);
        const QList<QByteArray> lines = support::readFile(path()).split('\n');
        QVERIFY(lines[2].endsWith("Values Intensity=\"1.23457e+06\" Wave.Length=\"1.234e-05\"/>"));
        QVERIFY(lines[3].endsWith("Values Intensity=\"-0\" Wave.Length=\"0.5\"/>"));
        QVERIFY(lines[4].endsWith("Transmission=\"1e+06\" Band.Width=\"1e-05\" "
                                  "Central.Wavelength=\"-5nm\"/>"));
        QVERIFY(lines[5].endsWith(" ROI=\"1\" ROI.Label=\"&lt;&amp;&gt;\">"));
        QVERIFY(lines[6].contains(" CmPerPixel=\"0.0125\" Contour.Directions=\"NSWE\" Contour.PeakX=\"123456\" "
                                  "Contour.PeakY=\"0\" Contour.StartX=\"0\" Contour.StartY=\"0\" Contour.XDelta=\"0\" "
                                  "Contour.YDelta=\"-2\" Fractional.Peak=\"0.5\" "));
        QCOMPARE(lines[6].count("=\""), 22);
        QVERIFY(lines[8].endsWith(".A=\"nan\" Linear.fit.value.B=\"nan\"/>"));
    }

    void filesThatAreNotThere()
    {
        CPLSpectralWrapper file;
        file.setCloseSpectralAnalysis(); // no writer yet
        QVERIFY(!file.createSpectralXMLFile(m_folder.filePath("none/file.xml"_s)));
        file.setCloseSpectralAnalysis();
        QVERIFY(!file.loadXMLFile(m_folder.filePath("none/file.xml"_s)));
        QVERIFY(file.getROISpectralResults().isEmpty());

        const QString second = m_folder.filePath("second.xml"_s);
        QVERIFY(file.createSpectralXMLFile(path()));
        QVERIFY(file.createSpectralXMLFile(second));
        file.setCloseSpectralAnalysis();
        const QByteArray head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                "<!DOCTYPE OV3.0.SpectralAnalysis><OV3.0.SpectralAnalysis>\n";
        QCOMPARE(support::readFile(path()), head);
        QCOMPARE(support::readFile(second), head + "</OV3.0.SpectralAnalysis>\n");
    }

    void readsAttributes()
    {
        CPLSpectralWrapper file;
        QVERIFY(file.loadXMLFile(sample));
        int clicks = -1;
        QVERIFY(file.getNumberOfClicksForROIIndex(&clicks));
        QCOMPARE(clicks, 2);
        QVERIFY(!file.getNumberOfClicksForROIIndex(&clicks));

        QString id;
        QString image;
        QString tissue;
        QString model;
        QString refraction;
        QVERIFY(file.getSpectralAttributes(&id, &clicks, &image, &tissue, &model, 0, &refraction));
        QCOMPARE(QStringList({id, image, tissue, model, refraction}).join(QLatin1Char('|')),
                 "SEQ20240305|luminescent|Muscle|Firefly|1.4"_s);
        QVERIFY(file.getNumberOfClicksForROIIndex(&clicks));
        for (const int index : {-1, 1, 6, 7})
            QVERIFY(!file.getSpectralAttributes(&id, &clicks, &image, &tissue, &model, index, &refraction));
        QVERIFY(!file.getSpectralAttributes(&id, &clicks, &image, &tissue, &model, 0, nullptr));
        int wavelength = -1;
        QVERIFY(!file.getSpectralAnalysisAttributes(&id, &clicks, &wavelength, &tissue, &model));
        QCOMPARE(wavelength, -1);

        QVERIFY(load(file, "<OV:Attributes SequenceID='S' No.Of.Clicks='3' Tissue.Property='T' "
                           "Source.Model='M' Active.Wavelength=' 560 ' a='' b='' c=''/>"));
        QVERIFY(file.getSpectralAnalysisAttributes(&id, &clicks, &wavelength, &tissue, &model));
        QCOMPARE(QStringList({id, tissue, model}), "S T M"_s.split(QLatin1Char(' ')));
        QCOMPARE(clicks, 3);
        QCOMPARE(wavelength, 560);
    }

    void readsClicks()
    {
        CPLSpectralWrapper file;
        QVERIFY(file.loadXMLFile(sample));
        _tagSClickROIInformation info;
        info.filterLabel = "kept"_s;
        info.contourXDelta = 7;
        QVERIFY(!file.getClickAndROIInformationForIndex(&info, 1, 0)); // measurements elsewhere
        QCOMPARE(QStringList({info.clickNumber, info.imageWavelength, info.centralWavelength, info.roi, info.roiLabel,
                              info.roiShape, info.roiType, info.lockPosition, info.lockSize, info.bkgAssociation,
                              info.filterLabel})
                     .join(QLatin1Char('|')),
                 "ABC20240305092010|620nm|620nm|1|ROI 1|Circle|Measurement|No|No|"
                 "None|kept"_s);
        const QList<double> reals = {
            info.avgTransmission, info.bandWidth, info.xc,         info.yc,   info.angle,
            info.width,           info.height,    info.cmPerPixel, info.area, info.fractionalPeak};
        QCOMPARE(reals, QList<double>({0.85, 20, 6.25, 5.5, 0, 1.2, 1.2, 0.0125, 1.13097, 0.5}));
        QCOMPARE(info.roiPixels, 7238);
        QCOMPARE(info.contourXDelta, 7);
        QVERIFY(!file.getClickAndROIInformationForIndex(&info, 2, 0));
        QVERIFY(!file.getClickAndROIInformationForIndex(&info, 0, 1));
        QCOMPARE(info.clickNumber, "ABC20240305092010"_s);
    }

    void readsContourAndMeasurements_data()
    {
        QTest::addColumn<QByteArray>("shape");
        QTest::addColumn<int>("delta");
        support::row("contour", QByteArray("Contour"), 3);
        support::row("another word", QByteArray("contour"), 0);
    }

    void readsContourAndMeasurements()
    {
        QFETCH(QByteArray, shape);
        QFETCH(int, delta);
        CPLSpectralWrapper file;
        QVERIFY(load(file, "<OV:Attributes/><OV:ClickInfo/><ov3.0.spectralANALYSIS.Attributes/><OV:ClickInfo>"
                           "<OV:ClickInfo.Click><OV:Click.Filter.Properties/><OV:Click.ROI>"
                           "<OV:Click.ROI.Properties ROI.Shape='" +
                               shape +
                               "' Contour.XDelta='3' Sub.Association='s'/>"
                               "<OV:Click.ROI.Measurements Filter.Label='f' Total.Flux='2.5' "
                               "Average.Radiance='x'/></OV:Click.ROI></OV:ClickInfo.Click>"
                               "</OV:ClickInfo>"));
        _tagSClickROIInformation info;
        QVERIFY(file.getClickAndROIInformationForIndex(&info, 0, 1));
        QCOMPARE(info.contourXDelta, delta);
        QCOMPARE(info.subAssociation + info.filterLabel, "sf"_s);
        QCOMPARE(info.totalFlux, 2.5);
        QCOMPARE(info.averageRadiance, 0.0);
    }

    void readsResults()
    {
        CPLSpectralWrapper file;
        QVERIFY(!load(file,
                      "<OV:Results ROI='1'><OV:Results.Flux Total.Flux='2' Flux.Std.Dev='3' u=''/>"
                      "<OV:Results.Depth Average.Depth='4' Depth.Std.Dev='5' u=''/></OV:Results>"
                      "<OV:Results ROI='2' x=''><!-- -->"
                      "<OV:Results.Depth Average.Depth='6' Depth.Std.Dev='7' u=''/></OV:Results>"
                      "<OV:Results ROI='3'><OV:Results.Flux Total.Flux='8'/></OV:Results>",
                      "another"));
        QStringList found;
        const auto results = file.getROISpectralResults();
        for (const auto& r : results)
            found +=
                "%1:%2,%3,%4,%5"_s.arg(r.roi).arg(r.totalFlux).arg(r.fluxStdDev).arg(r.averageDepth).arg(r.depthStdDev);
        QCOMPARE(found.join(QLatin1Char(' ')), "1:2,3,4,5 :0,0,6,7 3:0,0,0,0"_s);
        QVERIFY(!file.loadXMLFile(m_folder.filePath("missing"_s)));
        QCOMPARE(file.getROISpectralResults().size(), 3);
    }

    void readsPlotAndFits()
    {
        CPLSpectralWrapper file;
        QVERIFY(load(file,
                     "<OV:Plot.Results ROI.Label='A' Total.Plot.Values='1'>"
                     "<OV:Plot.Values Intensity='1' Wave.Length='560'/></OV:Plot.Results>"
                     "<OV:Plot.Results ROI.Label='a' Total.Plot.Values='3'><OV:Plot.Values/>"
                     "<OV:Plot.Values/></OV:Plot.Results>"
                     "<OV:Fit.Results ROI.Label='A' Total.Fit.Values='1'><OV:Fit.Values "
                     "Intensity='1' Attenuation='2' Fit.Value='3' Horizontal.Error='4' "
                     "Vertical.Error='5'/></OV:Fit.Results>"
                     "<OV:Plot.Results ROI.Label='a' Total.Plot.Values='2'><OV:Fit.Values/>"
                     "<OV:Plot.Values Intensity='2' Wave.Length='620'/></OV:Plot.Results>"
                     "<OV:Linear.Fit.Values Linear.fit.value.A='6' Linear.fit.value.B='-7e2'/>"
                     "<OV:Linear.Fit.Values/>",
                     "ov3.0.SPECTRALANALYSIS"));
        const QList<SPlotResults> plot = file.getROIPlotResultsForROI("A"_s);
        QCOMPARE(plot.size(), 2);
        QCOMPARE(plot[0].intensity + plot[0].waveLength, 561.0);
        QCOMPARE(plot[1].intensity * plot[1].waveLength, 1240.0);
        const QList<SFitResults> fit = file.getROIFitResultsForROI("a"_s);
        QCOMPARE(fit.size(), 1);
        QCOMPARE(QList<double>({fit[0].intensity, fit[0].attenuation, fit[0].fitValue, fit[0].horizontalError,
                                fit[0].verticalError}),
                 QList<double>({1, 2, 3, 4, 5}));
        QVERIFY(file.getROIFitResultsForROI("b"_s).isEmpty());
        double valueA = 0;
        double valueB = 0;
        QVERIFY(file.getLinearFitResults(&valueA, &valueB));
        QCOMPARE(valueA, 6.0);
        QCOMPARE(valueB, -700.0);
        QVERIFY(load(file, "<OV:Linear.Fit.Values Linear.fit.value.A='1e999' Linear.fit.value.B='x'/>"));
        QVERIFY(file.getLinearFitResults(&valueA, &valueB));
        QCOMPARE(valueA, 0.0);
        QCOMPARE(valueB, 0.0);
        QVERIFY(load(file, ""));
        QVERIFY(!file.getLinearFitResults(&valueA, &valueB));
    }

private:
    QString path() { return m_folder.filePath("file.xml"_s); }

    /** Loads a file whose root holds the given children; "OV:" stands for the element prefix. */
    bool load(CPLSpectralWrapper& wrapper, QByteArray children, const QByteArray& root = "OV3.0.SpectralAnalysis")
    {
        children.replace("OV:", "OV3.0.SpectralAnalysis.");
        support::writeFile(path(), "<" + root + ">" + children + "</" + root + ">");
        return wrapper.loadXMLFile(path());
    }

    QTemporaryDir m_folder;
};

QTEST_APPLESS_MAIN(TestSpectralWrapper)
#include "tst_plspectralwrapper.moc"
