// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

/**
 * @file
 * Whole files, in and out: one way to read a text file, and one to save it.
 */
#ifndef OVPARSER_INTERNAL_TEXTFILE_H
#define OVPARSER_INTERNAL_TEXTFILE_H

#include "PLStatus.h"

#include <QtCore/QByteArray>
#include <QtCore/QIODevice>
#include <QtCore/QString>

class QFile;

namespace ovparser::internal {

/**
 * The largest text file that is read, in bytes. A string holds at most 2^30 characters, and a
 * document takes several times the size of its file.
 */
inline constexpr qint64 maxTextFileSize = qint64(512) * 1024 * 1024;

/** Reads a device to its end, but no more than one byte beyond a limit. */
[[nodiscard]] QByteArray readBounded(QIODevice& device, qint64 limit);

/**
 * Whether a path, in the file system's encoding, may be opened to read: it is not that of a pipe,
 * which may have nothing to give, nor of a device, which may have no end.
 */
[[nodiscard]] bool mayBeRead(const QByteArray& path);

/** Opens a file to read, without a buffer, if its path may be opened. */
[[nodiscard]] bool openToRead(QFile& file);

/** Opens a file to write; neither is a pipe opened for that. */
[[nodiscard]] bool openToWrite(QFile& file, QIODevice::OpenMode how);

/**
 * Reads all bytes of a file; on failure `bytes` is unchanged.
 *
 * @return eSTATUS_FILE_OPEN_FAILED, eSTATUS_FILE_READ_FAILED or, for a file beyond the largest
 *         size, eSTATUS_OUT_OF_MEMORY
 */
[[nodiscard]] tag_estatus readFile(const QString& path, QByteArray* bytes);
[[nodiscard]] tag_estatus readAll(QFile& file, QByteArray* bytes); ///< The same of an open file.

/**
 * Reads a file of info text as readFile() does, each byte one character: trimmed, with LF line
 * ends. The form with bytes leaves CR LF as it is.
 */
[[nodiscard]] tag_estatus readInfoText(const QString& path, QByteArray* text);
[[nodiscard]] tag_estatus readInfoText(const QString& path, QString* text); ///< @overload

enum class WriteMode { Replace, Append };

/**
 * Saves bytes in a file so that, but for the cases below, no failure, kill or reader at the same
 * time meets half of them.
 *
 * A second file in the same folder, synced to the disk, takes the place of the first, behind its
 * links, with its owner, rights, access control lists and extended attributes. Where that would
 * change what the file is, the bytes go over the old ones, and the file is cut to their length
 * then: a device, a file with several hard links, an owner, group or attribute that cannot be
 * given, a folder in which no file can be made or renamed, a name too long for that of a second
 * file. If that falls short, the old bytes are put back; a file whose old bytes cannot be read is
 * left alone. A kill in the middle of it leaves a mixture, and a reader may meet one.
 *
 * An appended text is one write; if it falls short, the file is cut back to its earlier length. A
 * kill in the middle of it leaves a part of the text.
 *
 * @return eSTATUS_FILE_OPEN_FAILED when the file cannot be opened to write; eSTATUS_FAILED when
 *         fewer bytes than asked were stored; the file is as it was then, and no other is left
 */
[[nodiscard]] tag_estatus writeFile(const QString& path, const QByteArray& bytes, WriteMode mode);

} // namespace ovparser::internal

#endif
