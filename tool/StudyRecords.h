// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * What a report is made of: the records of a study, whatever they were read from.
 */
#ifndef OVINFO_STUDYRECORDS_H
#define OVINFO_STUDYRECORDS_H

#include "SpectralFile.h"

#include <QtCore/QDate>
#include <QtCore/QJsonObject>
#include <QtCore/QMap>
#include <QtCore/QSet>
#include <QtCore/QTime>

#include <array>
#include <optional>

/** What acquisitions of a group are expected to have in common. */
enum Setting {
    Exposure,
    Binning,
    FNumber,
    FieldOfView,
    EmissionFilter,
    ExcitationFilter,
    Interval, ///< from the injection to the acquisition
    settingCount,
};

/** What a setting is called. */
QString settingName(Setting setting);

/** A number of minutes as a setting tells it. */
QString minutesText(int count);

/** An acquisition of a report. */
struct ReportedAcquisition
{
    QString clickNumber;
    QString path;
    QString image; ///< the main image, as records name it; empty when there is none
    QDate date;
    QTime time;
    std::array<QString, settingCount> settings; ///< with their units; empty when not told
    std::optional<int> interval;                ///< in seconds
    QJsonObject labels;
    int group = 0;          ///< its place in the report
    int subject = 0;        ///< its place in the group
    std::optional<int> day; ///< since the first acquisition of the same subject
    bool deviates = false;
    bool isDicom = false; ///< whether a DICOM file tells of it
};

/** What is wrong with a file. */
struct ReportedProblem
{
    QString source; ///< what tells of it: "study", "check" or "report"
    int line = 0;   ///< from 1; 0 for the file as a whole
    QString message;
};

/** A spectral analysis and where it was found. */
struct ReportedSpectrum
{
    QString path;
    SpectralFile file;
    std::optional<int> acquisition = std::nullopt; ///< the first that it is about
};

/** What was found, in no particular order. */
class StudyRecords
{
public:
    /** Takes a record as 'study' and 'check' print it on a line, a failure, or a file's findings.
     */
    void add(const QJsonObject& record);

    void add(const ReportedSpectrum& spectrum) { spectra += spectrum; }

    QList<ReportedAcquisition> acquisitions;
    QSet<QString> sequences;
    QSet<QString> instruments;
    QSet<QString> versions;
    QMap<QString, QList<ReportedProblem>> problems; ///< by file
    QList<ReportedSpectrum> spectra;
    bool areChecked = false; ///< whether the findings of 'check' are among them

    void addProblem(const QString& file, const ReportedProblem& problem);

private:
    void addAcquisition(const QJsonObject& record);
    void addFindings(const QJsonObject& record);

    QSet<QString> m_paths; ///< of the acquisitions
};

#endif
