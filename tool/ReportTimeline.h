// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * The timeline of a report: how it is laid out, and how it is drawn.
 */
#ifndef OVINFO_REPORTTIMELINE_H
#define OVINFO_REPORTTIMELINE_H

#include "ReportContext.h"

/** Where acquisitions stand and how they look. */
class TimelineLayout
{
public:
    explicit TimelineLayout(const StudyReport& report);

    /** The rules of the style sheet that place what stands on the timeline. */
    [[nodiscard]] QString style() const;

    /** The days, undated ones not counted, on which something stands. */
    [[nodiscard]] const QList<int>& days() const { return m_days; }

    /** The days that the axis tells: not too close to each other. */
    [[nodiscard]] QList<int> ticks() const;

    /** The column of a day; the last one is for acquisitions without a date. */
    [[nodiscard]] int column(std::optional<int> day) const;

    [[nodiscard]] bool hasUndated() const { return m_hasUndated; }

    /** What colours tell apart. */
    [[nodiscard]] Setting colouredBy() const { return m_colouredBy; }

    /** The values that have colours of their own, by the numbers of these. */
    [[nodiscard]] const QStringList& colours() const { return m_colours; }

    [[nodiscard]] bool hasOtherColours() const { return m_hasOthers; }

    /** The class of an acquisition's colour. */
    [[nodiscard]] QString colourClass(const ReportedAcquisition& acquisition) const;

    /** Whether the timeline is wider than a narrow screen. */
    [[nodiscard]] bool isWide() const;

private:
    void takeDays(const StudyReport& report);
    void takeColours(const StudyReport& report);
    [[nodiscard]] int width(int column) const;
    [[nodiscard]] int totalWidth() const;

    QList<int> m_days;
    bool m_hasUndated = false;
    int m_closest = 1; ///< the least number of days between two time points of one subject
    Setting m_colouredBy = Exposure;
    QStringList m_colours;
    bool m_hasOthers = false;
};

/** Writes the shapes that the marks of a page use. */
void drawShapes(Markup& page);

/** Writes what shapes and colours mean, and the table. */
void drawTimeline(const ReportContext& at, const TimelineLayout& layout);

/** The id of an acquisition's mark. */
QString markId(int acquisition);

/** The id of an acquisition's first deviation. */
QString deviationId(int acquisition);

#endif
