// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Terminal.h"

#include "Files.h"

#include <QtCore/QJsonDocument>

#include <algorithm>
#include <cstdio>

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <sys/ioctl.h>
#include <unistd.h>
#endif

namespace {

/** Whether a character is of C0 or C1, or DEL. */
bool isControl(QChar c)
{
    return c.unicode() < 0x20 || (c.unicode() >= 0x7F && c.unicode() < 0xA0);
}

/** The text with each of these characters spelled out, e.g. as "\\u" and four digits. */
template <typename Select>
QString spelled(const QString& text, Select isSelected, const char* prefix, int digits)
{
    if (std::none_of(text.cbegin(), text.cend(), isSelected))
        return text;
    QString result;
    for (const QChar c : text) {
        const QString code = QString::number(c.unicode(), 16);
        result += isSelected(c)
                      ? QLatin1String(prefix) + code.rightJustified(digits, QLatin1Char('0'))
                      : QString(c);
    }
    return result;
}

/** The columns of the terminal that shows the output, within reason; 79 for none. */
int outputWidth()
{
    constexpr int narrowest = 40;
    constexpr int widest = 79;
#ifdef Q_OS_WIN
    return widest;
#else
    winsize size = {};
    const bool known = ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return known ? qBound(narrowest, int(size.ws_col) - 1, widest) : widest;
#endif
}

/** JSON spells the characters of C0 itself. */
QString textOf(const QJsonObject& object, QJsonDocument::JsonFormat format)
{
    const auto isLeft = [](QChar c) { return c.unicode() >= 0x7F && isControl(c); };
    return spelled(QString::fromUtf8(QJsonDocument(object).toJson(format)), isLeft, "\\u", 4);
}

void write(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, std::size_t(bytes.size()), stdout);
}

} // namespace

QString printable(const QString& text)
{
    return spelled(text, isControl, "\\x", 2);
}

void print(const QString& text)
{
    const auto isSpelled = [](QChar c) { return c != u'\n' && isControl(c); };
    write(spelled(text, isSpelled, "\\x", 2));
}

bool showsOutput()
{
#ifdef Q_OS_WIN
    return _isatty(_fileno(stdout)) != 0;
#else
    return isatty(STDOUT_FILENO) != 0;
#endif
}

void printExact(const QString& text)
{
    if (!showsOutput())
        return write(text);
    const auto isSpelled = [](QChar c) { return c != u'\n' && c != u'\t' && isControl(c); };
    const QString lines = QString(text).replace(QLatin1String("\r\n"), QLatin1String("\n"));
    write(spelled(lines, isSpelled, "\\x", 2));
}

ExitCode fail(ExitCode code, const QString& message)
{
    const QByteArray bytes = "ovinfo: " + printable(message).toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, std::size_t(bytes.size()), stderr);
    return code;
}

ExitCode fail(const QString& file, const QString& problem)
{
    return fail(BadFile, file + QLatin1String(": ") + problem);
}

ExitCode fail(const QString& file, tag_estatus status)
{
    return fail(file, explained(status, file));
}

void print(const QJsonObject& object)
{
    printExact(textOf(object, QJsonDocument::Indented));
}

void printJsonLine(const QJsonObject& object)
{
    printExact(jsonLine(object));
}

QString jsonLine(const QJsonObject& object)
{
    return textOf(object, QJsonDocument::Compact) + QLatin1Char('\n');
}

QString columns(const QList<QStringList>& rows)
{
    QList<QStringList> cells;
    QList<int> widths;
    for (const QStringList& row : rows) {
        QStringList line;
        for (const QString& cell : row) {
            line += printable(cell);
            if (line.size() > widths.size())
                widths.append(0);
            int& width = widths[int(line.size()) - 1];
            width = qMax(width, int(line.last().size()));
        }
        cells += line;
    }
    QString text;
    for (const QStringList& row : qAsConst(cells)) {
        QString line;
        for (int i = 0; i < row.size(); ++i)
            line += row.at(i).leftJustified(widths.at(i) + 2);
        while (line.endsWith(QLatin1Char(' ')))
            line.chop(1);
        text += line + QLatin1Char('\n');
    }
    return text;
}

QString wrapped(const QStringList& words, int indent)
{
    const int width = outputWidth();
    QString text;
    QString line;
    for (const QString& word : words) {
        if (!line.isEmpty() && line.size() + 1 + word.size() > width) {
            text += line + QLatin1Char('\n');
            line = QString(indent, QLatin1Char(' ')) + word;
        } else {
            line += line.isEmpty() ? word : QLatin1Char(' ') + word;
        }
    }
    return text + line + QLatin1Char('\n');
}

QString described(const QList<QStringList>& rows)
{
    int width = 0;
    for (const QStringList& row : rows)
        width = qMax(width, int(row.at(0).size()));
    QString text;
    for (const QStringList& row : rows) {
        // The blank between words is the second one between name and description.
        const QString name = QLatin1String("  ") + row.at(0).leftJustified(width + 1);
        text += wrapped(QStringList(name) + row.at(1).split(QLatin1Char(' ')), width + 4);
    }
    return text;
}

QString counted(int count, const char* thing)
{
    const QString text = QString::number(count) + QLatin1Char(' ') + QLatin1String(thing);
    return count == 1 ? text : text + QLatin1Char('s');
}
