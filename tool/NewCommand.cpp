#include "Commands.h"
#include "Document.h"
#include "Files.h"
#include "Terminal.h"

#include "ParserLibrary.h"

#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>

namespace {

namespace Section = PLKeyword::Section;

/** The images for which the library makes up click info. */
struct ImageKind
{
    const char* name = "";
    tag_eimagetype type = eIMAGE_PHOTOGRAPH;
    QLatin1String section;
};

constexpr ImageKind imageKinds[] = {
    {"photograph", eIMAGE_PHOTOGRAPH, Section::Photograph},
    {"luminescent", eIMAGE_LUMINESCENT, Section::Luminescent},
    {"structure", eIMAGE_STRUCTURE, Section::Structure},
};

const ImageKind* kindOf(const QString& name)
{
    for (const ImageKind& kind : imageKinds) {
        if (name == QLatin1String(kind.name))
            return &kind;
    }
    return nullptr;
}

/** Fourteen digits follow the user ID in a click number of at most 31 characters. */
bool isUserId(const QString& text)
{
    static const QRegularExpression pattern(QStringLiteral("\\A[A-Za-z][A-Za-z0-9_-]{0,16}\\z"));
    return pattern.match(text).hasMatch();
}

bool holdsClickInfo(const QString& file)
{
    Document document;
    return document.load(file) && !document.clickNumber().isEmpty();
}

ExitCode create(const QString& image, const QString& user, const ImageKind& kind, int binning,
                const QString& output)
{
    CPLClickInfo info;
    tag_estatus status = info.loadClickInfo(image, user, kind.type, binning);
    if (status != eSTATUS_SUCCESS)
        return fail(image, status);
    // The library takes the binning of a structure image from a setting that it leaves as it is.
    info.setValue(kind.section, PLKeyword::Key::BinningFactor, binning);
    status = info.saveClickInfo(output);
    if (status != eSTATUS_SUCCESS)
        return fail(output, status);
    QString clickNumber;
    info.getClickNumber(&clickNumber);
    print(QStringLiteral("%1 written to %2\n").arg(clickNumber, output));
    return Success;
}

} // namespace

int newCommand(const QStringList& words)
{
    QCommandLineParser parser;
    const QCommandLineOption user =
        option("user", "ID", "The user, without whom there is no click number; it begins so.");
    const QCommandLineOption type =
        option("type", "TYPE", "photograph (if not given), luminescent or structure.");
    const QCommandLineOption binning = option("binning", "N", "Binning factor; 1 if not given.");
    const QCommandLineOption output =
        option("output", "FILE", "Where to write; ClickInfo.txt beside the image if not given.");
    const QCommandLineOption force =
        flag("force", "Replaces a file that is there already; appends to DICOM with click info.");
    parser.addOptions({user, type, binning, output, force});
    parser.setApplicationDescription(QLatin1String(
        "Makes up the click info of an image that has none: click number (user and time), user "
        "labels without values, and the section of the image, which is not read itself."));
    if (const auto done = parse(parser, QLatin1String("new"), QLatin1String("IMAGE"), words))
        return *done;
    const QFileInfo image(parser.positionalArguments().at(0));
    if (!image.isFile())
        return fail(image.filePath(), QLatin1String("no such image"));
    if (!isUserId(parser.value(user)))
        return fail(WrongUsage, QLatin1String("--user takes 1 to 17 letters, digits, '_' or '-', a "
                                              "letter first"));
    const ImageKind* const kind =
        kindOf(parser.isSet(type) ? parser.value(type) : QStringLiteral("photograph"));
    if (!kind)
        return fail(WrongUsage, QLatin1String("--type takes photograph, luminescent or structure"));
    const int factor = parser.isSet(binning) ? parser.value(binning).toInt() : 1;
    if (factor < 1)
        return fail(WrongUsage, QLatin1String("--binning takes a number from 1 on"));
    const QString file = parser.isSet(output)
                             ? parser.value(output)
                             : image.path() + QLatin1Char('/') + PLKeyword::File::ClickInfo;
    if (QFileInfo(file).canonicalFilePath() == image.canonicalFilePath())
        return fail(file, QLatin1String("is the image itself"));
    const bool appended = file.endsWith(PLKeyword::File::DicomSuffix);
    if (!otherThanFile(file).isEmpty())
        return fail(file, otherThanFile(file));
    if (appended && !parser.isSet(force) && holdsClickInfo(file))
        return fail(file, QLatin1String("holds click info already; --force appends more"));
    if (QFileInfo::exists(file) && !appended && !parser.isSet(force))
        return fail(file, QLatin1String("is there already; --force replaces it"));
    return create(image.filePath(), parser.value(user), *kind, factor, file);
}
