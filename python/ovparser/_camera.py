# SPDX-FileCopyrightText: 2026 The ovparser authors
# SPDX-License-Identifier: MIT

"""The description of an instrument."""

from __future__ import annotations

from typing import Any, TypeVar, cast, overload

from . import _core
from ._documents import Document, PathLike, path_of

_Camera = TypeVar("_Camera", bound="CameraInfo")


class _Capability:
    """A property whose name is that of a capability."""

    def __init__(self, text: str) -> None:
        self.__doc__ = text

    def __set_name__(self, owner: type[CameraInfo], name: str) -> None:
        first, *others = name.split("_")
        self._name = first + "".join(other.capitalize() for other in others)

    @overload
    def __get__(self, camera: None, owner: type[CameraInfo]) -> _Capability: ...
    @overload
    def __get__(self, camera: CameraInfo, owner: type[CameraInfo]) -> bool: ...
    def __get__(self, camera: CameraInfo | None, owner: type[CameraInfo]) -> bool | _Capability:
        if camera is None:
            return self
        return bool(camera._facts.get("capabilities", {}).get(self._name, False))

    def __set__(self, camera: CameraInfo, value: object) -> None:
        raise AttributeError("what an instrument can do is derived from its description")


class CameraInfo(Document):
    """The description of the instrument, merged with its extensions and filter wheel.

    What it tells is derived when it is loaded. As the sections are those of several files, save()
    needs the name of a file.
    """

    _replaces = False
    _facts: dict[str, Any]

    def __init__(self) -> None:
        super().__init__()
        self._facts = {}

    @classmethod
    def load(cls: type[_Camera], path: PathLike) -> _Camera:
        """Loads a camera-info file and what belongs to it.

        Raises Error, which is an OSError too: BAD_FORMAT when the file, or that of the filter
        wheel in use, describes no instrument.
        """
        text = path_of(path)
        core, facts = _core.load_camera(text)
        camera = cls._made(core, text)
        camera._facts = facts
        return camera

    @property
    def family(self) -> str:
        """The family of the instrument: "standard", "vexa200" or "corvix"."""
        return cast(str, self._facts.get("family", "standard"))

    @property
    def system_configuration(self) -> str:
        """What the description calls the instrument."""
        return cast(str, self._facts.get("systemConfiguration", ""))

    @property
    def camera(self) -> str:
        """The model of the camera."""
        return cast(str, self._facts.get("camera", ""))

    @property
    def ccd_pixels(self) -> int:
        """Number of pixels along a side of the CCD."""
        return int(self._facts.get("ccdPixels", 0))

    @property
    def electronics_tray(self) -> int | None:
        """Part number of the electronics tray; None when it is not given."""
        return self._whole("electronicsTray")

    @property
    def lights_polarity(self) -> int | None:
        """Polarity of the lights control; None when it is not given."""
        return self._whole("lightsPolarity")

    @property
    def structured_light_delay(self) -> int:
        """Delay of the structured light, in cycles."""
        return self._whole("structuredLightDelay") or 0

    @property
    def emission_filter_wheel(self) -> str:
        """File name of the description of the emission filter wheel in use."""
        return cast(str, self._facts.get("emissionFilterWheel", ""))

    @property
    def fields_of_view(self) -> dict[str, float | None]:
        """The field of view of each stage position; None when the text is no number."""
        positions = self._facts.get("stagePositions", [])
        return {position["name"]: position["fieldOfView"] for position in positions}

    @property
    def binnings(self) -> dict[str, dict[str, float | None]]:
        """The binnings "large", "medium" and "small" of each image type; None for none."""
        sizes = ("large", "medium", "small")
        return {
            row["imageType"]: {size: row[size] for size in sizes}
            for row in self._facts.get("binnings", [])
        }

    @property
    def messages(self) -> list[str]:
        """What the library told while it loaded the description and its extensions."""
        return list(self._facts.get("messages", []))

    def _whole(self, name: str) -> int | None:
        number = self._facts.get(name)
        return None if number is None else int(number)

    aurora = _Capability("A VEXA 200 with fluorescence motors and kit.")
    bl = _Capability("A VEXA 200 without the fluorescence kit.")
    chip_reader = _Capability("There is a chip reader.")
    ct = _Capability("A VEXA 200 with a rotation stage.")
    door_closed_on_zero_status = _Capability("The door reads closed on a zero status.")
    fluorescence_kit = _Capability("There is a fluorescence kit.")
    kestrel = _Capability("The camera is a DU88 or its CCD an EMCCD.")
    large_animal_position = _Capability("The stage has a large-animal position.")
    large_animal_selected = _Capability("The operator has selected the large-animal position.")
    old_illumination_controller = _Capability("The illumination controller is an old one.")
    omega_controller = _Capability("There is an Omega controller.")
    omega_output2 = _Capability("The Omega controller is on output 2.")
    princeton_aurora = _Capability("A VEXA 200 whose camera is a Sophia.")
    second_emission_wheel = _Capability("There is a second emission filter wheel.")
    side_mirror = _Capability("There is a side-view mirror.")
    spinner = _Capability("There is a spinner.")
    spinner_active = _Capability("The spinner is in use.")
    tessel_ht = _Capability("A standard instrument with a second emission wheel.")
    transport_bed = _Capability("The instrument takes a transport bed.")
    tray = _Capability("There is a tray.")
    uac_board = _Capability("There is a UAC board.")
    usb_io_board = _Capability("There is a USB I/O board.")
    vic = _Capability("The operator has chosen VIC.")
    wide_field_lens_attached = _Capability("The operator has attached the wide-field lens.")
    wide_field_lens_available = _Capability("The instrument takes the wide-field lens.")
    xray = _Capability("There is an X-ray controller.")
    zoom_lens_attached = _Capability("The operator has attached the zoom lens.")
    zoom_lens_supported = _Capability("The instrument takes the zoom lens.")
