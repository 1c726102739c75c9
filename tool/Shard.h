// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * How an archive is divided among machines that know nothing of each other.
 */
#ifndef OVINFO_SHARD_H
#define OVINFO_SHARD_H

#include <QtCore/QString>

#include <optional>

/** One of several parts of an archive. */
struct Shard
{
    quint64 number = 1; ///< from 1 on
    quint64 count = 1;

    /**
     * Whether a folder belongs to this part. The name alone decides, by its FNV-1a hash of 64 bits
     * over UTF-8, so that folders that are added move no other.
     *
     * @param folder  below the folder that is read, without '/' at the start; empty for that one
     */
    [[nodiscard]] bool holds(const QString& folder) const;
};

/** The part that "K/N" names; nothing when it names none. */
std::optional<Shard> shardOf(const QString& text);

/** A path without the folder that it begins with, as Shard::holds() takes it. */
QString below(const QString& folder, const QString& path);

#endif
