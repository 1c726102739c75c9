// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Files.h"

#include "internal/text/TextFile.h"

#include <QtCore/QDateTime>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <filesystem>

#ifdef Q_OS_UNIX
#include <sys/file.h>
#include <sys/stat.h>
#endif

using ovparser::internal::writeFile;
using ovparser::internal::WriteMode;

namespace {

struct Explanation
{
    tag_estatus status = eSTATUS_SUCCESS;
    const char* text = "";
};

constexpr Explanation explanations[] = {
    {eSTATUS_NO_CLICK_NUMBERS, "lists no click numbers"},
    {eSTATUS_BAD_FORMAT, "a malformed header line; 'ovinfo check' tells where"},
    {eSTATUS_FILE_READ_FAILED, "cannot be read"},
    {eSTATUS_FILE_OPEN_FAILED, "cannot be opened"},
    {eSTATUS_FILE_NOT_FOUND, "not found, or cannot be opened"},
    {eSTATUS_KEY_NOT_FOUND, "no such key"},
    {eSTATUS_EMPTY_SECTION_KEY, "a section without its key or number; 'ovinfo check' tells where"},
    {eSTATUS_FAILED, "cannot be stored as a whole"},
    {eSTATUS_INVALID_ARGUMENT, "not acceptable"},
    {eSTATUS_INVALID_VALUE, "an empty value where one is needed"},
    {eSTATUS_OUT_OF_MEMORY, "too large"},
    {eSTATUS_SECTION_EXISTS, "the section is there already"},
    {eSTATUS_SECTION_NOT_FOUND, "no such section"},
    {eSTATUS_UNSUPPORTED_IMAGE_TYPE, "not for images of this type"},
};

} // namespace

const char* obstacleOf(const QString& path, Access access)
{
    const char* const denied = "permission denied";
    std::error_code error;
    const auto status = std::filesystem::status(QFile::encodeName(path).toStdString(), error);
    const QFileInfo file(path);
    const QFileInfo folder(file.path());
    const bool absent = status.type() == std::filesystem::file_type::not_found;
    if (absent && (access == Access::Read || !folder.isDir()))
        return access == Access::Read ? "no such file" : "no such folder";
    if (error == std::errc::permission_denied)
        return denied;
    if (access == Access::Read)
        return file.isReadable() ? nullptr : denied;
    return (absent ? folder : file).isWritable() ? nullptr : denied;
}

QString explained(tag_estatus status, const QString& path, Access access)
{
    const bool unopened = status == eSTATUS_FILE_OPEN_FAILED || status == eSTATUS_FILE_NOT_FOUND;
    const char* text = unopened ? obstacleOf(path, access) : nullptr;
    for (const Explanation& row : explanations) {
        if (!text && row.status == status)
            text = row.text;
    }
    const QString name = getStatusString(status);
    return text ? QStringLiteral("%1 (%2)").arg(QLatin1String(text), name) : name;
}

QString otherThanFile(const QString& path)
{
    const QFileInfo info(path);
    if (info.isDir())
        return QStringLiteral("a folder, not a file");
    return info.exists() && !info.isFile() ? QStringLiteral("not a regular file") : QString();
}

FileStamp stampOf(const QString& path)
{
#ifdef Q_OS_LINUX
    // Qt would make a local time of it, for which the C runtime looks for the time zone each time.
    struct stat info = {};
    if (::stat(QFile::encodeName(path).constData(), &info) != 0)
        return {};
    return {info.st_size,
            qint64(info.st_mtim.tv_sec) * 1000 + qint64(info.st_mtim.tv_nsec) / 1000000};
#else
    const QFileInfo info(path);
    return {info.size(), info.lastModified().toMSecsSinceEpoch()};
#endif
}

std::optional<QByteArray> readFile(const QString& path, QString* problem)
{
    *problem = otherThanFile(path);
    if (!problem->isEmpty())
        return std::nullopt;
    QByteArray bytes;
    const tag_estatus status = ovparser::internal::readFile(path, &bytes);
    if (status == eSTATUS_SUCCESS)
        return bytes;
    *problem = explained(status, path);
    return std::nullopt;
}

bool saveFile(const QString& path, const QByteArray& bytes)
{
    if (otherThanFile(path).isEmpty())
        return writeFile(path, bytes, WriteMode::Replace) == eSTATUS_SUCCESS;
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
           file.write(bytes) == bytes.size();
}

QString rewriteFile(const QString& path, const QByteArray& old, const QByteArray& bytes)
{
    QFile lock(path);
#ifdef Q_OS_UNIX
    // Who changes the same file in the same way waits here, and then sees the change.
    if (lock.open(QIODevice::ReadOnly))
        ::flock(lock.handle(), LOCK_EX);
#endif
    QString problem;
    const auto held = readFile(path, &problem);
    if (!held)
        return problem;
    if (*held != old)
        return QStringLiteral("has changed since it was read; not changed");
    const tag_estatus status = writeFile(path, bytes, WriteMode::Replace);
    if (status == eSTATUS_SUCCESS)
        return {};
    if (status == eSTATUS_FILE_OPEN_FAILED)
        return explained(status, path, Access::Write);
    return readFile(path, &problem) == old
               ? QStringLiteral("cannot be written; not changed")
               : QStringLiteral("cannot be written, nor could the old bytes be put back");
}
