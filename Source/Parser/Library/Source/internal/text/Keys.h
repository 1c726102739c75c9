// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#ifndef OVPARSER_INTERNAL_KEYS_H
#define OVPARSER_INTERNAL_KEYS_H

#include <QtCore/QString>
#include <QtCore/QVarLengthArray>

namespace ovparser::internal {

/** The form of a key under which maps hold it: in lower case. */
[[nodiscard]] QString mapKey(QString key);

/** Whether a key is ASCII, and in the form under which maps hold it. */
[[nodiscard]] bool isMapKey(const QString& key);

/**
 * Whether a candidate starts with a key and contains a subkey, in any letter case. A null subkey is
 * contained in every candidate, an empty one in none.
 */
[[nodiscard]] bool isKeySelected(const QString& candidate, const QString& key,
                                 const QString& subkey);

/** Whether a key of a text is written as its value alone, since it may be that of a comment. */
template <typename Text>
[[nodiscard]] bool isCommentKey(const Text& key);

/** A key in the form in which it is looked up. Nothing is allocated for a usual one. */
class FoldedKey
{
public:
    explicit FoldedKey(QLatin1String key);
    explicit FoldedKey(const QString& key);

    /** A number that is the same for all spellings of a key, as long as the process runs. */
    [[nodiscard]] quint32 hash() const;

    [[nodiscard]] bool operator==(const FoldedKey& other) const { return m_words == other.m_words; }

    /** Whether this is a spelling of the key. */
    [[nodiscard]] bool matches(QLatin1String spelling) const;

private:
    char* makeRoom(std::size_t size, quint64 kind);
    template <typename Text>
    bool foldAscii(Text key);

    /** What kind of key it is and how long; then its characters in lower case, padded with NUL. */
    QVarLengthArray<quint64, 16> m_words;
};

} // namespace ovparser::internal

#endif
