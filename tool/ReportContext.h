// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * What the sections of a report have in common.
 */
#ifndef OVINFO_REPORTCONTEXT_H
#define OVINFO_REPORTCONTEXT_H

#include "Markup.h"
#include "StudyReport.h"

/** What a section is made of, and the page that it is written to. */
struct ReportContext
{
    Markup& page;
    const StudyReport& report;
    const ReportLabels& labels;

    /** The names of an acquisition's group and subject. */
    [[nodiscard]] QString groupOf(const ReportedAcquisition& acquisition) const;
    [[nodiscard]] QString subjectOf(const ReportedAcquisition& acquisition) const;
};

/** The day of an acquisition; empty when its date is not told. */
QString dayOf(const ReportedAcquisition& acquisition);

/** Parts of a sentence: "a, b and c". */
QString listed(const QStringList& parts);

void writeParagraph(Markup& page, const QString& text);

/** A table that can be sorted and filtered, and scrolls by itself; its rows follow. */
class TableFrame
{
public:
    /** @param name  for those who do not see it */
    TableFrame(Markup& page, const char* name, const QStringList& columns);

private:
    Element m_scroll;
    Element m_table;
    Element m_body;
};

#endif
