// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * Lets a long run end in good order when it is interrupted.
 */
#ifndef OVINFO_INTERRUPT_H
#define OVINFO_INTERRUPT_H

/** Catches the first SIGINT or SIGTERM of a run; a second one ends the program at once. */
class Interrupt
{
public:
    Interrupt();
    Interrupt(const Interrupt&) = delete;
    Interrupt& operator=(const Interrupt&) = delete;

    /** Gives a signal that was caught its usual effect: it ends the program. */
    ~Interrupt();

    /** Whether a signal was caught. */
    [[nodiscard]] static bool isAsked();
};

#endif
