#include "SpectralJson.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <initializer_list>
#include <utility>

namespace {

QJsonObject object(std::initializer_list<std::pair<const char*, QJsonValue>> members)
{
    QJsonObject object;
    for (const auto& [name, value] : members)
        object.insert(QLatin1String(name), value);
    return object;
}

template <typename Record>
QJsonArray arrayOf(const QList<Record>& records, QJsonObject (*objectOf)(const Record&))
{
    QJsonArray array;
    for (const Record& record : records)
        array.append(objectOf(record));
    return array;
}

QJsonObject filterOf(const _tagSClickROIInformation& click)
{
    return object({{"centralWavelength", click.centralWavelength},
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

QJsonObject jsonOf(const _tagSClickROIInformation& click)
{
    return object({{"clickNumber", click.clickNumber},
                   {"imageWavelength", click.imageWavelength},
                   {"filter", filterOf(click)},
                   {"roi", roiOf(click)}});
}

QJsonObject jsonOf(const SpectralAnalysis& analysis)
{
    return object({{"sequenceId", analysis.sequenceId},
                   {"activeImage", analysis.activeImage},
                   {"tissueProperty", analysis.tissue},
                   {"sourceModel", analysis.sourceModel},
                   {"indexOfRefraction", analysis.refraction},
                   {"acquisitions", arrayOf(analysis.clicks, jsonOf)}});
}

QJsonObject jsonOf(const _tagSROISpectralResults& result)
{
    return object({{"roi", result.roi},
                   {"totalFlux", result.totalFlux},
                   {"fluxStdDev", result.fluxStdDev},
                   {"averageDepth", result.averageDepth},
                   {"depthStdDev", result.depthStdDev}});
}

QJsonObject jsonOf(const SPlotResults& value)
{
    return object({{"wavelength", value.waveLength}, {"intensity", value.intensity}});
}

QJsonObject jsonOf(const SFitResults& value)
{
    return object({{"intensity", value.intensity},
                   {"attenuation", value.attenuation},
                   {"fitValue", value.fitValue},
                   {"horizontalError", value.horizontalError},
                   {"verticalError", value.verticalError}});
}

QJsonObject jsonOf(const SpectralCurve& curve)
{
    return object({{"label", curve.label},
                   {"plot", arrayOf(curve.plot, jsonOf)},
                   {"fit", arrayOf(curve.fit, jsonOf)}});
}

} // namespace

QString spectralJson(const SpectralFile& file)
{
    QJsonValue linearFit;
    if (file.linearFit)
        linearFit = object({{"a", file.linearFit->a}, {"b", file.linearFit->b}});
    const QJsonObject all = object({{"analyses", arrayOf(file.analyses, jsonOf)},
                                    {"results", arrayOf(file.results, jsonOf)},
                                    {"regionsOfInterest", arrayOf(file.curves, jsonOf)},
                                    {"linearFit", linearFit}});
    return QString::fromUtf8(QJsonDocument(all).toJson());
}
