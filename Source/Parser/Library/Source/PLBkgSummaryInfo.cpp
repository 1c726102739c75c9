// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "PLBkgSummaryInfo.h"

#include "PLKeywords.h"
#include "internal/sections/SectionAccess.h"
#include "internal/text/InfoText.h"
#include "internal/text/TextFile.h"

using namespace ovparser::internal;

namespace Key = PLKeyword::Key;
namespace Section = PLKeyword::Section;

namespace {

QString withLeadingZeros(const QString& time)
{
    const QChar separator = QLatin1Char(':');
    QStringList parts = time.split(separator);
    for (QString& part : parts) {
        if (part.size() == 1)
            part.prepend(QLatin1Char('0'));
    }
    return parts.join(separator);
}

void normaliseTime(CPLSection& section)
{
    QString time;
    if (checked(section.getValue(Key::Time, &time)) == eSTATUS_SUCCESS)
        checked(section.setValue(Key::Time, withLeadingZeros(time)));
}

void addIndexPairs(CPLSection& section, const QString& pairs)
{
    const QStringList pieces = pairs.split(QLatin1Char(';'));
    for (const QString& piece : pieces) {
        const auto colon = piece.indexOf(QLatin1Char(':'));
        if (colon >= 0)
            addPair(section, piece.left(colon), piece.mid(colon + 1));
    }
}

} // namespace

CPLBkgSummaryInfo::CPLBkgSummaryInfo() = default;
CPLBkgSummaryInfo::CPLBkgSummaryInfo(const CPLBkgSummaryInfo& other) = default;
CPLBkgSummaryInfo& CPLBkgSummaryInfo::operator=(const CPLBkgSummaryInfo& other) = default;
CPLBkgSummaryInfo::~CPLBkgSummaryInfo() = default;

tag_estatus CPLBkgSummaryInfo::loadSectionData(QString& block, QString sectionKey)
{
    return guarded([&] {
        const SourceText text(block);
        const ColonCut header = cutAtColon(firstLine(text.view()));
        if (header.kind != ColonCut::Pair)
            return eSTATUS_BAD_FORMAT;
        auto section = makeSection(sectionKey, text, header);
        block.remove(0, int(firstLine(text.view()).size()));
        return take(std::move(section));
    });
}

tag_estatus CPLBkgSummaryInfo::addSection(CPLSection* section)
{
    return CPLClickInfo::addSection(section);
}

tag_estatus CPLBkgSummaryInfo::removeSection(QString sectionKey)
{
    CPLClickInfo::removeSection(std::move(sectionKey));
    return eSTATUS_SUCCESS;
}

tag_estatus CPLBkgSummaryInfo::loadTextBuffer(const QString& text)
{
    return guarded([&] {
        const SourceText latin1(text.toLatin1());
        BlockReader blocks(trimmed(latin1.view()));
        int number = 0;
        tag_estatus status = eSTATUS_SUCCESS;
        for (QLatin1String block; status == eSTATUS_SUCCESS && blocks.next(&block);)
            status = loadBlock(latin1, block, ++number);
        return status;
    });
}

tag_estatus CPLBkgSummaryInfo::loadBlock(const SourceText& text, QLatin1String block, int number)
{
    const auto key = headerKey(firstLine(block));
    if (!key)
        return eSTATUS_BAD_FORMAT;
    // Untrimmed: a header line without a body keeps the line end that the click number asks for.
    if (QString(*key).contains(Section::BackgroundClick, Qt::CaseInsensitive)) {
        clickNumber = clickNumberOf(text, block).value_or(clickNumber);
        if (clickNumber.isEmpty())
            return eSTATUS_EMPTY_SECTION_KEY;
    }
    const QString sectionKey = Section::BackgroundClick + QString::number(number);
    const CPLSection* const held = find(sectionKey);
    QString ownBlock = trimmed(block);
    const tag_estatus status = loadSectionData(ownBlock, sectionKey);
    CPLSection* const section = find(sectionKey);
    if (status == eSTATUS_SUCCESS && section && section != held)
        normaliseTime(*section);
    return status;
}

tag_estatus CPLBkgSummaryInfo::load(QString path)
{
    return guarded([&] {
        QString text;
        const tag_estatus read = readInfoText(path, &text);
        if (read != eSTATUS_SUCCESS)
            return read;
        clearData();
        checked(loadClickInfoText(text));
        return eSTATUS_SUCCESS;
    });
}

tag_estatus CPLBkgSummaryInfo::SLload(QString path)
{
    return guarded([&] { return loadIndex(path, Key::StructureReference); });
}

tag_estatus CPLBkgSummaryInfo::FLload(QString path)
{
    return guarded([&] { return loadIndex(path, Key::FluorescentReference); });
}

tag_estatus CPLBkgSummaryInfo::loadIndex(const QString& path, const QString& referenceKey)
{
    QByteArray text;
    const tag_estatus read = readInfoText(path, &text);
    if (read != eSTATUS_SUCCESS)
        return read;
    clearData();
    text = withLineFeeds(text);
    LineReader lines(latin1View(text));
    for (QLatin1String line; lines.next(&line);) {
        const auto pairs = afterMarker(line);
        if (!pairs)
            break;
        addReference(*pairs, referenceKey);
    }
    return eSTATUS_SUCCESS;
}

void CPLBkgSummaryInfo::addReference(const QString& pairs, const QString& referenceKey)
{
    const QString sectionKey = referenceKey + QString::number(sectionCount + 1);
    auto section = std::make_unique<CPLSection>(sectionKey, PLKeyword::Value::Empty);
    addIndexPairs(*section, pairs);
    QString name;
    if (checked(section->getValue(referenceKey, &name)) != eSTATUS_SUCCESS)
        return;
    checked(section->setSectionName(name));
    take(std::move(section));
}

tag_estatus CPLBkgSummaryInfo::save(QString path) const
{
    saveClickInfo(path);
    return eSTATUS_SUCCESS;
}

CPLSection* CPLBkgSummaryInfo::getSection(const QString& sectionKey) const
{
    return (*this)[sectionKey];
}

tag_estatus CPLBkgSummaryInfo::getSectionList(QList<CPLSection*>& list) const
{
    list.clear();
    return guarded([&] {
        for (const QString& key : sectionKeys) {
            if (CPLSection* const section = find(key))
                list.append(section);
        }
        return eSTATUS_SUCCESS;
    });
}
