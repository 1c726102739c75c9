// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Interrupt.h"

#include <csignal>
#include <cstdio>

namespace {

volatile std::sig_atomic_t caught = 0;

extern "C" void catchSignal(int number)
{
    std::signal(number, SIG_DFL);
    caught = number;
}

} // namespace

Interrupt::Interrupt()
{
    std::signal(SIGINT, catchSignal);
    std::signal(SIGTERM, catchSignal);
}

Interrupt::~Interrupt()
{
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
    if (caught == 0)
        return;
    std::fflush(stdout);
    std::raise(caught);
}

bool Interrupt::isAsked()
{
    return caught != 0;
}
