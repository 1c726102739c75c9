#include "StudyWriter.h"

#include "Json.h"
#include "Terminal.h"

#include <QtCore/QFileInfo>

#include <algorithm>

namespace {

QString folderOf(const QString& path)
{
    return QFileInfo(path).path();
}

bool isReadable(const Found& found)
{
    return found.kind == Found::AcquisitionFile && found.problem.isEmpty();
}

QString quoted(QString cell)
{
    const auto special = [](QChar c) { return c == u'"' || c == u',' || c == u'\n' || c == u'\r'; };
    if (std::none_of(cell.cbegin(), cell.cend(), special))
        return cell;
    cell.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QLatin1Char('"') + cell + QLatin1Char('"');
}

QString csvLine(const QStringList& cells)
{
    QStringList quotedCells;
    for (const QString& cell : cells)
        quotedCells += quoted(cell);
    return quotedCells.join(QLatin1Char(',')) + QLatin1String("\r\n");
}

QJsonObject sequenceJson(const SequenceHead& sequence)
{
    return object({{"path", sequence.path},
                   {"name", sequence.name},
                   {"acquisitions", sequence.acquisitions}});
}

} // namespace

void TableWriter::start(const QString& path, const QString& title)
{
    finish();
    m_started = true;
    m_path = path;
    m_title = title;
}

void TableWriter::add(const Found& found)
{
    const Acquisition& acquisition = found.acquisition;
    if (found.kind == Found::Failure)
        return;
    if (found.kind == Found::SequenceStart) {
        start(folderOf(acquisition.sequence->path),
              QLatin1String("Sequence ") + acquisition.sequence->name + QLatin1String(", "));
        return;
    }
    if (!acquisition.sequence) {
        const QString path = folderOf(folderOf(acquisition.path));
        if (!m_started || !m_title.isEmpty() || path != m_path)
            start(path, QString());
    }
    if (!found.problem.isEmpty())
        ++m_unreadable;
    m_rows += found.problem.isEmpty() ? tableRow(acquisition)
                                      : QStringList{acquisition.clickNumber, found.problem};
}

void TableWriter::finish()
{
    if (!m_started)
        return;
    const QString path = m_withPaths ? m_path + QLatin1String(": ") : QString();
    const QString unreadable =
        m_unreadable == 0 ? QString() : QStringLiteral(", %1 unreadable").arg(m_unreadable);
    const QString text = path + m_title + counted(int(m_rows.size()), "acquisition") + unreadable +
                         QLatin1String("\n\n") + columns(QList<QStringList>{tableHead()} + m_rows);
    print(m_first ? text : QLatin1Char('\n') + text);
    m_first = false;
    m_started = false;
    m_unreadable = 0;
    m_rows.clear();
}

CsvWriter::CsvWriter()
{
    printExact(csvLine(csvHead()));
}

void CsvWriter::add(const Found& found)
{
    if (isReadable(found))
        printExact(csvLine(csvRow(found.acquisition)));
}

void JsonLinesWriter::add(const Found& found)
{
    if (isReadable(found))
        printJsonLine(acquisitionJson(found.acquisition));
}

void JsonWriter::add(const Found& found)
{
    if (found.kind == Found::SequenceStart)
        m_sequences += sequenceJson(*found.acquisition.sequence);
    else if (isReadable(found))
        m_acquisitions += acquisitionJson(found.acquisition);
    else
        m_failures += object({{"path", found.acquisition.path}, {"problem", found.problem}});
}

void JsonWriter::finish()
{
    print(withSchema(
        "ovinfo-study/1",
        {{"sequences", m_sequences}, {"acquisitions", m_acquisitions}, {"failures", m_failures}}));
}
