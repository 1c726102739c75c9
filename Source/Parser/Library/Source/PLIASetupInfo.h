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
 * app... belong to the application and are only carried.
 */
struct PARSERLIBRARY_EXPORT sIASetupInfo
{
    /** Sets every field to its default; the acquisition time becomes the current time. */
    sIASetupInfo();
    sIASetupInfo(const sIASetupInfo& other);
    sIASetupInfo& operator=(const sIASetupInfo& other);
    virtual ~sIASetupInfo();

    int imagingMode = 0;     ///< 1 fluorescence grid and height reference, 2 stage and angle keys
    int xrayImagingMode = 0; ///< 1 large animal, 2 high resolution, other values mouse
    QString appText1 = QLatin1String("Medium");
    QString appText2 = QLatin1String("Medium");
    QString excitationFilter = QLatin1String("Block");
    QString emissionFilter = QLatin1String("Open");
    QString appText3 = QLatin1String("Load");
    QString fluorescenceLevelText = QLatin1String("High");
    QString luminescentFNumber = QLatin1String("2"); ///< also of fluorescent backgrounds
    QString photographFNumber = QLatin1String("8");  ///< also of structure images
    QString appText4 = QLatin1String("");
    QString appText5 = QLatin1String("Unlocked");
    QString appText6 = QLatin1String("");
    QString appText7 = QLatin1String("");
    QString demandTemperature = QLatin1String("");
    QString measuredTemperature = QLatin1String("");
    QString luminescentExposureUnits = QLatin1String("sec");
    QString appText8 = QLatin1String("1");
    QString appText9 = QLatin1String("1");
    QString heightReference = QLatin1String("");
    QString heightReferencePixelX = QLatin1String("");
    QString heightReferencePixelY = QLatin1String("");
    QString structureFrequencyText = QLatin1String("Coarse"); ///< unless imagingMode is 2
    QString appText10 = QLatin1String("");
    QString appText11 = QLatin1String("");
    QString appText12 = QLatin1String("");
    QString xrayFNumber = QLatin1String("8");
    QString appText13 = QLatin1String("Low");
    QString xrayTubeFilter = QLatin1String("out");
    qint64 acquisitionTime; ///< seconds since 1 January 1970
    bool appFlag1 = false;
    bool fluorescent = false; ///< a luminescent image is a fluorescent one
    bool appFlag2 = false;
    bool appFlag3 = false;
    bool appFlag4 = false;
    bool appFlag5 = false;
    bool appFlag6 = false;
    bool appFlag7 = false;
    bool appFlag8 = false;
    bool appFlag9 = false;
    bool appFlag10 = false;
    bool appFlag11 = false;
    bool sideViewMirrorEnabled = false;
    bool appFlag12 = false;
    bool appFlag13 = false;
    int luminescentBinning = 1; ///< of every image type without a binning field of its own
    int photographBinning = 1;
    int structureBinning = 1;
    int xrayBinning = 1;
    int rawBinning = 1;
    int blemishBinning = 1;
    int emGain = 0; ///< written only when above 0
    int appInt1 = 0;
    int filterPosition = 0;
    int appInt2 = 0;
    float readBiasLevel = 0.0F;
    float structureFrequency = 1.0F; ///< when imagingMode is 2
    float stageDistance = 0.0F;      ///< when imagingMode is 2
    double luminescentExposure = 0.0;
    double photographExposure = 0.0;
    double appReal1 = 0.0;
    double fluorescenceLevel = 0.0;
    double fieldOfView = 0.0;
    double subjectSize = 1.5;
    double xrayTubeVoltage = 0.0;
    double xrayTubePlateCurrent = 0.0;
    double xrayExposure = 0.0;
    float xrayReadBiasLevel = 0.0F;
    double imagingAngle = 0.0;  ///< when imagingMode is 2
    bool flGridEnabled = false; ///< a fluorescence grid was used; counts when imagingMode is 1
    bool appFlag14 = false;
    QString flGridName = QLatin1String("");
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
    bool appFlag15 = false;
    QString appText14; ///< null until set
    bool appFlag16 = false;
    int appInt3 = 0;
    int appInt4 = 0;
    QString appText15 = QLatin1String("Auto");
    QString appText16 = QLatin1String("18");
    QString appText17 = QLatin1String("Auto");
    double appReal2 = -1.0;
    bool appFlag17 = false;
    bool appFlag18 = false;
    QString appText18 = QLatin1String("");
};

#endif
