// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#ifndef OVPARSER_INTERNAL_VALUESEARCH_H
#define OVPARSER_INTERNAL_VALUESEARCH_H

#include <QtCore/QString>

#include <optional>

class QIODevice;

namespace ovparser::internal {

/**
 * The text after the first place where a key and its ':' stand, in any letter case, up to the end
 * of the line; nothing when they stand nowhere. Comments are passed over.
 *
 * @param device  what is read, line by line
 * @param limit   a line of more bytes, 16,384 at most, is read as several ones
 */
[[nodiscard]] std::optional<QString> findValue(QIODevice& device, int limit, const QString& key);

} // namespace ovparser::internal

#endif
