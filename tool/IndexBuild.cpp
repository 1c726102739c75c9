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

/** An index of SQL, which is made when all rows are there. */
struct IndexRow
{
    const char* name;
    const char* columns;
};

constexpr IndexRow indexes[] = {
    {"files_path", "files (path)"},
    {"acquisitions_click_number", "acquisitions (\"clickNumber\")"},
    {"entries_section_key", "entries (section, key)"},
};

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
    m_sequenceBefore = QSqlQuery();
}

QString IndexBuild::problem() const
{
    return m_file && m_problem.isEmpty() ? m_file->problem() : m_problem;
}

bool IndexBuild::start()
{
    m_file = IndexFile::create(secondFile(), &m_problem);
    return m_file && open();
}

bool IndexBuild::startFromOld()
{
    m_file = IndexFile::createFrom(m_path, secondFile(), &m_problem);
    m_hasIndexes = true;
    return m_file && open();
}

bool IndexBuild::open()
{
    m_insertFile = m_file->prepared(insertInto("files", 7));
    m_insertAcquisition =
        m_file->prepared(insertInto("acquisitions", int(recordColumns().size()) + 1));
    m_insertEntry = m_file->prepared(insertInto("entries", entryColumnCount));
    m_sequenceBefore = m_file->prepared(QStringLiteral(
        "SELECT id FROM main.files WHERE id < ? AND kind = ? ORDER BY id DESC LIMIT 1"));
    return true;
}

/** The row of the sequence that lists the file of a row. */
qint64 IndexBuild::sequenceBefore(qint64 row)
{
    const bool found =
        m_file->run(&m_sequenceBefore, {row, QString(kindName(Found::SequenceFile))}) &&
        m_sequenceBefore.next();
    const qint64 sequence = found ? m_sequenceBefore.value(0).toLongLong() : 0;
    m_sequenceBefore.finish();
    return sequence;
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
    addRows(found);
}

void IndexBuild::addRows(const Found& found)
{
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
    m_count += last - first + 1;
    m_sequence = sequenceBefore(m_count + 1);
}

void IndexBuild::deleteRows(const char* condition, qint64 row)
{
    for (const char* const table :
         {"entries WHERE file", "acquisitions WHERE file", "files WHERE id"})
        m_file->run(QStringLiteral("DELETE FROM %1 %2 %3")
                        .arg(QLatin1String(table), QLatin1String(condition))
                        .arg(row));
}

void IndexBuild::replace(FileRow row, const Found& found)
{
    deleteRows("=", row.id);
    m_count = row.id - 1;
    m_sequence = sequenceBefore(row.id);
    add(std::move(row), found);
}

void IndexBuild::cut(qint64 first)
{
    for (const IndexRow& index : indexes)
        m_file->run(QStringLiteral("DROP INDEX ") + QLatin1String(index.name));
    m_hasIndexes = false;
    deleteRows(">=", first);
    m_count = first - 1;
    m_sequence = sequenceBefore(first);
}

bool IndexBuild::finish()
{
    closeStatements();
    for (const IndexRow& index : indexes) {
        if (!m_hasIndexes)
            m_file->run(QStringLiteral("CREATE INDEX %1 ON %2")
                            .arg(QLatin1String(index.name), QLatin1String(index.columns)));
    }
    // Counts how often tables were changed, which says nothing of what is in them.
    m_file->run(QStringLiteral("PRAGMA schema_version = 1"));
    m_file->run(QStringLiteral("COMMIT"));
    QFile::remove(finishedFile());
    // The layout of the pages then depends on the rows alone, not on how they came.
    QSqlQuery vacuum = m_file->prepared(QStringLiteral("VACUUM INTO ?"));
    m_file->run(&vacuum, {finishedFile()});
    m_problem = m_file->problem();
    vacuum = QSqlQuery();
    m_file.reset();
    return m_problem.isEmpty() && takePlace();
}

bool IndexBuild::takePlace()
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
