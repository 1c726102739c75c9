/**
 * @file
 * Whole files, in and out. A write that falls short is noticed, also on a full disk.
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
 * Reads all bytes of a file.
 *
 * @param bytes  receives them; unchanged on failure
 * @return eSTATUS_FILE_OPEN_FAILED, eSTATUS_FILE_READ_FAILED or, for a file beyond the largest
 *         size, eSTATUS_OUT_OF_MEMORY
 */
[[nodiscard]] tag_estatus readFile(const QString& path, QByteArray* bytes);

/** Reads an info file, as infoBytes() makes it; otherwise as readFile(). */
[[nodiscard]] tag_estatus readInfoFile(const QString& path, QByteArray* text);

enum class WriteMode {
    Replace, ///< the file holds the bytes only
    Append,  ///< the bytes follow what the file holds
};

/**
 * Writes bytes to a file, in place.
 *
 * @return eSTATUS_FILE_OPEN_FAILED when the file cannot be opened; eSTATUS_FAILED when fewer bytes
 *         than asked were stored (what was stored stays); else eSTATUS_SUCCESS
 */
[[nodiscard]] tag_estatus writeFile(const QString& path, const QByteArray& bytes, WriteMode mode);

} // namespace ovparser::internal

#endif
