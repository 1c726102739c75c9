// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * Whole files, in and out.
 */
#ifndef OVINFO_FILES_H
#define OVINFO_FILES_H

#include "PLStatus.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>

enum class Access {
    Read,
    Write, ///< also of a file that is not there yet
};

/**
 * What keeps a file from being opened, e.g. "permission denied"; null when nothing is seen to.
 */
const char* obstacleOf(const QString& path, Access access);

/** A status in words, with its name; that a file cannot be opened is told by what keeps it. */
QString explained(tag_estatus status, const QString& path, Access access = Access::Read);

/** What a path names instead of a file: a folder, pipe or device; empty for a file or nothing. */
QString otherThanFile(const QString& path);

/** The size of a file, and when it was last changed, in milliseconds since 1970. */
struct FileStamp
{
    qint64 size = 0;
    qint64 time = 0;
};

/** The stamp of a file; zeros when there is none. */
FileStamp stampOf(const QString& path);

/**
 * Reads a file as a whole.
 *
 * @param problem  receives what is wrong: there is no such file, it is something else, cannot be
 *                 read, or is larger than the library takes
 */
std::optional<QByteArray> readFile(const QString& path, QString* problem);

/**
 * Replaces a file at once, as the library does, or makes it; what is no file is written to.
 *
 * @return false when fewer bytes than asked could be stored; a file is as it was then
 */
bool saveFile(const QString& path, const QByteArray& bytes);

/**
 * Replaces a file at once, as the library does, unless it holds other bytes than it did when it was
 * read. Of several programs that do this to one file at a time, each waits for the others.
 *
 * @return what went wrong, the file is unchanged then; empty on success
 */
QString rewriteFile(const QString& path, const QByteArray& old, const QByteArray& bytes);

#endif
