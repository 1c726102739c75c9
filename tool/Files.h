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

/**
 * Reads a file as a whole.
 *
 * @param problem  receives what is wrong: there is no such file, it is something else, cannot be
 *                 read, or is larger than the library takes
 */
std::optional<QByteArray> readFile(const QString& path, QString* problem);

/**
 * Replaces what a file holds, in place. When a write fails, the old bytes are put back.
 *
 * @return what went wrong; empty on success
 */
QString rewriteFile(const QString& path, const QByteArray& old, const QByteArray& bytes);

#endif
