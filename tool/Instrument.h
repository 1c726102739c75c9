// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * What the description of an instrument tells.
 */
#ifndef OVINFO_INSTRUMENT_H
#define OVINFO_INSTRUMENT_H

#include "ParserLibrary.h"

#include <QtCore/QJsonObject>
#include <QtCore/QList>
#include <QtCore/QStringList>

#include <optional>

/** A family of instruments, its name for programs and for people. */
struct Family
{
    EVEXA_Types type = eVEXA_STANDARD;
    const char* name = "";
    const char* label = "";
};

/** An image type that the CCD is binned for, and its name for programs. */
struct BinnedType
{
    tag_eimagetype type = eIMAGE_PHOTOGRAPH;
    const char* name = "";
};

/** A position of the stage. */
struct StagePosition
{
    QString name;
    std::optional<double> fieldOfView; ///< nothing when the text is no number
};

/** The binnings of an image type; -1 for one that there is not. */
struct Binning
{
    BinnedType imageType;
    float large = 0;
    float medium = 0;
    float small = 0;
};

/** Whether the instrument has a capability. */
struct Answer
{
    QString name;
    QString label;
    bool yes = false;
};

/** Everything that is told about an instrument. */
struct Instrument
{
    Family family;
    QString configuration;
    QString camera;
    double pixels = 0;
    int electronicsTray = 0;
    int lightsPolarity = 0;
    int structuredLightDelay = 0;
    QString emissionFilterWheel;
    QList<Answer> capabilities;
    QList<StagePosition> positions;
    QList<Binning> binnings;
    QStringList messages; ///< what the library told while it was loaded
};

/**
 * Loads the description of an instrument.
 *
 * @param info        receives it
 * @param instrument  receives what it tells; when it cannot be used, its messages may say why
 * @return false when it cannot be loaded or describes no instrument
 */
bool loadInstrument(const QString& path, CPLCameraInfo* info, Instrument* instrument);

/** The members that tell about an instrument, for programs. */
QJsonObject instrumentJson(const Instrument& instrument);

#endif
