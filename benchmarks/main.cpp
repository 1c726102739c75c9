// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Benchmarks.h"
#include "support/Heap.h"

#include <QtCore/QCoreApplication>

#include <cstring>
#include <string>

void add(const char* name, const char* contender, void (*run)(benchmark::State&), Sizes sizes)
{
    auto* const benchmark =
        benchmark::RegisterBenchmark((std::string(name) + '/' + contender).c_str(), run);
    benchmark->Arg(sizes.compared);
    if (std::strcmp(contender, library) == 0 && sizes.other != sizes.compared)
        benchmark->Arg(sizes.other);
}

int main(int argc, char* argv[])
{
    support::keepFreedMemory();
    const QCoreApplication application(argc, argv);
    registerTextBenchmarks();
    registerSequenceBenchmarks();
    registerXmlBenchmarks();
    registerMemoryBenchmarks();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
