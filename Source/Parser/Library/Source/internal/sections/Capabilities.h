// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * How the capabilities of an instrument follow from the keys of its description.
 */
#ifndef OVPARSER_INTERNAL_CAPABILITIES_H
#define OVPARSER_INTERNAL_CAPABILITIES_H

#include "PLHelpers.h"
#include "PLKeywords.h"
#include "PLSection.h"

namespace ovparser::internal {

/** What is derived from the description, and the operator's choices. */
struct InstrumentState
{
    EVEXA_Types systemType = eVEXA_STANDARD;
    qint32 electronicsTrayPartNum = 0;
    qint32 polarity = -1; ///< -1 when not given
    qint32 structureLaserDelay = 0;
    bool fluorescentKitInstalled = false;
    bool aurora = false;
    bool princetonAurora = false;
    bool trayInstalled = false;
    bool ct = false;
    bool kestrel = false;
    bool omegaInstalled = false;
    bool omegaOutput2 = false;
    bool emissionWheel2Installed = false;
    bool doorClosedOnZeroStatus = true;
    bool usbIoBoardInstalled = false;
    bool uacBoardInstalled = false;
    bool xrayInstalled = false;
    bool spinnerInstalled = false;
    bool chipReaderInstalled = false;
    bool spinnerDeviceActive = false;
    bool tesselHT = false;
    bool largeAnimalCapable = false;
    bool largeAnimalSelected = false;
    bool zoomLensSupported = false;
    bool zoomLensAttached = false;
    bool vicChecked = false;
    bool transportBedSupported = false;
    bool sideMirrorChecked = false;
    bool zevr24Attached = false;
    bool bl = false;
    QString currentFilterWheelName = PLKeyword::File::StandardFilterWheel;
};

/** The instrument's family, from its "System Configuration". */
[[nodiscard]] EVEXA_Types classifySystem(const QString& systemConfiguration);

/** Whether the value of a key is "yes", in any letter case. */
[[nodiscard]] bool readsYes(const CPLSection& section, QLatin1String key);

/**
 * Derives the capabilities.
 *
 * @param section  the "Camera System Info" section
 * @param state    holds the system type already; capabilities that only ever rise keep the true
 *                 that an earlier derivation gave them
 */
void deriveCapabilities(const CPLSection& section, InstrumentState& state);

/** Whether a key gives the field of view of a stage position. */
[[nodiscard]] bool isPositionKey(const QString& key);

/** The word character that stands between white space in such a key; empty without one. */
[[nodiscard]] QString positionName(const QString& key);

} // namespace ovparser::internal

#endif
