// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "PLPreferenceKey.h"

#include "PLKeywords.h"
#include "internal/text/Guard.h"

using namespace ovparser::internal;

namespace {

constexpr QChar valueEnd(u';');

} // namespace

CPLPreferenceKey::CPLPreferenceKey() = default;

CPLPreferenceKey::CPLPreferenceKey(const CPLPreferenceKey* other)
{
    *this = other;
}

void CPLPreferenceKey::operator=(const CPLPreferenceKey* other)
{
    if (other)
        values = other->values;
}

CPLPreferenceKey::CPLPreferenceKey(const CPLPreferenceKey& other) = default;
CPLPreferenceKey& CPLPreferenceKey::operator=(const CPLPreferenceKey& other) = default;
CPLPreferenceKey::~CPLPreferenceKey() = default;

tag_estatus CPLPreferenceKey::addValue(QString value)
{
    if (value.isEmpty())
        return eSTATUS_INVALID_VALUE;
    return guarded([&] {
        values.append(value);
        return eSTATUS_SUCCESS;
    });
}

tag_estatus CPLPreferenceKey::deleteValue(QString value)
{
    return guarded(
        [&] { return values.removeAll(value) > 0 ? eSTATUS_SUCCESS : eSTATUS_INVALID_VALUE; });
}

void CPLPreferenceKey::clearValues()
{
    values.clear();
}

void CPLPreferenceKey::loadData(QString text)
{
    guarded([&] {
        QStringList read = text.split(valueEnd);
        read.removeLast();
        values = read;
        return eSTATUS_SUCCESS;
    });
}

tag_estatus CPLPreferenceKey::getSaveBuffer(QString* text) const
{
    if (!text)
        return eSTATUS_NULL_ARGUMENT;
    return guarded([&] {
        QString saved = PLKeyword::Value::Empty;
        for (const QString& value : values)
            saved += value + valueEnd;
        *text = saved;
        return eSTATUS_SUCCESS;
    });
}

tag_estatus CPLPreferenceKey::getCompleteData(QStringList** list)
{
    if (!list)
        return eSTATUS_NULL_ARGUMENT;
    *list = &values;
    return eSTATUS_SUCCESS;
}

bool CPLPreferenceKey::isIndex(unsigned index) const
{
    return index < unsigned(values.size());
}

tag_estatus CPLPreferenceKey::getValue(unsigned index, QString* value) const
{
    if (!isIndex(index) || !value)
        return eSTATUS_INVALID_VALUE;
    *value = values.at(int(index));
    return eSTATUS_SUCCESS;
}

tag_estatus CPLPreferenceKey::setValue(QString value, unsigned index)
{
    if (!isIndex(index))
        return eSTATUS_INVALID_VALUE;
    return guarded([&] {
        values[int(index)] = value;
        return eSTATUS_SUCCESS;
    });
}

QString CPLPreferenceKey::operator[](unsigned index) const
{
    return isIndex(index) ? values.at(int(index)) : QString();
}

tag_estatus CPLPreferenceKey::getCount(int* count) const
{
    if (!count)
        return eSTATUS_NULL_ARGUMENT;
    *count = int(values.size());
    return eSTATUS_SUCCESS;
}

tag_estatus CPLPreferenceKey::moveUp(unsigned index)
{
    if (index == 0 || !isIndex(index))
        return eSTATUS_INVALID_VALUE;
    return guarded([&] {
        values.move(int(index), int(index) - 1);
        return eSTATUS_SUCCESS;
    });
}

tag_estatus CPLPreferenceKey::moveDown(unsigned index)
{
    return guarded([&] {
        // The first test also keeps the second from wrapping to 0.
        if (!isIndex(index) || !isIndex(index + 1))
            return eSTATUS_INVALID_VALUE;
        values.move(int(index), int(index) + 1);
        return eSTATUS_SUCCESS;
    });
}
