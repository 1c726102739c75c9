# SPDX-FileCopyrightText: 2026 The ovparser authors
# SPDX-License-Identifier: MIT

"""New acquisitions and spectral analyses."""

from __future__ import annotations

import copy
import pickle
from dataclasses import fields
from pathlib import Path
from xml.etree import ElementTree

import pytest

import ovparser
from ovparser import ClickInfo, ImageType, Setup, SpectralAnalysis


def test_a_setup_has_every_field_of_the_library() -> None:
    setup = Setup(field_of_view=12.5, fl_grid_points=[(1, 2), (3, 4)], emission_filter="GFP")
    assert (setup.field_of_view, setup.fl_grid_points) == (12.5, [(1, 2), (3, 4)])
    assert Setup().excitation_filter == "Block" and Setup().subject_size == 1.5
    values = {field.name: getattr(Setup(acquisition_time=0), field.name) for field in fields(Setup)}
    assert values == {**ovparser._core.setup_defaults(), "acquisition_time": 0}
    assert len(values) == 95 and all(f"\n    {name}: " in str(Setup.__doc__) for name in values)
    setup.acquisition_time = 0
    assert repr(setup).startswith("Setup(") and "emission_filter='GFP'" in repr(setup)
    assert eval(repr(setup)) == setup != Setup(acquisition_time=0)  # noqa: S307
    for again in (copy.copy(setup), copy.deepcopy(setup), pickle.loads(pickle.dumps(setup))):
        assert again == setup and again is not setup


@pytest.mark.parametrize(
    ("values", "error"),
    [
        ({"no_field": 1}, TypeError),
        ({"field_of_view": "wide"}, TypeError),
        ({"photograph_binning": 1.5}, TypeError),
        ({"em_gain": 2**31}, TypeError),
        ({"fl_grid_points": [1]}, TypeError),
        ({"emission_filter": "a\nb"}, ValueError),
        ({"emission_filter": "\u20ac"}, ValueError),
    ],
)
def test_a_setup_with_what_cannot_be_written(
    values: dict[str, object], error: type[Exception]
) -> None:
    info = ClickInfo()
    with pytest.raises(error, match=next(iter(values)) if error is TypeError else None):
        info.add_image("a.tif", ImageType.LUMINESCENT, Setup(**values))  # type: ignore[arg-type]
    assert not info


def test_no_text_of_a_new_acquisition_makes_a_line_of_its_own() -> None:
    info = ClickInfo()
    for text in ("1\n*** Evil:\ta", "\u20ac"):
        for fails in (
            lambda: info.add_user(ImageType.PHOTOGRAPH, text),
            lambda: info.add_click_number(version=text),
            lambda: info.add_image(text, ImageType.PHOTOGRAPH, Setup()),
            lambda: info.add_image("a", ImageType.PHOTOGRAPH, Setup(), user_id=text),
            lambda: ClickInfo.for_image("a", text, ImageType.PHOTOGRAPH, 1),
            lambda: ovparser.Sequence("a", version=text),
        ):
            with pytest.raises(ValueError):
                fails()
    assert not info


def test_an_acquisition_is_built(tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setenv("TZ", "UTC")
    info = ClickInfo()
    info.click_number = "ABC20240305091502"
    info.add_click_number(in_sequence=True, version="4.7")
    info.add_user(ImageType.LUMINESCENT, "ABC")
    setup = Setup(acquisition_time=1709630102, luminescent_exposure=60, luminescent_binning=8,
                  field_of_view=12.5)  # fmt: skip
    info.add_image("C:/images/luminescent.TIF", ImageType.LUMINESCENT, setup, user_id="XYZ")
    image = info["luminescent image"]
    assert image.name.endswith("luminescent.TIF") and image["Acquisition Time"] == "09:15:02"
    assert image.float("Luminescent Exposure (Seconds)") == 60 and image.int("Binning Factor") == 8
    assert info["User Input"]["User ID"] == "XYZ"
    info.add_image("photo.TIF", ImageType.PHOTOGRAPH, setup, settings=False)
    info.save(tmp_path / "ClickInfo.txt")
    assert ovparser.load(tmp_path / "ClickInfo.txt") == info


def test_click_info_for_a_bare_image() -> None:
    info = ClickInfo.for_image("images/mouse.tif", "ABC", ImageType.PHOTOGRAPH, 4)
    assert info.click_number.startswith("ABC") and len(info.click_number) == 17
    assert info["photographic image"].name == "mouse.tif"
    assert info["photographic image"]["Binning Factor"] == "4"


def test_a_spectral_analysis_is_read_and_written(examples: Path, tmp_path: Path) -> None:
    read = SpectralAnalysis.load(examples / "spectral/Spectral.xml")
    first = read.acquisitions[0]
    assert (first.click_number, first.image_wavelength) == ("ABC20240305091502", "560nm")
    assert first.average_radiance > 0 and first.filter_label
    assert read.results[0].total_flux > 0 and read.plots[0].values[0].wavelength == 560
    assert read.fits[0].values[0].attenuation > 0 and read.linear_fit is not None
    read.analyses[0].acquisitions[0].roi_shape = "Contour"
    read.analyses[0].acquisitions[0].contour_x_delta = 3
    parts = {name: value for name, value in vars(read).items() if name != "path"}
    SpectralAnalysis.write(tmp_path / "copy.xml", **parts)
    again = SpectralAnalysis.load(tmp_path / "copy.xml")
    assert again == read and pickle.loads(pickle.dumps(again)) == read
    SpectralAnalysis.write(tmp_path / "new.xml", results=[ovparser.Result("1", 2.0)])
    new = SpectralAnalysis.load(tmp_path / "new.xml")
    assert new == SpectralAnalysis(results=[ovparser.Result("1", 2.0)]) and new != read


def test_a_spectral_analysis_is_drawn(examples: Path) -> None:
    read = SpectralAnalysis.load(examples / "spectral/Spectral.xml")
    read.plots[0].label = "<ROI & 1>"
    svg = ElementTree.fromstring(read._repr_html_())
    texts = [element.text for element in svg.iter("{http://www.w3.org/2000/svg}text")]
    assert svg.tag.endswith("svg") and "<ROI & 1>" in texts and "Linear fit" in texts
