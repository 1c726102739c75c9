// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Info.h"
#include "Loading.h"
#include "Module.h"
#include "Setup.h"

#include "internal/text/InfoText.h"
#include "internal/text/NumberFormat.h"

#include <cmath>

namespace ovpython {

namespace {

/** The C++ object of one that only this module makes. */
template <typename Type>
Type& objectOf(PyObject* self)
{
    return *reinterpret_cast<py::detail::instance*>(self)
                ->get_value_and_holder()
                .template value_ptr<Type>();
}

/** Calls a function for Python itself, which takes no exception of C++. */
template <typename Result, typename Function>
Result guardedSlot(Result failed, Function function) noexcept
{
    try {
        return function();
    } catch (py::error_already_set& error) {
        error.restore();
    } catch (const py::builtin_exception& error) {
        error.set_error();
    } catch (const std::bad_alloc&) {
        PyErr_NoMemory();
    } catch (const std::exception& error) {
        PyErr_SetString(PyExc_RuntimeError, error.what());
    }
    return failed;
}

/** A key; what is no text, or half a character, is none. */
QString keyOf(PyObject* key)
{
    if (PyUnicode_Check(key) && PyUnicode_AsUTF8AndSize(key, nullptr))
        return fromPython(key);
    PyErr_SetObject(PyExc_KeyError, key);
    throw py::error_already_set();
}

/** What is assigned to a key, as text. */
QString assignedText(const py::handle& value)
{
    PyObject* const object = value.ptr();
    if (PyUnicode_Check(object))
        return fromPython(object);
    if (PyBool_Check(object))
        return QString::number(object == Py_True ? 1 : 0);
    if (PyIndex_Check(object)) {
        PyObject* const whole = PyNumber_Index(object);
        if (!whole)
            throw py::error_already_set();
        return fromPython(py::str(py::reinterpret_steal<py::object>(whole)).ptr());
    }
    if (!PyFloat_Check(object) && !py::hasattr(value, "__float__"))
        throw py::type_error(
            "a value is a str, int, float or bool, not " +
            py::str(py::type::handle_of(value).attr("__name__")).cast<std::string>());
    const double number = PyFloat_AsDouble(object);
    if (number == -1 && PyErr_Occurred())
        throw py::error_already_set();
    if (!std::isfinite(number))
        raiseValueError(QStringLiteral("a file cannot hold a number that is not finite"));
    return ovparser::internal::fixedText(number);
}

Assignments assignmentsOf(const py::object& mapping)
{
    Assignments values;
    for (const py::handle item : mapping.attr("items")()) {
        const auto pair = item.cast<std::pair<py::object, py::object>>();
        if (!PyUnicode_Check(pair.first.ptr()))
            throw py::type_error("a key is a str");
        values.emplace_back(fromPython(pair.first.ptr()), assignedText(pair.second));
    }
    return values;
}

PyObject* sectionAt(PyObject* self, PyObject* key)
{
    return guardedSlot<PyObject*>(nullptr, [&] {
        Info& info = objectOf<Info>(self);
        const QString name = keyOf(key);
        if (!info.find(name))
            raiseKeyError(name);
        return py::cast(Section{info.shared_from_this(), name}).release().ptr();
    });
}

PyObject* valueAt(PyObject* self, PyObject* key)
{
    return guardedSlot<PyObject*>(nullptr, [&] {
        const CPLSection& section = objectOf<Section>(self).get();
        return toPython(value(section, keyOf(key))).release().ptr();
    });
}

// The text of a value is made before the section is looked up: that may run code of Python.
int setValueAt(PyObject* self, PyObject* key, PyObject* newValue)
{
    return guardedSlot(-1, [&] {
        if (!newValue) {
            const QString name = keyOf(key);
            CPLSection& section = objectOf<Section>(self).get();
            rawValue(section, name); // raises a KeyError when there is none
            removeKeys(&section, {name.toLower()});
            return 0;
        }
        if (!PyUnicode_Check(key))
            throw py::type_error("a key is a str");
        const Assignments values = {{fromPython(key), assignedText(newValue)}};
        assign(&objectOf<Section>(self).get(), values);
        return 0;
    });
}

int removeSectionAt(PyObject* self, PyObject* key, PyObject* newValue)
{
    return guardedSlot(-1, [&] {
        if (newValue)
            throw py::type_error("sections are set by set_section()");
        objectOf<Info>(self).remove(keyOf(key));
        return 0;
    });
}

Py_ssize_t sectionLength(PyObject* self)
{
    return guardedSlot<Py_ssize_t>(
        -1, [&] { return Py_ssize_t(keysOf(objectOf<Section>(self).get()).size()); });
}

PyObject* refuse(PyTypeObject* type, PyObject* /*arguments*/, PyObject* /*keywords*/)
{
    PyErr_Format(PyExc_TypeError, "cannot create '%s' instances", type->tp_name);
    return nullptr;
}

py::custom_type_setup mappingOf(binaryfunc get, objobjargproc set, lenfunc length)
{
    return py::custom_type_setup([=](PyHeapTypeObject* type) {
        type->ht_type.tp_new = refuse;
        type->as_mapping.mp_subscript = get;
        type->as_mapping.mp_ass_subscript = set;
        type->as_mapping.mp_length = length;
    });
}

QString spelledKey(const Section& handle)
{
    QString key;
    handle.get().getSectionKey(&key);
    return key;
}

QString nameOf(const Section& handle)
{
    QString name;
    handle.get().getSectionName(&name, false);
    return name;
}

/** A comment with its '#'; nothing when there is none. */
std::optional<QString> commentIn(const QString& raw)
{
    const auto sign = raw.indexOf(QLatin1Char('#'));
    return sign < 0 ? std::nullopt : std::optional(raw.mid(sign));
}

double realAt(const Section& handle, const QString& key)
{
    const QString text = value(handle.get(), key);
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    if (!isNumber)
        raiseValueError(QStringLiteral("'%1' of '%2' is no number").arg(text, key));
    return number;
}

qlonglong wholeAt(const Section& handle, const QString& key)
{
    const QString text = value(handle.get(), key);
    bool isNumber = false;
    const qlonglong number = text.toLongLong(&isNumber);
    if (!isNumber)
        raiseValueError(QStringLiteral("'%1' of '%2' is no whole number").arg(text, key));
    return number;
}

/** Replaces the pairs of a section, or adds one. */
void setSection(Info& info, const QString& key, const py::object& mapping)
{
    const Assignments values = assignmentsOf(mapping);
    if (CPLSection* const held = info.find(key)) {
        replacePairs(held, values);
        return;
    }
    checkSectionKey(key);
    auto section = std::make_unique<CPLSection>(key, QString());
    assign(section.get(), values);
    info.add(std::move(section));
}

/** Makes a section a copy of another, name and comments included. */
void copySection(Info& info, const QString& key, const Section& other)
{
    auto copy = copyOf(other.get(), key);
    if (CPLSection* const section = info.find(key)) {
        copy->setSectionKey(spelledKey({info.shared_from_this(), key}));
        *section = *copy;
    } else {
        checkSectionKey(key);
        info.add(std::move(copy));
    }
    info.follow(key);
}

py::list sectionsOf(const Info& info)
{
    py::list sections;
    for (int i = 0; const CPLSection* const section = info.at(i); ++i) {
        QString key;
        section->getSectionKey(&key);
        sections.append(py::make_tuple(key, textOf(*section)));
    }
    return sections;
}

QString clickNumberOf(const Info& info)
{
    QString number;
    info.asClickInfo().getClickNumber(&number);
    return number;
}

void setClickNumber(const Info& info, const QString& number)
{
    checkText(number);
    check(info.asClickInfo().setClickNumber(number));
    if (CPLSection* const section = info.find(PLKeyword::Section::ClickNumber))
        rename(section, number);
}

void setSequenceName(const Info& info, const QString& name)
{
    checkText(name);
    info.asSequence().setSeqDatasetName(name);
    if (CPLSection* const section = info.find(PLKeyword::Section::Sequence))
        rename(section, name);
}

/** Everything that a document holds, as Python can keep it. */
py::tuple stateOf(const Info& info)
{
    if (const CPLSequenceInfo* const sequence = info.sequence())
        return py::make_tuple(true, sequence->getDatasetName(), info.clickNumbers(),
                              sequence->getSequenceInfoPath(), sectionsOf(info));
    return py::make_tuple(false, clickNumberOf(info), info.preamble(), info.hidesHeader,
                          sectionsOf(info));
}

InfoPointer infoFrom(const py::tuple& state)
{
    const bool isSequence = state[0].cast<bool>();
    InfoPointer info = isSequence ? newSequence() : newInfo();
    const auto text = state[1].cast<QString>();
    const auto lines = state[2].cast<QStringList>();
    if (isSequence) {
        info->sequence()->setSeqDatasetName(text);
        info->sequence()->setSequenceInfoPath(state[3].cast<QString>());
    } else {
        info->setPreamble(lines);
        info->hidesHeader = state[3].cast<bool>();
    }
    for (const py::handle item : state[4]) {
        const auto [key, section] = item.cast<std::pair<QString, QString>>();
        info->add(sectionOf(key, section));
    }
    if (!isSequence)
        info->clickInfo()->loadClickNumber(text, QString());
    return info;
}

void checkClickNumber(const QString& number)
{
    checkText(number);
    const bool isReadBack = !number.isEmpty() && ovparser::internal::trimmed(number) == number &&
                            !number.contains(QLatin1Char('#'));
    if (!isReadBack)
        raiseValueError(QStringLiteral("'%1' is no click number").arg(number));
}

/** Makes the click numbers these, in their section, which is added when it is missing. */
void setClickNumbers(Info& info, const QStringList& numbers)
{
    static_cast<void>(info.asSequence()); // raises a TypeError
    for (const QString& number : numbers)
        checkClickNumber(number);
    const QString key = PLKeyword::Section::ClickNumbers;
    if (!info.find(key))
        info.add(std::make_unique<CPLSection>(key, QString()));
    CPLSection& section = *info.find(key);
    section.clearKeyValuePairs();
    for (int i = 0; i < numbers.size(); ++i)
        check(section.addKeyValue(PLKeyword::Key::ClickNumberPrefix + QString::number(i + 1),
                                  numbers.at(i)));
}

CPLSettingsFileWrapper settingsOf(const Info& info)
{
    CPLSettingsFileWrapper settings;
    QList<CPLSection*> sections;
    for (int i = 0; CPLSection* const section = info.at(i); ++i)
        sections += section;
    check(settings.initFromSections(sections));
    return settings;
}

QString settingWithMenuName(const Info& info, const QString& menuName)
{
    const CPLSettingsFileWrapper settings = settingsOf(info);
    const CPLSection* const section = settings.getSectionByMenuName(menuName);
    if (!section)
        raiseKeyError(menuName);
    QString key;
    section->getSectionKey(&key);
    return key;
}

/** The label sets in a file: their names, and their labels. */
std::vector<std::pair<QString, QStringList>> labelSetsOf(const Info& info)
{
    std::vector<std::pair<QString, QStringList>> sets;
    for (int i = 0; const CPLSection* const section = info.at(i); ++i) {
        CPLLabelDataSet set;
        if (set.loadData(textOf(*section).remove(QLatin1Char('\r'))) != eSTATUS_SUCCESS)
            continue;
        QString name;
        QStringList labels;
        set.getLabelName(&name);
        set.getLabelData(&labels);
        labels.removeAll(QString()); // of the empty line after the section
        sets.emplace_back(name, labels);
    }
    return sets;
}

void addImage(const Info& info, const QString& path, int type, const py::object& settings,
              const std::optional<QString>& userId, bool withSettings)
{
    const sIASetupInfo setup = setupOf(settings);
    checkText(path);
    checkText(userId.value_or(QString()));
    CPLClickInfo& document = info.asClickInfo();
    const auto imageType = tag_eimagetype(type);
    check(userId ? document.addImageSection(path, *userId, imageType, &setup, withSettings)
                 : document.addTiffImageSection(path, imageType, &setup, withSettings));
}

void addClickNumber(const Info& info, bool acquired, bool inSequence, const QString& version)
{
    checkText(version);
    check(info.asClickInfo().addTiffClickNumberSection(acquired, inSequence, version));
}

void addUser(const Info& info, int type, const QString& userId)
{
    checkText(userId);
    check(info.asClickInfo().addTiffUserSection(tag_eimagetype(type), userId));
}

void addSequence(const Info& info, const QString& version)
{
    checkText(version);
    check(info.asSequence().addSequenceNumberSection(version));
}

/** Takes all pairs out of a section; comment lines stay. */
void clearSection(const Section& handle)
{
    CPLSection& section = handle.get();
    QSet<QString> keys;
    const QStringList spelled = keysOf(section);
    for (const QString& key : spelled)
        keys.insert(key.toLower());
    removeKeys(&section, keys);
}

void setSectionName(const Section& handle, const QString& name)
{
    rename(&handle.get(), name);
    handle.info->follow(handle.key);
}

/**
 * No attribute of the classes can be set from now on, the class of an object included: an object of
 * one that passed for one of another would be taken for what it is not.
 */
void seal(const py::args& classes)
{
    for (const py::handle sealed : classes)
        reinterpret_cast<PyTypeObject*>(sealed.ptr())->tp_flags |= Py_TPFLAGS_IMMUTABLETYPE;
}

void defineSection(py::module_& module)
{
    py::class_<Section>(
        module, "Section", mappingOf(valueAt, setValueAt, sectionLength),
        "A section of a document: a mapping of keys to texts, in the order of the file.\n\n"
        "Letter case of keys is ignored. Each use looks the section up in its document, which it\n"
        "keeps alive; when the document holds no such section any more, that is a KeyError.")
        .def("__iter__", [](const Section& self) { return py::iter(toPython(keysOf(self.get()))); })
        .def(
            "raw",
            [](const Section& self, const QString& key) { return rawValue(self.get(), key); },
            py::arg("key"), "The value as it is stored, with its comment.")
        .def(
            "comment",
            [](const Section& self, const QString& key) {
                return commentIn(rawValue(self.get(), key));
            },
            py::arg("key"), "The comment of a value, from its '#' on; None when it has none.")
        .def("float", &realAt, py::arg("key"),
             "The value as a number; a text that is none is a ValueError.")
        .def("int", &wholeAt, py::arg("key"),
             "The value as a whole number; a text that is none is a ValueError.")
        .def_property_readonly("key", &spelledKey, "The key of the section, as it is spelled.")
        .def("clear", &clearSection, "Takes all keys out; comment lines stay.")
        .def_property("name", &nameOf, &setSectionName,
                      "The text after the ':' of the header line, without its comment. A new name\n"
                      "keeps the old comment unless it brings its own.");
}

} // namespace

py::custom_type_setup madeHereOnly()
{
    return py::custom_type_setup([](PyHeapTypeObject* type) { type->ht_type.tp_new = refuse; });
}

void defineInfo(py::module_& module)
{
    py::class_<Info, InfoPointer>(module, "Info", mappingOf(sectionAt, removeSectionAt, nullptr),
                                  "The sections of a document.")
        .def("count", &Info::count)
        .def("keys", &Info::keys)
        .def("set_section", &setSection, py::arg("key"), py::arg("mapping"))
        .def("copy_section", &copySection, py::arg("key"), py::arg("section"))
        .def("clear", &Info::clear)
        .def("swap", &Info::swap, py::arg("other"))
        .def("copy", [](const Info& self) { return std::make_shared<Info>(self); })
        .def("state", &stateOf)
        .def("bytes",
             [](const Info& self) {
                 const QByteArray bytes = self.bytes();
                 return py::bytes(bytes.constData(), std::size_t(bytes.size()));
             })
        .def("save", &save, py::arg("path"))
        .def_property_readonly("preamble", &Info::preamble)
        .def_property("click_number", &clickNumberOf, &setClickNumber)
        .def("add_image", &addImage, py::arg("path"), py::arg("image_type"), py::arg("setup"),
             py::arg("user_id"), py::arg("settings"))
        .def("add_click_number", &addClickNumber, py::arg("acquired"), py::arg("in_sequence"),
             py::arg("version"))
        .def("add_user", &addUser, py::arg("image_type"), py::arg("user_id"))
        .def_property(
            "name", [](const Info& self) { return self.asSequence().getDatasetName(); },
            &setSequenceName)
        .def("add_sequence", &addSequence, py::arg("version"))
        .def_property("click_numbers", &Info::clickNumbers, &setClickNumbers)
        .def_property_readonly(
            "folder", [](const Info& self) { return self.asSequence().getSequenceInfoPath(); })
        .def("menu_names", [](const Info& self) { return settingsOf(self).getMenuNames(); })
        .def("setting_with_menu_name", &settingWithMenuName, py::arg("menu_name"))
        .def("label_sets", &labelSetsOf);
    defineSection(module);

    module.def("opened_by_kind", &openedByKind, py::arg("path"));
    module.def("new_info", &newInfo);
    module.def("new_sequence", &newSequence);
    module.def("load_info", &loadInfo, py::arg("path"));
    module.def("load_dicom", &loadDicom, py::arg("path"));
    module.def("load_sequence", &loadSequence, py::arg("path"));
    module.def("load_catalogue", &loadCatalogue, py::arg("path"));
    module.def("load_key_lines", &loadKeyLines, py::arg("path"));
    module.def("load_camera", &loadCamera, py::arg("path"));
    module.def("load_optical", &loadOptical, py::arg("path"));
    module.def("info_of", &infoOf, py::arg("data"));
    module.def("info_for_image", &infoForImage, py::arg("path"), py::arg("prefix"),
               py::arg("image_type"), py::arg("binning"));
    module.def("info_from", &infoFrom, py::arg("state"));
    module.def("read", &readBytes, py::arg("path"));
    module.def("seal", &seal);
    module.def("rewrite", &rewrite, py::arg("path"), py::arg("old"), py::arg("data"));
    module.def("save_bytes", &saveBytes, py::arg("path"), py::arg("data"));
}

} // namespace ovpython
