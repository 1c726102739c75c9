// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Setup.h"

#include "Fields.h"
#include "Info.h"
#include "Module.h"

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
    Field{"imaging_mode", &sIASetupInfo::imagingMode},
    Field{"xray_imaging_mode", &sIASetupInfo::xrayImagingMode},
    Field{"app_text1", &sIASetupInfo::appText1},
    Field{"app_text2", &sIASetupInfo::appText2},
    Field{"excitation_filter", &sIASetupInfo::excitationFilter},
    Field{"emission_filter", &sIASetupInfo::emissionFilter},
    Field{"app_text3", &sIASetupInfo::appText3},
    Field{"fluorescence_level_text", &sIASetupInfo::fluorescenceLevelText},
    Field{"luminescent_f_number", &sIASetupInfo::luminescentFNumber},
    Field{"photograph_f_number", &sIASetupInfo::photographFNumber},
    Field{"app_text4", &sIASetupInfo::appText4},
    Field{"app_text5", &sIASetupInfo::appText5},
    Field{"app_text6", &sIASetupInfo::appText6},
    Field{"app_text7", &sIASetupInfo::appText7},
    Field{"demand_temperature", &sIASetupInfo::demandTemperature},
    Field{"measured_temperature", &sIASetupInfo::measuredTemperature},
    Field{"luminescent_exposure_units", &sIASetupInfo::luminescentExposureUnits},
    Field{"app_text8", &sIASetupInfo::appText8},
    Field{"app_text9", &sIASetupInfo::appText9},
    Field{"height_reference", &sIASetupInfo::heightReference},
    Field{"height_reference_pixel_x", &sIASetupInfo::heightReferencePixelX},
    Field{"height_reference_pixel_y", &sIASetupInfo::heightReferencePixelY},
    Field{"structure_frequency_text", &sIASetupInfo::structureFrequencyText},
    Field{"app_text10", &sIASetupInfo::appText10},
    Field{"app_text11", &sIASetupInfo::appText11},
    Field{"app_text12", &sIASetupInfo::appText12},
    Field{"xray_f_number", &sIASetupInfo::xrayFNumber},
    Field{"app_text13", &sIASetupInfo::appText13},
    Field{"xray_tube_filter", &sIASetupInfo::xrayTubeFilter},
    Field{"acquisition_time", &sIASetupInfo::acquisitionTime},
    Field{"app_flag1", &sIASetupInfo::appFlag1},
    Field{"fluorescent", &sIASetupInfo::fluorescent},
    Field{"app_flag2", &sIASetupInfo::appFlag2},
    Field{"app_flag3", &sIASetupInfo::appFlag3},
    Field{"app_flag4", &sIASetupInfo::appFlag4},
    Field{"app_flag5", &sIASetupInfo::appFlag5},
    Field{"app_flag6", &sIASetupInfo::appFlag6},
    Field{"app_flag7", &sIASetupInfo::appFlag7},
    Field{"app_flag8", &sIASetupInfo::appFlag8},
    Field{"app_flag9", &sIASetupInfo::appFlag9},
    Field{"app_flag10", &sIASetupInfo::appFlag10},
    Field{"app_flag11", &sIASetupInfo::appFlag11},
    Field{"side_view_mirror_enabled", &sIASetupInfo::sideViewMirrorEnabled},
    Field{"app_flag12", &sIASetupInfo::appFlag12},
    Field{"app_flag13", &sIASetupInfo::appFlag13},
    Field{"luminescent_binning", &sIASetupInfo::luminescentBinning},
    Field{"photograph_binning", &sIASetupInfo::photographBinning},
    Field{"structure_binning", &sIASetupInfo::structureBinning},
    Field{"xray_binning", &sIASetupInfo::xrayBinning},
    Field{"raw_binning", &sIASetupInfo::rawBinning},
    Field{"blemish_binning", &sIASetupInfo::blemishBinning},
    Field{"em_gain", &sIASetupInfo::emGain},
    Field{"app_int1", &sIASetupInfo::appInt1},
    Field{"filter_position", &sIASetupInfo::filterPosition},
    Field{"app_int2", &sIASetupInfo::appInt2},
    Field{"read_bias_level", &sIASetupInfo::readBiasLevel},
    Field{"structure_frequency", &sIASetupInfo::structureFrequency},
    Field{"stage_distance", &sIASetupInfo::stageDistance},
    Field{"luminescent_exposure", &sIASetupInfo::luminescentExposure},
    Field{"photograph_exposure", &sIASetupInfo::photographExposure},
    Field{"app_real1", &sIASetupInfo::appReal1},
    Field{"fluorescence_level", &sIASetupInfo::fluorescenceLevel},
    Field{"field_of_view", &sIASetupInfo::fieldOfView},
    Field{"subject_size", &sIASetupInfo::subjectSize},
    Field{"xray_tube_voltage", &sIASetupInfo::xrayTubeVoltage},
    Field{"xray_tube_plate_current", &sIASetupInfo::xrayTubePlateCurrent},
    Field{"xray_exposure", &sIASetupInfo::xrayExposure},
    Field{"xray_read_bias_level", &sIASetupInfo::xrayReadBiasLevel},
    Field{"imaging_angle", &sIASetupInfo::imagingAngle},
    Field{"fl_grid_enabled", &sIASetupInfo::flGridEnabled},
    Field{"app_flag14", &sIASetupInfo::appFlag14},
    Field{"fl_grid_name", &sIASetupInfo::flGridName},
    Field{"fl_x_motor_position", &sIASetupInfo::flXMotorPosition},
    Field{"fl_y_motor_position", &sIASetupInfo::flYMotorPosition},
    Field{"fl_x_spot", &sIASetupInfo::flXSpot},
    Field{"fl_y_spot", &sIASetupInfo::flYSpot},
    Field{"fl_grid_position_x", &sIASetupInfo::flGridPositionX},
    Field{"fl_grid_position_y", &sIASetupInfo::flGridPositionY},
    Field{"fl_grid_points", &sIASetupInfo::flGridPoints},
    Field{"fl_x_spot_text", &sIASetupInfo::flXSpotText},
    Field{"fl_y_spot_text", &sIASetupInfo::flYSpotText},
    Field{"fl_x_motor_position_text", &sIASetupInfo::flXMotorPositionText},
    Field{"fl_y_motor_position_text", &sIASetupInfo::flYMotorPositionText},
    Field{"app_flag15", &sIASetupInfo::appFlag15},
    Field{"app_text14", &sIASetupInfo::appText14},
    Field{"app_flag16", &sIASetupInfo::appFlag16},
    Field{"app_int3", &sIASetupInfo::appInt3},
    Field{"app_int4", &sIASetupInfo::appInt4},
    Field{"app_text15", &sIASetupInfo::appText15},
    Field{"app_text16", &sIASetupInfo::appText16},
    Field{"app_text17", &sIASetupInfo::appText17},
    Field{"app_real2", &sIASetupInfo::appReal2},
    Field{"app_flag17", &sIASetupInfo::appFlag17},
    Field{"app_flag18", &sIASetupInfo::appFlag18},
    Field{"app_text18", &sIASetupInfo::appText18}};

} // namespace

sIASetupInfo setupOf(const py::object& object)
{
    auto setup = recordOf<sIASetupInfo>(object, setupFields);
    forEach(setupFields, [&](const auto& field) {
        using Value = std::decay_t<decltype(setup.*field.member)>;
        if constexpr (std::is_same_v<Value, QString>)
            checkText(setup.*field.member);
    });
    return setup;
}

void defineSetup(py::module_& module)
{
    module.def("setup_defaults", [] { return dictOf(sIASetupInfo(), setupFields); });
}

} // namespace ovpython
