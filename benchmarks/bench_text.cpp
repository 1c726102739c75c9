// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

// Info texts: loading, looking up, changing and saving.

#include "Benchmarks.h"
#include "Documents.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>

namespace {

/** The first, middle and last value of an input. */
template <typename Visit>
void forThree(const TextInput& input, Visit visit)
{
    const int last = input.pairs.size() - 1;
    for (const int place : {0, last / 2, last})
        visit(input.pairs.at(place));
}

qint64 characters(const TextInput& input, int sections)
{
    // The names: "luminescent", six digits, ".TIF".
    qint64 sum = qint64(sections) * 21;
    for (const Pair& pair : input.pairs)
        sum += pair.value.string.size();
    return sum;
}

/** Whether a document gives every value of an input. */
template <typename Document>
bool holdsAll(const Document& document, const TextInput& input)
{
    return std::all_of(input.pairs.begin(), input.pairs.end(), [&](const Pair& pair) {
        const auto value = document.value(pair.section, pair.key);
        return Document::toString(value) == pair.value.string;
    });
}

/** Loads an input; once per contender and input, makes sure that nothing is missing. */
template <typename Document>
bool loadsRight(const TextInput& input)
{
    static std::map<const TextInput*, bool> known;
    const auto found = known.find(&input);
    if (found != known.end())
        return found->second;
    Document document;
    const bool right = document.load(Document::path(input)) && holdsAll(document, input);
    known.emplace(&input, right);
    return right;
}

/** QSettings does not read a file again that looks the same. */
void beforeLoading(benchmark::State& state, const Text& path)
{
    state.PauseTiming();
    touch(path);
    state.ResumeTiming();
}

template <typename Document>
void load(benchmark::State& state)
{
    const TextInput& input = textInput(int(state.range(0)));
    if (!loadsRight<Document>(input))
        return state.SkipWithError("does not give what the file holds");
    for (auto _ : state) {
        beforeLoading(state, Document::path(input));
        Document document;
        document.load(Document::path(input));
        forThree(input, [&](const Pair& pair) {
            benchmark::DoNotOptimize(document.value(pair.section, pair.key));
        });
    }
}

template <typename Document>
void readAll(benchmark::State& state)
{
    const TextInput& input = textInput(int(state.range(0)));
    const qint64 expected = characters(input, int(state.range(0)));
    if (!loadsRight<Document>(input))
        return state.SkipWithError("does not give what the file holds");
    for (auto _ : state) {
        beforeLoading(state, Document::path(input));
        Document document;
        document.load(Document::path(input));
        if (document.readAll() != expected)
            return state.SkipWithError("does not read every pair");
    }
}

/** Counts the characters without keeping them: what reading takes at least. */
void streamAllInih(benchmark::State& state)
{
    const TextInput& input = textInput(int(state.range(0)));
    const qint64 expected = characters(input, int(state.range(0)));
    const auto add = [](void* sum, const char*, const char*, const char* value) {
        *static_cast<qint64*>(sum) += qint64(std::strlen(value));
        return 1;
    };
    for (auto _ : state) {
        qint64 sum = 0;
        ini_parse(input.iniPath.utf8, add, &sum);
        if (sum != expected)
            return state.SkipWithError("does not read every pair");
    }
}

/** What reading takes physically: the file into warm memory, and one look at every byte. */
void readAndScan(benchmark::State& state)
{
    const TextInput& input = textInput(int(state.range(0)));
    std::string buffer(std::size_t(input.info.size()), '\0');
    const auto lines = input.info.count('\n');
    for (auto _ : state) {
        std::FILE* const file = std::fopen(input.infoPath.utf8, "rb");
        std::setbuf(file, nullptr);
        const std::size_t size = std::fread(buffer.data(), 1, buffer.size(), file);
        std::fclose(file);
        const char* const end = buffer.data() + size;
        int count = 0;
        for (const char* at = buffer.data(); at != end; ++count)
            at = static_cast<const char*>(std::memchr(at, '\n', std::size_t(end - at))) + 1;
        if (count != lines)
            return state.SkipWithError("does not read every line");
    }
}

/** Whether a file holds a changed value, and all others as they were. */
template <typename Document>
bool savedRight(const Text& path, TextInput input, const Pair& changed)
{
    for (Pair& pair : input.pairs) {
        if (pair.section.string == changed.section.string && pair.key.string == changed.key.string)
            pair.value = changed.value;
    }
    Document document;
    const bool commentsKept = readBytes(path.string).count('#') == input.ini.count('#');
    return document.load(path) && holdsAll(document, input) &&
           commentsKept == Document::keepsComments;
}

template <typename Document>
void changeAndSave(benchmark::State& state)
{
    const TextInput& input = textInput(int(state.range(0)));
    const QByteArray original = readBytes(Document::path(input).string);
    const Text path = temporaryPath(QStringLiteral("changed.ini"));
    const Pair& last = input.pairs.constLast();
    const Pair changed = {last.section, last.key, QStringLiteral("No Error at all")};
    bool saved = true;
    for (auto _ : state) {
        state.PauseTiming(); // each time the first save of the same file
        writeBytes(path.string, original);
        touch(path);
        state.ResumeTiming();
        Document document;
        saved = document.load(path) && document.set(changed.section, changed.key, changed.value) &&
                document.save(path) && saved;
    }
    static std::map<const TextInput*, bool> known;
    if (known.find(&input) == known.end())
        known.emplace(&input, savedRight<Document>(path, input, changed));
    if (!saved || !known.at(&input))
        state.SkipWithError("does not save what was changed");
}

/** A pair of an input, another one each time, in no order that a cache could follow. */
const Pair& nextPair(const TextInput& input, int* place)
{
    constexpr int stride = 61;
    *place = (*place + stride) % input.pairs.size();
    return input.pairs.at(*place);
}

template <typename Document>
void lookUp(benchmark::State& state)
{
    const TextInput& input = textInput(int(state.range(0)));
    Document document;
    if (!document.load(Document::path(input)) || !loadsRight<Document>(input))
        return state.SkipWithError("does not give what the file holds");
    int place = 0;
    for (auto _ : state) {
        const Pair& pair = nextPair(input, &place);
        benchmark::DoNotOptimize(document.value(pair.section, pair.key));
    }
}

template <typename Document>
void set(benchmark::State& state)
{
    const TextInput& input = textInput(int(state.range(0)));
    const Text values[] = {QStringLiteral("changed"), QStringLiteral("set again")};
    // Some save on their own in the end: not into the input.
    const Text path = temporaryPath(QStringLiteral("set.ini"));
    writeBytes(path.string, readBytes(Document::path(input).string));
    touch(path);
    Document document;
    document.load(path);
    int place = 0;
    int round = 0;
    bool done = true;
    for (auto _ : state) {
        const Pair& pair = nextPair(input, &place);
        round += place == 0 ? 1 : 0; // every pair has had its turn; each gets another value
        done = document.set(pair.section, pair.key, values[round % 2]) && done;
    }
    const Pair& pair = input.pairs.at(place);
    const QString value = Document::toString(document.value(pair.section, pair.key));
    if (!done || value != values[round % 2].string)
        state.SkipWithError("does not hold what was set");
}

// The key of a last line, which no other line holds.
const char lastKey[] = "Closing remark";
const char lastLine[] = "Closing remark:\tdone\r\n";

/** A copy of an input with one line more. */
const Text& pathWithLastLine(int sections)
{
    static std::map<int, Text> paths;
    const auto found = paths.find(sections);
    if (found != paths.end())
        return found->second;
    const Text path = temporaryPath(QStringLiteral("remark%1.txt").arg(sections));
    writeBytes(path.string, textInput(sections).info.trimmed() + "\r\n" + lastLine);
    return paths.emplace(sections, path).first->second;
}

void oneValue(benchmark::State& state)
{
    const Text& path = pathWithLastLine(int(state.range(0)));
    const QString key = QString::fromLatin1(lastKey);
    const CPLClickInfo document;
    for (auto _ : state) {
        QString value;
        document.obtainValueFromClickInfoFile(path.string, key, &value);
        if (value != QLatin1String("done"))
            return state.SkipWithError("does not find the value");
    }
}

/** The text after `key` and ':' in the first line that holds them, without a CR LF. */
std::string findWithStdio(const char* path, const std::string& key)
{
    const std::string searched = key + ':';
    std::string value;
    std::FILE* const file = std::fopen(path, "rb");
    char* line = nullptr;
    std::size_t capacity = 0;
    while (getline(&line, &capacity, file) >= 0) {
        const char* const found = *line == '#' ? nullptr : strcasestr(line, searched.c_str());
        if (found == nullptr)
            continue;
        const char* const start = found + searched.size();
        const char* const text = start + std::strspn(start, " \t");
        value.assign(text, std::strcspn(text, "\r\n"));
        break;
    }
    std::free(line);
    std::fclose(file);
    return value;
}

void oneValueStdio(benchmark::State& state)
{
    const Text& path = pathWithLastLine(int(state.range(0)));
    for (auto _ : state) {
        if (findWithStdio(path.utf8, lastKey) != "done")
            return state.SkipWithError("does not find the value");
    }
}

template <typename Document>
void addLoading(const char* contender)
{
    add("load-small", contender, load<Document>, smallText);
    add("load-large", contender, load<Document>, largeText);
}

template <typename Document>
void addSaving(const char* contender)
{
    add("save-small", contender, changeAndSave<Document>, smallText);
    add("save-large", contender, changeAndSave<Document>, largeText);
}

} // namespace

void registerTextBenchmarks()
{
    add("load-small", "read and memchr", readAndScan, smallText);
    add("load-large", "read and memchr", readAndScan, largeText);
    addLoading<InfoDocument>(library);
    addLoading<GlibDocument>("GKeyFile");
    addLoading<SettingsDocument>("QSettings");
    addLoading<KConfigDocument>("KConfig");
    addLoading<InihDocument>("inih");

    addSaving<InfoDocument>(library);
    addSaving<GlibDocument>("GKeyFile");
    addSaving<GlibAtomicDocument>("GKeyFile, second file");
    addSaving<SettingsDocument>("QSettings");
    addSaving<KConfigDocument>("KConfig");

    add("read", library, readAll<InfoDocument>, largeText);
    add("read", "GKeyFile", readAll<GlibDocument>, largeText);
    add("read", "QSettings", readAll<SettingsDocument>, largeText);
    add("read", "KConfig", readAll<KConfigDocument>, largeText);
    add("read", "inih, nothing kept", streamAllInih, largeText);

    add("value-small", library, oneValue, smallText);
    add("value-small", "getline", oneValueStdio, smallText);
    add("value-large", library, oneValue, largeText);
    add("value-large", "getline", oneValueStdio, largeText);

    add("get", library, lookUp<InfoDocument>, smallText);
    add("get", "GKeyFile", lookUp<GlibDocument>, smallText);
    add("get", "QSettings", lookUp<SettingsDocument>, smallText);
    add("get", "KConfig", lookUp<KConfigDocument>, smallText);
    add("get", "inih", lookUp<InihDocument>, smallText);
    add("set", library, set<InfoDocument>, smallText);
    add("set", "GKeyFile", set<GlibDocument>, smallText);
    add("set", "QSettings", set<SettingsDocument>, smallText);
    add("set", "KConfig", set<KConfigDocument>, smallText);
}
