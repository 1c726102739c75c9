// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "StudyWriter.h"

#include "Csv.h"
#include "Json.h"
#include "Terminal.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonDocument>

#include <algorithm>
#include <cstdio>

namespace {

bool isUniversal(const QString& label)
{
    return std::any_of(
        std::begin(PLKeyword::Key::UniversalLabels), std::end(PLKeyword::Key::UniversalLabels),
        [&](QLatin1String name) { return label.compare(name, Qt::CaseInsensitive) == 0; });
}

QJsonObject sequenceJson(const SequenceHead& sequence)
{
    return object({{"path", sequence.path},
                   {"name", sequence.name},
                   {"acquisitions", sequence.acquisitions}});
}

} // namespace

void StudyWriter::add(const Found& found)
{
    if (found.isRecord())
        addRecord(recordOf(m_wanted, found));
}

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
    if (found.kind == Found::SequenceFile && found.problem.isEmpty())
        start(QFileInfo(acquisition.sequence->path).path(),
              QLatin1String("Sequence ") + acquisition.sequence->name + QLatin1String(", "));
    if (found.kind != Found::AcquisitionFile)
        return;
    if (!acquisition.sequence) {
        const QString path = QFileInfo(QFileInfo(acquisition.path).path()).path();
        if (!m_started || !m_title.isEmpty() || path != m_path)
            start(path, QString());
    }
    if (!found.problem.isEmpty())
        ++m_unreadable;
    m_rows += found.problem.isEmpty() ? tableRow(acquisition) + acquisition.columns
                                      : QStringList{acquisition.clickNumber, found.problem};
}

QString TableWriter::finish()
{
    if (!m_started)
        return {};
    QStringList head = tableHead();
    for (const Column& column : wanted().columns)
        head += column.name;
    const QString path = m_withPaths ? m_path + QLatin1String(": ") : QString();
    const QString unreadable =
        m_unreadable == 0 ? QString() : QStringLiteral(", %1 unreadable").arg(m_unreadable);
    const QString text = path + m_title + counted(int(m_rows.size()), "acquisition") + unreadable +
                         QLatin1String("\n\n") + columns(QList<QStringList>{head} + m_rows);
    print(m_first ? text : QLatin1Char('\n') + text);
    m_first = false;
    m_started = false;
    m_unreadable = 0;
    m_rows.clear();
    return {};
}

QStringList CsvWriter::head() const
{
    QStringList names = recordColumns();
    for (const Column& column : wanted().columns)
        names += column.name;
    return names + m_ownLabels.values();
}

QStringList CsvWriter::row(const QJsonObject& record) const
{
    QStringList cells;
    const QJsonArray values = recordRow(record);
    for (const QJsonValue& value : values)
        cells += cellOf(value);
    for (const Column& column : wanted().columns)
        cells += record.value(column.name).toString();
    const QJsonObject labels = record.value(QLatin1String("labels")).toObject();
    for (const QString& label : m_ownLabels)
        cells += labelOf(labels, label).toString();
    return cells;
}

void CsvWriter::printLine(QStringList cells) const
{
    if (m_guarded)
        std::transform(cells.begin(), cells.end(), cells.begin(), guarded);
    printExact(csvLine(cells));
}

void CsvWriter::addRecord(const QJsonObject& record)
{
    const bool isFailure = record.contains(QLatin1String("problem"));
    if (isFailure || (!m_records.isOpen() && !m_records.open()))
        return;
    const QStringList labels = record.value(QLatin1String("labels")).toObject().keys();
    for (const QString& label : labels) {
        if (!isUniversal(label) && !m_ownLabels.contains(label.toLower()))
            m_ownLabels.insert(label.toLower(), label);
    }
    m_records.write(jsonLine(record).toUtf8());
}

QString CsvWriter::finish()
{
    const bool isOpen = m_records.isOpen() || m_records.open();
    if (!isOpen || !m_records.flush() || m_records.error() != QFileDevice::NoError ||
        !m_records.seek(0))
        return QStringLiteral("no room in the folder for temporary files, %1")
            .arg(QDir::tempPath());
    if (m_guarded)
        printExact(QString(QChar(QChar::ByteOrderMark)));
    printLine(head());
    while (!m_records.atEnd())
        printLine(row(QJsonDocument::fromJson(m_records.readLine()).object()));
    return {};
}

// Each line reaches the system by one call, so that a run that is ended leaves no half one.
JsonLinesWriter::JsonLinesWriter(Wanted wanted)
    : StudyWriter(std::move(wanted))
{
    static char buffer[1 << 20]; // the C library's own one divides long lines
    std::setvbuf(stdout, buffer, _IOFBF, sizeof buffer);
}

void JsonLinesWriter::addRecord(const QJsonObject& record)
{
    printJsonLine(record);
    std::fflush(stdout);
}

void JsonWriter::add(const Found& found)
{
    if (found.kind == Found::SequenceFile && found.problem.isEmpty())
        m_sequences += sequenceJson(*found.acquisition.sequence);
    if (!found.problem.isEmpty())
        m_failures += recordOf(wanted(), found);
    StudyWriter::add(found);
}

void JsonWriter::addRecord(const QJsonObject& record)
{
    m_acquisitions += record;
}

QString JsonWriter::finish()
{
    print(withSchema(
        "ovinfo-study/1",
        {{"sequences", m_sequences}, {"acquisitions", m_acquisitions}, {"failures", m_failures}}));
    return {};
}
