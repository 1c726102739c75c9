// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Fields.h"
#include "Module.h"

#include "ParserLibrary.h"

namespace pybind11::detail {

/** A point is a pair of numbers. */
template <>
struct type_caster<QList<QPoint>>
{
    PYBIND11_TYPE_CASTER(QList<QPoint>, const_name("list[tuple[int, int]]"));

    bool load(handle source, bool convert)
    {
        list_caster<std::vector<std::pair<int, int>>, std::pair<int, int>> points;
        if (!points.load(source, convert))
            return false;
        for (const auto& [x, y] : static_cast<std::vector<std::pair<int, int>>&>(points))
            value += QPoint(x, y);
        return true;
    }

    static handle cast(const QList<QPoint>& points, return_value_policy /*policy*/,
                       handle /*parent*/)
    {
        list pairs;
        for (const QPoint& point : points)
            pairs.append(make_tuple(point.x(), point.y()));
        return pairs.release();
    }
};

} // namespace pybind11::detail

namespace ovpython {

namespace {

constexpr std::tuple setupFields{
    Field{"imaging_mode", &sIASetupInfo::imagingMode,
          "1 fluorescence grid and height reference, 2 stage and angle keys."},
    Field{"xray_imaging_mode", &sIASetupInfo::xrayImagingMode,
          "1 large animal, 2 high resolution, other values mouse."},
    Field{"app_text1", &sIASetupInfo::appText1, "The application's."},
    Field{"app_text2", &sIASetupInfo::appText2, "The application's."},
    Field{"excitation_filter", &sIASetupInfo::excitationFilter, "Name of the filter."},
    Field{"emission_filter", &sIASetupInfo::emissionFilter, "Name of the filter."},
    Field{"app_text3", &sIASetupInfo::appText3, "The application's."},
    Field{"fluorescence_level_text", &sIASetupInfo::fluorescenceLevelText, "Name of the level."},
    Field{"luminescent_f_number", &sIASetupInfo::luminescentFNumber,
          "Also of fluorescent backgrounds."},
    Field{"photograph_f_number", &sIASetupInfo::photographFNumber, "Also of structure images."},
    Field{"app_text4", &sIASetupInfo::appText4, "The application's."},
    Field{"app_text5", &sIASetupInfo::appText5, "The application's."},
    Field{"app_text6", &sIASetupInfo::appText6, "The application's."},
    Field{"app_text7", &sIASetupInfo::appText7, "The application's."},
    Field{"demand_temperature", &sIASetupInfo::demandTemperature, "Of the CCD."},
    Field{"measured_temperature", &sIASetupInfo::measuredTemperature, "Of the CCD."},
    Field{"luminescent_exposure_units", &sIASetupInfo::luminescentExposureUnits,
          "Unit of luminescent_exposure."},
    Field{"app_text8", &sIASetupInfo::appText8, "The application's."},
    Field{"app_text9", &sIASetupInfo::appText9, "The application's."},
    Field{"height_reference", &sIASetupInfo::heightReference, "When imaging_mode is 1."},
    Field{"height_reference_pixel_x", &sIASetupInfo::heightReferencePixelX,
          "When imaging_mode is 1."},
    Field{"height_reference_pixel_y", &sIASetupInfo::heightReferencePixelY,
          "When imaging_mode is 1."},
    Field{"structure_frequency_text", &sIASetupInfo::structureFrequencyText,
          "Unless imaging_mode is 2."},
    Field{"app_text10", &sIASetupInfo::appText10, "The application's."},
    Field{"app_text11", &sIASetupInfo::appText11, "The application's."},
    Field{"app_text12", &sIASetupInfo::appText12, "The application's."},
    Field{"xray_f_number", &sIASetupInfo::xrayFNumber, "Of X-ray images."},
    Field{"app_text13", &sIASetupInfo::appText13, "The application's."},
    Field{"xray_tube_filter", &sIASetupInfo::xrayTubeFilter, "Position of the filter."},
    Field{"acquisition_time", &sIASetupInfo::acquisitionTime, "Seconds since 1 January 1970."},
    Field{"app_flag1", &sIASetupInfo::appFlag1, "The application's."},
    Field{"fluorescent", &sIASetupInfo::fluorescent, "A luminescent image is a fluorescent one."},
    Field{"app_flag2", &sIASetupInfo::appFlag2, "The application's."},
    Field{"app_flag3", &sIASetupInfo::appFlag3, "The application's."},
    Field{"app_flag4", &sIASetupInfo::appFlag4, "The application's."},
    Field{"app_flag5", &sIASetupInfo::appFlag5, "The application's."},
    Field{"app_flag6", &sIASetupInfo::appFlag6, "The application's."},
    Field{"app_flag7", &sIASetupInfo::appFlag7, "The application's."},
    Field{"app_flag8", &sIASetupInfo::appFlag8, "The application's."},
    Field{"app_flag9", &sIASetupInfo::appFlag9, "The application's."},
    Field{"app_flag10", &sIASetupInfo::appFlag10, "The application's."},
    Field{"app_flag11", &sIASetupInfo::appFlag11, "The application's."},
    Field{"side_view_mirror_enabled", &sIASetupInfo::sideViewMirrorEnabled,
          "A side-view mirror was in place."},
    Field{"app_flag12", &sIASetupInfo::appFlag12, "The application's."},
    Field{"app_flag13", &sIASetupInfo::appFlag13, "The application's."},
    Field{"luminescent_binning", &sIASetupInfo::luminescentBinning,
          "Of every image type without a binning field of its own."},
    Field{"photograph_binning", &sIASetupInfo::photographBinning, "Binning factor."},
    Field{"structure_binning", &sIASetupInfo::structureBinning, "Binning factor."},
    Field{"xray_binning", &sIASetupInfo::xrayBinning, "Binning factor."},
    Field{"raw_binning", &sIASetupInfo::rawBinning, "Of fluorescent references on a grid."},
    Field{"blemish_binning", &sIASetupInfo::blemishBinning, "Binning factor."},
    Field{"em_gain", &sIASetupInfo::emGain, "Written only when above 0."},
    Field{"app_int1", &sIASetupInfo::appInt1, "The application's."},
    Field{"filter_position", &sIASetupInfo::filterPosition, "Of the emission filter."},
    Field{"app_int2", &sIASetupInfo::appInt2, "The application's."},
    Field{"read_bias_level", &sIASetupInfo::readBiasLevel, "In counts."},
    Field{"structure_frequency", &sIASetupInfo::structureFrequency, "When imaging_mode is 2."},
    Field{"stage_distance", &sIASetupInfo::stageDistance, "When imaging_mode is 2."},
    Field{"luminescent_exposure", &sIASetupInfo::luminescentExposure,
          "In luminescent_exposure_units."},
    Field{"photograph_exposure", &sIASetupInfo::photographExposure, "In seconds."},
    Field{"app_real1", &sIASetupInfo::appReal1, "The application's."},
    Field{"fluorescence_level", &sIASetupInfo::fluorescenceLevel, "The level as a number."},
    Field{"field_of_view", &sIASetupInfo::fieldOfView, "Width of the image."},
    Field{"subject_size", &sIASetupInfo::subjectSize, "Twice the \"Object radius\"."},
    Field{"xray_tube_voltage", &sIASetupInfo::xrayTubeVoltage, "Of the X-ray tube."},
    Field{"xray_tube_plate_current", &sIASetupInfo::xrayTubePlateCurrent, "Of the X-ray tube."},
    Field{"xray_exposure", &sIASetupInfo::xrayExposure, "In seconds."},
    Field{"xray_read_bias_level", &sIASetupInfo::xrayReadBiasLevel, "Of X-ray images."},
    Field{"imaging_angle", &sIASetupInfo::imagingAngle, "When imaging_mode is 2."},
    Field{"fl_grid_enabled", &sIASetupInfo::flGridEnabled,
          "A fluorescence grid was used; counts when imaging_mode is 1."},
    Field{"app_flag14", &sIASetupInfo::appFlag14, "The application's."},
    Field{"fl_grid_name", &sIASetupInfo::flGridName, "Name of the grid."},
    Field{"fl_x_motor_position", &sIASetupInfo::flXMotorPosition, "Of a single-spot grid."},
    Field{"fl_y_motor_position", &sIASetupInfo::flYMotorPosition, "Of a single-spot grid."},
    Field{"fl_x_spot", &sIASetupInfo::flXSpot, "Of a single-spot grid."},
    Field{"fl_y_spot", &sIASetupInfo::flYSpot, "Of a single-spot grid."},
    Field{"fl_grid_position_x", &sIASetupInfo::flGridPositionX, "Of a single-spot grid."},
    Field{"fl_grid_position_y", &sIASetupInfo::flGridPositionY, "Of a single-spot grid."},
    Field{"fl_grid_points", &sIASetupInfo::flGridPoints, "Two or more make a multi-spot grid."},
    Field{"fl_x_spot_text", &sIASetupInfo::flXSpotText, "Of a multi-spot grid."},
    Field{"fl_y_spot_text", &sIASetupInfo::flYSpotText, "Of a multi-spot grid."},
    Field{"fl_x_motor_position_text", &sIASetupInfo::flXMotorPositionText, "Of a multi-spot grid."},
    Field{"fl_y_motor_position_text", &sIASetupInfo::flYMotorPositionText, "Of a multi-spot grid."},
    Field{"app_flag15", &sIASetupInfo::appFlag15, "The application's."},
    Field{"app_text14", &sIASetupInfo::appText14, "Null until set."},
    Field{"app_flag16", &sIASetupInfo::appFlag16, "The application's."},
    Field{"app_int3", &sIASetupInfo::appInt3, "The application's."},
    Field{"app_int4", &sIASetupInfo::appInt4, "The application's."},
    Field{"app_text15", &sIASetupInfo::appText15, "The application's."},
    Field{"app_text16", &sIASetupInfo::appText16, "The application's."},
    Field{"app_text17", &sIASetupInfo::appText17, "The application's."},
    Field{"app_real2", &sIASetupInfo::appReal2, "The application's."},
    Field{"app_flag17", &sIASetupInfo::appFlag17, "The application's."},
    Field{"app_flag18", &sIASetupInfo::appFlag18, "The application's."},
    Field{"app_text18", &sIASetupInfo::appText18, "The application's."}};

using Setup = sIASetupInfo;

void change(Setup* setup, const py::dict& values)
{
    const py::object self = py::cast(setup, py::return_value_policy::reference);
    for (const auto& [name, value] : values) {
        if (!py::hasattr(self, name))
            throw py::type_error("Setup has no field " + py::repr(name).cast<std::string>());
        self.attr(name) = value;
    }
}

} // namespace

void defineSetup(py::module_& module)
{
    py::class_<Setup, std::unique_ptr<Setup>> setup(
        module, "Setup",
        "The settings with which one image was acquired: every field a keyword argument.\n\n"
        "A field that is not given has the library's default; acquisition_time is then now.\n"
        "Fields named app_... belong to the application: the library never reads them.");
    setup.def(py::init([](const py::kwargs& values) {
        auto made = std::make_unique<Setup>();
        change(made.get(), values);
        return made;
    }));
    forEach(setupFields,
            [&](const auto& field) { setup.def_readwrite(field.name, field.member, field.doc); });
    setup.def(
        "__eq__",
        [](const Setup& a, const Setup& b) {
            return dictOf(a, setupFields).equal(dictOf(b, setupFields));
        },
        py::is_operator());
    setup.attr("__hash__") = py::none();
    setup.def("__repr__", [](const Setup& changed) {
        const py::dict before = dictOf(Setup(), setupFields);
        py::list parts;
        for (const auto& [name, value] : dictOf(changed, setupFields)) {
            if (!value.equal(before[name]))
                parts.append(py::str("{}={!r}").format(name, value));
        }
        return py::str("Setup({})").format(py::str(", ").attr("join")(parts));
    });
    setup.def(py::pickle([](const Setup& pickled) { return dictOf(pickled, setupFields); },
                         [](const py::dict& values) {
                             auto made = std::make_unique<Setup>();
                             change(made.get(), values);
                             return made;
                         }));
}

} // namespace ovpython
