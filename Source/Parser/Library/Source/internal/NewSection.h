/**
 * @file
 * How a new section is made and handed to a document.
 */
#ifndef OVPARSER_INTERNAL_NEWSECTION_H
#define OVPARSER_INTERNAL_NEWSECTION_H

#include "InfoText.h"
#include "PLSection.h"
#include "PLStatus.h"

#include <memory>
#include <new>

namespace ovparser::internal {

/** A new section; null when there is no memory for it. */
[[nodiscard]] inline std::unique_ptr<CPLSection> makeSection(const QString& key,
                                                             const QString& name)
{
    return std::unique_ptr<CPLSection>(new (std::nothrow) CPLSection(key, name));
}

/**
 * A section made of a block: its name from the header line, its entries from the rest, which is all
 * that the block is left holding.
 *
 * @param header  the block's first line, cut
 * @return null when there is no memory for it; the block is unchanged then
 */
[[nodiscard]] inline std::unique_ptr<CPLSection> sectionOfBlock(const QString& key, QString& block,
                                                                const ColonCut& header)
{
    auto section = makeSection(key, header.after.toString());
    if (!section)
        return nullptr;
    block.remove(0, int(firstLine(block).size()));
    section->loadSectionData(block);
    return section;
}

/** A copy of a section; null when there is no memory for it. */
[[nodiscard]] inline std::unique_ptr<CPLSection> copyOf(const CPLSection& section)
{
    return std::unique_ptr<CPLSection>(new (std::nothrow) CPLSection(section));
}

/**
 * Adds a section to a document. A section that the document does not take is destroyed.
 *
 * @return the status of the document's addSection()
 */
template <typename Document>
tag_estatus addOrDestroy(Document& document, std::unique_ptr<CPLSection> section)
{
    QString key;
    section->getSectionKey(&key);
    const tag_estatus status = document.addSection(section.get());
    if (document[key] == section.get())
        static_cast<void>(section.release());
    return status;
}

} // namespace ovparser::internal

#endif
