// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Commands.h"
#include "Files.h"
#include "Json.h"
#include "Terminal.h"

#include "ParserLibrary.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

namespace {

/** Menu name and file of each setting; a setting without a menu name is in no menu. */
QList<QStringList> settingsOf(const CPLSettingsFileWrapper& wrapper)
{
    QList<QStringList> rows;
    for (int i = 0; const CPLSection* const section = wrapper[i]; ++i) {
        QString name;
        QString file;
        section->getRawValue(wrapper.getMenuNameTag(), &name);
        section->getRawValue(wrapper.getFileNameTag(), &file);
        if (!name.trimmed().isEmpty())
            rows.append({name, file});
    }
    return rows;
}

/** The settings files of a folder; the menu name is what follows the first '-' of the name. */
QList<QStringList> filesOf(const QDir& folder)
{
    QList<QStringList> rows;
    const QStringList files = folder.entryList(QDir::Files, QDir::Name);
    for (const QString& file : files) {
        const QFileInfo info(file);
        if (info.suffix().compare(PLKeyword::File::SettingsExtension, Qt::CaseInsensitive) != 0)
            continue;
        const QString name = info.completeBaseName();
        rows.append({name.mid(name.indexOf(QLatin1Char('-')) + 1),
                     folder.dirName() + QLatin1Char('/') + file});
    }
    return rows;
}

QJsonObject jsonOf(const QString& path, const QList<QStringList>& rows)
{
    const auto preset = [](const QStringList& row) {
        return object({{"menuName", row.at(0)}, {"file", textOrNull(row.at(1))}});
    };
    return withSchema("ovinfo-presets/1", {{"path", path}, {"presets", arrayOf(rows, preset)}});
}

} // namespace

ExitCode presetsCommand(const Request& request)
{
    const QString path = QDir::cleanPath(request.files.at(0));
    const bool folder = QFileInfo(path).isDir();
    if (const QString other = otherThanFile(path); !folder && !other.isEmpty())
        return fail(path, other);
    CPLSettingsFileWrapper wrapper;
    wrapper.setLoadMode(folder ? eLOAD_FOLDER : eLOAD_FILE);
    wrapper.setFolderPath(path);
    const tag_estatus status = wrapper.load(path);
    if (status != eSTATUS_SUCCESS)
        return fail(path, status);
    const QList<QStringList> rows = folder ? filesOf(QDir(path)) : settingsOf(wrapper);
    if (!folder && rows.isEmpty())
        return fail(BadFile, path + QLatin1String(": holds no settings"));
    if (request.has(Options::json)) {
        print(jsonOf(path, rows));
        return Success;
    }
    const QList<QStringList> heading = {{QLatin1String("Menu name"), QLatin1String("File")}};
    print(counted(int(rows.size()), "preset") + QLatin1String("\n\n") + columns(heading + rows));
    return Success;
}
