// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#ifndef OVPARSER_INTERNAL_IMAGESECTIONS_H
#define OVPARSER_INTERNAL_IMAGESECTIONS_H

#include "PLHelpers.h"
#include "PLIASetupInfo.h"
#include "PLSection.h"

#include <memory>

namespace ovparser::internal {

/** How a document holds the images of a type. */
struct ImageKind
{
    tag_eimagetype type = eIMAGE_PHOTOGRAPH;
    QLatin1String section;            ///< the key of their section
    QLatin1String displayType = {};   ///< of an acquisition that starts with one; empty for none
    bool followsReadBiasOnly = false; ///< whether they stand right after the read-bias-only section
};

/** The kind of an image type; null for a type without a section. */
[[nodiscard]] const ImageKind* imageKind(tag_eimagetype type);

/**
 * The section of an image, with its keys in the order in which they are written.
 *
 * @param name      the section's name, the image's file name
 * @param settings  whether the optional settings keys are wanted
 */
[[nodiscard]] std::unique_ptr<CPLSection> makeImageSection(const ImageKind& kind,
                                                           const QString& name,
                                                           const sIASetupInfo& setup,
                                                           bool settings);

/** The section of the corrected image that comes with some images without settings, or null. */
[[nodiscard]] std::unique_ptr<CPLSection>
makeCorrectedCompanion(const ImageKind& kind, const sIASetupInfo& setup, bool settings);

} // namespace ovparser::internal

#endif
