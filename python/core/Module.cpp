// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Module.h"

PYBIND11_MODULE(_core, module)
{
    module.doc() = "What the package ovparser is made of; not for programs.";
    ovpython::defineSetup(module);
    ovpython::defineInfo(module);
    ovpython::defineSpectral(module);
    ovpython::defineScan(module);
}
