#include "TextFile.h"

#include <QtCore/QFile>

#include <sys/stat.h>

namespace ovparser::internal {

namespace {

/** Whether opening the file cannot wait for another program, as that of a named pipe does. */
bool mayBeOpened(const QFile& file)
{
    return !file.fileName().isEmpty() && !isPipe(QFile::encodeName(file.fileName()));
}

} // namespace

bool isPipe(const QByteArray& path)
{
#ifdef S_ISFIFO
    struct stat info = {};
    return ::stat(path.constData(), &info) == 0 && S_ISFIFO(info.st_mode);
#else
    Q_UNUSED(path)
    return false;
#endif
}

QByteArray readBounded(QIODevice& device, qint64 limit)
{
    // One byte of room more than the file has tells its end from its growth.
    QByteArray bytes(int(qMin(device.size(), limit)) + 1, Qt::Uninitialized);
    int size = 0;
    while (size <= limit) {
        if (size == bytes.size())
            bytes.resize(int(qMin(qint64(size) * 2, limit + 1)));
        const auto read = int(device.read(bytes.data() + size, bytes.size() - size));
        if (read <= 0)
            break;
        size += read;
    }
    bytes.truncate(size);
    return bytes;
}

bool openToRead(QFile& file)
{
    return mayBeOpened(file) && file.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

bool openToWrite(QFile& file, QIODevice::OpenMode how)
{
    return mayBeOpened(file) && file.open(QIODevice::WriteOnly | how);
}

tag_estatus readFile(const QString& path, QByteArray* bytes)
{
    QFile file(path);
    if (!openToRead(file))
        return eSTATUS_FILE_OPEN_FAILED;
    if (file.size() > maxTextFileSize)
        return eSTATUS_OUT_OF_MEMORY;
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
    if (!openToWrite(file, QIODevice::Unbuffered | how))
        return eSTATUS_FILE_OPEN_FAILED;
    return file.write(bytes) == bytes.size() ? eSTATUS_SUCCESS : eSTATUS_FAILED;
}

} // namespace ovparser::internal
