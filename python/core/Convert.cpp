// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Convert.h"

#include "Files.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>

#include <algorithm>
#include <chrono>
#include <thread>

namespace ovpython {

QString fromPython(PyObject* text)
{
    if (PyUnicode_READY(text) == 0 && PyUnicode_KIND(text) == PyUnicode_1BYTE_KIND)
        return QString::fromLatin1(static_cast<const char*>(PyUnicode_DATA(text)),
                                   int(PyUnicode_GET_LENGTH(text)));
    Py_ssize_t size = 0;
    const char* const utf8 = PyUnicode_AsUTF8AndSize(text, &size);
    if (!utf8)
        throw py::error_already_set();
    return QString::fromUtf8(utf8, int(size));
}

py::str toPython(const QString& text)
{
    const bool hasPairs = std::any_of(text.cbegin(), text.cend(),
                                      [](QChar c) { return QChar::isSurrogate(c.unicode()); });
    // Half a character, which a file may hold, is kept as such.
    PyObject* const unicode =
        hasPairs ? PyUnicode_DecodeUTF16(reinterpret_cast<const char*>(text.utf16()),
                                         Py_ssize_t(text.size()) * 2, "surrogatepass", nullptr)
                 : PyUnicode_FromKindAndData(PyUnicode_2BYTE_KIND, text.utf16(), text.size());
    if (!unicode)
        throw py::error_already_set();
    return py::reinterpret_steal<py::str>(unicode);
}

py::list toPython(const QStringList& texts)
{
    py::list list;
    for (const QString& text : texts)
        list.append(toPython(text));
    return list;
}

py::object toPython(const QJsonValue& value)
{
    if (value.isBool())
        return py::bool_(value.toBool());
    if (value.isDouble())
        return py::float_(value.toDouble());
    if (value.isString())
        return toPython(value.toString());
    if (value.isArray()) {
        py::list list;
        const QJsonArray array = value.toArray();
        for (const QJsonValue& element : array)
            list.append(toPython(element));
        return list;
    }
    if (!value.isObject())
        return py::none();
    py::dict dict;
    const QJsonObject object = value.toObject();
    for (auto member = object.begin(); member != object.end(); ++member)
        dict[toPython(member.key())] = toPython(member.value());
    return dict;
}

namespace {

/** Raises what a function of the package's own module of errors makes. */
template <typename... Arguments>
[[noreturn]] void raiseMade(const char* maker, Arguments... arguments)
{
    const py::object error = py::module_::import("ovparser._errors").attr(maker)(arguments...);
    PyErr_SetObject(reinterpret_cast<PyObject*>(Py_TYPE(error.ptr())), error.ptr());
    throw py::error_already_set();
}

} // namespace

// While Python ends only the thread runs that ends it.
PyThreadState* release()
{
    return _Py_IsFinalizing() ? nullptr : PyEval_SaveThread();
}

// Python ends a thread that comes back too late, in the middle of code that nobody may leave so:
// such a thread stays here until the process ends.
void acquire(PyThreadState* state)
{
    if (!state)
        return;
    try {
        PyEval_RestoreThread(state);
    } catch (...) {
        for (;;)
            std::this_thread::sleep_for(std::chrono::hours(1));
    }
}

void raise(const Failure& failure)
{
    if (failure.path.isNull())
        raiseMade("make_error", int(failure.status), failure.problem);
    raiseMade("make_file_error", int(failure.status), failure.problem, failure.path,
              failure.writing);
}

void check(tag_estatus status)
{
    if (status != eSTATUS_SUCCESS)
        raise({status, QString(), explained(status, QString())});
}

void raiseValueError(const QString& problem)
{
    throw py::value_error(problem.toStdString());
}

void raiseKeyError(const QString& key)
{
    PyErr_SetObject(PyExc_KeyError, toPython(key).ptr());
    throw py::error_already_set();
}

} // namespace ovpython
