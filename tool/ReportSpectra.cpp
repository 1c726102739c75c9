// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "ReportSpectra.h"

#include "SpectralSvg.h"

#include <algorithm>

namespace {

/** What the measured value of a spectral analysis is called, and where it is. */
struct Measure
{
    const char* title = "";
    double _tagSROISpectralResults::*value = nullptr;
    double _tagSROISpectralResults::*error = nullptr;
};

constexpr Measure measures[] = {
    {"Total flux (p/s)", &_tagSROISpectralResults::totalFlux, &_tagSROISpectralResults::fluxStdDev},
    {"Depth (mm)", &_tagSROISpectralResults::averageDepth, &_tagSROISpectralResults::depthStdDev},
};

const ReportedAcquisition* acquisitionOf(const StudyReport& report,
                                         const ReportedSpectrum& spectrum)
{
    return spectrum.acquisition ? &report.acquisitions.at(*spectrum.acquisition) : nullptr;
}

/** What a spectral analysis is about, and its file. */
QString headingOf(const ReportContext& at, const ReportedSpectrum& spectrum)
{
    const ReportedAcquisition* const acquisition = acquisitionOf(at.report, spectrum);
    QStringList parts;
    if (acquisition)
        parts = QStringList{at.groupOf(*acquisition), at.subjectOf(*acquisition)};
    if (acquisition && acquisition->day)
        parts += QLatin1String("day ") + dayOf(*acquisition);
    parts += spectrum.path;
    return parts.join(QLatin1String(", "));
}

Chart fluxChart(const ReportContext& at, const Measure& measure)
{
    constexpr int mostSeries = 12;
    Chart chart{
        QLatin1String(measure.title), QStringLiteral("Day"), QLatin1String(measure.title), {}};
    QMap<QString, ChartSeries> bySubject;
    QMap<QString, ChartSeries> byGroup;
    const auto add = [](QMap<QString, ChartSeries>* map, const QString& name,
                        const ChartPoint& point, bool line) {
        ChartSeries& series = (*map)[sortKey(name)];
        series.name = name;
        series.line = line;
        series.points += point;
    };
    for (const ReportedSpectrum& spectrum : at.report.spectra) {
        const ReportedAcquisition* const acquisition = acquisitionOf(at.report, spectrum);
        if (!acquisition || !acquisition->day)
            continue;
        const QString group = at.groupOf(*acquisition);
        for (const auto& results : spectrum.file.results) {
            const ChartPoint point{double(*acquisition->day), results.*measure.value, 0.0,
                                   results.*measure.error};
            const QStringList subject = {group, at.subjectOf(*acquisition),
                                         QLatin1String("region ") + results.roi};
            add(&bySubject, subject.join(QLatin1String(", ")), point, true);
            add(&byGroup, group, point, false);
        }
    }
    const QMap<QString, ChartSeries>& series = bySubject.size() > mostSeries ? byGroup : bySubject;
    for (ChartSeries one : series) {
        one.colour = int(chart.series.size());
        std::stable_sort(one.points.begin(), one.points.end(),
                         [](const ChartPoint& a, const ChartPoint& b) { return a.x < b.x; });
        chart.series += one;
    }
    return chart;
}

void writeFluxCharts(const ReportContext& at)
{
    const Element charts(at.page, "div", {{"class", "charts"}});
    for (const Measure& measure : measures) {
        const Chart chart = fluxChart(at, measure);
        if (!chart.series.isEmpty())
            drawCharts(at.page, {chart});
    }
}

void writeFlux(const ReportContext& at, const ReportedSpectrum& spectrum,
               const _tagSROISpectralResults& results)
{
    constexpr int digits = 4;
    const Element row(at.page, "tr");
    const ReportedAcquisition* const acquisition = acquisitionOf(at.report, spectrum);
    at.page.element("td", acquisition ? at.groupOf(*acquisition) : QString());
    at.page.element("td", acquisition ? at.subjectOf(*acquisition) : QString());
    at.page.element("td", {{"class", "number"}}, acquisition ? dayOf(*acquisition) : QString());
    at.page.element("td", results.roi);
    for (const Measure& measure : measures)
        at.page.element("td", {{"class", "number"}},
                        QStringLiteral("%1 \u00b1 %2")
                            .arg(results.*measure.value, 0, 'g', digits)
                            .arg(results.*measure.error, 0, 'g', digits));
    at.page.element("td", {{"class", "text"}}, spectrum.path);
}

void writeFluxes(const ReportContext& at)
{
    const TableFrame table(at.page, "Table of spectral results",
                           {at.labels.group, at.labels.subject, QStringLiteral("Day"),
                            QStringLiteral("Region"), QLatin1String(measures[0].title),
                            QLatin1String(measures[1].title), QStringLiteral("File")});
    for (const ReportedSpectrum& spectrum : at.report.spectra) {
        for (const auto& results : spectrum.file.results)
            writeFlux(at, spectrum, results);
    }
}

void writeSpectra(const ReportContext& at)
{
    constexpr int mostOpen = 2;
    for (const ReportedSpectrum& spectrum : at.report.spectra) {
        const bool isOpen = at.report.spectra.size() <= mostOpen;
        const Element details(at.page, "details", isOpen ? Attributes{{"open", ""}} : Attributes{});
        at.page.element("summary", headingOf(at, spectrum));
        const Element charts(at.page, "div", {{"class", "charts"}});
        const QList<Chart> drawn = spectralCharts(spectrum.file);
        for (const Chart& chart : drawn) {
            if (!chart.series.isEmpty())
                drawCharts(at.page, {chart});
        }
    }
}

} // namespace

void writeSpectralResults(const ReportContext& at)
{
    if (at.report.spectra.isEmpty())
        return writeParagraph(
            at.page,
            QStringLiteral(
                "There are none. Spectral analyses are read from folders, not from records."));
    writeFluxCharts(at);
    writeFluxes(at);
    writeSpectra(at);
}
