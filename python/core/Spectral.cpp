// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Fields.h"
#include "Module.h"

#include "Files.h"
#include "SpectralFile.h"
#include "SpectralSvg.h"

#include <QtCore/QTemporaryDir>

#include <optional>

namespace ovpython {

namespace {

constexpr std::tuple clickFields{
    Field{"click_number", &_tagSClickROIInformation::clickNumber},
    Field{"image_wavelength", &_tagSClickROIInformation::imageWavelength},
    Field{"average_transmission", &_tagSClickROIInformation::avgTransmission},
    Field{"band_width", &_tagSClickROIInformation::bandWidth},
    Field{"central_wavelength", &_tagSClickROIInformation::centralWavelength},
    Field{"roi", &_tagSClickROIInformation::roi},
    Field{"roi_label", &_tagSClickROIInformation::roiLabel},
    Field{"roi_shape", &_tagSClickROIInformation::roiShape},
    Field{"roi_type", &_tagSClickROIInformation::roiType},
    Field{"xc", &_tagSClickROIInformation::xc},
    Field{"yc", &_tagSClickROIInformation::yc},
    Field{"angle", &_tagSClickROIInformation::angle},
    Field{"width", &_tagSClickROIInformation::width},
    Field{"height", &_tagSClickROIInformation::height},
    Field{"cm_per_pixel", &_tagSClickROIInformation::cmPerPixel},
    Field{"roi_pixels", &_tagSClickROIInformation::roiPixels},
    Field{"area", &_tagSClickROIInformation::area},
    Field{"average_radiance", &_tagSClickROIInformation::averageRadiance},
    Field{"filter_label", &_tagSClickROIInformation::filterLabel},
    Field{"total_flux", &_tagSClickROIInformation::totalFlux},
    Field{"lock_position", &_tagSClickROIInformation::lockPosition},
    Field{"lock_size", &_tagSClickROIInformation::lockSize},
    Field{"contour_directions", &_tagSClickROIInformation::contourDirections},
    Field{"contour_start_x", &_tagSClickROIInformation::contourStartX},
    Field{"contour_start_y", &_tagSClickROIInformation::contourStartY},
    Field{"contour_peak_x", &_tagSClickROIInformation::contourPeakX},
    Field{"contour_peak_y", &_tagSClickROIInformation::contourPeakY},
    Field{"contour_x_delta", &_tagSClickROIInformation::contourXDelta},
    Field{"contour_y_delta", &_tagSClickROIInformation::contourYDelta},
    Field{"fractional_peak", &_tagSClickROIInformation::fractionalPeak},
    Field{"background_association", &_tagSClickROIInformation::bkgAssociation},
    Field{"subject_association", &_tagSClickROIInformation::subAssociation},
    Field{"background_roi", &_tagSClickROIInformation::bkgROI}};

constexpr std::tuple resultFields{Field{"roi", &_tagSROISpectralResults::roi},
                                  Field{"total_flux", &_tagSROISpectralResults::totalFlux},
                                  Field{"flux_std_dev", &_tagSROISpectralResults::fluxStdDev},
                                  Field{"average_depth", &_tagSROISpectralResults::averageDepth},
                                  Field{"depth_std_dev", &_tagSROISpectralResults::depthStdDev}};

constexpr std::tuple plotFields{Field{"wavelength", &SPlotResults::waveLength},
                                Field{"intensity", &SPlotResults::intensity}};

constexpr std::tuple fitFields{Field{"intensity", &SFitResults::intensity},
                               Field{"attenuation", &SFitResults::attenuation},
                               Field{"fit_value", &SFitResults::fitValue},
                               Field{"horizontal_error", &SFitResults::horizontalError},
                               Field{"vertical_error", &SFitResults::verticalError}};

template <typename Records, typename Fields>
py::list listOf(const Records& records, const Fields& fields)
{
    py::list list;
    for (const auto& record : records)
        list.append(dictOf(record, fields));
    return list;
}

template <typename Record, typename Fields>
QList<Record> recordsOf(const py::object& objects, const Fields& fields)
{
    QList<Record> records;
    for (const py::handle object : objects)
        records += recordOf<Record>(py::reinterpret_borrow<py::object>(object), fields);
    return records;
}

py::dict analysisDict(const SpectralAnalysis& analysis)
{
    py::dict dict;
    dict["sequence_id"] = analysis.sequenceId;
    dict["active_image"] = analysis.activeImage;
    dict["tissue_property"] = analysis.tissue;
    dict["source_model"] = analysis.sourceModel;
    dict["index_of_refraction"] = analysis.refraction;
    dict["acquisitions"] = listOf(analysis.clicks, clickFields);
    return dict;
}

py::list curvesOf(const SpectralFile& file)
{
    py::list curves;
    for (const SpectralCurve& curve : file.curves)
        curves.append(py::make_tuple(curve.label, listOf(curve.plot, plotFields),
                                     listOf(curve.fit, fitFields)));
    return curves;
}

py::dict load(const QString& path)
{
    QString problem;
    const auto file = released([&] { return readSpectralFile(path, &problem); });
    if (!file)
        raise({eSTATUS_BAD_FORMAT, path, problem});
    py::list analyses;
    for (const SpectralAnalysis& analysis : file->analyses)
        analyses.append(analysisDict(analysis));
    py::dict dict;
    dict["analyses"] = analyses;
    dict["results"] = listOf(file->results, resultFields);
    dict["curves"] = curvesOf(*file);
    dict["linear_fit"] = py::none();
    if (file->linearFit)
        dict["linear_fit"] = py::make_tuple(file->linearFit->a, file->linearFit->b);
    return dict;
}

using LinearFitValues = std::optional<std::pair<double, double>>;

/** @param plots, fits  objects with a label and values */
py::bytes svgOf(const py::tuple& plots, const py::tuple& fits, const LinearFitValues& linearFit)
{
    SpectralFile file;
    const auto curveOf = [&](const py::handle& object) -> SpectralCurve& {
        const auto label = object.attr("label").cast<QString>();
        for (SpectralCurve& curve : file.curves) {
            if (curve.label.compare(label, Qt::CaseInsensitive) == 0)
                return curve;
        }
        file.curves += {label, {}, {}};
        return file.curves.last();
    };
    for (const py::handle plot : plots)
        curveOf(plot).plot += recordsOf<SPlotResults>(plot.attr("values"), plotFields);
    for (const py::handle fit : fits)
        curveOf(fit).fit += recordsOf<SFitResults>(fit.attr("values"), fitFields);
    if (linearFit)
        file.linearFit = LinearFit{linearFit->first, linearFit->second};
    const QByteArray svg = spectralSvg(file);
    return {svg.constData(), std::size_t(svg.size())};
}

/** The number of nanometres in a text such as "560nm". */
int wholeNanometres(const QString& wavelength)
{
    QString text = wavelength.trimmed();
    if (text.endsWith(PLKeyword::Spectral::WavelengthUnit, Qt::CaseInsensitive))
        text.chop(PLKeyword::Spectral::WavelengthUnit.size());
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (!isNumber)
        raiseValueError(QStringLiteral("'%1' is no whole number of nanometres").arg(wavelength));
    return number;
}

_tagsROIProperties propertiesOf(const _tagSClickROIInformation& click)
{
    _tagsROIProperties roi;
    roi.roiLabel = click.roiLabel;
    roi.roiShape = click.roiShape;
    roi.xc = click.xc;
    roi.yc = click.yc;
    roi.angle = click.angle;
    roi.width = click.width;
    roi.height = click.height;
    roi.cmPerPixel = click.cmPerPixel;
    roi.roiPixels = click.roiPixels;
    roi.area = click.area;
    roi.lockPosition = click.lockPosition;
    roi.lockSize = click.lockSize;
    roi.roiType = click.roiType;
    roi.contourDirections = click.contourDirections;
    roi.contourStartX = click.contourStartX;
    roi.contourStartY = click.contourStartY;
    roi.contourPeakX = click.contourPeakX;
    roi.contourPeakY = click.contourPeakY;
    roi.contourXDelta = click.contourXDelta;
    roi.contourYDelta = click.contourYDelta;
    roi.fractionalPeak = click.fractionalPeak;
    roi.bkgAssociation = click.bkgAssociation;
    roi.subAssociation = click.subAssociation;
    roi.bkgROI = click.bkgROI;
    return roi;
}

void writeClick(CPLSpectralWrapper& file, const _tagSClickROIInformation& click)
{
    const bool hasContour = click.roiShape == PLKeyword::Spectral::ContourShape;
    file.setClickNumberInfo(click.clickNumber,
                            QString::number(wholeNanometres(click.imageWavelength)));
    file.setClickNumberFilterProperties(wholeNanometres(click.centralWavelength),
                                        float(click.bandWidth), float(click.avgTransmission));
    file.setClickNumberROIProperties(click.roi, propertiesOf(click), hasContour);
    if (!click.filterLabel.isEmpty() || click.totalFlux != 0 || click.averageRadiance != 0)
        file.setROIMeasurementsProperties(click.filterLabel, click.totalFlux,
                                          click.averageRadiance);
    file.setCloseClickNumberInfo();
}

void writeAnalysis(CPLSpectralWrapper& file, const py::handle& analysis)
{
    const auto clicks =
        recordsOf<_tagSClickROIInformation>(analysis.attr("acquisitions"), clickFields);
    const auto text = [&](const char* name) { return analysis.attr(name).cast<QString>(); };
    const auto refraction = analysis.attr("index_of_refraction").cast<std::optional<float>>();
    file.setSpectralAttributes(text("sequence_id"), int(clicks.size()), text("active_image"),
                               text("tissue_property"), text("source_model"),
                               refraction.value_or(0));
    file.setOpenClickInfo(int(clicks.size()));
    for (const auto& click : clicks)
        writeClick(file, click);
    file.setCloseClickInfo();
}

void writePlot(CPLSpectralWrapper& file, const py::handle& plot)
{
    const auto values = recordsOf<SPlotResults>(plot.attr("values"), plotFields);
    file.setOpenSpectralAnalysisPlotResults(plot.attr("label").cast<QString>(), int(values.size()));
    for (const SPlotResults& value : values)
        file.setSpectralAnalysisPlotResults(value.intensity, value.waveLength);
    file.setCloseSpectralAnalysisPlotResults();
}

void writeFit(CPLSpectralWrapper& file, const py::handle& fit)
{
    const auto values = recordsOf<SFitResults>(fit.attr("values"), fitFields);
    file.setOpenSpectralAnalysisFitResults(fit.attr("label").cast<QString>(), int(values.size()));
    for (const SFitResults& value : values)
        file.setSpectralAnalysisFitResults(value.intensity, value.attenuation, value.fitValue,
                                           value.horizontalError, value.verticalError);
    file.setCloseSpectralAnalysisFitResults();
}

/**
 * The bytes of a file that holds what an object has. They are made in a folder of their own, so
 * that an old file is only replaced by a whole one.
 */
py::bytes bytesOf(const py::object& content, const QString& fluxUnits, const QString& depthUnits)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("analysis.xml"));
    {
        CPLSpectralWrapper file;
        if (!folder.isValid() || !file.createSpectralXMLFile(path))
            raise({eSTATUS_FILE_OPEN_FAILED, path, QStringLiteral("cannot be written"), true});
        for (const py::handle analysis : content.attr("analyses"))
            writeAnalysis(file, analysis);
        const auto results =
            recordsOf<_tagSROISpectralResults>(content.attr("results"), resultFields);
        for (const _tagSROISpectralResults& result : results)
            file.setSpectralAnalysisResults(result.roi, result.totalFlux, result.fluxStdDev,
                                            fluxUnits, result.averageDepth, result.depthStdDev,
                                            depthUnits);
        for (const py::handle plot : content.attr("plots"))
            writePlot(file, plot);
        for (const py::handle fit : content.attr("fits"))
            writeFit(file, fit);
        const py::object linearFit = content.attr("linear_fit");
        if (!linearFit.is_none())
            file.setLinearFitResults(linearFit.attr("a").cast<double>(),
                                     linearFit.attr("b").cast<double>());
        file.setCloseSpectralAnalysis();
    }
    QString problem;
    const auto bytes = readFile(path, &problem);
    if (!bytes)
        raise({eSTATUS_FILE_READ_FAILED, path, problem, true});
    return {bytes->constData(), std::size_t(bytes->size())};
}

} // namespace

void defineSpectral(py::module_& module)
{
    module.def("load_spectral", &load, py::arg("path"));
    module.def("spectral_svg", &svgOf, py::arg("plots"), py::arg("fits"), py::arg("linear_fit"));
    module.def("spectral_bytes", &bytesOf, py::arg("content"), py::arg("flux_units"),
               py::arg("depth_units"));
}

} // namespace ovpython
