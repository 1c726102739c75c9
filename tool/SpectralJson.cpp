// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "SpectralJson.h"

#include "Json.h"

namespace {

namespace Spectral = PLKeyword::Spectral;

/** The number before the unit of a wavelength such as "560nm"; null for a text such as "Open". */
QJsonValue nanometresOf(QString wavelength)
{
    const QString text = wavelength.trimmed();
    const bool unit = text.endsWith(Spectral::WavelengthUnit, Qt::CaseInsensitive);
    return numberOf(unit ? text.chopped(Spectral::WavelengthUnit.size()) : text);
}

QJsonObject filterOf(const _tagSClickROIInformation& click)
{
    return object({{"centralWavelength", click.centralWavelength},
                   {"centralWavelengthNm", nanometresOf(click.centralWavelength)},
                   {"bandWidth", click.bandWidth},
                   {"avgTransmission", click.avgTransmission}});
}

QJsonObject roiOf(const _tagSClickROIInformation& click)
{
    return object({{"roi", click.roi},
                   {"label", click.roiLabel},
                   {"shape", click.roiShape},
                   {"type", click.roiType},
                   {"xc", click.xc},
                   {"yc", click.yc},
                   {"angle", click.angle},
                   {"width", click.width},
                   {"height", click.height},
                   {"area", click.area},
                   {"pixels", click.roiPixels}});
}

QJsonObject clickJson(const _tagSClickROIInformation& click)
{
    return object({{"clickNumber", click.clickNumber},
                   {"imageWavelength", click.imageWavelength},
                   {"imageWavelengthNm", nanometresOf(click.imageWavelength)},
                   {"filter", filterOf(click)},
                   {"roi", roiOf(click)}});
}

QJsonObject analysisJson(const SpectralAnalysis& analysis)
{
    return object({{"sequenceId", analysis.sequenceId},
                   {"activeImage", analysis.activeImage},
                   {"tissueProperty", analysis.tissue},
                   {"sourceModel", analysis.sourceModel},
                   {"indexOfRefraction", numberOf(analysis.refraction)},
                   {"acquisitions", arrayOf(analysis.clicks, clickJson)}});
}

QJsonObject resultJson(const _tagSROISpectralResults& result)
{
    return object({{"roi", result.roi},
                   {"totalFlux", result.totalFlux},
                   {"fluxStdDev", result.fluxStdDev},
                   {"averageDepth", result.averageDepth},
                   {"depthStdDev", result.depthStdDev}});
}

QJsonObject plotJson(const SPlotResults& value)
{
    return object({{"wavelength", value.waveLength}, {"intensity", value.intensity}});
}

QJsonObject fitJson(const SFitResults& value)
{
    return object({{"intensity", value.intensity},
                   {"attenuation", value.attenuation},
                   {"fitValue", value.fitValue},
                   {"horizontalError", value.horizontalError},
                   {"verticalError", value.verticalError}});
}

QJsonObject curveJson(const SpectralCurve& curve)
{
    return object({{"label", curve.label},
                   {"plot", arrayOf(curve.plot, plotJson)},
                   {"fit", arrayOf(curve.fit, fitJson)}});
}

} // namespace

QJsonObject spectralJson(const QString& path, const SpectralFile& file)
{
    QJsonValue linearFit;
    if (file.linearFit)
        linearFit = object({{"a", file.linearFit->a}, {"b", file.linearFit->b}});
    return withSchema("ovinfo-spectral/1", {{"file", path},
                                            {"analyses", arrayOf(file.analyses, analysisJson)},
                                            {"results", arrayOf(file.results, resultJson)},
                                            {"regionsOfInterest", arrayOf(file.curves, curveJson)},
                                            {"linearFit", linearFit}});
}
