// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "SectionStore.h"

namespace ovparser::internal {

tag_estatus SectionStore::insert(int place, const QString& mapKey, CPLSection* section)
{
    bool& isHeld = SectionAccess::isHeld(*section);
    if (isHeld)
        return eSTATUS_INVALID_ARGUMENT;
    const bool isLast = sections.isEmpty() || sections.lastKey() < mapKey;
    const auto entry = isLast ? sections.insert(sections.cend(), mapKey, section)
                              : sections.insert(mapKey, section);
    try {
        keys.insert(place, SectionAccess::key(*section));
    } catch (...) {
        sections.erase(entry);
        throw;
    }
    ++count;
    isHeld = true;
    return eSTATUS_SUCCESS;
}

void SectionStore::insert(int place, const QString& mapKey, std::unique_ptr<CPLSection> section)
{
    insert(place, mapKey, section.get());
    static_cast<void>(section.release());
}

void SectionStore::remove(int place, const QString& mapKey)
{
    keys.removeAt(place);
    --count;
    delete sections.take(mapKey);
}

void SectionStore::clear()
{
    qDeleteAll(sections);
    sections.clear();
    keys.clear();
    count = 0;
}

void SectionStore::copy(const QMap<QString, CPLSection*>& others, const QStringList& otherKeys)
{
    for (auto entry = others.cbegin(); entry != others.cend(); ++entry) {
        auto section = std::make_unique<CPLSection>(**entry);
        SectionAccess::isHeld(*section) = true;
        sections.insert(sections.cend(), entry.key(), section.get());
        static_cast<void>(section.release());
    }
    keys = otherKeys;
    count = qint32(keys.size());
}

} // namespace ovparser::internal
