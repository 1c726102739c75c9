// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "IndexMerge.h"

#include "IndexBuild.h"
#include "WalkOrder.h"

#include <QtCore/QFileInfo>

#include <algorithm>
#include <vector>

namespace {

/** An index that is read file by file. */
class Part
{
public:
    explicit Part(std::unique_ptr<IndexFile> file)
        : m_file(std::move(file))
        , m_rows(m_file->prepared(selectFiles() + QLatin1String(" ORDER BY id")))
    {
        m_rows.exec();
        next();
    }

    [[nodiscard]] IndexFile* file() const { return m_file.get(); }

    [[nodiscard]] bool atEnd() const { return m_atEnd; }

    [[nodiscard]] const FileRow& row() const { return m_row; }

    [[nodiscard]] const QString& place() const { return m_place; }

    void next()
    {
        m_atEnd = !m_rows.next();
        if (m_atEnd)
            return;
        m_row = fileRowOf(m_rows);
        if (m_row.sequence == 0) // else it is found where its sequence is
            m_place =
                walkKey(m_row.kind == kindName(Found::Folder) ? m_row.path : folderOf(m_row.path));
    }

private:
    std::unique_ptr<IndexFile> m_file;
    QSqlQuery m_rows; // is gone before the connection
    FileRow m_row;
    QString m_place;
    bool m_atEnd = false;
};

bool isBefore(const Part& a, const Part& b)
{
    return a.atEnd() != b.atEnd() ? b.atEnd() : a.place() < b.place();
}

} // namespace

ExitCode mergeIndexes(const QStringList& parts, const QString& path)
{
    QString problem;
    if (QFileInfo::exists(path) && !IndexFile::open(path, &problem))
        return fail(path, problem);
    std::vector<Part> open;
    for (const QString& part : parts) {
        auto file = IndexFile::open(part, &problem);
        if (!file)
            return fail(part, problem);
        open.emplace_back(std::move(file));
    }
    IndexBuild build(path);
    for (bool goesOn = build.start(); goesOn; goesOn = build.problem().isEmpty()) {
        const auto first = std::min_element(open.begin(), open.end(), isBefore);
        if (first == open.end() || first->atEnd())
            break;
        build.add(first->row(), first->file());
        first->next();
    }
    open.clear();
    return build.problem().isEmpty() && build.finish() ? Success : fail(path, build.problem());
}
