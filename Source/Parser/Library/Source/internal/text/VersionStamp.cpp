// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "VersionStamp.h"

// The build system sets the date when SOURCE_DATE_EPOCH asks for a reproducible build.
#ifndef OVPARSER_BUILD_DATE
#define OVPARSER_BUILD_DATE __DATE__
#endif

namespace ovparser::internal {

namespace {

// The compiler pads the day with a blank ("Aug  2 2025"), the build system with a zero.
QString buildDate()
{
    const QString date = QLatin1String(OVPARSER_BUILD_DATE);
    return date.simplified().replace(QLatin1String(" 0"), QLatin1String(" "));
}

} // namespace

QString versionStamp(const QString& version)
{
    return version + QLatin1String(" (") + buildDate() + QLatin1Char(')');
}

} // namespace ovparser::internal
