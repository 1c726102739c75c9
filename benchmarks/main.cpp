#include "Benchmarks.h"

#include <QtCore/QCoreApplication>

#include <cstring>
#include <limits>
#include <string>

#include <malloc.h>

void add(const char* name, const char* contender, void (*run)(benchmark::State&), Sizes sizes)
{
    auto* const benchmark =
        benchmark::RegisterBenchmark((std::string(name) + '/' + contender).c_str(), run);
    benchmark->Arg(sizes.compared);
    if (std::strcmp(contender, library) == 0)
        benchmark->Arg(sizes.other);
}

// Whether the C library gives memory back to the system after a round, and takes it again page by
// page in the next one, depends on what happens to lie behind it. Here it keeps what it has, for
// everybody.
void keepFreedMemory()
{
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
}

int main(int argc, char* argv[])
{
    keepFreedMemory();
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
