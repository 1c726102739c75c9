// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * A report as a page of HTML.
 */
#ifndef OVINFO_REPORTPAGE_H
#define OVINFO_REPORTPAGE_H

#include "StudyReport.h"

#include <QtCore/QByteArray>

/** A page and the name of its file. */
struct ReportPage
{
    QString name;
    QByteArray bytes;
};

/**
 * The pages of a report: one, or with very many acquisitions another one for each group.
 *
 * @param name  of the file of the first page; those of the others follow from it
 */
QList<ReportPage> reportPages(const StudyReport& report, const ReportLabels& labels,
                              const QString& title, const QString& name);

/** Whether bytes are a page of a report. */
bool isReportPage(const QByteArray& bytes);

#endif
