// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#ifndef OVPARSER_INTERNAL_DATAFOLDERS_H
#define OVPARSER_INTERNAL_DATAFOLDERS_H

#include "PLHelpers.h"

namespace ovparser::internal {

/**
 * The path of the data folder, which ends in '/', or of one of its sub-folders, which does not. It
 * need not exist; a value that is no tag of the data folder gives an empty path.
 */
[[nodiscard]] QString dataFolderPath(OV_PATH_TAGS tag);

} // namespace ovparser::internal

#endif
