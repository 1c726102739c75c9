// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Commands.h"
#include "Files.h"
#include "SpectralFile.h"
#include "SpectralJson.h"
#include "SpectralSvg.h"
#include "SpectralText.h"
#include "Terminal.h"

#include <QtCore/QFileInfo>

namespace {

/** Draws to a file; gives what went wrong, empty on success. */
QString draw(const SpectralFile& file, const QString& path, const QString& drawing)
{
    if (QFileInfo(drawing).canonicalFilePath() == QFileInfo(path).canonicalFilePath())
        return QStringLiteral("the drawing would replace the file itself");
    if (const char* const obstacle = obstacleOf(drawing, Access::Write))
        return QLatin1String(obstacle);
    return saveFile(drawing, spectralSvg(file)) ? QString() : QStringLiteral("cannot be written");
}

} // namespace

ExitCode spectralCommand(const Request& request)
{
    const QString path = request.files.at(0);
    QString problem;
    const auto file = readSpectralFile(path, &problem);
    if (!file)
        return fail(path, problem);
    if (request.has(Options::svg)) {
        const QString drawing = request.value(Options::svg);
        problem = draw(*file, path, drawing);
        if (!problem.isEmpty())
            return fail(drawing, problem);
    }
    if (request.has(Options::json))
        print(spectralJson(path, *file));
    else
        print(spectralText(*file));
    return Success;
}
