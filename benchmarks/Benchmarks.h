// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * The benchmarks: each is a case, a contender and a size, and is named "case/contender/size".
 */
#ifndef OVPARSER_BENCHMARKS_BENCHMARKS_H
#define OVPARSER_BENCHMARKS_BENCHMARKS_H

#include <benchmark/benchmark.h>

/** The size that a case is compared at, and another that is a quarter or four times as large. */
struct Sizes
{
    int compared;
    int other;
};

inline constexpr Sizes smallText = {9, 36};        // sections: 4 KB, 16 KB
inline constexpr Sizes largeText = {43000, 10750}; // sections: 20 MB, 5 MB
inline constexpr Sizes once = {1, 1};
inline constexpr Sizes sequence = {5000, 20000};     // acquisitions, keys
inline constexpr Sizes archive = {5000, 1250};       // acquisitions
inline constexpr Sizes spectralPlot = {20000, 5000}; // values

inline constexpr char library[] = "ovparser";

/** Registers a contender for a case; the library also at the other size. */
void add(const char* name, const char* contender, void (*run)(benchmark::State&), Sizes sizes);

void registerTextBenchmarks();
void registerSequenceBenchmarks();
void registerXmlBenchmarks();
void registerMemoryBenchmarks();

#endif
