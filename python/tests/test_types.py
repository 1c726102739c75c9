# SPDX-FileCopyrightText: 2026 The ovparser authors
# SPDX-License-Identifier: MIT

"""The types that the package states are those that it has."""

from __future__ import annotations

import os
import subprocess
import sys
from pathlib import Path

import pytest
from conftest import SANITIZED

import ovparser

PACKAGE = Path(ovparser.__file__).parent


@pytest.mark.skipif(SANITIZED, reason="tells nothing about memory")
@pytest.mark.parametrize(
    "command",
    [
        ["mypy", "--strict", "-p", "ovparser"],
        ["mypy.stubtest", "--allowlist", str(Path(__file__).with_name("stubtest.allow")), "ovparser"],
    ],
)
def test_types(command: list[str], tmp_path: Path) -> None:
    folder = str(PACKAGE.parent)
    environment = {**os.environ, "MYPYPATH": folder, "PYTHONPATH": folder, "MYPY_CACHE_DIR": str(tmp_path)}
    result = subprocess.run(
        [sys.executable, "-m", *command], cwd=tmp_path, env=environment,
        capture_output=True, text=True, check=False,
    )  # fmt: skip
    assert result.returncode == 0, result.stdout + result.stderr
