// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

// Sequences, and archives of acquisitions.

#include "Benchmarks.h"
#include "Documents.h"

namespace {

using GlibFile = std::unique_ptr<GKeyFile, decltype(&g_key_file_free)>;
using GlibString = std::unique_ptr<char, decltype(&g_free)>;
using GlibStrings = std::unique_ptr<char*, decltype(&g_strfreev)>;

const char group[] = "ClickNumbers";

GlibFile newFile()
{
    return {g_key_file_new(), &g_key_file_free};
}

GlibFile loadedFile(const char* path)
{
    GlibFile file = newFile();
    g_key_file_load_from_file(file.get(), path, G_KEY_FILE_KEEP_COMMENTS, nullptr);
    return file;
}

GlibString valueOf(const GlibFile& file, const char* section, const char* key)
{
    return {g_key_file_get_string(file.get(), section, key, nullptr), &g_free};
}

std::vector<std::string> clickNumbersOf(const GlibFile& file)
{
    std::vector<std::string> numbers;
    gsize count = 0;
    const GlibStrings keys(g_key_file_get_keys(file.get(), group, &count, nullptr), &g_strfreev);
    numbers.reserve(count);
    for (gsize i = 0; i < count; ++i)
        numbers.emplace_back(valueOf(file, group, keys.get()[i]).get());
    return numbers;
}

bool holds(const QStringList& numbers, const SequenceInput& input)
{
    return std::equal(numbers.begin(), numbers.end(), input.clickNumbers.begin(),
                      input.clickNumbers.end(),
                      [](const QString& a, const Text& b) { return a == b.string; });
}

bool holds(const std::vector<std::string>& numbers, const SequenceInput& input)
{
    return std::equal(numbers.begin(), numbers.end(), input.clickNumbers.begin(),
                      input.clickNumbers.end(),
                      [](const std::string& a, const Text& b) { return a == b.utf8.constData(); });
}

QStringList loadSequence(const SequenceInput& input)
{
    CPLSequenceInfo sequence;
    sequence.loadFile(input.infoPath.string);
    return sequence.getClickNumberList();
}

std::vector<std::string> loadSequenceGlib(const SequenceInput& input)
{
    return clickNumbersOf(loadedFile(input.iniPath.utf8));
}

QStringList makeSequence(const SequenceInput& input)
{
    CPLSequenceInfo sequence;
    sequence.addSection(new CPLSection(PLKeyword::Section::ClickNumbers, QString()));
    for (const Text& clickNumber : input.clickNumbers)
        sequence.addClickNumber(clickNumber.string);
    const CPLSection* const section = sequence[PLKeyword::Section::ClickNumbers];
    return section->count() == sequence.getNumDatasets() ? sequence.getClickNumberList()
                                                         : QStringList();
}

std::vector<std::string> makeSequenceGlib(const SequenceInput& input)
{
    const GlibFile file = newFile();
    std::vector<std::string> numbers;
    for (const Text& clickNumber : input.clickNumbers) {
        numbers.emplace_back(clickNumber.utf8.constData());
        const std::string key = "ClickNumber " + std::to_string(numbers.size());
        g_key_file_set_string(file.get(), group, key.c_str(), clickNumber.utf8);
    }
    return numbers;
}

/** Runs a function of an input, and makes sure of its first result. */
template <typename Result>
void measure(benchmark::State& state, const SequenceInput& input,
             Result (*run)(const SequenceInput&))
{
    if (!holds(run(input), input))
        return state.SkipWithError("does not give the click numbers");
    for (auto _ : state)
        benchmark::DoNotOptimize(run(input));
}

template <auto run>
void onSequence(benchmark::State& state)
{
    measure(state, sequenceInput(int(state.range(0))), run);
}

/** The value that is looked for in every acquisition. */
const Pair& wanted()
{
    return textInput(smallText.compared).pairs.at(smallText.compared * 7);
}

int matchesInArchive(const SequenceInput& input)
{
    const Pair& pair = wanted();
    int matches = 0;
    CPLSequenceInfo sequence;
    sequence.loadFile(input.infoPath.string);
    for (int i = 0; i < sequence.getNumDatasets(); ++i) {
        CPLClickInfo acquisition;
        QString value;
        acquisition.loadClickInfo(sequence.getDatasetPath(i), false);
        acquisition.getValue(pair.section.string, pair.key.string, &value);
        matches += value == pair.value.string ? 1 : 0;
    }
    return matches;
}

int matchesInArchiveGlib(const SequenceInput& input)
{
    const Pair& pair = wanted();
    const QByteArray folder = temporaryPath({}).toUtf8();
    int matches = 0;
    for (const std::string& number : clickNumbersOf(loadedFile(input.iniPath.utf8))) {
        const GlibString path(
            g_build_filename(folder.data(), number.c_str(), "ClickInfo.ini", nullptr), &g_free);
        const GlibString value = valueOf(loadedFile(path.get()), pair.section.utf8, pair.key.utf8);
        matches += value && std::strcmp(value.get(), pair.value.utf8) == 0 ? 1 : 0;
    }
    return matches;
}

template <int (*run)(const SequenceInput&)>
void onArchive(benchmark::State& state)
{
    const SequenceInput& input = archiveInput(int(state.range(0)));
    for (auto _ : state) {
        if (run(input) != input.clickNumbers.size())
            return state.SkipWithError("does not find the value in every acquisition");
    }
}

} // namespace

void registerSequenceBenchmarks()
{
    add("sequence", library, onSequence<loadSequence>, sequence);
    add("sequence", "GKeyFile", onSequence<loadSequenceGlib>, sequence);
    add("append", library, onSequence<makeSequence>, sequence);
    add("append", "GKeyFile", onSequence<makeSequenceGlib>, sequence);
    add("archive", library, onArchive<matchesInArchive>, archive);
    add("archive", "GKeyFile", onArchive<matchesInArchiveGlib>, archive);
}
