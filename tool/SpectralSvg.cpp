// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "SpectralSvg.h"

#include <algorithm>

namespace {

Chart plotChart(const SpectralFile& file)
{
    Chart chart{QLatin1String("Spectral plot"),
                QLatin1String("Wavelength (nm)"),
                QLatin1String("Intensity"),
                {}};
    for (int i = 0; i < file.curves.size(); ++i) {
        const SpectralCurve& curve = file.curves.at(i);
        ChartSeries series{curve.label, i, true, true, {}};
        for (const SPlotResults& value : curve.plot)
            series.points.append({value.waveLength, value.intensity, 0.0, 0.0});
        if (!series.points.isEmpty())
            chart.series.append(series);
    }
    return chart;
}

/** The line over the attenuations that were fitted, or over 0 to 1 when there are none. */
ChartSeries lineSeries(const LinearFit& fit, const Chart& chart)
{
    QList<double> ends;
    for (const ChartSeries& series : chart.series) {
        for (const ChartPoint& point : series.points)
            ends.append(point.x);
    }
    if (ends.isEmpty())
        ends = {0.0, 1.0};
    const auto [first, last] = std::minmax_element(ends.cbegin(), ends.cend());
    ChartSeries line{QStringLiteral("A x + B with A = %1, B = %2").arg(fit.a).arg(fit.b),
                     inkColour,
                     true,
                     false,
                     {}};
    for (const double x : {*first, *last})
        line.points.append({x, fit.a * x + fit.b, 0.0, 0.0});
    return line;
}

Chart fitChart(const SpectralFile& file)
{
    Chart chart{
        QLatin1String("Linear fit"), QLatin1String("Attenuation"), QLatin1String("Fit value"), {}};
    for (int i = 0; i < file.curves.size(); ++i) {
        const SpectralCurve& curve = file.curves.at(i);
        ChartSeries series{curve.label, i, false, true, {}};
        for (const SFitResults& value : curve.fit)
            series.points.append(
                {value.attenuation, value.fitValue, value.horizontalError, value.verticalError});
        if (!series.points.isEmpty())
            chart.series.append(series);
    }
    if (file.linearFit)
        chart.series.append(lineSeries(*file.linearFit, chart));
    return chart;
}

} // namespace

QList<Chart> spectralCharts(const SpectralFile& file)
{
    return {plotChart(file), fitChart(file)};
}

QByteArray spectralSvg(const SpectralFile& file)
{
    QByteArray bytes;
    {
        Markup svg(&bytes, Markup::Svg);
        drawCharts(svg, spectralCharts(file));
    }
    return bytes + '\n';
}
