/**
 * @file
 * The free helper functions: image types, dates and times, names, single sections of a text.
 *
 * They hold no state, touch no file and never fail.
 */
#ifndef OVPARSER_PLHELPERS_H
#define OVPARSER_PLHELPERS_H

#include "PLExport.h"

#include <QtCore/QString>

#include <ctime>

/** The kinds of images. */
enum tag_eimagetype : int {
    eIMAGE_PHOTOGRAPH = 0,
    eIMAGE_LUMINESCENT = 1,
    eIMAGE_READ_BIAS = 2,
    eIMAGE_READ_SIGMA = 3,
    eIMAGE_BACKGROUND = 4,
    eIMAGE_BIAS = 5,
    eIMAGE_REFERENCE = 6,
    eIMAGE_STRUCTURE = 7,
    eIMAGE_FLUORESCENT_BKG = 8,
    eIMAGE_FL_REFERENCE = 9,
    eIMAGE_LUMINESCENT_A = 10,
    eIMAGE_LUMINESCENT_B = 11,
    eIMAGE_XRAY = 12,
    eIMAGE_OVERLAY = 13,
    eIMAGE_SATURATION_MAP = 14,
    eIMAGE_HEIGHT_MAP = 15,
    eIMAGE_PHOTO_MASK = 16,
    eIMAGE_LUMINESCENT_CORRECTED = 17,
    eIMAGE_SATURATION_MAP_2 = 18,
    eIMAGE_BLEMISH = 19,
};

/**
 * The display name of an image type, e.g. "X-Ray".
 *
 * @return an empty string for a value that is no image type
 */
[[nodiscard]] PARSERLIBRARY_EXPORT QString getImageTypeString(tag_eimagetype type);

/**
 * Whole seconds since 1 January 1904, 00:00, in decimal.
 *
 * @param secondsSince1970  seconds since 1 January 1970, 00:00; rounded to six decimals before the
 *                          fraction is cut off
 */
[[nodiscard]] PARSERLIBRARY_EXPORT QString getTimefrom1904(double secondsSince1970);

/**
 * A date as the info files spell it, in English: "Tuesday, March 05, 2024".
 *
 * @param time  broken-down time; null gives an empty string
 */
[[nodiscard]] PARSERLIBRARY_EXPORT QString getDateOVSFormat(struct tm* time);

/**
 * A time of day as the info files spell it: "09:05:00".
 *
 * @param time  broken-down time; null gives an empty string
 */
[[nodiscard]] PARSERLIBRARY_EXPORT QString getTimeOVSFormat(struct tm* time);

/** The words of a text, each with an upper-case first character, joined by single blanks. */
[[nodiscard]] PARSERLIBRARY_EXPORT QString camelCaseString(const QString& text);

/** The current name of a label set that may carry the product's former name. */
[[nodiscard]] PARSERLIBRARY_EXPORT QString updateLabelSetName(QString name);

/** The text from the first "*** " up to the next one or the end; empty when there is none. */
[[nodiscard]] PARSERLIBRARY_EXPORT QString getSectionBuffer(QString text);

#endif
