/**
 * @file
 * What an archive is asked about one acquisition.
 */
#ifndef OVINFO_ACQUISITION_H
#define OVINFO_ACQUISITION_H

#include "ParserLibrary.h"

#include <QtCore/QJsonObject>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>

/** A sequence that acquisitions belong to. */
struct SequenceHead
{
    QString path; ///< of its SequenceInfo.txt
    QString name;
    int acquisitions = 0;
};

/** An image of an acquisition: its name for programs, its section, and its type. */
struct AcquiredImage
{
    QLatin1String name;
    QLatin1String section;
    tag_eimagetype type = eIMAGE_PHOTOGRAPH;
};

/** An acquisition; what the file does not give is null. Settings are those of the main image. */
struct Acquisition
{
    QString path; ///< of its ClickInfo.txt
    std::shared_ptr<const SequenceHead> sequence;
    QString clickNumber;
    QString sequenceId;
    QString userId;
    QList<const AcquiredImage*> images; ///< the main image first
    QString date;                       ///< as in the file
    QString time;
    QString exposure;
    QString exposureUnits;
    QString binning;
    QString fieldOfView;
    QString fNumber;
    QString emissionFilter;
    QString excitationFilter;
    QList<QPair<QString, QString>> labels; ///< what the user entered
};

/** Reads what a click info tells. */
void readAcquisition(const CPLClickInfo& info, Acquisition* acquisition);

/** A row of the table for people. */
QStringList tableHead();
QStringList tableRow(const Acquisition& acquisition);

/** The record for programs: an object, or the cells of a row. */
QJsonObject acquisitionJson(const Acquisition& acquisition);
QStringList csvHead();
QStringList csvRow(const Acquisition& acquisition);

#endif
