// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * The operator's choices that outlive the program: the machine's settings store and the status
 * file of the data folder.
 */
#ifndef OVPARSER_INTERNAL_OPERATORCHOICES_H
#define OVPARSER_INTERNAL_OPERATORCHOICES_H

#include <QtCore/QString>
#include <QtCore/QVariant>

#include <optional>

namespace ovparser::internal {

/** A value of the settings store; `fallback` when it holds none. */
[[nodiscard]] QVariant storedChoice(QLatin1String key, const QVariant& fallback);

/** Writes a value to the settings store; a store that cannot be written stays as it is. */
void storeChoice(QLatin1String key, const QVariant& value);

/** Whether the status file says that the large-animal position is selected; nothing without it. */
[[nodiscard]] std::optional<bool> storedLargeAnimalPosition();

/**
 * Writes the large-animal position to the status file, if its folder exists. The other lines keep
 * their bytes but for their line ends, which become those of the platform. A file that cannot be
 * written stays as it is.
 */
void storeLargeAnimalPosition(bool selected);

} // namespace ovparser::internal

#endif
