// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#ifndef OVPARSER_INTERNAL_VERSIONSTAMP_H
#define OVPARSER_INTERNAL_VERSIONSTAMP_H

#include <QtCore/QString>

namespace ovparser::internal {

/** The version text with the library's build date: "4.8.4 (Aug 12 2025)". */
[[nodiscard]] QString versionStamp(const QString& version);

} // namespace ovparser::internal

#endif
