// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * What people give as names and values: when two are the same, and how they sort.
 */
#ifndef OVINFO_NAMES_H
#define OVINFO_NAMES_H

#include <QtCore/QMap>
#include <QtCore/QSet>
#include <QtCore/QStringList>

/** Values and how often each occurs. */
using Counts = QMap<QString, int>;

/** A value and how often it occurs. */
template <typename Value>
struct Commonest
{
    Value value = {};
    int count = 0;
    bool isAlone = false; ///< whether no other occurs as often

    /** Whether it stands for values that are so many. */
    [[nodiscard]] bool isCommon(int outOf) const { return isAlone && 2 * count >= outOf; }
};

template <typename Value>
Commonest<Value> commonestOf(const QMap<Value, int>& counts)
{
    Commonest<Value> best;
    for (auto row = counts.begin(); row != counts.end(); ++row) {
        if (*row == best.count)
            best.isAlone = false;
        if (*row > best.count)
            best = {row.key(), *row, true};
    }
    return best;
}

/** What spellings of a value have in common: no letter case and no white space. */
QString foldedValue(const QString& value);

/** The same for names, in which white space may tell numbers apart. */
QString foldedName(const QString& name);

/** A text by which names sort as people expect, numbers by their value. */
QString sortKey(const QString& name);

/** The elements of a set in this order. */
QStringList sorted(const QSet<QString>& set);

/** A name, or that the label gives none. */
QString nameOr(const QString& name, const QString& label);

#endif
