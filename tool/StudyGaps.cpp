// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "StudyGaps.h"

#include "Found.h"

#include <algorithm>

namespace {

namespace Key = PLKeyword::Key;

/** A time point of a group while its acquisitions are found. */
struct TimePoint
{
    Counts names;
    QMap<int, int> days;
    QSet<int> subjects;

    /** The day on which it is as a rule. */
    [[nodiscard]] int usualDay() const { return commonestOf(days).value; }
};

/** Finds what is missing in a group. */
class GapSearch
{
public:
    GapSearch(const StudyReport& report, ReportedGroup* group)
        : m_report(report)
        , m_group(group)
    {}

    void search()
    {
        m_group->hasNamedTimePoints = hasNamedTimePoints();
        for (int i = 0; i < m_group->subjects.size(); ++i)
            addTimePoints(i);
        for (int i = 0; i < m_group->subjects.size(); ++i)
            addGaps(i);
    }

private:
    [[nodiscard]] QString labelledTimePoint(int place) const
    {
        return labelOf(m_report.acquisitions.at(place).labels, Key::TimePoint).toString();
    }

    [[nodiscard]] bool hasNamedTimePoints() const;
    [[nodiscard]] QString keyOf(int place) const;
    void addTimePoints(int subject);
    void addGaps(int number);
    [[nodiscard]] int delayOf(const ReportedSubject& subject) const;

    const StudyReport& m_report;
    ReportedGroup* m_group;
    QMap<QString, TimePoint> m_timePoints;
};

bool GapSearch::hasNamedTimePoints() const
{
    QSet<QString> names;
    for (const ReportedSubject& subject : qAsConst(m_group->subjects)) {
        for (const int place : subject.acquisitions)
            names += foldedValue(labelledTimePoint(place));
    }
    return names.size() > 1 && !names.contains(QString());
}

/** What tells time points apart. */
QString GapSearch::keyOf(int place) const
{
    if (m_group->hasNamedTimePoints)
        return foldedValue(labelledTimePoint(place));
    return sortKey(QString::number(*m_report.acquisitions.at(place).day));
}

void GapSearch::addTimePoints(int subject)
{
    for (const int place : qAsConst(m_group->subjects.at(subject).acquisitions)) {
        const auto day = m_report.acquisitions.at(place).day;
        if (!day && !m_group->hasNamedTimePoints)
            continue;
        TimePoint& point = m_timePoints[keyOf(place)];
        point.subjects += subject; // also without a date: it is not missing
        if (!day)
            continue;
        // Who was there most often tells best on which day it is.
        point.days[*day] += int(m_group->subjects.at(subject).acquisitions.size());
        ++point.names[m_group->hasNamedTimePoints ? labelledTimePoint(place).simplified()
                                                  : QStringLiteral("day %1").arg(*day)];
    }
}

/** How much later than in the group the time points of a subject are, as a rule. */
int GapSearch::delayOf(const ReportedSubject& subject) const
{
    QMap<int, int> delays;
    for (const int place : subject.acquisitions) {
        const auto day = m_report.acquisitions.at(place).day;
        if (day)
            ++delays[*day - m_timePoints.value(keyOf(place)).usualDay()];
    }
    return commonestOf(delays).value;
}

// What fewer than half of them have is no time point, but their own delay or another experiment.
void GapSearch::addGaps(int number)
{
    ReportedSubject& subject = m_group->subjects[number];
    const auto all = m_group->subjects.size();
    const int delay = m_group->hasNamedTimePoints ? delayOf(subject) : 0;
    for (const TimePoint& point : qAsConst(m_timePoints)) {
        const int others = int(point.subjects.size());
        if (2 * others >= all && !point.names.isEmpty() && !point.subjects.contains(number))
            subject.gaps += Gap{commonestOf(point.names).value, point.usualDay() + delay, others};
    }
    std::stable_sort(subject.gaps.begin(), subject.gaps.end(),
                     [](const Gap& a, const Gap& b) { return a.day < b.day; });
}

} // namespace

void addGaps(const StudyReport& report, ReportedGroup* group)
{
    GapSearch(report, group).search();
}
