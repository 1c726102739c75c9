// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Names.h"

#include <algorithm>

QString foldedValue(const QString& value)
{
    QString result;
    for (const QChar c : value) {
        if (!c.isSpace())
            result += c.toCaseFolded();
    }
    return result;
}

QString foldedName(const QString& name)
{
    return name.simplified().toCaseFolded();
}

QString sortKey(const QString& name)
{
    constexpr int digits = 20;
    QString key;
    for (int i = 0; i < name.size();) {
        int end = i;
        while (end < name.size() && name.at(end) >= u'0' && name.at(end) <= u'9')
            ++end;
        if (end > i)
            key += name.mid(i, end - i).rightJustified(digits, QLatin1Char('0'));
        else
            key += name.at(end++).toCaseFolded();
        i = end;
    }
    return key + QChar(0) + name; // 7 and 007 are two
}

QStringList sorted(const QSet<QString>& set)
{
    QStringList list = set.values();
    std::sort(list.begin(), list.end(),
              [](const QString& a, const QString& b) { return sortKey(a) < sortKey(b); });
    return list;
}

QString nameOr(const QString& name, const QString& label)
{
    return name.isEmpty() ? QStringLiteral("(no %1)").arg(label) : name;
}
