// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "PLSection.h"

#include "PLKeywords.h"
#include "internal/sections/SectionAccess.h"

#include <utility>

using namespace ovparser::internal;

namespace {

/** Replaces a list by what `pick` gives for the places of all pairs. */
template <typename Pick>
tag_estatus listPairs(const CPLSection& section, QStringList* list, Pick pick)
{
    if (!list)
        return eSTATUS_NULL_ARGUMENT;
    return guarded([&] {
        const Entries& entries = SectionAccess::entries(section);
        QStringList picked;
        picked.reserve(entries.pairCount());
        for (int pair = 0; pair < entries.pairCount(); ++pair)
            picked.append(pick(entries, entries.placeOfPair(pair)));
        list->swap(picked);
    });
}

} // namespace

CPLSection::CPLSection() = default;

CPLSection::CPLSection(QString key, QString name)
    : sectionKey(std::move(key))
    , sectionName(std::move(name))
{}

CPLSection::CPLSection(const CPLSection& other)
    : sectionKey(other.sectionKey)
    , sectionName(other.sectionName)
    , fileText(other.fileText)
    , wideText(other.wideText)
    , bodyStart(other.bodyStart)
    , bodySize(other.bodySize)
{
    if (const Entries* const entries = other.openEntries.load(std::memory_order_acquire))
        openEntries = new Entries(*entries);
}

CPLSection& CPLSection::operator=(const CPLSection& other)
{
    CPLSection copy(other);
    sectionKey.swap(copy.sectionKey);
    sectionName.swap(copy.sectionName);
    fileText.swap(copy.fileText);
    wideText.swap(copy.wideText);
    bodyStart = copy.bodyStart;
    bodySize = copy.bodySize;
    copy.openEntries = openEntries.exchange(copy.openEntries);
    return *this;
}

CPLSection::~CPLSection()
{
    delete openEntries.load();
}

void CPLSection::loadSectionData(QString text)
{
    const tag_estatus status = guarded([&] {
        const SourceText body(text);
        SectionAccess::load(*this, body, body.view());
    });
    if (status != eSTATUS_SUCCESS)
        clearKeyValuePairs();
}

void CPLSection::saveSectionData(QString& text) const
{
    const tag_estatus status = guarded([&] {
        QString section;
        SectionAccess::write(*this, section);
        text.swap(section);
    });
    if (status != eSTATUS_SUCCESS)
        text = QString();
}

tag_estatus CPLSection::addKeyValue(QString key, QString value)
{
    if (key.isEmpty())
        return eSTATUS_INVALID_ARGUMENT;
    return guarded([&] { SectionAccess::entries(*this).put(key, value); });
}

// The overloads of a reader or writer differ in the type of the value only.
#define GET_VALUE(Pointer)                                                                         \
    tag_estatus CPLSection::getValue(QString key, Pointer value) const                             \
    {                                                                                              \
        return guarded([&] { return readValue(*this, key, value); });                              \
    }
GET_VALUE(QString*)
GET_VALUE(short*)
GET_VALUE(int*)
GET_VALUE(long*)
GET_VALUE(float*)
GET_VALUE(double*)
GET_VALUE(qint64*)
GET_VALUE(unsigned*)
GET_VALUE(bool*)
#undef GET_VALUE

tag_estatus CPLSection::getRawValue(QString key, QString* value) const
{
    if (!value)
        return eSTATUS_NULL_ARGUMENT;
    return guarded([&] {
        const int place = SectionAccess::entries(*this).find(key);
        if (place < 0)
            return eSTATUS_KEY_NOT_FOUND;
        *value = SectionAccess::entries(*this).rawValue(place);
        return eSTATUS_SUCCESS;
    });
}

#define SET_VALUE(Value)                                                                           \
    tag_estatus CPLSection::setValue(QString key, Value value)                                     \
    {                                                                                              \
        return guarded([&] { return changeValue(*this, key, value); });                            \
    }
SET_VALUE(QString)
SET_VALUE(short)
SET_VALUE(int)
SET_VALUE(long)
SET_VALUE(float)
SET_VALUE(double)
SET_VALUE(qint64)
SET_VALUE(unsigned)
#undef SET_VALUE

tag_estatus CPLSection::setRawValue(QString key, QString value)
{
    return guarded([&] {
        const int place = SectionAccess::entries(*this).find(key);
        if (place < 0)
            return eSTATUS_KEY_NOT_FOUND;
        SectionAccess::entries(*this).setRawValue(place, value);
        return eSTATUS_SUCCESS;
    });
}

QString CPLSection::operator[](QString key) const
{
    return answerOf([&] { return valueOf(*this, key); });
}

QString CPLSection::operator[](int pairOrdinal) const
{
    QString key;
    return getKey(pairOrdinal, &key) == eSTATUS_SUCCESS ? (*this)[key] : QString();
}

bool CPLSection::isKeyPresent(QString key) const
{
    return answerOf([&] { return hasKey(*this, key); });
}

tag_estatus CPLSection::getKeyValuePairCount(int* count) const
{
    if (!count)
        return eSTATUS_NULL_ARGUMENT;
    return guarded([&] { *count = SectionAccess::entries(*this).pairCount(); });
}

int CPLSection::count() const
{
    return answerOf([&] { return SectionAccess::entries(*this).pairCount(); });
}

tag_estatus CPLSection::getKey(int pairOrdinal, QString* key) const
{
    if (!key)
        return eSTATUS_NULL_ARGUMENT;
    return guarded([&] {
        if (pairOrdinal < 0 || pairOrdinal >= SectionAccess::entries(*this).pairCount())
            return eSTATUS_FAILED;
        *key = SectionAccess::entries(*this).key(
            SectionAccess::entries(*this).placeOfPair(pairOrdinal));
        return eSTATUS_SUCCESS;
    });
}

tag_estatus CPLSection::getKeyList(QStringList* list) const
{
    return listPairs(*this, list,
                     [](const Entries& entries, int place) { return entries.key(place); });
}

tag_estatus CPLSection::getValueList(QStringList* list) const
{
    return listPairs(*this, list, [](const Entries& entries, int place) {
        // As getValue() has it: an empty key has no value.
        return entries.key(place).isEmpty() ? QString() : entries.value(place);
    });
}

tag_estatus CPLSection::getRawValueList(QStringList* list) const
{
    return listPairs(*this, list,
                     [](const Entries& entries, int place) { return entries.rawValue(place); });
}

tag_estatus CPLSection::getKeylistFromKeyAndSubkey(QString key, QString subkey,
                                                   QStringList* keys) const
{
    if (key.isEmpty() || !keys)
        return eSTATUS_NULL_ARGUMENT;
    QStringList all;
    const tag_estatus status = getKeyList(&all);
    if (status != eSTATUS_SUCCESS)
        return status;
    return guarded([&] {
        QStringList selected = *keys;
        for (const QString& candidate : all) {
            if (isKeySelected(candidate, key, subkey))
                selected.append(candidate);
        }
        keys->swap(selected);
    });
}

tag_estatus CPLSection::getRDXAngle(double* angle) const
{
    return guarded([&] {
        const bool newer = hasKey(*this, PLKeyword::Key::Rdx2Angle);
        return readValue(*this, newer ? PLKeyword::Key::Rdx2Angle : PLKeyword::Key::RodxAngle,
                         angle);
    });
}

void CPLSection::clearKeyValuePairs()
{
    const SourceText none;
    SectionAccess::load(*this, none, none.view());
}

tag_estatus CPLSection::getSectionName(QString* name, bool raw) const
{
    if (!name)
        return eSTATUS_FAILED;
    return guarded([&] { *name = raw ? sectionName : withoutComment(sectionName); });
}

tag_estatus CPLSection::setSectionName(QString name)
{
    return guarded([&] { sectionName = withCommentOf(sectionName, name); });
}

tag_estatus CPLSection::getSectionKey(QString* key) const
{
    if (!key)
        return eSTATUS_FAILED;
    *key = sectionKey;
    return eSTATUS_SUCCESS;
}

tag_estatus CPLSection::setSectionKey(QString key)
{
    if (key.isNull())
        return eSTATUS_FAILED;
    sectionKey = std::move(key);
    return eSTATUS_SUCCESS;
}
