// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Support.h"

#include <algorithm>
#include <cstdio>

using namespace fuzz;

namespace {

/** The lines of a part, one after the other; beyond the last one everything is empty. */
class Values
{
public:
    explicit Values(const QByteArray& part)
        : m_lines(part.split('\n'))
    {}

    /** A text of characters that XML can hold in an attribute. */
    QString text()
    {
        QString text = QString::fromUtf8(m_lines.value(m_next++));
        for (QChar& c : text) {
            if (c < u' ' || c.isNonCharacter() || c.isSurrogate())
                c = u'_';
        }
        return text;
    }

    double real() { return m_lines.value(m_next++).toDouble(); }

    int integer() { return m_lines.value(m_next++).toInt(); }

private:
    QList<QByteArray> m_lines;
    int m_next = 0;
};

/** Whether numbers come back with the six digits that the file keeps. */
bool kept(std::initializer_list<double> read, std::initializer_list<double> written)
{
    return std::equal(read.begin(), read.end(), written.begin(), written.end(),
                      [](double a, double b) {
                          char text[32] = {};
                          std::snprintf(text, sizeof(text), "%g", b);
                          return sameNumber(a, QByteArray(text).toDouble());
                      });
}

struct Written
{
    QString texts[6];
    _tagsROIProperties roi;
    double reals[8] = {};
    int clicks = 0;
    int values = 0;
    bool contour = false;
};

Written take(Values& values)
{
    Written written;
    for (QString& text : written.texts)
        text = values.text();
    for (double& real : written.reals)
        real = values.real();
    _tagsROIProperties& roi = written.roi;
    roi.roiLabel = values.text();
    roi.roiShape = values.text();
    roi.roiType = values.text();
    roi.bkgROI = values.text();
    roi.contourDirections = values.text();
    for (double* const real : {&roi.xc, &roi.yc, &roi.angle, &roi.width, &roi.area,
                               &roi.contourPeakX, &roi.contourStartY, &roi.fractionalPeak})
        *real = values.real();
    roi.roiPixels = values.integer();
    roi.contourXDelta = values.integer();
    written.clicks = values.integer() & 3;
    written.values = values.integer() & 7;
    written.contour = (values.integer() & 1) != 0;
    return written;
}

void write(CPLSpectralWrapper& file, const Written& w)
{
    file.setSpectralAttributes(w.texts[0], w.clicks, w.texts[1], w.texts[2], w.texts[3],
                               float(w.reals[0]));
    file.setOpenClickInfo(w.clicks);
    for (int i = 0; i < w.clicks; ++i) {
        file.setClickNumberInfo(w.texts[4], w.texts[5]);
        file.setClickNumberFilterProperties(w.roi.roiPixels, float(w.reals[1]), float(w.reals[2]));
        file.setClickNumberROIProperties(w.texts[4], w.roi, w.contour);
        file.setROIMeasurementsProperties(w.texts[5], w.reals[3], w.reals[4]);
        file.setCloseClickNumberInfo();
    }
    file.setCloseClickInfo();
    file.setSpectralAnalysisResults(w.texts[0], w.reals[0], w.reals[1], w.texts[1], w.reals[2],
                                    w.reals[3], w.texts[2]);
    file.setOpenSpectralAnalysisPlotResults(w.texts[3], w.values);
    for (int i = 0; i < w.values; ++i)
        file.setSpectralAnalysisPlotResults(w.reals[i], w.reals[7 - i]);
    file.setCloseSpectralAnalysisPlotResults();
    file.setOpenSpectralAnalysisFitResults(w.texts[4], w.values);
    for (int i = 0; i < w.values; ++i)
        file.setSpectralAnalysisFitResults(w.reals[i], w.reals[1], w.reals[2], w.reals[3], i);
    file.setCloseSpectralAnalysisFitResults();
    file.setLinearFitResults(w.reals[6], w.reals[7]);
    file.setCloseSpectralAnalysis();
}

void compareClick(CPLSpectralWrapper& file, const Written& w, int index)
{
    _tagSClickROIInformation info;
    require(!file.getClickAndROIInformationForIndex(&info, index, 0),
            "measurements of their own are not found");
    const QString unit = "nm"_s;
    require(
        QStringList({info.clickNumber, info.imageWavelength, info.centralWavelength}) ==
            QStringList({w.texts[4], w.texts[5] + unit, QString::number(w.roi.roiPixels) + unit}),
        "a written acquisition is read back");
    require(kept({info.bandWidth, info.avgTransmission},
                 {double(float(w.reals[1])), double(float(w.reals[2]))}),
            "a written filter is read back");
    require(QStringList({info.roiLabel, info.roiShape, info.roiType, info.bkgROI}) ==
                QStringList({w.roi.roiLabel, w.roi.roiShape, w.roi.roiType, w.roi.bkgROI}),
            "the texts of a region are read back");
    require(info.roiPixels == w.roi.roiPixels && kept({info.xc, info.area, info.fractionalPeak},
                                                      {w.roi.xc, w.roi.area, w.roi.fractionalPeak}),
            "the numbers of a region are read back");
    const bool contour = w.contour && w.roi.roiShape == "Contour"_s;
    const _tagsROIProperties expected = contour ? w.roi : _tagsROIProperties();
    require(info.contourDirections == expected.contourDirections &&
                info.contourXDelta == expected.contourXDelta &&
                kept({info.contourPeakX, info.contourStartY},
                     {expected.contourPeakX, expected.contourStartY}),
            "a contour is read back");
}

void compareResults(CPLSpectralWrapper& file, const Written& w)
{
    const QList<_tagSROISpectralResults> results = file.getROISpectralResults();
    require(results.size() == 1 && results[0].roi == w.texts[0] &&
                kept({results[0].totalFlux, results[0].fluxStdDev, results[0].averageDepth,
                      results[0].depthStdDev},
                     {w.reals[0], w.reals[1], w.reals[2], w.reals[3]}),
            "written results are read back");
    const QList<SPlotResults> plot = file.getROIPlotResultsForROI(w.texts[3]);
    const QList<SFitResults> fit = file.getROIFitResultsForROI(w.texts[4].toLower());
    require(plot.size() == w.values && fit.size() == w.values, "plot and fit are read back");
    for (int i = 0; i < w.values; ++i)
        require(kept({plot[i].intensity, plot[i].waveLength, fit[i].attenuation, fit[i].fitValue},
                     {w.reals[i], w.reals[7 - i], w.reals[1], w.reals[2]}),
                "their values are read back");
    double a = 0;
    double b = 0;
    require(file.getLinearFitResults(&a, &b) && kept({a, b}, {w.reals[6], w.reals[7]}),
            "a written fit is read back");
}

void checkWriting(const QByteArray& part)
{
    Values values(part);
    const Written w = take(values);
    const QString path = temporaryPath("Written.xml"_s);
    CPLSpectralWrapper file;
    require(file.createSpectralXMLFile(path), "a file can be made");
    write(file, w);
    require(file.loadXMLFile(path), "a written file loads");
    QString texts[5];
    int clicks = -1;
    require(file.getSpectralAttributes(&texts[0], &clicks, &texts[1], &texts[2], &texts[3], 0,
                                       &texts[4]) &&
                std::equal(texts, texts + 4, w.texts) && clicks == w.clicks &&
                kept({texts[4].toDouble()}, {double(float(w.reals[0]))}),
            "written attributes are read back");
    require(file.getNumberOfClicksForROIIndex(&clicks) && clicks == w.clicks, "clicks are counted");
    for (int i = 0; i < w.clicks; ++i)
        compareClick(file, w, i);
    compareResults(file, w);
}

void checkReading(const QByteArray& bytes)
{
    CPLSpectralWrapper file;
    file.loadXMLFile(temporaryFile("Spectral.xml"_s, bytes));
    QString texts[5];
    int numbers[2] = {};
    bool before = true;
    for (int i = 0; i < 4; ++i) {
        const bool held = file.getSpectralAttributes(&texts[0], numbers, &texts[1], &texts[2],
                                                     &texts[3], i, &texts[4]);
        require(before || !held, "an analysis has all before it");
        before = held;
        file.getNumberOfClicksForROIIndex(numbers);
        for (int click = -1; click < 3; ++click) {
            _tagSClickROIInformation info;
            const bool complete = file.getClickAndROIInformationForIndex(&info, click, i);
            require(!complete || held, "an acquisition belongs to an analysis");
        }
    }
    file.getSpectralAnalysisAttributes(&texts[0], &numbers[0], &numbers[1], &texts[1], &texts[2]);
    const auto results = file.getROISpectralResults();
    const QString label = results.isEmpty() ? "ROI 1"_s : results.first().roi;
    require(file.getROIPlotResultsForROI(label).size() ==
                file.getROIPlotResultsForROI(label.toLower()).size(),
            "letter case of a label does not count");
    file.getROIFitResultsForROI(label);
    double value = 0;
    require(!file.getLinearFitResults(&value, nullptr), "a null output is refused");
    file.getLinearFitResults(&value, &value);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const Input input(data, size);
    if (!input.file.isEmpty())
        checkReading(input.file);
    if (input.parts.contains("values"))
        checkWriting(input.parts.value("values"));
    return 0;
}
