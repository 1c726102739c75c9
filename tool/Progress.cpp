#include "Progress.h"

#include <QtCore/QByteArray>
#include <QtCore/QtGlobal>

#include <cstdio>

#ifdef Q_OS_WIN
#include <io.h>
#else
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

} // namespace

Progress::Progress()
    : m_terminal(isTerminal())
{
    m_timer.start();
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

void Progress::show(double part, int acquisitions, int failures)
{
    constexpr qint64 interval = 200;
    constexpr int width = 30;
    if (!m_terminal || m_timer.elapsed() < interval)
        return;
    m_timer.start();
    const int filled = qBound(0, int(part * width), width);
    const QByteArray bar = QByteArray(filled, '#') + QByteArray(width - filled, ' ');
    std::fprintf(stderr, "\r[%s] %3d %%  %d acquisitions, %d failed\x1b[K", bar.constData(),
                 int(part * 100), acquisitions, failures);
    m_shown = true;
}
