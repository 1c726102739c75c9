// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "StudyMerge.h"

#include "Files.h"
#include "WalkOrder.h"

#include <QtCore/QFile>
#include <QtCore/QJsonDocument>

#include <algorithm>
#include <vector>

namespace {

/** What a walk was looking at when it met a record: the sequence's folder, or the file's own. */
QString placeOf(const QJsonObject& record)
{
    const QString path = record.value(QLatin1String("path")).toString();
    const QString sequence = record.value(QLatin1String("sequencePath")).toString();
    if (record.value(QLatin1String("kind")) == QLatin1String(kindName(Found::Folder)))
        return walkKey(path);
    return walkKey(folderOf(sequence.isEmpty() ? path : sequence));
}

/** A file of records, and the record that comes next. */
class Part
{
public:
    explicit Part(const QString& path)
        : m_file(std::make_unique<QFile>(path))
    {
        m_problem = otherThanFile(path);
        if (m_problem.isEmpty() && !m_file->open(QIODevice::ReadOnly))
            m_problem = explained(eSTATUS_FILE_OPEN_FAILED, path);
        if (m_problem.isEmpty())
            next();
    }

    [[nodiscard]] QString path() const { return m_file->fileName(); }

    [[nodiscard]] QString problem() const { return m_problem; }

    [[nodiscard]] bool atEnd() const { return m_record.isEmpty(); }

    [[nodiscard]] const QJsonObject& record() const { return m_record; }

    [[nodiscard]] const QString& place() const { return m_place; }

    void next()
    {
        ++m_number;
        const QByteArray line = m_file->readLine();
        m_record = QJsonDocument::fromJson(line).object();
        m_place = placeOf(m_record);
        const bool isWhole = line.endsWith('\n') && m_record.contains(QLatin1String("path"));
        if (line.isEmpty() || isWhole)
            return;
        m_problem = QStringLiteral("line %1 is no record").arg(m_number);
        m_record = {};
    }

private:
    std::unique_ptr<QFile> m_file;
    int m_number = 0;
    QJsonObject m_record;
    QString m_place;
    QString m_problem;
};

/** Whether one part comes before another: those that are at their end come last. */
bool isBefore(const Part& a, const Part& b)
{
    return a.atEnd() != b.atEnd() ? b.atEnd() : a.place() < b.place();
}

} // namespace

ExitCode mergeRecords(const QStringList& parts, StudyWriter* writer)
{
    std::vector<Part> open(parts.begin(), parts.end());
    for (;;) {
        const auto first = std::min_element(open.begin(), open.end(), isBefore);
        if (first == open.end() || first->atEnd())
            break;
        writer->addRecord(first->record());
        first->next();
    }
    ExitCode code = Success;
    for (const Part& part : open) {
        if (!part.problem().isEmpty())
            code = fail(part.path(), part.problem());
    }
    const QString problem = writer->finish();
    return problem.isEmpty() ? code : fail(BadFile, problem);
}
