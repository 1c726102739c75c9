// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "PLInfoItem.h"

#include <cstdlib>
#include <cstring>

namespace {

char* duplicate(const char* string)
{
    if (!string)
        return nullptr;
    const std::size_t size = std::strlen(string) + 1;
    void* const memory = std::malloc(size);
    return memory ? static_cast<char*>(std::memcpy(memory, string, size)) : nullptr;
}

} // namespace

void CPLInfoItem::Free::operator()(char* string) const
{
    std::free(string);
}

CPLInfoItem::CPLInfoItem() = default;

CPLInfoItem::CPLInfoItem(char* string)
    : text(string)
{}

CPLInfoItem::CPLInfoItem(const CPLInfoItem& other)
    : text(duplicate(other.text.get()))
{}

CPLInfoItem& CPLInfoItem::operator=(const CPLInfoItem& other)
{
    if (this != &other)
        text.reset(duplicate(other.text.get()));
    return *this;
}

tag_estatus CPLInfoItem::operator=(char* string)
{
    return SetString(string);
}

CPLInfoItem::~CPLInfoItem() = default;

tag_estatus CPLInfoItem::GetString(char** string) const
{
    if (!string)
        return eSTATUS_NULL_ARGUMENT;
    if (!text)
        return eSTATUS_FAILED;
    *string = text.get();
    return eSTATUS_SUCCESS;
}

tag_estatus CPLInfoItem::SetString(char* string)
{
    if (!string)
        return eSTATUS_FAILED;
    if (string != text.get())
        text.reset(string);
    return eSTATUS_SUCCESS;
}
