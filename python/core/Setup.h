// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * The settings of an image.
 */
#ifndef OVPYTHON_SETUP_H
#define OVPYTHON_SETUP_H

#include "Convert.h"

#include "PLIASetupInfo.h"

namespace ovpython {

/** The settings that an object of Python has; raises for what a file cannot hold. */
sIASetupInfo setupOf(const py::object& object);

} // namespace ovpython

#endif
