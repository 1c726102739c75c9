// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Support.h"

#include <QtCore/QFile>

using namespace fuzz;

namespace {

void checkKey(const QString& text)
{
    CPLPreferenceKey key;
    key.loadData(text);
    QString saved;
    int count = -1;
    require(key.getSaveBuffer(&saved) == eSTATUS_SUCCESS, "a key saves");
    require(key.getCount(&count) == eSTATUS_SUCCESS && count == text.count(u';'),
            "every ';' ends a value");
    require(saved == text.left(text.lastIndexOf(u';') + 1), "what was loaded is saved");
    QString value;
    require(key.getValue(unsigned(count), &value) == eSTATUS_INVALID_VALUE, "no value beyond");
    const unsigned last = unsigned(count) - 1;
    if (count > 1) {
        require(key.moveUp(last) == 0 && key.moveDown(last - 1) == 0, "values can be moved");
        require(key.moveDown(last) == eSTATUS_INVALID_VALUE, "the last value stays");
    }
    key.getSaveBuffer(&value);
    require(value == saved, "moving there and back changes nothing");
    if (count == 0)
        return;
    value = key[last];
    require(key.deleteValue(value) == eSTATUS_SUCCESS, "a held value can be removed");
    require(key.deleteValue(value) == eSTATUS_INVALID_VALUE, "all of its kind are gone");
    require((key.addValue(value) == eSTATUS_SUCCESS) != value.isEmpty(), "only text is a value");
}

/** Where a label is first followed by ':', which is where its values are looked for. */
bool isFoundInItsLine(const QString& text, const QStringList& labels)
{
    const QStringList lines = text.split(u'\n');
    for (int i = 0; i < labels.size(); ++i) {
        const QString wanted = labels.at(i) + u':';
        const auto line = lines.value(i + 1);
        if (wanted.contains(u'\n') || !line.startsWith(wanted) ||
            text.indexOf(wanted) != lines.mid(0, i + 1).join(u'\n').size() + 1)
            return false;
    }
    return true;
}

void checkList(const QString& text, const CPLLabelDataSet& set, const QStringList& labels)
{
    CPLPreferenceKeyList list(int(labels.size()));
    QString saved;
    require(list.loadData(text, &labels) == eSTATUS_SUCCESS, "values load");
    require(list.saveData(&set, &saved) == eSTATUS_SUCCESS, "values save");
    QFile file(temporaryPath("Labels.txt"_s));
    require(file.open(QIODevice::WriteOnly), "a file opens");
    require(list.saveData(file, &set) == eSTATUS_SUCCESS, "values save to a file");
    file.close();
    require(contentOf(file.fileName()) == saved.toLatin1(), "file and text are alike");
    const CPLPreferenceKeyList copy(list);
    CPLPreferenceKeyList again(int(labels.size()));
    again.loadData(saved, &labels);
    QString second;
    copy.saveData(&set, &second);
    require(second == saved, "a copy saves alike");
    again.saveData(&set, &second);
    require(second == saved || !isFoundInItsLine(saved, labels), "saved values save alike");
    require(list[-1] == nullptr && list[int(labels.size())] == nullptr, "no slot beyond the ends");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const Input input(data, size);
    const QString text = latin1(input.file);
    checkKey(text);
    CPLLabelDataSet set;
    const tag_estatus status = set.loadData(text);
    const bool loaded = succeeded(status, {eSTATUS_BAD_LABEL_FORMAT, eSTATUS_SECTION_NOT_FOUND});
    QStringList labels;
    QString name;
    set.getLabelData(&labels);
    set.getLabelName(&name);
    require(set.getCount() == labels.size() && set[int(labels.size())].isNull(),
            "labels are counted");
    require(loaded || (labels.isEmpty() && name.isEmpty()), "a failure changes nothing");
    for (int i = 0; i < labels.size(); ++i)
        require(set[i] == labels.at(i) && !labels.at(i).contains(u':'), "labels have no ':'");
    checkList(text, set, labels);
    CPLLabelDataSet named("Name"_s);
    require(named.loadData(text) == eSTATUS_SUCCESS, "a set with a name takes any header");
    require(!loaded || name.isEmpty() || named.getCount() == labels.size(), "labels are the same");
    return 0;
}
