/**
 * @file
 * Whole files, in and out. A write that falls short is noticed, also on a full disk.
 */
#ifndef OVPARSER_INTERNAL_TEXTFILE_H
#define OVPARSER_INTERNAL_TEXTFILE_H

#include "PLStatus.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>

namespace ovparser::internal {

/** All bytes of a file; nothing when it cannot be opened for reading. */
[[nodiscard]] std::optional<QByteArray> readFile(const QString& path);

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
