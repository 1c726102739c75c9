// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * The free helper functions: image types, dates and times, names, single sections of a text,
 * binnings and geometry of the CCD, installation paths.
 *
 * They hold no state and open no file. Where there is no answer they give an empty text, false or
 * -1, as each one tells. Those that make a text may throw std::bad_alloc.
 */
#ifndef OVPARSER_PLHELPERS_H
#define OVPARSER_PLHELPERS_H

#include "PLExport.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <ctime>

class CPLCameraInfo;
class CPLClickInfo;

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

/** The instrument families. */
enum EVEXA_Types : int {
    eVEXA_STANDARD = 0, ///< VEXA 50, VEXA 100 and everything that is not known
    eVEXA_200 = 1,
    eVEXA_CORVIX = 2,
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

/** @name Binnings of the CCD
 *
 * A camera offers three binning presets: a large one for high sensitivity, a medium one and a small
 * one for high resolution. The camera model names the sensor's or the camera's maker or the model
 * code; the system configuration and the camera system info are the values of the instrument
 * description's keys "System Configuration" and "Camera System Info".
 */
///@{

/**
 * The binning presets of a camera for an image type that is given by its name. Model and image type
 * are compared as whole texts in any letter case; -1 stands for a preset that is not offered.
 */
PARSERLIBRARY_EXPORT void getCCDBinningsForImageType(QString cameraModel,
                                                     QString systemConfiguration,
                                                     QString cameraSystemInfo,
                                                     QString imageTypeName, int& largeBinning,
                                                     int& mediumBinning, int& smallBinning);

/**
 * The binning presets of a camera for an image type. The model may contain other text around what
 * identifies the camera.
 */
PARSERLIBRARY_EXPORT void getCCDBinningsForImageType(const QString& cameraModel,
                                                     QString systemConfiguration,
                                                     QString cameraSystemInfo,
                                                     tag_eimagetype imageType, float& largeBinning,
                                                     float& mediumBinning, float& smallBinning);

/**
 * The label of the preset that a binning factor belongs to, among those of the integer form.
 *
 * @param binning              the binning factor
 * @param cameraModel          the model, compared as a whole text
 * @param systemConfiguration  the value of the description's key
 * @param cameraSystemInfo     the value of the description's key
 * @param imageTypeName        the display name of the image type
 * @param labelStyle           0 "HR", "M", "HS"; 1 and 2 longer, 3 the longest labels
 * @return an empty string when no preset has the factor, or for another style
 */
[[nodiscard]] PARSERLIBRARY_EXPORT QString
getValueToCCDBinningCode(float binning, QString cameraModel, QString systemConfiguration,
                         QString cameraSystemInfo, QString imageTypeName, int labelStyle);
///@}

/** @name Geometry */
///@{

/** Number of pixels along a side of a camera's CCD. */
[[nodiscard]] PARSERLIBRARY_EXPORT double
getCCDPixels(const QString& cameraModel, QString systemConfiguration, QString cameraSystemInfo);

/** Whether an instrument description holds the key "CCDmap". */
[[nodiscard]] PARSERLIBRARY_EXPORT bool hasCCDMapData(const CPLClickInfo& info);

/**
 * Finds the stage position with a field of view.
 *
 * @param info         the instrument description; may be null
 * @param fieldOfView  in the units of the description, compared within 1e-5
 * @param name         receives the one-character name of the position, as Latin-1
 * @return false when there is no such position; `name` is unchanged then
 */
PARSERLIBRARY_EXPORT bool getFOVName(const CPLClickInfo* info, double fieldOfView,
                                     QByteArray& name);
///@}

/** Folders of the machine-wide data folder. */
enum OV_PATH_TAGS : int {
    OV_PATH_APPLICATION = 0, ///< the folder of the running program
    OV_PATH_BASE = 1,        ///< the data folder itself; always ends in '/'
    OV_PATH_DATABASE = 2,
    OV_PATH_ORGANS = 3,
    OV_PATH_FL_REFERENCE = 4,
    OV_PATH_SL_REFERENCE = 5,
    OV_PATH_BACKGROUND = 6, ///< the instrument's "Darkcharge Path" if it gives one
    OV_PATH_AUTO_BACKGROUND = 7,
    OV_PATH_EMFILTERS = 9,
    OV_PATH_USAGE = 10,
    OV_PATH_AOI_CORR_DB = 11,
};

/**
 * The path of a folder; it need not exist.
 *
 * The data folder stands beside the platform's second location for an application's local data,
 * which goes by the organisation and application names of the running program.
 *
 * @param tag        the folder
 * @param withSlash  whether the path must end in '/'
 * @param camera     the instrument, for OV_PATH_BACKGROUND; may be null
 * @return an empty path, or "/" with a slash, for a value that is no tag
 */
[[nodiscard]] PARSERLIBRARY_EXPORT QString getOVPath(OV_PATH_TAGS tag, bool withSlash,
                                                     const CPLCameraInfo* camera);

#endif
