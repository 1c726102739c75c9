// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "PLPreferenceKeyList.h"

#include "PLHelpers.h"
#include "PLKeywords.h"
#include "internal/text/Guard.h"
#include "internal/text/InfoText.h"

#include <QtCore/QtGlobal>

#include <algorithm>
#include <new>
#include <vector>

using namespace ovparser::internal;

namespace {

void reportNoMemory()
{
    qCritical("Unable To Allocate Memory for Operation ");
}

/** A new key with the values of another, if one is given; null when there is no memory for it. */
std::unique_ptr<CPLPreferenceKey> makeKey(const CPLPreferenceKey* other = nullptr)
{
    std::unique_ptr<CPLPreferenceKey> key(new (std::nothrow) CPLPreferenceKey(other));
    if (!key)
        reportNoMemory();
    return key;
}

/** What follows a label and its ':' in a section text, up to the end of the line. */
QString valuesOf(const QString& label, const QString& text)
{
    const auto found = text.indexOf(label + QLatin1Char(':'));
    if (found < 0)
        return {};
    const QString line = text.mid(found, text.indexOf(QLatin1Char('\n'), found) - found);
    const auto colon = line.indexOf(QLatin1Char(':'));
    return colon < 0 ? QString() : trimmed(line.mid(colon + 1));
}

} // namespace

CPLPreferenceKeyList::CPLPreferenceKeyList(int count)
{
    makeSlots(count);
    for (int i = 0; i < keyCount; ++i)
        keys[std::size_t(i)] = makeKey();
}

CPLPreferenceKeyList::CPLPreferenceKeyList(const CPLPreferenceKeyList* other)
{
    *this = other;
}

void CPLPreferenceKeyList::operator=(const CPLPreferenceKeyList* other)
{
    if (other)
        *this = *other;
}

CPLPreferenceKeyList::CPLPreferenceKeyList(const CPLPreferenceKeyList& other)
{
    copyKeys(other);
}

CPLPreferenceKeyList& CPLPreferenceKeyList::operator=(const CPLPreferenceKeyList& other)
{
    if (this != &other)
        copyKeys(other);
    return *this;
}

// The array destroys its keys from the last to the first.
CPLPreferenceKeyList::~CPLPreferenceKeyList() = default;

void CPLPreferenceKeyList::makeSlots(int count)
{
    keys.reset(new (std::nothrow) std::unique_ptr<CPLPreferenceKey>[std::size_t(qMax(count, 0))]);
    keyCount = keys ? qMax(count, 0) : 0;
    if (!keys)
        reportNoMemory();
}

void CPLPreferenceKeyList::copyKeys(const CPLPreferenceKeyList& other)
{
    makeSlots(other.keyCount);
    for (int i = 0; i < keyCount; ++i) {
        if (const CPLPreferenceKey* const key = other[i])
            keys[std::size_t(i)] = makeKey(key);
    }
}

bool CPLPreferenceKeyList::isSlot(int index) const
{
    return index >= 0 && index < keyCount;
}

CPLPreferenceKey* CPLPreferenceKeyList::operator[](int index) const
{
    return isSlot(index) ? keys[std::size_t(index)].get() : nullptr;
}

tag_estatus CPLPreferenceKeyList::getKey(int index, CPLPreferenceKey** key) const
{
    if (!isSlot(index) || !key)
        return eSTATUS_INVALID_VALUE;
    *key = (*this)[index];
    return eSTATUS_SUCCESS;
}

tag_estatus CPLPreferenceKeyList::setKey(int index, CPLPreferenceKey* key)
{
    if (!isSlot(index) || !key)
        return eSTATUS_INVALID_VALUE;
    if (key == (*this)[index])
        return eSTATUS_SUCCESS;
    const auto isHeld = [key](const auto& held) { return held.get() == key; };
    if (std::any_of(keys.get(), keys.get() + keyCount, isHeld))
        return eSTATUS_INVALID_VALUE; // two slots would destroy it twice
    keys[std::size_t(index)].reset(key);
    return eSTATUS_SUCCESS;
}

tag_estatus CPLPreferenceKeyList::loadData(QString text, const QStringList* labelNames)
{
    if (!labelNames)
        return eSTATUS_INVALID_ARGUMENT;
    return guarded([&] {
        const int count = qMin(keyCount, int(labelNames->size()));
        std::vector<std::unique_ptr<CPLPreferenceKey>> loaded(std::size_t(qMax(count, 0)));
        for (int i = 0; i < count; ++i) {
            const QString saved = valuesOf(labelNames->at(i), text);
            if (saved.isEmpty())
                continue;
            auto key = std::make_unique<CPLPreferenceKey>();
            key->loadData(saved);
            int valueCount = 0;
            key->getCount(&valueCount);
            if (valueCount < saved.count(QLatin1Char(';')))
                return eSTATUS_OUT_OF_MEMORY;
            loaded[std::size_t(i)] = std::move(key);
        }
        for (int i = 0; i < count; ++i) {
            if (loaded[std::size_t(i)])
                keys[std::size_t(i)] = std::move(loaded[std::size_t(i)]);
        }
        return eSTATUS_SUCCESS;
    });
}

tag_estatus CPLPreferenceKeyList::saveData(QFile& file, const CPLLabelDataSet* labels) const
{
    if (!labels)
        return eSTATUS_INVALID_ARGUMENT;
    if (!file.isWritable())
        return eSTATUS_FAILED;
    return guarded([&] {
        const QByteArray bytes = sectionText(*labels).toLatin1();
        // A buffered file takes every byte; only the flush tells whether the disk did.
        const bool written = file.write(bytes) == bytes.size() && file.flush();
        return written ? eSTATUS_SUCCESS : eSTATUS_FAILED;
    });
}

tag_estatus CPLPreferenceKeyList::saveData(const CPLLabelDataSet* labels, QString* text) const
{
    if (!labels || !text)
        return eSTATUS_INVALID_ARGUMENT;
    return guarded([&] {
        *text = sectionText(*labels);
        return eSTATUS_SUCCESS;
    });
}

QString CPLPreferenceKeyList::sectionText(const CPLLabelDataSet& labels) const
{
    QString name;
    labels.getLabelName(&name);
    QString text = PLKeyword::Text::Marker + PLKeyword::Section::UserLabelNameSet +
                   PLKeyword::Text::KeyEnd + updateLabelSetName(name) + PLKeyword::Text::LineEnd;
    QString values;
    for (int i = 0; i < keyCount; ++i) {
        const CPLPreferenceKey* const key = (*this)[i];
        if (!key)
            continue;
        checked(key->getSaveBuffer(&values));
        text += labels[i] + PLKeyword::Text::KeyEnd + values + PLKeyword::Text::LineEnd;
    }
    return text + PLKeyword::Text::LineEnd;
}
