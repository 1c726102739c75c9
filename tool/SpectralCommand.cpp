#include "Commands.h"
#include "SpectralFile.h"
#include "SpectralJson.h"
#include "SpectralSvg.h"
#include "SpectralText.h"
#include "Terminal.h"

#include <QtCore/QFileInfo>

ExitCode spectralCommand(const Request& request)
{
    const QString path = request.files.at(0);
    QString problem;
    const auto file = readSpectralFile(path, &problem);
    if (!file)
        return fail(BadFile, path + QLatin1String(": ") + problem);
    if (request.has(Options::svg) && QFileInfo(request.value(Options::svg)).canonicalFilePath() ==
                                         QFileInfo(path).canonicalFilePath())
        return fail(path, QLatin1String("the drawing would replace the file itself"));
    if (request.has(Options::svg) && !writeSpectralSvg(*file, request.value(Options::svg)))
        return fail(BadFile, request.value(Options::svg) + QLatin1String(": cannot be written"));
    if (request.has(Options::json))
        print(spectralJson(path, *file));
    else
        print(spectralText(*file));
    return Success;
}
