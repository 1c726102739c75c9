// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * What tells that a text file was overwritten, cut or mixed up with other bytes.
 */
#ifndef OVINFO_DAMAGE_H
#define OVINFO_DAMAGE_H

#include "Check.h"

class Document;

/**
 * Looks for bytes that no save writes, and for the end that every save writes.
 *
 * @param loads  whether the document loads
 * @return nothing for a spectral analysis, which is no such text
 */
std::vector<Finding> damageOf(const Document& document, bool loads);

#endif
