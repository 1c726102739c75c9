#include "TextFile.h"

#include "InfoText.h"

#include <QtCore/QFile>

#include <sys/stat.h>

namespace ovparser::internal {

namespace {

enum class Kind {
    Other,  ///< a file or folder, or nothing
    Pipe,   ///< opening it waits for another program
    Device, ///< such as a terminal, which may have no end
};

Kind kindOf(const QByteArray& path)
{
#if defined(S_ISFIFO) && defined(S_ISCHR)
    struct stat info = {};
    if (::stat(path.constData(), &info) != 0)
        return Kind::Other;
    if (S_ISFIFO(info.st_mode))
        return Kind::Pipe;
    return S_ISCHR(info.st_mode) ? Kind::Device : Kind::Other;
#else
    Q_UNUSED(path)
    return Kind::Other;
#endif
}

bool isPath(const QByteArray& path)
{
    return !path.isEmpty() && !path.contains('\0');
}

} // namespace

bool mayBeRead(const QByteArray& path)
{
    return isPath(path) && kindOf(path) == Kind::Other;
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
    return mayBeRead(QFile::encodeName(file.fileName())) &&
           file.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

bool openToWrite(QFile& file, QIODevice::OpenMode how)
{
    const QByteArray path = QFile::encodeName(file.fileName());
    return isPath(path) && kindOf(path) != Kind::Pipe && file.open(QIODevice::WriteOnly | how);
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

tag_estatus readInfoFile(const QString& path, QByteArray* text)
{
    QByteArray bytes;
    const tag_estatus status = readFile(path, &bytes);
    if (status == eSTATUS_SUCCESS)
        *text = infoBytes(std::move(bytes));
    return status;
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
