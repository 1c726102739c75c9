# SPDX-FileCopyrightText: 2026 The ovparser authors
# SPDX-License-Identifier: MIT

import builtins
from collections.abc import Iterator, Mapping, MutableMapping
from typing import Any

class Section(MutableMapping[str, str]):
    def __getitem__(self, key: str) -> str: ...
    def __setitem__(self, key: str, value: str | builtins.int | builtins.float | bool) -> None: ...
    def __delitem__(self, key: str) -> None: ...
    def __iter__(self) -> Iterator[str]: ...
    def __len__(self) -> builtins.int: ...
    def raw(self, key: str) -> str: ...
    def comment(self, key: str) -> str | None: ...
    def float(self, key: str) -> builtins.float: ...
    def int(self, key: str) -> builtins.int: ...
    @property
    def key(self) -> str: ...
    @property
    def name(self) -> str: ...
    @name.setter
    def name(self, arg1: str) -> None: ...

class Setup:
    def __init__(
        self,
        *,
        imaging_mode: int = ...,
        xray_imaging_mode: int = ...,
        app_text1: str = ...,
        app_text2: str = ...,
        excitation_filter: str = ...,
        emission_filter: str = ...,
        app_text3: str = ...,
        fluorescence_level_text: str = ...,
        luminescent_f_number: str = ...,
        photograph_f_number: str = ...,
        app_text4: str = ...,
        app_text5: str = ...,
        app_text6: str = ...,
        app_text7: str = ...,
        demand_temperature: str = ...,
        measured_temperature: str = ...,
        luminescent_exposure_units: str = ...,
        app_text8: str = ...,
        app_text9: str = ...,
        height_reference: str = ...,
        height_reference_pixel_x: str = ...,
        height_reference_pixel_y: str = ...,
        structure_frequency_text: str = ...,
        app_text10: str = ...,
        app_text11: str = ...,
        app_text12: str = ...,
        xray_f_number: str = ...,
        app_text13: str = ...,
        xray_tube_filter: str = ...,
        acquisition_time: int = ...,
        app_flag1: bool = ...,
        fluorescent: bool = ...,
        app_flag2: bool = ...,
        app_flag3: bool = ...,
        app_flag4: bool = ...,
        app_flag5: bool = ...,
        app_flag6: bool = ...,
        app_flag7: bool = ...,
        app_flag8: bool = ...,
        app_flag9: bool = ...,
        app_flag10: bool = ...,
        app_flag11: bool = ...,
        side_view_mirror_enabled: bool = ...,
        app_flag12: bool = ...,
        app_flag13: bool = ...,
        luminescent_binning: int = ...,
        photograph_binning: int = ...,
        structure_binning: int = ...,
        xray_binning: int = ...,
        raw_binning: int = ...,
        blemish_binning: int = ...,
        em_gain: int = ...,
        app_int1: int = ...,
        filter_position: int = ...,
        app_int2: int = ...,
        read_bias_level: float = ...,
        structure_frequency: float = ...,
        stage_distance: float = ...,
        luminescent_exposure: float = ...,
        photograph_exposure: float = ...,
        app_real1: float = ...,
        fluorescence_level: float = ...,
        field_of_view: float = ...,
        subject_size: float = ...,
        xray_tube_voltage: float = ...,
        xray_tube_plate_current: float = ...,
        xray_exposure: float = ...,
        xray_read_bias_level: float = ...,
        imaging_angle: float = ...,
        fl_grid_enabled: bool = ...,
        app_flag14: bool = ...,
        fl_grid_name: str = ...,
        fl_x_motor_position: int = ...,
        fl_y_motor_position: int = ...,
        fl_x_spot: float = ...,
        fl_y_spot: float = ...,
        fl_grid_position_x: int = ...,
        fl_grid_position_y: int = ...,
        fl_grid_points: list[tuple[int, int]] = ...,
        fl_x_spot_text: str = ...,
        fl_y_spot_text: str = ...,
        fl_x_motor_position_text: str = ...,
        fl_y_motor_position_text: str = ...,
        app_flag15: bool = ...,
        app_text14: str = ...,
        app_flag16: bool = ...,
        app_int3: int = ...,
        app_int4: int = ...,
        app_text15: str = ...,
        app_text16: str = ...,
        app_text17: str = ...,
        app_real2: float = ...,
        app_flag17: bool = ...,
        app_flag18: bool = ...,
        app_text18: str = ...,
    ) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    imaging_mode: int
    xray_imaging_mode: int
    app_text1: str
    app_text2: str
    excitation_filter: str
    emission_filter: str
    app_text3: str
    fluorescence_level_text: str
    luminescent_f_number: str
    photograph_f_number: str
    app_text4: str
    app_text5: str
    app_text6: str
    app_text7: str
    demand_temperature: str
    measured_temperature: str
    luminescent_exposure_units: str
    app_text8: str
    app_text9: str
    height_reference: str
    height_reference_pixel_x: str
    height_reference_pixel_y: str
    structure_frequency_text: str
    app_text10: str
    app_text11: str
    app_text12: str
    xray_f_number: str
    app_text13: str
    xray_tube_filter: str
    acquisition_time: int
    app_flag1: bool
    fluorescent: bool
    app_flag2: bool
    app_flag3: bool
    app_flag4: bool
    app_flag5: bool
    app_flag6: bool
    app_flag7: bool
    app_flag8: bool
    app_flag9: bool
    app_flag10: bool
    app_flag11: bool
    side_view_mirror_enabled: bool
    app_flag12: bool
    app_flag13: bool
    luminescent_binning: int
    photograph_binning: int
    structure_binning: int
    xray_binning: int
    raw_binning: int
    blemish_binning: int
    em_gain: int
    app_int1: int
    filter_position: int
    app_int2: int
    read_bias_level: float
    structure_frequency: float
    stage_distance: float
    luminescent_exposure: float
    photograph_exposure: float
    app_real1: float
    fluorescence_level: float
    field_of_view: float
    subject_size: float
    xray_tube_voltage: float
    xray_tube_plate_current: float
    xray_exposure: float
    xray_read_bias_level: float
    imaging_angle: float
    fl_grid_enabled: bool
    app_flag14: bool
    fl_grid_name: str
    fl_x_motor_position: int
    fl_y_motor_position: int
    fl_x_spot: float
    fl_y_spot: float
    fl_grid_position_x: int
    fl_grid_position_y: int
    fl_grid_points: list[tuple[int, int]]
    fl_x_spot_text: str
    fl_y_spot_text: str
    fl_x_motor_position_text: str
    fl_y_motor_position_text: str
    app_flag15: bool
    app_text14: str
    app_flag16: bool
    app_int3: int
    app_int4: int
    app_text15: str
    app_text16: str
    app_text17: str
    app_real2: float
    app_flag17: bool
    app_flag18: bool
    app_text18: str

class Info:
    def __getitem__(self, key: str) -> Section: ...
    def count(self) -> int: ...
    def keys(self) -> list[str]: ...
    def has(self, key: str) -> bool: ...
    def set_section(self, key: str, mapping: Mapping[str, Any]) -> None: ...
    def copy_section(self, key: str, section: Section) -> None: ...
    def remove(self, key: str) -> None: ...
    def clear(self) -> None: ...
    def swap(self, other: Info) -> None: ...
    def copy(self) -> Info: ...
    def state(self) -> tuple[Any, ...]: ...
    def bytes(self) -> builtins.bytes: ...
    def save(self, path: str) -> None: ...
    @property
    def preamble(self) -> list[str]: ...
    click_number: str
    def add_image(
        self, path: str, image_type: int, setup: Setup, user_id: str | None, settings: bool
    ) -> None: ...
    def add_click_number(self, acquired: bool, in_sequence: bool, version: str) -> None: ...
    def add_user(self, image_type: int, user_id: str) -> None: ...
    name: str
    def add_sequence(self, version: str) -> None: ...
    click_numbers: list[str]
    def acquisition_path(self, place: int) -> str: ...
    folder: str
    def menu_names(self) -> list[str]: ...
    def setting_with_menu_name(self, menu_name: str) -> str: ...
    def label_sets(self) -> list[tuple[str, list[str]]]: ...

class Scan:
    def __init__(self, folder: str, recursive: bool, jobs: int | None) -> None: ...
    def __iter__(self) -> Scan: ...
    def __next__(self) -> dict[str, Any]: ...
    def close(self) -> None: ...

def opened_by_kind(path: str) -> tuple[str, Info | None]: ...
def new_info() -> Info: ...
def new_sequence() -> Info: ...
def load_info(path: str) -> Info: ...
def load_dicom(path: str) -> Info: ...
def load_sequence(path: str) -> Info: ...
def load_catalogue(path: str) -> tuple[Info, bool]: ...
def load_key_lines(path: str) -> Info: ...
def load_camera(path: str) -> tuple[Info, dict[str, Any]]: ...
def load_optical(path: str) -> tuple[Info, list[str], list[str]]: ...
def load_spectral(path: str) -> dict[str, Any]: ...
def info_of(data: bytes) -> Info: ...
def info_for_image(path: str, prefix: str, image_type: int, binning: int) -> Info: ...
def info_from(state: tuple[Any, ...]) -> Info: ...
def rewrite(path: str, old: bytes, data: bytes) -> None: ...
def save_bytes(path: str, data: bytes) -> None: ...
def spectral_bytes(content: Any, flux_units: str, depth_units: str) -> bytes: ...
def spectral_svg(
    plots: list[Any], fits: list[Any], linear_fit: tuple[float, float] | None
) -> bytes: ...
