// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Commands.h"
#include "Dicom.h"
#include "Document.h"
#include "Files.h"
#include "InfoScan.h"

#include <algorithm>

namespace {

/** Whether bytes are text as a save appends it: lines, the first header line among them. */
bool isAppendedText(const QByteArray& bytes)
{
    const auto isText = [](char c) { return c < 0 || c >= ' ' || (c >= '\t' && c <= '\r'); };
    return std::all_of(bytes.cbegin(), bytes.cend(), isText) &&
           beforeHeaders(latin1View(bytes)).size() < bytes.size();
}

ExitCode strip(const QString& file)
{
    QString problem;
    const auto bytes = readFile(file, &problem);
    if (!bytes)
        return fail(file, problem);
    const auto end = dataSetEnd(*bytes);
    if (!end)
        return fail(file, QLatin1String("not a DICOM file whose data elements can be followed to "
                                        "their end; not changed"));
    if (!isAppendedText(bytes->mid(*end)))
        return fail(file, *end == bytes->size()
                              ? QLatin1String("holds no click info")
                              : QLatin1String("what follows the data elements is no click info; "
                                              "not changed"));
    problem = rewriteFile(file, *bytes, bytes->left(*end));
    return problem.isEmpty() ? Success : fail(file, problem);
}

} // namespace

ExitCode stripCommand(const Request& request)
{
    ExitCode result = Success;
    for (const QString& file : request.files) {
        if (strip(file) != Success)
            result = BadFile;
    }
    return result;
}
