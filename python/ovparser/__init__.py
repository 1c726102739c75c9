# SPDX-FileCopyrightText: 2026 The ovparser authors
# SPDX-License-Identifier: MIT

"""Reads, edits and writes the data files of Orvane.

>>> import ovparser
>>> info = ovparser.load("ClickInfo.txt")
>>> info["luminescent image"]["Field of View"]

Documents are mappings of sections, sections mappings of keys to texts; letter case of both kinds of
keys is ignored. A look-up that fails is a KeyError, everything else an Error.
"""

from __future__ import annotations

from ._camera import CameraInfo
from ._core import Section
from ._documents import (
    BackgroundSummary,
    ClickInfo,
    ClickNumbers,
    Document,
    ImageType,
    LabelSets,
    OpticalProperties,
    Sequence,
    Settings,
    Value,
)
from ._errors import DeniedFileError, Error, FileError, MissingFileError, Status
from ._files import edit, load
from ._scan import Record, scan, to_dataframe
from ._setup import Setup
from ._spectral import (
    Acquisition,
    Analysis,
    Fit,
    FitValue,
    LinearFit,
    Plot,
    PlotValue,
    Result,
    SpectralAnalysis,
)

__all__ = [
    "Acquisition", "Analysis", "BackgroundSummary", "CameraInfo", "ClickInfo", "ClickNumbers",
    "DeniedFileError", "Document", "Error", "FileError", "Fit", "FitValue", "ImageType",
    "LabelSets", "LinearFit", "MissingFileError", "OpticalProperties", "Plot", "PlotValue",
    "Record", "Result", "Section", "Sequence", "Settings", "Setup", "SpectralAnalysis", "Status",
    "Value", "edit", "load", "scan", "to_dataframe",
]  # fmt: skip
