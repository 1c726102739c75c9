// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * An owned C string.
 */
#ifndef OVPARSER_PLINFOITEM_H
#define OVPARSER_PLINFOITEM_H

#include "PLExport.h"
#include "PLStatus.h"

#include <memory>

/**
 * A C string from malloc() that the item owns and releases with free(), or none.
 *
 * A failing operation changes neither the item nor its output argument.
 */
class PARSERLIBRARY_EXPORT CPLInfoItem
{
public:
    /** An item without text. */
    CPLInfoItem();

    /**
     * An item that takes over a text.
     *
     * @param string  from malloc(), ending in NUL; null makes an item without text
     */
    CPLInfoItem(char* string);

    /** The copy has its own duplicate of the text; none when there is no memory for it. */
    CPLInfoItem(const CPLInfoItem& other);

    /** The item gets a duplicate of the text of another; its own is released. */
    CPLInfoItem& operator=(const CPLInfoItem& other);

    /** The same as SetString(). */
    tag_estatus operator=(char* string);

    virtual ~CPLInfoItem();

    /**
     * Gives the item's own text.
     *
     * @param string  receives the text, borrowed and valid until the item gets another
     * @return eSTATUS_NULL_ARGUMENT when `string` is null, eSTATUS_FAILED when there is no text
     */
    tag_estatus GetString(char** string) const;

    /**
     * Releases the text and takes over another one.
     *
     * @param string  from malloc(), ending in NUL
     * @return eSTATUS_FAILED when it is null; the old text stays
     */
    tag_estatus SetString(char* string);

private:
    struct Free
    {
        void operator()(char* string) const;
    };

    std::unique_ptr<char, Free> text;
};

#endif
