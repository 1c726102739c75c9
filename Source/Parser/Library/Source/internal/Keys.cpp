// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Keys.h"

#include "PLKeywords.h"

#include <QtCore/QHash>

#include <algorithm>
#include <cstring>
#include <utility>

namespace ovparser::internal {

namespace {

constexpr quint64 everyByte = Q_UINT64_C(0x0101010101010101);
constexpr int wordSize = sizeof(quint64);

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
    const quint64 upper = ~bytes & (fromA ^ beyondZ) & (everyByte * 0x80);
    return bytes | upper >> 2U;
}

quint64 wordAt(const char* bytes)
{
    quint64 word = 0;
    std::memcpy(&word, bytes, wordSize);
    return word;
}

/** Hands out a text in lower-case words; the last one may overlap the one before. */
template <typename Use>
void forWords(QLatin1String text, Use use)
{
    const char* const bytes = text.data();
    const int size = int(text.size());
    for (int i = 0; i + wordSize <= size; i += wordSize)
        use(lowerAscii(wordAt(bytes + i)));
    if (size >= wordSize) {
        use(lowerAscii(wordAt(bytes + size - wordSize)));
        return;
    }
    quint64 word = 0;
    for (int i = 0; i < size; ++i)
        word = word << 8U | uchar(bytes[i]);
    use(lowerAscii(word));
}

// The address differs from process to process, so that no file can be made of keys that collide.
quint64 hashSeed()
{
    static const char place = 0;
    return quint64(reinterpret_cast<quintptr>(&place)) * Q_UINT64_C(0x9E3779B97F4A7C15);
}

quint64 mixed(quint64 hash, quint64 word)
{
    const quint64 both = hash ^ word;
    return quint64(quint32(both)) * (both >> 32U) + (hash >> 32U | hash << 32U);
}

quint32 wideHash(const QString& lower)
{
    return quint32(qHash(lower, uint(hashSeed() >> 32U)));
}

bool isAscii(const QString& text)
{
    ushort bits = 0;
    for (const QChar c : text)
        bits |= c.unicode();
    return bits <= 0x7F;
}

bool sameInLowerCase(QLatin1String lower, QLatin1String spelling)
{
    const int size = int(lower.size());
    int i = 0;
    for (; i + wordSize <= size; i += wordSize) {
        if (wordAt(lower.data() + i) != lowerAscii(wordAt(spelling.data() + i)))
            return false;
    }
    for (; i < size; ++i) {
        if (lower.data()[i] != lowerAscii(spelling.data()[i]))
            return false;
    }
    return true;
}

} // namespace

// Nearly all keys are ASCII, which needs no Unicode tables; a key that nobody else holds is changed
// in place.
QString mapKey(QString key)
{
    if (!isAscii(key))
        return std::move(key).toLower();
    const auto isUpper = [](QChar c) { return c >= u'A' && c <= u'Z'; };
    if (std::none_of(key.cbegin(), key.cend(), isUpper))
        return key;
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

// The blank at the end of the reserved key is what most keys do not have in such a place.
bool isCommentKey(QLatin1String key)
{
    const QLatin1String reserved = PLKeyword::Text::CommentKey;
    if (key.size() < reserved.size())
        return false;
    const char* const end = key.data() + key.size();
    for (const char* blank = key.data() + reserved.size() - 1; blank < end; ++blank) {
        blank = std::find(blank, end, reserved.data()[reserved.size() - 1]);
        if (blank == end)
            return false;
        const char* const first = blank - reserved.size() + 1;
        if (std::equal(reserved.begin(), reserved.end(), first,
                       [](char a, char b) { return lowerAscii(a) == lowerAscii(b); }))
            return true;
    }
    return false;
}

bool isCommentKey(const QString& key)
{
    return key.contains(PLKeyword::Text::CommentKey, Qt::CaseInsensitive);
}

quint32 keyHash(QLatin1String key)
{
    quint64 hash = hashSeed() ^ quint64(key.size());
    quint64 bits = 0;
    forWords(key, [&](quint64 word) {
        hash = mixed(hash, word);
        bits |= word;
    });
    if ((bits & (everyByte * 0x80)) != 0)
        return wideHash(QString(key).toLower());
    return quint32(hash ^ hash >> 32U);
}

FoldedKey::FoldedKey(const QString& key)
{
    if (!foldAscii(key)) {
        m_lower = key.toLower();
        // A few letters beyond ASCII, such as the Kelvin sign, have a lower case that is ASCII.
        if (foldAscii(m_lower))
            m_lower = QString();
    }
    m_hash = m_lower.isNull() ? keyHash(ascii()) : wideHash(m_lower);
}

bool FoldedKey::foldAscii(const QString& key)
{
    const int size = int(key.size());
    const QChar* const characters = key.constData();
    m_ascii.resize(size);
    char* const bytes = m_ascii.data();
    ushort bits = 0;
    for (int i = 0; i < size; ++i) {
        const ushort c = characters[i].unicode();
        bits |= c;
        bytes[i] = char(lowerAscii(c));
    }
    return bits <= 0x7F;
}

bool FoldedKey::matches(QLatin1String spelling) const
{
    if (!m_lower.isNull())
        return QString(spelling).toLower() == m_lower;
    return spelling.size() == ascii().size() && sameInLowerCase(ascii(), spelling);
}

bool FoldedKey::matches(const QString& spelling) const
{
    const QString lower = mapKey(spelling);
    return m_lower.isNull() ? lower == ascii() : lower == m_lower;
}

} // namespace ovparser::internal
