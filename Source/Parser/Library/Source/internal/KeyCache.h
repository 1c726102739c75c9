/**
 * @file
 * Keys that the sections of a document have in common, so that each is held once.
 */
#ifndef OVPARSER_INTERNAL_KEYCACHE_H
#define OVPARSER_INTERNAL_KEYCACHE_H

#include "InfoText.h"

#include <QtCore/QString>
#include <QtCore/QStringView>

#include <atomic>
#include <vector>

namespace ovparser::internal {

/** A key as it is spelled, and in the form under which maps hold it. */
struct KeyForms
{
    QString spelled;
    QString mapped;
};

/**
 * The keys that were met last: most sections of a document have the same ones, and sharing their
 * text saves two of five allocations for a pair. A key that is met again may have been forgotten.
 *
 * Sections of one document may be read by several threads. One of them at a time gets the cache;
 * the others do without.
 */
class KeyCache
{
public:
    /** The right to use a cache, while it lives. */
    class User
    {
    public:
        /** @param cache  may be null */
        explicit User(KeyCache* cache)
            : m_cache(cache && !cache->m_busy.test_and_set(std::memory_order_acquire) ? cache
                                                                                      : nullptr)
        {}

        ~User()
        {
            if (m_cache)
                m_cache->m_busy.clear(std::memory_order_release);
        }

        Q_DISABLE_COPY(User)

        /** The forms of a key; good until the next call. */
        [[nodiscard]] const KeyForms& formsOf(QStringView key)
        {
            if (m_cache && key.size() <= longestKey)
                return m_cache->formsOf(key);
            m_uncached = makeForms(key);
            return m_uncached;
        }

    private:
        KeyCache* m_cache;
        KeyForms m_uncached;
    };

private:
    static KeyForms makeForms(QStringView key)
    {
        const QString spelled = key.toString();
        return {spelled, mapKey(spelled)};
    }

    const KeyForms& formsOf(QStringView key)
    {
        if (m_slots.empty())
            m_slots.resize(slotCount);
        KeyForms& slot = m_slots[slotOf(key)];
        if (slot.spelled.isNull() || slot.spelled != key)
            slot = makeForms(key);
        return slot;
    }

    static std::size_t slotOf(QStringView key)
    {
        unsigned hash = 0;
        for (const QChar c : key)
            hash = hash * 31 + c.unicode();
        return (hash ^ hash >> 8U) % slotCount;
    }

    static constexpr unsigned slotCount = 256;
    static constexpr qsizetype longestKey = 64; // so that little is held for nothing

    std::vector<KeyForms> m_slots;
    std::atomic_flag m_busy = ATOMIC_FLAG_INIT;
};

} // namespace ovparser::internal

#endif
