// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * The parts of the module; each adds its classes and functions.
 */
#ifndef OVPYTHON_MODULE_H
#define OVPYTHON_MODULE_H

#include "Convert.h"

#include <pybind11/stl.h>

namespace ovpython {

void defineInfo(py::module_& module);
void defineScan(py::module_& module);
void defineSetup(py::module_& module);
void defineSpectral(py::module_& module);

} // namespace ovpython

#endif
