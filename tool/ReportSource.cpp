// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "ReportSource.h"

#include "FailureList.h"
#include "Files.h"
#include "IndexFile.h"
#include "Interrupt.h"
#include "Json.h"
#include "Progress.h"

#include <QtCore/QFile>
#include <QtCore/QJsonDocument>

namespace {

namespace Key = PLKeyword::Key;
namespace Section = PLKeyword::Section;

/** The value of an acquisition that is told although it is no member of every record. */
Column versionColumn()
{
    return {Section::ClickNumber + QLatin1Char('/') + Key::Version, Section::ClickNumber,
            Key::Version};
}

/** Takes what was found in folders. */
class FolderRecords
{
public:
    FolderRecords(Wanted wanted, StudyRecords* records)
        : m_wanted(std::move(wanted))
        , m_records(records)
    {
        m_records->areChecked = true;
    }

    void add(const Found& found)
    {
        const QString& path = found.acquisition.path;
        m_count += found.kind == Found::AcquisitionFile ? 1 : 0;
        m_failures.add(found);
        if (found.isRecord() || !found.problem.isEmpty())
            m_records->add(recordOf(m_wanted, found));
        if (found.checked.problems() > 0 || !found.checked.failure.isEmpty())
            m_records->add(fileJson(path, found.checked));
        if (found.kind == Found::SequenceFile && found.problem.isEmpty())
            m_records->sequences += path;
        if (!found.instrument.isEmpty())
            m_records->instruments += found.instrument;
        if (found.spectrum)
            m_records->add(ReportedSpectrum{path, *found.spectrum});
        m_progress.show(found.progress, m_count, "acquisition", m_failures.count());
    }

    ExitCode finish()
    {
        m_progress.clear();
        return m_failures.tell(QString());
    }

private:
    Wanted m_wanted;
    StudyRecords* m_records;
    FailureList m_failures;
    Progress m_progress;
    int m_count = 0;
};

/** Adds the records of a file of JSON lines; gives what is wrong. */
QString addLines(const QString& path, StudyRecords* records)
{
    QString problem = otherThanFile(path);
    if (!problem.isEmpty())
        return problem;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return explained(eSTATUS_FILE_OPEN_FAILED, path);
    for (int number = 1; !file.atEnd(); ++number) {
        const QByteArray line = file.readLine();
        const QJsonObject record = QJsonDocument::fromJson(line).object();
        const bool isRecord =
            record.contains(QLatin1String("path")) || record.contains(QLatin1String("findings"));
        if (!isRecord || !line.endsWith('\n'))
            return QStringLiteral("line %1 is no record").arg(number);
        records->add(record);
    }
    return {};
}

/** The labels of one file after another, in the order of the files. */
class LabelRows
{
public:
    LabelRows(IndexFile* file, const QString& section)
        : m_query(file->prepared(QStringLiteral(
              "SELECT file, key, value FROM entries WHERE section = ? AND key IS NOT NULL "
              "ORDER BY file, place")))
    {
        if (file->run(&m_query, {section}))
            next();
    }

    /** The entries of a file; files are asked for in ascending order. */
    QList<QPair<QString, QString>> of(qint64 file)
    {
        QList<QPair<QString, QString>> entries;
        for (; m_isAtRow && m_query.value(0).toLongLong() <= file; next()) {
            if (m_query.value(0).toLongLong() == file)
                entries.append({m_query.value(1).toString(), m_query.value(2).toString()});
        }
        return entries;
    }

private:
    void next() { m_isAtRow = m_query.next(); }

    QSqlQuery m_query;
    bool m_isAtRow = false;
};

/** The record that a row of the index holds, or the failure. */
QJsonObject indexedRecord(const QSqlQuery& query, const QStringList& columns)
{
    enum { Kind = 1, Path, Status, Sequence, FirstMember };
    const QString status = query.value(Status).toString();
    QJsonObject record = object({{"kind", query.value(Kind).toString()},
                                 {"path", query.value(Path).toString()},
                                 {"sequencePath", textOrNull(query.value(Sequence).toString())}});
    if (status != statusRead)
        record.insert(QStringLiteral("problem"), status);
    for (int i = 0; status == statusRead && i < columns.size(); ++i)
        record.insert(columns.at(i), QJsonValue::fromVariant(query.value(FirstMember + i)));
    return record;
}

void addLabels(const QList<QPair<QString, QString>>& entries, QJsonObject* record)
{
    QJsonObject labels;
    for (const auto& [key, value] : entries) {
        if (isLabel(key) && key != QLatin1String("#"))
            labels.insert(key, value);
    }
    record->insert(QStringLiteral("labels"), labels);
}

void addVersion(const QList<QPair<QString, QString>>& entries, QJsonObject* record)
{
    const Column column = versionColumn();
    for (const auto& [key, value] : entries) {
        if (key.compare(column.key, Qt::CaseInsensitive) == 0)
            record->insert(column.name, value);
    }
}

/** Adds the records of an index; gives what is wrong. */
QString addIndex(const QString& path, StudyRecords* records)
{
    QString problem;
    const auto file = IndexFile::open(path, &problem);
    if (!file)
        return problem;
    const QStringList members = memberNames();
    QStringList columns;
    for (const QString& member : members)
        columns += QLatin1String("acquisitions.") + sqlName(member);
    QSqlQuery query = file->prepared(
        QStringLiteral("SELECT files.id, files.kind, files.path, files.status, sequences.path, %1 "
                       "FROM files LEFT JOIN acquisitions ON acquisitions.file = files.id "
                       "LEFT JOIN files AS sequences ON sequences.id = files.sequence "
                       "WHERE files.status <> ? ORDER BY files.id")
            .arg(columns.join(QLatin1String(", "))));
    LabelRows labels(file.get(), Section::UserInput);
    LabelRows versions(file.get(), Section::ClickNumber);
    if (!file->run(&query, {QString(statusEmpty)}))
        return file->problem();
    while (query.next()) {
        const qint64 id = query.value(0).toLongLong();
        QJsonObject record = indexedRecord(query, members);
        addLabels(labels.of(id), &record);
        addVersion(versions.of(id), &record);
        records->add(record);
    }
    return file->problem();
}

using AddFile = QString (*)(const QString& path, StudyRecords* records);

ExitCode addFiles(const QStringList& files, AddFile add, StudyRecords* records)
{
    ExitCode code = Success;
    for (const QString& path : files) {
        const QString problem = add(path, records);
        if (problem.isEmpty())
            continue;
        records->addProblem(path, {QStringLiteral("report"), 0, problem});
        code = fail(path, problem);
    }
    return code;
}

} // namespace

ExitCode readFolders(const QStringList& folders, ArchiveRequest archive, StudyRecords* records)
{
    archive.wanted = {{versionColumn()}, false, true};
    archive.walk.recursive = true;
    archive.walk.others = true;
    FolderRecords found(archive.wanted, records);
    ArchiveReader reader(archive.jobs, archive.wanted, [&](const Found& file) { found.add(file); });
    ArchiveWalk walk(archive.walk, [&](Found file) {
        reader.add(std::move(file));
        return !Interrupt::isAsked();
    });
    walk.walk(folders);
    reader.finish();
    return found.finish();
}

ExitCode readJsonLines(const QStringList& files, StudyRecords* records)
{
    return addFiles(files, addLines, records);
}

ExitCode readIndexes(const QStringList& files, StudyRecords* records)
{
    return addFiles(files, addIndex, records);
}
