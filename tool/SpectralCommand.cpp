#include "Commands.h"
#include "SpectralFile.h"
#include "SpectralJson.h"
#include "SpectralSvg.h"
#include "SpectralText.h"
#include "Terminal.h"

#include <QtCore/QFileInfo>

int spectralCommand(const QStringList& words)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QLatin1String(
        "Prints a spectral analysis: its acquisitions with filters and regions of interest, the "
        "results, the plots and the fit. Wavelengths are in nanometres; intensity and attenuation "
        "are in the file's own units."));
    const QCommandLineOption json = jsonOption();
    const QCommandLineOption svg =
        option("svg", "OUT.svg", "Draws the plots and the fit to a file as well.");
    parser.addOptions({json, svg});
    if (const auto done = parse(parser, QLatin1String("spectral"), QLatin1String("FILE"), words))
        return *done;
    const QString path = parser.positionalArguments().at(0);
    QString problem;
    const auto file = readSpectralFile(path, &problem);
    if (!file)
        return fail(BadFile, path + QLatin1String(": ") + problem);
    if (parser.isSet(svg) &&
        QFileInfo(parser.value(svg)).canonicalFilePath() == QFileInfo(path).canonicalFilePath())
        return fail(path, QLatin1String("the drawing would replace the file itself"));
    if (parser.isSet(svg) && !writeSpectralSvg(*file, parser.value(svg)))
        return fail(BadFile, parser.value(svg) + QLatin1String(": cannot be written"));
    if (parser.isSet(json))
        print(spectralJson(path, *file));
    else
        print(spectralText(*file));
    return Success;
}
