// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "IndexBuild.h"

#include "Files.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <filesystem>
#include <system_error>

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <unistd.h>
#endif

namespace {

/** What was written reaches the disk before it takes the place of anything. */
bool sync(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite))
        return false;
#ifdef Q_OS_WIN
    return _commit(file.handle()) == 0;
#else
    return fsync(file.handle()) == 0;
#endif
}

QString insertInto(const char* table, int columns)
{
    return QStringLiteral("INSERT INTO %1 VALUES (%2)")
        .arg(QLatin1String(table), placeholders(columns));
}

/** A text that is no NULL in SQL, even if it is null. */
QVariant textFor(const QString& text)
{
    return text.isNull() ? QString(QLatin1String("")) : text;
}

QVariant variantOf(const QJsonValue& value)
{
    if (value.isNull() || value.isUndefined())
        return {};
    return value.isDouble() ? QVariant(value.toDouble()) : textFor(cellOf(value));
}

QVariant textOrNone(const QString& text)
{
    return text.isEmpty() ? QVariant() : QVariant(text);
}

/** The values of a row that a query is at, from a column on. */
QVariantList valuesOf(const QSqlQuery& query, int from, int count)
{
    QVariantList values;
    for (int i = from; i < from + count; ++i)
        values += query.value(i);
    return values;
}

} // namespace

IndexBuild::IndexBuild(const QString& path)
    : m_path(path)
{}

IndexBuild::~IndexBuild()
{
    closeStatements();
    m_file.reset();
    QFile::remove(secondFile());
    QFile::remove(finishedFile());
}

void IndexBuild::closeStatements()
{
    m_insertFile = QSqlQuery();
    m_insertAcquisition = QSqlQuery();
    m_insertEntry = QSqlQuery();
}

QString IndexBuild::problem() const
{
    return m_file && m_problem.isEmpty() ? m_file->problem() : m_problem;
}

bool IndexBuild::start()
{
    m_file = IndexFile::create(secondFile(), m_source, &m_problem);
    if (!m_file)
        return false;
    m_insertFile = m_file->prepared(insertInto("files", 7));
    m_insertAcquisition =
        m_file->prepared(insertInto("acquisitions", int(recordColumns().size()) + 1));
    m_insertEntry = m_file->prepared(insertInto("entries", entryColumnCount));
    return true;
}

void IndexBuild::addFile(FileRow row)
{
    row.id = ++m_count;
    const bool isSequence = row.kind == kindName(Found::SequenceFile);
    const QVariant sequence = row.sequence > 0 ? QVariant(m_sequence) : QVariant();
    if (isSequence)
        m_sequence = row.id;
    m_file->run(&m_insertFile,
                {row.id, row.path, row.size, row.time, row.kind, row.status, sequence});
}

void IndexBuild::add(FileRow row, const Found& found)
{
    addFile(std::move(row));
    if (found.isRecord()) {
        QVariantList values = {m_count};
        const QJsonArray cells = recordRow(recordOf(Wanted(), found));
        for (const QJsonValue& cell : cells)
            values += variantOf(cell);
        m_file->run(&m_insertAcquisition, values);
    }
    addEntries(found.acquisition.sections);
}

void IndexBuild::addEntries(const QList<SectionText>& sections)
{
    int place = 0;
    for (const SectionText& section : sections) {
        m_file->run(&m_insertEntry, {m_count, ++place, textFor(section.key), QVariant(),
                                     textFor(section.name.text), textOrNone(section.name.comment)});
        for (const Entry& entry : section.entries)
            addEntry(++place, section, entry);
    }
}

void IndexBuild::addEntry(int place, const SectionText& section, const Entry& entry)
{
    if (entry.isPair())
        m_file->run(&m_insertEntry, {m_count, place, textFor(section.key), textFor(entry.key),
                                     textFor(entry.value), textOrNone(entry.comment)});
    else if (!entry.comment.isEmpty())
        m_file->run(&m_insertEntry, {m_count, place, textFor(section.key), QStringLiteral("#"),
                                     QVariant(), entry.comment});
}

void IndexBuild::add(FileRow row, IndexFile* other)
{
    const qint64 id = row.id;
    addFile(std::move(row));
    const int columns = int(recordColumns().size());
    QSqlQuery acquisition =
        other->prepared(QStringLiteral("SELECT * FROM acquisitions WHERE file = ?"));
    if (other->run(&acquisition, {id}) && acquisition.next())
        m_file->run(&m_insertAcquisition,
                    QVariantList{m_count} + valuesOf(acquisition, 1, columns));
    QSqlQuery entries =
        other->prepared(QStringLiteral("SELECT * FROM entries WHERE file = ? ORDER BY place"));
    other->run(&entries, {id});
    while (entries.next())
        m_file->run(&m_insertEntry,
                    QVariantList{m_count} + valuesOf(entries, 1, entryColumnCount - 1));
}

void IndexBuild::copy(qint64 first, qint64 last)
{
    const qint64 shift = m_count + 1 - first;
    const QString range = QStringLiteral(" BETWEEN %1 AND %2").arg(first).arg(last);
    // The sequence of the first rows may have been added before them.
    m_file->run(QStringLiteral("INSERT INTO files SELECT id + %1, path, size, mtime, kind, status, "
                               "CASE WHEN sequence >= %2 THEN sequence + %1 "
                               "WHEN sequence NOT NULL THEN %3 END FROM source.files WHERE id")
                    .arg(shift)
                    .arg(first)
                    .arg(m_sequence) +
                range);
    QStringList columns;
    for (const QString& column : recordColumns())
        columns += sqlName(column);
    m_file->run(QStringLiteral("INSERT INTO acquisitions SELECT file + %1, %2 "
                               "FROM source.acquisitions WHERE file")
                    .arg(QString::number(shift), columns.join(QLatin1String(", "))) +
                range);
    m_file->run(QStringLiteral("INSERT INTO entries SELECT file + %1, place, section, key, value, "
                               "comment FROM source.entries WHERE file")
                    .arg(shift) +
                range);
    QSqlQuery sequence = m_file->prepared(
        QStringLiteral("SELECT max(id) FROM main.files WHERE id > ? AND kind = ?"));
    m_file->run(&sequence, {m_count, QString(kindName(Found::SequenceFile))});
    if (sequence.next() && !sequence.isNull(0))
        m_sequence = sequence.value(0).toLongLong();
    m_count += last - first + 1;
}

bool IndexBuild::finish()
{
    closeStatements();
    for (const char* const statement :
         {"CREATE INDEX files_path ON files (path)",
          "CREATE INDEX acquisitions_click_number ON acquisitions (\"clickNumber\")",
          "CREATE INDEX entries_section_key ON entries (section, key)", "COMMIT"})
        m_file->run(QLatin1String(statement));
    QFile::remove(finishedFile());
    // The layout of the pages then depends on the rows alone, not on how they came.
    QSqlQuery vacuum = m_file->prepared(QStringLiteral("VACUUM INTO ?"));
    m_file->run(&vacuum, {finishedFile()});
    m_problem = m_file->problem();
    vacuum = QSqlQuery();
    m_file.reset();
    return m_problem.isEmpty() && replace();
}

bool IndexBuild::replace()
{
    const QFileInfo old(m_path);
    const QString target = old.exists() ? old.canonicalFilePath() : m_path;
    if (old.exists())
        QFile::setPermissions(finishedFile(), old.permissions());
    std::error_code error;
    if (sync(finishedFile()))
        std::filesystem::rename(QFile::encodeName(finishedFile()).toStdString(),
                                QFile::encodeName(target).toStdString(), error);
    else
        error = std::make_error_code(std::errc::io_error);
    if (error)
        m_problem = QStringLiteral("cannot be written");
    return !error;
}
