# SPDX-FileCopyrightText: 2026 The ovparser authors
# SPDX-License-Identifier: MIT

"""The settings with which an image is acquired."""

from __future__ import annotations

import time
from collections.abc import Callable
from dataclasses import dataclass, field
from typing import Any

from ._fields import documented, with_fields


def _made(text: str, make: Callable[[], Any]) -> Any:
    return field(default_factory=make, metadata={"text": text})


def _now() -> int:
    return int(time.time())


@with_fields
@dataclass(kw_only=True, slots=True)
class Setup:
    """The settings with which one image was acquired, each a keyword argument.

    A field that is not given has the default of the library. ClickInfo.add_image() takes it, and
    raises TypeError for a field of another type or too large, ValueError for text that a file
    cannot hold.
    """

    imaging_mode: int = documented(
        0, "1 adds keys of a fluorescence grid and height reference, 2 those of stage and angle."
    )
    xray_imaging_mode: int = documented(
        0, "1 for a large animal, 2 for high resolution, anything else for a mouse."
    )
    app_text1: str = documented("Medium", "Kept for the application; the library never reads it.")
    app_text2: str = documented("Medium", "Kept for the application; the library never reads it.")
    excitation_filter: str = documented("Block", "Name of the excitation filter.")
    emission_filter: str = documented("Open", "Name of the emission filter.")
    app_text3: str = documented("Load", "Kept for the application; the library never reads it.")
    fluorescence_level_text: str = documented("High", "Name of the level of the excitation light.")
    luminescent_f_number: str = documented(
        "2", "f number of luminescent images and fluorescent backgrounds, as text."
    )
    photograph_f_number: str = documented(
        "8", "f number of photographs and structure images, as text."
    )
    app_text4: str = documented("", "Kept for the application; the library never reads it.")
    app_text5: str = documented("Unlocked", "Kept for the application; the library never reads it.")
    app_text6: str = documented("", "Kept for the application; the library never reads it.")
    app_text7: str = documented("", "Kept for the application; the library never reads it.")
    demand_temperature: str = documented("", "Temperature that the CCD is to have, as text.")
    measured_temperature: str = documented("", "Temperature that the CCD has, as text.")
    luminescent_exposure_units: str = documented(
        "sec", 'Unit of luminescent_exposure: "sec" or "min".'
    )
    app_text8: str = documented("1", "Kept for the application; the library never reads it.")
    app_text9: str = documented("1", "Kept for the application; the library never reads it.")
    height_reference: str = documented(
        "", "Height of the reference; counts when imaging_mode is 1."
    )
    height_reference_pixel_x: str = documented(
        "", "Its column in the image; counts when imaging_mode is 1."
    )
    height_reference_pixel_y: str = documented(
        "", "Its row in the image; counts when imaging_mode is 1."
    )
    structure_frequency_text: str = documented(
        "Coarse", "Name of the frequency of the structured light; counts unless imaging_mode is 2."
    )
    app_text10: str = documented("", "Kept for the application; the library never reads it.")
    app_text11: str = documented("", "Kept for the application; the library never reads it.")
    app_text12: str = documented("", "Kept for the application; the library never reads it.")
    xray_f_number: str = documented("8", "f number of X-ray images, as text.")
    app_text13: str = documented("Low", "Kept for the application; the library never reads it.")
    xray_tube_filter: str = documented("out", "Position of the filter of the X-ray tube.")
    acquisition_time: int = _made("Seconds since 1 January 1970, UTC; now unless it is given.", _now)
    app_flag1: bool = documented(False, "Kept for the application; the library never reads it.")
    fluorescent: bool = documented(False, "Whether a luminescent image is a fluorescent one.")
    app_flag2: bool = documented(False, "Kept for the application; the library never reads it.")
    app_flag3: bool = documented(False, "Kept for the application; the library never reads it.")
    app_flag4: bool = documented(False, "Kept for the application; the library never reads it.")
    app_flag5: bool = documented(False, "Kept for the application; the library never reads it.")
    app_flag6: bool = documented(False, "Kept for the application; the library never reads it.")
    app_flag7: bool = documented(False, "Kept for the application; the library never reads it.")
    app_flag8: bool = documented(False, "Kept for the application; the library never reads it.")
    app_flag9: bool = documented(False, "Kept for the application; the library never reads it.")
    app_flag10: bool = documented(False, "Kept for the application; the library never reads it.")
    app_flag11: bool = documented(False, "Kept for the application; the library never reads it.")
    side_view_mirror_enabled: bool = documented(False, "Whether a side-view mirror was in place.")
    app_flag12: bool = documented(False, "Kept for the application; the library never reads it.")
    app_flag13: bool = documented(False, "Kept for the application; the library never reads it.")
    luminescent_binning: int = documented(
        1, "Binning factor of every image type without a field of its own."
    )
    photograph_binning: int = documented(1, "Binning factor.")
    structure_binning: int = documented(1, "Binning factor.")
    xray_binning: int = documented(1, "Binning factor.")
    raw_binning: int = documented(1, "Binning factor of fluorescent references on a grid.")
    blemish_binning: int = documented(1, "Binning factor.")
    em_gain: int = documented(0, "Gain of an EMCCD; written only when above 0.")
    app_int1: int = documented(0, "Kept for the application; the library never reads it.")
    filter_position: int = documented(0, "Position of the emission filter.")
    app_int2: int = documented(0, "Kept for the application; the library never reads it.")
    read_bias_level: float = documented(0.0, "Read bias level in counts.")
    structure_frequency: float = documented(
        1.0, "Frequency of the structured light; counts when imaging_mode is 2."
    )
    stage_distance: float = documented(0.0, "Distance of the stage; counts when imaging_mode is 2.")
    luminescent_exposure: float = documented(0.0, "Exposure time in luminescent_exposure_units.")
    photograph_exposure: float = documented(0.0, "Exposure time in seconds.")
    app_real1: float = documented(0.0, "Kept for the application; the library never reads it.")
    fluorescence_level: float = documented(0.0, "The level of the excitation light as a number.")
    field_of_view: float = documented(
        0.0, "Width of the image, as it is to stand in the file (there in cm)."
    )
    subject_size: float = documented(
        1.5, 'Twice the "Object radius", as it is to stand in the file.'
    )
    xray_tube_voltage: float = documented(
        0.0, "Voltage of the X-ray tube, as it is to stand in the file."
    )
    xray_tube_plate_current: float = documented(
        0.0, "Plate current of the X-ray tube, as it is to stand in the file."
    )
    xray_exposure: float = documented(0.0, "Exposure time in seconds.")
    xray_read_bias_level: float = documented(0.0, "Read bias level of X-ray images in counts.")
    imaging_angle: float = documented(0.0, "Angle of the view; counts when imaging_mode is 2.")
    fl_grid_enabled: bool = documented(
        False, "Whether a fluorescence grid was used; counts when imaging_mode is 1."
    )
    app_flag14: bool = documented(False, "Kept for the application; the library never reads it.")
    fl_grid_name: str = documented("", "Name of the grid.")
    fl_x_motor_position: int = documented(0, "x of the motor of a single-spot grid.")
    fl_y_motor_position: int = documented(0, "y of the motor of a single-spot grid.")
    fl_x_spot: float = documented(0.0, "x of the spot of a single-spot grid.")
    fl_y_spot: float = documented(0.0, "y of the spot of a single-spot grid.")
    fl_grid_position_x: int = documented(0, "x position of a single-spot grid.")
    fl_grid_position_y: int = documented(0, "y position of a single-spot grid.")
    fl_grid_points: list[tuple[int, int]] = _made(
        "Columns and rows of the spots; two or more make a multi-spot grid.", list
    )
    fl_x_spot_text: str = documented("", "x of the spot of a multi-spot grid, as text.")
    fl_y_spot_text: str = documented("", "y of the spot of a multi-spot grid, as text.")
    fl_x_motor_position_text: str = documented("", "x of the motor of a multi-spot grid, as text.")
    fl_y_motor_position_text: str = documented("", "y of the motor of a multi-spot grid, as text.")
    app_flag15: bool = documented(False, "Kept for the application; the library never reads it.")
    app_text14: str = documented("", "Kept for the application; the library never reads it.")
    app_flag16: bool = documented(False, "Kept for the application; the library never reads it.")
    app_int3: int = documented(0, "Kept for the application; the library never reads it.")
    app_int4: int = documented(0, "Kept for the application; the library never reads it.")
    app_text15: str = documented("Auto", "Kept for the application; the library never reads it.")
    app_text16: str = documented("18", "Kept for the application; the library never reads it.")
    app_text17: str = documented("Auto", "Kept for the application; the library never reads it.")
    app_real2: float = documented(-1.0, "Kept for the application; the library never reads it.")
    app_flag17: bool = documented(False, "Kept for the application; the library never reads it.")
    app_flag18: bool = documented(False, "Kept for the application; the library never reads it.")
    app_text18: str = documented("", "Kept for the application; the library never reads it.")
