// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

// Sequences, archives of acquisitions, and what is made in memory.

#include "Benchmarks.h"
#include "Documents.h"

#include <map>

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

/** Keys that are not in the order of the alphabet, as those of an image section are not. */
const QVector<Text>& keys(int count)
{
    static std::map<int, QVector<Text>> known;
    QVector<Text>& keys = known[count];
    for (int i = int(keys.size()); i < count; ++i)
        keys.append(QStringLiteral("Setting %1").arg((i * 7919) % count));
    return keys;
}

void makeSection(benchmark::State& state)
{
    const QVector<Text>& all = keys(int(state.range(0)));
    const QString value = QStringLiteral("Yes");
    for (auto _ : state) {
        CPLSection section;
        for (const Text& key : all)
            section.addKeyValue(key.string, value);
        if (section.count() != all.size())
            return state.SkipWithError("does not hold every key");
    }
}

void makeSectionGlib(benchmark::State& state)
{
    const QVector<Text>& all = keys(int(state.range(0)));
    for (auto _ : state) {
        const GlibFile file = newFile();
        for (const Text& key : all)
            g_key_file_set_string(file.get(), group, key.utf8, "Yes");
        gsize count = 0;
        const GlibStrings held(g_key_file_get_keys(file.get(), group, &count, nullptr),
                               &g_strfreev);
        if (int(count) != all.size())
            return state.SkipWithError("does not hold every key");
    }
}

void buildAcquisition(CPLClickInfo& acquisition)
{
    sIASetupInfo setup;
    setup.acquisitionTime = 1755000000;
    const QString user = QStringLiteral("ABC");
    acquisition.setClickNumber(QStringLiteral("ABC20250812141005"));
    acquisition.addTiffClickNumberSection(true, true, QStringLiteral("4.8.4"));
    acquisition.addTiffUserSection(eIMAGE_LUMINESCENT, user);
    for (const tag_eimagetype type : {eIMAGE_PHOTOGRAPH, eIMAGE_LUMINESCENT})
        acquisition.addTiffImageSection(QStringLiteral("image.TIF"), type, &setup, true);
    acquisition.appendUserSpecificSections(true);
}

/** Makes an acquisition out of its settings, and its text. */
void build(benchmark::State& state)
{
    for (auto _ : state) {
        CPLClickInfo acquisition;
        buildAcquisition(acquisition);
        benchmark::DoNotOptimize(acquisition.getClickInfoData());
    }
}

QVector<Pair> acquisitionPairs()
{
    CPLClickInfo acquisition;
    buildAcquisition(acquisition);
    QVector<Pair> pairs;
    int count = 0;
    acquisition.getSectionCount(&count);
    for (int i = 0; i < count; ++i) {
        const CPLSection* const section = acquisition[i];
        QString name;
        section->getSectionKey(&name);
        for (int pair = 0; pair < section->count(); ++pair) {
            QString key;
            section->getKey(pair, &key);
            pairs.append({name, key, (*section)[pair]});
        }
    }
    return pairs;
}

/** Makes a file of the same pairs, whose texts are there already, and its text. */
void buildGlib(benchmark::State& state)
{
    const QVector<Pair> pairs = acquisitionPairs();
    for (auto _ : state) {
        const GlibFile file = newFile();
        for (const Pair& pair : pairs)
            g_key_file_set_string(file.get(), pair.section.utf8, pair.key.utf8, pair.value.utf8);
        benchmark::DoNotOptimize(
            GlibString(g_key_file_to_data(file.get(), nullptr, nullptr), &g_free));
    }
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
    add("section", library, makeSection, sequence);
    add("section", "GKeyFile", makeSectionGlib, sequence);
    add("build", library, build, once);
    add("build", "GKeyFile", buildGlib, once);
    add("archive", library, onArchive<matchesInArchive>, archive);
    add("archive", "GKeyFile", onArchive<matchesInArchiveGlib>, archive);
}
