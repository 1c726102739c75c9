// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * Where the data set of a DICOM file ends, and where click info begins after it.
 */
#ifndef OVINFO_DICOM_H
#define OVINFO_DICOM_H

#include <QtCore/QByteArray>

#include <optional>

/**
 * Follows the data elements of a DICOM file to the first place where none can begin: the end of the
 * file, bytes that were appended, or an element that was cut.
 *
 * @return nothing when the file is no DICOM file, is compressed or big-endian as a whole, or holds
 * a sequence that cannot be followed
 */
std::optional<int> dataSetEnd(const QByteArray& bytes);

bool isDicom(const QByteArray& bytes);

/** Where the click info begins that was appended last: at its "ClickNumber" header, if any. */
std::optional<int> appendedText(const QByteArray& bytes);

#endif
