// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * A chart drawn as SVG.
 */
#ifndef OVINFO_CHART_H
#define OVINFO_CHART_H

#include "ParserLibrary.h"

#include <QtCore/QList>
#include <QtCore/QRectF>
#include <QtCore/QString>

#include <initializer_list>
#include <utility>

/** A point and its errors in both directions; an error of 0 has no bar. */
struct ChartPoint
{
    double x = 0.0;
    double y = 0.0;
    double xError = 0.0;
    double yError = 0.0;
};

/** Points that belong together, and how they are drawn. */
struct ChartSeries
{
    QString name;
    QString colour;
    bool line = true;
    bool markers = true;
    QList<ChartPoint> points;
};

struct Chart
{
    QString title;
    QString xLabel;
    QString yLabel;
    QList<ChartSeries> series;
};

/** The height of one line of the legend, in pixels. */
inline constexpr int legendLine = 20;
/** The space that labels, title and the head of the legend need around the axes, in pixels. */
inline constexpr int chartMargin = 70;

/** Writes an empty SVG element. */
void writeShape(CPLXMLWriter& svg, const char* name,
                std::initializer_list<std::pair<const char*, QString>> attributes);

/**
 * Draws a chart.
 *
 * @param svg   inside its root element
 * @param area  where the axes stand, in pixels; the title is above, the legend below
 */
void drawChart(CPLXMLWriter& svg, const Chart& chart, const QRectF& area);

#endif
