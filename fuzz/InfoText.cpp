// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Support.h"

#include <cmath>
#include <memory>

using namespace fuzz;

namespace {

constexpr std::initializer_list<tag_estatus> textFailures = {eSTATUS_BAD_FORMAT,
                                                             eSTATUS_EMPTY_SECTION_KEY};
/** A label set may hold a label without a name, which "User Input" does not take. */
constexpr std::initializer_list<tag_estatus> userFailures = {
    eSTATUS_BAD_FORMAT, eSTATUS_EMPTY_SECTION_KEY, eSTATUS_INVALID_ARGUMENT};

/** What the loaders read of a file: without a byte-order mark, with LF at the line ends. */
QByteArray readText(QByteArray bytes)
{
    const QByteArray mark = "\xEF\xBB\xBF";
    bytes.remove(0, bytes.startsWith(mark) ? mark.size() : 0);
    return bytes.replace("\r\n", "\n").replace('\r', '\n').trimmed();
}

void checkLoaders(const QByteArray& bytes, const QString& path)
{
    CPLClickInfo file;
    CPLClickInfo buffer;
    const tag_estatus status = file.loadClickInfo(path, true);
    succeeded(status, userFailures);
    require(buffer.loadClickInfoDcm(bytes.constData(), int(bytes.size())) == status,
            "file and buffer load with the same status");
    require(buffer.getClickInfoData() == file.getClickInfoData(), "file and buffer load alike");
    CPLClickInfo analyzed;
    CPLClickInfo text;
    const tag_estatus analyzedStatus = analyzed.loadAnalyzedClickInfo(path);
    tag_estatus textStatus = text.loadTextBuffer(latin1(readText(bytes)));
    if (succeeded(textStatus, textFailures))
        textStatus = text.appendUserSpecificSections(false);
    require(textStatus == analyzedStatus, "file and text load with the same status");
    require(text.getClickInfoData() == analyzed.getClickInfoData(), "file and text load alike");
    require(analyzed.getFileSectionCount() == 0, "an analysed file sets no file section count");
}

void checkCopies(const CPLClickInfo& info)
{
    const QByteArray saved = info.getClickInfoData();
    CPLClickInfo copy(info);
    CPLClickInfo assigned;
    assigned.setClickNumber("X"_s);
    assigned = copy;
    require(assigned.getClickInfoData() == saved, "a copy saves alike");
    copy.clearData();
    assigned.appendAnalysisUserInputSection();
    require(info.getClickInfoData() == saved, "a copy shares nothing");
    require(checkSections(copy) == 0, "a cleared document is empty");
}

/** Reads a value without a document, from the file and from a text that ends in NUL. */
void checkSearch(QByteArray bytes, const QString& path, const QString& key)
{
    constexpr int longestLine = 199;
    const CPLClickInfo info;
    QString inFile;
    QString inText;
    const tag_estatus status = info.obtainValueFromClickInfoFile(path, key, &inFile);
    const bool found = succeeded(status, {eSTATUS_KEY_NOT_FOUND});
    require(found != inFile.isNull(), "a value is found or null");
    const tag_estatus textStatus = info.obtainValueFromClickInfoFile(bytes.data(), key, &inText);
    require(succeeded(textStatus, {eSTATUS_KEY_NOT_FOUND}) != inText.isNull(),
            "a value is found in the text or null");
    const auto lines = bytes.split('\n');
    for (const QByteArray& line : lines) {
        if (line.size() > longestLine || line.contains('\0'))
            return;
    }
    require(status == textStatus && inFile == inText, "file and text give the same value");
}

/** Cuts a text into its sections, and makes a section of each. */
void checkSingleSections(const QByteArray& bytes)
{
    QString rest = latin1(bytes);
    QString block;
    QString key;
    for (int length = 0; CPLClickInfo::copySectionBuffer(rest, block, length, &key) == 0;) {
        require(length > 0 && block == rest.left(length), "a section is the start of the text");
        CPLSection* made = nullptr;
        const tag_estatus status = CPLClickInfo::parseSectionFromBuffer(block, key, &made, false);
        const std::unique_ptr<CPLSection> owned(made);
        // A mark inside the header line ends the section before its ':'.
        if (block.section(u'\n', 0, 0).contains(u':'))
            require(status == eSTATUS_SUCCESS && made != nullptr, "a copied section can be read");
        rest.remove(0, length);
    }
    const QString first = getSectionBuffer(rest);
    require(first.isEmpty() || first.startsWith(PLKeyword::Text::Marker), "a section has a mark");
}

void setText(CPLClickInfo& info, const QString& section, const QString& key, const QString& value)
{
    const tag_estatus status = info.setValue(section, key, value);
    QString read;
    if (!succeeded(status, {eSTATUS_SECTION_NOT_FOUND, eSTATUS_KEY_NOT_FOUND}) || key.isEmpty())
        return;
    require(info.getValue(section, key, &read) == eSTATUS_SUCCESS, "a changed value reads");
    require(read.trimmed() == value.section(u'#', 0, 0).trimmed(),
            "a changed value is the new one");
}

void setNumbers(CPLClickInfo& info, const QString& section, const QString& key, double value)
{
    double real = 0;
    if (info.setValue(section, key, value) != eSTATUS_SUCCESS || key.isEmpty())
        return;
    require(info.getValue(section, key, &real) == eSTATUS_SUCCESS, "a changed number reads");
    require(sameNumber(real, value) || std::abs(real - value) <= 1e-6 + std::abs(value) * 1e-12,
            "a changed number is the new one");
    const int number = std::isfinite(value) && std::abs(value) < 1e9 ? int(value) : 0;
    int integer = -1;
    info.setValue(section, key, number);
    info.getValue(section, key, &integer);
    require(integer == number, "a changed integer is the new one");
}

void addSection(CPLClickInfo& info, const QString& title, const QString& name)
{
    auto section = std::make_unique<CPLSection>(title, name);
    const bool present = info.isSectionPresent(title);
    const bool added = succeeded(info.addSection(section.get()), {eSTATUS_EMPTY_SECTION_KEY});
    if (!added || present)
        return;
    require(info[title] == section.get(), "an added section is held");
    static_cast<void>(section.release());
}

void removeSection(CPLClickInfo& info, const QString& key)
{
    int before = 0;
    int after = 0;
    info.getSectionCount(&before);
    const bool present = info.isSectionPresent(key);
    require(info.removeSection(key) == eSTATUS_SUCCESS, "removing succeeds");
    info.getSectionCount(&after);
    require(!info.isSectionPresent(key) && after == before - int(present), "it is removed");
}

void addImage(CPLClickInfo& info, const QString& name, int type, bool settings)
{
    static const sIASetupInfo setup; // holds the time at which it was made
    succeeded(info.addImageSection(name, "user"_s, tag_eimagetype(type), &setup, settings),
              {eSTATUS_UNSUPPORTED_IMAGE_TYPE, eSTATUS_SECTION_EXISTS});
}

/** One edit: "OPERATION|SECTION|KEY|VALUE". */
void edit(CPLClickInfo& info, const QString& line)
{
    const QString section = line.section(u'|', 1, 1);
    const QString key = line.section(u'|', 2, 2);
    const QString value = line.section(u'|', 3);
    CPLSection* const held = info[section];
    switch (line.isEmpty() ? 0 : line.at(0).toLatin1()) {
    case 's':
        return setText(info, section, key, value);
    case 'n':
        return setNumbers(info, section, key, value.toDouble());
    case 'r':
        return removeSection(info, section);
    case 'a':
        return addSection(info, section, key);
    case 'i':
        return addImage(info, section, key.toInt(), value == "1"_s);
    case 'c':
        info.setClickNumber(section);
        succeeded(info.addTiffClickNumberSection(true, true, key), {});
        return;
    case 'k':
        if (held != nullptr)
            succeeded(held->addKeyValue(key, value), {eSTATUS_INVALID_ARGUMENT});
        return;
    case 'm':
        if (held != nullptr)
            held->setSectionName(key);
        return;
    default:
        return;
    }
}

void checkSaving(const CPLClickInfo& info)
{
    const QString path = temporaryFile("Saved.dcm"_s, "image");
    require(info.saveClickInfo(path) == eSTATUS_SUCCESS, "a document can be saved");
    require(contentOf(path) == "image" + info.getClickInfoData(), "a .dcm file grows by the data");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const Input input(data, size);
    const QString path = temporaryFile("ClickInfo.txt"_s, input.file);
    CPLClickInfo info;
    const bool loaded = succeeded(info.loadClickInfo(path, false), textFailures);
    int count = -1;
    info.getSectionCount(&count);
    require(checkSections(info) == count, "the section count is the number of sections");
    require(info.getFileSectionCount() == (loaded ? count : 0), "the file section count agrees");
    checkLoaders(input.file, path);
    checkCopies(info);
    checkSearch(input.file, path, PLKeyword::Key::UserId);
    checkSingleSections(input.file);
    checkRoundTrip(input.file);
    checkSaving(info);
    // Sections that nobody has looked into must behave as those that the checks above have opened.
    CPLClickInfo untouched;
    untouched.loadClickInfo(path, false);
    const CPLClickInfo copy(untouched);
    require(untouched.getClickInfoData() == info.getClickInfoData(), "looking changes nothing");
    const QStringList edits = input.lines("edit");
    if (edits.isEmpty())
        return 0;
    for (const QString& line : edits) {
        edit(info, line);
        edit(untouched, line);
    }
    require(untouched.getClickInfoData() == info.getClickInfoData(), "edits do alike");
    checkSections(untouched);
    checkRoundTrip(untouched.getClickInfoData());
    untouched = copy;
    require(checkSections(untouched) == count, "a copy shares nothing");
    return 0;
}
