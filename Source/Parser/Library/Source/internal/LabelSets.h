/**
 * @file
 * The user label set and the "User Input" section, built alike for acquisitions and sequences.
 */
#ifndef OVPARSER_INTERNAL_LABELSETS_H
#define OVPARSER_INTERNAL_LABELSETS_H

#include "NewSection.h"
#include "PLKeywords.h"

namespace ovparser::internal {

/** The universal label set: its sixteen keys with empty values; null without memory. */
[[nodiscard]] std::unique_ptr<CPLSection> makeUniversalLabelSet();

/**
 * A "User Input" section for a label set: the labels of a universal set with their values, then
 * the list of the first five labels.
 *
 * @param userFields  whether "User ID" and "Display Type" come first
 * @param userInput   receives the section
 * @return eSTATUS_OUT_OF_MEMORY, or the status of the first pair that could not be added
 */
[[nodiscard]] tag_estatus makeUserInput(const CPLSection& labelSet, bool userFields,
                                        std::unique_ptr<CPLSection>* userInput);

/** Adds the universal label set to a document that holds no label set. */
template <typename Document>
tag_estatus appendLabelSet(Document& document)
{
    if (document.isSectionPresent(PLKeyword::Section::UserLabelNameSet))
        return eSTATUS_SUCCESS;
    auto labelSet = makeUniversalLabelSet();
    return labelSet ? addOrDestroy(document, std::move(labelSet)) : eSTATUS_OUT_OF_MEMORY;
}

/** Adds the label set and the "User Input" section, each where it is missing. */
template <typename Document>
tag_estatus appendUserSections(Document& document, bool userFields)
{
    tag_estatus status = appendLabelSet(document);
    if (status != eSTATUS_SUCCESS || document.isSectionPresent(PLKeyword::Section::UserInput))
        return status;
    const CPLSection* const labelSet = document[PLKeyword::Section::UserLabelNameSet];
    if (!labelSet)
        return eSTATUS_SECTION_NOT_FOUND;
    std::unique_ptr<CPLSection> userInput;
    status = makeUserInput(*labelSet, userFields, &userInput);
    return status == eSTATUS_SUCCESS ? addOrDestroy(document, std::move(userInput)) : status;
}

} // namespace ovparser::internal

#endif
