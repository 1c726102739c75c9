#include "Commands.h"
#include "Document.h"
#include "Terminal.h"

#include <algorithm>

namespace {

/** The lines of a section behind its header line: pairs as two cells, comments as one. */
QList<QStringList> entriesOf(const CPLSection& section)
{
    QString text;
    section.saveSectionData(text);
    QStringList lines = text.split(PLKeyword::Text::LineEnd);
    // The last value of a reference keeps the line end of its file.
    lines.replaceInStrings(QStringLiteral("\n"), QString());
    // The header line comes first; the empty line behind a section leaves two empty parts.
    lines = lines.mid(1, lines.size() - 3);
    QList<QStringList> entries;
    for (const QString& line : lines) {
        const auto colon = line.indexOf(QLatin1String(":\t"));
        if (colon < 0 || line.startsWith(QLatin1Char('#')))
            entries.append({line});
        else
            entries.append({line.left(colon), line.mid(colon + 2)});
    }
    return entries;
}

QString headingOf(const CPLSection& section)
{
    QString key;
    QString name;
    section.getSectionKey(&key);
    section.getSectionName(&name, true);
    name.remove(QLatin1Char('\n'));
    const QString heading = QLatin1Char('[') + key + QLatin1Char(']');
    return name.isEmpty() ? heading : heading + QLatin1Char(' ') + name;
}

QString sectionText(const CPLSection& section)
{
    const QList<QStringList> entries = entriesOf(section);
    int width = 0;
    for (const QStringList& entry : entries)
        width = entry.size() > 1 ? qMax(width, int(entry.at(0).size())) : width;
    QString text = headingOf(section) + QLatin1Char('\n');
    for (const QStringList& entry : entries) {
        QString line = QLatin1String("  ") + entry.at(0);
        if (entry.size() > 1 && !entry.at(1).isEmpty())
            line = line.leftJustified(width + 4) + entry.at(1);
        text += (entry.at(0).isEmpty() ? QString() : line) + QLatin1Char('\n');
    }
    return text.replace(QLatin1Char('\t'), QLatin1String("  "));
}

/** The lines before the first section. */
QString preambleOf(const CPLClickInfo& document)
{
    const QByteArray data = document.getClickInfoData();
    const QStringList lines =
        QString::fromLatin1(data.constData(), data.size()).split(PLKeyword::Text::LineEnd);
    const auto isHeader = [](const QString& line) {
        return line.trimmed().startsWith(PLKeyword::Text::BareMarker);
    };
    const auto header = std::find_if(lines.cbegin(), lines.cend(), isHeader) - lines.cbegin();
    QString text;
    for (const QString& line : lines.mid(0, int(header)))
        text += line + QLatin1Char('\n');
    return text;
}

} // namespace

int showCommand(const QStringList& words)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QLatin1String("Prints a file: its sections with their names, keys, values and comments."));
    if (const auto done = parse(parser, QLatin1String("show"), QLatin1String("FILE"), words))
        return *done;
    const QString file = parser.positionalArguments().at(0);
    Document document;
    const tag_estatus status = document.load(file);
    if (status != eSTATUS_SUCCESS)
        return fail(file, status);
    const QList<CPLSection*> sections = document.sections();
    QString text = document.title() + QLatin1String(", ") +
                   counted(int(sections.size()), "section") + QLatin1Char('\n');
    if (!document.isSequence())
        text += preambleOf(document.text());
    for (const CPLSection* const section : sections)
        text += QLatin1Char('\n') + sectionText(*section);
    print(text);
    return Success;
}
