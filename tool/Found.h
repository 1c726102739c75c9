// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * What is found in an archive, and how it is read.
 */
#ifndef OVINFO_FOUND_H
#define OVINFO_FOUND_H

#include "Acquisition.h"
#include "Check.h"
#include "SpectralFile.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>
#include <QtCore/QString>

/** A file or folder of an archive. */
struct Found
{
    enum Kind {
        AcquisitionFile,
        AnalyzedFile,
        DicomFile,
        SequenceFile, ///< comes before its acquisitions
        Folder,       ///< always with a problem
        OtherFile,    ///< a catalogue, an instrument's description or a spectral analysis
    };

    Kind kind = AcquisitionFile;
    QString file;            ///< the path to open
    Acquisition acquisition; ///< of a sequence or folder only the path to tell and the sequence
    QString name;            ///< of the folder: the click number of a file that gives none
    QString problem;         ///< why it cannot be read; empty when it can
    bool toRead = true;      ///< whether its content is asked for
    bool empty = false;      ///< whether it is a DICOM file without click info
    qint64 size = 0;         ///< of the file that is indexed
    qint64 time = 0;         ///< of its last change, in milliseconds since 1970
    qint64 known = 0;        ///< its row in the index that is there; 0 when it has none
    CheckedFile checked;     ///< when findings are wanted
    std::shared_ptr<const SpectralFile> spectrum; ///< of a spectral analysis
    QString instrument;                           ///< that a description is of
    double progress = 0; ///< how much of the folders was done before it, from 0 to 1

    /** Whether there is a record of it. */
    [[nodiscard]] bool isRecord() const { return kind <= DicomFile && problem.isEmpty() && !empty; }
};

/** Whether a file may be an OtherFile, by its name. */
bool isOtherFile(const QString& name);

/** The kind as programs know it, e.g. "acquisition". */
QLatin1String kindName(Found::Kind kind);

/** Reads a file. What goes wrong becomes its problem. */
void read(const Wanted& wanted, Found* found);

/** The record of a file that was read, or of a failure. */
QJsonObject recordOf(const Wanted& wanted, const Found& found);

/** The columns of a table of records: members, universal labels, and the kind. */
QStringList recordColumns();

/** The values of a record under these columns; null where it has none. */
QJsonArray recordRow(const QJsonObject& record);

/** The value of a name in any letter case; null when there is none. */
QJsonValue labelOf(const QJsonObject& labels, const QString& name);

#endif
