// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * The export macro of the library: every class and function that carries it belongs to the API.
 */
#ifndef OVPARSER_PLEXPORT_H
#define OVPARSER_PLEXPORT_H

#include <QtCore/qglobal.h>

#if defined(OVPARSER_STATIC)
#define PARSERLIBRARY_EXPORT
#elif defined(OVPARSER_BUILDING_LIBRARY)
/**
 * Marks what the library exports, and what its users import. A static library exports nothing; its
 * users define OVPARSER_STATIC, as its CMake target and its pkg-config file do for them.
 */
#define PARSERLIBRARY_EXPORT Q_DECL_EXPORT
#else
#define PARSERLIBRARY_EXPORT Q_DECL_IMPORT
#endif

/** Marks what an exported class keeps to itself. */
#define PARSERLIBRARY_NO_EXPORT Q_DECL_HIDDEN

#endif
