// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

// Writes the results of a spectral analysis: new_spectral_analysis FILE

#include "ParserLibrary.h"

#include <QtCore/QVector>

#include <cmath>
#include <cstdio>

namespace {

/** What one acquisition gave: filter and attenuation of the tissue, intensity with its error. */
struct Measurement
{
    QString clickNumber;
    int wavelength;     // nm
    double attenuation; // 1/cm
    double intensity;   // p/s/cm2/sr
    double error;       // of the logarithm of the intensity
};

const QString roi = QStringLiteral("1");
const QString label = QStringLiteral("ROI 1");

QVector<Measurement> measurements()
{
    return {
        {QStringLiteral("ABC20240305091502"), 560, 9.1, 2.18e4, 0.10},
        {QStringLiteral("ABC20240305091634"), 580, 8.2, 3.05e4, 0.09},
        {QStringLiteral("ABC20240305091806"), 600, 5.4, 1.36e5, 0.06},
        {QStringLiteral("ABC20240305091938"), 620, 3.1, 3.42e5, 0.05},
        {QStringLiteral("ABC20240305092110"), 640, 2.4, 4.91e5, 0.05},
        {QStringLiteral("ABC20240305092242"), 660, 2.0, 5.35e5, 0.07},
    };
}

void writeAcquisition(CPLSpectralWrapper& file, const Measurement& measurement)
{
    _tagsROIProperties circle;
    circle.roiLabel = label;
    circle.roiShape = QStringLiteral("Circle");
    circle.roiType = QStringLiteral("Measurement");
    circle.xc = 6.25;
    circle.yc = 5.5;
    circle.width = 1.2;
    circle.height = 1.2;
    circle.area = 1.131;
    circle.cmPerPixel = 0.0125;
    circle.roiPixels = 7238;
    const QString wavelength = QString::number(measurement.wavelength);
    file.setClickNumberInfo(measurement.clickNumber, wavelength);
    file.setClickNumberFilterProperties(measurement.wavelength, 20, 0.85F);
    file.setClickNumberROIProperties(roi, circle, false);
    file.setROIMeasurementsProperties(wavelength, measurement.intensity * circle.area,
                                      measurement.intensity);
    file.setCloseClickNumberInfo();
}

void writePlot(CPLSpectralWrapper& file, const QVector<Measurement>& all)
{
    file.setOpenSpectralAnalysisPlotResults(label, int(all.size()));
    for (const Measurement& measurement : all)
        file.setSpectralAnalysisPlotResults(measurement.intensity, measurement.wavelength);
    file.setCloseSpectralAnalysisPlotResults();
}

// The logarithm of the intensity falls with the attenuation; the slope tells the depth.
void writeFit(CPLSpectralWrapper& file, const QVector<Measurement>& all)
{
    double x = 0;
    double y = 0;
    double xx = 0;
    double xy = 0;
    file.setOpenSpectralAnalysisFitResults(label, int(all.size()));
    for (const Measurement& measurement : all) {
        const double logarithm = std::log(measurement.intensity);
        file.setSpectralAnalysisFitResults(measurement.intensity, measurement.attenuation,
                                           logarithm, 0.3, measurement.error);
        x += measurement.attenuation;
        y += logarithm;
        xx += measurement.attenuation * measurement.attenuation;
        xy += measurement.attenuation * logarithm;
    }
    file.setCloseSpectralAnalysisFitResults();
    const auto n = double(all.size());
    const double slope = (n * xy - x * y) / (n * xx - x * x);
    file.setLinearFitResults(slope, (y - slope * x) / n);
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc != 2) {
        std::fputs("usage: new_spectral_analysis FILE\n", stderr);
        return 2;
    }

    CPLSpectralWrapper file;
    if (!file.createSpectralXMLFile(QString::fromLocal8Bit(argv[1]))) {
        std::fprintf(stderr, "%s: cannot be written\n", argv[1]);
        return 1;
    }

    // Each part opens and closes its own elements; the order is the order of the file.
    const QVector<Measurement> all = measurements();
    file.setSpectralAttributes(QStringLiteral("SEQ20240305"), int(all.size()),
                               QStringLiteral("luminescent"), QStringLiteral("Muscle"),
                               QStringLiteral("Firefly"), 1.4F);
    file.setOpenClickInfo(int(all.size()));
    for (const Measurement& measurement : all)
        writeAcquisition(file, measurement);
    file.setCloseClickInfo();
    file.setSpectralAnalysisResults(roi, 2.36e6, 8.1e4, QStringLiteral("p/s"), 4.4, 0.2,
                                    QStringLiteral("mm"));
    writePlot(file, all);
    writeFit(file, all);
    file.setCloseSpectralAnalysis();
    return 0;
}
