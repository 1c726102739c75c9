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

/** For a class of which only this module makes objects: one that Python made would hold nothing. */
py::custom_type_setup madeHereOnly();

void defineInfo(py::module_& module);
void defineScan(py::module_& module);
void defineSetup(py::module_& module);
void defineSpectral(py::module_& module);

} // namespace ovpython

#endif
