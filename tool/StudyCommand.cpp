#include "Commands.h"
#include "Terminal.h"

#include "ParserLibrary.h"

namespace {

namespace Key = PLKeyword::Key;
namespace Section = PLKeyword::Section;

struct ImageKind
{
    QLatin1String section;
    tag_eimagetype type = eIMAGE_PHOTOGRAPH;
};

/** The image sections; of those that an acquisition holds, the first is its main image. */
constexpr ImageKind imageKinds[] = {
    {Section::Luminescent, eIMAGE_LUMINESCENT},
    {Section::LuminescentCorrected, eIMAGE_LUMINESCENT_CORRECTED},
    {Section::FluorescentReference, eIMAGE_FL_REFERENCE},
    {Section::XRay, eIMAGE_XRAY},
    {Section::Structure, eIMAGE_STRUCTURE},
    {Section::Photograph, eIMAGE_PHOTOGRAPH},
    {Section::FluorescentBackground, eIMAGE_FLUORESCENT_BKG},
    {Section::DarkCharge, eIMAGE_BACKGROUND},
    {Section::ReadBiasOnly, eIMAGE_BIAS},
    {Section::ReadBias, eIMAGE_READ_BIAS},
    {Section::ReadSigma, eIMAGE_READ_SIGMA},
    {Section::Blemish, eIMAGE_BLEMISH},
};

constexpr QLatin1String exposureKeys[] = {Key::LuminescentExposure, Key::ExposureTimeSec,
                                          Key::BackgroundExposure};

QString exposureOf(const CPLSection& image)
{
    for (const QLatin1String key : exposureKeys) {
        if (!image.isKeyPresent(key))
            continue;
        const QString units =
            key == Key::LuminescentExposure ? image[Key::LuminescentExposureUnits] : QString();
        return image[key] + QLatin1Char(' ') + (units.isEmpty() ? QStringLiteral("sec") : units);
    }
    return {};
}

QStringList rowOf(const QString& clickNumber, const CPLClickInfo& acquisition)
{
    QStringList images;
    const CPLSection* main = nullptr;
    for (const ImageKind& kind : imageKinds) {
        const CPLSection* const section = acquisition[kind.section];
        if (!section)
            continue;
        const QString image = getImageTypeString(kind.type);
        if (!images.contains(image))
            images += image;
        if (!main)
            main = section;
    }
    if (!main)
        return {clickNumber};
    return {clickNumber,
            (*main)[Key::AcquisitionDate],
            (*main)[Key::AcquisitionTime],
            images.join(QLatin1String(", ")),
            exposureOf(*main),
            (*main)[Key::BinningFactor],
            (*main)[Key::FieldOfView]};
}

} // namespace

int studyCommand(const QStringList& words)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QLatin1String(
        "Prints a sequence folder: the sequence and a table of its acquisitions. Exposure, binning "
        "and field of view are those of the main image."));
    if (const auto done = parse(parser, QLatin1String("study"), QLatin1String("FOLDER"), words))
        return *done;
    const QString file =
        parser.positionalArguments().at(0) + QLatin1Char('/') + PLKeyword::File::SequenceInfo;
    CPLSequenceInfo sequence;
    const tag_estatus status = sequence.loadFile(file);
    if (status != eSTATUS_SUCCESS && status != eSTATUS_EMPTY_SEQUENCE)
        return fail(file, status);
    const QStringList clickNumbers = sequence.getClickNumberList();
    QList<QStringList> rows = {{QLatin1String("Click number"), QLatin1String("Date"),
                                QLatin1String("Time"), QLatin1String("Images"),
                                QLatin1String("Exposure"), QLatin1String("Binning"),
                                QLatin1String("Field of view")}};
    ExitCode result = Success;
    for (int i = 0; i < clickNumbers.size(); ++i) {
        CPLClickInfo acquisition;
        const tag_estatus loaded = acquisition.loadClickInfo(sequence.getDatasetPath(i), false);
        if (loaded == eSTATUS_SUCCESS) {
            rows += rowOf(clickNumbers.at(i), acquisition);
        } else {
            rows.append({clickNumbers.at(i), getStatusString(loaded)});
            result = fail(sequence.getDatasetPath(i), loaded);
        }
    }
    print(QLatin1String("Sequence ") + sequence.getDatasetName() + QLatin1String(", ") +
          counted(int(clickNumbers.size()), "acquisition") + QLatin1String("\n\n") + columns(rows));
    return result;
}
