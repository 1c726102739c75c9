// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "PLStatus.h"

#include "PLKeywords.h"

namespace {

using PLKeyword::keyword;

struct StatusName
{
    tag_estatus status = eSTATUS_SUCCESS;
    QLatin1String name;
};

constexpr StatusName statusNames[] = {
    {eSTATUS_SUCCESS, keyword("eSTATUS_SUCCESS")},
    {eSTATUS_EXTENSION_LOAD_FAILED, keyword("eSTATUS_EXTENSION_LOAD_FAILED")},
    {eSTATUS_NO_CLICK_NUMBERS, keyword("eSTATUS_NO_CLICK_NUMBERS")},
    {eSTATUS_BAD_FORMAT, keyword("eSTATUS_BAD_FORMAT")},
    {eSTATUS_FILE_READ_FAILED, keyword("eSTATUS_FILE_READ_FAILED")},
    {eSTATUS_FILE_OPEN_FAILED, keyword("eSTATUS_FILE_OPEN_FAILED")},
    {eSTATUS_FILE_NOT_FOUND, keyword("eSTATUS_FILE_NOT_FOUND")},
    {eSTATUS_NULL_ARGUMENT, keyword("eSTATUS_NULL_ARGUMENT")},
    {eSTATUS_INVALID_ARGUMENT, keyword("eSTATUS_INVALID_ARGUMENT")},
    {eSTATUS_BAD_LABEL_FORMAT, keyword("eSTATUS_BAD_LABEL_FORMAT")},
    {eSTATUS_KEY_NOT_FOUND, keyword("eSTATUS_KEY_NOT_FOUND")},
    {eSTATUS_SYSTEM_MISMATCH, keyword("eSTATUS_SYSTEM_MISMATCH")},
    {eSTATUS_EXTENSION_CONFLICT, keyword("eSTATUS_EXTENSION_CONFLICT")},
    {eSTATUS_FAILED, keyword("eSTATUS_FAILED")},
    {eSTATUS_EMPTY_SECTION_KEY, keyword("eSTATUS_EMPTY_SECTION_KEY")},
    {eSTATUS_OUT_OF_MEMORY, keyword("eSTATUS_OUT_OF_MEMORY")},
    {eSTATUS_SECTION_EXISTS, keyword("eSTATUS_SECTION_EXISTS")},
    {eSTATUS_EXTENSION_KEY_MISSING, keyword("eSTATUS_EXTENSION_KEY_MISSING")},
    {eSTATUS_INVALID_VALUE, keyword("eSTATUS_INVALID_VALUE")},
    {eSTATUS_SECTION_NOT_FOUND, keyword("eSTATUS_SECTION_NOT_FOUND")},
    {eSTATUS_UNSUPPORTED_IMAGE_TYPE, keyword("eSTATUS_UNSUPPORTED_IMAGE_TYPE")},
    {eSTATUS_FOLDER_NOT_FOUND, keyword("eSTATUS_FOLDER_NOT_FOUND")},
    {eSTATUS_EMPTY_SEQUENCE, keyword("eSTATUS_EMPTY_SEQUENCE")},
};

} // namespace

QString getStatusString(tag_estatus status)
{
    for (const StatusName& row : statusNames) {
        if (row.status == status)
            return row.name;
    }
    return {};
}
