// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "SpectralText.h"

#include "Terminal.h"

namespace {

QString text(double value)
{
    return QString::number(value);
}

QStringList head(std::initializer_list<const char*> names)
{
    QStringList list;
    for (const char* const name : names)
        list += QLatin1String(name);
    return list;
}

QString table(const QString& title, const QStringList& headings, QList<QStringList> rows)
{
    if (rows.isEmpty())
        return {};
    rows.prepend(headings);
    return printable(title) + QLatin1Char('\n') + columns(rows);
}

QStringList rowOf(const _tagSClickROIInformation& click)
{
    return {click.clickNumber,
            click.imageWavelength,
            click.centralWavelength,
            text(click.bandWidth),
            text(click.avgTransmission),
            click.roiLabel,
            click.roiShape,
            text(click.xc) + QLatin1String(", ") + text(click.yc),
            text(click.width) + QLatin1String(" x ") + text(click.height),
            text(click.area),
            QString::number(click.roiPixels)};
}

QStringList tablesOf(const SpectralAnalysis& analysis)
{
    QList<QStringList> clicks;
    for (const _tagSClickROIInformation& click : analysis.clicks)
        clicks.append(rowOf(click));
    return {QLatin1String("Spectral analysis of ") + printable(analysis.sequenceId) +
                QLatin1String(", ") + counted(int(clicks.size()), "acquisition") +
                QLatin1Char('\n') +
                columns({{QLatin1String("Active image"), analysis.activeImage},
                         {QLatin1String("Tissue property"), analysis.tissue},
                         {QLatin1String("Source model"), analysis.sourceModel},
                         {QLatin1String("Index of refraction"), analysis.refraction}}),
            table(QLatin1String("Acquisitions"),
                  head({"Click number", "Image", "Filter", "Band width", "Transmission", "ROI",
                        "Shape", "Centre", "Size", "Area", "Pixels"}),
                  clicks)};
}

QString tableOf(const QList<_tagSROISpectralResults>& results)
{
    QList<QStringList> rows;
    for (const _tagSROISpectralResults& result : results)
        rows.append({result.roi, text(result.totalFlux), text(result.fluxStdDev),
                     text(result.averageDepth), text(result.depthStdDev)});
    return table(QLatin1String("Results"),
                 head({"ROI", "Total flux", "Std dev", "Average depth", "Std dev"}), rows);
}

QStringList tablesOf(const SpectralCurve& curve)
{
    QList<QStringList> plot;
    for (const SPlotResults& value : curve.plot)
        plot.append({text(value.waveLength), text(value.intensity)});
    QList<QStringList> fit;
    for (const SFitResults& value : curve.fit)
        fit.append({text(value.attenuation), text(value.fitValue), text(value.intensity),
                    text(value.horizontalError), text(value.verticalError)});
    return {
        table(QLatin1String("Plot of ") + curve.label, head({"Wavelength (nm)", "Intensity"}),
              plot),
        table(QLatin1String("Fit of ") + curve.label,
              head({"Attenuation", "Fit value", "Intensity", "Horizontal error", "Vertical error"}),
              fit)};
}

} // namespace

QString spectralText(const SpectralFile& file)
{
    QStringList tables;
    for (const SpectralAnalysis& analysis : file.analyses)
        tables += tablesOf(analysis);
    tables += tableOf(file.results);
    for (const SpectralCurve& curve : file.curves)
        tables += tablesOf(curve);
    if (file.linearFit)
        tables += table(QLatin1String("Linear fit A x + B"), head({"A", "B"}),
                        {{text(file.linearFit->a), text(file.linearFit->b)}});
    tables.removeAll(QString());
    return tables.join(QLatin1Char('\n'));
}
