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

constexpr ushort codeOf(char c)
{
    return uchar(c);
}

constexpr ushort codeOf(QChar c)
{
    return c.unicode();
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

QString mapKey(QString key)
{
    return isMapKey(key) ? key : std::move(key).toLower();
}

bool isKeySelected(const QString& candidate, const QString& key, const QString& subkey)
{
    if (subkey.isEmpty() && !subkey.isNull())
        return false;
    return candidate.startsWith(key, Qt::CaseInsensitive) &&
           candidate.contains(subkey, Qt::CaseInsensitive);
}

template <typename Text>
bool isCommentKey(const Text& key)
{
    const QLatin1String reserved = PLKeyword::Text::CommentKey;
    const auto isSame = [](char a, auto b) {
        return lowerAscii(codeOf(a)) == lowerAscii(codeOf(b));
    };
    for (auto start = key.begin(); key.end() - start >= reserved.size(); ++start) {
        if (std::equal(reserved.begin(), reserved.end(), start, isSame))
            return true;
    }
    return false;
}

template bool isCommentKey(const QLatin1String& key);
template bool isCommentKey(const QString& key);

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
    char* bytes = makeRoom(std::size_t(key.size()), 0);
    ushort bits = 0; // one loop without a branch: the compiler takes many characters at once
    for (const auto c : key) {
        bits = ushort(bits | codeOf(c));
        *bytes++ = lowerAscii(char(codeOf(c)));
    }
    return bits < 0x80;
}

bool FoldedKey::matches(QLatin1String spelling) const
{
    if (m_words.first() >= isWide)
        return *this == FoldedKey(spelling);
    const auto size = std::size_t(spelling.size());
    if (m_words.first() != size)
        return false;
    const char* const lower = reinterpret_cast<const char*>(m_words.data() + 1);
    constexpr std::size_t step = sizeof(quint64);
    const auto isSame = [&](std::size_t at) {
        return wordAt(lower + at) == lowerAscii(wordAt(spelling.data() + at));
    };
    if (size < step)
        return std::equal(lower, lower + size, spelling.data(),
                          [](char a, char b) { return a == lowerAscii(b); });
    for (std::size_t at = 0; at + step < size; at += step) {
        if (!isSame(at))
            return false;
    }
    return isSame(size - step);
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
