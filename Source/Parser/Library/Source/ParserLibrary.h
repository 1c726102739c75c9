// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * The whole API of the Parser Library, and the library's identity.
 */
#ifndef OVPARSER_PARSERLIBRARY_H
#define OVPARSER_PARSERLIBRARY_H

#include "PLBkgSummaryInfo.h"
#include "PLBrowseInfo.h"
#include "PLCameraInfo.h"
#include "PLClickInfo.h"
#include "PLExport.h"
#include "PLHelpers.h"
#include "PLIASetupInfo.h"
#include "PLInfoItem.h"
#include "PLKeywords.h"
#include "PLLabelDataSet.h"
#include "PLOptPropInfo.h"
#include "PLPreferenceKey.h"
#include "PLPreferenceKeyList.h"
#include "PLSection.h"
#include "PLSequenceInfo.h"
#include "PLSettingsFileWrapper.h"
#include "PLSpectralWrapper.h"
#include "PLStatus.h"
#include "PLXMLReader.h"
#include "PLXMLWriter.h"

/** A class without behaviour. */
class PARSERLIBRARY_EXPORT CParserLibrary
{
public:
    CParserLibrary();

    /** Does nothing. */
    CParserLibrary& operator=(const CParserLibrary&);
};

/** A constant without meaning: 0. */
extern PARSERLIBRARY_EXPORT const int nParserLibrary;

/** A function without behaviour: returns 42. */
PARSERLIBRARY_EXPORT int fnParserLibrary();

#endif
