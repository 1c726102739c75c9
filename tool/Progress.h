// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * A progress bar on the standard error, shown only when that is a terminal.
 */
#ifndef OVINFO_PROGRESS_H
#define OVINFO_PROGRESS_H

#include <QtCore/QElapsedTimer>

class Progress
{
public:
    Progress();

    /** Takes the bar off the screen, so that something else can be printed. */
    ~Progress();
    void clear();

    /**
     * Draws the bar anew, a few times a second at most, with the rate and the time that is left.
     * It takes one line of the terminal, however narrow that is.
     *
     * @param part   from 0 to 1
     * @param thing  what is counted, e.g. "acquisition"
     */
    void show(double part, int count, const char* thing, int failures);

private:
    bool m_terminal;
    bool m_shown = false;
    QElapsedTimer m_start;
    QElapsedTimer m_drawn;
};

#endif
