// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#ifndef OVPARSER_INTERNAL_LOCALTIME_H
#define OVPARSER_INTERNAL_LOCALTIME_H

#include <QtCore/QtGlobal>

#include <ctime>
#include <optional>

namespace ovparser::internal {

/**
 * Broken-down local time of a count of seconds since 1 January 1970, in the time zone that the
 * environment names at the moment of the call. Threads may call it at the same time.
 *
 * @return nothing for a moment that the C runtime cannot convert, such as one beyond its years
 */
[[nodiscard]] std::optional<struct tm> brokenDownLocalTime(qint64 seconds);

} // namespace ovparser::internal

#endif
