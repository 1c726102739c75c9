// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "ReportContext.h"

namespace {

/** Writes the head of a table; gives the page back. */
Markup& withHead(Markup& page, const QStringList& columns)
{
    const Element head(page, "thead");
    const Element row(page, "tr");
    for (const QString& name : columns)
        page.element("th", {{"scope", "col"}}, name);
    return page;
}

} // namespace

QString ReportContext::groupOf(const ReportedAcquisition& acquisition) const
{
    return nameOr(report.groupOf(acquisition).name, labels.group);
}

QString ReportContext::subjectOf(const ReportedAcquisition& acquisition) const
{
    const ReportedGroup& group = report.groupOf(acquisition);
    return nameOr(group.subjects.at(acquisition.subject).name, labels.subject);
}

QString dayOf(const ReportedAcquisition& acquisition)
{
    return acquisition.day ? QString::number(*acquisition.day) : QString();
}

QString listed(const QStringList& parts)
{
    if (parts.size() < 2)
        return parts.join(QString());
    return QStringList(parts.mid(0, parts.size() - 1)).join(QLatin1String(", ")) +
           QLatin1String(" and ") + parts.last();
}

void writeParagraph(Markup& page, const QString& text)
{
    page.element("p", text);
}

TableFrame::TableFrame(Markup& page, const char* name, const QStringList& columns)
    : m_scroll(page, "div",
               {{"class", "scroll"}, {"tabindex", "0"}, {"role", "region"}, {"aria-label", name}})
    , m_table(page, "table", {{"class", "filterable sortable"}})
    , m_body(withHead(page, columns), "tbody")
{}
