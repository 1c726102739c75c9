// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * Records of the library by the names that their fields have in Python.
 */
#ifndef OVPYTHON_FIELDS_H
#define OVPYTHON_FIELDS_H

#include "Convert.h"

#include <tuple>

namespace ovpython {

/** A field of a record. */
template <typename Record, typename Value>
struct Field
{
    constexpr Field(const char* fieldName, Value Record::*fieldMember)
        : name(fieldName)
        , member(fieldMember)
    {}

    const char* name;
    Value Record::*member;
};

/** Calls a function with each of a tuple of fields. */
template <typename Fields, typename Function>
void forEach(const Fields& fields, Function function)
{
    std::apply([&](const auto&... field) { (function(field), ...); }, fields);
}

/** The fields of a record as a dict. */
template <typename Record, typename Fields>
py::dict dictOf(const Record& record, const Fields& fields)
{
    py::dict dict;
    forEach(fields, [&](const auto& field) { dict[field.name] = py::cast(record.*field.member); });
    return dict;
}

/** The record whose fields are the attributes of an object. */
template <typename Record, typename Fields>
Record recordOf(const py::object& object, const Fields& fields)
{
    Record record;
    forEach(fields, [&](const auto& field) {
        using Value = std::decay_t<decltype(record.*field.member)>;
        try {
            record.*field.member = object.attr(field.name).template cast<Value>();
        } catch (const py::cast_error&) {
            throw py::type_error(std::string(field.name) + " is of another type or too large");
        }
    });
    return record;
}

} // namespace ovpython

#endif
