#include "TextFile.h"

#include <QtCore/QFile>

namespace ovparser::internal {

QByteArray readBounded(QIODevice& device, qint64 limit)
{
    constexpr qint64 chunkSize = qint64(64) * 1024;
    QByteArray bytes;
    bytes.reserve(int(qMin(device.size(), limit)));
    while (bytes.size() <= limit) {
        const QByteArray chunk = device.read(qMin(chunkSize, limit + 1 - bytes.size()));
        if (chunk.isEmpty())
            break;
        bytes += chunk;
    }
    return bytes;
}

tag_estatus readFile(const QString& path, QByteArray* bytes)
{
    QFile file(path);
    if (path.isEmpty() || !file.open(QIODevice::ReadOnly))
        return eSTATUS_FILE_OPEN_FAILED;
    QByteArray content = readBounded(file, maxTextFileSize);
    if (file.error() != QFileDevice::NoError)
        return eSTATUS_FILE_READ_FAILED;
    if (content.size() > maxTextFileSize)
        return eSTATUS_OUT_OF_MEMORY;
    *bytes = std::move(content);
    return eSTATUS_SUCCESS;
}

tag_estatus writeFile(const QString& path, const QByteArray& bytes, WriteMode mode)
{
    const QIODevice::OpenMode how =
        mode == WriteMode::Append ? QIODevice::Append : QIODevice::Truncate;
    QFile file(path);
    // Unbuffered: a buffer would take the bytes and hide that the disk does not.
    if (path.isEmpty() || !file.open(QIODevice::WriteOnly | QIODevice::Unbuffered | how))
        return eSTATUS_FILE_OPEN_FAILED;
    return file.write(bytes) == bytes.size() ? eSTATUS_SUCCESS : eSTATUS_FAILED;
}

} // namespace ovparser::internal
