// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * Charts drawn as SVG.
 */
#ifndef OVINFO_CHART_H
#define OVINFO_CHART_H

#include "Markup.h"

#include <QtCore/QList>
#include <QtCore/QString>

/** A point and its errors in both directions; an error of 0 has no bar. */
struct ChartPoint
{
    double x = 0.0;
    double y = 0.0;
    double xError = 0.0;
    double yError = 0.0;
};

/** What is drawn in the colour of the text. */
inline constexpr int inkColour = -1;

/** Points that belong together, and how they are drawn. */
struct ChartSeries
{
    QString name;
    int colour = inkColour; ///< the number of a colour and a shape, which repeat
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

/** Draws charts side by side, each with its legend below, as one SVG element. */
void drawCharts(Markup& svg, const QList<Chart>& charts);

#endif
