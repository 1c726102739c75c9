// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

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

/** What `new` is asked for. */
struct Making
{
    QString image;
    QString user;
    const ImageKind* kind = nullptr;
    int binning = 1;
    QString output;
};

ExitCode create(const Making& making)
{
    CPLClickInfo info;
    tag_estatus status =
        info.loadClickInfo(making.image, making.user, making.kind->type, making.binning);
    if (status != eSTATUS_SUCCESS)
        return fail(making.image, status);
    // The library takes the binning of a structure image from a setting that it leaves as it is.
    info.setValue(making.kind->section, PLKeyword::Key::BinningFactor, making.binning);
    status = info.saveClickInfo(making.output);
    if (status != eSTATUS_SUCCESS)
        return fail(making.output, explained(status, making.output, Access::Write));
    QString clickNumber;
    info.getClickNumber(&clickNumber);
    print(QStringLiteral("%1 written to %2\n").arg(clickNumber, printable(making.output)));
    return Success;
}

/** What is wrong with the options; null when nothing is. */
const char* wrongOption(const Making& making)
{
    if (!isUserId(making.user))
        return "--user takes 1 to 17 letters, digits, '_' or '-', a letter first";
    if (!making.kind)
        return "--type takes photograph, luminescent or structure";
    return making.binning < 1 ? "--binning takes a number from 1 on" : nullptr;
}

/** Why the output must not be written; empty when it may be. */
QString obstacle(const Making& making, bool force)
{
    const QString& file = making.output;
    if (QFileInfo(file).canonicalFilePath() == QFileInfo(making.image).canonicalFilePath())
        return QStringLiteral("is the image itself");
    QString other = otherThanFile(file);
    if (!other.isEmpty() || force)
        return other;
    if (!file.endsWith(PLKeyword::File::DicomSuffix))
        return QFileInfo::exists(file) ? QStringLiteral("is there already; --force replaces it")
                                       : QString();
    return holdsClickInfo(file) ? QStringLiteral("holds click info already; --force appends more")
                                : QString();
}

} // namespace

ExitCode newCommand(const Request& request)
{
    const QFileInfo image(request.files.at(0));
    if (!image.isFile()) {
        const QString other = otherThanFile(image.filePath());
        return fail(image.filePath(), other.isEmpty()
                                          ? explained(eSTATUS_FILE_OPEN_FAILED, image.filePath())
                                          : other);
    }
    const auto valueOr = [&](const Option& option, const QString& otherwise) {
        return request.has(option) ? request.value(option) : otherwise;
    };
    const QString beside = image.path() + QLatin1Char('/') + PLKeyword::File::ClickInfo;
    const Making making = {image.filePath(), request.value(Options::user),
                           kindOf(valueOr(Options::type, QStringLiteral("photograph"))),
                           valueOr(Options::binning, QStringLiteral("1")).toInt(),
                           valueOr(Options::output, beside)};
    if (const char* const wrong = wrongOption(making))
        return fail(WrongUsage, QLatin1String(wrong));
    const QString problem = obstacle(making, request.has(Options::force));
    return problem.isEmpty() ? create(making) : fail(making.output, problem);
}
