// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "TextFile.h"

#include "InfoText.h"

#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>
#include <QtCore/QTemporaryFile>

#include <array>
#include <cerrno>
#include <cstdio>

#include <sys/stat.h>
#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>
#endif
#ifdef Q_OS_LINUX
#include <sys/xattr.h>
#endif

namespace ovparser::internal {

namespace {

/** Devices may have no end; opening a pipe waits for another program. */
enum class Devices { Refused, Allowed };

bool mayBeOpened(const QByteArray& path, Devices devices)
{
    if (path.isEmpty() || path.contains('\0'))
        return false;
#if defined(S_ISFIFO) && defined(S_ISCHR)
    struct stat info = {};
    if (::stat(path.constData(), &info) == 0)
        return !S_ISFIFO(info.st_mode) && (devices == Devices::Allowed || !S_ISCHR(info.st_mode));
#endif
    return true;
}

#ifdef Q_OS_UNIX

/** Gives a file the extended attributes of another; whether it has them then, and no more. */
bool copyAttributes([[maybe_unused]] int from, [[maybe_unused]] int to)
{
#ifdef Q_OS_LINUX
    const auto size = ::flistxattr(from, nullptr, 0);
    QByteArray names(int(qMax(size, ssize_t(0))), '\0');
    ::flistxattr(from, names.data(), std::size_t(names.size()));
    for (const char* name = names.constData(); *name != 0; name += qstrlen(name) + 1) {
        std::array<char, XATTR_SIZE_MAX> value = {};
        const auto length = ::fgetxattr(from, name, value.data(), value.size());
        if (length < 0 || ::fsetxattr(to, name, value.data(), std::size_t(length), 0) != 0)
            return false;
    }
    return ::flistxattr(to, nullptr, 0) == size;
#else
    return true;
#endif
}

/** Gives a file the owner, the rights and the attributes of another; false where it cannot be. */
bool makeAlike(int file, int model)
{
    struct stat wanted = {};
    struct stat info = {};
    return ::fstat(model, &wanted) == 0 && ::fchown(file, wanted.st_uid, wanted.st_gid) == 0 &&
           ::fchmod(file, wanted.st_mode & 07777U) == 0 && copyAttributes(model, file) &&
           ::fstat(file, &info) == 0 && info.st_mode == wanted.st_mode;
}

/** Opens a file to write over it, and to read what it holds where that is allowed. */
bool openInPlace(const QByteArray& path, int flags, QFile* file)
{
    flags |= O_CLOEXEC | O_NOCTTY;
    int handle = ::open(path.constData(), O_RDWR | flags, 0666);
    if (handle < 0)
        handle = ::open(path.constData(), O_WRONLY | flags, 0666);
    return handle >= 0 && file->open(handle, QIODevice::ReadWrite | QIODevice::Unbuffered,
                                     QFileDevice::AutoCloseHandle);
}

/** Where a new file goes, or one that takes the place of an old one; empty where it must not. */
QString placeOf(const QString& path, const QFile& old)
{
    QString place = QFileInfo(path).isSymLink() ? QFileInfo(path).canonicalFilePath() : path;
    if (!old.isOpen())
        return place;
    struct stat info = {};
    struct stat found = {};
    const bool isPlain = ::fstat(old.handle(), &info) == 0 && S_ISREG(info.st_mode) &&
                         info.st_nlink == 1 &&
                         ::stat(QFile::encodeName(place).constData(), &found) == 0 &&
                         found.st_dev == info.st_dev && found.st_ino == info.st_ino;
    return isPlain ? place : QString();
}

bool store(QFile& file, const QByteArray& bytes, qint64 length)
{
    return file.seek(0) && file.write(bytes) == bytes.size() && file.resize(length);
}

/** Writes over what a file holds; when that falls short, puts the old bytes back. */
bool overwrite(QFile& file, const QByteArray& bytes)
{
    struct stat info = {};
    if (::fstat(file.handle(), &info) != 0 || !S_ISREG(info.st_mode))
        return file.write(bytes) == bytes.size();
    // What cannot be put back is not overwritten.
    const QByteArray old = file.read(bytes.size());
    if (old.size() < qMin(qint64(bytes.size()), qint64(info.st_size)))
        return false;
    if (store(file, bytes, bytes.size()))
        return true;
    store(file, old, info.st_size);
    return false;
}

/** Writes into a second file, down to the disk; commit() would take what falls short for done. */
bool storeSynced(QFileDevice& file, const QByteArray& bytes)
{
    return file.write(bytes) == bytes.size() && file.flush() &&
           (::fsync(file.handle()) == 0 || errno == EINVAL);
}

/** Lets a second file take the place of none; eSTATUS_FILE_OPEN_FAILED where none can. */
tag_estatus createFile(const QString& path, const QByteArray& bytes)
{
    QSaveFile next(path);
    if (!next.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return eSTATUS_FILE_OPEN_FAILED;
    if (!storeSynced(next, bytes))
        return eSTATUS_FAILED;
    return next.commit() ? eSTATUS_SUCCESS : eSTATUS_FILE_OPEN_FAILED;
}

/** The same of an old file. The second one has no name until the end, where there are such. */
tag_estatus replaceFile(const QString& path, const QFile& old, const QByteArray& bytes)
{
    QTemporaryFile next(path + QLatin1String(".XXXXXX"));
    if (path.isEmpty() || !next.open() || !makeAlike(next.handle(), old.handle()))
        return eSTATUS_FILE_OPEN_FAILED;
    if (!storeSynced(next, bytes))
        return eSTATUS_FAILED;
    const QByteArray name = QFile::encodeName(next.fileName());
    if (::rename(name.constData(), QFile::encodeName(path).constData()) != 0)
        return eSTATUS_FILE_OPEN_FAILED;
    next.setAutoRemove(false);
    return eSTATUS_SUCCESS;
}

tag_estatus replaceFile(const QString& path, const QByteArray& bytes)
{
    const QByteArray name = QFile::encodeName(path);
    QFile old;
    if (!openInPlace(name, 0, &old) && errno != ENOENT)
        return eSTATUS_FILE_OPEN_FAILED;
    const bool isNew = !old.isOpen();
    const QString place = placeOf(path, old);
    const tag_estatus status = isNew ? createFile(place, bytes) : replaceFile(place, old, bytes);
    if (status != eSTATUS_FILE_OPEN_FAILED)
        return status;
    if (isNew && !openInPlace(name, O_CREAT, &old))
        return eSTATUS_FILE_OPEN_FAILED;
    if (overwrite(old, bytes))
        return eSTATUS_SUCCESS;
    if (isNew)
        QFile::remove(QFileInfo(path).canonicalFilePath());
    return eSTATUS_FAILED;
}

#else

tag_estatus replaceFile(const QString& path, const QByteArray& bytes)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return eSTATUS_FILE_OPEN_FAILED;
    return file.write(bytes) == bytes.size() && file.commit() ? eSTATUS_SUCCESS : eSTATUS_FAILED;
}

#endif

tag_estatus appendToFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    // Unbuffered: a buffer would take the bytes and hide that the disk does not.
    if (!file.open(QIODevice::Append | QIODevice::Unbuffered))
        return eSTATUS_FILE_OPEN_FAILED;
    const qint64 length = file.size();
    if (file.write(bytes) == bytes.size())
        return eSTATUS_SUCCESS;
    file.resize(length);
    return eSTATUS_FAILED;
}

} // namespace

bool mayBeRead(const QByteArray& path)
{
    return mayBeOpened(path, Devices::Refused);
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
    return mayBeOpened(QFile::encodeName(file.fileName()), Devices::Allowed) &&
           file.open(QIODevice::WriteOnly | how);
}

tag_estatus readFile(const QString& path, QByteArray* bytes)
{
    QFile file(path);
    return openToRead(file) ? readAll(file, bytes) : eSTATUS_FILE_OPEN_FAILED;
}

tag_estatus readAll(QFile& file, QByteArray* bytes)
{
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

tag_estatus readInfoText(const QString& path, QByteArray* text)
{
    const tag_estatus status = readFile(path, text);
    if (status == eSTATUS_SUCCESS)
        *text = infoBytes(std::move(*text));
    return status;
}

tag_estatus readInfoText(const QString& path, QString* text)
{
    QByteArray bytes;
    const tag_estatus status = readFile(path, &bytes);
    if (status == eSTATUS_SUCCESS)
        *text = decodeInfoText(std::move(bytes));
    return status;
}

tag_estatus writeFile(const QString& path, const QByteArray& bytes, WriteMode mode)
{
    if (!mayBeOpened(QFile::encodeName(path), Devices::Allowed))
        return eSTATUS_FILE_OPEN_FAILED;
    const bool appends = mode == WriteMode::Append && QFile::exists(path);
    return appends ? appendToFile(path, bytes) : replaceFile(path, bytes);
}

} // namespace ovparser::internal
