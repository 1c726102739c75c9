// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "IndexFile.h"

#include "Files.h"
#include "WalkOrder.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtSql/QSqlError>

namespace {

/** Marks a file of SQLite as an index: "OVIX". */
constexpr int applicationId = 0x4F564958;
constexpr int schemaVersion = 1;

/** The columns of acquisitions that hold numbers. */
constexpr const char* numberColumns[] = {"exposureSeconds", "binning", "fieldOfView", "fNumber"};

QString typeOf(const QString& column)
{
    for (const char* const name : numberColumns) {
        if (column == QLatin1String(name))
            return QStringLiteral(" REAL");
    }
    return QStringLiteral(" TEXT");
}

QString acquisitionsTable()
{
    QString text =
        QStringLiteral("CREATE TABLE acquisitions (file INTEGER PRIMARY KEY REFERENCES files (id)");
    const QStringList columns = recordColumns();
    for (const QString& column : columns)
        text += QLatin1String(", ") + sqlName(column) + typeOf(column);
    return text + QLatin1Char(')');
}

// The file is of no use before it is finished, so that it needs no journal.
QStringList settings()
{
    return {QStringLiteral("PRAGMA application_id = %1").arg(applicationId),
            QStringLiteral("PRAGMA journal_mode = OFF"),
            QStringLiteral("PRAGMA synchronous = OFF")};
}

QStringList tables()
{
    return {QStringLiteral("CREATE TABLE schema_version (version INTEGER NOT NULL)"),
            QStringLiteral("INSERT INTO schema_version VALUES (%1)").arg(schemaVersion),
            QStringLiteral("CREATE TABLE files (id INTEGER PRIMARY KEY, path TEXT NOT NULL, "
                           "size INTEGER, mtime INTEGER, kind TEXT NOT NULL, "
                           "status TEXT NOT NULL, sequence INTEGER REFERENCES files (id))"),
            acquisitionsTable(),
            QStringLiteral("CREATE TABLE entries (file INTEGER NOT NULL REFERENCES files (id), "
                           "place INTEGER NOT NULL, section TEXT NOT NULL COLLATE NOCASE, "
                           "key TEXT COLLATE NOCASE, value TEXT, comment TEXT, "
                           "PRIMARY KEY (file, place)) WITHOUT ROWID")};
}

bool startsAsSqlite(const QString& path)
{
    QFile file(path);
    const QByteArray magic("SQLite format 3\0", 16);
    return file.open(QIODevice::ReadOnly) && file.read(magic.size()) == magic;
}

} // namespace

IndexFile::IndexFile(const QString& path)
    : m_path(path)
{
    static int number = 0;
    m_database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QString::number(++number));
    m_database.setDatabaseName(path);
}

IndexFile::~IndexFile()
{
    const QString name = m_database.connectionName();
    m_database.close();
    m_database = QSqlDatabase();
    QSqlDatabase::removeDatabase(name);
}

std::unique_ptr<IndexFile> IndexFile::open(const QString& path, QString* problem)
{
    *problem = otherThanFile(path);
    if (problem->isEmpty() && !QFile(path).open(QIODevice::ReadOnly))
        *problem = explained(eSTATUS_FILE_OPEN_FAILED, path);
    else if (problem->isEmpty() && !startsAsSqlite(path))
        *problem = QStringLiteral("no index; left alone");
    if (!problem->isEmpty())
        return nullptr;
    std::unique_ptr<IndexFile> file(new IndexFile(path));
    *problem = file->refusal();
    return problem->isEmpty() ? std::move(file) : nullptr;
}

/** Why an existing file is not taken; empty when it is an index. */
QString IndexFile::refusal()
{
    m_database.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
    if (!m_database.open())
        return m_database.lastError().text();
    QSqlQuery query(m_database);
    if (!query.exec(QStringLiteral("PRAGMA application_id")) || !query.next() ||
        query.value(0).toInt() != applicationId)
        return QStringLiteral("no index; left alone");
    if (!query.exec(QStringLiteral("SELECT version FROM schema_version")) || !query.next())
        return QStringLiteral("a damaged index; left alone");
    const int version = query.value(0).toInt();
    return version == schemaVersion
               ? QString()
               : QStringLiteral("an index of version %1; left alone").arg(version);
}

std::unique_ptr<IndexFile> IndexFile::create(const QString& path, QString* problem)
{
    QFile::remove(path);
    return make(path, QStringList{QStringLiteral("BEGIN")} + tables(), problem);
}

std::unique_ptr<IndexFile> IndexFile::createFrom(const QString& source, const QString& path,
                                                 QString* problem)
{
    QFile::remove(path);
    if (!QFile::copy(source, path)) {
        *problem = QStringLiteral("no second file can be made beside it");
        return nullptr;
    }
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
    QString name = source;
    name.replace(QLatin1Char('\''), QLatin1String("''"));
    return make(path, {QStringLiteral("ATTACH '%1' AS source").arg(name), QStringLiteral("BEGIN")},
                problem);
}

std::unique_ptr<IndexFile> IndexFile::make(const QString& path, const QStringList& statements,
                                           QString* problem)
{
    std::unique_ptr<IndexFile> file(new IndexFile(path));
    if (!file->m_database.open()) {
        *problem = file->m_database.lastError().text();
        return nullptr;
    }
    for (const QString& statement : settings() + statements)
        file->run(statement);
    *problem = file->problem();
    return problem->isEmpty() ? std::move(file) : nullptr;
}

bool IndexFile::run(const QString& statement)
{
    QSqlQuery query(m_database);
    const bool done = query.exec(statement);
    if (!done && m_problem.isEmpty())
        m_problem = query.lastError().text();
    return done;
}

QSqlQuery IndexFile::prepared(const QString& statement) const
{
    QSqlQuery query(m_database);
    query.setForwardOnly(true);
    query.prepare(statement);
    return query;
}

bool IndexFile::run(QSqlQuery* query, const QVariantList& values)
{
    for (int i = 0; i < values.size(); ++i)
        query->bindValue(i, values.at(i));
    const bool done = query->exec();
    if (!done && m_problem.isEmpty())
        m_problem = query->lastError().text();
    return done;
}

qint64 IndexFile::fileCount() const
{
    QSqlQuery query = prepared(QStringLiteral("SELECT max(id) FROM files"));
    return query.exec() && query.next() ? query.value(0).toLongLong() : 0;
}

QString selectFiles()
{
    return QStringLiteral("SELECT id, path, size, mtime, kind, status, sequence FROM files");
}

FileRow fileRowOf(const QSqlQuery& query)
{
    return {query.value(0).toLongLong(),
            query.value(1).toString(),
            query.value(2),
            query.value(3),
            query.value(4).toString(),
            query.value(5).toString(),
            query.value(6).toLongLong()};
}

QString sqlName(const QString& name)
{
    return QLatin1Char('"') + name + QLatin1Char('"');
}

QString placeholders(int count)
{
    return QString(QLatin1String("?, ")).repeated(count).chopped(2);
}
