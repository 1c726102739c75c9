// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "StudyReport.h"

#include "Found.h"
#include "StudyDeviations.h"
#include "StudyGaps.h"

#include <QtCore/QHash>
#include <QtCore/QSet>

#include <algorithm>
#include <tuple>

namespace {

bool isEarlier(const ReportedAcquisition& a, const ReportedAcquisition& b)
{
    return std::tie(a.date, a.time, a.path) < std::tie(b.date, b.time, b.path);
}

/** A DICOM file holds the acquisition of a click info, if there is one; of several the first
 * counts. */
QList<ReportedAcquisition> withoutCopies(const QList<ReportedAcquisition>& all)
{
    QSet<QString> known;
    for (const ReportedAcquisition& acquisition : all) {
        if (!acquisition.isDicom)
            known += acquisition.clickNumber;
    }
    QList<ReportedAcquisition> kept;
    for (const ReportedAcquisition& acquisition : all) {
        const QString& number = acquisition.clickNumber;
        const bool isCopy = acquisition.isDicom && !number.isEmpty() && known.contains(number);
        if (acquisition.isDicom)
            known += number;
        if (!isCopy)
            kept += acquisition;
    }
    return kept;
}

/** A subject or group while its acquisitions are found. */
struct Draft
{
    Counts names;
    QList<int> acquisitions;

    void add(const QString& name, int acquisition)
    {
        ++names[name.simplified()];
        acquisitions += acquisition;
    }
};

/** Acquisitions by what a label says of them, in the order of its values; the unnamed come last. */
QList<Draft> sortedBy(const QString& label, const StudyReport& report, const QList<int>& places)
{
    const QString last(QChar(0xFFFF));
    QMap<QString, Draft> drafts;
    for (const int place : places) {
        const QString name = labelOf(report.acquisitions.at(place).labels, label).toString();
        const QString key = foldedName(name);
        drafts[key.isEmpty() ? last : sortKey(key)].add(name, place);
    }
    return drafts.values();
}

void addSubject(const Draft& draft, StudyReport* report, ReportedGroup* group)
{
    ReportedSubject subject{commonestOf(draft.names).value, draft.acquisitions, {}};
    QDate first;
    for (const int place : draft.acquisitions) {
        ReportedAcquisition& acquisition = report->acquisitions[place];
        acquisition.group = int(report->groups.size());
        acquisition.subject = int(group->subjects.size());
        if (!first.isValid())
            first = acquisition.date;
        if (acquisition.date.isValid())
            acquisition.day = int(first.daysTo(acquisition.date));
    }
    group->subjects += subject;
}

void addGroups(const ReportLabels& labels, StudyReport* report)
{
    QList<int> all;
    for (int i = 0; i < report->acquisitions.size(); ++i)
        all += i;
    const QList<Draft> groups = sortedBy(labels.group, *report, all);
    for (const Draft& draft : groups) {
        ReportedGroup group{int(report->groups.size()), commonestOf(draft.names).value, {}, false};
        const QList<Draft> subjects = sortedBy(labels.subject, *report, draft.acquisitions);
        for (const Draft& subject : subjects)
            addSubject(subject, report, &group);
        report->groups += group;
    }
}

/** A label while its values are counted: spellings by what they have in common. */
struct LabelDraft
{
    QString name;
    QMap<QString, Counts> values;
    int filled = 0;
};

void addLabels(StudyReport* report)
{
    QMap<QString, LabelDraft> drafts;
    for (const ReportedAcquisition& acquisition : qAsConst(report->acquisitions)) {
        const QJsonObject& labels = acquisition.labels;
        for (auto label = labels.begin(); label != labels.end(); ++label) {
            LabelDraft& draft = drafts[sortKey(foldedName(label.key()))];
            draft.name = label.key();
            const QString value = label.value().toString();
            const QString key = foldedValue(value);
            if (key.isEmpty())
                continue;
            ++draft.filled;
            ++draft.values[sortKey(key)][value];
        }
    }
    const int all = int(report->acquisitions.size());
    for (const LabelDraft& draft : qAsConst(drafts))
        report->labels += ReportedLabel{draft.name, draft.values.values(), all - draft.filled};
}

/** The first acquisition that a spectral analysis is about, if it is in the report. */
std::optional<int> acquisitionOf(const SpectralFile& file, const QHash<QString, int>& places)
{
    for (const SpectralAnalysis& analysis : file.analyses) {
        for (const auto& click : analysis.clicks) {
            const auto place = places.constFind(click.clickNumber);
            if (place != places.constEnd())
                return *place;
        }
    }
    return std::nullopt;
}

void sortSpectra(StudyReport* report)
{
    QHash<QString, int> places;
    for (int i = 0; i < report->acquisitions.size(); ++i)
        places.insert(report->acquisitions.at(i).clickNumber, i);
    for (ReportedSpectrum& spectrum : report->spectra)
        spectrum.acquisition = acquisitionOf(spectrum.file, places);
    const auto order = [&](const ReportedSpectrum& spectrum) {
        const ReportedAcquisition none;
        const ReportedAcquisition& acquisition =
            spectrum.acquisition ? report->acquisitions.at(*spectrum.acquisition) : none;
        return std::tuple(!spectrum.acquisition, acquisition.group, acquisition.subject,
                          acquisition.date, spectrum.path);
    };
    std::sort(
        report->spectra.begin(), report->spectra.end(),
        [&](const ReportedSpectrum& a, const ReportedSpectrum& b) { return order(a) < order(b); });
}

} // namespace

int ReportedLabel::ambiguous() const
{
    return int(std::count_if(values.begin(), values.end(),
                             [](const Counts& spellings) { return spellings.size() > 1; }));
}

const ReportedGroup& StudyReport::groupOf(const ReportedAcquisition& acquisition) const
{
    return *std::find_if(groups.begin(), groups.end(), [&](const ReportedGroup& group) {
        return group.place == acquisition.group;
    });
}

int StudyReport::subjectCount() const
{
    int count = 0;
    for (const ReportedGroup& group : groups)
        count += int(group.subjects.size());
    return count;
}

int StudyReport::gapCount() const
{
    int count = 0;
    for (const ReportedGroup& group : groups) {
        for (const ReportedSubject& subject : group.subjects)
            count += int(subject.gaps.size());
    }
    return count;
}

StudyReport reportOf(const StudyRecords& records, const ReportLabels& labels)
{
    StudyReport report;
    report.acquisitions = withoutCopies(records.acquisitions);
    report.spectra = records.spectra;
    report.problems = records.problems;
    report.sequences = sorted(records.sequences);
    report.instruments = sorted(records.instruments);
    report.versions = sorted(records.versions);
    report.areChecked = records.areChecked;
    std::sort(report.acquisitions.begin(), report.acquisitions.end(), isEarlier);
    addGroups(labels, &report);
    for (ReportedGroup& group : report.groups)
        addGaps(report, &group);
    addDeviations(&report);
    addLabels(&report);
    sortSpectra(&report);
    return report;
}

StudyReport partOf(const StudyReport& report, int group)
{
    StudyReport part = report;
    const auto isOther = [&](const std::optional<int>& acquisition) {
        return !acquisition || report.acquisitions.at(*acquisition).group != group;
    };
    const auto keep = [](auto* list, auto isOut) {
        list->erase(std::remove_if(list->begin(), list->end(), isOut), list->end());
    };
    part.groups = {report.groups.at(group)};
    keep(&part.deviations, [&](const Deviation& row) { return isOther(row.acquisition); });
    keep(&part.mixed, [&](const MixedSetting& row) { return isOther(row.acquisition); });
    return part;
}
