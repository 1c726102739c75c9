#include "TextFile.h"

#include <QtCore/QFile>

namespace ovparser::internal {

std::optional<QByteArray> readFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return file.readAll();
}

tag_estatus writeFile(const QString& path, const QByteArray& bytes, WriteMode mode)
{
    const QIODevice::OpenMode how =
        mode == WriteMode::Append ? QIODevice::Append : QIODevice::Truncate;
    QFile file(path);
    // Unbuffered: a buffer would take the bytes and hide that the disk does not.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered | how))
        return eSTATUS_FILE_OPEN_FAILED;
    return file.write(bytes) == bytes.size() ? eSTATUS_SUCCESS : eSTATUS_FAILED;
}

} // namespace ovparser::internal
