# SPDX-FileCopyrightText: 2026 The ovparser authors
# SPDX-License-Identifier: MIT

"""The results of a spectral analysis."""

from __future__ import annotations

from collections.abc import Iterable
from dataclasses import dataclass, field
from typing import Any

from . import _core
from ._documents import PathLike, path_of
from ._fields import documented, with_fields


@with_fields
@dataclass
class Acquisition:
    """An acquisition and one of its regions of interest."""

    click_number: str = documented("", "Of the acquisition.")
    image_wavelength: str = documented("", 'With its unit, "560nm".')
    average_transmission: float = documented(0.0, "Average transmission of the filter.")
    band_width: float = documented(0.0, "Of the filter, in nanometres.")
    central_wavelength: str = documented("", 'With its unit, "560nm".')
    roi: str = documented("", "Identifier of the region.")
    roi_label: str = documented("", "Label of the region.")
    roi_shape: str = documented("", 'As it is written; "Contour" has contour fields.')
    roi_type: str = documented("", "What the region is for.")
    xc: float = documented(0.0, "Centre of the region.")
    yc: float = documented(0.0, "Centre of the region.")
    angle: float = documented(0.0, "Rotation of the region.")
    width: float = documented(0.0, "Extent of the region.")
    height: float = documented(0.0, "Extent of the region.")
    cm_per_pixel: float = documented(0.0, "Scale of the image.")
    roi_pixels: int = documented(0, "Number of pixels.")
    area: float = documented(0.0, "Of the region of interest.")
    average_radiance: float = documented(0.0, "Measured in the region.")
    filter_label: str = documented("", "The filter of the measurement.")
    total_flux: float = documented(0.0, "Of the region of interest.")
    lock_position: str = documented("", "Whether the position is locked.")
    lock_size: str = documented("", "Whether the size is locked.")
    contour_directions: str = documented("", 'Steps along the contour; only for the shape "Contour", as are the next six.')
    contour_start_x: float = documented(0.0, "Where the contour starts.")
    contour_start_y: float = documented(0.0, "Where the contour starts.")
    contour_peak_x: float = documented(0.0, "Peak inside the contour.")
    contour_peak_y: float = documented(0.0, "Peak inside the contour.")
    contour_x_delta: int = documented(0, "Of the contour.")
    contour_y_delta: int = documented(0, "Of the contour.")
    fractional_peak: float = documented(0.0, "Fraction of the peak at which the contour was drawn.")
    background_association: str = documented("", "Association with a background region.")
    subject_association: str = documented("", "Association with a subject region.")
    background_roi: str = documented("", "The background region.")


@with_fields
@dataclass
class Analysis:
    """The attributes of an analysis, and its acquisitions."""

    sequence_id: str = documented("", "The sequence that was analysed.")
    active_image: str = documented("", "The image that was analysed.")
    tissue_property: str = documented("", "The menu name of the tissue property set.")
    source_model: str = documented("", "The menu name of the source model.")
    index_of_refraction: float | None = documented(
        None, "Of the tissue; None when the file gives no number, which is written as 0."
    )
    acquisitions: list[Acquisition] = field(default_factory=list)


@with_fields
@dataclass
class Result:
    """The results of a region of interest."""

    roi: str = documented("", "Identifier of the region.")
    total_flux: float = documented(0.0, "Of the region of interest.")
    flux_std_dev: float = documented(0.0, "Standard deviation of the flux.")
    average_depth: float = documented(0.0, "Of the source.")
    depth_std_dev: float = documented(0.0, "Standard deviation of the depth.")


@with_fields
@dataclass
class PlotValue:
    """A value of a spectral plot."""

    wavelength: float = documented(0.0, "In nanometres.")
    intensity: float = documented(0.0, "As it was measured.")


@with_fields
@dataclass
class Plot:
    """The spectral plot of a region of interest."""

    label: str = documented("", "Of the region of interest.")
    values: list[PlotValue] = field(default_factory=list)


@with_fields
@dataclass
class FitValue:
    """A fitted value."""

    intensity: float = documented(0.0, "As it was measured.")
    attenuation: float = documented(0.0, "Of the tissue at the wavelength.")
    fit_value: float = documented(0.0, "The value of the fit.")
    horizontal_error: float = documented(0.0, "The error along the attenuation.")
    vertical_error: float = documented(0.0, "The error along the fitted value.")


@with_fields
@dataclass
class Fit:
    """The fit of a region of interest."""

    label: str = documented("", "Of the region of interest.")
    values: list[FitValue] = field(default_factory=list)


@with_fields
@dataclass
class LinearFit:
    """The line a x + b."""

    a: float = 0.0
    b: float = 0.0


@with_fields
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

        The units stand in the file and are not read. Wavelengths are texts such as "560nm"; one
        that is no whole number of nanometres is a ValueError. Numbers are written with six digits.

        Raises Error, which is an OSError too, when the file cannot be written.
        """
        content = cls(list(analyses), list(results), list(plots), list(fits), linear_fit)
        data = _core.spectral_bytes(content, flux_units, depth_units)
        _core.save_bytes(path_of(path), data)

    def svg(self) -> str:
        """The plots and the fit side by side, as an SVG document."""
        fit = self.linear_fit
        line = None if fit is None else (fit.a, fit.b)
        return _core.spectral_svg(tuple(self.plots), tuple(self.fits), line).decode("utf-8")

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
