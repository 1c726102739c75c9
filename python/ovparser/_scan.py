# SPDX-FileCopyrightText: 2026 The ovparser authors
# SPDX-License-Identifier: MIT

"""Whole archives: their records, and tables of these."""

from __future__ import annotations

import atexit
import weakref
from collections.abc import Generator, Iterable, Mapping
from typing import TYPE_CHECKING, Any

from . import _core
from ._documents import PathLike, path_of

if TYPE_CHECKING:
    import pandas  # type: ignore[import]

Record = dict[str, Any]
Records = Generator[Record, None, None]

_TEXTS = "path sequencePath sequenceName sequenceId clickNumber userId".split()
_NUMBERS = "exposureSeconds binning fieldOfView fNumber".split()
_COLUMNS = [
    *_TEXTS, "kind", "date", "time", "datetime", "images", "mainImage", *_NUMBERS,
    "emissionFilter", "excitationFilter", "error",
]  # fmt: skip

_running: weakref.WeakSet[_core.Scan] = weakref.WeakSet()


@atexit.register
def _stop() -> None:
    for running in list(_running):
        running.close()


def scan(folder: PathLike, *, recursive: bool = True, jobs: int | None = None) -> Records:
    """The records of an archive, one by one, read on ``jobs`` threads while they are asked for.

    They are what ``ovinfo study --jsonl`` prints, in its order: of each acquisition, of what was
    analysed of it, and of each DICOM file with click info. A file or folder that cannot be read
    gives a record as well, with the member "error". ``jobs`` is the number of cores unless it is
    given. Without ``recursive`` only the folder itself, and the acquisitions that its sequence
    lists, are read.

    Raises ValueError for a number of jobs that is not from 1 to 256.
    """
    return _records(_core.start_scan(path_of(folder), recursive, jobs))


def _records(running: _core.Scan) -> Records:
    _running.add(running)
    try:
        yield from running
    finally:
        running.close()


def to_dataframe(records: Iterable[Mapping[str, Any]]) -> pandas.DataFrame:
    """A table of records, which needs pandas: a row for each, those with an error included.

    "date" and "datetime" are datetime64 and numbers are floats; every other column is text, so that
    an identifier such as "007" or "NA" stays what it is. Kinds of images are joined by ";". Each
    label is a column of its own, "label.Group"; names that differ only in letter case are one.
    """
    import pandas

    rows = []
    labels: dict[str, str] = {}
    for record in records:
        row = {name: record.get(name) for name in _COLUMNS}
        row["images"] = ";".join(record.get("images") or ()) or None
        for label, value in (record.get("labels") or {}).items():
            row[labels.setdefault(label.lower(), f"label.{label}")] = value
        rows.append(row)
    table = pandas.DataFrame(rows, columns=[*_COLUMNS, *labels.values()], dtype=object)
    moment = table["date"] + "T" + table["time"]
    # A date beyond what pandas can hold is none.
    table["date"] = pandas.to_datetime(table["date"], errors="coerce")
    table["datetime"] = pandas.to_datetime(moment, errors="coerce")
    return table.astype({name: float for name in _NUMBERS})
