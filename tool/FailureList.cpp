// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "FailureList.h"

#include "Files.h"
#include "Json.h"

namespace {

QString textOf(const QJsonObject& failure, const char* member)
{
    return failure.value(QLatin1String(member)).toString();
}

} // namespace

void FailureList::add(const Found& found)
{
    if (!found.problem.isEmpty())
        m_failures += recordOf(Wanted(), found);
}

ExitCode FailureList::tell(const QString& file) const
{
    QByteArray lines;
    for (const QJsonObject& failure : m_failures) {
        if (file.isEmpty())
            fail(textOf(failure, "path"), textOf(failure, "problem"));
        else
            lines += jsonLine(failure).toUtf8();
    }
    if (!file.isEmpty() && !saveFile(file, lines))
        return fail(file, explained(eSTATUS_FILE_OPEN_FAILED, file, Access::Write));
    if (!file.isEmpty() && count() > 0)
        fail(file, counted(count(), "failure"));
    return count() > 0 ? BadFile : Success;
}
