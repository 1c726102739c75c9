#include "Commands.h"
#include "Document.h"
#include "Terminal.h"

int getCommand(const QStringList& words)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QLatin1String("Prints one value of a file, without its comment."));
    if (const auto done =
            parse(parser, QLatin1String("get"), QLatin1String("FILE SECTION KEY"), words))
        return *done;
    const QStringList arguments = parser.positionalArguments();
    Document document;
    const tag_estatus status = document.load(arguments.at(0));
    if (status != eSTATUS_SUCCESS)
        return fail(arguments.at(0), status);
    const CPLSection* const section = document.section(arguments.at(1));
    if (!section)
        return fail(arguments.at(1), eSTATUS_SECTION_NOT_FOUND);
    QString value;
    const tag_estatus found = section->getValue(arguments.at(2), &value);
    if (found != eSTATUS_SUCCESS)
        return fail(arguments.at(2), found);
    // The last value of a reference keeps the line end of its file.
    print(value.endsWith(QLatin1Char('\n')) ? value : value + QLatin1Char('\n'));
    return Success;
}
