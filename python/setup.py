# SPDX-FileCopyrightText: 2026 The ovparser authors
# SPDX-License-Identifier: MIT

"""Builds the package against a library of the same version that is installed, with CMake."""

from __future__ import annotations

import re
import shutil
import subprocess
import sys
from pathlib import Path

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

ROOT = Path(__file__).resolve().parent.parent
PROJECT = (ROOT / "CMakeLists.txt").read_text()
VERSION = re.search(r"project\(ovparser VERSION ([0-9.]+)", PROJECT).group(1)
PARTS = ("TOOL", "EXAMPLES", "TESTS", "DOCS")


class CMakeBuild(build_ext):
    """Builds the module in C++; CMAKE_PREFIX_PATH tells where the library is."""

    def build_extension(self, ext: Extension) -> None:
        build = Path(self.build_temp).resolve()
        options = [f"-DOVPARSER_BUILD_{part}=OFF" for part in PARTS]
        options += [
            "-DCMAKE_BUILD_TYPE=Release",
            "-DOVPARSER_BUILD_PYTHON=ON",
            "-DOVPARSER_USE_INSTALLED=ON",
            "-DOVPARSER_INSTALL=OFF",
            f"-DPython3_EXECUTABLE={sys.executable}",
        ]
        subprocess.check_call(["cmake", "-S", str(ROOT), "-B", str(build), *options])
        target = ["--target", "ovparser_python", "--parallel"]
        subprocess.check_call(["cmake", "--build", str(build), *target])
        (module,) = (build / "python" / "ovparser").glob("_core.*.so")
        place = Path(self.get_ext_fullpath(ext.name))
        place.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(module, place)


setup(
    name="ovparser",
    version=VERSION,
    description="Reads, edits and writes the data files of Orvane",
    license="MIT",
    python_requires=">=3.10",
    packages=["ovparser"],
    package_data={"ovparser": ["*.pyi", "py.typed"]},
    ext_modules=[Extension("ovparser._core", [])],
    cmdclass={"build_ext": CMakeBuild},
    extras_require={"tables": ["pandas"]},
)
