// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "LineDiff.h"

#include "InfoScan.h"
#include "Terminal.h"

namespace {

QList<QByteArray> linesFrom(const QByteArray& bytes, int start)
{
    QList<QByteArray> lines;
    const QByteArray text = ovparser::internal::withoutLoneReturns(bytes.mid(start));
    for (const InfoLine& line : linesOf(latin1View(text)))
        lines += QByteArray(line.text.data(), int(line.text.size()));
    return lines;
}

/** Takes the lines off that two texts begin with in common; gives their number. */
int takeCommonStart(QList<QByteArray>* old, QList<QByteArray>* now)
{
    int count = 0;
    for (; !old->isEmpty() && !now->isEmpty() && old->first() == now->first(); ++count) {
        old->removeFirst();
        now->removeFirst();
    }
    return count;
}

void takeCommonEnd(QList<QByteArray>* old, QList<QByteArray>* now)
{
    while (!old->isEmpty() && !now->isEmpty() && old->last() == now->last()) {
        old->removeLast();
        now->removeLast();
    }
}

/** A range that is empty is told by the line before it. */
QString rangeOf(const QList<QByteArray>& lines, int before)
{
    return QStringLiteral("%1,%2").arg(lines.isEmpty() ? before : before + 1).arg(lines.size());
}

QString marked(char mark, const QList<QByteArray>& lines)
{
    QString text;
    for (const QByteArray& line : lines) {
        QString shown =
            isUtf8(latin1View(line)) ? QString::fromUtf8(line) : QString::fromLatin1(line);
        shown.replace(QLatin1Char('\t'), QLatin1String("  "));
        text += QLatin1Char(mark) + printable(shown) + QLatin1Char('\n');
    }
    return text;
}

} // namespace

QString lineDiff(const QString& file, const QByteArray& before, const QByteArray& after, int start)
{
    QList<QByteArray> old = linesFrom(before, start);
    QList<QByteArray> now = linesFrom(after, start);
    const int common = takeCommonStart(&old, &now);
    takeCommonEnd(&old, &now);
    if (old.isEmpty() && now.isEmpty())
        return {};
    return QStringLiteral("--- %1\n+++ %1\n@@ -%2 +%3 @@\n")
               .arg(printable(file), rangeOf(old, common), rangeOf(now, common)) +
           marked('-', old) + marked('+', now);
}
