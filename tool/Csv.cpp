// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Csv.h"

#include <algorithm>

namespace {

QString quoted(QString cell)
{
    const auto special = [](QChar c) { return c == u'"' || c == u',' || c == u'\n' || c == u'\r'; };
    if (std::none_of(cell.cbegin(), cell.cend(), special))
        return cell;
    cell.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QLatin1Char('"') + cell + QLatin1Char('"');
}

} // namespace

QString csvLine(const QStringList& cells)
{
    QStringList quotedCells;
    for (const QString& cell : cells)
        quotedCells += quoted(cell);
    return quotedCells.join(QLatin1Char(',')) + QLatin1String("\r\n");
}

QString guarded(const QString& cell)
{
    constexpr QChar signs[] = {u'=', u'+', u'-', u'@', u'\t', u'\r', u'\n',
                               // the full-width forms of the first four
                               u'\uFF1D', u'\uFF0B', u'\uFF0D', u'\uFF20'};
    bool isNumber = false;
    cell.toDouble(&isNumber);
    const bool harmless =
        cell.isEmpty() || isNumber ||
        std::find(std::begin(signs), std::end(signs), cell.at(0)) == std::end(signs);
    return harmless ? cell : QLatin1Char('\'') + cell;
}
