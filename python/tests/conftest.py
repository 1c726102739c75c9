# SPDX-FileCopyrightText: 2026 The ovparser authors
# SPDX-License-Identifier: MIT

from __future__ import annotations

import os
import shutil
from pathlib import Path

import pytest

import ovparser

EXAMPLES = Path(__file__).resolve().parents[2] / "examples"
ACQUISITION = Path("study/SEQ20240305/ABC20240305091502/ClickInfo.txt")

#: Under a sanitizer memory is not given back, and time is another.
SANITIZED = "OVPARSER_SANITIZED" in os.environ


@pytest.fixture
def examples(tmp_path: Path) -> Path:
    """A copy of the sample files."""
    copy = tmp_path / "examples"
    shutil.copytree(EXAMPLES, copy)
    return copy


@pytest.fixture
def file(examples: Path) -> Path:
    """An acquisition."""
    return examples / ACQUISITION


@pytest.fixture
def info(file: Path) -> ovparser.ClickInfo:
    return ovparser.ClickInfo.load(file)
