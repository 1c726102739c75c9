// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "ReportTables.h"

#include "Acquisition.h"
#include "ReportTimeline.h"

#include <algorithm>

namespace {

void writeDeviation(const ReportContext& at, const Deviation& deviation, bool isFirst)
{
    const int place = deviation.acquisition;
    const ReportedAcquisition& acquisition = at.report.acquisitions.at(place);
    const Element row(at.page, "tr",
                      isFirst ? Attributes{{"id", deviationId(place)}} : Attributes{});
    at.page.element("td", at.groupOf(acquisition));
    at.page.element("td", at.subjectOf(acquisition));
    at.page.element("td", {{"class", "number"}}, dayOf(acquisition));
    {
        const Element cell(at.page, "td");
        at.page.element("a", {{"href", QLatin1Char('#') + markId(place)}}, acquisition.clickNumber);
    }
    at.page.element("td", imageTitle(acquisition.image));
    at.page.element("td", settingName(deviation.setting));
    at.page.element("td", {{"class", "odd"}}, acquisition.settings.at(deviation.setting));
    const Element common(at.page, "td");
    at.page.text(deviation.common);
    at.page.element("small",
                    QStringLiteral("%1 of %2").arg(deviation.commonCount).arg(deviation.outOf));
}

void writeMixed(const ReportContext& at)
{
    constexpr int mostValues = 8;
    if (at.report.mixed.isEmpty())
        return;
    writeParagraph(
        at.page,
        QStringLiteral("These have no commonest value, so that nothing can differ from it:"));
    const Element list(at.page, "ul");
    for (const MixedSetting& mixed : at.report.mixed) {
        QStringList values;
        for (auto value = mixed.values.begin(); value != mixed.values.end(); ++value)
            values += QStringLiteral("%1 (%2)").arg(value.key(), QString::number(*value));
        std::sort(values.begin(), values.end(),
                  [](const QString& a, const QString& b) { return sortKey(a) < sortKey(b); });
        const auto more = int(values.size()) - mostValues;
        QString text = QStringList(values.mid(0, mostValues)).join(QLatin1String(", "));
        if (more > 0)
            text += QStringLiteral(" and %1 more").arg(more);
        const ReportedAcquisition& example = at.report.acquisitions.at(mixed.acquisition);
        at.page.element("li", QStringLiteral("%1, %2, %3: ")
                                      .arg(at.groupOf(example), imageTitle(example.image),
                                           settingName(mixed.setting)) +
                                  text);
    }
}

/** Writes a value; spellings that are nearly the same stand side by side with visible blanks. */
void writeValue(Markup& page, const Counts& spellings)
{
    const bool isAmbiguous = spellings.size() > 1;
    const Element item(page, "li", isAmbiguous ? Attributes{{"class", "odd"}} : Attributes{});
    if (isAmbiguous)
        page.element("span", {{"class", "note"}}, QStringLiteral("the same? "));
    for (auto row = spellings.begin(); row != spellings.end(); ++row) {
        if (row != spellings.begin())
            page.text(QStringLiteral(" "));
        QString value = row.key();
        if (isAmbiguous)
            value.replace(QLatin1Char(' '), QChar(0x2423));
        page.element("bdi", value);
        page.element("small", QStringLiteral("\u00d7 %1").arg(*row));
    }
}

void writeLabel(Markup& page, const ReportedLabel& label)
{
    constexpr int mostValues = 200;
    QList<Counts> shown = label.values;
    std::stable_partition(shown.begin(), shown.end(),
                          [](const Counts& spellings) { return spellings.size() > 1; });
    const auto more = int(shown.size()) - mostValues;
    const Element card(page, "div", {{"class", "card"}});
    page.element("h3", label.name);
    const Element list(page, "ul", {{"class", "values"}});
    for (const Counts& spellings : qAsConst(shown).mid(0, mostValues))
        writeValue(page, spellings);
    if (more > 0)
        page.element("li", {{"class", "note"}}, QStringLiteral("and %1 more values").arg(more));
    if (label.empty > 0)
        page.element("li", {{"class", "odd"}}, QStringLiteral("empty \u00d7 %1").arg(label.empty));
}

} // namespace

void writeDeviations(const ReportContext& at)
{
    writeParagraph(
        at.page,
        QStringLiteral(
            "Settings that differ from the commonest one among the acquisitions of the same group "
            "with the same kind of image. A difference of an interval below a minute is none."));
    if (at.report.deviations.isEmpty())
        writeParagraph(at.page, QStringLiteral("There are none."));
    writeMixed(at);
    if (at.report.deviations.isEmpty())
        return;
    const TableFrame table(at.page, "Table of deviations",
                           {at.labels.group, at.labels.subject, QStringLiteral("Day"),
                            QStringLiteral("Acquisition"), QStringLiteral("Image"),
                            QStringLiteral("Setting"), QStringLiteral("Value"),
                            QStringLiteral("Commonest")});
    int last = -1;
    for (const Deviation& deviation : at.report.deviations) {
        writeDeviation(at, deviation, deviation.acquisition != last);
        last = deviation.acquisition;
    }
}

void writeLabels(const ReportContext& at)
{
    QStringList unused;
    for (const ReportedLabel& label : at.report.labels) {
        if (label.values.isEmpty())
            unused += label.name;
    }
    if (at.report.labels.isEmpty())
        writeParagraph(at.page, QStringLiteral("The acquisitions have none."));
    if (!unused.isEmpty())
        writeParagraph(at.page,
                       QLatin1String("Empty everywhere: ") + listed(unused) + QLatin1Char('.'));
    const Element cards(at.page, "div", {{"class", "cards"}});
    for (const ReportedLabel& label : at.report.labels) {
        if (!label.values.isEmpty())
            writeLabel(at.page, label);
    }
}

void writeProblems(const ReportContext& at)
{
    if (!at.report.areChecked)
        writeParagraph(
            at.page,
            QStringLiteral(
                "The files themselves were not checked, as the report was made of records: 'ovinfo "
                "check --recursive --jsonl' makes more of them."));
    if (at.report.problems.isEmpty())
        return writeParagraph(at.page, QStringLiteral("There are none."));
    const TableFrame table(at.page, "Table of problems",
                           {QStringLiteral("File"), QStringLiteral("Line"),
                            QStringLiteral("Problem"), QStringLiteral("Told by")});
    for (auto file = at.report.problems.begin(); file != at.report.problems.end(); ++file) {
        for (const ReportedProblem& problem : *file) {
            const Element row(at.page, "tr");
            at.page.element("td", {{"class", "text"}}, file.key());
            at.page.element("td", {{"class", "number"}},
                            problem.line > 0 ? QString::number(problem.line) : QString());
            at.page.element("td", {{"class", "text"}}, problem.message);
            at.page.element("td", problem.source);
        }
    }
}
