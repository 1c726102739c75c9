// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

// The heap that a loaded document holds.

#include "Benchmarks.h"
#include "Documents.h"

#include <malloc.h>

namespace {

double heapInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return double(info.uordblks) + double(info.hblkhd);
}

/** The second visit reads every pair, for those that put work off until then. */
template <typename Document>
void heap(benchmark::State& state)
{
    const TextInput& input = textInput(int(state.range(0)));
    const auto size = double(input.info.size());
    for (auto _ : state) {
        const double before = heapInUse();
        Document document;
        if (!document.load(Document::path(input)))
            return state.SkipWithError("does not load");
        state.counters["heap_loaded"] = (heapInUse() - before) / size;
        benchmark::DoNotOptimize(document.readAll());
        state.counters["heap_read"] = (heapInUse() - before) / size;
    }
}

// Once: what a library keeps for the next document is not there yet.
template <typename Document>
void addHeap(const char* name)
{
    benchmark::RegisterBenchmark(name, heap<Document>)
        ->Arg(largeText.compared)
        ->Iterations(1)
        ->Repetitions(1);
}

} // namespace

void registerMemoryBenchmarks()
{
    addHeap<InfoDocument>("heap/ovparser");
    addHeap<GlibDocument>("heap/GKeyFile");
    addHeap<SettingsDocument>("heap/QSettings");
    addHeap<KConfigDocument>("heap/KConfig");
}
