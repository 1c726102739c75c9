// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * What a browse entry shows.
 */
#ifndef OVPARSER_PLBROWSEINFO_H
#define OVPARSER_PLBROWSEINFO_H

#include "PLExport.h"
#include "PLStatus.h"

#include <QtCore/QString>

/** The type of a browse entry, 1 or 2, and the name of the label set that it uses. */
class PARSERLIBRARY_EXPORT CPLBrowseInfo
{
public:
    /** An entry of this type, which is not checked; its label-set name is empty. */
    CPLBrowseInfo(int initialType = 0);

    /** A copy, which shares nothing with the original. */
    CPLBrowseInfo(const CPLBrowseInfo& other);

    /** Becomes a copy of another; nothing is shared. */
    CPLBrowseInfo& operator=(const CPLBrowseInfo& other);
    virtual ~CPLBrowseInfo();

    /**
     * The type of the entry.
     *
     * @return eSTATUS_FAILED when `result` is null
     */
    tag_estatus getType(int* result) const;

    /**
     * Sets the type.
     *
     * @return eSTATUS_INVALID_ARGUMENT unless it is 1 or 2; the old type stays
     */
    tag_estatus setType(int newType);

    /** The name of the label set. */
    [[nodiscard]] QString getLabelSetName() const;

protected:
    /** What getType() gives. */
    qint32 type;
    /** Set by derived classes; the library itself leaves it empty. */
    QString labelSetName;
};

#endif
