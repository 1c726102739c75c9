// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Keys.h"

#include "PLKeywords.h"

#include <QtCore/QStringView>

#include <algorithm>
#include <cstring>
#include <utility>

namespace ovparser::internal {

namespace {

constexpr quint64 everyByte = Q_UINT64_C(0x0101010101010101);
constexpr quint64 isWide = Q_UINT64_C(1) << 32U; ///< beyond every size

template <typename Character>
constexpr Character lowerAscii(Character c)
{
    return Character(c | (unsigned(c - 'A') < 26U ? 0x20 : 0));
}

/** Eight bytes with the ASCII letters among them in lower case. */
constexpr quint64 lowerAscii(quint64 bytes)
{
    const quint64 low = bytes & (everyByte * 0x7F);
    const quint64 fromA = low + everyByte * (0x80 - 'A');
    const quint64 beyondZ = low + everyByte * (0x7F - 'Z');
    return bytes | (fromA & ~beyondZ & ~bytes & (everyByte * 0x80)) >> 2U;
}

quint64 wordAt(const char* bytes)
{
    quint64 word = 0;
    std::memcpy(&word, bytes, sizeof(word));
    return word;
}

void copyNarrow(QLatin1String text, char* bytes)
{
    std::memcpy(bytes, text.data(), std::size_t(text.size()));
}

/** The characters as bytes; those beyond ASCII are not told apart. */
void copyNarrow(QStringView text, char* bytes)
{
    std::transform(text.begin(), text.end(), bytes,
                   [](QChar c) { return char(c.unicode() < 0x80 ? c.unicode() : 0x80); });
}

bool isAscii(const QString& text)
{
    ushort bits = 0;
    for (const QChar c : text)
        bits |= c.unicode();
    return bits < 0x80;
}

// The address differs from process to process: no file can be made of keys that collide.
quint64 hashSeed()
{
    static const char place = 0;
    return reinterpret_cast<quintptr>(&place);
}

} // namespace

bool isMapKey(const QString& key)
{
    ushort others = 0; // one loop without a branch: the compiler takes many characters at once
    for (const QChar c : key) {
        const bool isUpper = ushort(c.unicode() - 'A') < 26U;
        others = ushort(others | (c.unicode() & 0xFF80U) | ushort(isUpper));
    }
    return others == 0;
}

// Nearly all keys are ASCII, which needs no Unicode tables; a key that nobody else holds is changed
// in place.
QString mapKey(QString key)
{
    if (isMapKey(key))
        return key;
    if (!isAscii(key))
        return std::move(key).toLower();
    for (QChar& c : key)
        c = QChar(lowerAscii(c.unicode()));
    return key;
}

bool isKeySelected(const QString& candidate, const QString& key, const QString& subkey)
{
    if (subkey.isEmpty() && !subkey.isNull())
        return false;
    return candidate.startsWith(key, Qt::CaseInsensitive) &&
           candidate.contains(subkey, Qt::CaseInsensitive);
}

bool isCommentKey(QLatin1String key)
{
    const QLatin1String reserved = PLKeyword::Text::CommentKey;
    const auto isSame = [](char a, char b) { return lowerAscii(a) == lowerAscii(b); };
    return std::search(key.begin(), key.end(), reserved.begin(), reserved.end(), isSame) !=
           key.end();
}

bool isCommentKey(const QString& key)
{
    return key.contains(PLKeyword::Text::CommentKey, Qt::CaseInsensitive);
}

FoldedKey::FoldedKey(QLatin1String key)
{
    if (!foldAscii(key))
        *this = FoldedKey(QString(key));
}

FoldedKey::FoldedKey(const QString& key)
{
    if (foldAscii(QStringView(key)))
        return;
    // A few letters beyond ASCII, such as the Kelvin sign, have a lower case that is ASCII.
    const QString lower = key.toLower();
    if (foldAscii(QStringView(lower)))
        return;
    const auto size = std::size_t(lower.size()) * sizeof(QChar);
    std::memcpy(makeRoom(size, isWide), lower.constData(), size);
}

char* FoldedKey::makeRoom(std::size_t size, quint64 kind)
{
    m_words.resize(1 + int((size + sizeof(quint64) - 1) / sizeof(quint64)));
    m_words.last() = 0;
    m_words.first() = kind + size;
    return reinterpret_cast<char*>(m_words.data() + 1);
}

/** Folds a key that is ASCII; false for another. */
template <typename Text>
bool FoldedKey::foldAscii(Text key)
{
    copyNarrow(key, makeRoom(std::size_t(key.size()), 0));
    quint64 bits = 0;
    std::for_each(m_words.begin() + 1, m_words.end(), [&](quint64& word) {
        bits |= word;
        word = lowerAscii(word);
    });
    return (bits & (everyByte * 0x80)) == 0;
}

bool FoldedKey::matches(QLatin1String spelling) const
{
    if (m_words.first() >= isWide)
        return *this == FoldedKey(spelling);
    const auto size = std::size_t(spelling.size());
    if (m_words.first() != size)
        return false;
    const char* const lower = reinterpret_cast<const char*>(m_words.data() + 1);
    std::size_t i = 0;
    for (; i + sizeof(quint64) <= size; i += sizeof(quint64)) {
        if (wordAt(lower + i) != lowerAscii(wordAt(spelling.data() + i)))
            return false;
    }
    return std::equal(lower + i, lower + size, spelling.data() + i,
                      [](char a, char b) { return a == lowerAscii(b); });
}

quint32 FoldedKey::hash() const
{
    quint64 hash = hashSeed();
    for (const quint64 word : m_words) {
        hash = (hash ^ word) * Q_UINT64_C(0x9E3779B97F4A7C15);
        hash ^= hash >> 32U;
    }
    return quint32(hash);
}

} // namespace ovparser::internal
