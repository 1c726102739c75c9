// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Progress.h"

#include <QtCore/QByteArray>
#include <QtCore/QtGlobal>

#include <cstdio>

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <sys/ioctl.h>
#include <unistd.h>
#endif

namespace {

bool isTerminal()
{
#ifdef Q_OS_WIN
    return _isatty(_fileno(stderr)) != 0;
#else
    return isatty(STDERR_FILENO) != 0;
#endif
}

int columnsOfTerminal()
{
    constexpr int usual = 80;
#ifdef Q_OS_WIN
    return usual;
#else
    winsize size = {};
    return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : usual;
#endif
}

QByteArray timeLeft(double seconds)
{
    if (seconds < 90)
        return QByteArray::number(int(seconds)) + " s left";
    const int minutes = int(seconds / 60);
    return minutes < 90 ? QByteArray::number(minutes) + " min left"
                        : QByteArray::number(minutes / 60) + " h left";
}

/** A line with a bar as long as the terminal leaves room for; without a bar where that is short. */
QByteArray lineOf(double part, const QByteArray& counts, const QByteArray& pace, int columns)
{
    constexpr int longest = 30;
    constexpr int shortest = 8;
    const QByteArray percent = QByteArray::number(int(part * 100)).rightJustified(3) + " %  ";
    const auto room = [&](const QByteArray& text) {
        return qMin(longest, columns - 4 - int((percent + text).size()));
    };
    const QByteArray text = percent + (room(counts + pace) < shortest ? counts : counts + pace);
    const int width = room(text.mid(percent.size()));
    if (width < shortest)
        return text.left(columns - 1);
    const int filled = qBound(0, int(part * width), width);
    return '[' + QByteArray(filled, '#') + QByteArray(width - filled, ' ') + "] " + text;
}

} // namespace

Progress::Progress()
    : m_terminal(isTerminal())
{
    m_start.start();
    m_drawn.start();
}

Progress::~Progress()
{
    clear();
}

void Progress::clear()
{
    if (m_shown)
        std::fputs("\r\x1b[K", stderr);
    m_shown = false;
}

void Progress::show(double part, int count, const char* thing, int failures)
{
    constexpr qint64 interval = 200;
    if (!m_terminal || m_drawn.elapsed() < interval)
        return;
    m_drawn.start();
    const double seconds = double(m_start.elapsed()) / 1000;
    const QByteArray counts =
        QByteArray::number(count) + ' ' + thing + "s, " + QByteArray::number(failures) + " failed";
    QByteArray pace = ", " + QByteArray::number(int(count / seconds)) + "/s";
    if (part > 0)
        pace += ", " + timeLeft(seconds * (1 - part) / part);
    std::fprintf(stderr, "\r%s\x1b[K", lineOf(part, counts, pace, columnsOfTerminal()).constData());
    m_shown = true;
}
