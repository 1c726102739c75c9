# SPDX-FileCopyrightText: 2026 The ovparser authors
# SPDX-License-Identifier: MIT

"""The results of a spectral analysis."""

from __future__ import annotations

from collections.abc import Iterable
from dataclasses import dataclass, field
from typing import Any

from . import _core
from ._documents import PathLike, path_of


@dataclass
class Acquisition:
    """An acquisition and one of its regions of interest."""

    #: Of the acquisition.
    click_number: str = ""
    #: With its unit, "560nm".
    image_wavelength: str = ""
    #: Average transmission of the filter.
    average_transmission: float = 0.0
    #: Of the filter, in nanometres.
    band_width: float = 0.0
    #: With its unit, "560nm".
    central_wavelength: str = ""
    #: Identifier of the region.
    roi: str = ""
    #: Label of the region.
    roi_label: str = ""
    #: As it is written; "Contour" has contour fields.
    roi_shape: str = ""
    #: What the region is for.
    roi_type: str = ""
    #: Centre.
    xc: float = 0.0
    #: Centre.
    yc: float = 0.0
    #: Rotation.
    angle: float = 0.0
    #: Extent.
    width: float = 0.0
    #: Extent.
    height: float = 0.0
    #: Scale of the image.
    cm_per_pixel: float = 0.0
    #: Number of pixels.
    roi_pixels: int = 0
    #: Of the region.
    area: float = 0.0
    #: Of the measurements, as are the next two.
    average_radiance: float = 0.0
    #: Of the measurements.
    filter_label: str = ""
    #: Of the region.
    total_flux: float = 0.0
    #: Whether the position is locked.
    lock_position: str = ""
    #: Whether the size is locked.
    lock_size: str = ""
    #: Read only for the shape "Contour", as are the next six.
    contour_directions: str = ""
    #: Where the contour starts.
    contour_start_x: float = 0.0
    #: Where the contour starts.
    contour_start_y: float = 0.0
    #: Peak inside the contour.
    contour_peak_x: float = 0.0
    #: Peak inside the contour.
    contour_peak_y: float = 0.0
    #: Of the contour.
    contour_x_delta: int = 0
    #: Of the contour.
    contour_y_delta: int = 0
    #: Fraction of the peak at which the contour was drawn.
    fractional_peak: float = 0.0
    #: Association with a background region.
    background_association: str = ""
    #: Association with a subject region.
    subject_association: str = ""
    #: The background region.
    background_roi: str = ""


@dataclass
class Analysis:
    """The attributes of an analysis, and its acquisitions."""

    #: The sequence that was analysed.
    sequence_id: str = ""
    #: The image that was analysed.
    active_image: str = ""
    #: The menu name of the tissue property set.
    tissue_property: str = ""
    #: The menu name of the source model.
    source_model: str = ""
    #: Of the tissue; None when the file gives no number.
    index_of_refraction: float | None = None
    acquisitions: list[Acquisition] = field(default_factory=list)


@dataclass
class Result:
    """The results of a region of interest."""

    #: Identifier of the region.
    roi: str = ""
    #: Of the region.
    total_flux: float = 0.0
    #: Standard deviation of the flux.
    flux_std_dev: float = 0.0
    #: Of the source.
    average_depth: float = 0.0
    #: Standard deviation of the depth.
    depth_std_dev: float = 0.0


@dataclass
class PlotValue:
    """A value of a spectral plot."""

    #: In nanometres.
    wavelength: float = 0.0
    #: As it was measured.
    intensity: float = 0.0


@dataclass
class Plot:
    """The spectral plot of a region of interest."""

    #: Of the region.
    label: str = ""
    values: list[PlotValue] = field(default_factory=list)


@dataclass
class FitValue:
    """A fitted value."""

    #: As it was measured.
    intensity: float = 0.0
    #: Of the tissue at the wavelength.
    attenuation: float = 0.0
    #: The value of the fit.
    fit_value: float = 0.0
    #: The error along the attenuation.
    horizontal_error: float = 0.0
    #: The error along the fitted value.
    vertical_error: float = 0.0


@dataclass
class Fit:
    """The fit of a region of interest."""

    #: Of the region.
    label: str = ""
    values: list[FitValue] = field(default_factory=list)


@dataclass
class LinearFit:
    """The line a x + b."""

    a: float = 0.0
    b: float = 0.0


@dataclass
class SpectralAnalysis:
    """The results of a spectral analysis: what its file holds, as lists that can be changed."""

    analyses: list[Analysis] = field(default_factory=list)
    results: list[Result] = field(default_factory=list)
    plots: list[Plot] = field(default_factory=list)
    fits: list[Fit] = field(default_factory=list)
    linear_fit: LinearFit | None = None
    #: The file that it was loaded from; None for a new one.
    path: str | None = field(default=None, compare=False)

    @property
    def acquisitions(self) -> list[Acquisition]:
        """The acquisitions of every analysis, in the order of the file."""
        return [acquisition for analysis in self.analyses for acquisition in analysis.acquisitions]

    @classmethod
    def load(cls, path: PathLike) -> SpectralAnalysis:
        """Loads a file.

        Raises Error (BAD_FORMAT), which is an OSError too, when it cannot be read or is no
        spectral-analysis file; FileNotFoundError or PermissionError where it is that.
        """
        text = path_of(path)
        content = _core.load_spectral(text)
        fit = content["linear_fit"]
        return cls(
            analyses=[_analysis_of(analysis) for analysis in content["analyses"]],
            results=[Result(**result) for result in content["results"]],
            plots=[
                Plot(label, [PlotValue(**value) for value in plot])
                for label, plot, _ in content["curves"]
                if plot
            ],
            fits=[
                Fit(label, [FitValue(**value) for value in values])
                for label, _, values in content["curves"]
                if values
            ],
            linear_fit=None if fit is None else LinearFit(*fit),
            path=text,
        )

    @classmethod
    def write(
        cls,
        path: PathLike,
        *,
        analyses: Iterable[Analysis] = (),
        results: Iterable[Result] = (),
        plots: Iterable[Plot] = (),
        fits: Iterable[Fit] = (),
        linear_fit: LinearFit | None = None,
        flux_units: str = "photons/s",
        depth_units: str = "mm",
    ) -> None:
        """Writes a file, which is replaced at once.

        The units stand in the file and are not read. Wavelengths are texts such as "560nm"; the
        central one of a filter that is no whole number is a ValueError.

        Raises Error, which is an OSError too, when the file cannot be written.
        """
        content = cls(list(analyses), list(results), list(plots), list(fits), linear_fit)
        data = _core.spectral_bytes(content, flux_units, depth_units)
        _core.save_bytes(path_of(path), data)

    def svg(self) -> str:
        """The plots and the fit side by side, as an SVG document."""
        fit = self.linear_fit
        line = None if fit is None else (fit.a, fit.b)
        return _core.spectral_svg(self.plots, self.fits, line).decode("utf-8")

    def _repr_html_(self) -> str:
        return self.svg()


def _analysis_of(content: dict[str, Any]) -> Analysis:
    values = dict(content)
    values["acquisitions"] = [Acquisition(**fields) for fields in content["acquisitions"]]
    try:
        values["index_of_refraction"] = float(content["index_of_refraction"])
    except ValueError:
        values["index_of_refraction"] = None
    return Analysis(**values)
