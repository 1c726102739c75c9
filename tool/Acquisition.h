// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * What an archive is asked about one acquisition.
 */
#ifndef OVINFO_ACQUISITION_H
#define OVINFO_ACQUISITION_H

#include "Entries.h"

#include "ParserLibrary.h"

#include <QtCore/QJsonObject>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>
#include <optional>

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

/** The value of a key of a section. */
struct Column
{
    QString name; ///< "SECTION/KEY", as it was given
    QString section;
    QString key;
};

/** The column that "SECTION/KEY" names; nothing when it names none. */
std::optional<Column> columnOf(const QString& name);

/** What is asked of each file, other than the members that every record has. */
struct Wanted
{
    QList<Column> columns;
    bool sections = false;
    bool findings = false; ///< what 'check' tells
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
    QStringList columns;                   ///< the values of the columns that are wanted
    QList<SectionText> sections;           ///< when they are wanted
};

/** Reads what a click info tells. */
void readAcquisition(const CPLClickInfo& info, const Wanted& wanted, Acquisition* acquisition);

/** A row of the table for people. */
QStringList tableHead();
QStringList tableRow(const Acquisition& acquisition);

/** The record for programs, without schema and kind. */
QJsonObject acquisitionJson(const Wanted& wanted, const Acquisition& acquisition);

/** The names of the members that every record has and that are no objects, in order. */
QStringList memberNames();

/** The display name of an image that programs call by a name; the name itself of none of them. */
QString imageTitle(const QString& name);

/** Whether a key of "User Input" is a label. */
bool isLabel(const QString& key);

/** A member as the cell of a table: the elements of an array joined by ';', null as nothing. */
QString cellOf(const QJsonValue& value);

#endif
