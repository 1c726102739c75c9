// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * What a file of a kind lacks, though its text is in order.
 */
#ifndef OVINFO_KINDCHECK_H
#define OVINFO_KINDCHECK_H

#include "Check.h"

class Document;

/** What the library leaves out of a document for what its kind asks for. */
std::vector<Finding> checkKind(const QString& path, const Document& document);

#endif
