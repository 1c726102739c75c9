// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * The user label set and the "User Input" section, built alike for acquisitions and sequences.
 */
#ifndef OVPARSER_INTERNAL_LABELSETS_H
#define OVPARSER_INTERNAL_LABELSETS_H

#include "PLKeywords.h"
#include "SectionAccess.h"

namespace ovparser::internal {

/** The universal label set: its sixteen keys with empty values. */
[[nodiscard]] std::unique_ptr<CPLSection> makeUniversalLabelSet();

/**
 * A "User Input" section for a label set: "User ID" and "Display Type" if they are wanted, the
 * labels of a universal set with their values, then the list of the first five labels.
 *
 * @return the status of the first pair that could not be added
 */
[[nodiscard]] tag_estatus makeUserInput(const CPLSection& labelSet, bool userFields,
                                        std::unique_ptr<CPLSection>* userInput);

/**
 * Adds the universal label set to a document that holds no label set.
 *
 * @param find  gives the document's section of a key, null without one
 * @param take  hands a section over to the document and gives the status of that
 */
template <typename Find, typename Take>
tag_estatus appendLabelSet(Find find, Take take)
{
    const bool present = find(PLKeyword::Section::UserLabelNameSet) != nullptr;
    return present ? eSTATUS_SUCCESS : take(makeUniversalLabelSet());
}

/** Adds the label set and the "User Input" section, each where it is missing. */
template <typename Find, typename Take>
tag_estatus appendUserSections(Find find, Take take, bool userFields)
{
    tag_estatus status = appendLabelSet(find, take);
    if (status != eSTATUS_SUCCESS || find(PLKeyword::Section::UserInput))
        return status;
    const CPLSection* const labelSet = find(PLKeyword::Section::UserLabelNameSet);
    if (!labelSet)
        return eSTATUS_SECTION_NOT_FOUND;
    std::unique_ptr<CPLSection> userInput;
    status = makeUserInput(*labelSet, userFields, &userInput);
    return status == eSTATUS_SUCCESS ? take(std::move(userInput)) : status;
}

} // namespace ovparser::internal

#endif
