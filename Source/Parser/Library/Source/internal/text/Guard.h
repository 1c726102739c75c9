// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * Where a lack of memory becomes a status: no exception leaves the library.
 */
#ifndef OVPARSER_INTERNAL_GUARD_H
#define OVPARSER_INTERNAL_GUARD_H

#include "PLStatus.h"

#include <new>
#include <type_traits>

namespace ovparser::internal {

/**
 * The status of an operation, success when it has none; eSTATUS_OUT_OF_MEMORY when memory runs out.
 */
template <typename Operation>
tag_estatus guarded(Operation operation) noexcept
{
    try {
        if constexpr (std::is_void_v<decltype(operation())>) {
            operation();
            return eSTATUS_SUCCESS;
        } else {
            return operation();
        }
    } catch (const std::bad_alloc&) {
        return eSTATUS_OUT_OF_MEMORY;
    }
}

/** The answer of a query; an empty one (null, false, 0) when memory runs out in it. */
template <typename Query>
auto answerOf(Query query) noexcept -> decltype(query())
{
    try {
        return query();
    } catch (const std::bad_alloc&) {
        return {};
    }
}

/**
 * Gives a status back; throws std::bad_alloc when it says that memory ran out. What the library
 * calls of its own API passes through here wherever a lack of memory would otherwise look like an
 * answer.
 */
inline tag_estatus checked(tag_estatus status)
{
    if (status == eSTATUS_OUT_OF_MEMORY)
        throw std::bad_alloc();
    return status;
}

} // namespace ovparser::internal

#endif
