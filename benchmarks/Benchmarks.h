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
    int other = 0; ///< 0 without one

    [[nodiscard]] constexpr Sizes nominal() const { return {compared}; }
};

inline constexpr Sizes smallText = {8, 32};          // sections: 4 KB, 16 KB
inline constexpr Sizes largeText = {40000, 10000};   // sections: 20 MB, 5 MB
inline constexpr Sizes sequence = {5000, 20000};     // acquisitions
inline constexpr Sizes archive = {5000, 1250};       // acquisitions
inline constexpr Sizes spectralPlot = {20000, 5000}; // values

/** Registers the benchmark of one contender for a case. */
void add(const char* name, const char* contender, void (*run)(benchmark::State&), Sizes sizes);

void registerTextBenchmarks();
void registerSequenceBenchmarks();
void registerXmlBenchmarks();
void registerMemoryBenchmarks();

#endif
