// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * The heap of programs that measure time.
 */
#ifndef OVPARSER_TESTS_HEAP_H
#define OVPARSER_TESTS_HEAP_H

#include <cstdlib>
#include <limits>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace support {

/**
 * Makes the C library keep freed memory. Whether it gives memory back to the system and takes it
 * again page by page depends on what happens to lie after it, and costs more than most work here.
 */
inline void keepFreedMemory()
{
#ifdef __GLIBC__
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
#endif
}

} // namespace support

#endif
