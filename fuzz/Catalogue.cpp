// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Support.h"

using namespace fuzz;

namespace {

void checkList(const CPLBkgSummaryInfo& catalogue)
{
    QList<CPLSection*> list;
    require(catalogue.getSectionList(list) == eSTATUS_SUCCESS, "the sections can be listed");
    require(checkSections(catalogue) == list.size(), "the list holds every section");
    for (int i = 0; i < list.size(); ++i) {
        QString key;
        list.at(i)->getSectionKey(&key);
        require(list.at(i) == catalogue[i] && catalogue.getSection(key) == list.at(i),
                "the list is in document order");
        require(key.endsWith(QString::number(i + 1)), "sections are numbered from 1");
    }
}

void checkSummary(const QString& path)
{
    CPLBkgSummaryInfo catalogue;
    require(catalogue.load(path) == eSTATUS_SUCCESS, "a summary loads");
    checkList(catalogue);
    const int count = checkSections(catalogue);
    const int inFile = catalogue.getFileSectionCount();
    require(inFile == count || inFile == 0, "the file section count is all or none");
    const QByteArray saved = catalogue.getClickInfoData();
    const CPLBkgSummaryInfo copy(catalogue);
    require(copy.getClickInfoData() == saved, "a copy saves alike");
    checkRoundTrip(saved);
    CPLBkgSummaryInfo again;
    require(again.load(temporaryFile("Again.txt"_s, saved)) == eSTATUS_SUCCESS, "and loads");
    QString number;
    again.getClickNumber(&number);
    // A lone section without a body has no line end that its click number asks for.
    if (count == 0 || number.isEmpty() || !isReadBack(catalogue, saved))
        return;
    require(again.getClickInfoData() == saved, "a saved summary saves alike");
}

void checkIndex(const QString& path, tag_estatus (CPLBkgSummaryInfo::*load)(QString),
                QLatin1String key)
{
    CPLBkgSummaryInfo catalogue;
    require((catalogue.*load)(path) == eSTATUS_SUCCESS, "an index loads");
    checkList(catalogue);
    require(catalogue.getFileSectionCount() == 0, "an index sets no file section count");
    for (int i = 0; const CPLSection* const section = catalogue[i]; ++i)
        require(section->isKeyPresent(key), "a reference holds its key");
    const QString saved = temporaryPath("Saved.txt"_s);
    require(catalogue.save(saved) == eSTATUS_SUCCESS, "an index can be saved");
    require(contentOf(saved) == catalogue.getClickInfoData(), "all of it is saved");
    checkRoundTrip(catalogue.getClickInfoData());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const Input input(data, size);
    const QString path = temporaryFile("Catalogue.txt"_s, input.file);
    checkSummary(path);
    checkIndex(path, &CPLBkgSummaryInfo::SLload, PLKeyword::Key::StructureReference);
    checkIndex(path, &CPLBkgSummaryInfo::FLload, PLKeyword::Key::FluorescentReference);
    return 0;
}
