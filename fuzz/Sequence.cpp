// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Support.h"

using namespace fuzz;

namespace {

constexpr std::initializer_list<tag_estatus> loadFailures = {eSTATUS_NO_CLICK_NUMBERS,
                                                             eSTATUS_EMPTY_SEQUENCE};

QByteArray saved(const CPLSequenceInfo& sequence)
{
    const QString path = temporaryPath("Saved.txt"_s);
    require(sequence.saveFile(path) == eSTATUS_SUCCESS, "a sequence can be saved");
    return contentOf(path);
}

void checkAcquisitions(const CPLSequenceInfo& sequence)
{
    const QStringList numbers = sequence.getClickNumberList();
    const int count = sequence.getNumDatasets();
    require(count == numbers.size(), "the number of acquisitions is that of the click numbers");
    for (int i = 0; i < count; ++i)
        require(sequence.getDatasetPath(i) ==
                    sequence.getSequenceInfoPath() + numbers.at(i) + "/ClickInfo.txt"_s,
                "an acquisition lies in the folder of its click number");
    require(sequence.getDatasetPath(-1).isEmpty() && sequence.getDatasetPath(count).isEmpty(),
            "no acquisition beyond the ends");
}

/**
 * Whether the file is read back as it was written: a section mark inside a text begins another
 * section, a key goes on over line ends up to its ':', and what looks like UTF-8 is taken for it.
 */
bool isSequenceReadBack(const CPLSequenceInfo& sequence, const QByteArray& bytes)
{
    int sections = 0;
    for (; const CPLSection* const section = sequence[sections]; ++sections) {
        QString key;
        section->getSectionKey(&key);
        if (key.contains(u'\n') || key.contains(u'\r') || holdsCommentKey(*section))
            return false;
    }
    return bytes.count(PLKeyword::Text::Marker.data()) == sections &&
           latin1(bytes) == QString::fromUtf8(bytes.constData(), bytes.size());
}

void checkRoundTrip(const CPLSequenceInfo& sequence)
{
    const QByteArray bytes = saved(sequence);
    CPLSequenceInfo again;
    succeeded(again.loadFile(temporaryFile("Again.txt"_s, bytes)), loadFailures);
    checkSections(again);
    if (!isSequenceReadBack(sequence, bytes))
        return;
    const QByteArray second = saved(again);
    CPLSequenceInfo third;
    third.loadFile(temporaryFile("Again.txt"_s, second));
    require(saved(third) == second, "a saved sequence saves alike");
    require(third.getClickNumberList() == again.getClickNumberList(), "click numbers stay");
}

/** One edit of the list: "+NUMBER" or "-NUMBER"; `expected` follows it. */
void edit(CPLSequenceInfo& sequence, const QString& line, QStringList* expected)
{
    const QString number = line.mid(1);
    if (line.startsWith(u'+')) {
        sequence.addClickNumber(number);
        expected->append(number);
    } else if (line.startsWith(u'-')) {
        const bool removed = sequence.removeClickNumber(number);
        require(removed == expected->removeOne(number), "a listed click number can be removed");
        QStringList stored = *expected;
        const CPLSection* const section = sequence[PLKeyword::Section::ClickNumbers];
        if (removed && section != nullptr)
            section->getRawValueList(&stored);
        require(stored == *expected, "the section is numbered anew");
    } else if (line.startsWith(u'=')) {
        sequence.addRestoreResult(number.section(u'|', 0, 0), number.section(u'|', 1));
    }
    require(sequence.getClickNumberList() == *expected, "the list follows the edits");
}

void checkCopies(const CPLSequenceInfo& sequence)
{
    const QByteArray before = saved(sequence);
    CPLSequenceInfo copy(sequence);
    CPLSequenceInfo assigned;
    assigned = copy;
    require(saved(assigned) == before, "a copy saves alike");
    copy.clearSequenceList();
    require(copy.getNumDatasets() == 0, "a cleared list is empty");
    require(saved(sequence) == before, "a copy shares nothing");
    checkAcquisitions(assigned);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const Input input(data, size);
    const QString path = temporaryFile("SequenceInfo.txt"_s, input.file);
    CPLSequenceInfo sequence;
    const bool listed = succeeded(sequence.loadFile(path), loadFailures);
    require(listed == (sequence.getNumDatasets() > 0), "success means click numbers");
    require(sequence.getFileSectionCount() == checkSections(sequence),
            "the file section count is the number of sections");
    CPLSequenceInfo untouched;
    untouched.loadFile(path);
    require(saved(untouched) == saved(sequence), "looking into sections changes nothing");
    checkAcquisitions(sequence);
    checkCopies(sequence);
    checkRoundTrip(sequence);
    QStringList expected = sequence.getClickNumberList();
    const QStringList edits = input.lines("edit");
    for (const QString& line : edits)
        edit(sequence, line, &expected);
    succeeded(sequence.appendUserSpecificSections(true),
              {eSTATUS_INVALID_ARGUMENT, eSTATUS_EMPTY_SECTION_KEY});
    succeeded(sequence.addSequenceNumberSection("4.5"_s), {});
    checkSections(sequence);
    checkAcquisitions(sequence);
    checkRoundTrip(sequence);
    return 0;
}
