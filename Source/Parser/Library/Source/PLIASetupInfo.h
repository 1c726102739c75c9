// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * The settings with which one image was acquired.
 */
#ifndef OVPARSER_PLIASETUPINFO_H
#define OVPARSER_PLIASETUPINFO_H

#include "PLExport.h"

#include <QtCore/QLatin1String>
#include <QtCore/QList>
#include <QtCore/QPoint>
#include <QtCore/QString>

/**
 * The settings with which one image was acquired.
 *
 * The application fills one per image; CPLClickInfo::addTiffImageSection() reads it and writes the
 * fields that belong to the image's type. The library never changes a record. The fields named
 * app... belong to the application: they are kept because they are part of the record, and the
 * library never reads them.
 *
 * The acquisition time is written as local date and time; both are empty for a moment that the C
 * runtime cannot convert.
 */
struct PARSERLIBRARY_EXPORT sIASetupInfo
{
    /** Sets every field to its default; the acquisition time becomes the current time. */
    sIASetupInfo();

    /** A copy, which shares nothing with the original. */
    sIASetupInfo(const sIASetupInfo& other);

    /** Becomes a copy of another; nothing is shared. */
    sIASetupInfo& operator=(const sIASetupInfo& other);
    virtual ~sIASetupInfo();

    int imagingMode = 0;     ///< 1 fluorescence grid and height reference, 2 stage and angle keys
    int xrayImagingMode = 0; ///< 1 large animal, 2 high resolution, other values mouse
    QString appText1 = QLatin1String("Medium");               ///< the application's
    QString appText2 = QLatin1String("Medium");               ///< the application's
    QString excitationFilter = QLatin1String("Block");        ///< name of the filter
    QString emissionFilter = QLatin1String("Open");           ///< name of the filter
    QString appText3 = QLatin1String("Load");                 ///< the application's
    QString fluorescenceLevelText = QLatin1String("High");    ///< name of the level
    QString luminescentFNumber = QLatin1String("2");          ///< also of fluorescent backgrounds
    QString photographFNumber = QLatin1String("8");           ///< also of structure images
    QString appText4 = QLatin1String("");                     ///< the application's
    QString appText5 = QLatin1String("Unlocked");             ///< the application's
    QString appText6 = QLatin1String("");                     ///< the application's
    QString appText7 = QLatin1String("");                     ///< the application's
    QString demandTemperature = QLatin1String("");            ///< of the CCD
    QString measuredTemperature = QLatin1String("");          ///< of the CCD
    QString luminescentExposureUnits = QLatin1String("sec");  ///< unit of luminescentExposure
    QString appText8 = QLatin1String("1");                    ///< the application's
    QString appText9 = QLatin1String("1");                    ///< the application's
    QString heightReference = QLatin1String("");              ///< when imagingMode is 1
    QString heightReferencePixelX = QLatin1String("");        ///< when imagingMode is 1
    QString heightReferencePixelY = QLatin1String("");        ///< when imagingMode is 1
    QString structureFrequencyText = QLatin1String("Coarse"); ///< unless imagingMode is 2
    QString appText10 = QLatin1String("");                    ///< the application's
    QString appText11 = QLatin1String("");                    ///< the application's
    QString appText12 = QLatin1String("");                    ///< the application's
    QString xrayFNumber = QLatin1String("8");                 ///< of X-ray images
    QString appText13 = QLatin1String("Low");                 ///< the application's
    QString xrayTubeFilter = QLatin1String("out");            ///< position of the filter
    qint64 acquisitionTime;                                   ///< seconds since 1 January 1970
    bool appFlag1 = false;                                    ///< the application's
    bool fluorescent = false;           ///< a luminescent image is a fluorescent one
    bool appFlag2 = false;              ///< the application's
    bool appFlag3 = false;              ///< the application's
    bool appFlag4 = false;              ///< the application's
    bool appFlag5 = false;              ///< the application's
    bool appFlag6 = false;              ///< the application's
    bool appFlag7 = false;              ///< the application's
    bool appFlag8 = false;              ///< the application's
    bool appFlag9 = false;              ///< the application's
    bool appFlag10 = false;             ///< the application's
    bool appFlag11 = false;             ///< the application's
    bool sideViewMirrorEnabled = false; ///< a side-view mirror was in place
    bool appFlag12 = false;             ///< the application's
    bool appFlag13 = false;             ///< the application's
    int luminescentBinning = 1;         ///< of every image type without a binning field of its own
    int photographBinning = 1;          ///< binning factor
    int structureBinning = 1;           ///< binning factor
    int xrayBinning = 1;                ///< binning factor
    int rawBinning = 1;                 ///< of fluorescent references on a grid
    int blemishBinning = 1;             ///< binning factor
    int emGain = 0;                     ///< written only when above 0
    int appInt1 = 0;                    ///< the application's
    int filterPosition = 0;             ///< of the emission filter
    int appInt2 = 0;                    ///< the application's
    float readBiasLevel = 0.0F;         ///< in counts
    float structureFrequency = 1.0F;    ///< when imagingMode is 2
    float stageDistance = 0.0F;         ///< when imagingMode is 2
    double luminescentExposure = 0.0;   ///< in luminescentExposureUnits
    double photographExposure = 0.0;    ///< in seconds
    double appReal1 = 0.0;              ///< the application's
    double fluorescenceLevel = 0.0;     ///< the level as a number
    double fieldOfView = 0.0;           ///< width of the image
    double subjectSize = 1.5;           ///< twice the "Object radius"
    double xrayTubeVoltage = 0.0;       ///< of the X-ray tube
    double xrayTubePlateCurrent = 0.0;  ///< of the X-ray tube
    double xrayExposure = 0.0;          ///< in seconds
    float xrayReadBiasLevel = 0.0F;     ///< of X-ray images
    double imagingAngle = 0.0;          ///< when imagingMode is 2
    bool flGridEnabled = false; ///< a fluorescence grid was used; counts when imagingMode is 1
    bool appFlag14 = false;     ///< the application's
    QString flGridName = QLatin1String("");           ///< name of the grid
    int flXMotorPosition = 0;                         ///< of a single-spot grid
    int flYMotorPosition = 0;                         ///< of a single-spot grid
    float flXSpot = 0.0F;                             ///< of a single-spot grid
    float flYSpot = 0.0F;                             ///< of a single-spot grid
    int flGridPositionX = 0;                          ///< of a single-spot grid
    int flGridPositionY = 0;                          ///< of a single-spot grid
    QList<QPoint> flGridPoints;                       ///< two or more make a multi-spot grid
    QString flXSpotText = QLatin1String("");          ///< of a multi-spot grid
    QString flYSpotText = QLatin1String("");          ///< of a multi-spot grid
    QString flXMotorPositionText = QLatin1String(""); ///< of a multi-spot grid
    QString flYMotorPositionText = QLatin1String(""); ///< of a multi-spot grid
    bool appFlag15 = false;                           ///< the application's
    QString appText14;                                ///< null until set
    bool appFlag16 = false;                           ///< the application's
    int appInt3 = 0;                                  ///< the application's
    int appInt4 = 0;                                  ///< the application's
    QString appText15 = QLatin1String("Auto");        ///< the application's
    QString appText16 = QLatin1String("18");          ///< the application's
    QString appText17 = QLatin1String("Auto");        ///< the application's
    double appReal2 = -1.0;                           ///< the application's
    bool appFlag17 = false;                           ///< the application's
    bool appFlag18 = false;                           ///< the application's
    QString appText18 = QLatin1String("");            ///< the application's
};

#endif
