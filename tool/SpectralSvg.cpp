// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "SpectralSvg.h"

#include "Chart.h"

#include <QtCore/QBuffer>

#include <QTextCodec>

#include <algorithm>

namespace {

/** Colours that people with colour blindness can tell apart. */
constexpr const char* colours[] = {"#0072b2", "#d55e00", "#009e73",
                                   "#cc79a7", "#e69f00", "#56b4e9"};

QString colourOf(int series)
{
    return QLatin1String(colours[series % int(std::size(colours))]);
}

Chart plotChart(const SpectralFile& file)
{
    Chart chart{QLatin1String("Spectral plot"),
                QLatin1String("Wavelength (nm)"),
                QLatin1String("Intensity"),
                {}};
    for (int i = 0; i < file.curves.size(); ++i) {
        const SpectralCurve& curve = file.curves.at(i);
        ChartSeries series{curve.label, colourOf(i), true, true, {}};
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
                     QLatin1String("#222222"),
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
        ChartSeries series{curve.label, colourOf(i), false, true, {}};
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

void drawPage(CPLXMLWriter& svg, const Chart& left, const Chart& right)
{
    constexpr double topMargin = 50;
    constexpr double leftMargin = 90;
    constexpr double rightMargin = 30;
    constexpr double gap = 140;
    const QRectF first(leftMargin, topMargin, 380, 300);
    const QRectF second = first.translated(first.width() + gap, 0);
    const double legend = double(std::max(left.series.size(), right.series.size())) * legendLine;
    const QString page = QStringLiteral("0 0 %1 %2")
                             .arg(second.right() + rightMargin)
                             .arg(first.bottom() + chartMargin + legend);
    svg.writeOpenTag(QStringLiteral("svg"),
                     AttrMap{{QStringLiteral("xmlns"), QLatin1String("http://www.w3.org/2000/svg")},
                             {QStringLiteral("viewBox"), page},
                             {QStringLiteral("font-family"), QLatin1String("sans-serif")},
                             {QStringLiteral("font-size"), QLatin1String("13")}});
    writeShape(svg, "rect",
               {{"width", QLatin1String("100%")},
                {"height", QLatin1String("100%")},
                {"fill", QLatin1String("white")}});
    drawChart(svg, left, first);
    drawChart(svg, right, second);
    svg.writeCloseTag(QStringLiteral("svg"));
}

} // namespace

QByteArray spectralSvg(const SpectralFile& file)
{
    QBuffer device;
    device.open(QIODevice::WriteOnly);
    CPLXMLWriter svg(&device, QTextCodec::codecForName("UTF-8"));
    svg.setAutoNewLine(true);
    svg.setIndentSize(2);
    drawPage(svg, plotChart(file), fitChart(file));
    return device.data();
}
