// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * What a study tells when its acquisitions are laid side by side.
 */
#ifndef OVINFO_STUDYREPORT_H
#define OVINFO_STUDYREPORT_H

#include "Names.h"
#include "StudyRecords.h"

/** A time point that a subject has no acquisition of, although others of its group have. */
struct Gap
{
    QString name;
    int day = 0;
    int others = 0;
};

/** An animal, as a rule. */
struct ReportedSubject
{
    QString name;
    QList<int> acquisitions; ///< their places in the report, by time
    QList<Gap> gaps;
};

struct ReportedGroup
{
    int place = 0; ///< in the report, also in that about this group alone
    QString name;
    QList<ReportedSubject> subjects;
    bool hasNamedTimePoints = false; ///< whether the label tells of them; otherwise the days do
};

/** A setting of an acquisition that is not the commonest one of its group and kind of image. */
struct Deviation
{
    int acquisition = 0; ///< its place in the report
    Setting setting = Exposure;
    QString common;
    int commonCount = 0;
    int outOf = 0;
};

/** A setting that no value is common enough of to be compared with. */
struct MixedSetting
{
    int acquisition = 0; ///< one of the group and with the kind of image
    Setting setting = Exposure;
    Counts values;
};

struct ReportedLabel
{
    QString name;
    QList<Counts> values; ///< each in the spellings that differ in letter case and white space
    int empty = 0;

    /** How many values are spelled in several ways. */
    [[nodiscard]] int ambiguous() const;
};

/** The labels by which acquisitions are sorted. */
struct ReportLabels
{
    QString group;
    QString subject;
};

struct StudyReport
{
    QList<ReportedAcquisition> acquisitions;
    QList<ReportedGroup> groups;
    QList<Deviation> deviations;
    QList<MixedSetting> mixed;
    QList<ReportedLabel> labels;
    QList<ReportedSpectrum> spectra;
    QMap<QString, QList<ReportedProblem>> problems;
    QStringList sequences;
    QStringList instruments;
    QStringList versions;
    bool areChecked = false;

    /** The group of an acquisition of the report. */
    [[nodiscard]] const ReportedGroup& groupOf(const ReportedAcquisition& acquisition) const;

    [[nodiscard]] int subjectCount() const;
    [[nodiscard]] int gapCount() const;
};

StudyReport reportOf(const StudyRecords& records, const ReportLabels& labels);

/** The same about one group alone; places in the report stay what they are. */
StudyReport partOf(const StudyReport& report, int group);

#endif
