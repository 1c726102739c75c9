// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * The status codes that nearly every operation of the text documents returns.
 */
#ifndef OVPARSER_PLSTATUS_H
#define OVPARSER_PLSTATUS_H

#include "PLExport.h"

#include <QtCore/QString>

/** Result of an operation: 0 is success, every other value a failure. The values never change. */
enum tag_estatus : int {
    /** Success; also when there was nothing to do. */
    eSTATUS_SUCCESS = 0,
    /** An instrument extension's info file could not be loaded. */
    eSTATUS_EXTENSION_LOAD_FAILED = 2,
    /** A sequence file lists no click numbers and is not marked as an empty sequence. */
    eSTATUS_NO_CLICK_NUMBERS = 4,
    /**
     * A header line without marker or without ':' after it, or with a '#' at or before that ':'.
     */
    eSTATUS_BAD_FORMAT = 5,
    /** Fewer bytes were read than the file holds. */
    eSTATUS_FILE_READ_FAILED = 10,
    /**
     * A file could not be opened for reading or writing. Pipes are never opened, and devices are
     * not opened to be read.
     */
    eSTATUS_FILE_OPEN_FAILED = 11,
    /** A sequence file does not exist or could not be opened. */
    eSTATUS_FILE_NOT_FOUND = 12,
    /** A required pointer is null, or a required key is null or empty. */
    eSTATUS_NULL_ARGUMENT = 16,
    /** An argument is not acceptable: empty key, empty file name, value outside its set. */
    eSTATUS_INVALID_ARGUMENT = 19,
    /** A label-name text is empty or not of the expected form. */
    eSTATUS_BAD_LABEL_FORMAT = 20,
    /** The key is not in the section, never occurs in the file, or no section has the menu name. */
    eSTATUS_KEY_NOT_FOUND = 24,
    /** An instrument extension is meant for another system type. */
    eSTATUS_SYSTEM_MISMATCH = 28,
    /** An instrument extension conflicts with one already loaded. */
    eSTATUS_EXTENSION_CONFLICT = 30,
    /**
     * Generic failure: null output pointer, null section key, index out of range, missing text,
     * short write, unsupported operation.
     */
    eSTATUS_FAILED = 31,
    /**
     * A section has an empty key, a "ClickNumber" or "Background Click" section yields no click
     * number, or a settings wrapper holds no sections of its kind.
     */
    eSTATUS_EMPTY_SECTION_KEY = 33,
    /** Memory for a section or a buffer could not be had. */
    eSTATUS_OUT_OF_MEMORY = 34,
    /** The image section to be added is already present. */
    eSTATUS_SECTION_EXISTS = 38,
    /** An instrument extension lacks a required key. */
    eSTATUS_EXTENSION_KEY_MISSING = 47,
    /** An empty click number, or an index or pointer that a label getter does not accept. */
    eSTATUS_INVALID_VALUE = 48,
    /** The named section is not in the document, or a label set has another section's header. */
    eSTATUS_SECTION_NOT_FOUND = 49,
    /** The image type is not one that the operation handles. */
    eSTATUS_UNSUPPORTED_IMAGE_TYPE = 61,
    /** The settings folder does not exist. */
    eSTATUS_FOLDER_NOT_FOUND = 62,
    /** A sequence file lists no click numbers and is marked as an empty sequence. */
    eSTATUS_EMPTY_SEQUENCE = 88,
};

/**
 * The name of a status, for logs and messages.
 *
 * @param status  any value
 * @return the member's name, e.g. "eSTATUS_BAD_FORMAT"; an empty string for a value without one
 */
[[nodiscard]] PARSERLIBRARY_EXPORT QString getStatusString(tag_estatus status);

#endif
