/**
 * @file
 * Which section each image type has, and which keys it receives from an acquisition setup.
 */
#ifndef OVPARSER_INTERNAL_IMAGESECTIONS_H
#define OVPARSER_INTERNAL_IMAGESECTIONS_H

#include "PLHelpers.h"
#include "PLIASetupInfo.h"
#include "PLSection.h"

namespace ovparser::internal {

/** The section key of an image type; an empty string for a type without a section. */
[[nodiscard]] QString imageSectionKey(tag_eimagetype type);

/** Whether sections of the type stand right behind the read-bias-only section. */
[[nodiscard]] bool followsReadBiasOnly(tag_eimagetype type);

/** Whether the image comes with a corrected image of its own when its settings are not given. */
[[nodiscard]] bool hasCorrectedCompanion(tag_eimagetype type);

/**
 * Adds the keys of an image to its section, in the order in which they are written.
 *
 * @param section   the image's section
 * @param type      an image type that has a section
 * @param setup     the settings of the acquisition
 * @param settings  whether the optional settings keys are wanted
 */
void addImageKeys(CPLSection& section, tag_eimagetype type, const sIASetupInfo& setup,
                  bool settings);

} // namespace ovparser::internal

#endif
