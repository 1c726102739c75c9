// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Commands.h"
#include "Edit.h"
#include "Entries.h"
#include "Files.h"
#include "LineDiff.h"
#include "Terminal.h"

#include <QtCore/QTemporaryFile>

#ifdef Q_OS_LINUX
#include <sys/mman.h>
#endif

namespace {

/** Reads bytes as the library will read them once they are in the file. */
bool loadBytes(const QByteArray& bytes, Document* document)
{
#ifdef Q_OS_LINUX
    QFile file; // in memory: nothing of it stays, whatever happens to the program
    const bool open = file.open(::memfd_create("ovinfo", MFD_CLOEXEC), QIODevice::ReadWrite,
                                QFileDevice::AutoCloseHandle);
    const QString path = QStringLiteral("/proc/self/fd/%1").arg(file.handle());
#else
    QTemporaryFile file;
    const bool open = file.open();
    const QString path = file.fileName();
#endif
    return open && file.write(bytes) == bytes.size() && file.flush() && document->load(path);
}

ExitCode change(const QString& file, const Edit& edit, bool dryRun)
{
    Document document;
    if (!document.load(file))
        return fail(file, document.problem());
    const Edited result = edited(document, edit);
    if (!result.bytes)
        return result.status == eSTATUS_SUCCESS
                   ? fail(file, result.problem)
                   : fail(file + QLatin1String(": ") + result.word, result.status);
    const QByteArray& bytes = *result.bytes;
    Document changed;
    if (!loadBytes(bytes, &changed) || !isEditedOnly(document, changed, edit))
        return fail(file, QLatin1String("would not read back with that value alone changed; not "
                                        "changed"));
    if (dryRun) {
        print(lineDiff(file, document.bytes(), bytes, document.textStart()));
        return Success;
    }
    const QString problem = rewriteFile(file, document.bytes(), bytes);
    return problem.isEmpty() ? Success : fail(file, problem);
}

ExitCode changeAll(const Request& request, const Edit& edit)
{
    ExitCode result = Success;
    for (const QString& file : request.files) {
        if (change(file, edit, request.has(Options::dryRun)) != Success)
            result = BadFile;
    }
    return result;
}

bool isOneLine(const QString& text)
{
    return !text.contains(QLatin1Char('\n')) && !text.contains(QLatin1Char('\r'));
}

} // namespace

ExitCode setCommand(const Request& request)
{
    const QString value = trimmed(request.words.at(2));
    if (!isOneLine(value))
        return fail(WrongUsage, QLatin1String("a value is a single line"));
    return changeAll(request, {request.words.at(0), request.words.at(1), value,
                               request.has(Options::add) ? Edit::SetOrAdd : Edit::Set});
}

ExitCode unsetCommand(const Request& request)
{
    return changeAll(request, {request.words.at(0), request.words.at(1), QString(), Edit::Unset});
}
