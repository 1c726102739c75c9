#include "Commands.h"
#include "Document.h"
#include "Terminal.h"

#include <QtCore/QFile>
#include <QtCore/QSet>

#include <algorithm>

namespace {

bool isSingleLine(const QString& value)
{
    return !value.contains(QLatin1Char('\n')) && !value.contains(QLatin1Char('\r'));
}

/** The characters that stand for a text in a file: Latin-1, in a sequence the bytes of UTF-8. */
QString fileForm(const QString& text, bool sequence)
{
    const QByteArray bytes = sequence ? text.toUtf8() : text.toLatin1();
    return QString::fromLatin1(bytes.constData(), bytes.size());
}

/** Whether the document holds every section of the file: of two with one key it takes the first. */
bool holdsEverySection(const CPLClickInfo& document, const QString& file)
{
    int sections = 0;
    document.getSectionCount(&sections);
    QFile input(file);
    if (!input.open(QIODevice::ReadOnly))
        return false;
    const QList<QByteArray> lines = input.readAll().replace('\r', '\n').split('\n');
    const auto headers = std::count_if(lines.cbegin(), lines.cend(), [](const QByteArray& line) {
        return line.trimmed().startsWith(PLKeyword::Text::BareMarker.data());
    });
    return headers == sections;
}

/**
 * Whether every line of the sections is written back with its own value: of repeated keys the last
 * value is written, and a key like that of a comment gives a bare value.
 */
bool keepsEveryLine(const CPLClickInfo& document)
{
    for (int i = 0; const CPLSection* const section = document[i]; ++i) {
        QStringList keys;
        section->getKeyList(&keys);
        QSet<QString> distinct;
        for (const QString& key : qAsConst(keys))
            distinct.insert(key.toLower());
        const QStringList bare = keys.filter(PLKeyword::Text::CommentKey, Qt::CaseInsensitive);
        if (!bare.isEmpty() || distinct.size() != keys.size())
            return false;
    }
    return true;
}

} // namespace

int setCommand(const QStringList& words)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QLatin1String("Changes one value of a file in place. The key must be there already; its "
                      "comment stays unless VALUE brings one."));
    if (const auto done =
            parse(parser, QLatin1String("set"), QLatin1String("FILE SECTION KEY VALUE"), words))
        return *done;
    const QStringList arguments = parser.positionalArguments();
    const QString& file = arguments.at(0);
    const QString& value = arguments.at(3);
    if (!isSingleLine(value))
        return fail(WrongUsage, QLatin1String("a value is a single line"));
    Document document;
    tag_estatus status = document.load(file);
    if (status != eSTATUS_SUCCESS)
        return fail(file, status);
    if (document.isCatalogue())
        return fail(BadFile, file + QLatin1String(": a catalogue; not changed"));
    const bool sequence = document.isSequence();
    if (!sequence && fileForm(value, false) != value)
        return fail(WrongUsage,
                    QLatin1String("the value has characters that the file cannot hold"));
    if (sequence && value.contains(PLKeyword::Text::Marker))
        return fail(WrongUsage, QLatin1String("the value would begin a new section"));
    // The text of a sequence keeps more of its file than the sequence does.
    CPLClickInfo text;
    status = text.loadClickInfo(file, false);
    if (status != eSTATUS_SUCCESS)
        return fail(file, status);
    if (!holdsEverySection(text, file))
        return fail(BadFile, file + QLatin1String(": a section occurs twice; not changed"));
    if (!keepsEveryLine(text))
        return fail(BadFile, file + QLatin1String(": a key occurs twice; not changed"));
    status = text.setValue(fileForm(arguments.at(1), sequence), fileForm(arguments.at(2), sequence),
                           fileForm(value, sequence));
    if (status != eSTATUS_SUCCESS)
        return fail(arguments.at(1) + QLatin1String(", ") + arguments.at(2), status);
    status = text.saveClickInfo(file);
    return status == eSTATUS_SUCCESS ? Success : fail(file, status);
}
