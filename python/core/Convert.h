// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * How texts, JSON and failures cross to Python.
 */
#ifndef OVPYTHON_CONVERT_H
#define OVPYTHON_CONVERT_H

#include "PLStatus.h"

#include <pybind11/pybind11.h>

#include <QtCore/QJsonValue>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace ovpython {

namespace py = pybind11;

/** A text of Python; throws UnicodeEncodeError for one that holds half a character. */
QString fromPython(PyObject* text);

py::str toPython(const QString& text);
py::list toPython(const QStringList& texts);

/** The value as None, bool, float, str, list or dict. */
py::object toPython(const QJsonValue& value);

/** What failed: a status, the file that it is about (null when none is), and a sentence. */
struct Failure
{
    tag_estatus status = eSTATUS_FAILED;
    QString path;
    QString problem;
    bool writing = false; ///< whether the file was to be written
};

/** Raises ovparser.Error, in the form for files when there is one. */
[[noreturn]] void raise(const Failure& failure);

/** Raises it for a status other than success. */
void check(tag_estatus status);

/** Lets other threads of Python go on; what is returned is for acquire(). */
[[nodiscard]] PyThreadState* release();

/** Waits until it is this thread's turn again; for ever when Python has begun to end. */
void acquire(PyThreadState* state);

/** Does something while other threads of Python go on. */
template <typename Work>
auto released(Work work)
{
    PyThreadState* const state = release();
    try {
        auto result = work();
        acquire(state);
        return result;
    } catch (const std::exception&) {
        acquire(state);
        throw;
    }
}

/** Raises a ValueError. */
[[noreturn]] void raiseValueError(const QString& problem);

/** Raises a KeyError for a key. */
[[noreturn]] void raiseKeyError(const QString& key);

} // namespace ovpython

namespace pybind11::detail {

template <>
struct type_caster<QString>
{
    PYBIND11_TYPE_CASTER(QString, const_name("str"));

    bool load(handle source, bool /*convert*/)
    {
        if (!PyUnicode_Check(source.ptr()))
            return false;
        value = ovpython::fromPython(source.ptr());
        return true;
    }

    static handle cast(const QString& text, return_value_policy /*policy*/, handle /*parent*/)
    {
        return ovpython::toPython(text).release();
    }
};

template <>
struct type_caster<QStringList>
{
    PYBIND11_TYPE_CASTER(QStringList, const_name("list[str]"));

    bool load(handle source, bool /*convert*/)
    {
        if (!PyList_Check(source.ptr()))
            return false;
        for (const handle item : reinterpret_borrow<list>(source)) {
            if (!PyUnicode_Check(item.ptr()))
                return false;
            value += ovpython::fromPython(item.ptr());
        }
        return true;
    }

    static handle cast(const QStringList& texts, return_value_policy /*policy*/, handle /*parent*/)
    {
        return ovpython::toPython(texts).release();
    }
};

} // namespace pybind11::detail

#endif
