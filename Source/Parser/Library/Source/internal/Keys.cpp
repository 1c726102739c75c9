// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Keys.h"

#include "PLKeywords.h"

#include <QtCore/QStringView>

#include <algorithm>
#include <cstring>
#include <string_view>
#include <utility>

namespace ovparser::internal {

namespace {

constexpr ushort code(QChar c)
{
    return c.unicode();
}

constexpr ushort code(char c)
{
    return uchar(c);
}

constexpr ushort lowerAscii(ushort c)
{
    return ushort(c | (unsigned(c - 'A') < 26U ? 0x20 : 0));
}

// The address differs from process to process: no file can be made of keys that collide.
quintptr hashSeed()
{
    static const char place = 0;
    return reinterpret_cast<quintptr>(&place);
}

} // namespace

// Nearly all keys are ASCII, which needs no Unicode tables; a key that nobody else holds is changed
// in place.
QString mapKey(QString key)
{
    const auto isWide = [](QChar c) { return c > u'\x7F'; };
    if (std::any_of(key.cbegin(), key.cend(), isWide))
        return std::move(key).toLower();
    const auto isUpper = [](QChar c) { return c >= u'A' && c <= u'Z'; };
    if (std::none_of(key.cbegin(), key.cend(), isUpper))
        return key;
    for (QChar& c : key)
        c = QChar(lowerAscii(code(c)));
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
    const auto isSame = [](char a, char b) { return lowerAscii(code(a)) == lowerAscii(code(b)); };
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
    constexpr int headSize = sizeof(quintptr) + 1; // no ASCII key has the byte after the seed
    const auto size = int(lower.size()) * int(sizeof(QChar));
    m_bytes.resize(headSize + size);
    m_bytes[headSize - 1] = char(0xFF);
    std::memcpy(m_bytes.data() + headSize, lower.constData(), std::size_t(size));
}

/** Folds a key that is ASCII; false for another. */
template <typename Text>
bool FoldedKey::foldAscii(Text key)
{
    const quintptr seed = hashSeed();
    const auto size = int(key.size());
    const auto* const characters = key.data();
    m_bytes.resize(int(sizeof(seed)) + size);
    char* const bytes = m_bytes.data() + sizeof(seed);
    std::memcpy(m_bytes.data(), &seed, sizeof(seed));
    ushort bits = 0;
    for (int i = 0; i < size; ++i) {
        bits |= code(characters[i]);
        bytes[i] = char(lowerAscii(code(characters[i])));
    }
    return bits <= 0x7F;
}

quint32 FoldedKey::hash() const
{
    const std::string_view bytes(m_bytes.data(), std::size_t(m_bytes.size()));
    return quint32(std::hash<std::string_view>()(bytes));
}

} // namespace ovparser::internal
