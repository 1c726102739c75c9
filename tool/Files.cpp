#include "Files.h"

#include "PLStatus.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <algorithm>

namespace {

/** The largest file that the library reads. */
constexpr qint64 maxFileSize = qint64(512) * 1024 * 1024;

/** Stores bytes from a place on to the end of a file that is open unbuffered. */
bool storeTail(QFile& file, const QByteArray& bytes, int from)
{
    const QByteArray tail = bytes.mid(from);
    return file.seek(from) && file.write(tail) == tail.size() && file.resize(bytes.size());
}

} // namespace

QString otherThanFile(const QString& path)
{
    const QFileInfo info(path);
    if (info.isDir())
        return QStringLiteral("a folder, not a file");
    return info.exists() && !info.isFile() ? QStringLiteral("not a regular file") : QString();
}

std::optional<QByteArray> readFile(const QString& path, QString* problem)
{
    *problem = otherThanFile(path);
    if (!problem->isEmpty())
        return std::nullopt;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *problem = getStatusString(eSTATUS_FILE_OPEN_FAILED);
        return std::nullopt;
    }
    if (file.size() > maxFileSize) {
        *problem = getStatusString(eSTATUS_OUT_OF_MEMORY);
        return std::nullopt;
    }
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        *problem = getStatusString(eSTATUS_FILE_READ_FAILED);
        return std::nullopt;
    }
    return bytes;
}

// Unbuffered: a buffer would take the bytes and hide that the disk does not.
QString rewriteFile(const QString& path, const QByteArray& old, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite | QIODevice::Unbuffered))
        return getStatusString(eSTATUS_FILE_OPEN_FAILED);
    const auto difference = std::mismatch(old.cbegin(), old.cend(), bytes.cbegin(), bytes.cend());
    const int from = int(difference.first - old.cbegin());
    if (storeTail(file, bytes, from))
        return {};
    if (storeTail(file, old, from))
        return QStringLiteral("cannot be written; not changed");
    return QStringLiteral("cannot be written; the file is damaged from byte %1 on").arg(from + 1);
}
