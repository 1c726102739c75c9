// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "StudyDeviations.h"

#include <algorithm>
#include <tuple>

namespace {

constexpr int secondsPerMinute = 60;

bool isNear(int a, int b)
{
    return qAbs(a - b) < secondsPerMinute;
}

/** How many of the sorted intervals are near one. */
int nearTo(const QList<int>& intervals, int middle)
{
    const auto first =
        std::upper_bound(intervals.cbegin(), intervals.cend(), middle - secondsPerMinute);
    const auto last = std::lower_bound(first, intervals.cend(), middle + secondsPerMinute);
    return int(last - first);
}

/** The middle of the intervals with the commonest number of minutes, and how many are near it. */
Commonest<int> commonestInterval(QList<int> intervals)
{
    QMap<int, int> minutes;
    for (const int interval : qAsConst(intervals))
        ++minutes[interval / secondsPerMinute];
    const int common = commonestOf(minutes).value;
    std::sort(intervals.begin(), intervals.end());
    const auto isBelow = [](int interval, int minute) {
        return interval / secondsPerMinute < minute;
    };
    const auto first = std::lower_bound(intervals.cbegin(), intervals.cend(), common, isBelow);
    const int middle = *(first + (minutes.value(common) - 1) / 2);
    const int count = nearTo(intervals, middle);
    const bool isAlone = std::none_of(intervals.cbegin(), intervals.cend(), [&](int other) {
        return !isNear(other, middle) && nearTo(intervals, other) >= count;
    });
    return {middle, count, isAlone};
}

/** Compares the acquisitions of one group and kind of image. */
class Comparison
{
public:
    Comparison(const QList<int>& places, StudyReport* report)
        : m_places(places)
        , m_report(report)
    {}

    void compare(Setting setting)
    {
        const Counts values = valuesOf(setting);
        int outOf = 0;
        for (const int count : values)
            outOf += count;
        if (values.size() < 2)
            return;
        if (setting == Interval)
            compareIntervals(outOf, values);
        else
            compareTexts(setting, outOf, values);
    }

private:
    [[nodiscard]] Counts valuesOf(Setting setting) const
    {
        Counts values;
        for (const int place : m_places) {
            const QString& value = m_report->acquisitions.at(place).settings.at(setting);
            if (!value.isEmpty())
                ++values[value];
        }
        return values;
    }

    void compareTexts(Setting setting, int outOf, const Counts& values)
    {
        const Commonest<QString> common = commonestOf(values);
        if (!common.isCommon(outOf))
            return addMixed(setting, values);
        for (const int place : m_places) {
            const QString& value = m_report->acquisitions.at(place).settings.at(setting);
            if (!value.isEmpty() && value != common.value)
                addDeviation({place, setting, common.value, common.count, outOf});
        }
    }

    void compareIntervals(int outOf, const Counts& values)
    {
        QList<int> intervals;
        for (const int place : m_places) {
            const auto interval = m_report->acquisitions.at(place).interval;
            if (interval)
                intervals += *interval;
        }
        const Commonest<int> common = commonestInterval(intervals);
        if (!common.isCommon(outOf))
            return addMixed(Interval, values);
        const QString told = minutesText(common.value / secondsPerMinute);
        for (const int place : m_places) {
            const auto interval = m_report->acquisitions.at(place).interval;
            if (interval && !isNear(*interval, common.value))
                addDeviation({place, Interval, told, common.count, outOf});
        }
    }

    void addDeviation(const Deviation& deviation)
    {
        m_report->acquisitions[deviation.acquisition].deviates = true;
        m_report->deviations += deviation;
    }

    void addMixed(Setting setting, const Counts& values)
    {
        m_report->mixed += MixedSetting{m_places.first(), setting, values};
    }

    const QList<int>& m_places;
    StudyReport* m_report;
};

} // namespace

void addDeviations(StudyReport* report)
{
    QMap<std::pair<int, QString>, QList<int>> kinds;
    for (int i = 0; i < report->acquisitions.size(); ++i) {
        const ReportedAcquisition& acquisition = report->acquisitions.at(i);
        if (!acquisition.image.isEmpty())
            kinds[{acquisition.group, acquisition.image}] += i;
    }
    for (const QList<int>& places : qAsConst(kinds)) {
        Comparison comparison(places, report);
        for (int setting = 0; setting < settingCount; ++setting)
            comparison.compare(Setting(setting));
    }
    std::stable_sort(
        report->deviations.begin(), report->deviations.end(),
        [&](const Deviation& a, const Deviation& b) {
            const auto order = [&](const Deviation& deviation) {
                const auto& acquisition = report->acquisitions.at(deviation.acquisition);
                return std::tuple(acquisition.group, acquisition.subject, deviation.acquisition);
            };
            return order(a) < order(b);
        });
}
