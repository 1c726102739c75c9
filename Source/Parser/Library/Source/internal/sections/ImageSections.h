// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * Which section each image type has, and which keys it receives from an acquisition setup.
 */
#ifndef OVPARSER_INTERNAL_IMAGESECTIONS_H
#define OVPARSER_INTERNAL_IMAGESECTIONS_H

#include "PLHelpers.h"
#include "PLIASetupInfo.h"
#include "PLSection.h"

#include <memory>

namespace ovparser::internal {

/** The section key of an image type; an empty string for a type without a section. */
[[nodiscard]] QString imageSectionKey(tag_eimagetype type);

/** Whether sections of the type stand right after the read-bias-only section. */
[[nodiscard]] bool followsReadBiasOnly(tag_eimagetype type);

/**
 * The section of an image, with its keys in the order in which they are written.
 *
 * @param name      the section's name, the image's file name
 * @param setup     the settings of the acquisition
 * @param settings  whether the optional settings keys are wanted
 * @return null for a type without a section
 */
[[nodiscard]] std::unique_ptr<CPLSection> makeImageSection(tag_eimagetype type, const QString& name,
                                                           const sIASetupInfo& setup,
                                                           bool settings);

/**
 * The section of the corrected image that comes with an image whose settings are not given.
 *
 * @return null for an image that comes without
 */
[[nodiscard]] std::unique_ptr<CPLSection>
makeCorrectedCompanion(tag_eimagetype type, const sIASetupInfo& setup, bool settings);

} // namespace ovparser::internal

#endif
