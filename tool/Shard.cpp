// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Shard.h"

#include <QtCore/QRegularExpression>

namespace {

quint64 hashOf(const QByteArray& bytes)
{
    constexpr quint64 basis = 14695981039346656037U;
    constexpr quint64 prime = 1099511628211U;
    quint64 hash = basis;
    for (const char byte : bytes)
        hash = (hash ^ static_cast<unsigned char>(byte)) * prime;
    return hash;
}

} // namespace

bool Shard::holds(const QString& folder) const
{
    return hashOf(folder.toUtf8()) % count == number - 1;
}

std::optional<Shard> shardOf(const QString& text)
{
    static const QRegularExpression form(QStringLiteral("^([0-9]{1,9})/([0-9]{1,9})$"));
    const QRegularExpressionMatch match = form.match(text);
    const Shard shard = {match.captured(1).toULongLong(), match.captured(2).toULongLong()};
    const bool inRange = shard.number >= 1 && shard.number <= shard.count;
    return match.hasMatch() && inRange ? std::optional(shard) : std::nullopt;
}

QString below(const QString& folder, const QString& path)
{
    const QString rest = path.mid(folder.size());
    return rest.startsWith(QLatin1Char('/')) ? rest.mid(1) : rest;
}
