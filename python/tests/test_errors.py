# SPDX-FileCopyrightText: 2026 The ovparser authors
# SPDX-License-Identifier: MIT

"""What fails, and as what."""

from __future__ import annotations

import os
import pickle
import subprocess
import sys
import tempfile
import warnings
from collections.abc import Callable, Iterator
from pathlib import Path

import pytest

import ovparser
from ovparser import ClickInfo, ImageType, Setup, Status

LOADERS = [
    ovparser.load, ClickInfo.load, ClickInfo.from_dicom, ovparser.Sequence.load,
    ovparser.BackgroundSummary.load, ovparser.Settings.load, ovparser.CameraInfo.load,
    ovparser.LabelSets.load, ovparser.OpticalProperties.load, ovparser.SpectralAnalysis.load,
]  # fmt: skip


@pytest.mark.parametrize("load", LOADERS)
def test_a_missing_file_is_both_errors(tmp_path: Path, load: Callable[[Path], object]) -> None:
    path = tmp_path / "none.txt"
    with pytest.raises(FileNotFoundError) as raised:
        load(path)
    error = raised.value
    assert isinstance(error, ovparser.Error) and isinstance(error.status, Status)
    assert error.path == error.filename == str(path) and str(error).startswith(f"{path}: ")
    with pytest.raises(ovparser.Error):
        load(tmp_path)  # a folder
    with pytest.raises(ValueError, match="null"):
        load(Path("a\0b"))


@pytest.fixture
def open_folder() -> Iterator[Path]:
    """A folder that every user reaches, unlike those of the tests."""
    with tempfile.TemporaryDirectory() as name:
        os.chmod(name, 0o755)
        yield Path(name)


def test_what_another_user_may_not(open_folder: Path) -> None:
    """Root may do everything, so somebody else tries."""
    nobody = 65534 if os.geteuid() == 0 else None

    def run(code: str) -> subprocess.CompletedProcess[bytes]:
        command = [sys.executable, "-c", code]
        return subprocess.run(
            command, cwd=open_folder, user=nobody, capture_output=True, check=False
        )

    if run("import ovparser").returncode != 0:
        pytest.skip("the package lies where other users reach nothing")
    (open_folder / "secret.txt").write_bytes(b"*** A:\t\n")
    (open_folder / "secret.txt").chmod(0)
    (open_folder / "closed").mkdir(0o555)
    result = run(
        """
import sys, ovparser
for fails in (
    lambda: ovparser.load("secret.txt"),
    lambda: ovparser.ClickInfo.load("secret.txt"),
    lambda: ovparser.edit("secret.txt").__enter__(),
    lambda: ovparser.ClickInfo().save("secret.txt"),
    lambda: ovparser.ClickInfo().save("closed/new.txt"),
):
    try:
        fails()
    except PermissionError as error:
        assert isinstance(error, ovparser.Error) and error.path, error
    else:
        sys.exit("not refused")
"""
    )
    assert result.returncode == 0, result.stderr


@pytest.mark.parametrize(
    ("text", "status"),
    [
        (b"*** A\n", Status.BAD_FORMAT),
        (b"*** A # b: c\n", Status.BAD_FORMAT),
        (b"*** : c\n", Status.EMPTY_SECTION_KEY),
        (b"*** ClickNumber:\n", Status.EMPTY_SECTION_KEY),
    ],
)
def test_malformed_files_give_the_status_of_the_library(
    tmp_path: Path, text: bytes, status: Status
) -> None:
    path = tmp_path / "a.txt"
    path.write_bytes(text)
    for load in (lambda: ClickInfo.load(path), lambda: ClickInfo.from_bytes(text)):
        with pytest.raises(ovparser.Error) as raised:
            load()
        assert raised.value.status is status


def test_files_that_are_something_else(examples: Path) -> None:
    for name in ("CMakeLists.txt", "new_acquisition.cpp"):
        with pytest.raises(OSError) as raised:
            ovparser.load(examples / name)
        assert isinstance(raised.value, ovparser.Error)
        assert raised.value.status is Status.BAD_FORMAT
    acquisition = examples / "study/SEQ20240305/ABC20240305091502/ClickInfo.txt"
    for kind in (ovparser.SpectralAnalysis, ovparser.CameraInfo, ovparser.Sequence):
        with pytest.raises(ovparser.Error):
            kind.load(acquisition)


def test_a_save_that_fails_leaves_the_old_file(info: ClickInfo, tmp_path: Path) -> None:
    with pytest.raises(FileNotFoundError):
        info.save(tmp_path / "none" / "a.txt")
    with pytest.raises(ovparser.Error):
        info.save(tmp_path)
    with pytest.raises(FileNotFoundError):
        ovparser.SpectralAnalysis.write(tmp_path / "none" / "a.xml")
    old = tmp_path / "old.xml"
    old.write_bytes(b"old")
    bad = ovparser.Analysis(acquisitions=[ovparser.Acquisition(image_wavelength="Open")])
    with pytest.raises(ValueError, match="Open"):
        ovparser.SpectralAnalysis.write(old, analyses=[bad])
    assert old.read_bytes() == b"old"


def test_files_that_are_none_do_not_stop_edit(tmp_path: Path) -> None:
    os.mkfifo(tmp_path / "pipe")
    for name in ("pipe", "none", "."):
        with pytest.raises(OSError) as raised, ovparser.edit(tmp_path / name):
            pytest.fail("the block is not to be entered")
        assert isinstance(raised.value, ovparser.Error) and raised.value.status
    undecodable = os.fsdecode(b"\xff.txt")
    with pytest.raises(ovparser.FileError):
        ovparser.load(tmp_path / undecodable)


def test_other_statuses(info: ClickInfo) -> None:
    for fails, status in [
        (lambda: info.add_image("a.tif", ImageType.OVERLAY, Setup()), Status.UNSUPPORTED_IMAGE_TYPE),
        (lambda: info.add_image("a.tif", ImageType.LUMINESCENT, Setup()), Status.SECTION_EXISTS),
        (lambda: ClickInfo().add_user(ImageType.XRAY, "ABC"), Status.UNSUPPORTED_IMAGE_TYPE),
        (lambda: ClickInfo.for_image("a", "b", ImageType.XRAY, 1), Status.UNSUPPORTED_IMAGE_TYPE),
        (lambda: setattr(info, "click_number", ""), Status.INVALID_VALUE),
    ]:
        with pytest.raises(ovparser.Error) as raised:
            fails()
        assert raised.value.status is status and raised.value.path is None
        assert not isinstance(raised.value, OSError) and " " in str(raised.value)


def test_errors_pickle() -> None:
    error = ovparser.MissingFileError("no such file", Status.FILE_OPEN_FAILED, "a.txt")
    again = pickle.loads(pickle.dumps(error))
    assert (str(again), again.status, again.path, again.errno) == (
        "a.txt: no such file", Status.FILE_OPEN_FAILED, "a.txt", 2,
    )  # fmt: skip


def test_no_resource_is_left_open(file: Path) -> None:
    with warnings.catch_warnings():
        warnings.simplefilter("error", ResourceWarning)
        before = len(os.listdir("/proc/self/fd"))
        with ovparser.edit(file) as info:
            info["User Input"]["Group"] = "B"
        next(ovparser.scan(file.parents[2]))
        with pytest.raises(ovparser.Error):
            ClickInfo.load(file / "none")
        assert len(os.listdir("/proc/self/fd")) == before
