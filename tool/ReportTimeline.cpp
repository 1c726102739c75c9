// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "ReportTimeline.h"

#include "Acquisition.h"
#include "Terminal.h"

#include <algorithm>

namespace {

/** A main image and the shape of its marks, in a square of 16 by 16. */
struct Shape
{
    const char* image = "";
    const char* title = "";
    const char* path = "";
};

constexpr Shape shapes[] = {
    {"luminescent", "Luminescent", "M8 1a7 7 0 1 0 0 14a7 7 0 1 0 0-14z"},
    {"luminescentCorrected", "Luminescent, corrected",
     "M8 1a7 7 0 1 0 0 14a7 7 0 1 0 0-14zM8 5a3 3 0 1 1 0 6a3 3 0 1 1 0-6z"},
    {"fluorescentReference", "Fluorescent reference", "M8 0l8 8l-8 8l-8-8z"},
    {"xray", "X-ray", "M8 1l8 14h-16z"},
    {"structure", "Structure", "M4 1h8l4 7l-4 7h-8l-4-7z"},
    {"photograph", "Photograph", "M2 2h12v12h-12z"},
    {"", "Any other image, or none",
     "M2 0l6 6l6-6l2 2l-6 6l6 6l-2 2l-6-6l-6 6l-2-2l6-6l-6-6z"}, // any other
};

constexpr int otherShape = int(std::size(shapes)) - 1;
constexpr int mostColours = 6;
constexpr int markSize = 24;     // pixels
constexpr int narrowLane = 240;  // pixels, on a telephone
constexpr int widestLane = 4000; // pixels

int shapeOf(const QString& image)
{
    for (int i = 0; i < otherShape; ++i) {
        if (image == QLatin1String(shapes[i].image))
            return i;
    }
    return otherShape;
}

QString shapeId(int shape)
{
    return QStringLiteral("s%1").arg(shape);
}

QString columnClass(int column)
{
    return QStringLiteral("d%1").arg(column);
}

QString dayText(int day)
{
    return day < 0 ? QChar(0x2212) + QString::number(-day) : QString::number(day);
}

/** The first of values that are sorted and not too close to the one before. */
QList<int> spread(const QList<int>& values, double distance)
{
    QList<int> kept;
    for (const int value : values) {
        if (kept.isEmpty() || value - kept.last() >= distance)
            kept += value;
    }
    return kept;
}

/** The days of a subject's acquisitions and gaps, each once, in order. */
QList<int> daysOf(const ReportedSubject& subject, const StudyReport& report)
{
    QSet<int> days;
    for (const int place : subject.acquisitions) {
        const auto day = report.acquisitions.at(place).day;
        if (day)
            days += *day;
    }
    for (const Gap& gap : subject.gaps)
        days += gap.day;
    QList<int> list = days.values();
    std::sort(list.begin(), list.end());
    return list;
}

} // namespace

TimelineLayout::TimelineLayout(const StudyReport& report)
{
    takeDays(report);
    takeColours(report);
}

void TimelineLayout::takeDays(const StudyReport& report)
{
    QSet<int> all;
    m_closest = 0;
    for (const ReportedGroup& group : report.groups) {
        for (const ReportedSubject& subject : group.subjects) {
            const QList<int> days = daysOf(subject, report);
            for (int i = 0; i < days.size(); ++i) {
                all += days.at(i);
                const int distance = i > 0 ? days.at(i) - days.at(i - 1) : 0;
                if (distance > 0 && (m_closest == 0 || distance < m_closest))
                    m_closest = distance;
            }
            for (const int place : subject.acquisitions)
                m_hasUndated = m_hasUndated || !report.acquisitions.at(place).day;
        }
    }
    m_closest = qMax(1, m_closest);
    m_days = all.values();
    std::sort(m_days.begin(), m_days.end());
}

/** Filters are told apart when there are several, otherwise exposures. */
void TimelineLayout::takeColours(const StudyReport& report)
{
    std::array<Counts, settingCount> values;
    for (const ReportedGroup& group : report.groups) {
        for (const ReportedSubject& subject : group.subjects) {
            for (const int place : subject.acquisitions) {
                const ReportedAcquisition& acquisition = report.acquisitions.at(place);
                for (const Setting setting : {Exposure, EmissionFilter})
                    ++values.at(setting)[acquisition.settings.at(setting)];
            }
        }
    }
    values.at(EmissionFilter).remove(QString());
    m_colouredBy = values.at(EmissionFilter).size() > 1 ? EmissionFilter : Exposure;
    Counts& counts = values.at(m_colouredBy);
    counts.remove(QString());
    m_colours = counts.keys();
    std::stable_sort(m_colours.begin(), m_colours.end(), [&](const QString& a, const QString& b) {
        return counts.value(a) > counts.value(b);
    });
    m_hasOthers = m_colours.size() > mostColours;
    m_colours = m_colours.mid(0, mostColours);
    std::sort(m_colours.begin(), m_colours.end(),
              [](const QString& a, const QString& b) { return sortKey(a) < sortKey(b); });
}

QString TimelineLayout::colourClass(const ReportedAcquisition& acquisition) const
{
    const auto number = m_colours.indexOf(acquisition.settings.at(m_colouredBy));
    return number < 0 ? QStringLiteral("other") : QStringLiteral("c%1").arg(number);
}

int TimelineLayout::column(std::optional<int> day) const
{
    const auto place = std::lower_bound(m_days.begin(), m_days.end(), day.value_or(0));
    return 1 + int(day ? place - m_days.begin() : m_days.size());
}

/** The width of a column in days: up to the next one, the last ones as much as marks need. */
int TimelineLayout::width(int column) const
{
    if (column < m_days.size())
        return m_days.at(column) - m_days.at(column - 1);
    const int span = m_days.isEmpty() ? 0 : m_days.last() - m_days.first();
    return qMax(m_closest, span / 8);
}

int TimelineLayout::totalWidth() const
{
    int total = 0;
    for (int i = 1; i <= m_days.size() + (m_hasUndated ? 1 : 0); ++i)
        total += width(i);
    return total;
}

bool TimelineLayout::isWide() const
{
    return markSize * totalWidth() / m_closest > narrowLane;
}

QList<int> TimelineLayout::ticks() const
{
    constexpr double least = 0.07; // of the whole, for three digits
    return spread(m_days, least * totalWidth());
}

QString TimelineLayout::style() const
{
    const int total = qMax(1, totalWidth());
    const int columns = int(m_days.size()) + (m_hasUndated ? 1 : 0);
    QStringList widths;
    QString places;
    for (int i = 1; i <= columns; ++i) {
        widths += QStringLiteral("minmax(0,%1fr)").arg(width(i));
        places += QStringLiteral(".%1{grid-column:%2}\n").arg(columnClass(i)).arg(i);
    }
    QStringList lines;
    const QList<int> told = ticks();
    for (const int day : told)
        lines += QStringLiteral("linear-gradient(var(--line),var(--line)) "
                                "calc(%1% + 12px) 0/1px 100% no-repeat")
                     .arg(100.0 * (day - m_days.first()) / total, 0, 'f', 3);
    if (lines.isEmpty())
        lines += QStringLiteral("none");
    return QStringLiteral(".lane{grid-template-columns:%1;min-width:%2px;background:%3}\n%4")
        .arg(widths.join(QLatin1Char(' ')))
        .arg(isWide() ? qMin(widestLane, markSize * total / m_closest) : 0)
        .arg(lines.join(QLatin1Char(',')), places);
}

QString markId(int acquisition)
{
    return QStringLiteral("a%1").arg(acquisition + 1);
}

QString deviationId(int acquisition)
{
    return QStringLiteral("v%1").arg(acquisition + 1);
}

void drawShapes(Markup& page)
{
    const Element svg(page, "svg", {{"class", "shapes"}, {"aria-hidden", "true"}});
    for (int i = 0; i <= otherShape; ++i) {
        const Element symbol(page, "symbol", {{"id", shapeId(i)}, {"viewBox", "-1 -1 18 18"}});
        page.empty("path", {{"d", shapes[i].path}, {"fill-rule", "evenodd"}});
    }
}

namespace {

void drawShape(Markup& page, int shape)
{
    const Element svg(page, "svg", {{"aria-hidden", "true"}});
    page.empty("use", {{"href", QLatin1Char('#') + shapeId(shape)}});
}

/** Draws the timeline of a report row by row. */
class TimelineTable
{
public:
    TimelineTable(const ReportContext& at, const TimelineLayout& layout)
        : m_page(at.page)
        , m_report(at.report)
        , m_labels(at.labels)
        , m_layout(layout)
    {}

    void drawLegend();
    void draw();

private:
    void drawHead();
    void drawGroup(const ReportedGroup& group);
    void drawSubject(const ReportedGroup& group, const ReportedSubject& subject);
    void drawColumn(const ReportedGroup& group, const QList<int>& places,
                    const QList<const Gap*>& gaps, int column);
    void drawMark(int place);
    void drawGap(const ReportedGroup& group, const Gap& gap);
    [[nodiscard]] QString markText(int place) const;

    Markup& m_page;
    const StudyReport& m_report;
    const ReportLabels& m_labels;
    const TimelineLayout& m_layout;
};

void TimelineTable::drawLegend()
{
    QSet<int> used;
    for (const ReportedGroup& group : m_report.groups) {
        for (const ReportedSubject& subject : group.subjects) {
            for (const int place : subject.acquisitions)
                used += shapeOf(m_report.acquisitions.at(place).image);
        }
    }
    const Element list(m_page, "ul", {{"class", "legend"}});
    const auto entry = [&](const char* mark, const QString& colour, int shape,
                           const QString& text) {
        const Element item(m_page, "li");
        {
            const Element sample(m_page, "span",
                                 {{"class", QLatin1String(mark) + QLatin1Char(' ') + colour}});
            if (shape >= 0)
                drawShape(m_page, shape);
        }
        m_page.text(text);
    };
    for (int shape = 0; shape <= otherShape; ++shape) {
        if (used.contains(shape))
            entry("mark", QStringLiteral("plain"), shape, QLatin1String(shapes[shape].title));
    }
    const QString setting = settingName(m_layout.colouredBy());
    for (int i = 0; i < m_layout.colours().size(); ++i)
        entry("swatch", QStringLiteral("c%1").arg(i), -1,
              setting + QLatin1Char(' ') + m_layout.colours().at(i));
    if (m_layout.hasOtherColours())
        entry("swatch", QStringLiteral("other"), -1, QLatin1String("other ") + setting);
    if (!m_report.deviations.isEmpty())
        entry("mark plain", QStringLiteral("odd"), 0, QStringLiteral("ringed: deviates"));
    if (m_report.gapCount() > 0)
        entry("gap", QString(), -1, QStringLiteral("missing time point"));
}

void TimelineTable::draw()
{
    const Element scroll(m_page, "div",
                         m_layout.isWide() ? Attributes{{"class", "scroll"},
                                                        {"tabindex", "0"},
                                                        {"role", "region"},
                                                        {"aria-label", "Table of the timeline"}}
                                           : Attributes{{"class", "whole"}});
    const Element table(m_page, "table", {{"class", "timeline filterable"}});
    m_page.element("caption", {{"class", "hidden"}},
                   QStringLiteral("Acquisitions by days since the first of the same row"));
    drawHead();
    for (const ReportedGroup& group : m_report.groups)
        drawGroup(group);
}

void TimelineTable::drawHead()
{
    const Element head(m_page, "thead");
    const Element row(m_page, "tr");
    m_page.element("th", {{"scope", "col"}}, m_labels.subject);
    const Element axis(m_page, "th", {{"scope", "col"}});
    m_page.element("span", {{"class", "axis-name"}},
                   QStringLiteral("Days since the first acquisition"));
    const Element lane(m_page, "div", {{"class", "lane axis"}});
    const QList<int> ticks = m_layout.ticks();
    for (const int day : ticks)
        m_page.element("span", {{"class", columnClass(m_layout.column(day))}}, dayText(day));
    if (m_layout.hasUndated())
        m_page.element("span", {{"class", columnClass(m_layout.column(std::nullopt))}},
                       QStringLiteral("no date"));
}

void TimelineTable::drawGroup(const ReportedGroup& group)
{
    const Element body(m_page, "tbody");
    int acquisitions = 0;
    int gaps = 0;
    for (const ReportedSubject& subject : group.subjects) {
        acquisitions += int(subject.acquisitions.size());
        gaps += int(subject.gaps.size());
    }
    {
        const Element row(m_page, "tr", {{"class", "group"}});
        const Element head(m_page, "th", {{"scope", "rowgroup"}, {"colspan", "2"}});
        m_page.element("span", {{"class", "name"}}, nameOr(group.name, m_labels.group));
        QString facts = counted(int(group.subjects.size()), "animal") + QLatin1String(", ") +
                        counted(acquisitions, "acquisition");
        if (gaps > 0)
            facts += QLatin1String(", ") + counted(gaps, "missing time point");
        m_page.element("small", facts);
    }
    for (const ReportedSubject& subject : group.subjects)
        drawSubject(group, subject);
}

void TimelineTable::drawSubject(const ReportedGroup& group, const ReportedSubject& subject)
{
    QMap<int, QList<int>> places;
    QMap<int, QList<const Gap*>> gaps;
    for (const int place : subject.acquisitions)
        places[m_layout.column(m_report.acquisitions.at(place).day)] += place;
    for (const Gap& gap : subject.gaps) {
        places[m_layout.column(gap.day)];
        gaps[m_layout.column(gap.day)] += &gap;
    }
    const Element row(m_page, "tr");
    m_page.element("th", {{"scope", "row"}}, nameOr(subject.name, m_labels.subject));
    const Element cell(m_page, "td");
    const Element lane(m_page, "div", {{"class", "lane"}});
    for (auto column = places.begin(); column != places.end(); ++column)
        drawColumn(group, *column, gaps.value(column.key()), column.key());
}

void TimelineTable::drawColumn(const ReportedGroup& group, const QList<int>& places,
                               const QList<const Gap*>& gaps, int column)
{
    const Element span(m_page, "span", {{"class", columnClass(column)}});
    for (const int place : places)
        drawMark(place);
    for (const Gap* const gap : gaps)
        drawGap(group, *gap);
}

void TimelineTable::drawMark(int place)
{
    const ReportedAcquisition& acquisition = m_report.acquisitions.at(place);
    QString classes = QLatin1String("mark ") + m_layout.colourClass(acquisition);
    if (acquisition.deviates)
        classes += QLatin1String(" odd");
    const QString target = acquisition.deviates ? deviationId(place) : markId(place);
    const Element link(m_page, "a",
                       {{"class", classes},
                        {"id", markId(place)},
                        {"href", QLatin1Char('#') + target},
                        {"title", markText(place)}});
    drawShape(m_page, shapeOf(acquisition.image));
}

void TimelineTable::drawGap(const ReportedGroup& group, const Gap& gap)
{
    const QString text =
        QStringLiteral("No acquisition: %1. %2 of %3 animals of the group have one.")
            .arg(gap.name, QString::number(gap.others), QString::number(group.subjects.size()));
    m_page.element("span",
                   {{"class", "gap"}, {"role", "img"}, {"aria-label", text}, {"title", text}},
                   QString());
}

/** What is told of an acquisition when its mark is pointed at: a line for each kind of thing. */
QString TimelineTable::markText(int place) const
{
    const ReportedAcquisition& acquisition = m_report.acquisitions.at(place);
    QStringList lines = {acquisition.clickNumber};
    QStringList when;
    if (acquisition.day)
        when = QStringList{QLatin1String("day ") + dayText(*acquisition.day),
                           acquisition.date.toString(Qt::ISODate) + QLatin1Char(' ') +
                               acquisition.time.toString(QStringLiteral("HH:mm"))};
    lines += when.join(QLatin1String(", "));
    QStringList what = {imageTitle(acquisition.image)};
    for (int i = 0; i < settingCount; ++i) {
        const QString& value = acquisition.settings.at(std::size_t(i));
        if (!value.isEmpty())
            what += settingName(Setting(i)) + QLatin1Char(' ') + value;
    }
    lines += what.join(QLatin1String(", "));
    if (acquisition.deviates)
        lines += QStringLiteral("Deviates from its group.");
    lines += acquisition.path;
    lines.removeAll(QString());
    for (QString& line : lines)
        line = printable(line);
    return lines.join(QLatin1Char('\n'));
}

} // namespace

void drawTimeline(const ReportContext& at, const TimelineLayout& layout)
{
    TimelineTable table(at, layout);
    table.drawLegend();
    table.draw();
}
