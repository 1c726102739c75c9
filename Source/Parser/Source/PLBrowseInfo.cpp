// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "PLBrowseInfo.h"

#include "PLKeywords.h"

CPLBrowseInfo::CPLBrowseInfo(int initialType)
    : type(initialType)
    , labelSetName(PLKeyword::Value::Empty)
{}

CPLBrowseInfo::CPLBrowseInfo(const CPLBrowseInfo& other) = default;
CPLBrowseInfo& CPLBrowseInfo::operator=(const CPLBrowseInfo& other) = default;
CPLBrowseInfo::~CPLBrowseInfo() = default;

tag_estatus CPLBrowseInfo::getType(int* result) const
{
    if (!result)
        return eSTATUS_FAILED;
    *result = type;
    return eSTATUS_SUCCESS;
}

tag_estatus CPLBrowseInfo::setType(int newType)
{
    if (newType != 1 && newType != 2)
        return eSTATUS_INVALID_ARGUMENT;
    type = newType;
    return eSTATUS_SUCCESS;
}

QString CPLBrowseInfo::getLabelSetName() const
{
    return labelSetName;
}
