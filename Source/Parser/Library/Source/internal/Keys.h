// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * Keys, which match in any letter case: how they are folded, hashed and compared.
 */
#ifndef OVPARSER_INTERNAL_KEYS_H
#define OVPARSER_INTERNAL_KEYS_H

#include <QtCore/QString>
#include <QtCore/QVarLengthArray>

namespace ovparser::internal {

/** The form of a key under which maps hold it: in lower case. */
[[nodiscard]] QString mapKey(QString key);

/**
 * Whether a candidate starts with a key and contains a subkey, in any letter case. A null subkey is
 * contained in every candidate, an empty one in none.
 */
[[nodiscard]] bool isKeySelected(const QString& candidate, const QString& key,
                                 const QString& subkey);

/** Whether a key of a text is written as its value alone, since it may be that of a comment. */
[[nodiscard]] bool isCommentKey(QLatin1String key);
[[nodiscard]] bool isCommentKey(const QString& key); ///< @overload

/** A number that is the same for all spellings of a key; the same as that of a FoldedKey. */
[[nodiscard]] quint32 keyHash(QLatin1String key);

/** A key in the form in which it is looked up. Nothing is allocated for a usual one. */
class FoldedKey
{
public:
    explicit FoldedKey(const QString& key);

    [[nodiscard]] quint32 hash() const { return m_hash; }

    /** Whether this is a spelling of the key. */
    [[nodiscard]] bool matches(QLatin1String spelling) const;
    [[nodiscard]] bool matches(const QString& spelling) const; ///< @overload

private:
    [[nodiscard]] QLatin1String ascii() const
    {
        return QLatin1String(m_ascii.data(), int(m_ascii.size()));
    }
    bool foldAscii(const QString& key);

    QVarLengthArray<char, 128> m_ascii; ///< the key in lower case, while it is ASCII
    QString m_lower;                    ///< the key in lower case when it is not; otherwise null
    quint32 m_hash = 0;
};

} // namespace ovparser::internal

#endif
