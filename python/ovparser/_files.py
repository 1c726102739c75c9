# SPDX-FileCopyrightText: 2026 The ovparser authors
# SPDX-License-Identifier: MIT

"""Files of any kind."""

from __future__ import annotations

from collections.abc import Callable, Iterator
from contextlib import contextmanager
from typing import Any

from . import _core
from ._camera import CameraInfo
from ._documents import (
    BackgroundSummary,
    ClickInfo,
    Document,
    LabelSets,
    OpticalProperties,
    PathLike,
    Sequence,
    Settings,
    path_of,
)
from ._spectral import SpectralAnalysis

#: The class for what a file is; what is not here is a ClickInfo.
_CLASSES: dict[str, type[Document]] = {
    "backgroundSummary": BackgroundSummary,
    "fluorescentReferences": BackgroundSummary,
    "instrument": CameraInfo,
    "labelSet": LabelSets,
    "opticalProperties": OpticalProperties,
    "sequence": Sequence,
    "settings": Settings,
    "structureReferences": BackgroundSummary,
}

#: Loaders that are not the load() of a class.
_LOADERS: dict[str, Callable[[str], Any]] = {
    "dicom": ClickInfo.from_dicom,
    "filterWheel": ClickInfo._from_key_lines,
    "spectralAnalysis": SpectralAnalysis.load,
}


def load(path: PathLike) -> Any:
    """Loads a file as what it is, told by its content.

    Gives a ClickInfo, Sequence, BackgroundSummary, Settings, CameraInfo, LabelSets,
    OpticalProperties or SpectralAnalysis. Any other info text, such as an instrument extension or a
    filter wheel, is a ClickInfo.

    Raises Error, which is an OSError too: BAD_FORMAT for a file that the library does not know,
    otherwise what the class raises for a file that it cannot load.
    """
    text = path_of(path)
    kind, info = _core.opened_by_kind(text)
    cls = _CLASSES.get(kind, ClickInfo)
    if info is not None:
        return cls._made(info, text)
    return _LOADERS.get(kind, cls.load)(text)


@contextmanager
def edit(path: PathLike) -> Iterator[Any]:
    """Loads a file, and saves it when the block ends without an exception and changed something.

    Of several programs that edit one file in this way none overwrites what another has saved: the
    later one raises an Error (FAILED), and the file keeps what the first has written.

    Raises Error as load() and save() do; at once for an index or an instrument, which would not
    replace its file by one of the same form, and TypeError for a spectral analysis.
    """
    text = path_of(path)
    before = _core.read(text)
    document = load(text)
    if isinstance(document, SpectralAnalysis):
        raise TypeError("a spectral analysis is written as a whole, by SpectralAnalysis.write()")
    document._target(None)
    content = document._content()
    yield document
    if document._content() == content:
        return
    start = before if document._loader == "from_dicom" else b""
    after = start + bytes(document)
    if _core.read(text) != after:  # the block has not saved it itself
        _core.rewrite(text, before, after)
