// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * Where Qt 5 and Qt 6 differ for the library: the one place that asks for Qt's version.
 */
#ifndef OVPARSER_INTERNAL_QTVERSION_H
#define OVPARSER_INTERNAL_QTVERSION_H

#include <QtCore/QString>

#include <limits>
#include <utility>

namespace ovparser::internal {

/** What Qt's texts and containers count with: int in Qt 5, qsizetype in Qt 6. */
using Size = decltype(std::declval<QString>().size());

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
/** Whether the DOM refuses whatever XML forbids, and normalises line ends and attributes. */
inline constexpr bool strictXml = false;
/** How many attributes one tag may have, and how many defaults a document type may declare. */
inline constexpr int maxXmlAttributes = std::numeric_limits<int>::max();
#else
inline constexpr bool strictXml = true;
// The DOM compares every attribute of a tag with every other, and fills in the defaults.
inline constexpr int maxXmlAttributes = 1024;
#endif

} // namespace ovparser::internal

#endif
