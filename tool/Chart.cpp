// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Chart.h"

#include <QtCore/QRectF>

#include <algorithm>
#include <cmath>

namespace {

/** The height of one line of the legend, in pixels. */
constexpr int legendLine = 20;
/** The space that labels, title and the head of the legend need around the axes, in pixels. */
constexpr int chartMargin = 70;

/** A colour as such, and as the style sheet of a page may choose another. */
struct Colour
{
    const char* name = "";
    const char* value = "";
};

constexpr Colour grid = {"grid", "#dddddd"};
constexpr Colour ink = {"ink", "#222222"};

/** Colours that people with colour blindness can tell apart. */
constexpr Colour palette[] = {
    {"c0", "#0072b2"}, {"c1", "#d55e00"}, {"c2", "#009e73"},
    {"c3", "#cc79a7"}, {"c4", "#e69f00"}, {"c5", "#56b4e9"},
};

/** The corners of the markers that are no circles, around the point. */
constexpr const char* shapes[] = {
    "", "-4,-4 4,-4 4,4 -4,4", "0,-5.5 5.5,0 0,5.5 -5.5,0", "0,-5 5,4 -5,4", "0,5 5,-4 -5,-4",
};

template <typename T, std::size_t N>
T cyclic(const T (&table)[N], int number)
{
    return table[std::size_t(number) % N];
}

Colour colourOf(const ChartSeries& series)
{
    return series.colour == inkColour ? ink : cyclic(palette, series.colour);
}

/** The values of one axis and where they stand on the paper. */
class Axis
{
public:
    /** An axis that holds all values with round numbers at its ends. */
    Axis(const QList<double>& values, double from, double to);

    [[nodiscard]] double position(double value) const
    {
        return m_from + (value - m_low) / (m_high - m_low) * (m_to - m_from);
    }

    [[nodiscard]] QList<double> ticks() const;

private:
    double m_low = 0.0;
    double m_high = 1.0;
    double m_step = 1.0;
    double m_from;
    double m_to;
};

/** The least of 1, 2, 5 times a power of ten that is not below. */
double roundStep(double atLeast)
{
    const double power = std::pow(10.0, std::floor(std::log10(atLeast)));
    for (const double factor : {1.0, 2.0, 5.0}) {
        if (factor * power >= atLeast)
            return factor * power;
    }
    return 10.0 * power;
}

std::pair<double, double> edgesOf(const QList<double>& values)
{
    const auto [least, greatest] = std::minmax_element(values.begin(), values.end());
    return {*least, *greatest};
}

Axis::Axis(const QList<double>& values, double from, double to)
    : m_from(from)
    , m_to(to)
{
    constexpr double intervals = 5;
    constexpr double closest = 1e-4; // of the values; labels could not tell closer ones apart
    if (values.isEmpty())
        return;
    auto [low, high] = edgesOf(values);
    const double size = std::max(std::abs(low), std::abs(high));
    if (high - low <= size * closest) {
        const double half = size > 0 ? size / 2 : 1.0;
        low -= half;
        high += half;
    }
    m_step = roundStep((high - low) / intervals);
    m_low = std::floor(low / m_step) * m_step;
    m_high = std::ceil(high / m_step) * m_step;
}

QList<double> Axis::ticks() const
{
    QList<double> ticks;
    const int count = int(std::lround((m_high - m_low) / m_step));
    for (int i = 0; i <= count; ++i) {
        const double tick = m_low + i * m_step;
        ticks.append(std::abs(tick) < m_step / 2 ? 0.0 : tick);
    }
    return ticks;
}

/** Whether a point can be placed among others without exceeding what numbers can hold. */
bool isDrawable(const ChartPoint& point)
{
    const auto isUsable = [](double value) {
        constexpr double largest = 1e100;
        constexpr double smallest = 1e-100;
        const double size = std::abs(value);
        return value == 0.0 || (size > smallest && size < largest); // false for a NaN
    };
    return isUsable(point.x) && isUsable(point.y) && isUsable(point.xError) &&
           isUsable(point.yError);
}

/** The chart with the points that can be drawn. */
Chart drawable(Chart chart)
{
    for (ChartSeries& series : chart.series) {
        auto& points = series.points;
        points.erase(std::remove_if(points.begin(), points.end(),
                                    [](const ChartPoint& point) { return !isDrawable(point); }),
                     points.end());
    }
    return chart;
}

/** The ends of all points' errors in one direction. */
QList<double> valuesOf(const Chart& chart, double ChartPoint::*value, double ChartPoint::*error)
{
    QList<double> values;
    for (const ChartSeries& series : chart.series) {
        for (const ChartPoint& point : series.points)
            values << point.*value - std::abs(point.*error)
                   << point.*value + std::abs(point.*error);
    }
    return values;
}

class Painter
{
public:
    Painter(Markup& svg, const Chart& chart, const QRectF& area)
        : m_svg(svg)
        , m_chart(chart)
        , m_area(area)
        , m_x(valuesOf(chart, &ChartPoint::x, &ChartPoint::xError), area.left(), area.right())
        , m_y(valuesOf(chart, &ChartPoint::y, &ChartPoint::yError), area.bottom(), area.top())
    {}

    void draw()
    {
        drawAxes();
        drawLabels();
        for (int i = 0; i < m_chart.series.size(); ++i) {
            drawSeries(m_chart.series.at(i));
            drawLegend(m_chart.series.at(i), i);
        }
    }

private:
    static QString number(double value) { return QString::number(value, 'f', 1); }

    void text(double x, double y, const char* anchor, const QString& text,
              const QString& transform = QString());
    void line(double x1, double y1, double x2, double y2, Colour colour);
    void marker(double x, double y, const ChartSeries& series);
    void drawAxes();
    void drawLabels();
    void drawSeries(const ChartSeries& series);
    void drawLine(const ChartSeries& series);
    void drawPoint(const ChartPoint& point, const ChartSeries& series);
    void drawLegend(const ChartSeries& series, int row);

    Markup& m_svg;
    const Chart& m_chart;
    QRectF m_area;
    Axis m_x;
    Axis m_y;
};

void Painter::text(double x, double y, const char* anchor, const QString& text,
                   const QString& transform)
{
    if (transform.isEmpty())
        m_svg.element("text", {{"x", number(x)}, {"y", number(y)}, {"text-anchor", anchor}}, text);
    else
        m_svg.element(
            "text",
            {{"x", number(x)}, {"y", number(y)}, {"text-anchor", anchor}, {"transform", transform}},
            text);
}

void Painter::line(double x1, double y1, double x2, double y2, Colour colour)
{
    m_svg.empty("line", {{"x1", number(x1)},
                         {"y1", number(y1)},
                         {"x2", number(x2)},
                         {"y2", number(y2)},
                         {"class", colour.name},
                         {"stroke", colour.value}});
}

void Painter::marker(double x, double y, const ChartSeries& series)
{
    const Colour colour = colourOf(series);
    const char* const shape = cyclic(shapes, qMax(0, series.colour));
    if (*shape)
        m_svg.empty("polygon",
                    {{"points", shape},
                     {"transform", QStringLiteral("translate(%1 %2)").arg(number(x), number(y))},
                     {"class", colour.name},
                     {"fill", colour.value}});
    else
        m_svg.empty("circle", {{"cx", number(x)},
                               {"cy", number(y)},
                               {"r", number(4)},
                               {"class", colour.name},
                               {"fill", colour.value}});
}

void Painter::drawAxes()
{
    constexpr double gap = 8;
    constexpr double lineHeight = 18;
    constexpr double baseline = 4;
    const QList<double> columns = m_x.ticks();
    for (const double tick : columns) {
        const double x = m_x.position(tick);
        line(x, m_area.top(), x, m_area.bottom(), grid);
        text(x, m_area.bottom() + lineHeight, "middle", QString::number(tick));
    }
    const QList<double> rows = m_y.ticks();
    for (const double tick : rows) {
        const double y = m_y.position(tick);
        line(m_area.left(), y, m_area.right(), y, grid);
        text(m_area.left() - gap, y + baseline, "end", QString::number(tick));
    }
    line(m_area.left(), m_area.bottom(), m_area.right(), m_area.bottom(), ink);
    line(m_area.left(), m_area.top(), m_area.left(), m_area.bottom(), ink);
}

void Painter::drawLabels()
{
    constexpr double below = 40;
    constexpr double beside = 56;
    constexpr double above = 14;
    const double x = m_area.left() - beside;
    const double y = m_area.center().y();
    text(m_area.center().x(), m_area.top() - above, "middle", m_chart.title);
    text(m_area.center().x(), m_area.bottom() + below, "middle", m_chart.xLabel);
    text(x, y, "middle", m_chart.yLabel,
         QStringLiteral("rotate(-90 %1 %2)").arg(number(x), number(y)));
}

void Painter::drawSeries(const ChartSeries& series)
{
    if (series.line)
        drawLine(series);
    if (!series.markers)
        return;
    for (const ChartPoint& point : series.points)
        drawPoint(point, series);
}

void Painter::drawLine(const ChartSeries& series)
{
    QStringList corners;
    for (const ChartPoint& point : series.points)
        corners += number(m_x.position(point.x)) + QLatin1Char(',') + number(m_y.position(point.y));
    const Colour colour = colourOf(series);
    m_svg.empty("polyline", {{"points", corners.join(QLatin1Char(' '))},
                             {"fill", "none"},
                             {"class", colour.name},
                             {"stroke", colour.value},
                             {"stroke-width", number(2)}});
}

void Painter::drawPoint(const ChartPoint& point, const ChartSeries& series)
{
    const Colour colour = colourOf(series);
    const double x = m_x.position(point.x);
    const double y = m_y.position(point.y);
    if (point.xError != 0.0)
        line(m_x.position(point.x - point.xError), y, m_x.position(point.x + point.xError), y,
             colour);
    if (point.yError != 0.0)
        line(x, m_y.position(point.y - point.yError), x, m_y.position(point.y + point.yError),
             colour);
    marker(x, y, series);
}

void Painter::drawLegend(const ChartSeries& series, int row)
{
    constexpr double sample = 24;
    constexpr double gap = 8;
    constexpr double baseline = 4;
    const double x = m_area.left();
    const double y = m_area.bottom() + chartMargin + row * legendLine;
    if (series.line)
        line(x, y, x + sample, y, colourOf(series));
    if (series.markers)
        marker(x + sample / 2, y, series);
    text(x + sample + gap, y + baseline, "start", series.name);
}

/** What the charts show, for those who do not see them. */
QString description(const QList<Chart>& charts)
{
    QStringList sentences;
    for (const Chart& chart : charts) {
        QStringList names;
        for (const ChartSeries& series : chart.series)
            names += series.name;
        sentences += QStringLiteral("%1 over %2: %3.")
                         .arg(chart.yLabel, chart.xLabel, names.join(QLatin1String(", ")));
    }
    return sentences.join(QLatin1Char(' '));
}

QString titleOf(const QList<Chart>& charts)
{
    QStringList titles;
    for (const Chart& chart : charts)
        titles += chart.title;
    return titles.join(QLatin1String(", "));
}

} // namespace

void drawCharts(Markup& svg, const QList<Chart>& charts)
{
    constexpr double rightMargin = 30;
    constexpr double gap = 140;
    QRectF area(90, 50, 380, 300);
    const double width = area.left() + double(charts.size()) * (area.width() + gap) - gap;
    int lines = 0;
    for (const Chart& chart : charts)
        lines = std::max(lines, int(chart.series.size()));
    const double height = area.bottom() + chartMargin + lines * legendLine;
    const Element root(
        svg, "svg",
        {{"xmlns", "http://www.w3.org/2000/svg"},
         {"viewBox", QStringLiteral("0 0 %1 %2").arg(width + rightMargin).arg(height)},
         {"role", "img"},
         {"class", "chart"},
         {"font-family", "sans-serif"},
         {"font-size", "13"}});
    svg.element("title", titleOf(charts));
    svg.element("desc", description(charts));
    svg.empty("rect",
              {{"width", "100%"}, {"height", "100%"}, {"class", "paper"}, {"fill", "white"}});
    for (const Chart& chart : charts) {
        Painter(svg, drawable(chart), area).draw();
        area.translate(area.width() + gap, 0);
    }
}
