// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "LocalTime.h"

#include <mutex>

namespace ovparser::internal {

namespace {

// As localtime(), which looks at the time zone anew; localtime_r() alone need not.
bool convert(time_t time, struct tm* local)
{
#ifdef Q_OS_WIN
    return localtime_s(local, &time) == 0;
#else
    // The C library has a lock of its own for the zone, which the thread sanitizer does not see.
    static std::mutex zone;
    const std::lock_guard<std::mutex> lock(zone);
    tzset();
    return localtime_r(&time, local) != nullptr;
#endif
}

} // namespace

std::optional<struct tm> brokenDownLocalTime(qint64 seconds)
{
    struct tm local = {};
    return convert(static_cast<time_t>(seconds), &local) ? std::optional(local) : std::nullopt;
}

} // namespace ovparser::internal
