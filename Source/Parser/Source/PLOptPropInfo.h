// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * The menus of tissue optical properties and light-source models.
 */
#ifndef OVPARSER_PLOPTPROPINFO_H
#define OVPARSER_PLOPTPROPINFO_H

#include "PLClickInfo.h"

/**
 * The menu names of the tissue property sets and source models in an optical-property settings
 * file. The document's own sections have no part in it. Copies are deep.
 */
class PARSERLIBRARY_EXPORT CPLOptPropInfo : public CPLClickInfo
{
public:
    /** Two empty lists, and a document without sections. */
    CPLOptPropInfo();

    /** A copy, which shares nothing with the original. */
    CPLOptPropInfo(const CPLOptPropInfo& other);

    /** Becomes a copy of another; nothing is shared. */
    CPLOptPropInfo& operator=(const CPLOptPropInfo& other);
    ~CPLOptPropInfo() override;

    /**
     * Replaces both lists by the names in a settings file.
     *
     * The sections "Tissue Properties 1", 2, ... and "Source Model 1", 2, ... count up to the first
     * number that is missing; a section without a menu name is passed over.
     *
     * @return eSTATUS_FILE_OPEN_FAILED when the file cannot be opened, or the status of
     *         loadTextBuffer(); both lists are empty then
     */
    tag_estatus readSettingFile(QString path);

    /** Menu names of the tissue property sets, in section-number order. */
    [[nodiscard]] QStringList getTissuePropList() const;

    /** Menu names of the source models, in section-number order. */
    [[nodiscard]] QStringList getSrcModelList() const;

private:
    QStringList tissuePropList;
    QStringList srcModelList;
};

#endif
